// Files and results are the same for a user whose decimal point is a comma.
#include "tests/webrtc_common/engine/comma_locale.h"

#include <fstream>
#include <sstream>

#include "tests/tools/se_host/host_test.h"

namespace se_host_test {
namespace {

class CommaLocaleOutput : public HostTest {
  protected:
    CommaLocaleOutput() { writeSound(path("in.wav"), patternedSound(1600)); }

    // Every text that the commands print or write about the recording.
    std::string texts() const {
        std::string all;
        for (const std::vector<std::string>& command : std::vector<std::vector<std::string>>{
                 {"process", path("in.wav"), path("out.wav"), "--quiet", "--trace-diags", "*", "-"},
                 {"spectrum", path("in.wav")},
                 {"spectrum", path("in.wav"), "--json"},
                 {"highpass", path("in.wav"), path("high.wav"), "--gain", "0.5"},
                 {"noise-test", path("noise.txt"), "--diffuse-noise", "-45.5"},
                 {"diags", "list", "--recording", path("in.wav")},
                 {"diags", "dump"}}) {
            const HostRun result = run(command);
            expectDone(result);
            all += result.out;
        }
        std::ostringstream results;
        results << std::ifstream(path("noise.txt")).rdbuf();
        return all + results.str();
    }
};

TEST_F(CommaLocaleOutput, IsTheSame) {
    const std::string plain = texts();
    const quill::test::CommaLocale comma;
    if (!comma.isSet()) GTEST_SKIP() << "no localedef";
    setenv("LC_ALL", "comma", 1);
    EXPECT_EQ(texts(), plain);
}

}  // namespace
}  // namespace se_host_test
