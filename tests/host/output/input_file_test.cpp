// Inputs: files, and streams that are read to their end.
#include "host/output/input_file.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <thread>

#include "tests/host/output/output_fixture.h"

namespace se_output_test {
namespace {

constexpr se_output::InputKind kKind{"give a file in capitals", 1 << 20,
                                     [](std::string_view beginning) { return beginning < "a"; }};

class InputFileTest : public OutputTest {
  protected:
    static std::string read(const std::string& path) {
        return se_output::contentOf(se_output::openInput(path, kKind).number());
    }

    // The same text through a pipe.
    static std::string readFromPipe(const std::string& text) {
        int ends[2];
        EXPECT_EQ(::pipe(ends), 0);
        std::thread writer([&] {
            for (size_t sent = 0; sent < text.size();) {
                const ssize_t length = ::write(ends[1], text.data() + sent, text.size() - sent);
                if (length <= 0) break;
                sent += static_cast<size_t>(length);
            }
            ::close(ends[1]);
        });
        EXPECT_EQ(::dup2(ends[0], STDIN_FILENO), STDIN_FILENO);
        ::close(ends[0]);
        std::string received;
        const std::string failure = failureOf([&] { received = read("-"); });
        ::close(STDIN_FILENO);  // ends a writer that still waits
        writer.join();
        return failure.empty() ? received : failure;
    }
};

TEST_F(InputFileTest, AFile) {
    writeText("in", "SOUND");
    EXPECT_EQ(read(path("in")), "SOUND");
}

TEST_F(InputFileTest, StandardInput) {
    const std::string sound(300000, 'X');
    EXPECT_EQ(readFromPipe(sound), sound);
}

TEST_F(InputFileTest, AShortStream) {
    EXPECT_EQ(readFromPipe("X"), "X");
}

TEST_F(InputFileTest, AnEmptyStreamIsRefused) {
    EXPECT_EQ(readFromPipe(""), "cannot read '-': it is empty; give a file in capitals");
}

TEST_F(InputFileTest, AStreamThatBeginsOtherwiseIsNotReadToItsEnd) {
    signal(SIGPIPE, SIG_IGN);
    EXPECT_EQ(readFromPipe(std::string(64 << 20, 'x')),
              "cannot read '-': it begins otherwise; give a file in capitals");
}

TEST_F(InputFileTest, AStreamThatIsTooLongIsRefused) {
    signal(SIGPIPE, SIG_IGN);
    EXPECT_EQ(readFromPipe(std::string(2 << 20, 'X')),
              "cannot read '-': it is longer than 1 MiB; give a file in capitals");
}

TEST_F(InputFileTest, TheNullDeviceIsEmpty) {
    EXPECT_EQ(failureOf([] { read("/dev/null"); }),
              "cannot read '/dev/null': it is empty; give a file in capitals");
}

TEST_F(InputFileTest, AFileThatIsNotThereIsRefused) {
    EXPECT_EQ(failureOf([&] { read(path("in")); }),
              "cannot read '" + path("in") + "': No such file or directory; give a file in capitals");
}

TEST_F(InputFileTest, AnEmptyFileIsRefused) {
    writeText("in", "");
    EXPECT_EQ(failureOf([&] { read(path("in")); }),
              "cannot read '" + path("in") + "': the file is empty; give a file in capitals");
}

TEST_F(InputFileTest, AFolderIsRefused) {
    EXPECT_EQ(failureOf([&] { read(path("")); }),
              "cannot read '" + path("") + "': it is a folder; give a file in capitals");
}

TEST_F(InputFileTest, ADeviceThatNeverEndsIsRefused) {
    EXPECT_EQ(failureOf([] { read("/dev/zero"); }),
              "cannot read '/dev/zero': it is a device; give a file in capitals");
}

}  // namespace
}  // namespace se_output_test
