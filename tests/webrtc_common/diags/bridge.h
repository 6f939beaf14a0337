// A scriptable engine, a property tree, and both passes between them. A soft assertion that a test did not
// expect fails it.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "common/property_node.h"
#include "tests/engines/test_engine.h"
#include "tests/support/log_capture.h"
#include "webrtc_common/se_wrapper/diags/apply.h"
#include "webrtc_common/se_wrapper/diags/catalogue.h"
#include "webrtc_common/se_wrapper/diags/publish.h"
#include "webrtc_common/se_wrapper/engine/load.h"

namespace quill::test {

using Lines = std::vector<std::string>;

enum DiagNumber : int {
    kInt16 = 1,
    kInt32,
    kUInt16,
    kUInt32,
    kInt40,
    kUInt40,
    kFloat32,
    kEnum,
};

// Engines combine other access bits with the write bit; the bridge ignores them.
inline constexpr int kReadOnly = 1;
inline constexpr int kReadWrite = 3;

inline constexpr const char* kReadOfNothing = "Assertion failed: d->value.get<T>(temp)";

inline std::string failedConversion(const std::string& text) {
    return "Assertion failed: Failed conversion from " + text + ".";
}

// "int32 5": type and text of a value, "nothing" when there is none.
inline std::string shown(const PropertyValue& value) {
    return value.empty() ? "nothing" : value.typeName() + (" " + value.toString());
}

class Bridge : public testing::Test {
  protected:
    explicit Bridge(const std::string& build = "test_engines/full") : engine(opened(build)) {
        engine->clear_calls();
    }
    void TearDown() override { EXPECT_EQ(expected_assertions, assertions.texts()); }

    // A diagnostic "x" of level 0, unless a test says otherwise.
    int add(int type, const char* name = "x", int rw = kReadWrite) { return addArray(type, 1, name, rw); }
    int addArray(int type, int length, const char* name = "x", int rw = kReadWrite) {
        return engine->add_diag(name, type, length, rw, 0, "what it does");
    }

    // The same with this value, converted to its type, and published.
    int addPublished(int type, long long in_engine = 0) {
        const int index = add(type);
        engine->set_integer(index, in_engine);
        engine->set_real(index, static_cast<float>(in_engine));
        publish();
        return index;
    }

    void publish() { media::se_wrapper::readSignalEssenceDiags(root); }
    void apply() { media::se_wrapper::writeSignalEssenceDiags(root); }

    // The engine's calls during the work.
    Lines callsOf(const std::function<void()>& work) {
        engine->clear_calls();
        work();
        return engine.calls();
    }
    // The calls of setters of diagnostics in one applying pass.
    Lines applied() {
        Lines setters;
        for (const std::string& call : callsOf([&] { apply(); })) {
            if (call.rfind("SEDiagSet", 0) == 0) setters.push_back(call);
        }
        return setters;
    }
    // The level-5 records of the work.
    static Lines recordsOf(const std::function<void()>& work) {
        const ScopedLogCapture log(5);
        work();
        return log.texts(5);
    }

    static std::string path(const std::string& name) { return "diags/basic/" + name; }
    PropertyNodePtr node(const std::string& name = "x") { return root->getNode(path(name), true); }
    std::string value(const std::string& name = "x") { return shown(node(name)->value()); }
    std::string mark(const std::string& name = "x") { return meta("se_diag", name); }
    std::string meta(const std::string& entry, const std::string& name = "x") {
        const PropertyNodeData::SharedDataLock lock(node(name).get(), nullptr);
        const PropertyValue* const found = lock->findMeta(entry);
        return found == nullptr ? "nothing" : shown(*found);
    }
    std::string top(const std::string& name) { return shown(root->getNode(name, true)->value()); }

    PropertyNodePtr root = PropertyNode::createRoot();
    TestEngine engine;
    ScopedAssertionCapture assertions;
    Lines expected_assertions;

  private:
    static const std::string& opened(const std::string& build) {
        const ScopedLogCapture no_load_notice(2);
        media::se_wrapper::openSignalEssenceDynamicLibrary(build);
        return build;
    }
};

}  // namespace quill::test
