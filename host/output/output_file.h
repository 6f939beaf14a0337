// An output of a program, complete or absent. A file is replaced as a whole when it is committed; an older one stays
// as it is until then, whatever ends the process. "-" is standard output. Standard output and other descriptors that
// the process was started with ("/dev/stdout", "/dev/fd/N"), pipes, terminals and devices are written through at the
// commit, behind what stands there.
// Threads: one.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "host/output/output_target.h"

namespace se_output {

class OutputFile {
  public:
    // Opens the place of the output, so that an unwritable path is reported before any work is done.
    // fails: Failure.
    explicit OutputFile(const std::string& path);

    // The content so far: an open file, empty at first, that can be read, written and sought in.
    int descriptor() const { return target_->content(); }
    // Appends to the content. fails: Failure.
    void write(std::string_view bytes);

    // As the user gave it.
    const std::string& path() const { return path_; }
    // Other texts then belong on standard error.
    bool isStandardOutput() const { return is_standard_output_; }

    // Puts the content in its place. needs: called once. fails: Failure; an older file is whole then.
    void commit();

  private:
    std::string path_;
    bool is_standard_output_ = false;
    std::unique_ptr<OutputTarget> target_;
};

}  // namespace se_output
