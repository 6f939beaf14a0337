// Short scenes with one part each, to measure the parts.
#pragma once

#include "tools/scene/measure.h"
#include "tools/scene/scene.h"

namespace se_scene {

inline SceneOptions silentScene(double seconds) {
    SceneOptions options;
    options.seconds = seconds;
    options.talker_level_dbfs = kSilent;
    options.sensor_noise_dbfs = kSilent;
    return options;
}

inline SceneOptions talkerAlone(double seconds) {
    SceneOptions options = silentScene(seconds);
    options.talker_level_dbfs = -26;
    return options;
}

inline SceneOptions echoAlone(double seconds) {
    SceneOptions options = silentScene(seconds);
    options.echo_level_dbfs = -30;
    return options;
}

inline SceneOptions fullScene(double seconds) {
    SceneOptions options;
    options.seconds = seconds;
    options.diffuse_noise_dbfs = -50;
    options.echo_level_dbfs = -30;
    options.reverberation_s = 0.2;
    return options;
}

}  // namespace se_scene
