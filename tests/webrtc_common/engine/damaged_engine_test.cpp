// Engine builds as an interrupted update leaves them: each ends in the fatal record, never in a signal. They
// are truncated copies of the real engines, in a folder of their own, named relative to "selibs".
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <tuple>

#include "tests/engines/test_engine.h"
#include "tests/support/loaded_size.h"
#include "tests/support/log_capture.h"
#include "webrtc_common/se_wrapper/engine/load.h"
#include "webrtc_common/se_wrapper/records.h"
#include "webrtc_common/se_wrapper/table/engine_table.h"

using namespace quill::media::se_wrapper;
using quill::test::enginePath;
using quill::test::fatalRecordPattern;
namespace fs = std::filesystem;

namespace {

constexpr const char* kBeamForming = "se_lib_beamv1.14";
constexpr const char* kHarbor = "se_lib_harborv006";

class EngineFile {
  public:
    EngineFile() {
        std::string folder = testing::TempDir() + "engine_file.XXXXXX";
        if (mkdtemp(folder.data()) == nullptr) throw std::runtime_error("cannot make a temporary folder");
        folder_ = folder;
    }
    ~EngineFile() { fs::remove_all(folder_); }
    EngineFile(const EngineFile&) = delete;
    EngineFile& operator=(const EngineFile&) = delete;

    fs::path file() const { return folder_ / "engine"; }
    std::string name() const { return fs::relative(file(), enginePath("")).string(); }
    std::string path() const { return enginePath(name()); }

    void copyOf(const char* build) const { fs::copy_file(enginePath(build), file()); }
    void cutTo(uintmax_t size) const { fs::resize_file(file(), size); }

  private:
    fs::path folder_;
};

std::string missingLibraryPattern(const std::string& path) {
    return fatalRecordPattern("check", record_sites::kLibraryNotOpened,
                              "Check failed se_lib Could not open shared library at " + path);
}

// In a death test: the fatal record is the only one.
void expectTheFatalRecordAlone(const EngineFile& engine) {
    EXPECT_DEATH(
        {
            quill::test::writeRecordsForDeathTest();
            openSignalEssenceDynamicLibrary(engine.name());
        },
        testing::MatchesRegex(missingLibraryPattern(engine.path()) + "\n"));
}

// The same with trace records: one before the fatal record states the reason.
void expectReason(const EngineFile& engine, const std::string& reason_pattern) {
    const std::string reason = "<record level=5 tag=se_wrapper source=webrtc_common/se_wrapper line=[0-9]+>" +
                               reason_pattern + "</record>\n";
    EXPECT_DEATH(
        {
            quill::test::writeRecordsForDeathTest();
            quill::setLogThreshold(5);
            openSignalEssenceDynamicLibrary(engine.name());
        },
        testing::MatchesRegex(reason + missingLibraryPattern(engine.path()) + "\n"));
}

class CutEngine : public testing::TestWithParam<std::tuple<const char*, int>> {};

TEST_P(CutEngine, EndsInTheFatalRecord) {
    const auto [build, percent] = GetParam();
    const EngineFile engine;
    engine.copyOf(build);
    engine.cutTo(quill::test::loadedSize(engine.file()) * static_cast<uintmax_t>(percent) / 100);
    expectTheFatalRecordAlone(engine);
    expectReason(engine,
                 ".*/engine (ends before its loadable segments do|is empty); "
                 "it was probably cut short while being copied");
}

INSTANTIATE_TEST_SUITE_P(At, CutEngine,
                         testing::Combine(testing::Values(kBeamForming, kHarbor),
                                          testing::Values(0, 1, 3, 10, 50, 80)),
                         [](const auto& parameter) {
                             const std::string build =
                                 std::get<0>(parameter.param) == kHarbor ? "Harbor" : "BeamForming";
                             return build + std::to_string(std::get<1>(parameter.param)) + "Percent";
                         });

TEST(WholeEngine, IsLoadedFromTheSamePlace) {
    const EngineFile engine;
    engine.copyOf(kBeamForming);
    openSignalEssenceDynamicLibrary(engine.name());
    EXPECT_NE(nullptr, MMIfInit);
}

TEST(EngineOfFortyBytes, EndsInTheFatalRecord) {
    const EngineFile engine;
    engine.copyOf(kBeamForming);
    engine.cutTo(40);
    expectTheFatalRecordAlone(engine);
    expectReason(engine,
                 ".*/engine ends before its ELF header does; it was probably cut short while being copied");
}

TEST(EngineThatIsText, EndsInTheFatalRecord) {
    const EngineFile engine;
    std::ofstream(engine.file()) << "not an engine\n";
    expectTheFatalRecordAlone(engine);
    expectReason(engine, ".*/engine is not a shared library");
}

TEST(EngineThatIsAFifo, EndsInTheFatalRecordWithoutWaiting) {
    const EngineFile engine;
    ASSERT_EQ(0, ::mkfifo(engine.file().c_str(), 0600));
    expectTheFatalRecordAlone(engine);
    expectReason(engine, ".*/engine is not a regular file");
}

TEST(EngineThatIsAFolder, EndsInTheFatalRecord) {
    const EngineFile engine;
    fs::create_directory(engine.file());
    expectTheFatalRecordAlone(engine);
    expectReason(engine, ".*/engine is a folder, not a shared library");
}

TEST(EngineThatIsMissing, EndsInTheFatalRecord) {
    const EngineFile engine;
    expectTheFatalRecordAlone(engine);
    expectReason(engine, ".*/engine cannot be opened: No such file or directory");
}

}  // namespace
