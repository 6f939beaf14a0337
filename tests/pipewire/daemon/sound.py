"""Recordings of one channel, compared."""
import array
import math
import wave

STEP = 160


def read(path, channel=0):
    with wave.open(str(path), "rb") as file:
        assert file.getsampwidth() == 2 and file.getframerate() == 16000, path
        samples = array.array("h", file.readframes(file.getnframes()))
        return samples[channel::file.getnchannels()]


def energy(samples):
    return sum(x * x for x in samples)


def level(samples):
    """dB below full scale."""
    return 10 * math.log10(max(energy(samples), 1e-9) / max(len(samples), 1) / 32768 ** 2)


def correlation(a, b):
    both = math.sqrt(energy(a) * energy(b))
    return sum(x * y for x, y in zip(a, b)) / both if both else 0


def lag(recorded, reference, begin, length):
    """The place in `recorded` of `reference[begin:begin + length]`; first with the levels of 10 ms, then with the samples."""
    piece = reference[begin:begin + length]
    shape = [math.sqrt(energy(piece[i:i + STEP])) for i in range(0, length, STEP)]
    levels = [math.sqrt(energy(recorded[i:i + STEP])) for i in range(0, len(recorded), STEP)]
    starts = range(max(len(levels) - len(shape), 1))
    coarse = STEP * max(starts, key=lambda at: correlation(levels[at:at + len(shape)], shape))
    short = piece[length // 2:length // 2 + 4000]
    places = range(max(coarse - 2 * STEP, 0), coarse + 2 * STEP)
    return max(places, key=lambda at: sum(
        x * y for x, y in zip(recorded[at + length // 2:at + length // 2 + 4000], short)))


def likeness(recorded, reference):
    """Decibels by which the difference is below the reference."""
    difference = energy([x - y for x, y in zip(recorded, reference)])
    return 10 * math.log10(max(energy(reference), 1) / max(difference, 1))
