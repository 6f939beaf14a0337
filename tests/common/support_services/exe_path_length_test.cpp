// The path of the running program has any length.
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <string>

namespace quill {
namespace {

namespace fs = std::filesystem;

// A new directory, removed with all that is in it.
class ScratchDirectory {
  public:
    ScratchDirectory() {
        std::string name = (fs::temp_directory_path() / "exe_path.XXXXXX").string();
        if (::mkdtemp(name.data()) != nullptr) path_ = fs::canonical(name);
    }
    ~ScratchDirectory() { fs::remove_all(path_); }
    const fs::path& path() const { return path_; }

  private:
    fs::path path_;
};

// A directory below `base` whose path has `length` characters.
fs::path directoryOfLength(fs::path base, size_t length) {
    constexpr size_t kLongestName = 200;
    for (size_t left = length - base.string().size(); left > 0; left = length - base.string().size()) {
        const size_t name = left > kLongestName + 2 ? kLongestName : left - 1;
        base /= std::string(name, 'd');
    }
    return base;
}

std::string outputOf(const fs::path& program) {
    std::string output;
    const std::string command =
        "LD_LIBRARY_PATH=\"$LD_LIBRARY_PATH:" COMMON_LIBRARY_FOLDER "\" exec " + program.string();
    FILE* const pipe = ::popen(command.c_str(), "r");
    for (int c = std::fgetc(pipe); c != EOF; c = std::fgetc(pipe)) output += static_cast<char>(c);
    EXPECT_EQ(::pclose(pipe), 0);
    return output;
}

class ExePathLength : public testing::TestWithParam<size_t> {};

TEST_P(ExePathLength, IsFoundWhole) {
    const ScratchDirectory scratch;
    const fs::path directory = directoryOfLength(scratch.path(), GetParam() - 2);
    fs::create_directories(directory);
    const fs::path program = directory / "p";
    ASSERT_EQ(program.string().size(), GetParam());
    fs::copy_file(PRINT_EXE_PATH, program);
    EXPECT_EQ(outputOf(program), directory.string());
}

INSTANTIATE_TEST_SUITE_P(Characters, ExePathLength, testing::Values(128, 255, 256, 257, 258, 512, 1100));

}  // namespace
}  // namespace quill
