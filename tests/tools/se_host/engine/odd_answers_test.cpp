// An engine with texts of any bytes, lengths that cannot be and a name of 1 MB: what the host prints is UTF-8
// in lines, and nothing in it controls a terminal.
#include <cstddef>

#include "tests/tools/se_host/diags/diags_test.h"

namespace se_host_test {
namespace {

const std::string kEngine = "test_engines/odd_answers";

bool isPlain(unsigned char byte) {
    return byte == '\n' || (byte >= ' ' && byte != 0x7F);
}

// Bytes that are no line breaks, blanks or printable characters, and C1 controls in either form. What is not
// UTF-8 is such, too: its first bytes are not followed by what they announce.
std::string unprintableIn(const std::string& text) {
    std::string found;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if (byte < 0x80) {
            if (!isPlain(byte)) found += text[i];
            continue;
        }
        const std::size_t more = byte >= 0xF0 ? 3 : byte >= 0xE0 ? 2 : byte >= 0xC2 ? 1 : 0;
        const auto next = static_cast<unsigned char>(i + 1 < text.size() ? text[i + 1] : '\0');
        bool whole = more > 0;
        for (std::size_t k = 1; k <= more; ++k) {
            whole = whole && i + k < text.size() && (static_cast<unsigned char>(text[i + k]) & 0xC0) == 0x80;
        }
        const bool is_c1 = byte == 0xC2 && next < 0xA0;
        const bool turns = text.compare(i, 3, "\u202e") == 0;
        if (!whole || is_c1 || turns) found += text[i];
        if (whole) i += more;
    }
    return found;
}

struct Request {
    const char* name;
    std::vector<std::string> words;
};

class OddAnswers : public DiagsTest, public testing::WithParamInterface<Request> {
  protected:
    OddAnswers() { makeRecording(3); }

    HostRun runOdd() {
        std::vector<std::string> words;
        for (const std::string& word : GetParam().words) {
            words.push_back(
                word.find(".wav") == std::string::npos && word.find(".txt") == std::string::npos &&
                        word.find(".csv") == std::string::npos && word.find(".json") == std::string::npos
                    ? word
                    : path(word));
        }
        words.insert(words.end(), {"--engine", kEngine});
        return run(words);
    }
};

TEST_P(OddAnswers, ArePrintedPlainly) {
    const HostRun result = runOdd();
    EXPECT_EQ(result.exit_code, 0) << result.err;
    EXPECT_EQ(unprintableIn(result.out), "");
    EXPECT_EQ(unprintableIn(result.err), "");
    for (const std::string& file : files()) {
        if (file.find(".wav") == std::string::npos) {
            EXPECT_EQ(unprintableIn(readText(file)), "") << file;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    By, OddAnswers,
    testing::Values(Request{"list", {"diags", "list"}}, Request{"list_json", {"diags", "list", "--json"}},
                    Request{"get", {"diags", "get", "odd_label", "huge_array", "negative_length"}},
                    Request{"get_json", {"diags", "get", "odd_label", "huge_array", "--json"}},
                    Request{"set", {"diags", "set", "odd_label=0", "negative_length=2"}},
                    Request{"dump", {"diags", "dump"}}, Request{"dump_file", {"diags", "dump", "o.json"}},
                    Request{"watch", {"diags", "watch", "in.wav"}},
                    Request{"process", {"process", "in.wav", "out.wav"}},
                    Request{"process_json", {"process", "in.wav", "out.wav", "--json"}},
                    Request{"trace", {"process", "in.wav", "out.wav", "--trace-diags", "*", "t.csv"}},
                    Request{"info", {"info"}}, Request{"info_json", {"info", "--json"}}),
    [](const auto& instance) { return instance.param.name; });

class OddTrace : public DiagsTest {};

// As comma-separated values have it: names with commas and quotes stand in quotes.
TEST_F(OddTrace, HasAsManyCellsAsColumns) {
    makeRecording(1);
    expectDone(process({"--engine", kEngine, "--trace-diags", "odd*", path("t.csv")}));
    const auto lines = linesOf(readText("t.csv"));
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0],
              "seconds,\"odd\\x1b]0;title\\x07\\x7f   \\x9b31m\\u009b31m\\xe2\\x82\\u202e,\"\"\",odd_label");
    EXPECT_EQ(lines[1], "0.01,5,0");
}

}  // namespace
}  // namespace se_host_test
