// Manifests of folders, and of the lists of speech recognisers.
#include "tools/se_host/sweep/found_recordings.h"

#include <filesystem>

#include "host/output/errors.h"
#include "tests/sweep/sweep_test.h"

namespace se_host_test {
namespace {

namespace fs = std::filesystem;
using se_host::sweep::Entry;
using se_host::sweep::FarEndChoice;
using se_host::sweep::recordingsBelow;
using se_host::sweep::recordingsOfList;

class FoundRecordings : public SweepTest {
  protected:
    void touch(const std::string& name) const {
        fs::create_directories(fs::path(path(name)).parent_path());
        writeText(name, "x");
    }

    std::vector<std::string> ids(const FarEndChoice& far_end = {}) const {
        std::vector<std::string> found;
        for (const Entry& entry : recordingsBelow(path("rec"), far_end)) found.push_back(entry.id);
        return found;
    }

    static std::string refusalOf(const std::function<void()>& work) {
        try {
            work();
        } catch (const se_output::Failure& failure) {
            return failure.what();
        }
        return {};
    }
};

TEST_F(FoundRecordings, AreThoseBelowTheFolderByTheirPath) {
    for (const char* const name : {"rec/b.wav", "rec/a.FLAC", "rec/car/c.wav", "rec/notes.txt"}) touch(name);
    EXPECT_EQ(ids(), (std::vector<std::string>{"a", "b", "car/c"}));
}

TEST_F(FoundRecordings, HaveTheirFolderAsScenario) {
    touch("rec/car/fast/c.wav");
    EXPECT_EQ(recordingsBelow(path("rec"), {}).front().labels["scenario"], "car/fast");
}

TEST_F(FoundRecordings, HaveTheFarEndBesideThem) {
    touch("rec/call.wav");
    touch("rec/call-far.flac");
    const std::vector<Entry> entries = recordingsBelow(path("rec"), {});
    ASSERT_EQ(entries.size(), 1u);
    EXPECT_EQ(entries.front().recording.far_end_file, path("rec/call-far.flac"));
}

TEST_F(FoundRecordings, TakeAnotherSuffixOrAChannelForTheFarEnd) {
    touch("rec/call.wav");
    touch("rec/call_ref.wav");
    FarEndChoice far_end;
    far_end.suffix = "_ref";
    EXPECT_EQ(recordingsBelow(path("rec"), far_end).front().recording.far_end_file, path("rec/call_ref.wav"));
    far_end.channel = 8;
    EXPECT_EQ(recordingsBelow(path("rec"), far_end).front().recording.far_end_channel, 8);
    EXPECT_EQ(recordingsBelow(path("rec"), far_end).front().recording.far_end_file, "");
}

TEST_F(FoundRecordings, HaveTheirParts) {
    for (const char* const part : {"", "-talker", "-noise", "-echo"}) {
        touch(std::string("rec/call") + part + ".wav");
    }
    const std::vector<Entry> entries = recordingsBelow(path("rec"), {});
    ASSERT_EQ(entries.size(), 1u);
    EXPECT_EQ(entries.front().parts, path("rec/call"));
}

TEST_F(FoundRecordings, KeepAFileThatOnlyLooksLikeAPart) {
    touch("rec/double-talker.wav");
    EXPECT_EQ(ids(), (std::vector<std::string>{"double-talker"}));
}

TEST_F(FoundRecordings, OfOneIdAreRefused) {
    touch("rec/a.wav");
    touch("rec/a.flac");
    EXPECT_NE(refusalOf([&] { ids(); }).find("would have one id; rename one of them"), std::string::npos);
}

TEST_F(FoundRecordings, AreMissingInAnEmptyFolder) {
    fs::create_directory(path("rec"));
    EXPECT_EQ(refusalOf([&] { ids(); }),
              "there is no WAV or FLAC file below '" + path("rec") + "'; give another folder");
    EXPECT_EQ(refusalOf([&] { recordingsBelow(path("none"), {}); }),
              "cannot read the folder '" + path("none") + "': No such file or directory");
}

TEST_F(FoundRecordings, OfAListHaveItsIdsAndPaths) {
    writeText("wav.scp", "one  /data/a b.wav \ntwo\t/data/c.wav\n");
    writeText("far.scp", "two /data/f2.wav\none /data/f1.wav\n");
    const std::vector<Entry> entries = recordingsOfList(path("wav.scp"), path("far.scp"), {});
    ASSERT_EQ(entries.size(), 2u);
    EXPECT_EQ(entries[0].id, "one");
    EXPECT_EQ(entries[0].recording.input, "/data/a b.wav");
    EXPECT_EQ(entries[0].recording.far_end_file, "/data/f1.wav");
    EXPECT_EQ(entries[1].recording.far_end_file, "/data/f2.wav");
}

TEST_F(FoundRecordings, OfAListAreRefusedWithTheLine) {
    const auto refusal = [&](const std::string& text) {
        writeText("wav.scp", text);
        return refusalOf([&] { recordingsOfList(path("wav.scp"), {}, {}); });
    };
    EXPECT_EQ(refusal("one /a.wav\ntwo sox b.wav -t wav - |\n"),
              path("wav.scp") + ":2: 'two' is a command; write its sound to a file, and name that file");
    EXPECT_EQ(refusal("one\n"), path("wav.scp") + ":1: a line is an id, a blank and a path");
    EXPECT_EQ(refusal("one /a.wav\none /b.wav\n"), path("wav.scp") + ":2: the id 'one' is used twice");
    EXPECT_EQ(refusal("\n"), "'" + path("wav.scp") + "' names no recording");
}

TEST_F(FoundRecordings, OfTwoListsNeedTheSameIds) {
    const auto refusal = [&](const std::string& far_ends) {
        writeText("wav.scp", "one /a.wav\n");
        writeText("far.scp", far_ends);
        return refusalOf([&] { recordingsOfList(path("wav.scp"), path("far.scp"), {}); });
    };
    EXPECT_EQ(refusal("one /f.wav\ntwo /g.wav\n"),
              path("far.scp") + ":2: '" + path("wav.scp") + "' has no recording 'two'");
    EXPECT_EQ(refusal("\n"), "'" + path("far.scp") + "' has no far end for 'one'");
}

}  // namespace
}  // namespace se_host_test
