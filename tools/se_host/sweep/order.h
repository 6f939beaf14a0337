// An order: everything that one task needs, a recording with a tuning. It goes to the process that does it.
#pragma once

#include <string>

#include "tools/se_host/sweep/hash.h"
#include "tools/se_host/sweep/manifest.h"

namespace se_host::sweep {

struct EngineFile {
    std::string path;
    std::string hash;
    std::string build;
    std::string version;
    bool device_model = false;
    std::string array;  // file; empty: the build's own
};

struct Order {
    std::string key;
    Entry entry;
    std::string tuning;
    std::string tuning_file;  // empty: the engine as it comes
    EngineFile engine;
    std::string over_time;  // file to write the measures over time to; empty: none
};

Json toJson(const EngineFile& engine);
EngineFile engineFileOf(const Json& json);

Json toJson(const Order& order);
Order orderOf(const Json& json);

// Names the result: a hash of the content of all files, the program and the options that change the result.
// Where the files are has no effect. fails: Failure when a file cannot be read.
std::string keyOf(const Order& order, FileHashes& files);

}  // namespace se_host::sweep
