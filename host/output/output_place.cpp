#include "host/output/output_place.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <filesystem>
#include <optional>
#include <system_error>

namespace se_output {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void fail(int error) {
    throw std::system_error(error, std::generic_category());
}

fs::path folderOf(const fs::path& path) {
    return path.has_parent_path() ? path.parent_path() : fs::path(".");
}

// N of "/proc/PID/fd/N", whatever leads to that folder. Descriptors that the process itself opened are closed
// in the programs that it starts; the others are the user's.
std::optional<int> descriptorAt(const fs::path& path) {
    std::error_code error;
    const fs::path own = "/proc/" + std::to_string(::getpid()) + "/fd";
    if (fs::canonical(folderOf(path), error) != own || error) return std::nullopt;
    const std::string name = path.filename().string();
    int number = -1;
    const auto result = std::from_chars(name.data(), name.data() + name.size(), number);
    if (result.ec != std::errc{} || result.ptr != name.data() + name.size()) fail(ENOENT);
    return number;
}

int requireWritable(int descriptor) {
    const int own = ::fcntl(descriptor, F_GETFD);
    if (own < 0 || (own & FD_CLOEXEC) != 0) fail(EBADF);
    if ((::fcntl(descriptor, F_GETFL) & O_ACCMODE) == O_RDONLY) fail(EBADF);
    return descriptor;
}

// Nothing where `path` does not exist.
std::optional<struct stat> entryAt(const fs::path& path) {
    struct stat entry {};
    if (::lstat(path.c_str(), &entry) == 0) return entry;
    if (errno == ENOENT) return std::nullopt;
    fail(errno);
}

void refusePlanted(const fs::path& path, const struct stat& entry) {
    struct stat folder {};
    if (::stat(folderOf(path).c_str(), &folder) != 0) fail(errno);
    const bool is_shared = (folder.st_mode & S_ISVTX) != 0 && (folder.st_mode & S_IWOTH) != 0;
    if (is_shared && entry.st_uid != ::geteuid() && entry.st_uid != folder.st_uid) fail(EACCES);
}

}  // namespace

OutputPlace placeOf(const std::string& path) {
    if (path == "-") return {path, requireWritable(STDOUT_FILENO)};
    constexpr int kMostLinks = 40;  // as many as the system follows
    fs::path target = path;
    for (int links = 0; links <= kMostLinks; ++links) {
        if (const auto number = descriptorAt(target)) return {target.string(), requireWritable(*number)};
        const auto entry = entryAt(target);
        if (!entry) return {target.string()};
        refusePlanted(target, *entry);
        if (!S_ISLNK(entry->st_mode)) return {target.string()};
        target = target.parent_path() / fs::read_symlink(target);
    }
    fail(ELOOP);
}

}  // namespace se_output
