// How the library's records reach the user: one line each, and an orderly end after a fatal one.
// Threads: installRecordSink once, before any other; the sink itself on any.
#pragma once

namespace se_host {

// Errors and fatal records go to standard error as one line, notices are dropped. A fatal record ends the
// process with exit code 1, its output files removed.
void installRecordSink();

}  // namespace se_host
