#include "tools/output/temporary_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include "tools/output/errors.h"

namespace se_output {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void cannotWrite(const std::string& path, const std::string& why) {
    throw Failure("cannot write '" + path + "': " + why + "; give an output path that you may write");
}

// Also when the target of the last link does not exist yet.
std::string followLinks(const std::string& path) {
    constexpr int kMostLinks = 40;  // as many as the system follows
    std::error_code error;
    fs::path target = path;
    for (int i = 0; i < kMostLinks && fs::is_symlink(target, error); ++i) {
        target = target.parent_path() / fs::read_symlink(target, error);
    }
    return target.string();
}

// The permissions of an ordinary new file; mkstemp gives access to the owner only.
void givePermissions(int descriptor) {
    const mode_t mask = ::umask(0);
    ::umask(mask);
    ::fchmod(descriptor, 0666 & ~mask);
}

}  // namespace

TemporaryFile::TemporaryFile(const std::string& path)
    : path_(path), target_(followLinks(path)), name_(target_ + ".XXXXXX") {
    std::error_code error;
    const fs::file_status status = fs::status(target_, error);
    if (fs::exists(status) && !fs::is_regular_file(status)) cannotWrite(path_, "not a regular file");
    if (fs::exists(status) && ::access(target_.c_str(), W_OK) != 0) cannotWrite(path_, std::strerror(errno));

    const SignalsBlocked blocked;
    const int descriptor = ::mkstemp(name_.data());
    if (descriptor < 0) cannotWrite(path_, std::strerror(errno));
    givePermissions(descriptor);
    ::close(descriptor);
    known_.emplace(fs::absolute(name_).string());
}

TemporaryFile::~TemporaryFile() {
    if (!name_.empty()) ::unlink(name_.c_str());
}

void TemporaryFile::commit() {
    const SignalsBlocked blocked;
    if (std::rename(name_.c_str(), target_.c_str()) != 0) cannotWrite(path_, std::strerror(errno));
    known_.reset();
    name_.clear();
}

}  // namespace se_output
