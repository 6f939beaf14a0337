// The property tree with paths and values as texts.
#pragma once

#include <string>
#include <vector>

#include "common/property_node.h"

namespace se_host {

// Sets the property that "PATH=VALUE" names. fails: UsageError, naming the property and the reason.
void setByText(const quill::PropertyNodePtr& root, const std::string& assignment);

// Every node below `root` that holds a value, in path order.
std::vector<quill::PropertyNodePtr> nodesWithValues(const quill::PropertyNodePtr& root);

}  // namespace se_host
