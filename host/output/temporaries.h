// The names of temporary files, so that none is left when the process ends before its outputs are complete.
// The names are in memory that a process shares with the children that it forks after its first use of this
// header: a parent can remove what an ended child left, whatever ended it.
// Threads: any. Safe in a signal handler: removeTemporaryFiles, removeTemporaryFilesOf.
#pragma once

#include <signal.h>
#include <sys/types.h>

#include <string>

namespace se_output {

// Removes every temporary of this process. Those of its parent and of its children stay.
void removeTemporaryFiles();

// Removes every temporary of another process. needs: `process` has ended.
void removeTemporaryFilesOf(pid_t process);

// Call it first, before any fork. From now on a signal that ends the process removes its temporaries before.
// A write to a closed pipe or beyond the limit of file sizes fails, with EPIPE or EFBIG, and no longer ends
// the process.
void removeTemporaryFilesOnSignals();

// The name of one temporary, known from construction to destruction. Construct it before the file is created:
// then there is no moment in which the file exists and is not known.
class TemporaryName {
  public:
    // needs: an absolute path, because the working folder may change. fails: Failure when the path is longer
    // than the system allows, or when too many temporaries are known.
    explicit TemporaryName(const std::string& path);
    // Forgets the name; the file is left alone.
    ~TemporaryName();
    TemporaryName(const TemporaryName&) = delete;
    TemporaryName& operator=(const TemporaryName&) = delete;

  private:
    size_t place_;
};

// Blocks all signals of this thread while a name and its file change together.
class SignalsBlocked {
  public:
    SignalsBlocked();
    ~SignalsBlocked();
    SignalsBlocked(const SignalsBlocked&) = delete;
    SignalsBlocked& operator=(const SignalsBlocked&) = delete;

  private:
    sigset_t before_;
};

}  // namespace se_output
