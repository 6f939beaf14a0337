// An output file that is complete or absent: it is written under a temporary name beside its own and
// is renamed at the end. If the process ends before that, also by a signal, the temporary is removed.
// Threads: one.
#pragma once

#include <optional>
#include <string>

#include "tools/output/temporaries.h"

namespace se_output {

class TemporaryFile {
  public:
    // Creates the temporary beside `path`, so that an unwritable folder is reported before any work is done.
    // A link is followed: its target is replaced. fails: Failure.
    explicit TemporaryFile(const std::string& path);
    // Removes the temporary unless it was committed.
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    // The path to write to; the file exists and is empty. An empty text after the commit.
    const std::string& name() const { return name_; }
    // The final name, as the user gave it.
    const std::string& path() const { return path_; }

    // Gives the file its name, replacing an older file. fails: Failure.
    void commit();

  private:
    std::string path_;
    std::string target_;  // `path_` with links followed
    std::string name_;
    std::optional<TemporaryName> known_;
};

}  // namespace se_output
