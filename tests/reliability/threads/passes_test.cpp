// Both diagnostics passes on the control thread while other threads edit, read and watch the published tree.
#include <atomic>

#include "tests/common/property_node/threads.h"
#include "tests/webrtc_common/diags/bridge.h"

namespace quill::test {
namespace {

constexpr int kThreads = 3;
constexpr int kPasses = 200;
constexpr int kDiags = 20;

std::string nameOf(int i) {
    return "d" + std::to_string(i);
}

class ThreadsPasses : public Bridge {
  protected:
    ThreadsPasses() {
        for (int i = 0; i < kDiags; ++i) {
            names_.push_back(nameOf(i));
            add(kInt32, names_.back().c_str());
        }
        publish();
    }

    void edit(int i) {
        const PropertyNodePtr edited = node(nameOf(i % kDiags));
        std::string error;
        EXPECT_TRUE(edited->setFromText(std::to_string(i), &error)) << error;
    }
    void watch(int i) {
        const PropertyNodePtr watched = node(nameOf(i % kDiags));
        const uint64_t id = watched->addListener([](PropertyNode& changed, const PropertyChangeInfo&) {
            EXPECT_EQ(changed.value().typeName(), std::string("int32"));
        });
        for (const PropertyNodePtr& child : root->getNode("diags/basic", false)->children())
            EXPECT_FALSE(child->value().empty());
        watched->removeListener(id);
    }

  private:
    Lines names_;
};

TEST_F(ThreadsPasses, RunWhileOthersEditAndWatch) {
    std::atomic<bool> running{true};
    together(kThreads, [&](int t) {
        if (t == 0) {
            for (int i = 0; i < kPasses; ++i) {
                apply();
                publish();
            }
            running = false;
        } else {
            for (int i = 0; running; ++i) t == 1 ? edit(i) : watch(i);
        }
    });
    // Without edits, one exchange brings both sides together.
    apply();
    publish();
    for (int i = 0; i < kDiags; ++i) EXPECT_EQ(value(nameOf(i)), mark(nameOf(i)));
}

}  // namespace
}  // namespace quill::test
