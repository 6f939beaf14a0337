#include "reference_engine/control/array_file.h"

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <locale>
#include <optional>
#include <sstream>

#include "reference_engine/routines/elementary.h"

namespace reference_engine {
namespace {

constexpr double kNearest = 10;    // millimetres from channel 1
constexpr double kFarthest = 100;  // the beams' filters reach no farther
constexpr double kLeastApart = 5;  // millimetres between two microphones
constexpr double kFullTurn = 360;
constexpr size_t kLargestFile = 65536;  // bytes

struct Line {
    int channel = 0;
    double millimetres = 0;
    double degrees = 0;
};

std::string inChannel(int channel) {
    return "channel " + std::to_string(channel);
}

// 0: the channel has none, or that of the centre.
size_t microphoneOf(int channel) {
    const auto* const found = std::find(std::begin(kChannelOf), std::end(kChannelOf), channel);
    return found == std::end(kChannelOf) ? 0 : static_cast<size_t>(found - kChannelOf);
}

// Nothing: the text is not of this form.
std::optional<Line> parsed(const std::string& text) {
    std::istringstream words(text);
    words.imbue(std::locale::classic());
    Line line;
    std::string rest;
    if (!(words >> line.channel >> line.millimetres >> line.degrees) || words >> rest) return std::nullopt;
    return line;
}

class Reader {
  public:
    // result: empty, or what is wrong with the line.
    std::string take(const std::string& text) {
        const std::string content = text.substr(0, text.find('#'));
        if (content.find_first_not_of(" \t\r") == std::string::npos) return {};
        const std::optional<Line> line = parsed(content);
        if (!line) return "three numbers are needed: channel, millimetres, degrees";
        const size_t microphone = microphoneOf(line->channel);
        if (microphone == 0) return inChannel(line->channel) + " is not one of 2 to 7";
        if (given_[microphone]) return inChannel(line->channel) + " comes twice";
        if (!(line->millimetres >= kNearest && line->millimetres <= kFarthest)) {
            return "the distance must be between 10 and 100 mm";
        }
        if (!(std::abs(line->degrees) <= kFullTurn))
            return "the azimuth must be between -360 and 360 degrees";
        given_[microphone] = true;
        places_[microphone] = {line->millimetres / 1000, line->degrees * M_PI / 180};
        return {};
    }

    std::string finish(MicrophonePlaces* places) const {
        for (int channel = 2; channel <= kMicrophones; ++channel) {
            if (!given_[microphoneOf(channel)]) return inChannel(channel) + " is missing";
        }
        for (size_t m = 1; m < places_.size(); ++m) {
            for (size_t n = 1; n < m; ++n) {
                if (apart(m, n) < kLeastApart / 1000) {
                    return "the channels " + std::to_string(kChannelOf[n]) + " and " +
                           std::to_string(kChannelOf[m]) + " are less than 5 mm apart";
                }
            }
        }
        *places = places_;
        return {};
    }

  private:
    double apart(size_t m, size_t n) const {
        const MicrophonePlace& a = places_[m];
        const MicrophonePlace& b = places_[n];
        const double x = a.distance * cosine(a.azimuth) - b.distance * cosine(b.azimuth);
        const double y = a.distance * sine(a.azimuth) - b.distance * sine(b.azimuth);
        return std::sqrt(x * x + y * y);
    }

    MicrophonePlaces places_ = {};
    bool given_[kMicrophones] = {};
};

}  // namespace

std::string readArrayFile(const char* path, MicrophonePlaces* places) {
    struct stat status = {};
    if (::stat(path, &status) != 0) return std::strerror(errno);
    if (!S_ISREG(status.st_mode)) return "it is no regular file";  // to open a pipe would wait for its writer
    std::ifstream file(path, std::ios::binary);
    if (!file) return std::strerror(errno);
    std::string content(kLargestFile + 1, '\0');
    file.read(content.data(), static_cast<std::streamsize>(content.size()));
    if (file.bad()) return "it cannot be read";
    if (file) return "it is larger than 64 KiB";
    content.resize(static_cast<size_t>(file.gcount()));
    std::istringstream lines(content);
    Reader reader;
    std::string text;
    for (int number = 1; std::getline(lines, text); ++number) {
        const std::string refusal = reader.take(text);
        if (!refusal.empty()) return "line " + std::to_string(number) + ": " + refusal;
    }
    return reader.finish(places);
}

ArraySource placeArray() {
    placeBuiltInMicrophones();
    const char* const path = ::secure_getenv(kArrayFileVariable);
    if (path == nullptr || *path == '\0') return kBuiltInArray;
    MicrophonePlaces places;
    const std::string refusal = readArrayFile(path, &places);
    if (!refusal.empty()) {
        std::fprintf(stderr, "%s '%s': %s; the built-in array is used\n", kArrayFileVariable, path,
                     refusal.c_str());
        return kRefusedArrayFile;
    }
    placeMicrophones(places);
    return kArrayOfFile;
}

}  // namespace reference_engine
