// What the hostile engine does at a call, and what it leaves in SE_HOSTILE_LOG about it.
#pragma once

namespace hostile {

// Does the deed when this is its stage. Deeds that are answers do nothing here.
void at(const char* stage);

// Whether the engine is to give this answer at this stage.
bool answers(const char* stage, const char* answer);

// From now on a crash is logged: "crash SIGNAL FILE", the file of the first frame that is not the C library's.
void noteCrashes();

}  // namespace hostile
