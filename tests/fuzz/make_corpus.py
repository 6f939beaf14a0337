#!/usr/bin/env python3
"""Writes the inputs of corpus/ that are not texts. What a byte means stands in each fuzzer.

Usage: make_corpus.py
"""
import pathlib
import struct

CORPUS = pathlib.Path(__file__).resolve().parent / "corpus"


def write(fuzzer, name, data):
    folder = CORPUS / fuzzer
    folder.mkdir(parents=True, exist_ok=True)
    (folder / name).write_bytes(data)


def text(value):
    data = value.encode()
    return bytes([len(data)]) + data


def kernels():
    names = ("convolve_i16_i16 convolve_i16_i32 vcmul_i16 interp1ToNCore computeRFir real_fft fwdFFT invFFT simpleFFT "
             "filter deinterleave").split()
    for routine, name in enumerate(names):
        write("kernels", name, b"".join(struct.pack("<BI", routine, seed) for seed in range(1, 5)))


def operation(path, number, data=b""):
    """On one of the paths that have a number."""
    return struct.pack("<HBH", 1, path, number) + data


def property_tree():
    texts = ["1", "0", " 42\t", "-7", "2147483648", "9223372036854775808", "-9223372036854775808", "1.5", "1e39", "nan",
             "-inf", "0x10", "2 - Narrow", "", " ", "true", "1e", ".5", "5.", "-0", "1,5", "\u20ac"]
    typed = {"float": operation(1, 0, struct.pack("<f", 2.5)), "long": operation(1, 1, struct.pack("<q", -5)),
             "bool": operation(1, 2, b"\1"), "int": operation(1, 3, struct.pack("<i", 7)), "string": operation(1, 4, text("x"))}
    for name, first in typed.items():
        edits = b"".join(operation(1, 5, text(t)) + operation(1, 6) for t in texts)
        write("property_tree", f"edits_of_{name}", first + edits)
    strings = b"".join(operation(2, 4, text(t)) + operation(2, 6) for t in texts)
    write("property_tree", "reading_strings", strings)
    meta = operation(3, 8, b"\0\1\0" + b"\0\0" + b"\1") + operation(3, 5, text("5")) + operation(3, 9, b"\1\0\0")
    write("property_tree", "read_only", meta)
    write("property_tree", "listener", operation(4, 11) + operation(4, 3, struct.pack("<i", 1)) * 2 + operation(4, 11))
    write("property_tree", "default", operation(5, 10, b"\1" + text("d")) + operation(5, 7, struct.pack("<i", 3)))


def diagnostic(name, kind, length=1, access=3, level=0, value=0, help_text="what it does", label="label", elements=()):
    """In the order in which the scripted engine is read; numbers that stand for choices are those of Input."""
    count = max(length, 1)
    numbers = list(elements) + [0] * (count - len(elements))
    return (b"\0" + b"\1\0" + text(name) + number_of(kind) + (b"\1" if length == 1 else b"\0" + number_of(length + 1)) +
            number_of(access) + number_of(level) + b"\1\0" + text(help_text) + b"\1\0" + text(label) +
            struct.pack("<qH", value, 0) + b"\0" + b"\1\0" + b"\1\0" + b"".join(struct.pack("<q", n) for n in numbers))


def number_of(choice):
    return struct.pack("<HH", 1, choice)


def catalogue(*diagnostics, edits=()):
    edit_bytes = struct.pack("<H", len(edits)) + b"".join(struct.pack("<HB", place, 0) + text(t) for place, t in edits)
    return struct.pack("<H", len(diagnostics)) + b"".join(diagnostics) + b"\1\0" + edit_bytes


def catalogues():
    write("catalogues", "empty", catalogue())
    kinds = [diagnostic(f"x{kind}", kind, value=kind * 100) for kind in range(10)]
    write("catalogues", "each_type", catalogue(*kinds, edits=[(k, "5") for k in range(1, 6)]))
    arrays = [diagnostic(f"a{kind}", kind, length=12, elements=range(-3, 9)) for kind in range(1, 9)]
    write("catalogues", "arrays", catalogue(*arrays))
    write("catalogues", "one_name_twice", catalogue(diagnostic("x", 1), diagnostic("x", 7), edits=[(0, "-4")]))
    write("catalogues", "odd_texts", catalogue(diagnostic("a/b", 1, help_text="two\nlines\x1b[31m"),
                                               diagnostic("", 2), diagnostic("aec_bypass", 8, label="1 - 2")))
    write("catalogues", "limits", catalogue(diagnostic("i", 5, value=-2**39), diagnostic("u", 6, value=-1),
                                            diagnostic("r", 3, access=0, level=3), edits=[(0, "2147483648"), (2, "1")]))


def noise_results():
    plain = b"\1\0\0" + struct.pack("<180f", *(-60 - i / 7 for i in range(180))) + text("1.14|\n") + text("room's.wav")
    write("noise_results", "plain", plain)
    odd = [float("nan"), float("inf"), -float("inf"), 3.4e38, -1e-45, -0.0] * 30
    write("noise_results", "odd", b"\1\0\0" + struct.pack("<180f", *odd) + text("\x1b[31m") + text("'\"\n.wav"))
    write("noise_results", "none", b"\0\0\0")


def wav(channels, rate, data, bits=16, kind=1, data_size=None):
    frame = channels * bits // 8
    size = len(data) if data_size is None else data_size
    form = struct.pack("<HHIIHH", kind, channels, rate, rate * frame & 0xffffffff, frame, bits)
    return (b"RIFF" + struct.pack("<I", 36 + size & 0xffffffff) + b"WAVEfmt " + struct.pack("<I", len(form)) + form +
            b"data" + struct.pack("<I", size) + data)


def recordings():
    def samples(count):
        return struct.pack(f"<{count}h", *((i * 7919) % 65536 - 32768 for i in range(count)))

    write("recordings", "plain.wav", b"\0" + wav(8, 16000, samples(8 * 170)))
    write("recordings", "bypass.wav", b"\4" + wav(9, 16000, samples(9 * 160)))
    write("recordings", "far_end_channel.wav", b"\1" + wav(10, 48000, samples(10 * 100)))
    write("recordings", "unknown_channel.wav", b"\xf1" + wav(8, 16000, samples(8 * 10)))
    write("recordings", "far_end_file.wav", b"\2" + wav(1, 8000, samples(40)))
    write("recordings", "bytes.wav", b"\0" + wav(8, 8000, bytes(range(256)), bits=8))
    write("recordings", "floats.wav", b"\0" + wav(8, 44100, struct.pack("<80f", *[float("nan"), 1e9, -1, 0.5] * 20),
                                                   bits=32, kind=3))
    write("recordings", "cut_short.wav", b"\0" + wav(8, 16000, samples(80), data_size=100000))
    write("recordings", "no_samples.wav", b"\0" + wav(8, 16000, b""))
    write("recordings", "many_channels.wav", b"\0" + wav(1000, 16000, samples(2000)))
    write("recordings", "rate_0.wav", b"\0" + wav(8, 0, samples(80)))
    write("recordings", "no_sound", b"\0not a sound file")


def small(*numbers):
    return struct.pack(f"<{len(numbers)}H", *numbers)


def handle(*kinds, quantum=0, calls=()):
    """An engine with a diagnostic of each kind, a handle on it with the usual channels, and calls."""
    diagnostics = [b"\1" + number_of(kind) + b"\1" + number_of(3) + number_of(0) + text("what it does") +
                   struct.pack("<qHf", kind * 100, 0, 2.5) + text("label") for kind in kinds]
    return (small(len(kinds)) + b"".join(diagnostics) + small(1, 1) + text("scripted_1.0") + small(quantum) +
            small(*range(2, 9)) + b"\0" + small(200) + b"".join(calls))


def c_interface():
    def sound(kind, frames):
        return small(8, kind, 8, frames) + struct.pack("<hb" if kind == 0 else "<fb", 5, 1) + struct.pack("<h", 7)

    def edit(place, value):
        return small(0, 1, 1, place) + b"\1" + struct.pack("<h", value) + small(100)

    def value(place):
        return small(1, 1, 1, place, 50)

    write("c_interface", "sound", handle(1, calls=[sound(0, 160), sound(1, 33), sound(2, 500), small(5, 1), sound(0, 321)]))
    kinds = range(1, 9)
    write("c_interface", "settings", handle(*kinds, calls=[small(2)] + [call for place in range(8) for call in (
        edit(place, 3), value(place), sound(0, 160), value(place))] + [small(2)]))
    tuning = '{"format": 1, "diagnostics": {"d0": 5, "nothing": 1}}'
    write("c_interface", "tunings", handle(1, 3, calls=[small(3, 300) + b"\1", small(3, 300) + b"\0" + text(tuning),
                                                        sound(0, 160), small(3, 20) + b"\0" + text("{")]))
    write("c_interface", "health", handle(7, calls=[small(6) + struct.pack("<Q", 10**9), sound(0, 600), small(4) + b"\1" +
                                                    small(500), small(6) + struct.pack("<Q", 3 * 10**9), sound(1, 160),
                                                    small(4) + b"\0" + small(24, 30)]))
    write("c_interface", "quantum", handle(5, quantum=48, calls=[small(8, 0, 8) + b"\1" + struct.pack("<hb", 1, 0)] * 8))


if __name__ == "__main__":
    kernels()
    property_tree()
    catalogues()
    noise_results()
    recordings()
    c_interface()
