// Gives an engine the places of the microphones of another array. The C interface has no entry point for them: the
// engine reads a file that an environment variable names.
#pragma once

#include <string>

#include "host/engine/array_file.h"

namespace se_host {

// needs: called before the engine is started, with one thread. fails: Failure when the file cannot be used.
void giveArray(const std::string& path);

// The engine's own array again, after a giveArray.
void takeArrayBack();

// The array that was given. needs: giveArray.
const ArrayFile& givenArray();

// Makes sure that the engine uses the array that was given. needs: a started engine. fails: Failure.
void requireArrayInUse();

}  // namespace se_host
