// A file with the places of an array's microphones, for arrays other than that of an engine build: a line for each
// microphone around channel 1, with its channel, its distance from channel 1's microphone in millimetres, and its azimuth
// in degrees, counter-clockwise seen from above. "#" begins a comment. The reference engine reads the same.
#pragma once

#include <array>
#include <string>

namespace se_host {

struct ArrayFile {
    struct Place {
        double millimetres = 0;
        double degrees = 0;
    };

    static constexpr int kFirstChannel = 2;
    static constexpr int kLastChannel = 7;

    const Place& placeOf(int channel) const { return places[static_cast<size_t>(channel - kFirstChannel)]; }

    std::array<Place, kLastChannel - kFirstChannel + 1> places;  // by channel
    std::string text;                                            // the file
};

// The device's own array: a circle, every 60 degrees.
inline constexpr double kDeviceRadiusMm = 42.5;
inline constexpr double kDeviceModelRadiusMm = 35;
ArrayFile circleArray(double radius_mm);

// "-" is standard input. fails: Failure, with the line that is wrong.
ArrayFile readArrayFile(const std::string& path);

}  // namespace se_host
