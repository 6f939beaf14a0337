// One node, several threads.
#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>

#include "tests/common/property_node/change_recorder.h"
#include "tests/common/property_node/threads.h"

namespace quill {
namespace {

constexpr int kThreads = 4;
constexpr int kRounds = 500;

TEST(NodeThreads, EveryChangeIsCountedOnce) {
    const PropertyNodePtr node = PropertyNode::createRoot();
    std::vector<std::vector<uint64_t>> returned(kThreads);
    test::together(kThreads, [&](int t) {
        for (int i = 0; i < kRounds; ++i) returned[size_t(t)].push_back(node->set(t * kRounds + i));
    });
    std::vector<uint64_t> all;
    for (const auto& each : returned) all.insert(all.end(), each.begin(), each.end());
    std::sort(all.begin(), all.end());
    std::vector<uint64_t> expected(kThreads * kRounds);
    std::iota(expected.begin(), expected.end(), 1u);
    EXPECT_EQ(all, expected);
}

TEST(NodeThreads, CompareAndSetIsAtomic) {
    const PropertyNodePtr node = PropertyNode::createRoot();
    std::atomic<int> changes{0};
    for (int round = 1; round <= 50; ++round) {
        test::together(kThreads, [&](int) { changes += node->set(round) != 0 ? 1 : 0; });
    }
    EXPECT_EQ(changes, 50);
}

TEST(NodeThreads, ReadersSeeWholeValues) {
    const PropertyNodePtr node = PropertyNode::createRoot();
    const std::string a(100, 'a');
    const std::string b(200, 'b');
    node->set(a);
    test::together(kThreads, [&](int t) {
        for (int i = 0; i < kRounds; ++i) {
            if (t == 0) {
                node->set(i % 2 == 0 ? b : a);
            } else {
                const std::string text = t == 1 ? node->get<std::string>() : node->value().toString();
                ASSERT_TRUE(text == a || text == b) << text;
            }
        }
    });
}

TEST(NodeThreads, TypeMayChangeUnderReaders) {
    const PropertyNodePtr node = PropertyNode::createRoot();
    node->set(7);
    test::together(kThreads, [&](int t) {
        for (int i = 0; i < kRounds; ++i) {
            switch (t) {
                case 0:
                    node->set<std::string>("7");
                    break;
                case 1:
                    node->set(7l);
                    break;
                default:
                    ASSERT_EQ(node->get<int>(), 7);
            }
        }
    });
}

TEST(NodeThreads, MetadataMayBeWrittenAndReadAtOnce) {
    const PropertyNodePtr node = PropertyNode::createRoot();
    test::together(kThreads, [&](int t) {
        for (int i = 0; i < kRounds; ++i) {
            node->setMeta("m" + std::to_string(t), i);
            int other = 0;
            node->getMeta("m" + std::to_string((t + 1) % kThreads), other);
            node->hasMeta("m");
        }
    });
    for (int t = 0; t < kThreads; ++t) {
        int last = 0;
        EXPECT_TRUE(node->getMeta("m" + std::to_string(t), last));
        EXPECT_EQ(last, kRounds - 1);
    }
}

TEST(NodeThreads, OneThreadFillsTheDefault) {
    const PropertyNodePtr node = PropertyNode::createRoot();
    const test::ChangeRecorder seen(*node);
    std::vector<int> values(kThreads);
    test::together(kThreads, [&](int t) { node->get<int>(values[size_t(t)], t + 1); });
    EXPECT_EQ(seen.changes().size(), 1u);
    EXPECT_EQ(values, std::vector<int>(kThreads, node->get<int>()));
}

TEST(NodeThreads, TextsAndTypedValuesMix) {
    const PropertyNodePtr node = PropertyNode::createRoot();
    node->set(0);
    test::together(kThreads, [&](int t) {
        for (int i = 0; i < kRounds; ++i) {
            if (t % 2 == 0) {
                ASSERT_TRUE(node->setFromText(std::to_string(i), nullptr));
            } else {
                node->set(-i);
            }
        }
    });
    EXPECT_STREQ(node->value().typeName(), "int32");
}

}  // namespace
}  // namespace quill
