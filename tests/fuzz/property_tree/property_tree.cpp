// Sequences of operations on a property tree against a model of it: texts and values of all types, metadata, defaults,
// listeners, paths.
#include <map>
#include <set>
#include <string>

#include "common/assertion.h"
#include "common/property_node.h"
#include "tests/fuzz/property_tree/node_model.h"
#include "tests/fuzz/support/entry.h"
#include "tests/fuzz/support/input.h"
#include "tests/fuzz/support/require.h"

namespace quill::fuzz {
namespace {

int g_assertions = 0;

// The assertions of the work must be as many as the model says.
template <class Work>
void expectAssertions(int expected, const Work& work) {
    g_assertions = 0;
    work();
    requireEqual(expected, g_assertions, "soft assertions");
}

template <class T>
bool same(const T& a, const T& b) {
    if constexpr (std::is_same_v<T, float>) {
        return a == b || (std::isnan(a) && std::isnan(b) && std::signbit(a) == std::signbit(b));
    } else {
        return a == b;
    }
}

// A tree, and the model of each node by its full name.
class TreeUnderTest {
  public:
    TreeUnderTest() : root_(PropertyNode::createRoot()) { models_[""]; }

    void operate(Input& input) {
        select(input);
        switch (input.below(12)) {
            case 0:
                set(input.number<float>());
                break;
            case 1:
                set(input.number<long>());
                break;
            case 2:
                set(input.coin());
                break;
            case 3:
                set(input.number<int>());
                break;
            case 4:
                set(input.text());
                break;
            case 5:
                setFromText(input.text());
                break;
            case 6:
                getAll();
                break;
            case 7:
                getWithDefault(input);
                break;
            case 8:
                setMeta(input);
                break;
            case 9:
                getMeta(input);
                break;
            case 10:
                setDefault(input);
                break;
            case 11:
                toggleListener();
                break;
        }
        compare();
    }

    void compareWhole() {
        std::set<std::string> found;
        collect(root_, &found);
        require(found.size() == models_.size(), "another number of nodes");
        for (const auto& [name, model] : models_) {
            require(found.count(name) == 1, "a node is missing");
            node_ = root_->getNode(name, false);
            model_ = &models_[name];
            compare();
        }
    }

  private:
    // The path's parts without the empty ones, and every ancestor, exist afterwards.
    void select(Input& input) {
        constexpr const char* kPaths[] = {"", "a", "a/b", "/a//b/", "diags/basic/x", "a/b/c/d", "b"};
        const std::string path = input.below(8) == 0 ? input.text() : input.oneOf(kPaths);
        std::string name, part;
        std::set<std::string> made;
        for (size_t at = 0; at <= path.size(); ++at) {
            if (at < path.size() && path[at] != '/') {
                part += path[at];
                continue;
            }
            if (part.empty()) continue;
            name += (name.empty() ? "" : "/") + part;
            part.clear();
            made.insert(name);
        }
        require(root_->exists(path) == (models_.count(name) == 1), "exists() differs from the model");
        require((root_->getNode(path, false) != nullptr) == (models_.count(name) == 1), "getNode differs");
        for (const std::string& one : made) models_[one];
        node_ = root_->getNode(path, true);
        model_ = &models_[name];
        requireEqual(name, node_->getFullName(), "full name");
        requireEqual(name.substr(name.rfind('/') + 1), node_->name(), "name");
    }

    template <class T>
    void set(T value) {
        const bool changes = !holdsEqual(model_->value, value);
        if (changes) {
            model_->value = value;
            model_->changed();
        }
        requireEqual(changes ? model_->counter : 0, node_->set<T>(value), "the result of set");
    }

    void setFromText(const std::string& text) {
        bool failed = false;
        const auto read_only = model_->meta.find("read_only");
        bool refused = false;
        if (read_only != model_->meta.end() && read_only->second.index() != 0) {
            refused = readAs<bool>(read_only->second, &failed);
        }
        ModelValue edited = model_->value;
        const bool taken = !refused && fromWholeText(model_->value, text, &edited);
        if (taken && !isSame(edited, model_->value)) {
            model_->value = edited;
            model_->changed();
        }
        std::string error;
        expectAssertions(failed ? 1 : 0, [&] {
            requireEqual(taken, node_->setFromText(text, &error), "setFromText of " + shown(text));
        });
        require(taken == error.empty(), "an error without a refusal, or a refusal without");
    }

    template <class T>
    void get() {
        bool failed = false;
        const bool empty = model_->value.index() == 0;
        const T expected = empty ? T{} : readAs<T>(model_->value, &failed);
        expectAssertions(empty || failed ? 1 : 0, [&] {
            if (!same(expected, node_->get<T>()))
                fail("get() of " + shown(textOf(model_->value)) + " differs");
        });
    }
    void getAll() {
        get<float>();
        get<long>();
        get<bool>();
        get<int>();
        get<std::string>();
    }

    void getWithDefault(Input& input) {
        const auto fallback = input.number<int>();
        int found = 0;
        if (model_->value.index() == 0) {
            model_->value = fallback;
            model_->changed();
        }
        bool failed = false;
        const int expected = readAs<int>(model_->value, &failed);
        expectAssertions(failed ? 1 : 0, [&] { node_->get<int>(found, fallback); });
        requireEqual(expected, found, "get with a default");
    }

    template <class T>
    void setMeta(const std::string& name, T value) {
        ModelValue& entry = model_->meta[name];
        const bool changes = !holdsEqual(entry, value);
        if (changes) {
            entry = value;
            model_->changed();
        }
        requireEqual(changes ? model_->counter : 0, node_->setMeta<T>(name, value), "the result of setMeta");
    }
    void setMeta(Input& input) {
        const std::string name = metaName(input);
        switch (input.below(4)) {
            case 0:
                setMeta(name, input.coin());
                break;
            case 1:
                setMeta(name, input.number<int>());
                break;
            case 2:
                setMeta(name, input.number<float>());
                break;
            default:
                setMeta(name, input.text());
                break;
        }
    }

    template <class T>
    void getMeta(const std::string& name) {
        const auto entry = model_->meta.find(name);
        const bool is_set = entry != model_->meta.end() && entry->second.index() != 0;
        requireEqual(is_set, node_->hasMeta(name), "hasMeta");
        bool failed = false;
        const T expected = is_set ? readAs<T>(entry->second, &failed) : T{};
        T by_find{}, by_get{};
        expectAssertions(failed ? 2 : 0, [&] {
            requireEqual(is_set, node_->findMeta<T>(name, by_find), "findMeta");
            requireEqual(is_set, node_->getMeta<T>(name, by_get), "getMeta");
        });
        require(same(expected, by_find) && same(expected, by_get), "an entry differs from the model");
        requireEqual(is_set, node_->hasMeta(name), "hasMeta after getMeta");
    }
    void getMeta(Input& input) {
        const std::string name = metaName(input);
        getMeta<int>(name);
        getMeta<bool>(name);
        getMeta<std::string>(name);
    }

    void setDefault(Input& input) {
        PropertyValue value;
        model_->default_value = std::monostate();
        if (input.coin()) {
            const std::string text = input.text();
            value.set<std::string>(text);
            model_->default_value = text;
        } else if (input.coin()) {
            const long number = input.number<long>();
            value.set<long>(number);
            model_->default_value = number;
        }
        if (model_->value.index() == 0 && !value.empty()) {
            model_->value = model_->default_value;
            model_->changed();
        }
        node_->setDefaultValue(value);
    }

    void toggleListener() {
        const std::string name = node_->getFullName();
        if (model_->has_listener) {
            node_->removeListener(listeners_[name]);
        } else {
            unsigned long* const told = &told_[name];
            listeners_[name] =
                node_->addListener([told](PropertyNode&, const PropertyChangeInfo&) { ++*told; });
            require(listeners_[name] != 0, "a listener was refused");
        }
        model_->has_listener = !model_->has_listener;
    }

    static std::string metaName(Input& input) {
        constexpr const char* kNames[] = {"read_only", "se_diag", "help", ""};
        return input.below(8) == 0 ? input.text() : input.oneOf(kNames);
    }

    void compare() {
        const PropertyValue value = node_->value();
        requireEqual(std::string(typeOf(model_->value)), std::string(value.typeName()), "type");
        requireEqual(textOf(model_->value), value.toString(), "text");
        requireEqual(textOf(model_->default_value), node_->defaultValue().toString(), "default");
        const std::string name = node_->getFullName();
        const auto told = told_.find(name);
        requireEqual(model_->told, told == told_.end() ? 0UL : told->second, "changes told");
        const PropertyNodeData::SharedDataLock lock(node_.get(), nullptr);
        requireEqual(model_->counter, static_cast<unsigned long>(lock->change_counter), "change counter");
    }

    void collect(const PropertyNodePtr& node, std::set<std::string>* names) {
        names->insert(node->getFullName());
        std::string before;
        for (const PropertyNodePtr& child : node->children()) {
            require(before.empty() || before < child->name(), "children are not in order");
            before = child->name();
            collect(child, names);
        }
    }

    PropertyNodePtr root_;
    std::map<std::string, NodeModel> models_;
    std::map<std::string, uint64_t> listeners_;
    std::map<std::string, unsigned long> told_;
    PropertyNodePtr node_;
    NodeModel* model_ = nullptr;
};

}  // namespace
}  // namespace quill::fuzz

int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
    quill::setAssertionHandler([](const quill::AssertionRecord&) {
        ++quill::fuzz::g_assertions;
        return false;
    });
    return 0;
}

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    quill::fuzz::Input input(data, size);
    quill::fuzz::TreeUnderTest tree;
    while (!input.empty()) tree.operate(input);
    tree.compareWhole();
    return 0;
}
