#include "host/output/output_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>

#include "host/output/errors.h"
#include "host/output/output_place.h"

namespace se_output {
namespace {

namespace fs = std::filesystem;

const char* adviceFor(int error) {
    switch (error) {
        case ENOSPC:
        case EDQUOT:
            return "make room there, or give another output path";
        case EFBIG:
            return "raise the limit of file sizes (ulimit -f)";
        case EMFILE:
        case ENFILE:
            return "raise the limit of open files (ulimit -n)";
        case EPIPE:
            return "its reader has ended";
        default:
            return "give an output path that you may write";
    }
}

[[noreturn]] void cannotWrite(const std::string& path, const std::string& why, int error = 0) {
    throw Failure("cannot write '" + path + "': " + why + "; " + adviceFor(error));
}

// Runs `work`, and names the output in what it throws.
template <class Work>
auto naming(const std::string& path, const Work& work) {
    try {
        return work();
    } catch (const std::system_error& error) {
        cannotWrite(path, std::strerror(error.code().value()), error.code().value());
    }
}

std::unique_ptr<OutputTarget> deviceAt(const std::string& path) {
    Descriptor device(::open(path.c_str(), O_WRONLY | O_NOCTTY | O_CLOEXEC));
    if (!device.isOpen()) throw std::system_error(errno, std::generic_category());
    return streamTo(std::move(device));
}

std::unique_ptr<OutputTarget> targetAt(const OutputPlace& place, const std::string& path) {
    if (place.descriptor >= 0) return streamTo(duplicate(place.descriptor));
    std::error_code error;
    const fs::file_status status = fs::status(place.path, error);
    if (fs::is_character_file(status) || fs::is_fifo(status)) return deviceAt(place.path);
    const bool has_name = fs::path(place.path).has_filename();
    if (!has_name || (fs::exists(status) && !fs::is_regular_file(status))) {
        cannotWrite(path, "not a regular file");
    }
    return replacedFile(place.path);
}

}  // namespace

OutputFile::OutputFile(const std::string& path) : path_(path) {
    naming(path_, [&] {
        const OutputPlace place = placeOf(path);
        is_standard_output_ = place.descriptor == STDOUT_FILENO;
        target_ = targetAt(place, path);
    });
}

void OutputFile::write(std::string_view bytes) {
    naming(path_, [&] { writeAll(descriptor(), bytes); });
}

void OutputFile::commit() {
    naming(path_, [&] { target_->publish(); });
}

}  // namespace se_output
