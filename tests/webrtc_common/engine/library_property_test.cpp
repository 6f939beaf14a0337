// The property that names the engine build, as the wrapper declares it.
#include <gtest/gtest.h>

#include <csignal>

#include "tests/webrtc_common/engine/bound_properties.h"
#include "webrtc_common/se_wrapper.h"

using namespace quill::media::se_wrapper;
using quill::test::BoundProperties;

namespace {

constexpr const char* kPath = "media/signal_essence/signal_essence_library";

TEST(LibraryProperty, IsBoundToItsPath) {
    const BoundProperties properties;
    EXPECT_EQ(properties.root->getNode(kPath, false), p_signal_essence_library.node());
}

TEST(LibraryProperty, IsEmptyByDefault) {
    const BoundProperties properties;
    EXPECT_EQ("", p_signal_essence_library.get());
    std::string default_value = "no default";
    EXPECT_TRUE(p_signal_essence_library.node()->defaultValue().get(default_value));
    EXPECT_EQ("", default_value);
}

TEST(LibraryProperty, IsReadOnlyForTypedTexts) {
    const BoundProperties properties;
    bool read_only = false;
    EXPECT_TRUE(p_signal_essence_library.node()->getMeta("read_only", read_only));
    EXPECT_TRUE(read_only);
    EXPECT_FALSE(p_signal_essence_library.node()->setFromText("another", nullptr));
}

TEST(LibraryProperty, NamesTheSourceFileThatDeclaresIt) {
    const BoundProperties properties;
    std::string file;
    EXPECT_TRUE(p_signal_essence_library.node()->getMeta("file_name", file));
    const std::string expected = "webrtc_common/se_wrapper.cpp";
    ASSERT_LE(expected.size(), file.size());
    EXPECT_EQ(expected, file.substr(file.size() - expected.size()));
}

TEST(LibraryProperty, KeepsAnEarlierValue) {
    const auto root = quill::PropertyNode::createRoot();
    root->getNode(kPath, true)->set<std::string>("my_build");
    quill::initStaticProperties(root);
    EXPECT_EQ("my_build", p_signal_essence_library.get());
}

TEST(LibraryProperty, HasATypeGuardBesideIt) {
    const BoundProperties properties;
    in_this_namespace_property_p_signal_essence_library_was_not_defined_with_type(
        p_signal_essence_library.get());
    SUCCEED();
}

constexpr const char* kMisuse =
    "Tried to use a static property \\(media/signal_essence/signal_essence_library\\) before the property "
    "system is initialized\\.";

TEST(LibraryProperty, StopsTheProcessWhenReadBeforeThePropertySystemIsInitialised) {
    EXPECT_EXIT(p_signal_essence_library.get(), testing::KilledBySignal(SIGTRAP), kMisuse);
}

TEST(StartOfTheEngine, StopsTheProcessBeforeThePropertySystemIsInitialised) {
    EXPECT_EXIT(initSignalEssenceOptimForTests(), testing::KilledBySignal(SIGTRAP), kMisuse);
}

}  // namespace
