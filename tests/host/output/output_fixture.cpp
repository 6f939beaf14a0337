#include "tests/host/output/output_fixture.h"

#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "host/output/errors.h"
#include "host/output/output_file.h"

namespace se_output_test {

namespace fs = std::filesystem;

OutputTest::OutputTest() {
    folder_ = (fs::temp_directory_path() / "output_test.XXXXXX").string();
    if (::mkdtemp(folder_.data()) == nullptr) throw std::runtime_error("cannot make a temporary folder");
    ::chmod(folder_.c_str(), 0755);
}

OutputTest::~OutputTest() {
    if (::seteuid(::getuid()) != 0) std::abort();
    ::umount2(path("mount").c_str(), MNT_DETACH);
    std::error_code error;
    fs::remove_all(folder_, error);
}

void OutputTest::writeText(const std::string& name, const std::string& text) const {
    std::ofstream(path(name)) << text;
}

std::string OutputTest::text(const std::string& name) const {
    std::ostringstream content;
    content << std::ifstream(path(name)).rdbuf();
    return content.str();
}

std::vector<std::string> OutputTest::files() const {
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder_)) {
        names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::string failureOf(const std::function<void()>& work) {
    try {
        work();
    } catch (const se_output::Failure& failure) {
        EXPECT_EQ(std::string(failure.what()).find('\n'), std::string::npos);
        return failure.what();
    }
    return {};
}

void write(const std::string& path, const std::string& text) {
    se_output::OutputFile file(path);
    file.write(text);
    file.commit();
}

int runInChild(const std::function<void()>& work) {
    const pid_t child = ::fork();
    if (child == 0) {
        work();
        ::_exit(0);
    }
    ::waitpid(child, nullptr, 0);
    return child;
}

bool ownMounts() {
    return ::unshare(CLONE_NEWNS) == 0 && ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

void becomeNobody() {
    if (::setegid(kNobody) != 0 || ::seteuid(kNobody) != 0) std::abort();
}

}  // namespace se_output_test
