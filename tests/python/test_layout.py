"""The structs, functions and constants of the package are those of host/se_host.h, as the compiler sees them."""
import ctypes
import inspect
import os
import re
import subprocess

from conftest import ROOT
from se_host import Host, Status, _layout, _library
from se_host._options import options_of

HEADER = ROOT / "host/se_host.h"

STRUCTS = {"se_host_options_t": _layout.Options, "se_host_setting_t": _layout.Setting,
           "se_host_health_t": _layout.Health}
CONSTANTS = {name: getattr(_layout, name.removeprefix("SE_HOST_"))
             for name in ("SE_HOST_SAMPLE_RATE", "SE_HOST_BLOCK", "SE_HOST_MICROPHONES", "SE_HOST_HAS_CLOCK",
                          "SE_HOST_HAS_LEVELS", "SE_HOST_HAS_ECHO_DELAY", "SE_HOST_HAS_BLOCK_TIMES")}
# Python has arrays of frames by channels.
NOT_DECLARED = {"se_host_process_planes_f32"}

# A type as "i4", "u8", "f8", "p" for a pointer, "i4[7]", "void".
FORMS = """
#include <cstddef>
#include <cstdio>
#include <string>
#include <type_traits>
#include "host/se_host.h"

template <class T> std::string form() {
    if constexpr (std::is_void_v<T>) return "void";
    else if constexpr (std::is_array_v<T>)
        return form<std::remove_extent_t<T>>() + "[" + std::to_string(std::extent_v<T>) + "]";
    else if constexpr (std::is_pointer_v<T>) return "p";
    else {
        const bool is_signed = std::is_signed_v<T> || std::is_enum_v<T>;
        return (std::is_floating_point_v<T> ? "f" : is_signed ? "i" : "u") + std::to_string(sizeof(T));
    }
}
template <class R, class... A> std::string form(R (*)(A...)) { return (form<R>() + ... + (" " + form<A>())); }

#define FIELD(s, f) std::printf("%s.%s %zu %s\\n", #s, #f, offsetof(s, f), form<decltype(s::f)>().c_str());
#define STRUCT(s) std::printf("%s %zu\\n", #s, sizeof(s));
#define FUNCTION(f) std::printf("%s %s\\n", #f, form(static_cast<decltype(&f)>(nullptr)).c_str());
#define CONSTANT(c) std::printf("%s %d\\n", #c, static_cast<int>(c));
"""


def form(kind):
    if kind is None:
        return "void"
    if issubclass(kind, ctypes.Array):
        return f"{form(kind._type_)}[{kind._length_}]"
    code = getattr(kind, "_type_", "P")
    if not isinstance(code, str) or code in "PzZ":
        return "p"
    letter = "f" if code in "fd" else "i" if code in "bhilq" else "u"
    return f"{letter}{ctypes.sizeof(kind)}"


def rows_of_package():
    for name, struct in STRUCTS.items():
        for field, kind in struct._fields_:
            yield f"FIELD({name}, {field})", f"{name}.{field} {getattr(struct, field).offset} {form(kind)}"
        yield f"STRUCT({name})", f"{name} {ctypes.sizeof(struct)}"
    for name, (result, arguments) in _library.FUNCTIONS.items():
        yield f"FUNCTION({name})", " ".join([name, *map(form, [result, *arguments])])
    for name, value in [*CONSTANTS.items(), *((f"SE_HOST_{status.name}", int(status)) for status in Status)]:
        yield f"CONSTANT({name})", f"{name} {value}"


def printed_by(program, folder):
    """What a C++ program prints. It names the functions of the library, but needs none of them."""
    (folder / "layout.cpp").write_text(program)
    subprocess.run([os.environ.get("CXX", "c++"), "-std=c++17", f"-I{ROOT}", folder / "layout.cpp", "-o",
                    folder / "layout"], check=True)
    return subprocess.run([folder / "layout"], check=True, capture_output=True, text=True).stdout


def test_structs_functions_and_constants_are_those_of_the_header(tmp_path):
    macros, expected = zip(*rows_of_package())
    program = FORMS + "int main() {\n" + "\n".join(macros) + "\n}\n"
    assert printed_by(program, tmp_path).splitlines() == list(expected)


def test_the_options_begin_with_the_values_of_the_header(tmp_path):
    program = """
        #include <cstdio>
        #include <cstring>
        #include "host/se_host.h"
        int main() {
            static const se_host_options_t options = SE_HOST_OPTIONS_INIT;
            unsigned char bytes[sizeof options];
            std::memcpy(bytes, &options, sizeof options);
            for (unsigned char byte : bytes) std::printf("%02x", byte);
        }
    """
    defaults = {name: parameter.default for name, parameter in inspect.signature(Host).parameters.items()}
    options = options_of(**{**defaults, "sample_rate": 0})  # the package states the rate
    options.log = _layout.LogFunction()  # and takes the log
    assert printed_by(program, tmp_path) == bytes(options).hex()


def names_in_header(pattern):
    return set(re.findall(pattern, HEADER.read_text(), re.MULTILINE))


def test_every_function_of_the_header_is_declared():
    assert names_in_header(r"^SE_HOST_API [^(]*?\b(se_host_\w+)\(") == set(_library.FUNCTIONS) | NOT_DECLARED


def test_every_struct_of_the_header_is_declared():
    assert names_in_header(r"^\} (se_host_(?!status_)\w+_t);") == set(STRUCTS)


def test_every_status_of_the_header_is_known():
    statuses = re.search(r"^typedef enum se_host_status_t \{(.*?)^\}", HEADER.read_text(), re.MULTILINE | re.DOTALL)
    assert re.findall(r"SE_HOST_(\w+) =", statuses[1]) == [status.name for status in Status]
