// Rows are those of one build of the program.
#include <filesystem>
#include <fstream>

#include "tests/sweep/sweep_test.h"

namespace se_host_test {
namespace {

namespace fs = std::filesystem;

constexpr const char* kFiles[] = {"bin/se_host", "lib/libcommon.so.0", "lib/libse_wrapper.so.0"};

// Sweeps by a copy of the program, of which another build can be made.
class SweepProgram : public SweepTest {
  protected:
    SweepProgram() {
        makeRecordings(2);
        const fs::path build = fs::path(SE_HOST_PATH).parent_path().parent_path();
        fs::create_directories(path("copy/bin"));
        fs::create_directories(path("copy/lib"));
        for (const char* const file : kFiles) fs::copy_file(build / file, path("copy/") + file);
        fs::create_directory_symlink(build / "bin/selibs", path("copy/bin/selibs"));
    }

    HostRun copy(const std::string& words) const { return shell("copy/bin/se_host sweep " + words); }

    // It does what it did before.
    void rebuild(const std::string& file) const {
        std::ofstream(path("copy/") + file, std::ios::app | std::ios::binary) << ' ';
    }
};

TEST_F(SweepProgram, OfAnotherBuildHasNoRowsYet) {
    copy("plan rec");
    copy("run");
    EXPECT_EQ(copy("plan rec").out,
              "planned 2 tasks: 2 recordings, 1 tuning; 2 rows are there, 0 shards to do\n");
    for (const char* const file : kFiles) {
        rebuild(file);
        EXPECT_EQ(copy("plan rec").out,
                  "planned 2 tasks: 2 recordings, 1 tuning; 0 rows are there, 1 shard to do\n")
            << file;
        copy("run");
    }
}

TEST_F(SweepProgram, OfAnotherBuildDoesNotRunThePlan) {
    copy("plan rec");
    rebuild("lib/libcommon.so.0");
    const HostRun result = copy("run");
    EXPECT_EQ(result.exit_code, kFailure);
    EXPECT_EQ(
        result.err,
        "se_host: 'sweep/plan.json' was made by another build of se_host; run 'se_host sweep plan' again\n");
}

// In another place, and after another build has come.
TEST_F(SweepProgram, OfTheSameFilesGivesTheSameRows) {
    copy("plan rec");
    copy("run");
    copy("merge");
    sweep("rec --no-report --folder here");
    EXPECT_EQ(results("sweep"), results("here"));
    rebuild("bin/se_host");
    EXPECT_EQ(copy("merge").exit_code, 0);
    EXPECT_EQ(results("sweep"), results("here"));
}

}  // namespace
}  // namespace se_host_test
