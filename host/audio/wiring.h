// Which of the caller's channels is what.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace se_host {

inline constexpr size_t kMicrophones = 7;

struct Wiring {
    static constexpr int32_t kNone = -1;

    std::array<int32_t, kMicrophones> microphones{1, 2, 3, 4, 5, 6, 7};
    int32_t far_end = kNone;

    // How many channels the caller's sound has to have; `far_end_apart`: it comes in a buffer of its own.
    uint32_t channels(bool far_end_apart) const {
        int32_t highest = far_end_apart ? kNone : far_end;
        for (const int32_t channel : microphones) highest = channel > highest ? channel : highest;
        return static_cast<uint32_t>(highest + 1);
    }
};

}  // namespace se_host
