// The DFT that the engine calls through its hooks.
// Threads: the transforms audio, initFFT set-up. The transforms must not allocate.
#include "webrtc_common/se_wrapper/dsp/fft_hooks.h"

#include <memory>

#include "webrtc_common/fftpack/real_fft.h"
#include "webrtc_common/se_wrapper/dsp/dsp_kernels.h"
#include "webrtc_common/se_wrapper/dsp/fft_context.h"
#include "webrtc_common/se_wrapper/dsp/fft_conversion.h"
#include "webrtc_common/se_wrapper/records.h"

namespace quill::media::se_wrapper {
namespace {

enum DftType : int { kDataAtEnd = 2, kDataAtStart = 3 };

FFTContext* contextOf(const DftObj_t* obj) {
    return static_cast<FFTContext*>(obj->context);
}

void zeroPadding(const FFTContext& context, int dft_type, int16_t* in) {
    const int n = context.dft_size_;
    const int m = context.data_len_;
    if (dft_type == kDataAtEnd) {
        for (int i = 0; i < n - m; ++i) in[i] = 0;
    } else if (dft_type == kDataAtStart) {
        for (int i = m; i < n; ++i) in[i] = 0;
    }
}

}  // namespace

void initFFT(DftObjStruct* obj, uint16_t dft_size, uint16_t data_len) {
    auto context = std::make_unique<FFTContext>(dft_size, data_len);
    g_fft_contexts.push_back(context.get());
    obj->context = context.release();
}

void fwdFFT(DftObj_t* obj, int16_t* in, uint16_t dft_type, uint16_t scale_factor_q10, int16_t* out,
            uint16_t len_out_buf) {
    const FFTContext* const context = contextOf(obj);
    QUILL_CHECK_EQ_AT(SE_WRAPPER_HERE, 1024, scale_factor_q10);
    QUILL_CHECK_LE_AT(SE_WRAPPER_HERE, context->dft_size_ + 2, len_out_buf);
    const int n = context->dft_size_;
    float* const spectrum = context->scratch_.get();

    zeroPadding(*context, dft_type, in);
    fftpack::g_real_fft->forward_of_samples(n, in, spectrum, context->twiddles_.get(),
                                            context->factors_.get());

    const auto scale = static_cast<float>(1.0 / n);
    out[0] = narrowScaledHalf(spectrum[0], scale);
    out[1] = 0;
    // The low 16 bits are the contract. No bin of 16-bit samples over n exceeds 16 bits, so the saturation that
    // comes with the instruction never acts.
    g_dsp_kernels->narrowScaled(spectrum + 1, scale, out + 2, n - 1);
    out[n] = static_cast<int16_t>(out[n] >> 1);
    out[n + 1] = 0;
}

uint16_t invFFT(DftObj_t* obj, int16_t* in, uint16_t dft_type, uint16_t scale_factor_q10, int16_t* out,
                uint16_t /*ignored*/) {
    const FFTContext* const context = contextOf(obj);
    QUILL_CHECK_EQ_AT(SE_WRAPPER_HERE, dft_type, 4);
    const int n = context->dft_size_;
    float* const samples = context->scratch_.get();

    samples[0] = static_cast<float>(in[0] * 2);
    g_dsp_kernels->widen(in + 2, samples + 1, n - 1);
    samples[n - 1] += samples[n - 1];
    fftpack::g_real_fft->backward_to_samples(n, samples, scale_factor_q10, out, context->twiddles_.get(),
                                             context->factors_.get());
    return context->dft_size_;
}

}  // namespace quill::media::se_wrapper
