#include "host/output/descriptor.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace se_output {
namespace {

constexpr size_t kPiece = 65536;

[[noreturn]] void fail() {
    throw std::system_error(errno, std::generic_category());
}

void waitUntilWritable(int descriptor) {
    pollfd writable{descriptor, POLLOUT, 0};
    ::poll(&writable, 1, -1);
}

}  // namespace

Descriptor::~Descriptor() {
    if (isOpen()) ::close(number_);
}

// What is opened takes the lowest free number. A write to it fails, as to a closed descriptor.
void openStandardStreams() {
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(stream, F_GETFD) < 0) ::open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY);
    }
}

Descriptor fileInMemory() {
    Descriptor file(::memfd_create("sound", MFD_CLOEXEC));
    if (!file.isOpen()) fail();
    return file;
}

Descriptor duplicate(int descriptor) {
    Descriptor other(::fcntl(descriptor, F_DUPFD_CLOEXEC, 0));
    if (!other.isOpen()) fail();
    return other;
}

void writeAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
        if (written >= 0) {
            bytes.remove_prefix(static_cast<size_t>(written));
        } else if (errno == EAGAIN) {
            waitUntilWritable(descriptor);
        } else if (errno != EINTR) {
            fail();
        }
    }
}

std::string readSome(int descriptor, size_t most) {
    std::string bytes(most, '\0');
    ssize_t length = 0;
    do {
        length = ::read(descriptor, bytes.data(), bytes.size());
    } while (length < 0 && errno == EINTR);
    if (length < 0) fail();
    bytes.resize(static_cast<size_t>(length));
    return bytes;
}

std::string contentOf(int descriptor) {
    if (::lseek(descriptor, 0, SEEK_SET) < 0) fail();
    std::string content;
    for (std::string piece; !(piece = readSome(descriptor, kPiece)).empty();) content += piece;
    return content;
}

std::string pathOf(int descriptor) {
    return "/proc/self/fd/" + std::to_string(descriptor);
}

}  // namespace se_output
