// Logging: records with a level and a tag, filtered before they are built, handed to one sink.
// Everything here may also be called during static initialisation and while the process exits.
// Not for the audio path: a record that is kept allocates and writes. A statement that is filtered out
// costs one call of isLoggerEnabled.
#pragma once

#include <functional>
#include <memory>
#include <ostream>
#include <sstream>
#include <string>

#include "common/export.h"
#include "common/printable.h"

namespace quill {

// Levels: 1 fatal (the process ends once the record has reached the sink), 2 error after which execution
// continues, 4 notice, 5 trace.
struct LogRecord {
    int level;
    const char* tag;
    const char* source;    // source path of the statement
    const char* function;  // full signature of the enclosing function
    int line;
    std::string text;
};

// Receives every record that is kept, on the thread that made it; several threads may call it at the same
// time. A sink may log; an exception that leaves it ends the process.
using LogSink = std::function<void(const LogRecord&)>;

// [any] Replaces the sink; an empty one restores standard error, where a record is one line, its text printable()
// and cut at kMostLogged bytes. A sink receives the text unchanged, with whatever bytes the engine's texts hold: a
// sink that writes to a terminal or a file uses printable(), too. A record that another thread is emitting may
// still reach the old sink.
QUILL_COMMON_EXPORT void setLogSink(LogSink sink);

// [any] Keeps the levels 1 to `level` of every tag without a threshold of its own. The default is 4;
// 0 drops everything, fatal records included: checks then report nothing and execution continues.
QUILL_COMMON_EXPORT void setLogThreshold(int level);

// [any] Gives one tag a threshold of its own; 0 drops all of its records.
QUILL_COMMON_EXPORT void setLogThreshold(const std::string& tag, int level);

// [any] Whether a record of this level and tag would be kept.
QUILL_COMMON_EXPORT bool isLoggerEnabled(int level, const char* tag);

class LoggingFilter;

// One record under construction; the destructor hands it to the sink and, at level 1, ends the process
// by abort().
class QUILL_COMMON_EXPORT LoggingStream {
  public:
    // [any] in: `uid`, the call site's own integer, -1 until the core has numbered the site (once, also if
    // several threads reach it together); `filter`, null. needs: the pointers outlive the record. Text is
    // formatted as in the C locale, independent of the host's locale.
    LoggingStream(LoggingFilter* filter, int level, const char* tag, const char* file, const char* function,
                  int line, int* uid);
    ~LoggingStream();
    LoggingStream(const LoggingStream&) = delete;
    LoggingStream& operator=(const LoggingStream&) = delete;

    std::ostream& stream() { return stream_; }

  private:
    LogRecord record_;
    std::ostringstream stream_;
};

namespace logging_internal {

// Level and tag of a statement, evaluated once.
struct Statement {
    int level;
    const char* tag;
    bool enabled() const { return isLoggerEnabled(level, tag); }
};

// Gives a streaming expression the type void; binds looser than <<.
struct Voidify {
    void operator&(std::ostream&) const {}
};

}  // namespace logging_internal
}  // namespace quill

// One statement with variables of its own. It holds no `if`, so that a following `else` belongs to the `if`
// of the caller.
#define QUILL_WITH(...)     \
    switch (__VA_ARGS__; 0) \
    case 0:                 \
    default:

#define QUILL_WITH_CALL_SITE QUILL_WITH(static int quill_logging_point_uid__ = -1)

#define QUILL_STREAM_INTO_RECORD(level_, tag_, source_, line_)                                          \
    ::quill::logging_internal::Voidify() & ::quill::LoggingStream(nullptr, (level_), (tag_), (source_), \
                                                                  __PRETTY_FUNCTION__, (line_),         \
                                                                  &quill_logging_point_uid__)           \
                                               .stream()

// The statement with a source and a line that the caller chooses.
#define QUILL_LOG_AT(level_, tag_, source_, line_)                                                 \
    QUILL_WITH_CALL_SITE                                                                           \
    QUILL_WITH(const ::quill::logging_internal::Statement quill_log_statement__{(level_), (tag_)}) \
    !quill_log_statement__.enabled()                                                               \
        ? (void)0                                                                                  \
        : QUILL_STREAM_INTO_RECORD(quill_log_statement__.level, quill_log_statement__.tag, source_, line_)

#define QUILL_LOG(level, tag) QUILL_LOG_AT(level, tag, __FILE__, __LINE__)
