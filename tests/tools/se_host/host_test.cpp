#include "tests/tools/se_host/host_test.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace se_host_test {

namespace fs = std::filesystem;

HostTest::HostTest() {
    std::string name = (fs::temp_directory_path() / "se_host_test.XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("cannot make a temporary folder");
    folder_ = name;
}

HostTest::~HostTest() {
    std::error_code error;
    fs::remove_all(folder_, error);
}

std::vector<std::string> HostTest::files() const {
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder_)) {
        names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

void HostTest::writeText(const std::string& name, const std::string& text) const {
    std::ofstream(path(name)) << text;
}

HostRun HostTest::shell(const std::string& script) const {
    const std::string host = "se_host() { '" SE_HOST_PATH "' \"$@\"; }\n";
    return runHost(folder_, {"-c", "cd '" + folder_ + "'\n" + host + script}, "/bin/sh");
}

HostRun HostTest::runCopy(const std::vector<std::string>& arguments) const {
    const fs::path copy = path("copy");
    fs::create_directories(copy / "bin");
    fs::copy_file(SE_HOST_PATH, copy / "bin/se_host");
    fs::create_directories(copy / "lib");
    for (const char* library : {"libcommon.so.0", "libse_wrapper.so.0"}) {
        fs::copy_file(fs::path(SE_HOST_PATH).parent_path().parent_path() / "lib" / library,
                      copy / "lib" / library);
    }
    HostRun run = runHost(folder_, arguments, copy / "bin/se_host");
    fs::remove_all(copy);
    return run;
}

HostRun HostTest::process(const std::vector<std::string>& more) const {
    std::vector<std::string> arguments{"process", path("in.wav"), path("out.wav")};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return run(arguments);
}

void HostTest::expectDone(const HostRun& run) const {
    EXPECT_EQ(run.exit_code, 0);
    EXPECT_EQ(run.err, "");
}

void HostTest::expectRefused(const HostRun& run, int exit_code, const std::string& mention) const {
    EXPECT_EQ(run.exit_code, exit_code);
    EXPECT_EQ(run.errorLines(), 1u) << run.err;
    EXPECT_EQ(run.err.rfind("se_host: ", 0), 0u) << run.err;
    EXPECT_NE(run.err.find(mention), std::string::npos) << run.err;
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(files(), before_);
}

}  // namespace se_host_test
