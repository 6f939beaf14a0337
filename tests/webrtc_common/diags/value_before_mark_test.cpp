// A listener that is notified of a diagnostic's mark finds the matching value.
#include "tests/webrtc_common/diags/bridge.h"

using namespace quill::test;

namespace {

class ValueBeforeMark : public Bridge {};

TEST_F(ValueBeforeMark, WhenAChangeOfTheEngineIsPublished) {
    const int index = addPublished(kInt32, 3);
    engine->set_integer(index, 7);
    Lines told;
    node()->addListener([&](quill::PropertyNode& changed, const quill::PropertyChangeInfo& info) {
        told.push_back(info.name + " " + changed.value().toString());
    });
    publish();
    EXPECT_EQ((Lines{" 7", "se_diag 7"}), told);
}

}  // namespace
