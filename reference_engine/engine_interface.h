// The engine's C interface: all that a build exports. A client resolves these by name.
// Threads: one call at a time, from any thread; set-up, blocks and diagnostics must not overlap. The
// engine makes no threads and takes no locks. Microphones 0 to 6 are the rows of a block: the device's channels
// 1, 3, 2, 5, 6, 7 and 4; diagnostics have them in the order of the channels. Tags: [setup] before any audio, [control] between blocks,
// [audio] once a block; rt-safe: allocates nothing, makes no system call.
#pragma once

#include <cstddef>
#include <cstdint>

// The device-model build exports some symbols under later names. The sources use the first ones.
#ifdef SE_ENGINE_DEVICE_MODEL
#define SEDiagGetInt40 SEDiagGetInt64
#define SEDiagGetUInt40 SEDiagGetUInt64
#define SEDiagSetInt40 SEDiagSetInt64
#define SEDiagSetUInt40 SEDiagSetUInt64
#define SEDiagGetInt40Array SEDiagGetInt64Array
#define SEDiagGetUInt40Array SEDiagGetUInt64Array
#define ComputeRFir ComputeRFirFcnHook
#define AecConvolution AecConvolutionFcnHook
#define VCMul_i16 VCMul_i16_FcnHook
#define Interp1toNCore Interp1toNCoreFcnHook
#endif

#define SE_ENGINE_API __attribute__((visibility("default")))

// Exported by the beam-forming build only.
#ifdef SE_ENGINE_DEVICE_MODEL
#define SE_ENGINE_BEAM_API __attribute__((visibility("hidden")))
#else
#define SE_ENGINE_BEAM_API SE_ENGINE_API
#endif

extern "C" {

// ---- Audio ------------------------------------------------------------------------------------------------

// Sets the initial state, settings included, and reads the array file that SE_ARRAY_FILE names. Before it, blocks are
// silent and the receive path passes the far end through. in: `mode` 0, the only one. [setup]
SE_ENGINE_API void MMIfInit(uint16_t mode);

// One block of 10 ms at 16 kHz. in: `centre` 160 samples of microphone 0; `circle` 960 samples, microphones 1
// to 6 one after the other. out: 160 samples, 395 samples after the centre microphone. [audio] rt-safe
SE_ENGINE_API void MMIfProcessMicrophones(int16_t* centre, int16_t* circle, int16_t* out);

// The far-end block of the same 10 ms, called before the microphones. in: 160 samples. out: the 160 samples
// to play, the receive gain applied; may be `in`. [audio] rt-safe
SE_ENGINE_API void RcvIfProcessReceivePath(const int16_t* in, int16_t* out);

// in: Q10, 1024 = unity; below 0 counts as 0. [control]
SE_ENGINE_API void MMIfSetReceivePathGainQ10(int16_t gain);

// Text owned by the engine, for the life of the process. [control]
SE_ENGINE_API const char* MMIfGetVersionString(void);

// 0 or 1; 1: the echo is not subtracted. The canceller keeps adapting, so that it is ready at once. [control]
SE_ENGINE_API uint16_t MMIfGetAecBypass(void);
SE_ENGINE_API void MMIfSetAecBypass(uint16_t bypass);

// 0 or 1. Bypassed, the noise reduction is a delay as long as its own; faded over a block. [control]
SE_ENGINE_API uint16_t MMIfGetNoiseReductionBypass(void);
SE_ENGINE_API void MMIfSetNoiseReductionBypass(uint16_t bypass);

// ---- Look direction ---------------------------------------------------------------------------------------

// out: location 0 to 11, the azimuth 30 x location degrees counter-clockwise from microphone 1; confidence 0
// (all directions alike) to 32767 (all sound comes from there). [control]
SE_ENGINE_API void MMIfGetCurrentLocation(uint16_t* location, int16_t* confidence);

// Fixes the look direction and the reported confidence, from the next block on; clamped to their ranges.
// [control]
SE_ENGINE_API void MMIfSetManualLocation(int32_t location, int16_t confidence);

// Ends a manual location: the search continues in the sector that was chosen last. [control]
SE_ENGINE_API void MMIfSetAutoLocationSearch(void);

// These choose the sector to search and end a manual location: all around; within 90 degrees of
// azimuth 0; within 30 degrees; the present direction alone. in: `rejection_db`, attenuation of
// the output while the strongest sound comes from outside the sector, 0 to 40 dB. [control]
SE_ENGINE_BEAM_API void MMIfLookInAllDirectionsIncludingRear(void);
SE_ENGINE_BEAM_API void MMIfLookForwardRejectRearNoise(float rejection_db);
SE_ENGINE_BEAM_API void MMIfLookNarrowForwardRejectRearNoise(float rejection_db);
SE_ENGINE_BEAM_API void MMIfLookInOneDirectionRejectRearNoise(float rejection_db);

// ---- Microphone noise test --------------------------------------------------------------------------------

// 30 rows of one level for each microphone of the circle. Row k is the band from 250 k to 250 (k + 1) Hz, its
// level in dBFS (0: the mean square of full scale; -120 at least).
struct NoiseTestRecord {
    float level_dbfs[30][6];
};
static_assert(sizeof(NoiseTestRecord) == 720);

// Measures the microphones over the following blocks. A running test is restarted. [control]
SE_ENGINE_API void MMIfStartNoiseTest(void);
// 1 while a test is running, else 0. [control]
SE_ENGINE_API int32_t MMIfNoiseTestIsRunning(void);
// The last finished test; all -120 before the first. Memory of the engine, for the life of the process.
// [control]
SE_ENGINE_API NoiseTestRecord* MMIfGetNoiseTestResults(void);

// ---- Diagnostics ------------------------------------------------------------------------------------------

enum SEDiagType_t : int32_t {
    kSEDiagNone = 0,
    kSEDiagInt16 = 1,
    kSEDiagInt32 = 2,
    kSEDiagUInt16 = 3,
    kSEDiagUInt32 = 4,
    kSEDiagInt40 = 5,   // 40 bits, carried in 64
    kSEDiagUInt40 = 6,  // 40 bits, carried in 64
    kSEDiagFloat32 = 7,
    kSEDiagEnum = 8,
};

enum SEDiagRW_t : int32_t { kSEDiagNoAccess = 0, kSEDiagRead = 1, kSEDiagWrite = 2, kSEDiagReadWrite = 3 };

// One diagnostic. Older clients read `level` and `help` at these offsets.
struct SEDiag_t {
    char name[72];
    void* value;                // first element
    const char* const* labels;  // of an enumerated one, else null
    double lowest;              // range of written values, which are clamped to it
    double highest;
    SEDiagType_t type;
    int32_t len;    // elements; 1: a single value
    int32_t level;  // 0 basic, 1 intermediate, 2 advanced, 3 debug
    SEDiagRW_t rw;
    int32_t label_count;
    const char* help;
};
static_assert(offsetof(SEDiag_t, level) == 112);
static_assert(offsetof(SEDiag_t, help) == 128);

// All: in: index 0 to SEDiagGetNumDiags() - 1. Another index is answered with a blank diagnostic: type,
// length and values 0, texts empty. [control]
SE_ENGINE_API int32_t SEDiagGetNumDiags(void);
SE_ENGINE_API int32_t SEDiagGetIndex(const char* name);  // -1: unknown
SE_ENGINE_API SEDiag_t* SEDiagGet(int32_t index);
SE_ENGINE_API const char* SEDiagGetName(int32_t index);
SE_ENGINE_API SEDiagType_t SEDiagGetType(int32_t index);
SE_ENGINE_API int32_t SEDiagGetLen(int32_t index);
SE_ENGINE_API SEDiagRW_t SEDiagGetRW(int32_t index);
SE_ENGINE_BEAM_API int32_t SEDiagGetLevel(int32_t index);
SE_ENGINE_BEAM_API const char* SEDiagGetHelp(int32_t index);

// The value, or the first element; 0 from a diagnostic of another type.
SE_ENGINE_API int16_t SEDiagGetInt16(int32_t index);
SE_ENGINE_API uint16_t SEDiagGetUInt16(int32_t index);
SE_ENGINE_API int32_t SEDiagGetInt32(int32_t index);
SE_ENGINE_API uint32_t SEDiagGetUInt32(int32_t index);
SE_ENGINE_API int64_t SEDiagGetInt40(int32_t index);
SE_ENGINE_API uint64_t SEDiagGetUInt40(int32_t index);
SE_ENGINE_API float SEDiagGetFloat32(int32_t index);
SE_ENGINE_API int32_t SEDiagGetEnumAsInt(int32_t index);
SE_ENGINE_API const char* SEDiagGetEnumAsString(int32_t index);

// Clamped to the diagnostic's range. Ignored: another type, an array, a read-only diagnostic, NaN, a number
// without a label.
SE_ENGINE_API void SEDiagSetInt16(int32_t index, int16_t value);
SE_ENGINE_API void SEDiagSetUInt16(int32_t index, uint16_t value);
SE_ENGINE_API void SEDiagSetInt32(int32_t index, int32_t value);
SE_ENGINE_API void SEDiagSetUInt32(int32_t index, uint32_t value);
SE_ENGINE_API void SEDiagSetInt40(int32_t index, int64_t value);
SE_ENGINE_API void SEDiagSetUInt40(int32_t index, uint64_t value);
SE_ENGINE_API void SEDiagSetFloat32(int32_t index, float value);
SE_ENGINE_API void SEDiagSetEnumAsInt(int32_t index, int32_t value);

// The elements, in the engine's memory; null from a diagnostic of another type.
SE_ENGINE_API int16_t* SEDiagGetInt16Array(int32_t index);
SE_ENGINE_API uint16_t* SEDiagGetUInt16Array(int32_t index);
SE_ENGINE_API int32_t* SEDiagGetInt32Array(int32_t index);
SE_ENGINE_API uint32_t* SEDiagGetUInt32Array(int32_t index);
SE_ENGINE_API int64_t* SEDiagGetInt40Array(int32_t index);
SE_ENGINE_API uint64_t* SEDiagGetUInt40Array(int32_t index);
SE_ENGINE_API float* SEDiagGetFloat32Array(int32_t index);

// ---- Hooks ------------------------------------------------------------------------------------------------
// Variables through which the engine calls its inner routines. They hold the engine's own plain routines
// (routines/) until a client replaces them, before MMIfInit.

typedef void ComputeRFirRoutine(int16_t* signal, int16_t* coeffs, int16_t* out, uint16_t order,
                                uint16_t num_out, uint16_t step);
typedef void AecConvolutionRoutine(int16_t* coeffs, int16_t* signal, int32_t* out, int32_t shift_right,
                                   int32_t num_out, int32_t num_taps, int32_t shift_left);
typedef void VCMulRoutine(int16_t* a, int16_t* b, int16_t* out, uint16_t n);
typedef void Interp1toNRoutine(uint16_t num_in, uint16_t factor, int16_t** signal, int16_t* out,
                               int16_t* coeffs, uint16_t num_taps);

// A DFT of one size. The first field belongs to the DFT in the hooks.
struct DftObjStruct {
    void* context;
};
typedef struct DftObjStruct DftObj_t;
typedef void InitDftRoutine(DftObj_t* object, uint16_t dft_size, uint16_t data_len);
typedef void FwdDftRoutine(DftObj_t* object, int16_t* in, uint16_t dft_type, uint16_t scale_factor_q10,
                           int16_t* out, uint16_t len_out_buf);
typedef uint16_t InvDftRoutine(DftObj_t* object, int16_t* in, uint16_t dft_type, uint16_t scale_factor_q10,
                               int16_t* out, uint16_t len_out_buf);

extern SE_ENGINE_API ComputeRFirRoutine* ComputeRFir;
extern SE_ENGINE_API AecConvolutionRoutine* AecConvolution;
extern SE_ENGINE_API VCMulRoutine* VCMul_i16;
extern SE_ENGINE_API Interp1toNRoutine* Interp1toNCore;
extern SE_ENGINE_API InitDftRoutine* InitDftFcnHook;
extern SE_ENGINE_API FwdDftRoutine* FwdDftFcnHook;
extern SE_ENGINE_API InvDftRoutine* InvDftFcnHook;

}  // extern "C"
