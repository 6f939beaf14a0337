// A manifest: the recordings of a sweep, in JSON lines. "id" and "recording" are needed; "far_end" (a file, or a channel
// of the recording), "channel_map" and "parts" (a prefix) are as the options of `se_host process`; all other fields are
// labels of the recording.
#pragma once

#include <string>
#include <vector>

#include "host/output/output_file.h"
#include "tools/se_host/sound/recording.h"
#include "tools/se_host/sweep/json_lines.h"

namespace se_host::sweep {

struct Entry {
    std::string id;
    RecordingOptions recording;
    std::string parts;  // prefix; empty: not known
    Json labels = Json::object();
};

Json toJson(const Entry& entry);

// Relative paths start at `folder`. fails: Failure, naming the field.
Entry entryOf(const Json& json, const std::string& folder);

// Paths in it start at the manifest's own folder; those of the result are absolute.
// fails: Failure, naming file and line; when `with_files`, also for a file that is not there.
std::vector<Entry> readManifest(const std::string& path, bool with_files);

// As the content of the output; the caller commits.
void writeManifest(se_output::OutputFile& file, const std::vector<Entry>& entries);

// Every file of the entry: the recording first.
std::vector<std::string> filesOf(const Entry& entry);

}  // namespace se_host::sweep
