// docs/measures.md defines each measure of the table and no other.
#include <fstream>
#include <map>
#include <regex>
#include <set>

#include "tests/tools/se_host/measures/known_run.h"

namespace se_host_test {
namespace {

// Title of each section "### `name`", and its text.
std::map<std::string, std::string> sectionsOfDocument() {
    std::ifstream file(SE_MEASURES_DOCUMENT);
    std::map<std::string, std::string> sections;
    const std::regex title("### `(\\w+)`");
    std::smatch found;
    std::string name;
    for (std::string line; std::getline(file, line);) {
        if (line.rfind('#', 0) == 0) {
            name = std::regex_match(line, found, title) ? found[1].str() : "";
            if (name.empty()) continue;
            EXPECT_TRUE(sections.emplace(name, "").second) << name << " is defined twice";
        } else if (!name.empty()) {
            sections[name] += line + "\n";
        }
    }
    return sections;
}

TEST(MeasuresDocument, DefinesTheMeasuresOfTheTableAndNoOther) {
    std::set<std::string> defined, in_table;
    for (const auto& section : sectionsOfDocument()) defined.insert(section.first);
    for (const se_host::Measure& measure : se_host::measures()) in_table.insert(measure.name);
    EXPECT_EQ(defined, in_table);
}

// "Unit: dB. Better: more."
TEST(MeasuresDocument, HasUnitAndDirectionOfTheTable) {
    const auto sections = sectionsOfDocument();
    const char* const words[] = {"more", "less", "neither"};
    for (const se_host::Measure& measure : se_host::measures()) {
        const std::string unit = *measure.unit == '\0' ? "none" : measure.unit;
        const std::string expected =
            "Unit: " + unit + ". Better: " + words[static_cast<int>(measure.better)] + ".\n";
        const auto section = sections.find(measure.name);
        ASSERT_NE(section, sections.end()) << measure.name;
        EXPECT_NE(section->second.find(expected), std::string::npos) << measure.name << ": " << expected;
    }
}

TEST(MeasuresDocument, SaysOfEachWhatItIsOverTimeWhenItIsNullAndWhatItCannotTell) {
    for (const auto& [name, text] : sectionsOfDocument()) {
        for (const char* part : {"Over time: ", "Null: ", "Cannot tell: ", "Source: "}) {
            EXPECT_NE(text.find(std::string("\n") + part), std::string::npos) << name << ": " << part;
        }
    }
}

TEST(MeasuresTable, HasNamesInLowerCaseThatOccurOnce) {
    std::set<std::string> names;
    for (const se_host::Measure& measure : se_host::measures()) {
        EXPECT_TRUE(std::regex_match(measure.name, std::regex("[a-z][a-z0-9_]*"))) << measure.name;
        EXPECT_TRUE(names.insert(measure.name).second) << measure.name;
    }
}

}  // namespace
}  // namespace se_host_test
