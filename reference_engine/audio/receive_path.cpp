#include "reference_engine/audio/receive_path.h"

#include <algorithm>
#include <iterator>

#include "reference_engine/routines/fixed_point.h"

namespace reference_engine {

void ReceivePath::init() {
    std::fill(std::begin(played_), std::end(played_), int16_t{0});
}

void ReceivePath::process(const int16_t* in, int16_t* out, int16_t gain_q10) {
    for (int i = 0; i < kBlock; ++i) played_[i] = saturate16((int32_t{in[i]} * gain_q10 + 512) >> 10);
    std::copy(std::begin(played_), std::end(played_), out);
}

}  // namespace reference_engine
