// Files of rows: what a process leaves behind that was ended, and who may write.
#include "tools/se_host/sweep/shard.h"

#include <filesystem>

#include "host/output/errors.h"
#include "tests/sweep/sweep_test.h"

namespace se_host_test {
namespace {

using se_host::sweep::Folder;
using se_host::sweep::Shard;

class ShardFile : public SweepTest {
  protected:
    ShardFile() : folder_(path("sweep")) { std::filesystem::create_directories(folder_.shards()); }

    static Json row(const std::string& key) { return {{"key", key}, {"status", "ok"}}; }

    Folder folder_;
    const std::string part_ = "sweep/shards/00001.jsonl.part";
};

TEST_F(ShardFile, HasItsNameWhenItIsFinished) {
    Shard shard(folder_, 1);
    shard.append(row("k1"));
    EXPECT_FALSE(isFinished(folder_, 1));
    EXPECT_EQ(textOf(part_), "{\"key\":\"k1\",\"status\":\"ok\"}\n");
    shard.finish();
    EXPECT_TRUE(isFinished(folder_, 1));
    EXPECT_EQ(textOf("sweep/shards/00001.jsonl"), "{\"key\":\"k1\",\"status\":\"ok\"}\n");
    EXPECT_EQ(textOf(part_), "");
}

TEST_F(ShardFile, TakesOverWholeRowsAndCutsOffATornOne) {
    const std::string whole = "{\"key\":\"k1\"}\n{\"key\":\"k2\"}\n";
    for (const char* const torn : {"", "{", "{\"key\":\"k3\"", "{\"key\":\"k3\"}"}) {
        writeText(part_, whole + torn);
        Shard shard(folder_, 1);
        EXPECT_EQ(shard.keys(), (std::set<std::string>{"k1", "k2"})) << torn;
        EXPECT_EQ(textOf(part_), whole) << torn;
        shard.append(row("k4"));
        EXPECT_EQ(textOf(part_), whole + "{\"key\":\"k4\",\"status\":\"ok\"}\n");
    }
}

TEST_F(ShardFile, OfNothingButATornRowIsEmpty) {
    writeText(part_, "{\"key\":\"k1\"");
    EXPECT_TRUE(Shard(folder_, 1).keys().empty());
    EXPECT_EQ(textOf(part_), "");
}

TEST_F(ShardFile, IsRefusedToASecondWriter) {
    const Shard first(folder_, 1);
    try {
        const Shard second(folder_, 1);
        FAIL();
    } catch (const se_output::Failure& failure) {
        EXPECT_EQ(failure.what(), "another process works on '" + folder_.part(1) + "'; wait for its end");
    }
    EXPECT_THROW(requireIdle(folder_), se_output::Failure);
}

TEST_F(ShardFile, OfAProcessThatHasEndedCanBeWritten) {
    { const Shard first(folder_, 1); }
    const Shard second(folder_, 1);
    EXPECT_TRUE(second.keys().empty());
}

TEST_F(ShardFile, WithADamagedRowNamesFileAndLine) {
    writeText(part_, "{\"key\":\"k1\"}\n{\"key\":\n{\"key\":\"k2\"}\n");
    try {
        const Shard shard(folder_, 1);
        FAIL();
    } catch (const se_output::Failure& failure) {
        EXPECT_EQ(std::string(failure.what()).rfind(folder_.part(1) + ":2: this is not a line of JSON", 0),
                  0u)
            << failure.what();
    }
}

}  // namespace
}  // namespace se_host_test
