#include "reference_engine/audio/look_direction.h"

#include <algorithm>
#include <cstdlib>

namespace reference_engine {
namespace {

// Half-width of each sector around azimuth 0, in locations. kOneDirection has no sector of its own: it keeps
// the present location.
constexpr int kReach[kLookModes] = {6, 3, 1, 0};

int distanceBetween(int a, int b) {
    return std::min(std::abs(a - b), kLocations - std::abs(a - b));
}

bool inSector(int location, int mode, int present) {
    return mode == kOneDirection ? location == present : distanceBetween(location, 0) <= kReach[mode];
}

// The location of the sector that is nearest to the source, the present one if it is as near.
int nearest(int source, int mode, int present) {
    int best = inSector(present, mode, present) ? present : -1;
    for (int d = 0; d < kLocations; ++d) {
        if (!inSector(d, mode, present)) continue;
        if (best < 0 || distanceBetween(d, source) < distanceBetween(best, source)) best = d;
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
    follow(nearest(search.source(), settings.look_mode, location_), settings.look_mode, search.active(),
           settings.switch_hold_blocks);
    confidence_ = contrast(search.response(), location_);
    sound_from_outside_ = !inSector(search.source(), settings.look_mode, location_);
}

void LookDirection::follow(int target, int mode, bool active, int hold_blocks) {
    if (!inSector(location_, mode, location_)) {
        location_ = target;
        return;
    }
    if (!active) return;
    if (target == location_ || target != rival_) rival_blocks_ = 0;
    rival_ = target;
    if (target != location_ && ++rival_blocks_ > hold_blocks) location_ = target;
}

}  // namespace reference_engine
