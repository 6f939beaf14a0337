// A property tree for tests, with the static properties bound to it.
#pragma once

#include "common/properties.h"
#include "common/property_node.h"

namespace quill::test {

struct BoundProperties {
    BoundProperties() { initStaticProperties(root); }
    const PropertyNodePtr root = PropertyNode::createRoot();
};

}  // namespace quill::test
