#include "common/properties.h"

#include <cstdio>
#include <utility>
#include <vector>

#include "common/assertion.h"

namespace quill {
namespace {

// Replaces the node's metadata by the declared entries, as one change, unless they are equal.
void replaceMetadata(PropertyNode& node, const PropertyNodeData::Metadata& declared) {
    PropertyNodeData::SharedDataLock lock(&node, nullptr);
    if (lock->metadata == nullptr) lock->metadata = std::make_shared<PropertyNodeData::Metadata>();
    if (*lock->metadata == declared) return;
    *lock->metadata = declared;
    ++lock->change_counter;
    node.fireChangedOnData(lock,
                           PropertyChangeInfo{PropertyChangeInfo::kMeta, "*", {}, lock->change_counter});
}

}  // namespace

StaticPropertyInitTag::~StaticPropertyInitTag() = default;

template <class Tag, class Args>
StaticDeferredInit<Tag, Args>* StaticDeferredInit<Tag, Args>::s_head = nullptr;

void initStaticProperties(const PropertyNodePtr& root) {
    std::vector<StaticPropertyDeferredInit*> latest_first;
    for (auto* each = StaticPropertyDeferredInit::s_head; each != nullptr; each = each->next) {
        latest_first.push_back(each);
    }
    const StaticPropertyInitArgs args{root};
    for (auto each = latest_first.rbegin(); each != latest_first.rend(); ++each) (*each)->initialize(args);
}

template <class T, class Wrapper, class Derived>
StaticPropertyBase<T, Wrapper, Derived>::StaticPropertyBase(const std::string& path, T default_value,
                                                            const char* file)
    : data_(std::make_shared<Data>()) {
    data_->path = path;
    data_->default_value = std::move(default_value);
    if (file != nullptr) {
        data_->owned_file = file;
        data_->file = data_->owned_file.c_str();
    }
    data_->pending_metadata = std::make_shared<PropertyNodeData::Metadata>();
}

template <class T, class Wrapper, class Derived>
Derived& StaticPropertyBase<T, Wrapper, Derived>::setReadOnly(bool read_only) {
    (*data_->pending_metadata)["read_only"].template set<bool>(read_only);
    return static_cast<Derived&>(*this);
}

template <class T, class Wrapper, class Derived>
T StaticPropertyBase<T, Wrapper, Derived>::get() const {
    return node()->template get<T>();
}

template <class T, class Wrapper, class Derived>
const PropertyNodePtr& StaticPropertyBase<T, Wrapper, Derived>::node() const {
    if (data_->wrapper == nullptr) {
        std::fprintf(stderr, "Tried to use a static property (%s) before the property system is initialized.",
                     data_->path.c_str());
        std::fflush(stderr);  // the trap ends the process without it
        QUILL_BREAKPOINT_TRAP();
    }
    return data_->wrapper->node;
}

template <class T, class Wrapper, class Derived>
void StaticPropertyBase<T, Wrapper, Derived>::Data::initialize(const StaticPropertyInitArgs& args) {
    if (wrapper != nullptr && wrapper->node == args.root->getNode(path, false)) return;
    if (path.empty()) {
        QUILL_ASSERTION_FAILED(record_sites::kEmptyPropertyPath,
                               "Assertion failed: Property path cannot be empty string.");
    }
    const PropertyNodePtr node = args.root->getNode(path, true);
    if (pending_metadata != nullptr) replaceMetadata(*node, *pending_metadata);
    PropertyValue fallback;
    fallback.set<T>(default_value);
    node->setDefaultValue(fallback);
    if (file != nullptr) node->setMeta<std::string>("file_name", file);
    wrapper = std::make_shared<Wrapper>(Wrapper{node});
    if (on_initialized != nullptr) (*on_initialized)(node);
}

template class StaticDeferredInit<StaticPropertyInitTag, StaticPropertyInitArgs>;
template class QUILL_STATIC_PROPERTY_BASE(float);
template class QUILL_STATIC_PROPERTY_BASE(long);
template class QUILL_STATIC_PROPERTY_BASE(bool);
template class QUILL_STATIC_PROPERTY_BASE(int);
template class QUILL_STATIC_PROPERTY_BASE(std::string);

}  // namespace quill
