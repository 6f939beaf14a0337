// `se_host process --plot`.
#include <fstream>
#include <iterator>

#include "tests/tools/se_host/host_test.h"

namespace se_host_test {
namespace {

class ProcessPlot : public HostTest {
  protected:
    ProcessPlot() { writeSound(path("in.wav"), patternedSound(16000)); }

    std::string content(const std::string& name) const {
        std::ifstream file(path(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
};

TEST_F(ProcessPlot, IsAPng) {
    expectDone(process({"--plot", path("run.png")}));
    EXPECT_EQ(content("run.png").substr(1, 3), "PNG");
    EXPECT_EQ(files(), (std::vector<std::string>{"in.wav", "out.wav", "run.png"}));
}

TEST_F(ProcessPlot, IsAnSvgThatNamesWhatItShows) {
    expectDone(process({"--plot", path("run.svg")}));
    const std::string picture = content("run.svg");
    for (const char* title : {"Level", "Centre microphone", "Output", "seconds"}) {
        EXPECT_NE(picture.find(title), std::string::npos) << title;
    }
}

TEST_F(ProcessPlot, OfAnotherKindIsRefused) {
    noteFiles();
    expectRefused(process({"--plot", path("run.txt")}), kWrongUsage, "run.txt");
}

TEST_F(ProcessPlot, OverTheRecordingIsRefused) {
    writeSound(path("in.png"), patternedSound(1600));
    noteFiles();
    expectRefused(run({"process", path("in.png"), path("out.wav"), "--plot", path("in.png")}), kWrongUsage,
                  "in.png");
}

TEST_F(ProcessPlot, OverTheOutputIsRefused) {
    noteFiles();
    expectRefused(run({"process", path("in.wav"), path("same.png"), "--plot", path("same.png")}), kWrongUsage,
                  "same.png");
}

TEST_F(ProcessPlot, NeedsSoundToShow) {
    writeSound(path("in.wav"), patternedSound(160));
    noteFiles();
    expectRefused(process({"--plot", path("run.png")}), kFailure, "too short");
}

}  // namespace
}  // namespace se_host_test
