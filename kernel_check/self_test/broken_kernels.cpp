#include "kernel_check/self_test/broken_kernels.h"

#include <algorithm>
#include <utility>

#include "kernel_check/references/convolve.h"

namespace quill::test {
namespace {

void wrongShift(const int16_t* coeffs, const int16_t* signal, int32_t* out, int shift_right, int num_out,
                int num_taps, int shift_left) {
    referenceConvolve(coeffs, signal, out, shift_right == 15 ? 14 : shift_right, num_out, num_taps,
                      shift_left);
}

void logicalShift(const int16_t* coeffs, const int16_t* signal, int32_t* out, int shift_right, int num_out,
                  int num_taps, int shift_left) {
    referenceConvolve(coeffs, signal, out, 0, num_out, num_taps, 0);
    const uint32_t rounding = shift_right == 0 ? 0 : 1u << (shift_right - 1);
    for (size_t i = 0; i < wholeEights(num_out); ++i) {
        out[i] =
            static_cast<int32_t>((static_cast<uint32_t>(out[i]) + rounding) >> shift_right << shift_left);
    }
}

void noSaturation(const int16_t* coeffs, const int16_t* signal, int16_t* out, int num_out, int num_taps) {
    for (size_t i = 0; i < wholeEights(num_out); ++i) {
        out[i] = static_cast<int16_t>((referenceSum(coeffs, signal + i, num_taps) + 16384u) >> 15);
    }
}

void noRounding(const int16_t* coeffs, const int16_t* signal, int16_t* out, int num_out, int num_taps) {
    for (size_t i = 0; i < wholeEights(num_out); ++i) {
        const auto sum = static_cast<int32_t>(referenceSum(coeffs, signal + i, num_taps));
        out[i] = static_cast<int16_t>(std::clamp(sum >> 15, -32768, 32767));
    }
}

void swappedLanes(const int16_t* coeffs, const int16_t* signal, int16_t* out, int num_out, int num_taps) {
    referenceConvolve(coeffs, signal, out, num_out, num_taps);
    std::swap(out[2], out[3]);
}

void saturatingSums(const int16_t* coeffs, const int16_t* signal, int16_t* out, int num_out, int num_taps) {
    for (size_t i = 0; i < wholeEights(num_out); ++i) {
        int64_t sum = 16384;
        for (size_t k = 0; k < wholeEights(num_taps); ++k) sum += int64_t{coeffs[k]} * signal[i + k];
        out[i] = static_cast<int16_t>(std::clamp<int64_t>(sum >> 15, -32768, 32767));
    }
}

void oneWriteTooMany(const int16_t* coeffs, const int16_t* signal, int16_t* out, int num_out, int num_taps) {
    referenceConvolve(coeffs, signal, out, num_out, num_taps);
    out[wholeEights(num_out)] = 0;
}

void oneWriteTooFew(const int16_t* coeffs, const int16_t* signal, int16_t* out, int num_out, int num_taps) {
    const int16_t last = out[wholeEights(num_out) - 1];
    referenceConvolve(coeffs, signal, out, num_out, num_taps);
    out[wholeEights(num_out) - 1] = last;
}

void oneReadTooMany(const int16_t* coeffs, const int16_t* signal, int16_t* out, int num_out, int num_taps) {
    referenceConvolve(coeffs, signal, out, num_out, num_taps);
    const volatile int16_t* const behind = signal + signalExtent(num_out, num_taps);
    static_cast<void>(*behind);
}

}  // namespace

std::vector<KernelFunction> brokenFunctions() {
    constexpr bool Machine::*kAnywhere = &Machine::has_nothing_special;
    const std::vector<Variant<ConvolveI16I16>> narrowed = {
        {kReference, kAnywhere, referenceConvolve},
        {"no saturation", kAnywhere, noSaturation},
        {"no rounding", kAnywhere, noRounding},
        {"swapped lanes", kAnywhere, swappedLanes},
        {"sums that do not wrap", kAnywhere, saturatingSums},
        {"one write too many", kAnywhere, oneWriteTooMany},
        {"one write too few", kAnywhere, oneWriteTooFew},
        {"one read too many", kAnywhere, oneReadTooMany},
    };
    const std::vector<Variant<ConvolveI16I32>> scaled = {
        {kReference, kAnywhere, referenceConvolve},
        {"wrong shift", kAnywhere, wrongShift},
        {"logical shift", kAnywhere, logicalShift},
    };
    return {
        kernelFunction("convolve_i16_i16", poseConvolveI16I16, narrowed, {}),
        kernelFunction("convolve_i16_i32", poseConvolveI16I32, scaled, {}),
    };
}

}  // namespace quill::test
