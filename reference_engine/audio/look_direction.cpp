#include "reference_engine/audio/look_direction.h"

#include <algorithm>

namespace reference_engine {
namespace {

// Half-width of each sector around azimuth 0, in locations. kOneDirection has no sector of its own: it keeps
// the present location.
constexpr int kReach[kLookModes] = {6, 3, 1, 0};

bool inSector(int location, int mode, int present) {
    if (mode == kOneDirection) return location == present;
    return std::min(location, kLocations - location) <= kReach[mode];
}

int strongest(const float (&response)[kLocations], int mode, int present) {
    int best = -1;
    for (int d = 0; d < kLocations; ++d) {
        if (inSector(d, mode, present) && (best < 0 || response[d] > response[best])) best = d;
    }
    return best;
}

// Contrast of one direction with the mean of all: 0 in diffuse noise, 1 for a single talker in the free
// field.
int16_t contrast(const float (&response)[kLocations], int location) {
    float sum = 0;
    for (float power : response) sum += power;
    const float mean = sum / kLocations;
    const float ratio = (response[location] - mean) / std::max(1 - mean, 0.01f);
    return static_cast<int16_t>(32767 * std::clamp(ratio, 0.0f, 1.0f));
}

}  // namespace

void LookDirection::update(const DirectionSearch& search, const Settings& settings) {
    if (settings.bypass_location_search != 0) {
        location_ = settings.force_location_index;
        confidence_ = settings.force_location_confidence;
        rival_blocks_ = 0;
        sound_from_outside_ = false;
        return;
    }
    follow(search.response(), settings.look_mode, search.active(), settings.switch_hold_blocks);
    confidence_ = contrast(search.response(), location_);
    const int loudest = strongest(search.response(), kAllDirections, location_);
    sound_from_outside_ = !inSector(loudest, settings.look_mode, location_);
}

void LookDirection::follow(const float (&response)[kLocations], int mode, bool active, int hold_blocks) {
    const int best = strongest(response, mode, location_);
    if (!inSector(location_, mode, location_)) {
        location_ = best;
        return;
    }
    if (!active) return;
    if (best == location_ || best != rival_) rival_blocks_ = 0;
    rival_ = best;
    if (best != location_ && ++rival_blocks_ > hold_blocks) location_ = best;
}

}  // namespace reference_engine
