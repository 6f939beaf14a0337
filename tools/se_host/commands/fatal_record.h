// The library's records as the user sees them: one line each, and an exit code after a fatal one.
// Threads: installRecordSink once, before any other; the sink itself on any.
#pragma once

namespace se_host {

// Errors and fatal records go to standard error as one line, notices are dropped. A fatal record ends the
// process with exit code 1, its output files removed.
void installRecordSink();

}  // namespace se_host
