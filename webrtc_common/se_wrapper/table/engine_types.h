// The engine's own C types as far as the wrapper knows them: the layouts are the engine's and must not
// change. Data only, no threads.
#pragma once

#include <cstddef>
#include <cstdint>

// The engine's DFT object. The engine allocates it and leaves the first field to the DFT implementation;
// what follows belongs to the engine and is never touched, so the object is always handled by address.
struct DftObjStruct {
    void* context;
};
using DftObj_t = DftObjStruct;

// The value type of a diagnostic. The engine may answer any number; those not named here have no value.
enum SEDiagType_t : int32_t {
    SE_DIAG_TYPE_NONE = 0,
    SE_DIAG_TYPE_INT16 = 1,
    SE_DIAG_TYPE_INT32 = 2,
    SE_DIAG_TYPE_UINT16 = 3,
    SE_DIAG_TYPE_UINT32 = 4,
    SE_DIAG_TYPE_INT40 = 5,   // carried in a signed 64-bit integer
    SE_DIAG_TYPE_UINT40 = 6,  // carried in an unsigned 64-bit integer
    SE_DIAG_TYPE_FLOAT32 = 7,
    SE_DIAG_TYPE_ENUM = 8,  // a signed 32-bit value with a label
};

// Access bits of a diagnostic. Only this one has a meaning for the wrapper.
enum SEDiagRW_t : int32_t {
    SE_DIAG_RW_WRITABLE = 2,
};

// The engine's record of one diagnostic, in memory that the engine keeps alive. The wrapper reads the two
// named members and no other.
struct SEDiag_t {
    std::byte engine_private_0[112];
    int32_t level;  // 0 basic, 1 intermediate, 2 advanced, 3 debug
    std::byte engine_private_1[12];
    const char* help;
};
static_assert(offsetof(SEDiag_t, level) == 112);
static_assert(offsetof(SEDiag_t, help) == 128);

namespace quill::media::se_wrapper {

// The engine's record of a microphone noise test: 30 rows of one value for each of 6 microphones.
struct NoiseTestResults {
    static constexpr int kRows = 30;
    static constexpr int kMicrophones = 6;
    float values[kRows * kMicrophones];  // row after row
};
static_assert(sizeof(NoiseTestResults) == 720);

// The routines that the engine calls through its hook variables. All of them: [audio], the DFT set-up
// excepted, which the engine calls during its own initialisation.
using ComputeRFirRoutine = void (*)(int16_t* signal, int16_t* coeffs, int16_t* out, uint16_t order,
                                    uint16_t num_out, uint16_t step);
using AecConvolutionRoutine = void (*)(int16_t* coeffs, int16_t* signal, int32_t* out, int32_t shift_right,
                                       int32_t num_out, int32_t num_taps, int32_t shift_left);
using VCMulRoutine = void (*)(int16_t* a, int16_t* b, int16_t* out, uint16_t n);
using Interp1toNCoreRoutine = void (*)(uint16_t num_in, uint16_t factor, int16_t** signal, int16_t* out,
                                       int16_t* coeffs, uint16_t num_taps);
using InitDftRoutine = void (*)(DftObj_t* obj, uint16_t dft_size, uint16_t data_len);
using FwdDftRoutine = void (*)(DftObj_t* obj, int16_t* in, uint16_t dft_type, uint16_t scale_factor_q10,
                               int16_t* out, uint16_t len_out_buf);
using InvDftRoutine = uint16_t (*)(DftObj_t* obj, int16_t* in, uint16_t dft_type, uint16_t scale_factor_q10,
                                   int16_t* out, uint16_t ignored);

}  // namespace quill::media::se_wrapper
