// Outputs that are written through: descriptors that the process was started with, pipes, devices.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <thread>

#include "host/output/output_file.h"
#include "host/output/temporaries.h"
#include "tests/host/output/output_fixture.h"

namespace se_output_test {
namespace {

using se_output::OutputFile;

class StreamTest : public OutputTest {
  protected:
    // As a shell opens a file for a program that it starts.
    int openLog(int flags) const { return ::open(path("log").c_str(), O_WRONLY | O_CREAT | flags, 0644); }

    std::string named(int descriptor) const { return "/dev/fd/" + std::to_string(descriptor); }

    std::string refusal(const std::string& name) const {
        return "cannot write '" + name + "': Bad file descriptor; give an output path that you may write";
    }
};

TEST_F(StreamTest, ALogIsContinued) {
    writeText("log", "old,");
    write(named(openLog(O_APPEND)), "new");
    EXPECT_EQ(text("log"), "old,new");
}

TEST_F(StreamTest, AFileIsContinuedWhereItsDescriptorStands) {
    const int log = openLog(0);
    ASSERT_EQ(::write(log, "before,", 7), 7);
    write(named(log), "output,");
    ASSERT_EQ(::write(log, "after", 5), 5);
    EXPECT_EQ(text("log"), "before,output,after");
}

TEST_F(StreamTest, StandardOutputIsWrittenThrough) {
    writeText("log", "old,");
    ASSERT_EQ(::dup2(openLog(O_APPEND), STDOUT_FILENO), STDOUT_FILENO);
    for (const char* name : {"-", "/dev/stdout", "/proc/self/fd/1"}) {
        OutputFile file(name);
        file.write("new,");
        EXPECT_TRUE(file.isStandardOutput());
        file.commit();
    }
    EXPECT_EQ(text("log"), "old,new,new,new,");
}

TEST_F(StreamTest, ALinkToStandardOutputIsWrittenThrough) {
    ASSERT_EQ(::dup2(openLog(O_APPEND), STDOUT_FILENO), STDOUT_FILENO);
    ASSERT_EQ(::symlink("/dev/stdout", path("link").c_str()), 0);
    write(path("link"), "new");
    EXPECT_EQ(text("log"), "new");
}

TEST_F(StreamTest, NothingIsWrittenBeforeTheCommit) {
    OutputFile(named(openLog(O_APPEND))).write("new");
    EXPECT_EQ(text("log"), "");
}

TEST_F(StreamTest, TheNullDeviceStaysADevice) {
    write("/dev/null", "new");
    struct stat status {};
    ASSERT_EQ(::stat("/dev/null", &status), 0);
    EXPECT_TRUE(S_ISCHR(status.st_mode));
}

// More than a pipe holds at once.
TEST_F(StreamTest, APipeTakesEverything) {
    ASSERT_EQ(::mkfifo(path("pipe").c_str(), 0644), 0);
    const std::string sent(1 << 20, 'x');
    std::string received;
    std::thread reader([&] { received = text("pipe"); });
    write(path("pipe"), sent);
    reader.join();
    EXPECT_EQ(received, sent);
}

TEST_F(StreamTest, APipeThatDoesNotWaitTakesEverything) {
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    ::fcntl(ends[1], F_SETFL, O_NONBLOCK);
    size_t received = 0;
    std::thread reader([&] {
        char bytes[4096];
        while (received < 1 << 20) {
            const ssize_t length = ::read(ends[0], bytes, sizeof(bytes));
            if (length <= 0) break;
            received += static_cast<size_t>(length);
        }
    });
    write(named(ends[1]), std::string(1 << 20, 'x'));
    reader.join();
    EXPECT_EQ(received, size_t{1} << 20);
}

TEST_F(StreamTest, APipeWithoutAReaderIsOneError) {
    se_output::removeTemporaryFilesOnSignals();
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    ::close(ends[0]);
    EXPECT_EQ(failureOf([&] { write(named(ends[1]), "new"); }),
              "cannot write '" + named(ends[1]) + "': Broken pipe; its reader has ended");
}

TEST_F(StreamTest, ADescriptorThatIsNotOpenIsRefused) {
    EXPECT_EQ(failureOf([] { OutputFile file("/dev/fd/900"); }), refusal("/dev/fd/900"));
}

TEST_F(StreamTest, ADescriptorForReadingIsRefused) {
    writeText("log", "old");
    const std::string name = named(::open(path("log").c_str(), O_RDONLY));
    EXPECT_EQ(failureOf([&] { OutputFile file(name); }), refusal(name));
}

TEST_F(StreamTest, ADescriptorOfTheProcessItselfIsRefused) {
    const std::string name = named(openLog(O_CLOEXEC));
    EXPECT_EQ(failureOf([&] { OutputFile file(name); }), refusal(name));
}

}  // namespace
}  // namespace se_output_test
