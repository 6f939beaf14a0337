// The engine builds that are installed with this library.
#pragma once

#include <string>

namespace se_host {

// A program brings its engine builds in "selibs" beside itself; without that folder those beside the library are
// used. result: the folder; empty: the program's own, whether or not it is there.
std::string defaultEngineFolder();

}  // namespace se_host
