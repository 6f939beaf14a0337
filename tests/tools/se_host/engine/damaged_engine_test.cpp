// An engine build that was cut short: check-engine and every command that loads it say so and end by exit code.
#include <filesystem>

#include "tests/tools/se_host/host_test.h"

namespace se_host_test {
namespace {

namespace fs = std::filesystem;

const fs::path kBin = fs::path(SE_HOST_PATH).parent_path();

class DamagedEngine : public HostTest {
  protected:
    std::string cutTo(uintmax_t percent) {
        const std::string file = path("cut" + std::to_string(percent));
        fs::copy_file(kBin / "selibs/se_lib_beamv1.14", file);
        fs::resize_file(file, fs::file_size(file) * percent / 100);
        return file;
    }

    static void expectOneLineWith(const HostRun& result, const std::string& reason) {
        EXPECT_EQ(result.exit_code, kFailure);
        EXPECT_EQ(result.errorLines(), 1u);
        EXPECT_NE(result.err.find(reason), std::string::npos) << result.err;
    }
};

TEST_F(DamagedEngine, IsRefusedByCheckEngineWhereverItIsCut) {
    for (const uintmax_t percent : {1u, 10u, 50u, 80u})
        expectOneLineWith(run({"check-engine", cutTo(percent)}), "probably cut short while being copied");
}

TEST_F(DamagedEngine, IsRefusedByNameWithTheReason) {
    const std::string name = fs::relative(cutTo(50), kBin / "selibs").string();
    expectOneLineWith(run({"info", "--engine", name}), "probably cut short while being copied");
}

// The default build is not named on the command line: the wrapper chooses it.
TEST_F(DamagedEngine, IsRefusedWithTheReasonAfterTheWrapperHasChosenIt) {
    expectOneLineWith(runCopy({"info"}), "se_lib_beamv1.14 cannot be opened: No such file or directory)");
}

}  // namespace
}  // namespace se_host_test
