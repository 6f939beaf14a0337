"""Several Python threads on one host."""
import threading

import pytest

import se_host

PIECE = 1600  # frames of a call


class Audio(threading.Thread):
    """Processes until it is stopped, or the host is closed, which is the error."""

    def __init__(self, host, sound):
        super().__init__()
        self.host, self.sound = host, sound
        self.running, self.stopped = threading.Event(), threading.Event()
        self.calls, self.error = 0, None

    def run(self):
        try:
            while not self.stopped.is_set():
                self.host.process(self.sound)
                self.calls += 1
                self.running.set()
        except se_host.Error as error:
            self.error = error

    def stop(self):
        self.stopped.set()
        self.join()


@pytest.fixture
def audio(host, captured):
    thread = Audio(host, captured[:PIECE])
    thread.start()
    assert thread.running.wait(60)
    yield thread
    thread.stop()


def set_in_turn(host, name, values):
    """As a user's slider does: a full queue is tried again."""
    for value in values:
        while host[name] != value:
            try:
                host[name] = value
            except se_host.QueueFullError:
                pass


def test_threads_set_and_read_while_sound_runs(host, audio):
    names = ["seout_gain_q10", "senr_comfort_noise_q10", "senr_nf_weight_factor_q10", "senr_echo_safety_factor_q10"]
    threads = [threading.Thread(target=set_in_turn, args=[host, name, range(1, 301)]) for name in names]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    audio.stop()
    assert audio.error is None
    assert [host[name] for name in names] == [300] * len(names)
    assert host.health().edits_dropped == 0


def test_closing_waits_for_the_sound_and_ends_it(host, audio):
    host.close()
    audio.join()
    assert str(audio.error) == "the host is closed"


def test_two_threads_that_process_take_turns(host, audio, captured):
    for _ in range(20):
        host.process(captured[:PIECE])
    audio.stop()
    assert audio.error is None
    assert host.health().frames == PIECE * (20 + audio.calls)
