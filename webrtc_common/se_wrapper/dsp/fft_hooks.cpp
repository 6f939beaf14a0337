// The DFT that the engine calls through its hooks.
// The transforms must not allocate.
#include "webrtc_common/se_wrapper/dsp/fft_hooks.h"

#include <memory>

#include "webrtc_common/fftpack/real_fft.h"
#include "webrtc_common/se_wrapper/dsp/fft_context.h"
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
    zeroPadding(*context, dft_type, in);
    fftpack::g_real_fft->forward_samples(n, in, static_cast<float>(1.0 / n), out, context->scratch_.get(),
                                         context->twiddles_.get(), context->factors_.get());
    // The mean of 16-bit samples fits in 16 bits, so truncating it before it is halved changes nothing.
    out[0] = static_cast<int16_t>(out[1] / 2);
    out[1] = 0;
    out[n] = static_cast<int16_t>(out[n] >> 1);
    out[n + 1] = 0;
}

uint16_t invFFT(DftObj_t* obj, int16_t* in, uint16_t dft_type, uint16_t scale_factor_q10, int16_t* out,
                uint16_t /*ignored*/) {
    const FFTContext* const context = contextOf(obj);
    QUILL_CHECK_EQ_AT(SE_WRAPPER_HERE, dft_type, 4);
    const int n = context->dft_size_;
    fftpack::g_real_fft->backward_samples(n, in, scale_factor_q10, out, context->scratch_.get(),
                                          context->twiddles_.get(), context->factors_.get());
    return context->dft_size_;
}

}  // namespace quill::media::se_wrapper
