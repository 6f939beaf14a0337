// Publishing enumerations.
#include "tests/webrtc_common/diags/bridge.h"

using namespace quill::test;

namespace {

class PublishEnum : public Bridge {
  protected:
    int addWide() {
        const int index = add(kEnum);
        engine->set_label(index, 3, "Wide");
        engine->set_integer(index, 3);
        return index;
    }
};

TEST_F(PublishEnum, WritesNumberAndLabelAndMarksTheNumber) {
    addWide();
    publish();
    EXPECT_EQ("string 3 - Wide", value());
    EXPECT_EQ("int32 3", mark());
}

TEST_F(PublishEnum, WritesANegativeNumberAndAnEmptyLabel) {
    const int index = add(kEnum);
    engine->set_label(index, -1, "");
    engine->set_integer(index, -1);
    publish();
    EXPECT_EQ("string -1 - ", value());
    EXPECT_EQ("int32 -1", mark());
}

TEST_F(PublishEnum, IsRewrittenOnEveryPassSoThatAnEditIsLost) {
    addWide();
    publish();
    node()->set<std::string>("2");
    publish();
    EXPECT_EQ("string 3 - Wide", value());
}

TEST_F(PublishEnum, ReplacesAMarkThatWasChanged) {
    addWide();
    publish();
    node()->setMeta<int>("se_diag", 8);
    publish();
    EXPECT_EQ("int32 3", mark());
}

TEST_F(PublishEnum, LogsNothingOfItsValue) {
    addWide();
    EXPECT_EQ((Lines{"diags/basic/x"}), recordsOf([&] { publish(); }));
}

TEST_F(PublishEnum, MarksTheAnswerToTheSecondQuestion) {
    addWide();
    struct Context {
        TestEngine& engine;
        int questions;
    } context{engine, 0};
    engine->set_callback(
        [](const char* call, void* opaque) {
            auto& c = *static_cast<Context*>(opaque);
            if (std::string(call) == "SEDiagGetEnumAsInt(0)" && ++c.questions == 2)
                c.engine->set_integer(0, 4);
        },
        &context);
    publish();
    EXPECT_EQ("string 3 - Wide", value());
    EXPECT_EQ("int32 4", mark());
}

TEST_F(PublishEnum, HasNoValueAsAnArray) {
    addArray(kEnum, 3);
    publish();
    EXPECT_EQ("nothing", value());
    EXPECT_EQ("nothing", mark());
}

}  // namespace
