// Rows of samples, one a microphone.
#pragma once

#include "tools/scene/measure.h"

namespace se_scene {

inline MicrophoneRows silence(size_t frames) {
    return MicrophoneRows(kMicrophones, Row(frames));
}

inline void add(MicrophoneRows& sum, const MicrophoneRows& part) {
    for (size_t m = 0; m < sum.size(); ++m) {
        for (size_t i = 0; i < sum[m].size(); ++i) sum[m][i] += part[m][i];
    }
}

inline void scale(Row& row, double factor) {
    for (float& sample : row) sample = static_cast<float>(factor * static_cast<double>(sample));
}

inline void scale(MicrophoneRows& rows, double factor) {
    for (Row& row : rows) scale(row, factor);
}

// The factor that brings a level to the one asked for; silence stays silence.
inline double factorFor(double asked_dbfs, double present_dbfs) {
    return present_dbfs == kSilent ? 0 : fromDecibels(asked_dbfs - present_dbfs);
}

}  // namespace se_scene
