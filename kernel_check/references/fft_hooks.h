// What the FFT hooks must compute around the real FFT, one value at a time. It is never optimised.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

#include "kernel_check/references/published_fft.h"
#include "webrtc_common/se_wrapper/dsp/fft_context.h"
#include "webrtc_common/se_wrapper/table/engine_types.h"

namespace quill::test {

using Samples = std::vector<int16_t>;

// Truncated toward zero; a value outside of 32 bits becomes -2^31.
inline int32_t truncated(double value) {
    const bool fits = value > -2147483649.0 && value < 2147483648.0;
    return fits ? static_cast<int32_t>(value) : INT32_MIN;
}

// The conversions at either end of a transform.
inline void referenceWiden(const int16_t* in, float* out, int count) {
    for (int i = 0; i < count; ++i) out[i] = static_cast<float>(in[i]);
}
inline void referenceNarrowScaled(const float* in, float scale, int16_t* out, int count) {
    for (int i = 0; i < count; ++i) {
        out[i] = static_cast<int16_t>(truncated(static_cast<double>(in[i] * scale)));
    }
}
// A Q10 value, to which half a unit has been added, of any size.
inline int16_t saturatedFromQ10(float value) {
    const double units = std::floor(std::trunc(static_cast<double>(value)) / 1024);
    return static_cast<int16_t>(std::clamp(units, -32768.0, 32767.0));
}
inline void referenceNarrowQ10(const float* in, float gain, int16_t* out, int count) {
    for (int i = 0; i < count; ++i) {
        const float scaled = in[i] * gain;
        out[i] = saturatedFromQ10(scaled + 512.0f);
    }
}

// The hooks, on an object of initFFT. They use its sizes and its scratch.
inline void referenceFwdFft(DftObj_t* object, int16_t* in, uint16_t dft_type, uint16_t /*scale_factor_q10*/,
                            int16_t* out, uint16_t /*len_out_buf*/) {
    const auto& context = *static_cast<const media::se_wrapper::FFTContext*>(object->context);
    const int n = context.dft_size_, m = context.data_len_;
    float* const data = context.scratch_.get();
    if (dft_type == 2) std::fill(in, in + std::max(0, n - m), int16_t{0});
    if (dft_type == 3) std::fill(in + std::min(n, m), in + n, int16_t{0});
    referenceWiden(in, data, n);
    publishedForwardFft(n, data);
    const auto s = static_cast<float>(1.0 / static_cast<double>(n));
    referenceNarrowScaled(data + 1, s, out + 2, n - 1);
    out[0] = static_cast<int16_t>(truncated(static_cast<double>(data[0] * s) * 0.5));
    out[n] = static_cast<int16_t>(out[n] >> 1);
    out[1] = out[n + 1] = 0;
}
inline uint16_t referenceInvFft(DftObj_t* object, int16_t* in, uint16_t /*dft_type*/,
                                uint16_t scale_factor_q10, int16_t* out, uint16_t /*ignored*/) {
    const auto& context = *static_cast<const media::se_wrapper::FFTContext*>(object->context);
    const int n = context.dft_size_;
    float* const data = context.scratch_.get();
    data[0] = static_cast<float>(in[0] * 2);
    referenceWiden(in + 2, data + 1, n - 1);
    data[n - 1] += data[n - 1];
    publishedBackwardFft(n, data);
    referenceNarrowQ10(data, static_cast<float>(scale_factor_q10), out, n);
    return context.dft_size_;
}

// The references of the hooks, on vectors.
class ReferenceFft {
  public:
    ReferenceFft(int n, int m) : context_(static_cast<uint16_t>(n), static_cast<uint16_t>(m)) {}

    // Pads `in` in place, as the hook does.
    Samples forward(Samples& in, int dft_type) {
        Samples out(context_.dft_size_ + 2u);
        referenceFwdFft(&object_, in.data(), static_cast<uint16_t>(dft_type), 1024, out.data(), 0);
        return out;
    }
    Samples inverse(Samples in, int scale_factor_q10) {
        Samples out(context_.dft_size_);
        referenceInvFft(&object_, in.data(), 4, static_cast<uint16_t>(scale_factor_q10), out.data(), 0);
        return out;
    }

  private:
    media::se_wrapper::FFTContext context_;
    DftObj_t object_{&context_};
};

}  // namespace quill::test
