// The engine builds of an installation.
#pragma once

#include <string>
#include <vector>

#include "common/dynlib.h"

namespace se_host {

// Names of the files in selibs/, sorted.
std::vector<std::string> engineNames();

// Opens the build of this name before the wrapper opens it again, so that the message for a wrong name lists the
// existing names. It stays open. fails: UsageError when there is no such file, Failure when it cannot be loaded.
quill::DynLibHandle openEngineFile(const std::string& name);

}  // namespace se_host
