#include "webrtc_common/se_wrapper/diags/diag_nodes.h"

#include <utility>

#include "webrtc_common/se_wrapper/table/engine_answers.h"

namespace quill::media::se_wrapper {

DiagNodes::Place DiagNodes::at(int index) {
    name_ = diagName(index);
    const size_t level = diagFolder(index);
    PropertyNodePtr& folder = folders_[level];
    if (folder == nullptr) folder = root_.getNode(kDiagFolders[level], false);
    if (folder != nullptr) {
        if (PropertyNodePtr node = folder->getNode(name_, false)) return {std::move(node), false};
    }
    folder = root_.getNode(kDiagFolders[level], true);
    return {folder->getNode(name_, true), true};
}

}  // namespace quill::media::se_wrapper
