// A static object of the host may use values and nodes while the process exits.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <memory>

#include "common/property_node.h"

namespace quill {
namespace {

using Operators = property_internal::PropertyValueOperators;

template <class T>
std::weak_ptr<Operators> observed() {
    return property_internal::PropertyValueOperatorsT<T>::staticCopy();
}

// Constructed before the first value of the process, so destroyed after everything that the library makes at
// its first use.
struct HostObject {
    std::weak_ptr<Operators> operators[5];
    bool armed = false;

    ~HostObject() {
        if (!armed) return;
        for (const std::weak_ptr<Operators>& each : operators) {
            if (each.expired()) ::_exit(1);
        }
        const PropertyNodePtr root = PropertyNode::createRoot();
        root->getNode("state/level", true)->set(1.5f);
        root->getNode("state/name", true)->set<std::string>("last");
        ::_exit(root->getNode("state/name", false)->get<std::string>() == "last" ? 0 : 2);
    }
};

HostObject g_host_object;

[[noreturn]] void useEveryTypeAndExit() {
    g_host_object.operators[0] = observed<float>();
    g_host_object.operators[1] = observed<long>();
    g_host_object.operators[2] = observed<bool>();
    g_host_object.operators[3] = observed<int>();
    g_host_object.operators[4] = observed<std::string>();
    g_host_object.armed = true;
    std::exit(3);
}

TEST(ExitOrderDeathTest, AStaticObjectMayStillSetValuesOfEveryType) {
    EXPECT_EXIT(useEveryTypeAndExit(), testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace quill
