// The engine builds that an installation offers.
// Threads: any.
#pragma once

#include <string>
#include <vector>

#include "common/dynlib.h"

namespace se_host {

// Names of the files in selibs/, sorted.
std::vector<std::string> engineNames();

// Opens the build of this name, so that the user hears what is wrong with it before the wrapper, which opens
// it again, gives up. It stays open. fails: UsageError when there is no such file, Failure when it is no
// library.
quill::DynLibHandle openEngineFile(const std::string& name);

}  // namespace se_host
