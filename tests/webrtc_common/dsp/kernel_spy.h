// Replaces the selected 16-bit correlation kernel, counts the calls, and keeps the last call's arguments
// and coefficients.
#pragma once

#include <vector>

#include "webrtc_common/convolve/convolve.h"

namespace quill::test {

class KernelSpy {
  public:
    KernelSpy() {
        calls = 0;
        g_convolve_i16_i16 = record;
    }
    ~KernelSpy() { g_convolve_i16_i16 = convolve_i16_i16_SSSE3; }
    KernelSpy(const KernelSpy&) = delete;
    KernelSpy& operator=(const KernelSpy&) = delete;

    inline static int calls = 0;
    inline static const int16_t* coeffs = nullptr;
    inline static const int16_t* signal = nullptr;
    inline static const int16_t* out = nullptr;
    inline static int num_out = 0;
    inline static int num_taps = 0;
    inline static std::vector<int16_t> coeff_values;

  private:
    static void record(const int16_t* c, const int16_t* s, int16_t* o, int outputs, int taps) {
        ++calls;
        coeffs = c;
        signal = s;
        out = o;
        num_out = outputs;
        num_taps = taps;
        coeff_values.assign(c, c + taps);
    }
};

}  // namespace quill::test
