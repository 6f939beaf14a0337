// libse_host through its C interface: calls in any order, with any arguments that its header accepts or refuses, on an
// engine whose catalogue is any.
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "common/logging.h"
#include "host/se_host.h"
#include "tests/engines/test_engine.h"
#include "tests/fuzz/support/entry.h"
#include "tests/fuzz/support/input.h"
#include "tests/fuzz/support/require.h"
#include "tests/fuzz/support/scratch_file.h"

namespace quill::fuzz {
namespace {

constexpr int kDiags = 12;
constexpr unsigned kMostCalls = 100;
constexpr const char* kEngine = "test_engines/full";

const test::TestEngine& engine() {
    static const test::TestEngine scripted(kEngine);
    return scripted;
}

// The catalogue of an engine only grows, so its diagnostics are made once and changed from then on.
void makeDiags() {
    engine()->set_recording(false);
    for (int i = 0; i < kDiags; ++i) engine()->add_diag(("d" + std::to_string(i)).c_str(), 1, 1, 3, 0, "");
}

void changeDiag(Input& input, int index) {
    const auto answer = [&](int lowest, unsigned count) {
        return input.below(8) == 0 ? int{input.number<int16_t>()}
                                   : lowest + static_cast<int>(input.below(count));
    };
    engine()->set_name(index, input.coin() ? ("d" + std::to_string(index)).c_str() : input.text().c_str());
    engine()->set_type(index, answer(0, 10));
    engine()->set_length(index, input.coin() ? 1 : answer(-1, 40));
    engine()->set_rw(index, answer(0, 4));
    engine()->set_level(index, answer(0, 4));
    engine()->set_help(index, input.text().c_str());
    engine()->set_integer(index, input.number<long long>() >> input.below(64));
    engine()->set_real(index, input.number<float>());
    engine()->set_label(index, 1, input.text().c_str());
}

void changeEngine(Input& input) {
    const int changed = static_cast<int>(input.below(kDiags + 1));
    for (int index = 0; index < changed; ++index) changeDiag(input, index);
    engine()->set_reported_count(input.below(16) == 0 ? int{input.number<int8_t>()} : changed);
    engine()->set_null_answers(input.below(16) == 0);
    engine()->set_version(input.text().c_str());
}

// The text that a function leaves in a buffer of any size. Its end is the end of the memory.
class Text {
  public:
    explicit Text(size_t size) : size_(size), bytes_(new char[size]) { std::memset(bytes_.get(), 'x', size); }

    char* data() { return bytes_.get(); }
    size_t size() const { return size_; }

    // needs: a call that fills it.
    std::string text() const {
        if (size_ == 0) return {};
        require(std::memchr(bytes_.get(), 0, size_) != nullptr, "a text without an end");
        return bytes_.get();
    }

  private:
    size_t size_;
    std::unique_ptr<char[]> bytes_;
};

void requireOneLine(const std::string& text) {
    for (const char c : text) require(static_cast<unsigned char>(c) >= 32 && c != 127, "a control character");
}

void requireWhy(se_host_status_t status, const Text& why) {
    require(std::string(se_host_status_text(status)) != "unknown status", "a status without a text");
    if (why.size() > 1) requireEqual(status == SE_HOST_OK, why.text().empty(), "whether there is no reason");
    requireOneLine(why.text());
}

std::string nameFrom(Input& input) {
    constexpr const char* kNames[] = {"aec_bypass", "noise_reduction_bypass", "location", "location_conf"};
    if (input.below(4) == 0) return input.oneOf(kNames);
    return input.below(4) == 0 ? input.text() : "d" + std::to_string(input.below(kDiags + 1));
}

std::string valueFrom(Input& input) {
    return input.coin() ? std::to_string(input.number<int16_t>()) : input.text();
}

// A handle, and what the calls so far mean for the next ones.
class Session {
  public:
    explicit Session(Input& input) : input_(input) {
        const std::string path = test::enginePath(kEngine);
        options_.engine = path.c_str();
        options_.quantum = input.below(400);
        for (int32_t& microphone : options_.microphones) {
            microphone = static_cast<int32_t>(input.below(10)) - 1;
            channels_ = std::max(channels_, static_cast<uint32_t>(microphone + 1));
        }
        if (input.coin()) options_.far_end_channel = static_cast<int32_t>(input.below(12)) - 1;
        Text why(input.below(300));
        const auto status = se_host_open(&options_, &host_, why.data(), why.size());
        requireWhy(status, why);
        requireEqual(status == SE_HOST_OK, host_ != nullptr, "whether there is a handle");
    }
    ~Session() { se_host_close(host_); }
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    void run() {
        for (unsigned calls = 0; calls < kMostCalls && !input_.empty(); ++calls) call();
    }

  private:
    void call();
    void process();
    template <class Sample, class Process>
    void processAs(const Process& process);
    void processPlanes();
    void set();
    void get();
    void settings();
    void tuning();
    void health();

    bool fits(uint32_t channels, bool far_end_apart, size_t frames) const {
        const auto needed = far_end_apart
                                ? channels_
                                : std::max(channels_, static_cast<uint32_t>(options_.far_end_channel + 1));
        return host_ != nullptr && channels >= needed && frames % std::max(options_.quantum, 1U) == 0;
    }

    Input& input_;
    se_host_options_t options_ = SE_HOST_OPTIONS_INIT;
    se_host_t* host_ = nullptr;
    uint32_t channels_ = 0;
};

template <class Sample>
std::unique_ptr<Sample[]> samplesFrom(Input& input, size_t count) {
    std::unique_ptr<Sample[]> samples(new Sample[count]);
    const auto first = input.number<Sample>();
    for (size_t i = 0; i < count; ++i) samples[i] = i % 3 == 0 ? first : static_cast<Sample>(i);
    return samples;
}

template <class Sample, class Process>
void Session::processAs(const Process& process) {
    const uint32_t channels = input_.below(13);
    const size_t frames = options_.quantum != 0 && input_.coin() ? options_.quantum : input_.below(700);
    const auto captured = samplesFrom<Sample>(input_, frames * channels);
    const auto far_end = input_.coin() ? samplesFrom<Sample>(input_, frames) : nullptr;
    const std::unique_ptr<Sample[]> mono(new Sample[frames]);
    const auto status = process(host_, captured.get(), channels, far_end.get(), frames, mono.get());
    const bool fitting = fits(channels, far_end != nullptr, frames);
    requireEqual(fitting ? SE_HOST_OK : SE_HOST_BAD_ARGUMENT, status, "the status of a call with sound");
}

void Session::processPlanes() {
    const auto byPlanes = [](se_host_t* host, const float* captured, uint32_t channels, const float* far_end,
                             size_t frames, float* mono) {
        std::vector<const float*> planes;
        for (uint32_t channel = 0; channel < channels; ++channel)
            planes.push_back(captured + channel * frames);
        planes.reserve(1);  // an address even without channels
        return se_host_process_planes_f32(host, planes.data(), channels, far_end, frames, mono);
    };
    processAs<float>(byPlanes);
}

void Session::process() {
    switch (input_.below(3)) {
        case 0:
            return processAs<int16_t>(se_host_process_i16);
        case 1:
            return processAs<float>(se_host_process_f32);
        default:
            return processPlanes();
    }
}

void Session::set() {
    const std::string name = nameFrom(input_), value = valueFrom(input_);
    Text why(input_.below(200));
    requireWhy(se_host_set(host_, name.c_str(), value.c_str(), why.data(), why.size()), why);
}

void Session::get() {
    const std::string name = nameFrom(input_);
    Text value(input_.below(200));
    size_t length = 0;
    const auto status = se_host_get(host_, name.c_str(), value.data(), value.size(), &length);
    require(status == SE_HOST_OK || length == 0, "a length without a value");
    requireEqual(value.size() == 0 ? 0 : std::min(length, value.size() - 1), value.text().size(),
                 "the length of a value");
}

void Session::settings() {
    const size_t count = se_host_setting_count(host_);
    for (size_t place = 0; place <= count; ++place) {
        se_host_setting_t setting{};
        setting.size = sizeof(setting);
        const auto status = se_host_setting(host_, place, &setting);
        requireEqual(place < count ? SE_HOST_OK : SE_HOST_BAD_ARGUMENT, status, "the status of a setting");
        if (status != SE_HOST_OK) continue;
        requireOneLine(setting.help);
        require(setting.elements >= 1, "a setting without a value");
        requireEqual(SE_HOST_OK, se_host_get(host_, setting.name, nullptr, 0, nullptr),
                     "the value of a setting");
    }
}

void Session::tuning() {
    static ScratchFile file;
    Text why(input_.below(300));
    const bool save = input_.coin();
    const std::string& path = save ? file.path() : file.holding(input_.text());
    requireWhy(save ? se_host_save_tuning(host_, "/dev/null", why.data(), why.size())
                    : se_host_load_tuning(host_, path.c_str(), why.data(), why.size()),
               why);
}

void Session::health() {
    se_host_health_t health{};
    health.size = input_.coin() ? sizeof(health) : input_.below(sizeof(health) + 40);
    if (health.size < sizeof(size_t)) health.size = sizeof(size_t);
    se_host_health(host_, &health);
    Text advice(input_.below(600));
    const size_t lines = se_host_advice(host_, advice.data(), advice.size());
    require(lines != 0 || advice.text().empty(), "advice that is not counted");
}

void Session::call() {
    switch (input_.below(12)) {
        case 0:
            return set();
        case 1:
            return get();
        case 2:
            return settings();
        case 3:
            return tuning();
        case 4:
            return health();
        case 5:
            return se_host_bypass(host_, input_.number<int8_t>());
        case 6:
            return se_host_clock(host_, input_.number<uint64_t>());
        case 7:
            return engine()->set_integer(static_cast<int>(input_.below(kDiags)), input_.number<long long>());
        default:
            return process();
    }
}

}  // namespace
}  // namespace quill::fuzz

int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
    quill::setLogThreshold(1);
    quill::fuzz::makeDiags();
    return 0;
}

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    quill::fuzz::Input input(data, size);
    quill::fuzz::changeEngine(input);
    quill::fuzz::Session(input).run();
    return 0;
}
