// The DSP routines with random valid arguments against the scalar reference, every build that this processor runs.
// An input is a list of (routine, seed); each makes a number of small calls whose arguments come from the seed. With
// --inputs=N the process ends after N calls; at its end it says how many calls and comparisons it made.
#include <cinttypes>
#include <cstdio>
#include <cstdlib>

#include "tests/fuzz/kernels/problems.h"
#include "tests/fuzz/support/entry.h"
#include "tests/fuzz/support/input.h"

namespace quill::fuzz {
namespace {

struct Routine {
    size_t (*compare)(Random& random);
    unsigned calls;  // for a seed: about the same time for each routine
};

constexpr Routine kRoutines[] = {
    {compareConvolveI16I16, 64}, {compareConvolveI16I32, 64}, {compareVcmul, 64},
    {compareInterpolate, 64},    {compareRFir, 64},           {compareRealFft, 32},
    {compareFwdFft, 32},         {compareInvFft, 32},         {compareSimpleFft, 4},
    {compareFilter, 1},          {compareDeinterleave, 4},
};

constexpr int kSeedsOfAnInput = 16;

uint64_t g_calls = 0, g_comparisons = 0, g_limit = UINT64_MAX;

void tell() {
    std::printf("%" PRIu64 " inputs of the routines, %" PRIu64 " comparisons\n", g_calls, g_comparisons);
    std::fflush(stdout);
}

void compareAll(Input& input) {
    for (int k = 0; k < kSeedsOfAnInput && !input.empty(); ++k) {
        const Routine& routine = input.oneOf(kRoutines);
        Random random(input.number<uint32_t>());
        for (unsigned call = 0; call < routine.calls; ++call) g_comparisons += routine.compare(random);
        g_calls += routine.calls;
    }
}

}  // namespace

const CPUInfo& processor() {
    static const CPUInfo info;
    return info;
}

}  // namespace quill::fuzz

int LLVMFuzzerInitialize(int* argc, char*** argv) {
    for (int i = 1; i < *argc; ++i) std::sscanf((*argv)[i], "--inputs=%" SCNu64, &quill::fuzz::g_limit);
    std::atexit(quill::fuzz::tell);
    return 0;
}

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    quill::fuzz::Input input(data, size);
    quill::fuzz::compareAll(input);
    if (quill::fuzz::g_calls < quill::fuzz::g_limit) return 0;
    quill::fuzz::tell();
    std::_Exit(0);
}
