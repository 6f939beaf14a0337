// A file that a fuzzer writes each input to, for code that reads by path. It is in memory and goes with the process.
#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <string>

#include "tests/fuzz/support/require.h"

namespace quill::fuzz {

class ScratchFile {
  public:
    ScratchFile() : file_(memfd_create("input", 0)) {
        require(file_ >= 0, "no file in memory could be made");
        path_ = "/proc/self/fd/" + std::to_string(file_);
    }
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;
    ~ScratchFile() { close(file_); }

    const std::string& holding(const std::string& bytes) {
        const bool written = ftruncate(file_, 0) == 0 && lseek(file_, 0, SEEK_SET) == 0 &&
                             write(file_, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
        require(written, "the input could not be written");
        return path_;
    }
    const std::string& path() const { return path_; }

  private:
    int file_;
    std::string path_;
};

}  // namespace quill::fuzz
