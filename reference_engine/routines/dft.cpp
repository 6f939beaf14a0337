// The engine's own DFT routines: a single-precision transform between 16-bit blocks and packed 16-bit
// spectra. Bins 1 to n/2 - 1 are scaled by 1/n, DC and Nyquist by 1/(2n); n + 2 values, real and imaginary
// part in turn, the imaginary parts of DC and Nyquist 0.
#include <cstddef>
#include <cstring>
#include <map>
#include <utility>

#include "reference_engine/routines/real_fft.h"
#include "reference_engine/routines/routines.h"

namespace reference_engine::plain {
namespace {

enum : uint16_t { kDataAtEnd = 2, kDataAtStart = 3 };  // forward types: which part of the block is zeroed

struct Context {
    RealFft fft;
    uint16_t data_len = 0;
};

// Tables without scratch, so objects of one size and length share a context. None is ever released.
std::map<std::pair<uint16_t, uint16_t>, Context> g_contexts;

const Context& contextOf(DftObj_t* object) {
    return *static_cast<const Context*>(object->context);
}

// Truncated towards zero.
int16_t truncated(float value) {
    return static_cast<int16_t>(static_cast<int32_t>(value));
}

// To 16 bits from 10 fraction bits: rounded half up, saturated.
int16_t fromQ10(float value) {
    const float shifted = value + 512.0f;
    if (shifted >= 32768.0f * 1024) return 32767;
    if (shifted < -32768.0f * 1024) return -32768;
    return static_cast<int16_t>(static_cast<int32_t>(shifted) >> 10);
}

}  // namespace

// needs: dft_size a power of two, 4 to 1024; data_len no larger.
void initDft(DftObj_t* object, uint16_t dft_size, uint16_t data_len) {
    Context& context = g_contexts[{dft_size, data_len}];
    context.fft.init(dft_size);
    context.data_len = data_len;
    object->context = &context;
}

void fwdDft(DftObj_t* object, int16_t* in, uint16_t dft_type, uint16_t /*scale_factor_q10: always unity*/,
            int16_t* out, uint16_t /*len_out_buf*/) {
    const Context& context = contextOf(object);
    const size_t n = static_cast<size_t>(context.fft.size());
    const size_t blank = n - context.data_len;
    if (dft_type == kDataAtEnd) std::memset(in, 0, blank * sizeof *in);
    if (dft_type == kDataAtStart) std::memset(in + context.data_len, 0, blank * sizeof *in);

    float samples[RealFft::kLargest] = {};
    std::complex<float> bins[RealFft::kLargest / 2 + 1];
    for (size_t i = 0; i < n; ++i) samples[i] = in[i];
    context.fft.forward(samples, bins);

    const float scale = 1.0f / static_cast<float>(n);
    for (size_t k = 0; k <= n / 2; ++k) {
        out[2 * k] = truncated(bins[k].real() * scale);
        out[2 * k + 1] = truncated(bins[k].imag() * scale);
    }
    // Kept on purpose: DC is halved before the conversion to an integer, Nyquist after it, rounding down.
    out[0] = truncated(bins[0].real() * scale * 0.5f);
    out[n] = static_cast<int16_t>(out[n] >> 1);
    out[1] = out[n + 1] = 0;
}

uint16_t invDft(DftObj_t* object, int16_t* in, uint16_t /*dft_type: always inverse*/,
                uint16_t scale_factor_q10, int16_t* out, uint16_t /*len_out_buf*/) {
    const Context& context = contextOf(object);
    const size_t n = static_cast<size_t>(context.fft.size());
    float samples[RealFft::kLargest] = {};
    std::complex<float> bins[RealFft::kLargest / 2 + 1];
    for (size_t k = 0; k <= n / 2; ++k) bins[k] = {float(in[2 * k]), float(in[2 * k + 1])};
    bins[0] = 2.0f * in[0];
    bins[n / 2] = 2.0f * in[n];
    context.fft.backward(bins, samples);
    for (size_t i = 0; i < n; ++i) out[i] = fromQ10(samples[i] * scale_factor_q10);
    return static_cast<uint16_t>(n);
}

}  // namespace reference_engine::plain
