#!/usr/bin/env python3
"""Dependencies point downwards only: each folder includes what stands below it and nothing else.

Usage: include_rule.py ROOT. Prints every include that breaks the rule; exit code 1 if there is one.
"""
import pathlib
import re
import sys

WRAPPER = "webrtc_common/se_wrapper"
BASE = ["common", "webrtc_common/export.h", "webrtc_common/kernel_variants.h", f"{WRAPPER}/records.h"]

HOST = "tools/se_host"
HOST_BASE = ["common", "webrtc_common", "tools/output"]
ENGINE_BASE = [f"reference_engine/{name}.h" for name in ("build", "engine_interface", "format", "settings")]

# Folder -> what it may include, by path prefix. The longest matching folder decides.
MAY_INCLUDE = {
    "common": ["common"],
    "webrtc_common/convolve": BASE + ["webrtc_common/convolve"],
    "webrtc_common/fftpack": BASE + ["webrtc_common/fftpack"],
    f"{WRAPPER}/dsp": BASE + [f"{WRAPPER}/dsp", "webrtc_common/convolve", "webrtc_common/fftpack",
                              f"{WRAPPER}/table/engine_types.h"],
    f"{WRAPPER}/table": BASE + [f"{WRAPPER}/table"],
    f"{WRAPPER}/diags": BASE + [f"{WRAPPER}/diags", f"{WRAPPER}/table"],
    "webrtc_common": BASE + ["webrtc_common"],
    "reference_engine": ENGINE_BASE,
    "reference_engine/routines": ENGINE_BASE + ["reference_engine/routines"],
    "reference_engine/audio": ENGINE_BASE + ["reference_engine/routines", "reference_engine/audio"],
    "reference_engine/control": ["reference_engine"],
    "tools/core_clock": ["tools/core_clock"],
    "tools/scene": ["tools/scene"],
    "tools/output": ["tools/output"],
    f"{HOST}/sound": HOST_BASE + [f"{HOST}/sound"],
    f"{HOST}/engine": HOST_BASE + ["tools/core_clock", f"{HOST}/sound", f"{HOST}/engine"],
    f"{HOST}/diags": HOST_BASE + [f"{HOST}/sound", f"{HOST}/engine", f"{HOST}/diags"],
    f"{HOST}/commands": HOST_BASE + ["tools/scene", HOST],
    "tests/engines": ["tests/engines", "common", "webrtc_common"],
    "kernel_check": ["common", "webrtc_common", "kernel_check"],
    "kernel_check/timing": ["common", "webrtc_common", "kernel_check", "tools/core_clock"],
    "bench": ["common", "webrtc_common", "tools/scene", "kernel_check", "bench"],
    "bench/routines_vs_libraries": ["common", "webrtc_common", "kernel_check", "bench",
                    "tests/common/property_node/allocation_count.h", "tools/output"],
    "tests": ["common", "webrtc_common", "reference_engine", "tools", "kernel_check", "tests"],
}

# Never below these folders, whatever the list above allows: they know nothing of the property tree.
NO_PROPERTIES = ["webrtc_common/convolve", "webrtc_common/fftpack", f"{WRAPPER}/dsp", f"{WRAPPER}/table"]
PROPERTIES = re.compile(r"common/(property_|properties|config)")
# These serve programs that have no command line: CLI11 stays out.
NO_COMMAND_LINE = ["tools/output", f"{HOST}/sound", f"{HOST}/engine", f"{HOST}/diags"]
COMMAND_LINE = re.compile(r"CLI/")
INCLUDE = re.compile(r'^\s*#\s*include\s+(["<])([^">]+)[">]')


def below(path, folder):
    return path == folder or path.startswith(folder + "/")


def violations(root):
    sources = [p for top in ("common", "webrtc_common", "reference_engine", "tools", "kernel_check", "bench", "tests")
               for p in sorted((root / top).rglob("*")) if p.suffix in (".h", ".cpp", ".inl")]
    for source in sources:
        name = source.relative_to(root).as_posix()
        folder = max((f for f in MAY_INCLUDE if below(name, f)), key=len)
        for number, line in enumerate(source.read_text().splitlines(), 1):
            found = INCLUDE.match(line)
            if not found:
                continue
            included = found.group(2)
            allowed = found.group(1) == "<" or any(below(included, prefix) for prefix in MAY_INCLUDE[folder])
            if any(below(name, f) for f in NO_COMMAND_LINE) and COMMAND_LINE.match(included):
                allowed = False
            if any(below(name, f) for f in NO_PROPERTIES) and PROPERTIES.match(included):
                allowed = False
            if not allowed:
                yield f"{name}:{number}: {folder} must not include {included}"


if __name__ == "__main__":
    broken = list(violations(pathlib.Path(sys.argv[1])))
    print("\n".join(broken) if broken else "every include points downwards")
    sys.exit(1 if broken else 0)
