// Catalogues of 20,000 diagnostics of every type, and none.
#include "tests/webrtc_common/diags/bridge.h"
#include "tests/webrtc_common/diags/tree_watch.h"

using namespace quill::test;

namespace {

constexpr int kCount = 20'000;

class LargeCatalogue : public Bridge {
  protected:
    LargeCatalogue() {
        for (int i = 0; i < kCount; ++i) {
            const int index = engine->add_diag(nameOf(i).c_str(), typeOf(i), 1, kReadWrite, 0, "");
            engine->set_integer(index, i);
            engine->set_real(index, static_cast<float>(i));
        }
    }
    static std::string nameOf(int i) { return "d" + std::to_string(i); }
    static int typeOf(int i) { return i % 8 + 1; }
};

TEST_F(LargeCatalogue, IsPublishedWhole) {
    publish();
    EXPECT_EQ(static_cast<std::size_t>(kCount), root->getNode("diags/basic", false)->children().size());
    for (int i = 0; i < kCount; ++i) ASSERT_EQ(i, node(nameOf(i))->get<int>());
}

TEST_F(LargeCatalogue, CostsAFixedNumberOfQueriesADiagnosticWhenUnchanged) {
    publish();
    const TreeWatch watch(root);
    const std::size_t calls = callsOf([&] { publish(); }).size();
    const std::size_t enums = kCount / 8;
    EXPECT_EQ(kCount * 7 + enums * 2 + 4, calls);
    EXPECT_EQ(0, watch.changes());
}

TEST_F(LargeCatalogue, IsAppliedWhole) {
    publish();
    for (int i = 0; i < kCount; ++i) node(nameOf(i))->set<int>(i + 1);
    apply();
    for (int i = 0; i < kCount; ++i) {
        if (typeOf(i) == kFloat32) {
            ASSERT_EQ(static_cast<float>(i + 1), engine->real(i));
        } else {
            ASSERT_EQ(i + 1, engine->integer(i));
        }
    }
}

class EmptyCatalogue : public Bridge {};

TEST_F(EmptyCatalogue, LeavesTheFourOtherValuesAndTheFlag) {
    publish();
    apply();
    Lines names;
    for (const auto& child : root->children()) names.push_back(child->name());
    EXPECT_EQ(
        (Lines{"aec_bypass", "location", "location_conf", "noise_reduction_bypass", "transfer_large_arrays"}),
        names);
}

}  // namespace
