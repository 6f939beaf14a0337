// The entry points of an engine build, for each row of the wrapper's interface table. The engine is not started.
#pragma once

#include <string>
#include <vector>

#include "common/dynlib.h"
#include "webrtc_common/se_wrapper.h"

namespace se_host {

struct CheckedRow {
    const quill::media::se_wrapper::EngineRow* row;
    const char* found_as;  // the symbol; null when the engine exports none of the row's names
};

// Entry points of which an engine must have all or none.
struct CheckedGroup {
    const char* name;
    const char* capability;  // that the group provides; null: none
    int found;
    int size;

    bool whole() const { return found == size; }
    bool torn() const { return found != 0 && !whole(); }
};

struct EngineCheck {
    std::string path;
    std::vector<CheckedRow> rows;  // in the order of resolution
    std::vector<CheckedGroup> groups;
    std::string objection;  // the first reason for the wrapper to stop; empty: it can be used
};

EngineCheck checkEngine(const std::string& path, quill::DynLibHandle engine);

}  // namespace se_host
