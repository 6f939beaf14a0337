// The measures over time, as the report reads them.
#include "tools/se_host/sweep_report/seconds.h"

#include <filesystem>
#include <fstream>

#include "tests/tools/se_host/sweep_report/known_results.h"

namespace se_host_test {
namespace {

using namespace se_host::report;

class Seconds : public testing::Test {
  protected:
    Seconds() {
        std::filesystem::create_directory(folder_.path() + "/over-time");
        std::ofstream(folder_.path() + "/over-time/k1.csv")
            << "seconds,noise_reduction_db,talker_stoi\n1,,0.5\n2,-3.25,\n2.5,12,0.75\n";
    }

    Results results() const { return readResults(folder_.path()); }

  private:
    static std::string row(const std::string& tuning, const std::string& key) {
        return "{\"key\":\"" + key + "\",\"recording\":\"r\",\"tuning\":\"" + tuning +
               "\",\"status\":\"ok\",\"measures\":{}}\n";
    }

    const ResultsFolder folder_{row("default", "k1") + row("new", "k2")};
};

TEST_F(Seconds, AreThoseOfTheMeasureWithItsGaps) {
    EXPECT_EQ(secondsOf(results(), 0, 0, "noise_reduction_db"), (Values{std::nullopt, -3.25, 12}));
    EXPECT_EQ(secondsOf(results(), 0, 0, "talker_stoi"), (Values{0.5, std::nullopt, 0.75}));
}

TEST_F(Seconds, ThatTheSweepDidNotWriteAreEmpty) {
    EXPECT_TRUE(secondsOf(results(), 1, 0, "talker_stoi").empty());
    EXPECT_TRUE(secondsOf(results(), 0, 0, "talker_si_sdr_db").empty());
}

}  // namespace
}  // namespace se_host_test
