// Engines that cannot be used: the user gets the wrapper's own reason.
#include <sys/stat.h>

#include <filesystem>

#include "tests/support/loaded_size.h"
#include "tests/tools/se_host/host_test.h"

namespace se_host_test {
namespace {

class BadEngine : public HostTest {
  protected:
    BadEngine() {
        writeSound(path("in.wav"), patternedSound(320));
        noteFiles();
    }

    // A file of the test's folder as a name below selibs.
    std::string engineName(const std::string& file) const {
        const auto engines = std::filesystem::path(SE_HOST_PATH).parent_path() / "selibs";
        return std::filesystem::relative(path(file), engines).string();
    }
};

TEST_F(BadEngine, AnUnknownNameIsAnsweredWithTheNamesThereAre) {
    const HostRun result = process({"--engine", "se_lib_beamv9"});
    expectRefused(result, kWrongUsage, "no engine 'se_lib_beamv9' (");
    EXPECT_NE(result.err.find("choose one of: se_lib_beamv1.14, se_lib_harborv006"), std::string::npos);
}

TEST_F(BadEngine, AFileThatIsNoLibrary) {
    writeText("engine", "no library at all, and long enough for a header of one................");
    noteFiles();
    expectRefused(process({"--engine", engineName("engine")}), kFailure, "cannot be loaded (");
}

TEST_F(BadEngine, AFolder) {
    expectRefused(process({"--engine", "test_engines"}), kFailure, "cannot be loaded (");
}

TEST_F(BadEngine, AFileThatWasCutShort) {
    const auto engines = std::filesystem::path(SE_HOST_PATH).parent_path() / "selibs";
    for (const char* build : {"se_lib_beamv1.14", "se_lib_harborv006"}) {
        const auto size = quill::test::loadedSize(engines / build);
        for (const unsigned percent : {1u, 10u, 50u, 80u}) {
            std::filesystem::copy_file(engines / build, path("engine"),
                                       std::filesystem::copy_options::overwrite_existing);
            std::filesystem::resize_file(path("engine"), size * percent / 100);
            noteFiles();
            expectRefused(process({"--engine", engineName("engine")}), kFailure, "cut short");
            expectRefused(
                run({"check-engine", path("engine")}), kFailure,
                "'" + path("engine") + "' cannot be loaded (" + path("engine") + " ends before its ");
        }
    }
}

TEST_F(BadEngine, APipe) {
    ASSERT_EQ(::mkfifo(path("engine").c_str(), 0600), 0);
    noteFiles();
    expectRefused(process({"--engine", engineName("engine")}), kFailure, "engine is not a regular file");
    expectRefused(run({"check-engine", path("engine")}), kFailure, "engine is not a regular file");
}

TEST_F(BadEngine, TheBuildOfTheDeviceModelCutShortIsRefusedWithTheReason) {
    const std::string build = path("copy/bin/selibs/se_lib_beamv1.14");
    std::filesystem::create_directories(path("copy/bin/selibs"));
    std::filesystem::copy_file(std::filesystem::path(SE_HOST_PATH).parent_path() / "selibs/se_lib_beamv1.14",
                               build);
    std::filesystem::resize_file(build, quill::test::loadedSize(build) / 2);
    expectRefused(runCopy({"process", path("in.wav"), path("out.wav")}), kFailure,
                  "Could not open shared library at " + build + " (" + build + " ends before its ");
}

TEST_F(BadEngine, AMissingEntryPointIsNamed) {
    expectRefused(process({"--engine", "test_engines/without_MMIfInit"}), kFailure,
                  "se_host: Check failed *sym Symbol MMIfInit not found!; this engine build cannot be used");
}

TEST_F(BadEngine, AnIncompleteGroupIsNamed) {
    expectRefused(process({"--engine", "test_engines/direction_3"}), kFailure,
                  "se_host: Check failed mmifdirs == 4 || mmifdirs == 0; this engine build cannot be used");
}

TEST_F(BadEngine, InfoRefusesItToo) {
    expectRefused(run({"info", "--engine", "test_engines/without_MMIfInit"}), kFailure,
                  "MMIfInit not found!");
}

TEST_F(BadEngine, AnInstallationWithoutEnginesSaysWhereItLooked) {
    const std::string looked = "neither '" + path("copy/bin/selibs") + "' nor '" +
                               path("copy/lib/libse_wrapper/selibs") + "' is a folder; put a build into one";
    expectRefused(runCopy({"process", path("in.wav"), path("out.wav")}), kFailure, looked);
    expectRefused(runCopy({"info", "--engine", "x"}), kFailure, looked);
}

TEST_F(BadEngine, AnEmptyFolderHasNoneToChooseFrom) {
    std::filesystem::create_directories(path("copy/lib/libse_wrapper/selibs"));
    expectRefused(runCopy({"info", "--engine", "x"}), kWrongUsage,
                  path("copy/lib/libse_wrapper/selibs") + "' holds no engine");
}

TEST_F(BadEngine, TheFolderBesideTheProgramComesBeforeTheInstalledOne) {
    std::filesystem::create_directories(path("copy/bin/selibs"));
    std::filesystem::create_directories(path("copy/lib/libse_wrapper/selibs"));
    expectRefused(runCopy({"info", "--engine", "x"}), kWrongUsage,
                  path("copy/bin/selibs") + "' holds no engine");
}

}  // namespace
}  // namespace se_host_test
