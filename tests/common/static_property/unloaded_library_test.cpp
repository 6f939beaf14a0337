// A handle of a static property outlives the library that declared it.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <memory>
#include <optional>

#include "common/dynlib.h"
#include "common/properties.h"

namespace quill {
namespace {

class UnloadedLibrary : public testing::Test {
  protected:
    void SetUp() override {
        const DynLibHandle library = loadDynamicLibrary(FIXTURE_UNLOADED);
        const void* (*property)() = nullptr;
        getSymbolOrDie(&property, library, "property");
        property_ = *static_cast<const StaticProperty<std::string>*>(property());
        bind_before_ ? initStaticProperties(root_) : void();
        ASSERT_EQ(dlclose(library), 0);
        ASSERT_EQ(dlopen(FIXTURE_UNLOADED, RTLD_NOW | RTLD_NOLOAD), nullptr) << "it is still loaded";
    }

    const PropertyNodePtr root_ = PropertyNode::createRoot();
    std::optional<StaticProperty<std::string>> property_;
    bool bind_before_ = false;
};

class UnloadedLibraryThatWasBound : public UnloadedLibrary {
  protected:
    UnloadedLibraryThatWasBound() { bind_before_ = true; }
};

void expectBoundBelow(const PropertyNodePtr& root, const StaticProperty<std::string>& property) {
    EXPECT_EQ(property.node(), root->getNode("fixture/unloaded", false));
    EXPECT_EQ(property.get(), "a default that is longer than a short string");
    std::string file;
    EXPECT_TRUE(property.node()->findMeta("file_name", file));
    EXPECT_EQ(file, "fixture_unloaded.cpp");
}

TEST_F(UnloadedLibrary, MayBeBoundByItsRemainingHandle) {
    initStaticProperties(root_);
    expectBoundBelow(root_, *property_);
}

TEST_F(UnloadedLibraryThatWasBound, MayBeBoundAgainByItsRemainingHandle) {
    initStaticProperties(root_);
    expectBoundBelow(root_, *property_);
    const PropertyNodePtr other = PropertyNode::createRoot();
    initStaticProperties(other);
    expectBoundBelow(other, *property_);
}

TEST_F(UnloadedLibrary, LeavesTheListWithItsLastHandle) {
    property_.reset();
    initStaticProperties(root_);
    EXPECT_FALSE(root_->exists("fixture/unloaded"));
}

}  // namespace
}  // namespace quill
