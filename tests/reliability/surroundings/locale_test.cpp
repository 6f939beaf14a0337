// A locale with a decimal comma and grouped digits, of the C library and of C++: what the library makes is the same.
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <locale>
#include <memory>
#include <string>

#include "common/property_node.h"
#include "tests/reliability/support/running_engine.h"
#include "tests/support/log_capture.h"
#include "tests/webrtc_common/engine/comma_locale.h"
#include "webrtc_common/se_wrapper.h"

using namespace quill::media::se_wrapper;
using quill::PropertyNode;
using quill::PropertyNodePtr;

namespace {

struct Grouped : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

std::string textOf(const PropertyNodePtr& node) {
    std::string text = node->getFullName() + ": ";
    if (!node->value().empty()) text += node->value().toString();
    text += "\n";
    for (const PropertyNodePtr& child : node->children()) text += textOf(child);
    return text;
}

// Everything that the library writes of an engine: the tree after an edit that was applied, records, the results file.
std::string everything(const std::string& file) {
    const quill::test::ScopedLogCapture log(5);
    const PropertyNodePtr root = PropertyNode::createRoot();
    root->getNode("transfer_large_arrays", true)->set<bool>(true);
    readSignalEssenceDiags(root);
    root->getNode("diags/intermediate/mmfx_rear_rejection_db", true)->set<std::string>("1.5");
    writeSignalEssenceDiags(root);
    root->getNode("diags/intermediate/mmfx_rear_rejection_db", true)->set<std::string>("0");
    writeSignalEssenceDiags(root);
    readSignalEssenceDiags(root);
    saveNoiseTestResults(file);
    std::string text = textOf(root);
    for (const std::string& record : log.texts()) text += record + "\n";
    std::ifstream results(file);
    return text.append(std::istreambuf_iterator<char>(results), {});
}

TEST(Locale, ChangesNothing) {
    const reliability::RunningEngine engine("se_lib_beamv1.14");
    const std::string file = testing::TempDir() + "locale_test_results.txt";
    const std::string before = everything(file);
    EXPECT_NE(before.find("Microphone 5\n"), std::string::npos);
    EXPECT_NE(before.find("1.5"), std::string::npos);
    const quill::test::CommaLocale comma;
    const std::locale cpp = std::locale::global(std::locale(std::locale::classic(), new Grouped));
    const std::string after = everything(file);
    std::locale::global(cpp);
    std::remove(file.c_str());
    EXPECT_EQ(after, before);
    if (!comma.isSet()) GTEST_SKIP() << "no localedef; the locale of C++ was tried";
}

}  // namespace
