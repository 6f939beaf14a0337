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


if __name__ == "__main__":
    kernels()
    property_tree()
