// The functions that the AVX entry points can run: convolve_body_i16_i16_<set> and convolve_body_i16_i32_<set> for
// each set of convolve_variant_rows.h. And the kernels of pairs.h: filter_pairs_<set> and total_pairs_<set> for these sets
// and the floor.
#pragma once

#include "webrtc_common/convolve/convolve.h"

// needs: a processor with what the name says. They leave the upper halves of the vector registers zero.
extern "C" {
quill::media::se_wrapper::FilterPairs filter_pairs_ssse3;
quill::media::se_wrapper::TotalPairs total_pairs_ssse3;
#define CONVOLVE_AVX_VARIANT(name, set, feature)              \
    ConvolveI16I16 convolve_body_i16_i16_##set;               \
    ConvolveI16I32 convolve_body_i16_i32_##set;               \
    quill::media::se_wrapper::FilterPairs filter_pairs_##set; \
    quill::media::se_wrapper::TotalPairs total_pairs_##set;
#include "webrtc_common/convolve/convolve_variant_rows.h"
}
