// Recordings of a sweep once more through the engine: the command to listen, and the output itself.
#pragma once

#include <cstdint>
#include <map>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "tools/se_host/sweep_report/results.h"

namespace se_host::report {

class Listening {
  public:
    // Reads manifest.jsonl and plan.json of the sweep's folder; without them, or where they are damaged, nothing is known.
    Listening(const std::string& folder, const Results& results);

    bool knows(const std::string& recording) const { return entries_.count(recording) != 0; }

    // One line for a shell. needs: knows(recording).
    std::string command(const std::string& recording, const std::string& tuning) const;

    // The centre microphone, and the output of a run of this program. needs: knows(recording). fails: Failure.
    std::vector<int16_t> microphone(const std::string& recording) const;
    std::vector<int16_t> output(const std::string& recording, const std::string& tuning) const;

  private:
    using Json = nlohmann::ordered_json;

    std::vector<std::string> arguments(const std::string& recording, const std::string& tuning,
                                       const std::string& output) const;
    std::string placeOf(const std::string& path) const;

    std::string folder_;
    std::map<std::string, Json> entries_;         // by id
    std::map<std::string, std::string> tunings_;  // files by name
    std::vector<std::string> engine_;             // options
};

}  // namespace se_host::report
