// Help text, read-only mark and path of the nodes that a publishing pass finds or makes.
#include "tests/webrtc_common/diags/bridge.h"

using namespace quill::test;

namespace {

class PublishMetadata : public Bridge {};

TEST_F(PublishMetadata, GivesANewNodeItsHelpText) {
    add(kInt32);
    publish();
    EXPECT_EQ("string what it does", meta("help"));
}

TEST_F(PublishMetadata, GivesNoHelpTextToANodeThatTheHostMadeFirst) {
    add(kInt32);
    root->getNode(path("x"), true);
    publish();
    EXPECT_EQ("int32 0", value());
    EXPECT_EQ("nothing", meta("help"));
}

TEST_F(PublishMetadata, GivesNoHelpTextToANodeThatAnApplyingPassMade) {
    add(kInt32);
    apply();
    publish();
    EXPECT_EQ("int32 0", value());
    EXPECT_EQ("nothing", meta("help"));
    expected_assertions = {kReadOfNothing, kReadOfNothing, kReadOfNothing};
}

TEST_F(PublishMetadata, KeepsTheHelpTextOfTheFirstPass) {
    const int index = add(kInt32);
    publish();
    engine->set_help(index, "something else");
    publish();
    EXPECT_EQ("string what it does", meta("help"));
}

TEST_F(PublishMetadata, TakesOverAValueThatTheHostSetFirst) {
    engine->set_integer(add(kInt32), 5);
    node()->set<std::string>("a setting of the host");
    publish();
    EXPECT_EQ("int32 5", value());
    EXPECT_EQ("int32 5", mark());
}

TEST_F(PublishMetadata, KeepsAReadOnlyMarkWhenTheDiagnosticBecomesWritable) {
    const int index = add(kInt32, "x", kReadOnly);
    publish();
    EXPECT_EQ("bool 1", meta("read_only"));
    engine->set_rw(index, kReadWrite);
    publish();
    EXPECT_EQ("bool 1", meta("read_only"));
}

TEST_F(PublishMetadata, SetsAReadOnlyMarkAgainThatWasTakenBack) {
    add(kInt32, "x", kReadOnly);
    publish();
    node()->setMeta<bool>("read_only", false);
    publish();
    EXPECT_EQ("bool 1", meta("read_only"));
}

TEST_F(PublishMetadata, SetsNoReadOnlyMarkOnAWritableDiagnostic) {
    add(kInt32);
    publish();
    EXPECT_EQ("nothing", meta("read_only"));
}

TEST_F(PublishMetadata, TestsTheWriteBitOnly) {
    for (const int rw : {0, 1, 4, 5, ~2}) add(kInt32, ("read_only_" + std::to_string(rw)).c_str(), rw);
    for (const int rw : {2, 3, 6, 7, -1}) add(kInt32, ("writable_" + std::to_string(rw)).c_str(), rw);
    publish();
    for (const int rw : {0, 1, 4, 5, ~2}) {
        EXPECT_EQ("bool 1", meta("read_only", "read_only_" + std::to_string(rw)));
    }
    for (const int rw : {2, 3, 6, 7, -1}) {
        EXPECT_EQ("nothing", meta("read_only", "writable_" + std::to_string(rw)));
    }
}

TEST_F(PublishMetadata, MarksAReadOnlyArrayToo) {
    addArray(kInt32, 3, "x", kReadOnly);
    publish();
    EXPECT_EQ("bool 1", meta("read_only"));
}

TEST_F(PublishMetadata, ClampsEachLevelIntoTheFourFolders) {
    const std::pair<int, const char*> places[] = {
        {INT32_MIN, "basic"}, {-1, "basic"}, {0, "basic"}, {1, "intermediate"},  {2, "advanced"},
        {3, "debug"},         {4, "debug"},  {7, "debug"}, {INT32_MAX, "debug"},
    };
    for (const auto& [level, folder] : places) {
        const std::string name = "level_" + std::to_string(level);
        engine->add_diag(name.c_str(), kInt32, 1, kReadWrite, level, "");
        publish();
        EXPECT_TRUE(root->exists("diags/" + std::string(folder) + "/" + name)) << level;
    }
    EXPECT_EQ(4u, root->getNode("diags", false)->children().size());
}

TEST_F(PublishMetadata, WorksBelowTheHostsNode) {
    add(kInt32);
    const auto below = root->getNode("media/engine", true);
    quill::media::se_wrapper::readSignalEssenceDiags(below);
    EXPECT_TRUE(root->exists("media/engine/diags/basic/x"));
    EXPECT_TRUE(root->exists("media/engine/aec_bypass"));
    EXPECT_FALSE(root->exists("diags"));
    EXPECT_EQ((Lines{"media/engine/diags/basic/x"}),
              recordsOf([&] { quill::media::se_wrapper::readSignalEssenceDiags(below); }));
}

TEST_F(PublishMetadata, StartsAfreshInAnotherTree) {
    engine->set_integer(add(kInt32), 5);
    publish();
    root = quill::PropertyNode::createRoot();
    publish();
    EXPECT_EQ("int32 5", value());
    EXPECT_EQ("string what it does", meta("help"));
}

class PublishWithoutHelpQuery : public Bridge {
  protected:
    PublishWithoutHelpQuery() : Bridge("test_engines/without_SEDiagGetHelp_and_SEDiagGetLevel") {}
};

TEST_F(PublishWithoutHelpQuery, TakesHelpAndLevelFromTheEnginesRecord) {
    engine->set_record(add(kInt32), 2, "the record's text");
    publish();
    std::string help;
    const auto found = root->getNode("diags/advanced/x", false);
    ASSERT_NE(nullptr, found);
    EXPECT_TRUE(found->getMeta("help", help));
    EXPECT_EQ("the record's text", help);
}

}  // namespace
