// The entry points of a fuzzer. libFuzzer calls them, and support/replay.cpp in a build without it.
#pragma once

#include <cstddef>
#include <cstdint>

extern "C" {
// Once, before the first input.
int LLVMFuzzerInitialize(int* argc, char*** argv);
// Each input; returns 0.
int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);
}
