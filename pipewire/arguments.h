// What a configuration says in `aec.args`. Keys that begin with "se." are ours: an unknown one is an error, so that a typing
// error does not go unnoticed. All other keys belong to somebody else and are ignored.
#pragma once

#include <spa/param/audio/raw.h>
#include <spa/utils/dict.h>

#include "host/se_host.h"

namespace se_pipewire {

// result: its texts are those of the dictionary. fails: std::invalid_argument, with a line of text.
se_host_options_t optionsOf(const spa_dict* arguments);

// Whether an engine can work on a stream of this format. fails: std::invalid_argument, which says what to write into the
// configuration.
void requireFormat(const spa_audio_info_raw& captured, const se_host_options_t& options);

}  // namespace se_pipewire
