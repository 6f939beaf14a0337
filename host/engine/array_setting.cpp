#include "host/engine/array_setting.h"

#include <cstdlib>

#include "host/engine/engine_stage.h"
#include "host/output/descriptor.h"
#include "host/output/errors.h"
#include "webrtc_common/se_wrapper.h"

namespace se_host {
namespace {

namespace se = quill::media::se_wrapper;

constexpr const char* kVariable = "SE_ARRAY_FILE";
constexpr const char* kDiagnostic = "mmfx_array";
constexpr int kEnum = 8;  // type of a diagnostic
constexpr int kArrayOfFile = 1;

int valueOfDiagnostic() {
    const int index = se::SEDiagGetIndex(kDiagnostic);
    if (index < 0 || static_cast<int>(se::SEDiagGetType(index)) != kEnum) return -1;
    return static_cast<int>(se::SEDiagGetEnumAsInt(index));
}

ArrayFile& given() {
    static ArrayFile array;
    return array;
}

}  // namespace

const ArrayFile& givenArray() {
    return given();
}

// A copy in memory, because the engine reads the file once more, which a pipe does not allow.
void giveArray(const std::string& path) {
    static se_output::Descriptor copy;
    given() = readArrayFile(path);
    copy = se_output::fileInMemory();
    se_output::writeAll(copy.number(), given().text);
    ::setenv(kVariable, se_output::pathOf(copy.number()).c_str(), 1);
}

// A user's own setting of the variable stays.
void takeArrayBack() {
    if (given().text.empty()) return;
    ::unsetenv(kVariable);
    given() = {};
}

void requireArrayInUse() {
    if (callEngine(EngineStage::kReadingDiags, valueOfDiagnostic) == kArrayOfFile) return;
    throw se_output::Failure("engine '" + se::p_signal_essence_library.get() +
                             "' takes no other array than its own; leave out --array");
}

}  // namespace se_host
