#include "host/live/snapshot.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <thread>

namespace se_host {
namespace {

TEST(Snapshot, HoldsTheLastValueAndCounts) {
    Snapshot snapshot({1, 3});
    std::vector<uint64_t> words;
    EXPECT_EQ(snapshot.get(1, words), 0U);
    EXPECT_EQ(words, (std::vector<uint64_t>{0, 0, 0}));
    const uint64_t first[] = {1, 2, 3}, second[] = {4, 5, 6}, single[] = {9};
    snapshot.put(1, first);
    snapshot.put(1, second);
    snapshot.put(0, single);
    EXPECT_EQ(snapshot.get(1, words), 2U);
    EXPECT_EQ(words, (std::vector<uint64_t>{4, 5, 6}));
    EXPECT_EQ(snapshot.get(0, words), 1U);
    EXPECT_EQ(words, (std::vector<uint64_t>{9}));
}

TEST(Snapshot, AReaderNeverSeesAPartOfAValue) {
    constexpr uint64_t kRounds = 200'000;
    Snapshot snapshot({64});
    std::atomic<bool> ended{false};
    std::thread writer([&] {
        std::vector<uint64_t> words(64);
        for (uint64_t round = 1; round <= kRounds; ++round) {
            std::fill(words.begin(), words.end(), round);
            snapshot.put(0, words.data());
        }
        ended = true;
    });
    std::vector<uint64_t> words;
    uint64_t last = 0;
    while (!ended) {
        const uint64_t version = snapshot.get(0, words);
        ASSERT_TRUE(std::all_of(words.begin(), words.end(), [&](uint64_t word) { return word == version; }));
        ASSERT_GE(version, last);
        last = version;
    }
    writer.join();
}

}  // namespace
}  // namespace se_host
