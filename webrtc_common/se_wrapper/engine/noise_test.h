// The engine's microphone noise test: its results, as a record or as a text file. The host starts and polls the
// test itself, through MMIfStartNoiseTest_Optional and MMIfNoiseTestIsRunning_Optional of the engine interface
// table; g_has_noise_tests tells whether the engine has it.
// Threads: control. No state of its own.
#pragma once

#include <string>

#include "webrtc_common/export.h"
#include "webrtc_common/se_wrapper/table/engine_types.h"

namespace quill::media::se_wrapper {

// Copies the engine's results as they are at this moment, whether or not a test has run or is running.
// out:    *results, 30 rows of 6 microphones; untouched when there are none.
// result: false when the engine has no noise test or answers without a record.
// needs:  no test running, as the engine writes without a lock.
// [control]
SE_WRAPPER_EXPORT bool getNoiseTestResults(NoiseTestResults* results);

// Writes the results to a text file, one microphone after the other: "Microphone 0", then thirty lines of row
// number and value ("0 -61.250000"), the six digits of %f with a point in every locale; and so on.
// An older file is replaced. An engine without the noise test, or without a record: the file stays as it is and
// nothing is reported.
// needs:  as getNoiseTestResults.
// fails:  a path that cannot be opened for writing makes one level-2 record with the path, and nothing else.
//         Write errors are not reported.
// [control]
SE_WRAPPER_EXPORT void saveNoiseTestResults(const std::string& path);

}  // namespace quill::media::se_wrapper
