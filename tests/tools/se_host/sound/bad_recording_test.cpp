// Recordings that the host refuses, and outputs that it cannot write.
#include <sndfile.h>

#include <filesystem>

#include "tests/tools/se_host/host_test.h"

namespace se_host_test {
namespace {

class BadRecording : public HostTest {};

TEST_F(BadRecording, AFileThatDoesNotExist) {
    expectRefused(process(), kFailure, "in.wav': No such file or directory");
}

TEST_F(BadRecording, AFileThatIsNoSound) {
    writeText("in.wav", "Dear diary, today I recorded nothing.\n");
    noteFiles();
    expectRefused(process(), kFailure,
                  "in.wav': not a sound file that can be decoded; give a WAV or FLAC file");
}

TEST_F(BadRecording, AnEmptyFile) {
    writeText("in.wav", "");
    noteFiles();
    expectRefused(process(), kFailure, "in.wav': the file is empty");
}

TEST_F(BadRecording, AFolder) {
    std::filesystem::create_directory(path("in.wav"));
    noteFiles();
    expectRefused(process(), kFailure, "in.wav': it is a folder");
}

TEST_F(BadRecording, AWavWithoutSamples) {
    writeSound(path("in.wav"), patternedSound(0));
    noteFiles();
    expectRefused(process(), kFailure, "in.wav': it holds no samples");
}

TEST_F(BadRecording, ASoundThatIsShorterThanASampleOfTheEngine) {
    writeSound(path("in.wav"), patternedSound(1, 8, 48000));
    noteFiles();
    expectRefused(process(), kFailure, "in.wav': it is shorter than a sample at 16000 Hz");
}

TEST_F(BadRecording, SevenChannels) {
    writeSound(path("in.wav"), patternedSound(320, 7));
    noteFiles();
    expectRefused(process(), kFailure, "in.wav' has 7 channels, but the engine needs 8 or more");
}

TEST_F(BadRecording, OneChannel) {
    writeSound(path("in.wav"), patternedSound(320, 1));
    noteFiles();
    expectRefused(process(), kFailure, "in.wav' has 1 channel, ");
}

TEST_F(BadRecording, ASampleRateOfNoRecording) {
    for (const int rate : {10, 3999, 768001, 2000000000}) {
        writeSound(path("in.wav"), patternedSound(320, 8, rate));
        noteFiles();
        expectRefused(
            process(), kFailure,
            "in.wav': its sample rate is " + std::to_string(rate) + " Hz; give a sound of 4000 to 768000 Hz");
    }
}

TEST_F(BadRecording, AFormatThatTheHelpDoesNotName) {
    writeSound(path("in.wav"), patternedSound(320), SF_FORMAT_AIFF | SF_FORMAT_PCM_16);
    noteFiles();
    expectRefused(process(), kFailure, "in.wav': it is AIFF (Apple/SGI); convert it to WAV or FLAC");
    expectRefused(run({"spectrum", path("in.wav")}), kFailure, "it is AIFF");
}

TEST_F(BadRecording, AnOutputInAFolderThatDoesNotExist) {
    writeSound(path("in.wav"), patternedSound(320));
    noteFiles();
    expectRefused(run({"process", path("in.wav"), path("nowhere/out.wav")}), kFailure,
                  "nowhere/out.wav': No such file or directory; give an output path");
}

TEST_F(BadRecording, AnOutputThatIsAFolder) {
    writeSound(path("in.wav"), patternedSound(320));
    std::filesystem::create_directory(path("out.wav"));
    noteFiles();
    expectRefused(process(), kFailure, "out.wav': not a regular file");
}

TEST_F(BadRecording, AnOutputThatIsTheInput) {
    writeSound(path("in.wav"), patternedSound(320));
    noteFiles();
    expectRefused(run({"process", path("in.wav"), path("./in.wav")}), kWrongUsage, "is one of the inputs");
}

TEST_F(BadRecording, AnOutputThatIsTheFarEnd) {
    writeSound(path("in.wav"), patternedSound(320));
    writeSound(path("far.wav"), patternedSound(320, 1));
    noteFiles();
    const std::string far_end = path("far.wav");
    expectRefused(run({"process", path("in.wav"), far_end, "--far-end", far_end}), kWrongUsage, "far.wav'");
}

TEST_F(BadRecording, LineBreaksInANameStayOneLine) {
    expectRefused(run({"process", path("two\nlines.wav"), path("out.wav")}), kFailure, "two lines.wav'");
}

}  // namespace
}  // namespace se_host_test
