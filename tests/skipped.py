#!/usr/bin/env python3
"""The tests that were skipped, and why: one line for each reason, with the number of tests and the name of one.

Usage: skipped.py REPORT...  reads what ctest --output-junit REPORT wrote
"""
import collections
import re
import sys
import xml.etree.ElementTree

# GoogleTest: "file:line: Skipped", the reason in the next line. Tests that this build does not have: "skipped: reason".
REASON = re.compile(r"^(?:\S+:\d+: Skipped\n|skipped: )(.+)$", re.MULTILINE)


def skipped(report):
    """Reason and name of each skipped test."""
    for test in xml.etree.ElementTree.parse(report).iter("testcase"):
        if test.find("skipped") is not None or test.get("status") == "disabled":
            reasons = set(REASON.findall(test.findtext("system-out", "")))
            for reason in reasons or {"no reason given"}:
                yield reason.strip(), test.get("name")


def main(reports):
    tests = collections.defaultdict(list)
    for report in reports:
        try:
            for reason, name in skipped(report):
                tests[reason].append(name)
        except (OSError, xml.etree.ElementTree.ParseError) as error:
            print(f"{report} is not a report of ctest --output-junit: {error}", file=sys.stderr)
            return 1
    for reason, names in sorted(tests.items()):
        print(f"skipped {len(names)}: {reason} ({names[0]}{' and others' if len(names) > 1 else ''})")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
