// A record is written to standard error whole, although a write is interrupted or takes only a part of it.
// This program replaces the write() of the C library.
#include <gtest/gtest.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <string>
#include <vector>

#include "common/logging.h"

namespace {

struct Answer {
    ssize_t most;  // bytes taken at most; negative: -errno
};

std::vector<Answer> g_answers;  // of the next writes to standard error; none left: everything is taken
bool g_recording = false;
std::string g_written;
int g_calls = 0;

}  // namespace

extern "C" __attribute__((visibility("default"))) ssize_t write(int file, const void* bytes, size_t size) {
    if (!g_recording || file != STDERR_FILENO) return ::syscall(SYS_write, file, bytes, size);
    ++g_calls;
    ssize_t taken = static_cast<ssize_t>(size);
    if (!g_answers.empty()) {
        taken = std::min(taken, g_answers.front().most);
        g_answers.erase(g_answers.begin());
    }
    if (taken < 0) {
        errno = static_cast<int>(-taken);
        return -1;
    }
    g_written.append(static_cast<const char*>(bytes), static_cast<size_t>(taken));
    return taken;
}

namespace quill {
namespace {

const std::string kLine = "ERROR [se_wrapper] source:12: text\n";

std::string writtenWith(const std::vector<Answer>& answers) {
    g_answers = answers;
    g_written.clear();
    g_calls = 0;
    g_recording = true;
    QUILL_LOG_AT(2, "se_wrapper", "source", 12) << "text";
    g_recording = false;
    return g_written;
}

TEST(LogWrite, IsOneCallForTheWholeLine) {
    EXPECT_EQ(writtenWith({}), kLine);
    EXPECT_EQ(g_calls, 1);
}

TEST(LogWrite, GoesOnAfterASignal) {
    EXPECT_EQ(writtenWith({{-EINTR}, {-EINTR}}), kLine);
    EXPECT_EQ(writtenWith({{5}, {-EINTR}}), kLine);
}

TEST(LogWrite, GoesOnAfterAPartWasTaken) {
    EXPECT_EQ(writtenWith({{1}, {7}, {1}}), kLine);
    EXPECT_EQ(writtenWith({{static_cast<ssize_t>(kLine.size()) - 1}}), kLine);
}

TEST(LogWrite, EndsWhenNothingIsTaken) {
    EXPECT_EQ(writtenWith({{3}, {-EIO}}), kLine.substr(0, 3));
    EXPECT_EQ(g_calls, 2);
    EXPECT_EQ(writtenWith({{0}}), "");
    EXPECT_EQ(g_calls, 1);
}

}  // namespace
}  // namespace quill
