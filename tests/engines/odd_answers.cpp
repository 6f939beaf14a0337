// Gives the scriptable engine a catalogue of odd answers as soon as it is loaded, for programs that no test can
// reach into: texts with control characters, bytes that are no UTF-8, lengths that cannot be, a name of 1 MB.
#include <limits>
#include <string>

#include "tests/engines/engine_state.h"

namespace {

constexpr int kInt32 = 2, kFloat32 = 7, kEnum = 8;
constexpr int kRead = 1, kReadWrite = 3;

// ESC, BEL, DEL, line breaks, C1 as a byte and as a character, half a character, a change of direction.
const char* const kOddText =
    "odd\x1b]0;title\a\x7f\r\n\t\x9b"
    "31m\u009b31m\xe2\x82\u202e,\"";

__attribute__((constructor)) void prepare() {
    const TestEngineControl* const engine = test_engine_control();
    engine->set_recording(false);
    engine->set_version(kOddText);
    engine->add_diag("RcvGainQ10", kInt32, 1, kReadWrite, 0, "");
    engine->add_diag("senr_echo_safety_factor", kInt32, 1, kReadWrite, 0, "");
    engine->set_integer(engine->add_diag(kOddText, kInt32, 1, kReadWrite, 0, kOddText), 5);
    engine->set_label(engine->add_diag("odd_label", kEnum, 1, kReadWrite, 1, ""), 0, kOddText);
    engine->add_diag("", kInt32, 1, kRead, 1, "no name");
    engine->add_diag("huge_array", kInt32, std::numeric_limits<int>::max(), kRead, 2, "");
    engine->add_diag("negative_length", kFloat32, -5, kReadWrite, 2, "");
    engine->add_diag("unknown_type", -9, 3, kReadWrite, 3, "");
    engine->add_diag(std::string(1'048'576, 'n').c_str(), kInt32, 1, kReadWrite, 3, "");
}

}  // namespace
