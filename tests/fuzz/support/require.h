// What a fuzzer demands of the code under test. A demand that is not met ends the process.
#pragma once

#include <cstdlib>
#include <iostream>
#include <string>

namespace quill::fuzz {

[[noreturn]] inline void fail(const std::string& what) {
    std::cerr << "fuzzer: " << what << std::endl;
    std::abort();
}

inline void require(bool holds, const char* what) {
    if (!holds) fail(what);
}

inline std::string shown(const std::string& text) {
    return "'" + text + "'";
}

template <class T>
std::string shown(const T& value) {
    return std::to_string(value);
}

template <class T>
void requireEqual(const T& expected, const T& found, const std::string& what) {
    if (!(expected == found)) fail(what + ": expected " + shown(expected) + ", found " + shown(found));
}

}  // namespace quill::fuzz
