// Static properties: global, named properties that a library declares while it is loaded, before there is a
// tree. initStaticProperties binds each to its node; reading one earlier is a programming error that ends the
// process with a message.
//
//     StaticProperty<bool> p_verbose("console/verbose", false, __FILE__);            // source
//     extern StaticProperty<bool> p_verbose;                                         // header
//     QUILL_STATIC_PROPERTY_TYPE_GUARD(p_verbose, bool)
//
// Threads: declaring and binding are [setup]; once bound, reading is [any].
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>

#include "common/export.h"
#include "common/property_node.h"
#include "common/property_value.h"
#include "common/static_deferred_init.h"

namespace quill {

struct QUILL_COMMON_EXPORT StaticPropertyInitArgs {
    PropertyNodePtr root;  // paths are resolved below it
};

// The tag of the list of static properties.
class QUILL_COMMON_EXPORT StaticPropertyInitTag {
  public:
    virtual void initialize(const StaticPropertyInitArgs& args) = 0;
    virtual ~StaticPropertyInitTag();
};

using StaticPropertyDeferredInit = StaticDeferredInit<StaticPropertyInitTag, StaticPropertyInitArgs>;

// Instantiated in libcommon and nowhere else: one list for all libraries of the process.
extern template class StaticDeferredInit<StaticPropertyInitTag, StaticPropertyInitArgs>;

// [setup] Binds every static property declared so far to its node below `root`, in the order of declaration.
// Binding keeps a value that the node has, and replaces the node's metadata by the declared entries and
// "file_name".
// After loading a library that declares properties of its own, run it once more with the same root:
// properties that are bound to their node already stay exactly as they are, without a notification, and may
// be read meanwhile. With another root, it binds every property to its node there.
QUILL_COMMON_EXPORT void initStaticProperties(const PropertyNodePtr& root);

// A property that is bound.
template <class T>
struct QUILL_COMMON_EXPORT PropertyWrapper {
    PropertyNodePtr node;
};

// T is one of the five value types; any other is an undefined reference when linking.
template <class T, class Wrapper, class Derived>
class QUILL_COMMON_EXPORT StaticPropertyBase {
  public:
    struct QUILL_COMMON_EXPORT Data : StaticPropertyDeferredInit {
        void initialize(const StaticPropertyInitArgs& args) override;

        std::string path;
        T default_value{};
        const char* file = nullptr;        // of the declaration, in owned_file; null: not known
        std::shared_ptr<Wrapper> wrapper;  // null until bound
        std::shared_ptr<PropertyNodeData::Metadata> pending_metadata;
        // Called with the node when bound; null: none.
        std::shared_ptr<std::function<void(const PropertyNodePtr&)>> on_initialized;
        std::string owned_file;  // the library that declared the property may be unloaded
    };

    // [setup] The node's "read_only" from binding on: whether PropertyNode::setFromText refuses the node.
    Derived& setReadOnly(bool read_only);

    // [any] The node's value. needs: bound. fails: unbound, a message on standard error and a breakpoint
    // trap.
    T get() const;

    // [any] The node. needs, fails: as get().
    const PropertyNodePtr& node() const;

    // The state that all copies share.
    const std::shared_ptr<Data>& data() const { return data_; }

  protected:
    StaticPropertyBase(const std::string& path, T default_value, const char* file);

  private:
    std::shared_ptr<Data> data_;
};

// A handle: copies are the same property.
template <class T>
class QUILL_COMMON_EXPORT StaticProperty
    : public StaticPropertyBase<T, PropertyWrapper<T>, StaticProperty<T>> {
  public:
    // [setup] in: `path`, below the root of the tree; `file`, __FILE__ of the declaration or null.
    StaticProperty(const std::string& path, T defaultValue, const char* file)
        : StaticPropertyBase<T, PropertyWrapper<T>, StaticProperty<T>>(path, std::move(defaultValue), file) {}
};

#define QUILL_STATIC_PROPERTY_BASE(T) StaticPropertyBase<T, PropertyWrapper<T>, StaticProperty<T>>
extern template class QUILL_STATIC_PROPERTY_BASE(float);
extern template class QUILL_STATIC_PROPERTY_BASE(long);
extern template class QUILL_STATIC_PROPERTY_BASE(bool);
extern template class QUILL_STATIC_PROPERTY_BASE(int);
extern template class QUILL_STATIC_PROPERTY_BASE(std::string);

}  // namespace quill

// To be placed beside the declaration of a static property. Code that uses the property with another type
// does not match the function, and the compiler's message contains its name.
#define QUILL_STATIC_PROPERTY_TYPE_GUARD(property, type) \
    inline void in_this_namespace_property_##property##_was_not_defined_with_type(type) {}
