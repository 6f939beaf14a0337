// Where the engine builds are when the caller names no folder.
#pragma once

#include <string>

namespace se_host {

// "selibs" beside the program; when there is no such folder, that of the installation: "libse_wrapper/selibs" beside
// libse_wrapper. fails: Failure, with both, when neither exists.
std::string defaultEngineFolder();

}  // namespace se_host
