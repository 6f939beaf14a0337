#include "host/engine/array_file.h"

#include <cmath>
#include <complex>
#include <locale>
#include <set>
#include <sstream>

#include "common/string_printf.h"
#include "host/output/errors.h"
#include "host/output/input_file.h"

namespace se_host {
namespace {

using quill::stringPrintf;

constexpr double kNearest = 10;       // millimetres from channel 1
constexpr double kFarthest = 100;     // the reference engine's filters reach no farther
constexpr double kLeastApart = 5;     // millimetres between two microphones
constexpr double kFullTurn = 360;     // degrees
constexpr size_t kMostBytes = 65536;  // that the reference engine reads

constexpr se_output::InputKind kArrayText{
    "give a text with channel, millimetres and degrees of the microphones 2 to 7", kMostBytes,
    [](std::string_view) { return true; }};

struct Line {
    int channel = 0;
    ArrayFile::Place place;
};

Line parsed(const std::string& text) {
    std::istringstream words(text);
    words.imbue(std::locale::classic());
    Line line;
    std::string rest;
    if (!(words >> line.channel >> line.place.millimetres >> line.place.degrees) || words >> rest) {
        throw se_output::Failure("three numbers are needed: channel, millimetres, degrees");
    }
    return line;
}

void check(const Line& line) {
    if (line.channel < ArrayFile::kFirstChannel || line.channel > ArrayFile::kLastChannel) {
        throw se_output::Failure(stringPrintf("channel %d is not one of 2 to 7", line.channel));
    }
    if (!(line.place.millimetres >= kNearest && line.place.millimetres <= kFarthest)) {
        throw se_output::Failure("the distance must be between 10 and 100 mm");
    }
    if (!(std::abs(line.place.degrees) <= kFullTurn)) {
        throw se_output::Failure("the azimuth must be between -360 and 360 degrees");
    }
}

std::complex<double> positionOf(const ArrayFile::Place& place) {
    return std::polar(place.millimetres, place.degrees * M_PI / 180);
}

void requireAllApart(const ArrayFile& array, const std::set<int>& given) {
    for (int channel = ArrayFile::kFirstChannel; channel <= ArrayFile::kLastChannel; ++channel) {
        if (given.count(channel) == 0)
            throw se_output::Failure(stringPrintf("channel %d is missing", channel));
        for (int other = ArrayFile::kFirstChannel; other < channel; ++other) {
            if (std::abs(positionOf(array.placeOf(channel)) - positionOf(array.placeOf(other))) <
                kLeastApart) {
                throw se_output::Failure(
                    stringPrintf("the channels %d and %d are less than 5 mm apart", other, channel));
            }
        }
    }
}

bool isBlank(const std::string& text) {
    return text.find_first_not_of(" \t\r") == std::string::npos;
}

void parse(ArrayFile& array) {
    std::istringstream lines(array.text);
    std::set<int> given;
    std::string text;
    for (int number = 1; std::getline(lines, text); ++number) {
        text.resize(std::min(text.find('#'), text.size()));
        if (isBlank(text)) continue;
        try {
            const Line line = parsed(text);
            check(line);
            if (!given.insert(line.channel).second) {
                throw se_output::Failure(stringPrintf("channel %d comes twice", line.channel));
            }
            array.places[static_cast<size_t>(line.channel - ArrayFile::kFirstChannel)] = line.place;
        } catch (const se_output::Failure& failure) {
            throw se_output::Failure(stringPrintf("line %d: ", number) + failure.what());
        }
    }
    requireAllApart(array, given);
}

}  // namespace

ArrayFile circleArray(double radius_mm) {
    constexpr double kAzimuths[] = {60, 0, 300, 120, 180, 240};  // of the channels 2 to 7
    ArrayFile array;
    for (size_t i = 0; i < array.places.size(); ++i) array.places[i] = {radius_mm, kAzimuths[i]};
    return array;
}

ArrayFile readArrayFile(const std::string& path) {
    const se_output::Descriptor file = se_output::openInput(path, kArrayText);
    ArrayFile array;
    array.text = se_output::contentOf(file.number());
    if (array.text.size() > kMostBytes)
        throw se_output::Failure("array '" + path + "' is larger than 64 KiB");
    try {
        parse(array);
    } catch (const se_output::Failure& failure) {
        throw se_output::Failure(
            "array '" + path + "': " + failure.what() +
            "; each of the channels 2 to 7 needs a line of channel, millimetres, degrees");
    }
    return array;
}

}  // namespace se_host
