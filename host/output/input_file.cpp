#include "host/output/input_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <string>
#include <system_error>

#include "host/output/errors.h"

namespace se_output {
namespace {

constexpr size_t kBeginning = 4;
constexpr size_t kPiece = 65536;

[[noreturn]] void failed() {
    throw std::system_error(errno, std::generic_category());
}

Descriptor open(const std::string& path) {
    if (path == "-") return duplicate(STDIN_FILENO);
    Descriptor file(::open(path.c_str(), O_RDONLY | O_NOCTTY | O_CLOEXEC));
    if (!file.isOpen()) failed();
    return file;
}

std::string beginningOf(int stream) {
    std::string beginning;
    while (beginning.size() < kBeginning) {
        const std::string more = readSome(stream, kBeginning - beginning.size());
        if (more.empty()) break;
        beginning += more;
    }
    return beginning;
}

Descriptor readToItsEnd(int stream, const std::string& path, const InputKind& kind) {
    Descriptor content = fileInMemory();
    std::string piece = beginningOf(stream);
    if (piece.empty()) cannotRead(path, std::string("it is empty; ") + kind.advice);
    if (!kind.acceptsBeginning(piece)) cannotRead(path, std::string("it begins otherwise; ") + kind.advice);
    for (size_t size = 0; !piece.empty(); piece = readSome(stream, kPiece)) {
        size += piece.size();
        if (size > kind.most_bytes) {
            cannotRead(path,
                       "it is longer than " + std::to_string(kind.most_bytes >> 20) + " MiB; " + kind.advice);
        }
        writeAll(content.number(), piece);
    }
    ::lseek(content.number(), 0, SEEK_SET);
    return content;
}

Descriptor contentAt(const std::string& path, const InputKind& kind) {
    Descriptor file = open(path);
    struct stat status {};
    if (::fstat(file.number(), &status) != 0) failed();
    if (S_ISDIR(status.st_mode)) cannotRead(path, std::string("it is a folder; ") + kind.advice);
    if (S_ISREG(status.st_mode)) {
        if (status.st_size == 0) cannotRead(path, std::string("the file is empty; ") + kind.advice);
        return file;
    }
    const bool ends = S_ISFIFO(status.st_mode) || S_ISSOCK(status.st_mode) || ::isatty(file.number()) != 0;
    if (!ends && !readSome(file.number(), 1).empty())
        cannotRead(path, std::string("it is a device; ") + kind.advice);
    return readToItsEnd(file.number(), path, kind);
}

}  // namespace

void cannotRead(const std::string& path, const std::string& why) {
    throw Failure("cannot read '" + path + "': " + why);
}

Descriptor openInput(const std::string& path, const InputKind& kind) {
    try {
        return contentAt(path, kind);
    } catch (const std::system_error& error) {
        cannotRead(path, std::string(std::strerror(error.code().value())) + "; " + kind.advice);
    }
}

}  // namespace se_output
