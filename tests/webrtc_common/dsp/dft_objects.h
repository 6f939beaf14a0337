// DFT objects as an engine keeps them: they and their contexts exist until the process ends.
#pragma once

#include <cstdint>
#include <deque>

#include "webrtc_common/se_wrapper/dsp/fft_context.h"
#include "webrtc_common/se_wrapper/dsp/fft_hooks.h"

namespace quill::test {

// An object that keeps its context reachable, so that a leak checker does not report it.
inline DftObj_t* keptObject(void* context) {
    static auto* const objects = new std::deque<DftObj_t>;
    objects->push_back({context});
    return &objects->back();
}

inline DftObj_t* newDftObject(int n, int m) {
    DftObj_t* const object = keptObject(nullptr);
    media::se_wrapper::initFFT(object, static_cast<uint16_t>(n), static_cast<uint16_t>(m));
    return object;
}

inline DftObj_t* newDftObject(int n) {
    return newDftObject(n, n);
}

inline const media::se_wrapper::FFTContext& contextOf(const DftObj_t* object) {
    return *static_cast<const media::se_wrapper::FFTContext*>(object->context);
}

// Even lengths with every remainder modulo 8, and the lengths that engines use.
inline constexpr int kDftSizes[] = {2,  4,  6,  8,   10,  12,  14,  16,  18,
                                    26, 60, 64, 160, 256, 320, 480, 512, 1024};

}  // namespace quill::test
