#include "tests/host/library/opened_host.h"

#include <algorithm>
#include <random>
#include <sstream>

namespace se_host_library_test {
namespace {

constexpr size_t kWhySize = 512;

}  // namespace

std::string enginePath(const std::string& name) {
    return quill::test::enginePath(name);
}

Opened::Opened(const std::string& engine, const Change& change) {
    const std::string path = engine.empty() ? "" : enginePath(engine);
    se_host_options_t options = SE_HOST_OPTIONS_INIT;
    if (!path.empty()) options.engine = path.c_str();
    if (change) change(options);
    char why[kWhySize];
    status_ = se_host_open(&options, &host_, why, sizeof(why));
    why_ = why;
}

void Opened::close() {
    se_host_close(host_);
    host_ = nullptr;
}

void Opened::run(int blocks) const {
    const std::vector<int16_t> captured(SE_HOST_BLOCK * 8), far_end(SE_HOST_BLOCK);
    std::vector<int16_t> mono(SE_HOST_BLOCK);
    for (int i = 0; i < blocks; ++i) {
        se_host_process_i16(host_, captured.data(), 8, far_end.data(), SE_HOST_BLOCK, mono.data());
    }
}

// In one call: between two the value may change.
std::string Opened::get(const std::string& name) const {
    std::string text(size_t{1} << 16, '?');
    size_t length = 0;
    const se_host_status_t status = se_host_get(host_, name.c_str(), text.data(), text.size(), &length);
    if (status != SE_HOST_OK) return se_host_status_text(status);
    text.resize(length);
    return text;
}

se_host_status_t Opened::set(const std::string& name, const std::string& value) const {
    return se_host_set(host_, name.c_str(), value.c_str(), nullptr, 0);
}

std::string Opened::whyNot(const std::string& name, const std::string& value) const {
    char why[kWhySize];
    se_host_set(host_, name.c_str(), value.c_str(), why, sizeof(why));
    return why;
}

se_host_health_t Opened::health() const {
    se_host_health_t health{};
    health.size = sizeof(health);
    se_host_health(host_, &health);
    return health;
}

std::string Opened::advice() const {
    char text[4096];
    se_host_advice(host_, text, sizeof(text));
    std::istringstream lines(text);
    std::string all;
    for (std::string line; std::getline(lines, line);) {
        if (line.find("one block in a thousand") == 0) continue;
        all += (all.empty() ? "" : "\n") + line;
    }
    return all;
}

ScriptedEngine::ScriptedEngine() {
    gain = add("RcvGainQ10", kInt16);
    echo_safety_factor = add("senr_echo_safety_factor_q10", kInt16);
}

int ScriptedEngine::add(const std::string& name, int type, int length, int rw) {
    return engine->add_diag(name.c_str(), type, length, rw, 0, "help");
}

Sound::Sound(size_t frames, uint32_t all_channels)
    : channels(all_channels), captured(frames * all_channels), far_end(frames) {
    std::mt19937 random(7);
    std::uniform_int_distribution<int> noise(-6000, 6000);
    for (size_t frame = 0; frame < frames; ++frame) {
        far_end[frame] = static_cast<int16_t>(noise(random));
        for (uint32_t channel = 0; channel < channels; ++channel) {
            captured[frame * channels + channel] =
                static_cast<int16_t>(far_end[frame] / 4 + noise(random) / 8);
        }
    }
}

std::vector<int16_t> process(se_host_t* host, const Sound& sound, size_t frames_of_call) {
    std::vector<int16_t> mono(sound.frames());
    for (size_t done = 0; done < sound.frames(); done += frames_of_call) {
        const size_t count = std::min(frames_of_call, sound.frames() - done);
        se_host_process_i16(host, sound.captured.data() + done * sound.channels, sound.channels,
                            sound.far_end.data() + done, count, mono.data() + done);
    }
    return mono;
}

}  // namespace se_host_library_test
