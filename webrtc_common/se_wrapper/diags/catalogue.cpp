#include "webrtc_common/se_wrapper/diags/catalogue.h"

#include <string_view>

#include "common/dynlib.h"
#include "webrtc_common/se_wrapper/diags/diag_folders.h"
#include "webrtc_common/se_wrapper/records.h"
#include "webrtc_common/se_wrapper/table/engine_answers.h"

namespace quill::media::se_wrapper {

std::string getDiagPropertyName(int index) {
    const std::string_view name = diagName(index);
    const std::string_view folder = kDiagFolders[diagFolder(index)];
    std::string path;
    path.reserve(folder.size() + 1 + name.size());
    return path.append(folder).append("/").append(name);
}

int getDiagIndexOrDie(const std::vector<std::string>& names) {
    for (const std::string& name : names) {
        const int index = SEDiagGetIndex(name.c_str());
        if (index >= 0) return index;
    }
    SE_WRAPPER_LOG(1) << "Could not find Signal Essence Diags: " << join(names.begin(), names.end(), ",");
    return 0;
}

int32_t defaultSEDiagGetLevel(int32_t index) {
    return levelOf(SEDiagGet(index));
}

const char* defaultSEDiagGetHelp(int32_t index) {
    return helpOf(SEDiagGet(index));
}

}  // namespace quill::media::se_wrapper
