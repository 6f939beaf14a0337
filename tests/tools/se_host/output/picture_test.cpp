// The pictures of --plot: their format follows from the name, and they are complete or absent.
#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "tests/tools/se_host/host_test.h"

namespace se_host_test {
namespace {

class PictureTest : public HostTest {
  protected:
    PictureTest() {
        writeSound(path("in.wav"), patternedSound(160 * 210));
        noteFiles();
    }

    HostRun spectrum(const std::string& picture) const {
        return run({"spectrum", path("in.wav"), "--channel", "1", "--plot", path(picture)});
    }

    std::string content(const std::string& name) const {
        std::ostringstream text;
        text << std::ifstream(path(name), std::ios::binary).rdbuf();
        return text.str();
    }

    // A gnuplot that answers --version and then runs `commands`.
    void pretendGnuplot(const std::string& commands) {
        std::filesystem::create_directory(path("bin"));
        writeText("bin/gnuplot", "#!/bin/sh\n[ \"$1\" = --version ] && exit 0\n" + commands + "\n");
        chmod(path("bin/gnuplot").c_str(), 0755);
        setenv("PATH", (path("bin") + ":/usr/bin:/bin").c_str(), 1);
        noteFiles();
    }
};

// Width and height follow the name of a PNG's first chunk.
void expectPng(const std::string& content, unsigned width, unsigned height) {
    ASSERT_GT(content.size(), 24u);
    EXPECT_EQ(content.substr(0, 8), "\x89PNG\r\n\x1a\n");
    const auto number = [&](size_t place) {
        unsigned value = 0;
        for (size_t i = place; i < place + 4; ++i)
            value = value << 8 | static_cast<unsigned char>(content[i]);
        return value;
    };
    EXPECT_EQ(number(16), width);
    EXPECT_EQ(number(20), height);
}

void expectSvg(const std::string& content, const std::vector<std::string>& texts) {
    EXPECT_EQ(content.rfind("<?xml", 0), 0u);
    EXPECT_NE(content.find("</svg>"), std::string::npos);
    for (const std::string& text : texts) EXPECT_NE(content.find(text), std::string::npos) << text;
}

TEST_F(PictureTest, IsAPngOrAnSvgByItsName) {
    expectDone(spectrum("out.png"));
    expectPng(content("out.png"), 1000, 600);
    expectDone(spectrum("out.SVG"));
    expectSvg(content("out.SVG"), {"Spectrum of ", "frequency in Hz", "level in dBFS", "mean level"});
    EXPECT_EQ(files(), (std::vector<std::string>{"in.wav", "out.SVG", "out.png"}));
}

TEST_F(PictureTest, OfTheNoiseTestShowsRowsAndMicrophones) {
    const std::vector<std::string> command{"noise-test", path("out.txt"), "--recording", path("in.wav"),
                                           "--plot"};
    for (const char* name : {"out.svg", "out.png"}) {
        std::vector<std::string> arguments = command;
        arguments.push_back(path(name));
        expectDone(run(arguments));
    }
    expectPng(content("out.png"), 1100, 760);
    expectSvg(content("out.svg"), {"Microphone noise test of se_lib_beamv1.14", "row of the results",
                                   ">microphone<", "mic 2", "mic 7"});
}

TEST_F(PictureTest, OfTheHighPassShowsBothSpectra) {
    expectDone(
        run({"highpass", path("in.wav"), path("out.wav"), "--plot", path("out.svg"), "--gain", "0.25"}));
    expectSvg(content("out.svg"), {"600 Hz high-pass at gain 0.25", "in.wav", "out.wav"});
}

TEST_F(PictureTest, OfSilenceIsDrawnToo) {
    writeSound(path("in.wav"), Sound{16000, 8, std::vector<int16_t>(8 * 16000)});
    noteFiles();
    expectDone(spectrum("out.png"));
    expectPng(content("out.png"), 1000, 600);
}

// gnuplot must take each of these as a text. None may reach a shell.
TEST_F(PictureTest, TakesAnyFileNameAsItIs) {
    const std::string name = "it's \"a\" $(touch x) `touch x` \\n {b} a_b^c; & <d> #\xc3\xa4.wav";
    std::filesystem::rename(path("in.wav"), path(name));
    const std::string picture = "p '\" $(touch x); \\ #.svg";
    const HostRun result = run({"spectrum", path(name), "--plot", path(picture)});
    expectDone(result);
    expectSvg(content(picture), {"it's ", "$(touch x) `touch x` \\n {b} a_b^c; &amp; &lt;d> #\xc3\xa4"});
    EXPECT_EQ(files().size(), 2u);
}

TEST_F(PictureTest, OfANameThatIsNoUtf8CanBeOpened) {
    std::filesystem::rename(path("in.wav"), path("a\xff.wav"));
    expectDone(run({"spectrum", path("a\xff.wav"), "--plot", path("out.svg")}));
    EXPECT_EQ(content("out.svg").find('\xff'), std::string::npos);
}

TEST_F(PictureTest, IgnoresTheUsersStartUpFile) {
    writeText(".gnuplot", "exit error 'mine'\n");
    setenv("HOME", path("").c_str(), 1);
    expectDone(spectrum("out.png"));
}

TEST_F(PictureTest, OfAnotherKindIsRefused) {
    for (const char* name : {"out.jpg", "out", "png", ".png", "out.png.txt"}) {
        expectRefused(spectrum(name), kWrongUsage, "give it a name in .png or .svg");
    }
}

TEST_F(PictureTest, InAFolderThatIsNotThereIsRefused) {
    expectRefused(spectrum("nowhere/out.png"), kFailure, "nowhere/out.png': No such file or directory");
}

TEST_F(PictureTest, InPlaceOfTheInputIsRefused) {
    std::filesystem::rename(path("in.wav"), path("in.png"));
    noteFiles();
    expectRefused(run({"spectrum", path("in.png"), "--plot", path("in.png")}), kWrongUsage,
                  "is one of the inputs");
}

TEST_F(PictureTest, NeedsGnuplotAndNamesItsPackage) {
    setenv("PATH", path("").c_str(), 1);
    expectRefused(spectrum("out.png"), kFailure,
                  "se_host: pictures need gnuplot; install the package gnuplot-nox\n");
    expectRefused(run({"noise-test", path("out.txt"), "--plot", path("out.png")}), kFailure, "gnuplot-nox");
    expectRefused(run({"highpass", path("in.wav"), path("out.wav"), "--plot", path("out.png")}), kFailure,
                  "gnuplot-nox");
}

TEST_F(PictureTest, ThatGnuplotRefusesIsNotLeftBehind) {
    pretendGnuplot("cat >/dev/null; printf half; echo 'line 7: that is no picture' >&2; exit 1");
    expectRefused(spectrum("out.png"), kFailure, "out.png': gnuplot says line 7: that is no picture\n");
}

TEST_F(PictureTest, ThatIsNotWholeIsNotLeftBehind) {
    pretendGnuplot("cat >/dev/null; printf half");
    expectRefused(spectrum("out.png"), kFailure, "out.png': it did not fit; is there space left?\n");
    expectRefused(spectrum("out.svg"), kFailure, "out.svg': it did not fit; is there space left?\n");
}

TEST_F(PictureTest, OfAGnuplotThatDiesIsNotLeftBehind) {
    pretendGnuplot("kill -9 $$");
    expectRefused(spectrum("out.png"), kFailure, "gnuplot failed without a message\n");
}

TEST_F(PictureTest, RemovesTheOtherOutputsWhenItFails) {
    pretendGnuplot("exit 1");
    expectRefused(run({"highpass", path("in.wav"), path("out.wav"), "--plot", path("out.png")}), kFailure,
                  "cannot draw");
    expectRefused(run({"noise-test", path("out.txt"), "--plot", path("out.png")}), kFailure, "cannot draw");
}

TEST_F(PictureTest, ThatExistedStaysWhenItFails) {
    writeText("out.png", "older");
    pretendGnuplot("exit 1");
    EXPECT_EQ(spectrum("out.png").exit_code, kFailure);
    EXPECT_EQ(content("out.png"), "older");
}

}  // namespace
}  // namespace se_host_test
