#include "tests/support/log_capture.h"

#include <iostream>

namespace quill::test {

ScopedLogCapture::ScopedLogCapture(int threshold) {
    setLogThreshold(threshold);
    setLogSink([this](const LogRecord& record) {
        const std::lock_guard lock(mutex_);
        records_.push_back(record);
    });
}

ScopedLogCapture::~ScopedLogCapture() {
    setLogSink({});
    setLogThreshold(4);
}

std::vector<LogRecord> ScopedLogCapture::records() const {
    const std::lock_guard lock(mutex_);
    return records_;
}

std::vector<std::string> ScopedLogCapture::texts() const {
    std::vector<std::string> result;
    for (const LogRecord& record : records()) result.push_back(record.text);
    return result;
}

std::vector<std::string> ScopedLogCapture::texts(int level) const {
    std::vector<std::string> result;
    for (const LogRecord& record : records()) {
        if (record.level == level) result.push_back(record.text);
    }
    return result;
}

ScopedAssertionCapture::ScopedAssertionCapture(bool stop_in_debugger) {
    setAssertionHandler([this, stop_in_debugger](const AssertionRecord& record) {
        const std::lock_guard lock(mutex_);
        records_.push_back(record);
        return stop_in_debugger;
    });
}

ScopedAssertionCapture::~ScopedAssertionCapture() {
    setAssertionHandler({});
}

std::vector<AssertionRecord> ScopedAssertionCapture::records() const {
    const std::lock_guard lock(mutex_);
    return records_;
}

std::vector<std::string> ScopedAssertionCapture::texts() const {
    std::vector<std::string> result;
    for (const AssertionRecord& record : records()) result.push_back(record.text);
    return result;
}

void writeRecordsForDeathTest() {
    setLogSink([](const LogRecord& record) {
        std::cerr << "<record level=" << record.level << " tag=" << record.tag << " source=" << record.source
                  << " line=" << record.line << ">" << record.text << "</record>\n"
                  << std::flush;
    });
}

std::string fatalRecordPattern(const std::string& tag, const RecordSite& site, const std::string& text) {
    std::string escaped;
    for (const char c : text) {
        if (std::string("\\^$.|?*+()[]{}").find(c) != std::string::npos) escaped += '\\';
        escaped += c;
    }
    const std::string line = site.line < 0 ? "[0-9]+" : std::to_string(site.line);
    return "<record level=1 tag=" + tag + " source=" + site.source + " line=" + line + ">" + escaped +
           "</record>";
}

}  // namespace quill::test
