#!/usr/bin/env python3
"""Sends a recording through the engine once for each value of a setting, and draws what the setting does.

    sweep_setting.py meeting.wav senr_nf_weight_factor_q10 0 64 128 256 512 1024 --picture sweep.png

The recording has 16 kHz and 8 channels: the far end in channel 0, the microphones in the channels 1 to 7. The upper plot has
the level of the output over time, the lower one the level in pauses and in speech over the value: the quietest tenth and
the loudest tenth of the time.

Needs python3-numpy and python3-matplotlib; python3-soundfile for other files than WAV of 16 bits.
"""

import argparse
import sys
import wave

import matplotlib
import numpy as np

import se_host

matplotlib.use("Agg")
from matplotlib import pyplot as plt  # noqa: E402  the backend is chosen first

PIECE = 800  # frames a level, 50 ms
FULL_SCALE = 32768.0


def read_sound(path):
    """Frames by channels, int16, whole blocks; and the rate."""
    try:
        import soundfile
        sound, rate = soundfile.read(path, dtype="int16", always_2d=True)
    except ImportError:
        with wave.open(path, "rb") as file:
            if file.getsampwidth() != 2:
                raise wave.Error(f"{8 * file.getsampwidth()} bits a sample need python3-soundfile")
            rate = file.getframerate()
            sound = np.frombuffer(file.readframes(file.getnframes()), np.int16).reshape(-1, file.getnchannels())
    return np.pad(sound, ((0, -len(sound) % se_host.BLOCK), (0, 0))), rate


def levels(mono):
    """Level of each piece in dBFS."""
    pieces = mono[:len(mono) // PIECE * PIECE].reshape(-1, PIECE) / FULL_SCALE
    return 10 * np.log10(np.mean(pieces**2, axis=1) + 1e-12)


def processed(sound, options, setting, value):
    """Output of an engine that starts anew, with this value from the first block on."""
    with se_host.Host(**options) as host:
        host[setting] = value
        return host.process(sound)


def draw(setting, values, curves, path):
    colours = plt.get_cmap("viridis")(np.linspace(0, 0.9, len(values)))
    figure, (over_time, over_value) = plt.subplots(2, 1, figsize=(9, 7), layout="constrained")
    for value, curve, colour in zip(values, curves, colours):
        over_time.plot(np.arange(len(curve)) * PIECE / se_host.SAMPLE_RATE, curve, color=colour, label=str(value), lw=1)
    over_time.set(xlabel="time in s", ylabel="output in dBFS", title=f"Output for each value of {setting}")
    over_time.legend(loc="upper left", bbox_to_anchor=(1, 1))
    for share, label in ((90, "speech (loudest tenth)"), (10, "pauses (quietest tenth)")):
        over_value.plot(values, [np.percentile(curve, share) for curve in curves], "o-", label=label)
    over_value.set(xlabel=setting, ylabel="level in dBFS")
    over_value.legend()
    for axes in (over_time, over_value):
        axes.grid(alpha=0.3)
    figure.savefig(path, dpi=100)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("recording")
    parser.add_argument("setting")
    parser.add_argument("values", nargs="+", type=float)
    parser.add_argument("--picture", default="sweep.png", help="file to draw (default: %(default)s)")
    parser.add_argument("--tuning", help="tuning file to start from")
    parser.add_argument("--engine", help="engine build")
    parser.add_argument("--folder", help="folder of the engine builds")
    arguments = parser.parse_args()

    values = [int(value) if value.is_integer() else value for value in arguments.values]
    try:
        sound, rate = read_sound(arguments.recording)
        options = dict(tuning=arguments.tuning, engine=arguments.engine, folder=arguments.folder, sample_rate=rate,
                       quantum=se_host.BLOCK, far_end_channel=0)
        curves = [levels(processed(sound, options, arguments.setting, value)) for value in values]
    except (se_host.Error, TypeError) as error:
        return f"sweep_setting.py: {error}"
    except (OSError, EOFError, wave.Error, RuntimeError) as error:
        return f"sweep_setting.py: {arguments.recording} cannot be read: {error}"

    print(f"{arguments.setting:>26}   pauses   speech")
    for value, curve in zip(values, curves):
        print(f"{value:>26} {np.percentile(curve, 10):8.1f} {np.percentile(curve, 90):8.1f} dBFS")
    draw(arguments.setting, values, curves, arguments.picture)
    print(f"wrote {arguments.picture}")
    return 0


if __name__ == "__main__":
    sys.exit(main())
