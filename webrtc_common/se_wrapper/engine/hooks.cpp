#include "webrtc_common/se_wrapper/engine/hooks.h"

#include "webrtc_common/se_wrapper/dsp/aec_convolution.h"
#include "webrtc_common/se_wrapper/dsp/complex_multiply.h"
#include "webrtc_common/se_wrapper/dsp/compute_rfir.h"
#include "webrtc_common/se_wrapper/dsp/fft_hooks.h"
#include "webrtc_common/se_wrapper/dsp/interpolate.h"
#include "webrtc_common/se_wrapper/engine/saved_routines.h"
#include "webrtc_common/se_wrapper/table/engine_table.h"

namespace quill::media::se_wrapper {

Interp1toNCoreRoutine interp1toNCore_SE = nullptr;
AecConvolutionRoutine aecConvolution_SE = nullptr;
ComputeRFirRoutine computeRFir_SE = nullptr;
VCMulRoutine vcmul_i16_SE = nullptr;

void saveEngineRoutines() {
    interp1toNCore_SE = *Interp1toNCore_FcnHook;
    aecConvolution_SE = *AecConvolution_FcnHook;
    computeRFir_SE = *ComputeRFir_FcnHook;
    vcmul_i16_SE = *VCMul_i16_FcnHook;
}

void installHooks() {
    if (InitDft_FcnHook != nullptr) {  // an engine has all DFT hooks or none
        *InitDft_FcnHook = initFFT;
        *FwdDft_FcnHook = fwdFFT;
        *InvDft_FcnHook = invFFT;
    }
    *AecConvolution_FcnHook = aecConvolution;
    *Interp1toNCore_FcnHook = interp1ToNCore;
    *ComputeRFir_FcnHook = computeRFir;
    *VCMul_i16_FcnHook = vcmul_i16;
}

}  // namespace quill::media::se_wrapper
