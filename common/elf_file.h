// Whether a file can be given to the dynamic loader. The loader maps what the headers of a library promise,
// whether or not the file is that long; touching a page behind its end then ends the process with SIGBUS.
#pragma once

#include <string>

namespace quill {

// [any] Why the loader must not open this file, as one line that names it; empty when it may. Only what the
// loader does not check by itself: a regular file, an x86-64 ELF shared object, whose program headers and
// loaded segments lie inside the file and whose dynamic section lies inside a segment and has entries. Never
// blocks, for a FIFO either. A file that changes after the check is not protected against.
std::string whyNotLoadable(const std::string& path);

}  // namespace quill
