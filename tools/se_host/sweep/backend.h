// Backends: scripts that run `se_host sweep run FOLDER --shard N` for every shard, each in their way.
#pragma once

#include <string>

#include "tools/se_host/sweep/folder.h"

namespace se_host::sweep {

// A name is that of a script of this program; with a "/" it is the path of another one. fails: UsageError.
std::string backendScript(const std::string& name);

// Runs SCRIPT FOLDER SHARDS with this program's path in SE_HOST, and waits. The script is asked to end (SIGTERM)
// when this process ends. result: whether it succeeded.
// fails: Failure when it cannot be started.
bool runBackend(const std::string& script, const Folder& folder, size_t shards);

}  // namespace se_host::sweep
