#include "common/config.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace quill {
namespace {

TEST(Config, IsHarborIsAFalseBoolAtFirst) {
    const PropertyNodePtr root = PropertyNode::createRoot();
    initStaticProperties(root);
    EXPECT_FALSE(p_config_is_harbor.get());
    EXPECT_EQ(p_config_is_harbor.node(), root->getNode("config/is_harbor", false));
    EXPECT_STREQ(p_config_is_harbor.node()->value().typeName(), "bool");
}

TEST(Config, IsHarborMayBeSetBeforeBindingAndTypedAfterwards) {
    const PropertyNodePtr root = PropertyNode::createRoot();
    root->getNode("config/is_harbor", true)->set(true);
    initStaticProperties(root);
    EXPECT_TRUE(p_config_is_harbor.get());
    EXPECT_TRUE(p_config_is_harbor.node()->setFromText("0", nullptr));
    EXPECT_FALSE(p_config_is_harbor.get());
}

TEST(Config, IsHarborHasItsTypeGuard) {
    EXPECT_TRUE(
        (std::is_same_v<decltype(&in_this_namespace_property_p_config_is_harbor_was_not_defined_with_type),
                        void (*)(bool)>));
}

}  // namespace
}  // namespace quill
