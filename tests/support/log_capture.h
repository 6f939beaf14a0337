// Records and assertions made while a test runs, and death tests that compare a fatal record as a whole.
#pragma once

#include <gtest/gtest.h>

#include <mutex>
#include <string>
#include <vector>

#include "common/assertion.h"
#include "common/logging.h"
#include "common/record_sites.h"

namespace quill::test {

// Collects every record that is kept; standard error gets none. Restores the default sink and threshold.
class ScopedLogCapture {
  public:
    explicit ScopedLogCapture(int threshold = 4);
    ~ScopedLogCapture();
    std::vector<LogRecord> records() const;
    std::vector<std::string> texts() const;
    std::vector<std::string> texts(int level) const;

  private:
    mutable std::mutex mutex_;
    std::vector<LogRecord> records_;
};

// Collects every soft assertion, answering `stop_in_debugger` to each. Restores the default handler.
class ScopedAssertionCapture {
  public:
    explicit ScopedAssertionCapture(bool stop_in_debugger = false);
    ~ScopedAssertionCapture();
    std::vector<AssertionRecord> records() const;
    std::vector<std::string> texts() const;

  private:
    mutable std::mutex mutex_;
    std::vector<AssertionRecord> records_;
};

// In the child of a death test: writes each record to standard error as one line with delimited fields,
// so that the parent can compare the whole of it.
void writeRecordsForDeathTest();

// The regular expression that such a line, and only such a line, matches.
std::string fatalRecordPattern(const std::string& tag, const RecordSite& site, const std::string& text);

}  // namespace quill::test

// The statement must end the process by one level-1 record of this tag, source, line and whole text.
#define EXPECT_FATAL_RECORD(statement, tag, site, text) \
    EXPECT_DEATH(                                       \
        {                                               \
            ::quill::test::writeRecordsForDeathTest();  \
            statement;                                  \
        },                                              \
        ::quill::test::fatalRecordPattern(tag, site, text))

// The same for a record that carries its own line: any line is accepted.
#define EXPECT_FATAL_RECORD_ANY_LINE(statement, tag, source, text) \
    EXPECT_FATAL_RECORD(statement, tag, (::quill::RecordSite{source, -1}), text)
