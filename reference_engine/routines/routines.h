// The engine's own plain routines for its hook variables: portable C++, one algorithm a file. They define the
// arithmetic to the bit; a client's routines may be faster but must give the same bits (except the DFT).
// Threads: pure functions, the DFT set-up excepted. [audio] rt-safe, initDft [setup].
#pragma once

#include "reference_engine/engine_interface.h"

namespace reference_engine::plain {

ComputeRFirRoutine computeRFir;
AecConvolutionRoutine aecConvolution;
VCMulRoutine vcmul_i16;
Interp1toNRoutine interp1ToN;
InitDftRoutine initDft;
FwdDftRoutine fwdDft;
InvDftRoutine invDft;

}  // namespace reference_engine::plain
