"""The input files of the runs."""
import subprocess
import wave

FRAMES = 800


def make_inputs(folder, binaries):
    with wave.open(str(folder / "in.wav"), "wb") as sound:
        sound.setnchannels(8)
        sound.setsampwidth(2)
        sound.setframerate(16000)
        sound.writeframes(bytes(range(1, 17)) * FRAMES)
    subprocess.run([binaries / "se_host", "diags", "set", "int16=9", "--save", folder / "tuning.json", "--engine",
                    "test_engines/hostile"], check=True, stdout=subprocess.DEVNULL)
