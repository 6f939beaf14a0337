// What the tests of `se_host diags` share.
#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "tests/tools/se_host/host_test.h"

namespace se_host_test {

// An engine with unusual values in its catalogue.
inline const std::string kOddEngine = "test_engines/host_probe";

class DiagsTest : public HostTest {
  protected:
    using Words = std::vector<std::string>;

    // `se_host diags` with these words.
    HostRun diags(Words words) const;
    // The same, and it must succeed. result: its output.
    std::string printed(const Words& words) const;
    nlohmann::ordered_json printedJson(const Words& words) const;

    // "in.wav": sound of this many blocks.
    void makeRecording(size_t blocks) const;

    // Writes the engine's initial values to `name`.
    void dump(const std::string& name, const Words& more = {}) const;

    nlohmann::ordered_json readJson(const std::string& name) const;
    void writeJson(const std::string& name, const nlohmann::ordered_json& json) const;

    // A dump with other values, by diagnostic; missing ones are added.
    void writeTuning(const std::string& name, const nlohmann::ordered_json& values) const;

    std::string readText(const std::string& name) const;
};

std::vector<std::string> linesOf(const std::string& text);

}  // namespace se_host_test
