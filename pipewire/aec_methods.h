// The methods of an echo canceller as PipeWire's module-echo-cancel calls them. Version 2 has one format for all streams, in
// `init`; version 3 adds `init2`, with a format for each. The header of libspa 0.3 ends at version 2, so the table is
// declared here. One table serves both: a module calls the methods that it knows.
#pragma once

#include <spa/interfaces/audio/aec.h>

#include <cstddef>
#include <cstdint>

namespace se_pipewire {

struct AecMethods {
    static constexpr uint32_t kVersion = 3;

    uint32_t version;

    int (*add_listener)(void* object, spa_hook* listener, const spa_audio_aec_events* events, void* data);
    int (*init)(void* object, const spa_dict* arguments, const spa_audio_info_raw* format);
    int (*run)(void* object, const float* captured[], const float* played[], float* output[],
               uint32_t frames);
    int (*set_props)(void* object, const spa_dict* settings);
    int (*activate)(void* object);
    int (*deactivate)(void* object);

    // index: of a parameter; the result is their number when there is no builder
    int (*enum_props)(void* object, int index, spa_pod_builder* builder);
    // result: the number of values, with and without a builder
    int (*get_params)(void* object, spa_pod_builder* builder);
    int (*set_params)(void* object, const spa_pod* values);

    // The module gives the formats in this order, whatever the parameters are called in its header.
    int (*init2)(void* object, const spa_dict* arguments, spa_audio_info_raw* captured,
                 spa_audio_info_raw* output, spa_audio_info_raw* played);
};

constexpr std::size_t kSlotsBehindHeader = SPA_VERSION_AUDIO_AEC_METHODS < AecMethods::kVersion ? 1 : 0;
static_assert(sizeof(AecMethods) == sizeof(spa_audio_aec_methods) + kSlotsBehindHeader * sizeof(void*),
              "module-echo-cancel has other methods than this file");
static_assert(offsetof(AecMethods, run) == offsetof(spa_audio_aec_methods, run));
static_assert(offsetof(AecMethods, set_params) == offsetof(spa_audio_aec_methods, set_params));

}  // namespace se_pipewire
