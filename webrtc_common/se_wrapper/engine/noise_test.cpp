#include "webrtc_common/se_wrapper/engine/noise_test.h"

#include <cerrno>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <memory>

#include "webrtc_common/se_wrapper/records.h"
#include "webrtc_common/se_wrapper/table/engine_answers.h"

namespace quill::media::se_wrapper {
namespace {

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

// As %f writes it in the C locale; printf itself takes the decimal point of the host's locale.
void writeLine(std::FILE* file, int row, float value) {
    char text[64];
    const auto written =
        std::to_chars(text, text + sizeof(text), static_cast<double>(value), std::chars_format::fixed, 6);
    std::fprintf(file, "%d %.*s\n", row, static_cast<int>(written.ptr - text), text);
}

void write(std::FILE* file, const NoiseTestResults& results) {
    for (int microphone = 0; microphone < NoiseTestResults::kMicrophones; ++microphone) {
        std::fprintf(file, "Microphone %d\n", microphone);
        for (int row = 0; row < NoiseTestResults::kRows; ++row) {
            writeLine(file, row, results.values[row * NoiseTestResults::kMicrophones + microphone]);
        }
    }
}

}  // namespace

bool getNoiseTestResults(NoiseTestResults* results) {
    const NoiseTestResults* const record = noiseTestResults();
    if (record == nullptr) return false;
    *results = *record;
    return true;
}

void saveNoiseTestResults(const std::string& path) {
    const NoiseTestResults* const results = noiseTestResults();
    if (results == nullptr) return;
    const std::unique_ptr<std::FILE, FileCloser> file(std::fopen(path.c_str(), "w"));
    if (!file) {
        const int error = errno;
        SE_WRAPPER_LOG(2) << "Can't write noise test results to " << path << ": " << std::strerror(error);
        return;
    }
    write(file.get(), *results);
}

}  // namespace quill::media::se_wrapper
