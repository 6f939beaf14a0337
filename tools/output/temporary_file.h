// An output file that appears complete or not at all: it grows under a temporary name beside its own and
// is renamed at the end. If the process ends before that, also by a signal, the temporary is removed.
// Threads: one; removeTemporaryFiles may also run in a signal handler.
#pragma once

#include <string>

namespace se_output {

class TemporaryFile {
  public:
    // Creates the temporary beside `path`, so that an unwritable folder is known before any work is done.
    // A link is followed: what it points at is replaced. fails: Failure.
    explicit TemporaryFile(const std::string& path);
    // Removes the temporary unless it was committed.
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    // Where to write; the file exists and is empty. Empty text once committed.
    const std::string& name() const { return name_; }
    // The name that it gets in the end, as the user gave it.
    const std::string& path() const { return path_; }

    // Gives the file its name, replacing what was there. fails: Failure.
    void commit();

  private:
    std::string path_;
    std::string target_;  // `path_` with links followed
    std::string name_;
};

// Removes every temporary that has not been committed. Safe in a signal handler.
void removeTemporaryFiles();

// From now on an interrupted process removes its temporaries before it ends.
void removeTemporaryFilesOnSignals();

}  // namespace se_output
