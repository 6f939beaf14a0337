#include "webrtc_common/se_wrapper/dsp/select_kernels.h"

#include "webrtc_common/convolve/convolve.h"
#include "webrtc_common/fftpack/real_fft.h"
#include "webrtc_common/se_wrapper/dsp/dsp_kernels.h"

namespace quill::media::se_wrapper {
namespace {

struct Family {
    const char* name;
    void (*select)(const CPUInfo& cpu);
    const char* (*selected)();
};

const char* selectedConvolution() {
    const ConvolveVariant* const variant = selectedConvolveVariant();
    return variant == nullptr ? nullptr : variant->name;
}

constexpr Family kFamilies[] = {
    {"convolution", selectConvolveKernels, selectedConvolution},
    {"real_fft", fftpack::selectRealFft, [] { return fftpack::g_real_fft->name; }},
    {"dsp", selectDspKernels, [] { return g_dsp_kernels->name; }},
};

}  // namespace

void selectKernels(const CPUInfo& cpu) {
    for (const Family& family : kFamilies) family.select(cpu);
}

std::vector<SelectedKernels> selectedKernels() {
    std::vector<SelectedKernels> all;
    for (const Family& family : kFamilies) all.push_back({family.name, family.selected()});
    return all;
}

}  // namespace quill::media::se_wrapper
