// The hook variables with the engine's own routines in them. All other code of the engine calls the routines
// through these variables only.
#include "reference_engine/engine_interface.h"
#include "reference_engine/routines/routines.h"

namespace plain = reference_engine::plain;

ComputeRFirRoutine* ComputeRFir = plain::computeRFir;
AecConvolutionRoutine* AecConvolution = plain::aecConvolution;
VCMulRoutine* VCMul_i16 = plain::vcmul_i16;
Interp1toNRoutine* Interp1toNCore = plain::interp1ToN;
InitDftRoutine* InitDftFcnHook = plain::initDft;
FwdDftRoutine* FwdDftFcnHook = plain::fwdDft;
InvDftRoutine* InvDftFcnHook = plain::invDft;
