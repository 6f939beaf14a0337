// A library that declares static properties and is loaded after the others were bound. It stays loaded, so
// each test needs a process of its own.
#include <gtest/gtest.h>

#include <csignal>

#include "common/config.h"
#include "common/dynlib.h"

namespace quill {
namespace {

class LateLibrary : public testing::Test {
  protected:
    LateLibrary() {
        initStaticProperties(root_);
        p_config_is_harbor.node()->set(true);
        const DynLibHandle library = loadDynamicLibrary(FIXTURE_PROPERTIES);
        getSymbolOrDie(&late_value_, library, "late_value");
        getSymbolOrDie(&late_is_bound_, library, "late_is_bound");
    }
    const PropertyNodePtr root_ = PropertyNode::createRoot();
    const char* (*late_value_)() = nullptr;
    bool (*late_is_bound_)() = nullptr;
};
using LateLibraryDeathTest = LateLibrary;

TEST_F(LateLibrary, IsUnboundAtFirst) {
    EXPECT_FALSE(late_is_bound_());
    EXPECT_FALSE(root_->exists("fixture/late"));
}

TEST_F(LateLibraryDeathTest, TrapsWhenItIsUsedUnbound) {
    EXPECT_EXIT(late_value_(), testing::KilledBySignal(SIGTRAP), "\\(fixture/late\\)");
}

TEST_F(LateLibrary, IsBoundByASecondPass) {
    initStaticProperties(root_);
    EXPECT_TRUE(late_is_bound_());
    EXPECT_STREQ(late_value_(), "late default");
    std::string file;
    EXPECT_TRUE(root_->getNode("fixture/late", false)->getMeta("file_name", file));
    EXPECT_EQ(file, "fixture.cpp");
}

TEST_F(LateLibrary, LeavesTheValuesOfTheOthers) {
    initStaticProperties(root_);
    EXPECT_TRUE(p_config_is_harbor.get());
}

}  // namespace
}  // namespace quill
