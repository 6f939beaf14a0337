// Keys: what they depend on.
#include <filesystem>

#include "tests/sweep/sweep_test.h"
#include "tools/se_host/sweep/order.h"

namespace se_host_test {
namespace {

using se_host::sweep::FileHashes;
using se_host::sweep::keyOf;
using se_host::sweep::Order;

class Key : public SweepTest {
  protected:
    Key() {
        for (const char* const name : {"a.wav", "far.wav", "p-talker.wav", "p-noise.wav", "p-echo.wav",
                                       "tuning.json", "engine", "array"}) {
            writeText(name, name);
        }
        order_.entry.id = "one";
        order_.entry.recording.input = path("a.wav");
        order_.engine.path = path("engine");
    }

    std::string key() const {
        FileHashes files;
        return keyOf(order_, files);
    }

    Order order_;
};

TEST_F(Key, StaysWhenNamesAndPlacesChange) {
    const std::string before = key();
    std::filesystem::create_directory(path("other"));
    std::filesystem::rename(path("a.wav"), path("other/b.wav"));
    order_.entry.id = "two";
    order_.entry.recording.input = path("other/b.wav");
    order_.entry.labels["scenario"] = "car";
    order_.tuning = "renamed";
    EXPECT_EQ(key(), before);
}

TEST_F(Key, DependsOnTheContentOfEveryFile) {
    order_.entry.recording.far_end_file = path("far.wav");
    order_.entry.parts = path("p");
    order_.tuning_file = path("tuning.json");
    order_.engine.array = path("array");
    std::string last = key();
    for (const char* const name : {"a.wav", "far.wav", "p-talker.wav", "p-noise.wav", "p-echo.wav",
                                   "tuning.json", "engine", "array"}) {
        writeText(name, "changed");
        const std::string now = key();
        EXPECT_NE(now, last) << name;
        last = now;
    }
}

TEST_F(Key, DependsOnEveryOptionThatChangesTheResult) {
    std::string last = key();
    const auto expectAnother = [&](const char* what) {
        const std::string now = key();
        EXPECT_NE(now, last) << what;
        last = now;
    };
    order_.entry.recording.far_end_channel = 0;
    expectAnother("far end channel");
    order_.entry.recording.channel_map = "1,2,3,4,5,6,7";
    expectAnother("channel map");
    order_.engine.device_model = true;
    expectAnother("device model");
    order_.over_time = path("seconds.csv");
    expectAnother("over time");
}

TEST_F(Key, TellsAFarEndFromAPart) {
    order_.entry.recording.far_end_file = path("far.wav");
    const std::string with_far_end = key();
    order_.entry.recording.far_end_file.clear();
    EXPECT_NE(key(), with_far_end);
}

TEST_F(Key, OfAnOrderThatWasSentIsTheSame) {
    order_.entry.recording.far_end_channel = 3;
    order_.tuning_file = path("tuning.json");
    FileHashes files;
    EXPECT_EQ(keyOf(se_host::sweep::orderOf(toJson(order_)), files), key());
}

}  // namespace
}  // namespace se_host_test
