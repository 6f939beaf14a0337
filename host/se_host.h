/* libse_host: the acoustic engine for any program, in C11. One engine a process; blocks of any length; live tuning;
 * health. The library does not resample and makes no threads.
 *
 *     se_host_options_t options = SE_HOST_OPTIONS_INIT;
 *     options.tuning = "gentle.json";
 *     se_host_t *host;
 *     char why[256];
 *     if (se_host_open(&options, &host, why, sizeof why) != SE_HOST_OK) return complain(why);
 *     se_host_process_i16(host, captured, 8, far_end, frames, mono);       // the audio thread
 *     se_host_set(host, "seout_gain_q10", "900", why, sizeof why);         // any other thread, meanwhile
 *     se_host_close(host);
 *
 * Threads, each function has one of these:
 *   [control]  any thread but the audio thread, several at once; waits for other [control] calls, never for [audio]
 *   [audio]    one thread at a time; allocates nothing, takes no lock, makes no system call, as far as the engine
 *   [any]      any thread, [audio] too
 *   [setup]    while no other call on this handle is in progress
 *
 * Errors: a status, and where a function takes `why`, a line of text without a line break that names the thing and what to
 * do about it; empty when the status is SE_HOST_OK. `why` may be NULL; `why_size` is its size in bytes, and a longer text is
 * cut. Handles are checked for NULL, other pointers as their function says; no exception leaves the library. An engine that
 * crashes or ends the process does so here too: a program that has to outlive its engine runs it in a process of its own.
 *
 * Structs begin with their size, which the caller sets. Fields are added at the end only, so that programs and
 * libraries of different versions fit. */
#ifndef SE_HOST_H
#define SE_HOST_H

#include <stddef.h>
#include <stdint.h>

#if defined(SE_HOST_BUILD)
#define SE_HOST_API __attribute__((visibility("default")))
#else
#define SE_HOST_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

enum {
    SE_HOST_SAMPLE_RATE = 16000, /* Hz */
    SE_HOST_BLOCK = 160,         /* frames that the engine takes at once */
    SE_HOST_MICROPHONES = 7,
    SE_HOST_MOST_CHANNELS = 1024 /* of a call */
};

/* Numbers never change their meaning. */
typedef enum se_host_status_t {
    SE_HOST_OK = 0,
    SE_HOST_BAD_ARGUMENT = 1, /* the call cannot be meant: a null pointer, a channel that does not exist */
    SE_HOST_BAD_ENGINE = 2,   /* there is no such engine build, or it cannot be used */
    SE_HOST_IN_USE = 3,       /* the process has a handle already, or another engine */
    SE_HOST_BAD_FILE = 4,     /* a tuning or an array cannot be read or written, or is not one */
    SE_HOST_UNKNOWN = 5,      /* the engine has no such setting */
    SE_HOST_REFUSED = 6,      /* read-only, or not a value for this setting */
    SE_HOST_FULL = 7,         /* more edits than the audio thread has taken; try again after some blocks */
    SE_HOST_DIFFERS = 8,      /* done, but the engine does not hold all settings as asked for */
    SE_HOST_FAILED = 9        /* no memory, or the engine threw an exception */
} se_host_status_t;

/* An engine that is ready for sound. */
typedef struct se_host_t se_host_t;

/* Use SE_HOST_OPTIONS_INIT, then set what differs. Texts are read during se_host_open only. */
typedef struct se_host_options_t {
    size_t size;
    const char*
        engine; /* file name of an engine build in `folder`, or a path with a slash; NULL: by `device_model` */
    const char*
        folder; /* of the engine builds; NULL: "selibs" beside the program, or else the installed ones */
    int device_model;     /* not 0: the device that has a build of its own */
    const char* array;    /* file with the places of the microphones; NULL: the engine's own array */
    const char* tuning;   /* tuning file that is applied before the first block; NULL: none */
    uint32_t sample_rate; /* of the caller's sound, 16000; 0: the same */
    uint32_t quantum;     /* each call brings a multiple of so many frames; 0: any number */
    int32_t microphones[SE_HOST_MICROPHONES]; /* channels of the microphones 1 to 7; -1: not there */
    int32_t far_end_channel; /* channel of the far end for calls without `far_end`; -1: none */
    /* Called for each log record of the process, on the thread that made it, until the handle is closed; NULL: standard
     * error. `level`: 1 fatal, 2 error, 4 notice, 5 trace. */
    void (*log)(void* context, int level, const char* tag, const char* text);
    void* log_context;
} se_host_options_t;

#define SE_HOST_OPTIONS_INIT \
    { sizeof(se_host_options_t), NULL, NULL, 0, NULL, NULL, 0, 0, {1, 2, 3, 4, 5, 6, 7}, -1, NULL, NULL }

/* [setup] Checks, loads and starts the engine, and applies the tuning.
 * out:   *host, NULL unless the status is SE_HOST_OK or SE_HOST_DIFFERS (the tuning: `why` has the first difference).
 * fails: SE_HOST_IN_USE when a handle is open, or the process has loaded another engine: an engine stays loaded until
 *        the process ends. A handle that was closed can be opened again, with the same engine as it starts. */
SE_HOST_API se_host_status_t se_host_open(const se_host_options_t* options, se_host_t** host, char* why,
                                          size_t why_size);

/* [setup] Edits that no block has taken are lost. NULL is allowed. */
SE_HOST_API void se_host_close(se_host_t* host);

/* --- Sound ---------------------------------------------------------------------------------------------------- */

/* [any] Frames by which `mono` follows the captured sound, the engine's own delay aside: 160 minus the greatest common
 * divisor of 160 and the quantum. So 0 for a quantum of 160 or 480, 159 for calls of any length. */
SE_HOST_API uint32_t se_host_latency(const se_host_t* host);

/* [audio] Any number of frames of 16 kHz sound; the output is, bit for bit, that of calls of 160 frames, later by the latency.
 * in:    captured, `frames` frames of `channels` interleaved samples; far_end, `frames` samples of what the loudspeaker
 *        plays at that time, or NULL for the channel of the options (silence without one).
 * out:   mono, `frames` samples. The buffers do not overlap.
 * reads: nothing behind the last sample. Any alignment of whole samples.
 * fails: SE_HOST_BAD_ARGUMENT, and `mono` untouched: a null pointer, a channel of the options that is not there, frames
 *        that are no multiple of the quantum. SE_HOST_FAILED, and silence for that block: the engine threw.
 * stack: less than 64 KB with the reference engine. */
SE_HOST_API se_host_status_t se_host_process_i16(se_host_t* host, const int16_t* captured, uint32_t channels,
                                                 const int16_t* far_end, size_t frames, int16_t* mono);

/* [audio] The same for samples of -1 to 1: multiplied by 32768, rounded to the nearest (halves away from zero) and limited
 * to int16; a NaN is 0. The output is that of the int16 call divided by 32768. */
SE_HOST_API se_host_status_t se_host_process_f32(se_host_t* host, const float* captured, uint32_t channels,
                                                 const float* far_end, size_t frames, float* mono);

/* [audio] The same with the samples of each channel in an array of its own. in: captured, `channels` pointers to `frames`
 * samples each. */
SE_HOST_API se_host_status_t se_host_process_planes_f32(se_host_t* host, const float* const* captured,
                                                        uint32_t channels, const float* far_end,
                                                        size_t frames, float* mono);

/* [audio] The caller's clock, in nanoseconds from any beginning, as the next call's first frame was captured. With it
 * se_host_health finds frames that did not come. Optional; then before each call. */
SE_HOST_API void se_host_clock(se_host_t* host, uint64_t nanoseconds);

/* [any] Not 0: the output is the sound of microphone 7 as it is, and the engine stands still. From the next block on. */
SE_HOST_API void se_host_bypass(se_host_t* host, int bypass);

/* --- Settings ------------------------------------------------------------------------------------------------- */

/* The engine's diagnostics by name ("seout_gain_q10") or by path ("diags/basic/seout_gain_q10"), and these: "aec_bypass",
 * "noise_reduction_bypass" (0 and 1), "location" and "location_conf" (read-only; the look direction and its confidence).
 *
 * Edits wait in a queue of SE_HOST_MOST_EDITS, from which the audio thread takes up to 4 before each block. Values
 * return in turns, 64 of them a block, and arrays whole; so they are as of some blocks ago. An array of more than
 * SE_HOST_MOST_ELEMENTS keeps the value that it had when the engine was opened. Without blocks nothing moves. */
enum { SE_HOST_MOST_EDITS = 1024, SE_HOST_MOST_ELEMENTS = 4096 };

/* [control] Asks for a value: a number, an enumeration's number, 0 or 1. It is read back at once; when the engine
 * had moved the same value meanwhile, the engine's stays and the edit counts as dropped (se_host_health_t).
 * fails: SE_HOST_UNKNOWN, SE_HOST_REFUSED, SE_HOST_FULL, and nothing is changed. */
SE_HOST_API se_host_status_t se_host_set(se_host_t* host, const char* name, const char* value, char* why,
                                         size_t why_size);

/* [control] out: the value as text: a number with the fewest digits ("none": not finite), "2 - Narrow" for an enumeration,
 * "[ 1, -2 ]" for an array; ended by 0 and cut to `size` bytes; *length, its whole length without the 0 (may be
 * NULL). fails: SE_HOST_UNKNOWN, and an empty text. */
SE_HOST_API se_host_status_t se_host_get(se_host_t* host, const char* name, char* value, size_t size,
                                         size_t* length);

/* A diagnostic. The texts live as long as the handle. A name and a path are the engine's bytes, which a faulty engine fills
 * with any; all other texts are a line without control characters. Set `size` before the call. */
typedef struct se_host_setting_t {
    size_t size;
    const char* name;
    const char* path;
    const char* type; /* "Int16", "UInt32", "Int40", "Float32", "Enum", "Bool", "none", ... */
    const char* help;
    uint32_t elements; /* 1: a single value */
    int writable;
    double lowest; /* what se_host_set takes */
    double highest;
} se_host_setting_t;

/* [any] The number of settings. */
SE_HOST_API size_t se_host_setting_count(const se_host_t* host);

/* [any] The setting `place`, from 0. fails: SE_HOST_BAD_ARGUMENT. */
SE_HOST_API se_host_status_t se_host_setting(const se_host_t* host, size_t place, se_host_setting_t* setting);

/* [control] Asks for all writable values of a tuning file; those that the engine holds already are left out. Other names and
 * values that cannot be are passed over: SE_HOST_DIFFERS, and `why` has the first. fails: SE_HOST_BAD_FILE, and
 * SE_HOST_FULL when there is no room for all: then nothing is changed. */
SE_HOST_API se_host_status_t se_host_load_tuning(se_host_t* host, const char* path, char* why,
                                                 size_t why_size);

/* [control] Writes all values to a tuning file, as a whole or not at all. fails: SE_HOST_BAD_FILE. */
SE_HOST_API se_host_status_t se_host_save_tuning(se_host_t* host, const char* path, char* why,
                                                 size_t why_size);

/* --- Health --------------------------------------------------------------------------------------------------- */

/* Which fields of se_host_health_t can be relied on. */
enum {
    SE_HOST_HAS_CLOCK = 1,      /* missing_frames, late_calls: se_host_clock was called */
    SE_HOST_HAS_LEVELS = 2,     /* far_end_dbfs, microphone_*: a second of sound was there */
    SE_HOST_HAS_ECHO_DELAY = 4, /* echo_delay_*: an echo was heard */
    SE_HOST_HAS_BLOCK_TIMES = 8 /* block_*: 100 blocks were processed */
};

/* Set `size` before the call. */
typedef struct se_host_health_t {
    size_t size;
    uint32_t valid;  /* SE_HOST_HAS_... */
    uint64_t frames; /* received */
    uint64_t blocks; /* processed by the engine */
    uint64_t bypassed_blocks;
    uint64_t failed_blocks; /* in which the engine threw an exception */
    uint64_t edits_applied;
    uint64_t edits_dropped;                           /* because the engine had moved the value */
    uint64_t missing_frames;                          /* that the clock says should have come */
    uint64_t late_calls;                              /* more than 20 ms behind the clock */
    double far_end_dbfs;                              /* of the last second; -144 for silence */
    double far_end_silent_seconds;                    /* how long the far end has been digital silence */
    double microphone_dbfs[SE_HOST_MICROPHONES];      /* of the last second */
    uint64_t microphone_clipped[SE_HOST_MICROPHONES]; /* samples at the limits of int16 */
    int32_t microphone_dead
        [SE_HOST_MICROPHONES];    /* 1: constant for a second, or 40 dB below the others' median */
    double echo_delay_ms;         /* of the echo behind the far end; below 0: the far end comes too late */
    double echo_delay_confidence; /* 0 to 1: the share of two-second pieces that agree */
    double block_mean_us;         /* time that the engine takes for a block */
    double block_999_us;          /* 99.9 % of the blocks take no longer */
    double block_worst_us;
} se_host_health_t;

/* [control] What the sound so far tells. The delay is found over the last 8 s by the generalised cross-correlation with phase
 * transform (Knapp and Carter 1976), which takes some milliseconds on the calling thread. */
SE_HOST_API se_host_status_t se_host_health(se_host_t* host, se_host_health_t* health);

/* [control] What is wrong and what to do, a sentence a line, ended by 0 and cut to `size` bytes; empty when nothing is.
 * result: the number of sentences. */
SE_HOST_API size_t se_host_advice(se_host_t* host, char* text, size_t size);

/* --- Names ---------------------------------------------------------------------------------------------------- */

/* [any] File name and version text of the engine; they live as long as the handle. */
SE_HOST_API const char* se_host_engine_build(const se_host_t* host);
SE_HOST_API const char* se_host_engine_version(const se_host_t* host);

/* [any] "0.1.0". */
SE_HOST_API const char* se_host_version(void);

/* [any] "the engine has no such setting". Never NULL. */
SE_HOST_API const char* se_host_status_text(int status);

#ifdef __cplusplus
}
#endif

#endif
