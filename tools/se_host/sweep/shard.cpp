#include "tools/se_host/sweep/shard.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>

#include "host/output/errors.h"

namespace se_host::sweep {
namespace {

namespace fs = std::filesystem;
using se_output::Failure;

[[noreturn]] void cannotWrite(const std::string& path, int error) {
    throw Failure("cannot write '" + path + "': " + std::strerror(error) +
                  "; run the sweep again when it can be");
}

se_output::Descriptor openLocked(const std::string& path) {
    se_output::Descriptor file(::open(path.c_str(), O_RDWR | O_CREAT | O_APPEND | O_CLOEXEC, 0666));
    if (!file.isOpen()) cannotWrite(path, errno);
    // Some file systems of clusters have no locks. There a backend's one process a shard has to be enough.
    if (::flock(file.number(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK) return file;
    throw Failure("another process works on '" + path + "'; wait for its end");
}

}  // namespace

Shard::Shard(const Folder& folder, size_t number)
    : part_(folder.part(number)), name_(folder.shard(number)), file_(openLocked(part_)) {
    const size_t end =
        visitRows(part_, [this](const std::string& key, std::string_view) { keys_.insert(key); });
    if (::ftruncate(file_.number(), static_cast<off_t>(end)) != 0) cannotWrite(part_, errno);
}

void Shard::append(const Json& row) {
    try {
        se_output::writeAll(file_.number(), lineOf(row));
    } catch (const std::system_error& error) {
        cannotWrite(part_, error.code().value());
    }
    keys_.insert(row.at("key").get<std::string>());
}

void Shard::finish() {
    if (::fdatasync(file_.number()) != 0) cannotWrite(part_, errno);
    if (::rename(part_.c_str(), name_.c_str()) != 0) cannotWrite(name_, errno);
}

bool isFinished(const Folder& folder, size_t shard) {
    return fs::exists(folder.shard(shard));
}

void requireIdle(const Folder& folder) {
    for (const std::string& path : rowFiles(folder)) {
        if (fs::path(path).extension() == ".part") openLocked(path);
    }
}

std::vector<std::string> rowFiles(const Folder& folder) {
    std::vector<std::string> paths;
    if (fs::exists(folder.shards())) {
        for (const fs::directory_entry& file : fs::directory_iterator(folder.shards())) {
            paths.push_back(file.path().string());
        }
    }
    std::sort(paths.begin(), paths.end());
    if (fs::exists(folder.kept())) paths.insert(paths.begin(), folder.kept());
    return paths;
}

size_t visitRows(const std::string& path,
                 const std::function<void(const std::string& key, std::string_view line)>& visit) {
    const std::string text = textOf(path);
    const size_t end = lengthOfWholeLines(text);
    visitLines(path, std::string_view(text).substr(0, end), [&](std::string_view line) {
        const Json row = objectIn(line);
        if (!row.contains("key") || !row["key"].is_string()) throw Failure("this is no row of a sweep");
        visit(row["key"].get<std::string>(), line);
    });
    return end;
}

}  // namespace se_host::sweep
