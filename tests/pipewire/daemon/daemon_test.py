#!/usr/bin/env python3
"""The echo canceller in PipeWire, with a daemon, a session manager and null sinks.

Usage: daemon_test.py BUILD CASE    in a D-Bus session; prints what was found, exit code 1 when it is wrong
"""
import signal
import subprocess
import sys
import tempfile

import sound
from desk import CANCELLED, LOUDSPEAKER, MICROPHONES, OTHER_MICROPHONE, PATIENCE, Desk, configuration, until

SECONDS = 7
TALKER = 4  # second in which the talker begins; before that there is echo alone
ENGINE_RATE = "default.clock.rate = 16000 default.clock.quantum = 480 clock.power-of-two-quantum = false"
DESKTOP = "default.clock.rate = 48000"
VIRTUAL_MACHINE = "default.clock.rate = 48000 default.clock.min-quantum = 1024"


def scene(desk, *more):
    """What 8 channels capture: the far end in channel 0, then the microphones."""
    desk.run(str(desk.build / "bin/se_host"), "scene", "recording.wav", "--seconds", str(SECONDS + 1), "--azimuth", "60",
             "--talker-start", str(TALKER), "--echo", "-26", "--reverberation", "0.2", "--diffuse-noise", "-50", *more)
    return desk.folder / "recording.wav"


def offline(desk, recording):
    desk.run(str(desk.build / "bin/se_host"), "process", str(recording), "offline.wav", "--far-end-channel", "0", "--quiet")
    return sound.read(desk.folder / "offline.wav")


def cleaned(desk, **options):
    """The recording through PipeWire, beside the offline run. result: recorded, offline, microphone, place of the first"""
    recording = scene(desk)
    desk.start_canceller(configuration(desk.engines, **options))
    desk.record_while_playing(recording, desk.folder / "recorded.wav")
    recorded = sound.read(desk.folder / "recorded.wav")
    reference = offline(desk, recording)
    place = sound.lag(recorded, reference, TALKER * 16000, 16000)
    return recorded, reference, sound.read(recording, 1), place


def comes_out_cleaned(build, folder):
    with Desk(folder, build, ENGINE_RATE) as desk:
        recorded, reference, microphone, place = cleaned(desk)
        begin, end = TALKER * 16000, (SECONDS - 1) * 16000
        start = place - begin
        assert start > 0, "the recording has no beginning"
        alike = sound.likeness(recorded[start + begin:start + end], reference[begin:end])
        echo = range(begin - 16000, begin)
        lowered = sound.level(microphone[echo.start:echo.stop]) - sound.level(recorded[start + echo.start:start + echo.stop])
        print(f"the difference to the offline run is {alike:.1f} dB below it; the echo is lowered by {lowered:.1f} dB")
        assert alike > 20 and lowered > 20


def loses_nothing(build, folder):
    """With the quantum of virtual machines, which is longer than the engine's block: the end is where the beginning is."""
    with Desk(folder, build, VIRTUAL_MACHINE) as desk:
        recorded, reference, _, late = cleaned(desk)
        early = sound.lag(recorded, reference, 2 * 16000, 16000) + (TALKER - 2) * 16000
        desk.refresh()
        print(f"places of the beginning and of the end differ by {late - early} frames; {desk.parameters()['se.advice']}")
        assert abs(late - early) < 32


def what_programs_play_is_the_far_end(build, folder):
    """A program plays to the canceller's loudspeaker: it reaches the loudspeaker, and its echo does not reach programs."""
    with Desk(folder, build, DESKTOP) as desk:
        recording = scene(desk, "--far-end-out", "far.wav", "--echo-delay", "100")
        desk.start_canceller(configuration(desk.engines, channel_map="[ 1 2 3 4 5 6 7 ]"))
        recorder = desk.record(CANCELLED, desk.folder / "recorded.wav")
        listener = desk.record(LOUDSPEAKER, desk.folder / "loudspeaker.wav", "stream.capture.sink = true")
        program = desk.start("pw-play", "--target", "se_echo_cancel_sink", "far.wav")
        desk.run(*desk.player(recording))
        program.wait(timeout=PATIENCE)
        for one in (recorder, listener):
            desk.stop(one, signal.SIGINT)
        far_end, played = sound.read(desk.folder / "far.wav"), sound.read(desk.folder / "loudspeaker.wav")
        place = sound.lag(played, far_end, 16000, 16000)
        alike = sound.correlation(played[place:place + 16000], far_end[16000:32000])
        recorded, microphone = sound.read(desk.folder / "recorded.wav"), sound.read(recording, 1)
        start = sound.lag(recorded, offline(desk, recording), TALKER * 16000, 16000) - 16000
        lowered = sound.level(microphone[(TALKER - 1) * 16000:TALKER * 16000]) - sound.level(recorded[start:start + 16000])
        print(f"the loudspeaker's sound is like the far end by {alike:.3f}; the echo is lowered by {lowered:.1f} dB")
        assert alike > 0.95 and lowered > 15


def doctor_finds_what_is_wrong(build, folder):
    """A program that plays past the canceller, while all else works; nothing after its end."""
    with Desk(folder, build, DESKTOP) as desk:
        recording = scene(desk, "--far-end-out", "far.wav")
        doctor = [str(desk.build / "bin/se_host"), "doctor"]
        assert "no echo canceller" in subprocess.run(doctor, env=desk.environment, capture_output=True, text=True).stdout
        desk.start_canceller(configuration(desk.engines, channel_map="[ 1 2 3 4 5 6 7 ]"))
        desk.record(CANCELLED, desk.folder / "recorded.wav")
        desk.start("pw-play", "--target", "se_echo_cancel_sink", "far.wav")
        desk.start(*desk.player(recording))
        other = desk.start("pw-play", "--target", LOUDSPEAKER, "-P", "{ node.name = browser }", "far.wav")
        until(lambda: desk.linked("browser", LOUDSPEAKER), "the other program")
        found = subprocess.run(doctor, env=desk.environment, capture_output=True, text=True)
        print(found.stdout, found.stderr)
        assert found.returncode == 1 and "'browser' plays to 'loudspeaker', past the canceller" in found.stdout
        desk.stop(other)
        until(lambda: "browser" not in desk.nodes(), "its end")
        after = subprocess.run(doctor, env=desk.environment, capture_output=True, text=True)
        print(after.stdout, after.stderr)
        assert (after.returncode, after.stdout) == (0, "nothing is wrong\n")


def short_pieces_are_reported(build, folder):
    """Half of the frames are lost by a module that hands on less than a cycle of the graph; the canceller counts them."""
    with Desk(folder, build, VIRTUAL_MACHINE) as desk:
        cleaned(desk, changes=[("node.latency = 480/16000", "node.latency = 160/16000")])
        desk.refresh()
        advice = until(lambda: desk.parameters()["se.advice"], "advice")
        print(advice)
        assert "did not come" in advice


def does_not_capture_itself(build, folder):
    """Its microphone is the default one, and no device is named: after a start it takes the microphone that is left."""
    with Desk(folder, build, DESKTOP) as desk:
        text = configuration(desk.engines, changes=[(f"target.object = {MICROPHONES} stream.capture.sink = true", "")])
        canceller = desk.start_canceller(text)
        desk.run("wpctl", "set-default", str(desk.nodes()[CANCELLED]["id"]))
        desk.stop(canceller)
        until(lambda: CANCELLED not in desk.nodes(), "its end")
        desk.start_canceller(text)
        until(lambda: desk.linked(OTHER_MICROPHONE, "se_echo_cancel_capture"), "the link to the other microphone")
        until(lambda: desk.linked("se_echo_cancel_source", "se_echo_cancel_output"), "the link to the virtual microphone")
        assert not desk.linked(CANCELLED, "se_echo_cancel_capture")


def engine_that_dies(build, folder):
    with Desk(folder, build, DESKTOP) as desk:
        text = configuration(desk.engines / "test_engines", arguments="se.engine = hostile")
        canceller = desk.start_canceller(text, SE_HOSTILE="block abort")
        desk.start("pw-record", "--target", CANCELLED, "out.wav")
        status = until(lambda: canceller.poll() is not None, "the end of the engine") and canceller.returncode
        print(f"the canceller ended with {status}")
        assert status in (-signal.SIGABRT, 128 + signal.SIGABRT)
        assert desk.is_alive(), "the daemon ended, too"


def latency_below_a_block(build, folder):
    """module-echo-cancel of PipeWire 0.3 divides by zero then. It may end that process, not the daemon."""
    with Desk(folder, build, DESKTOP) as desk:
        canceller = desk.start_canceller(configuration(desk.engines, [("node.latency = 480/16000", "node.latency = 64/48000")]))
        print(f"the canceller: {canceller.poll()}")
        assert desk.is_alive(), "the daemon ended, too"


def without_a_rate(build, folder):
    with Desk(folder, build, DESKTOP) as desk:
        canceller = desk.start_canceller(configuration(desk.engines, [(r"audio\.rate = 16000", "")]))
        print(desk.log("canceller"))
        assert canceller.poll() not in (None, 0)
        assert "audio.rate = 16000" in desk.log("canceller")
        assert desk.is_alive()


def parameters_while_it_runs(build, folder):
    with Desk(folder, build, DESKTOP) as desk:
        desk.start_canceller(configuration(desk.engines))
        desk.start("pw-record", "--target", CANCELLED, "out.wav")
        until(lambda: "seout_gain_q10" in desk.parameters(), "the parameters")
        assert desk.parameters()["seout_gain_q10"] == 1024
        desk.set_parameter("seout_gain_q10", 900)
        until(lambda: desk.parameters()["seout_gain_q10"] == 900, "the new value")
        print(desk.parameters())
        assert "seout" not in desk.log("canceller") and "channelmix" not in desk.log("canceller"), desk.log("canceller")


CASES = {case.__name__: case for case in (
    comes_out_cleaned, loses_nothing, short_pieces_are_reported, doctor_finds_what_is_wrong, what_programs_play_is_the_far_end, does_not_capture_itself, engine_that_dies,
    latency_below_a_block, without_a_rate, parameters_while_it_runs)}


def main(build, name):
    with tempfile.TemporaryDirectory(prefix="se") as folder:
        try:
            CASES[name](build, folder)
        except (AssertionError, KeyError, subprocess.SubprocessError) as error:
            print(f"{name}: {type(error).__name__}: {error}")
            return 1
    return 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
