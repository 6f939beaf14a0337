// Microphones that are not where they should be: with them put right, the sound arrives as from one direction (steered response
// power with phase transform, DiBiase 2000).
#pragma once

#include <utility>
#include <vector>

#include "host/engine/array_file.h"
#include "tools/se_host/sound/recording.h"

namespace se_host {

using MicrophonePair = std::pair<int, int>;

// What explains the sound much better than the order as it is, each as well as the others: with a regular array some exchanges
// are the same as another order, seen from elsewhere.
struct ExchangedMicrophones {
    std::vector<MicrophonePair> pairs;  // of which one changed places
    std::vector<int> order;             // where each microphone is found, 1 to 7, when many are elsewhere
};

// Empty when the order is right, or the sound does not tell. Another array than `array` can look like an exchange. Of the orders
// those count that are easily taken for the right one: that of the engine's rows, and channels that are late or early by one.
ExchangedMicrophones exchangedMicrophones(const Recording& recording, const ArrayFile& array);

}  // namespace se_host
