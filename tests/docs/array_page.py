#!/usr/bin/env python3
"""The table of the array's page and the lists of the sources have the same channels.

Usage: array_page.py ROOT. Prints every difference; exit code 1 if there is one. The wrapper, the reference engine and the
simulated recordings share no header, so that each has its own list: the channel of each row.
"""
import pathlib
import re
import sys

LISTS = {
    "webrtc_common/se_wrapper/dsp/deinterleave.h": r"kMicrophoneChannels\[\] = \{(.*?)\}",
    "reference_engine/format.h": r"kChannelOf\[kMicrophones\] = \{(.*?)\}",
    "tools/scene/scene.h": r"kChannelOfMicrophone\[kMicrophones\] = \{(.*?)\}",
}
ROW = re.compile(r"^\| (\d) \| (centre|\d+°) \| (\d) \| (?:not|Microphone (\d))", re.MULTILINE)


def channels_of_page(text):
    """The channels in the order of the rows."""
    table = {int(row): (int(channel), azimuth, number) for channel, azimuth, row, number in ROW.findall(text)}
    for row, (channel, azimuth, number) in table.items():
        expected = ("centre", "") if row == 0 else (f"{60 * (row - 1)}°", str(row - 1))
        if (azimuth, number) != expected:
            raise SystemExit(f"channel {channel} has {azimuth}, 'Microphone {number}' in the page, not {expected}")
    return [table[row][0] for row in sorted(table)]


if __name__ == "__main__":
    root = pathlib.Path(sys.argv[1])
    page = channels_of_page((root / "docs/array.md").read_text())
    broken = []
    for name, pattern in LISTS.items():
        found = [int(number) for number in re.search(pattern, (root / name).read_text()).group(1).split(",")]
        if found != page:
            broken.append(f"{name} has {found}, the page {page}")
    print("\n".join(broken) if broken else "page and sources have the same channels")
    sys.exit(1 if broken else 0)
