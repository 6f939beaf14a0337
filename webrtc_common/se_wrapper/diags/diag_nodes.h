// Where the diagnostics are in the property tree, for one pass over the catalogue.
// Private to this folder.
#pragma once

#include <array>
#include <string>

#include "common/property_node.h"
#include "webrtc_common/se_wrapper/diags/diag_folders.h"

namespace quill::media::se_wrapper {

// The nodes at getDiagPropertyName(). Each folder is looked up once, for nodes are never removed, so that a
// diagnostic costs one step down the tree and its name the only text.
class DiagNodes {
  public:
    struct Place {
        PropertyNodePtr node;
        bool is_new;
    };

    // needs: the root outlives this.
    explicit DiagNodes(PropertyNode& root) : root_(root) {}

    // The node of a diagnostic, made with its folder when it is missing. Asks the engine for name and level.
    Place at(int index);

  private:
    PropertyNode& root_;
    std::array<PropertyNodePtr, kDiagFolders.size()> folders_;  // null until seen
    std::string name_;
};

}  // namespace quill::media::se_wrapper
