// Values of the engine that change while sound runs.
#include <gtest/gtest.h>

#include "tests/host/library/opened_host.h"

namespace se_host_library_test {
namespace {

TEST(LiveValues, ComeBackWithinOneTurn) {
    ScriptedEngine scripted;
    std::vector<int> diags;
    for (int i = 0; i < 200; ++i) diags.push_back(scripted.add("value" + std::to_string(i), kInt32));
    const Opened host("test_engines/full");
    for (const int diag : diags) scripted.engine->set_integer(diag, 1000 + diag);
    host.run(4);  // 64 a block
    for (const int diag : diags) {
        EXPECT_EQ(host.get("value" + std::to_string(diag - diags[0])), std::to_string(1000 + diag));
    }
}

TEST(LiveValues, WithoutBlocksNothingMoves) {
    ScriptedEngine scripted;
    const int diag = scripted.add("value", kInt32);
    const Opened host("test_engines/full");
    scripted.engine->set_integer(diag, 5);
    EXPECT_EQ(host.get("value"), "0");
    host.run();
    EXPECT_EQ(host.get("value"), "5");
}

TEST(LiveValues, ArraysComeWhole) {
    ScriptedEngine scripted;
    const int numbers = scripted.add("numbers", kInt16, 3);
    const int reals = scripted.add("reals", kFloat32, 2);
    const Opened host("test_engines/full");
    for (int i = 0; i < 3; ++i) scripted.engine->set_element(numbers, i, -i);
    scripted.engine->set_real_element(reals, 1, 0.5f);
    host.run();
    EXPECT_EQ(host.get("numbers"), "[ 0, -1, -2 ]");
    EXPECT_EQ(host.get("reals"), "[ 0, 0.5 ]");
}

TEST(LiveValues, AnArrayThatIsTooLongKeepsItsFirstValue) {
    ScriptedEngine scripted;
    const int longest = scripted.add("longest", kInt16, SE_HOST_MOST_ELEMENTS);
    const int longer = scripted.add("longer", kInt16, SE_HOST_MOST_ELEMENTS + 1);
    const Opened host("test_engines/full");
    scripted.engine->set_element(longest, 0, 7);
    scripted.engine->set_element(longer, 0, 7);
    host.run(3);
    EXPECT_EQ(host.get("longest").substr(0, 4), "[ 7,");
    EXPECT_EQ(host.get("longer").substr(0, 4), "[ 0,");
}

TEST(LiveValues, TheLookDirection) {
    ScriptedEngine scripted;
    const Opened host("test_engines/full");
    scripted.engine->set_location(11, -5);
    host.run();
    EXPECT_EQ(host.get("location"), "11");
    EXPECT_EQ(host.get("location_conf"), "-5");
}

TEST(LiveValues, AnEnginesLabelIsCutToItsPlace) {
    ScriptedEngine scripted;
    const int choice = scripted.add("choice", kEnum);
    scripted.engine->set_label(choice, 1, std::string(500, 'x').c_str());
    const Opened host("test_engines/full");
    scripted.engine->set_integer(choice, 1);
    host.run();
    EXPECT_EQ(host.get("choice"), "1 - " + std::string(63, 'x'));
}

TEST(LiveValues, AnEnginesLabelIsShownWithoutControlCharacters) {
    ScriptedEngine scripted;
    const int choice = scripted.add("choice", kEnum);
    scripted.engine->set_label(choice, 1, "a\nb\x1b[31m");
    const Opened host("test_engines/full");
    scripted.engine->set_integer(choice, 1);
    host.run();
    EXPECT_EQ(host.get("choice"), "1 - a b\\x1b[31m");
}

TEST(LiveValues, NullAnswersHarmNothing) {
    ScriptedEngine scripted;
    scripted.add("array", kInt16, 3);
    scripted.add("choice", kEnum);
    const Opened host("test_engines/full");
    scripted.engine->set_null_answers(true);
    host.run();
    EXPECT_EQ(host.get("array"), "[  ]");
    EXPECT_EQ(host.get("choice"), "0 - (null)");
}

TEST(LiveValues, AnUnknownNameIsToldAsThat) {
    const Opened host("se_lib_beamv1.14");
    char text[8] = "before";
    size_t length = 9;
    EXPECT_EQ(se_host_get(host, "nothing", text, sizeof(text), &length), SE_HOST_UNKNOWN);
    EXPECT_STREQ(text, "");
    EXPECT_EQ(length, 0U);
}

TEST(LiveValues, ATextIsCutToItsBufferAndItsLengthTold) {
    ScriptedEngine scripted;
    scripted.add("array", kInt16, 3);
    const Opened host("test_engines/full");
    char text[6];
    size_t length = 0;
    EXPECT_EQ(se_host_get(host, "array", text, sizeof(text), &length), SE_HOST_OK);
    EXPECT_STREQ(text, "[ 0, ");
    EXPECT_EQ(length, std::string("[ 0, 0, 0 ]").size());
}

}  // namespace
}  // namespace se_host_library_test
