// Every family of kernels that exist in several builds: selected together, listed together.
#pragma once

#include <vector>

#include "common/cpu_info.h"
#include "webrtc_common/export.h"

namespace quill::media::se_wrapper {

// Gives each family the widest build that `cpu` runs: selectConvolveKernels, selectRealFft and selectDspKernels.
// needs: none of the kernels is running. [setup]
SE_WRAPPER_EXPORT void selectKernels(const CPUInfo& cpu);

// A family, "convolution", "real_fft" or "dsp", and the build in use; null for functions that stand in no table.
struct SelectedKernels {
    const char* family;
    const char* variant;
};

// [any]
SE_WRAPPER_EXPORT std::vector<SelectedKernels> selectedKernels();

}  // namespace quill::media::se_wrapper
