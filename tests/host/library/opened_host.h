// A handle of libse_host on the scriptable engine or on the reference engine.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "host/se_host.h"
#include "tests/engines/test_engine.h"

namespace se_host_library_test {

inline constexpr int kReadWrite = 3;
inline constexpr int kReadOnly = 1;

// Types of diagnostics.
enum Type { kInt16 = 1, kInt32, kUInt16, kUInt32, kInt40, kUInt40, kFloat32, kEnum };

// Path of a build in "selibs" beside the test program.
std::string enginePath(const std::string& name);

using Change = std::function<void(se_host_options_t&)>;

// What se_host_open answers; the handle is closed with it.
class Opened {
  public:
    explicit Opened(const std::string& engine, const Change& change = {});
    ~Opened() { close(); }
    Opened(const Opened&) = delete;
    Opened& operator=(const Opened&) = delete;

    void close();

    operator se_host_t*() const { return host_; }  // NOLINT(google-explicit-constructor)
    se_host_status_t status() const { return status_; }
    const std::string& why() const { return why_; }

    // Blocks of silence.
    void run(int blocks = 1) const;

    std::string get(const std::string& name) const;
    se_host_status_t set(const std::string& name, const std::string& value) const;
    std::string whyNot(const std::string& name, const std::string& value) const;
    se_host_health_t health() const;
    // Without the sentence about slow blocks, which a busy machine adds.
    std::string advice() const;

  private:
    se_host_t* host_ = nullptr;
    se_host_status_t status_;
    std::string why_;
};

// The scriptable engine, with the diagnostics that start-up needs and one of each type below "diags/basic".
struct ScriptedEngine {
    ScriptedEngine();

    int add(const std::string& name, int type, int length = 1, int rw = kReadWrite);

    quill::test::TestEngine engine;
    int gain;
    int echo_safety_factor;
};

// Noise of 8 channels and its far end, the same in every run.
struct Sound {
    explicit Sound(size_t frames, uint32_t channels = 8);

    size_t frames() const { return far_end.size(); }

    uint32_t channels;
    std::vector<int16_t> captured;
    std::vector<int16_t> far_end;
};

// In calls of so many frames each; the last may be shorter.
std::vector<int16_t> process(se_host_t* host, const Sound& sound, size_t frames_of_call);

}  // namespace se_host_library_test
