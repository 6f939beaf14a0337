#include "common/property_node_data.h"

#include "common/property_node.h"

namespace quill {

PropertyValue& PropertyNodeData::SharedData::meta(const std::string& name) {
    if (metadata == nullptr) metadata = std::make_shared<Metadata>();
    return (*metadata)[name];
}

const PropertyValue* PropertyNodeData::SharedData::findMeta(const std::string& name) const {
    if (metadata == nullptr) return nullptr;
    const auto entry = metadata->find(name);
    return entry == metadata->end() || entry->second.empty() ? nullptr : &entry->second;
}

PropertyNodeData::SharedDataLock::SharedDataLock(PropertyNode* node, SharedDataLock* /*parent*/)
    : data_(&node->data_) {
    data_->mutex_.lock();
}

PropertyNodeData::SharedDataLock::~SharedDataLock() {
    unlock();
}

void PropertyNodeData::SharedDataLock::unlock() {
    if (!held_) return;
    held_ = false;
    data_->mutex_.unlock();
}

}  // namespace quill
