#include "host/engine/properties_by_text.h"

#include "host/output/errors.h"

namespace se_host {
namespace {

void collect(const quill::PropertyNodePtr& node, std::vector<quill::PropertyNodePtr>* found) {
    if (!node->value().empty()) found->push_back(node);
    for (const quill::PropertyNodePtr& child : node->children()) collect(child, found);
}

}  // namespace

void setByText(const quill::PropertyNodePtr& root, const std::string& assignment) {
    const size_t equals = assignment.find('=');
    if (equals == std::string::npos || equals == 0) {
        throw se_output::UsageError("'" + assignment + "' is not an assignment; write PATH=VALUE");
    }
    const std::string path = assignment.substr(0, equals);
    const std::string text = assignment.substr(equals + 1);
    const quill::PropertyNodePtr node = root->getNode(path, false);
    if (!node) throw se_output::UsageError("no property '" + path + "'; 'se_host info' lists the properties");

    std::string error;
    if (!node->setFromText(text, &error)) {
        throw se_output::UsageError(error + "; 'se_host info' shows what can be set");
    }
}

std::vector<quill::PropertyNodePtr> nodesWithValues(const quill::PropertyNodePtr& root) {
    std::vector<quill::PropertyNodePtr> found;
    collect(root, &found);
    return found;
}

}  // namespace se_host
