// What the wrapper would find in an engine build, row by row of its interface table, without starting it.
#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "common/dynlib.h"
#include "webrtc_common/se_wrapper.h"

namespace se_host {

struct CheckedRow {
    const quill::media::se_wrapper::EngineRow* row;
    const char* found_as;  // the symbol; null when the engine exports none of the row's names
};

// Entry points that an engine has all of or none of.
struct CheckedGroup {
    const char* name;
    const char* capability;  // that follows from it; null: none of its own
    int found;
    int size;

    bool whole() const { return found == size; }
    bool torn() const { return found != 0 && !whole(); }
};

struct EngineCheck {
    std::string path;
    std::vector<CheckedRow> rows;  // in the order of resolution
    std::vector<CheckedGroup> groups;
    std::string objection;  // the first thing that the wrapper would stop at; empty: it can be used
};

EngineCheck checkEngine(const std::string& path, quill::DynLibHandle engine);

// A few lines, the last one ended.
std::string toText(const EngineCheck& check);
nlohmann::ordered_json toJson(const EngineCheck& check);

}  // namespace se_host
