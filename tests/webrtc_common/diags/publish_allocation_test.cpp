// Heap allocations of a publishing pass over unchanged scalars. The interface table holds functions of this
// file, so that only the wrapper's own allocations are counted.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/common/property_node/allocation_count.h"
#include "webrtc_common/se_wrapper.h"

using namespace quill::media::se_wrapper;

namespace {

constexpr int kNumbers = 7;
constexpr int kNumbersAndEnum = 8;

std::vector<std::string> g_names;
int g_types = kNumbers;

class PublishAllocations : public testing::Test {
  protected:
    PublishAllocations() {
        g_types = kNumbers;
        SEDiagGetNumDiags = [] { return static_cast<int32_t>(g_names.size()); };
        SEDiagGetName = [](int32_t index) { return g_names[static_cast<size_t>(index)].c_str(); };
        SEDiagGetLevel = [](int32_t index) { return index % 4; };
        SEDiagGetHelp = [](int32_t) { return "what it does"; };
        SEDiagGetRW = [](int32_t index) { return index % 3 == 0 ? SE_DIAG_RW_WRITABLE : SEDiagRW_t{}; };
        SEDiagGetLen = [](int32_t) { return 1; };
        SEDiagGetType = [](int32_t index) {
            return static_cast<SEDiagType_t>(SE_DIAG_TYPE_INT16 + index % g_types);
        };
        SEDiagGetInt16 = [](int32_t) -> int16_t { return 1; };
        SEDiagGetInt32 = [](int32_t) { return 2; };
        SEDiagGetUInt16 = [](int32_t) -> uint16_t { return 3; };
        SEDiagGetUInt32 = [](int32_t) { return 4u; };
        SEDiagGetInt40 = [](int32_t) { return 5ll; };
        SEDiagGetUInt40 = [](int32_t) { return 6ull; };
        SEDiagGetFloat32 = [](int32_t) { return 7.0f; };
        SEDiagGetEnumAsInt = [](int32_t) { return 8; };
        SEDiagGetEnumAsString = [](int32_t) { return "a label that is too long to lie in a string itself"; };
        MMIfGetCurrentLocation = [](uint16_t*, int16_t*) {};
        MMIfGetAecBypass = []() -> uint16_t { return 0; };
        MMIfSetAecBypass = [](uint16_t) {};
        MMIfGetNoiseReductionBypass_Optional = nullptr;
        MMIfSetNoiseReductionBypass_Optional = nullptr;
    }

    // A tree that a pass over so many diagnostics has filled. All names have one length and are too long for
    // the buffer inside a string.
    static quill::PropertyNodePtr published(size_t count) {
        g_names.clear();
        for (size_t i = 0; i < count; ++i) {
            g_names.push_back("a diagnostic with a long name " + std::to_string(100'000 + i));
        }
        const quill::PropertyNodePtr root = quill::PropertyNode::createRoot();
        readSignalEssenceDiags(root);
        return root;
    }

    static size_t allocationsOfPublishing(size_t count) {
        const quill::PropertyNodePtr root = published(count);
        return quill::test::allocationsOf([&] { readSignalEssenceDiags(root); });
    }

    static size_t allocationsOfApplying(size_t count) {
        const quill::PropertyNodePtr root = published(count);
        return quill::test::allocationsOf([&] { writeSignalEssenceDiags(root); });
    }
};

TEST_F(PublishAllocations, AreCounted) {
    const quill::PropertyNodePtr root = published(0);
    g_names = {"new"};
    EXPECT_GE(quill::test::allocationsOf([&] { readSignalEssenceDiags(root); }), 1u);
}

TEST_F(PublishAllocations, AreAtMostOneForEachUnchangedScalar) {
    g_types = kNumbersAndEnum;
    for (const size_t count : {size_t{100}, size_t{1000}, size_t{10'000}}) {
        EXPECT_LE(allocationsOfPublishing(count), count);
    }
}

TEST_F(PublishAllocations, DoNotGrowWithTheNumberOfUnchangedNumbers) {
    EXPECT_EQ(allocationsOfPublishing(10'000), allocationsOfPublishing(100));
}

TEST_F(PublishAllocations, OfApplyingDoNotGrowWithTheNumberOfUneditedNumbers) {
    EXPECT_EQ(allocationsOfApplying(10'000), allocationsOfApplying(100));
}

}  // namespace
