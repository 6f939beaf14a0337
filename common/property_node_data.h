// The data block of a property node and the lock that guards it. The block is used under its lock only.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <string>

#include "common/export.h"
#include "common/property_value.h"

namespace quill {

class PropertyNode;
using PropertyNodePtr = std::shared_ptr<PropertyNode>;

// A change as listeners see it.
struct QUILL_COMMON_EXPORT PropertyChangeInfo {
    static constexpr int32_t kValue = 2;
    static constexpr int32_t kMeta = 3;

    int32_t kind;
    std::string name;     // kMeta: the entry's name, or "*" for all of them at once; kValue: empty
    PropertyValue value;  // the new value of the node or of the entry; empty for "*"
    uint64_t counter;     // the node's change counter after this change
};

class QUILL_COMMON_EXPORT PropertyNodeData {
  public:
    using Metadata = std::map<std::string, PropertyValue>;

    struct QUILL_COMMON_EXPORT SharedData {
        PropertyValue value;
        uint64_t change_counter = 0;         // of the value and of all metadata
        std::shared_ptr<Metadata> metadata;  // null until the first access by meta()
        PropertyValue default_value;

        // The entry of that name, made empty when missing.
        PropertyValue& meta(const std::string& name);

        // The entry of that name, or null when it is missing or empty. Creates nothing.
        const PropertyValue* findMeta(const std::string& name) const;
    };

    // Holds one node's data for a scope. The thread that has it may take it again. `parent` may name the
    // lock inside which this one is taken; it changes nothing. needs: the node outlives the lock.
    class QUILL_COMMON_EXPORT SharedDataLock {
      public:
        SharedDataLock(PropertyNode* node, SharedDataLock* parent);
        ~SharedDataLock();
        SharedDataLock(const SharedDataLock&) = delete;
        SharedDataLock& operator=(const SharedDataLock&) = delete;

        SharedData* operator->() const { return &data_->shared_; }
        void unlock();

      private:
        friend class quill::PropertyNode;

        PropertyNodeData* data_;
        bool held_ = true;
        PropertyNodePtr keep_alive_;  // set while listeners may drop the last reference to the node
    };

  private:
    SharedData shared_;
    std::recursive_mutex mutex_;
};

}  // namespace quill
