// Manifests: what is read, and what is refused with file and line.
#include "tools/se_host/sweep/manifest.h"

#include <filesystem>

#include "host/output/errors.h"
#include "tests/sweep/sweep_test.h"

namespace se_host_test {
namespace {

using se_host::sweep::Entry;
using se_host::sweep::readManifest;

class Manifest : public SweepTest {
  protected:
    Manifest() { makeRecordings(2); }

    std::vector<Entry> read(const std::string& text) const {
        writeText("list.jsonl", text);
        return readManifest(path("list.jsonl"), true);
    }

    void expectRefusal(const std::string& text, const std::string& reason) const {
        try {
            read(text);
            ADD_FAILURE() << text;
        } catch (const se_output::Failure& failure) {
            EXPECT_EQ(failure.what(), path("list.jsonl") + reason);
        }
    }
};

TEST_F(Manifest, HasPathsFromItsOwnFolder) {
    const Entry entry = read(R"({"id":"one","recording":"rec/a.wav","far_end":"rec/b.wav"})").front();
    EXPECT_EQ(entry.recording.input, path("rec/a.wav"));
    EXPECT_EQ(entry.recording.far_end_file, path("rec/b.wav"));
}

TEST_F(Manifest, TakesAChannelAsFarEnd) {
    const Entry entry = read(R"({"id":"one","recording":"rec/a.wav","far_end":0})").front();
    EXPECT_EQ(entry.recording.far_end_channel, 0);
    EXPECT_EQ(entry.recording.far_end_file, "");
}

TEST_F(Manifest, KeepsOtherFieldsAsLabels) {
    const Entry entry = read(R"({"id":"one","recording":"rec/a.wav","scenario":"car","snr":3.5})").front();
    EXPECT_EQ(entry.labels.dump(), R"({"scenario":"car","snr":3.5})");
}

TEST_F(Manifest, IsWrittenAsItIsRead) {
    const std::string line = R"({"id":"one","recording":")" + path("rec/a.wav") +
                             R"(","far_end":7,"channel_map":"1,2,3,4,5,6,7","scenario":"car"})";
    EXPECT_EQ(toJson(read(line).front()).dump(), line);
}

TEST_F(Manifest, NeedsNoLineBreakAtItsEnd) {
    const char* const kTwo =
        "{\"id\":\"1\",\"recording\":\"rec/a.wav\"}\n\n{\"id\":\"2\",\"recording\":\"rec/b.wav\"}";
    EXPECT_EQ(read(kTwo).size(), 2u);
}

TEST_F(Manifest, IsRefusedWithTheLine) {
    const std::string good = "{\"id\":\"1\",\"recording\":\"rec/a.wav\"}\n";
    expectRefusal(good + "{\"recording\":\"rec/a.wav\"}", ":2: 'id' is missing");
    expectRefusal(good + "{\"id\":\"2\"}", ":2: 'recording' is missing");
    expectRefusal(good + good, ":2: the id '1' is used twice");
    expectRefusal("{\"id\":1}", ":1: 'id' is not a text");
    expectRefusal("\n{\"id\":\"1\",\"recording\":\"none.wav\"}",
                  ":2: there is no file '" + path("none.wav") + "'");
    expectRefusal(R"({"id":"1","recording":"rec/a.wav","far_end":-1})",
                  ":1: 'far_end' is neither a file nor a channel");
    expectRefusal(R"({"id":"1","recording":"rec/a.wav","far_end":"none.wav"})",
                  ":1: there is no file '" + path("none.wav") + "'");
    expectRefusal(R"({"id":"1","recording":"rec/a.wav","parts":"rec/a"})",
                  ":1: there is no file '" + path("rec/a-talker.wav") + "'");
    expectRefusal(R"({"id":"1","recording":"rec/a.wav","label":[1]})",
                  ":1: the label 'label' is not a text or a number");
}

TEST_F(Manifest, ThatIsNoJsonIsRefusedWithTheLine) {
    try {
        read("{\"id\":\"1\",\"recording\":\"rec/a.wav\"}\nrec/b.wav");
        FAIL();
    } catch (const se_output::Failure& failure) {
        EXPECT_EQ(
            std::string(failure.what()).rfind(path("list.jsonl") + ":2: this is not a line of JSON: ", 0), 0u)
            << failure.what();
    }
}

}  // namespace
}  // namespace se_host_test
