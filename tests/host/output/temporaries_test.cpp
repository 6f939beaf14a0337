// The names of temporaries, across processes and signals.
#include "host/output/temporaries.h"

#include <signal.h>
#include <unistd.h>

#include <climits>
#include <list>

#include "tests/host/output/output_fixture.h"

namespace se_output_test {
namespace {

using se_output::TemporaryName;
using Names = std::vector<std::string>;

class TemporariesTest : public OutputTest {
  protected:
    TemporariesTest() { se_output::removeTemporaryFilesOnSignals(); }
};

TEST_F(TemporariesTest, AreRemoved) {
    writeText("known", "");
    writeText("other", "");
    const TemporaryName known(path("known"));
    se_output::removeTemporaryFiles();
    EXPECT_EQ(files(), Names{"other"});
}

TEST_F(TemporariesTest, AreForgotten) {
    writeText("known", "");
    { const TemporaryName known(path("known")); }
    se_output::removeTemporaryFiles();
    EXPECT_EQ(files(), Names{"known"});
}

TEST_F(TemporariesTest, OfAKilledChildAreRemovedByItsParent) {
    const pid_t child = runInChild([this] {
        const TemporaryName known(path("known"));
        writeText("known", "");
        raise(SIGKILL);
    });
    EXPECT_EQ(files(), Names{"known"});
    se_output::removeTemporaryFilesOf(child);
    EXPECT_EQ(files(), Names{});
}

TEST_F(TemporariesTest, OfAParentAreNotRemovedByItsChild) {
    writeText("known", "");
    const TemporaryName known(path("known"));
    runInChild([] { se_output::removeTemporaryFiles(); });
    EXPECT_EQ(files(), Names{"known"});
}

TEST_F(TemporariesTest, OfAnotherProcessStay) {
    writeText("known", "");
    const TemporaryName known(path("known"));
    se_output::removeTemporaryFilesOf(::getpid() + 1);
    EXPECT_EQ(files(), Names{"known"});
}

TEST_F(TemporariesTest, ManyCanBeKnown) {
    std::list<TemporaryName> names;
    const std::string failure = failureOf([&] {
        for (int i = 0; i < 1000; ++i) names.emplace_back(path(std::to_string(i)));
    });
    EXPECT_EQ(names.size(), 16u);
    EXPECT_NE(failure.find("too many are in use"), std::string::npos) << failure;
    names.pop_back();
    names.emplace_back(path("again"));
}

TEST_F(TemporariesTest, APathThatIsTooLongIsRefused) {
    const std::string failure = failureOf([] { const TemporaryName name("/" + std::string(PATH_MAX, 'x')); });
    EXPECT_NE(failure.find("its path is too long"), std::string::npos);
}

class SignalsTest : public TemporariesTest, public ::testing::WithParamInterface<int> {};

TEST_P(SignalsTest, RemoveTheTemporaries) {
    runInChild([this] {
        const TemporaryName known(path("known"));
        writeText("known", "");
        raise(GetParam());
    });
    EXPECT_EQ(files(), Names{});
}

TEST_P(SignalsTest, WaitWhileTheyAreBlocked) {
    runInChild([this] {
        {
            const se_output::SignalsBlocked blocked;
            raise(GetParam());
            writeText("reached", "");
        }
        writeText("not reached", "");
    });
    EXPECT_EQ(files(), Names{"reached"});
}

INSTANTIATE_TEST_SUITE_P(Output, SignalsTest,
                         ::testing::Values(SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGXCPU, SIGALRM));

}  // namespace
}  // namespace se_output_test
