// Tunings that anybody may have written: large and deep ones take time and memory of their length.
#include <sys/resource.h>

#include "tests/tools/se_host/diags/diags_test.h"

namespace se_host_test {
namespace {

class HostileTuning : public DiagsTest {
  protected:
    static std::string repeated(const std::string& text, size_t times) {
        std::string all;
        for (size_t i = 0; i < times; ++i) all += text;
        return all;
    }

    void expectNoTuning(const std::string& why) {
        noteFiles();
        expectRefused(diags({"restore", path("a.json")}), kFailure,
                      "'" + path("a.json") + "' is not a tuning file: " + why);
    }
};

constexpr const char* kEngine =
    R"({"engine": {"build": "b", "version": "beam_1.14|reference"}, "diagnostics": {)";

TEST_F(HostileTuning, NestedAMillionDeep) {
    for (const char* const opening : {"[", "{\"a\":"}) {
        writeText("a.json", repeated(opening, 1000000));
        expectNoTuning("it is nested too deep");
    }
}

TEST_F(HostileTuning, ANameThatIsThereTwice) {
    writeText("a.json", kEngine + std::string(R"("a": {"value": 1}, "a": {"value": 2}}})"));
    expectNoTuning("'a' is in it twice");
}

// A hundred million comparisons and more, if each name were compared with every other.
TEST_F(HostileTuning, OfAHundredThousandNames) {
    std::string text = kEngine;
    for (int i = 0; i < 100000; ++i) {
        text += std::string(i == 0 ? "" : ",") + "\"n" + std::to_string(i) + "\":{\"value\":1}";
    }
    writeText("a.json", text + "}}");
    const rlimit limit{10, 10};  // seconds of the processor
    ASSERT_EQ(setrlimit(RLIMIT_CPU, &limit), 0);
    const HostRun result = diags({"restore", path("a.json")});
    EXPECT_NE(result.out.find("100000 unknown"), std::string::npos) << result.signal;
    const HostRun compared = diags({"diff", path("a.json"), path("a.json")});
    EXPECT_EQ(compared.out, "no difference\n");
}

TEST_F(HostileTuning, WithALongArray) {
    writeText("a.json", kEngine + ("\"a\":{\"value\":[" + repeated("1,", 1000000) + "1]}}}"));
    EXPECT_EQ(diags({"diff", path("a.json"), path("a.json")}).out, "no difference\n");
}

// Each beginning of a tuning, and each with one byte less.
TEST_F(HostileTuning, ThatIsDamagedIsReadOrRefused) {
    const std::string whole =
        kEngine + std::string(R"("seout_gain_q10": {"type": "Int32", "value": [900, -1.5e3]}},
                                                     "switches": {"aec_bypass": null}})");
    for (size_t place = 0; place < whole.size(); place += 3) {
        for (const std::string& damaged : {whole.substr(0, place), std::string(whole).erase(place, 1)}) {
            writeText("a.json", damaged);
            noteFiles();
            const HostRun result = diags({"diff", path("a.json"), path("a.json")});
            if (result.exit_code != 0) expectRefused(result, kFailure, "a.json'");
        }
    }
}

}  // namespace
}  // namespace se_host_test
