// Command lines of the host, an argument a line: each is parsed or refused with a reason, and none has an effect,
// because the commands themselves are not run. Each argument is also given to the property tree as a setting.
#include <CLI/CLI.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "common/assertion.h"
#include "common/logging.h"
#include "common/properties.h"
#include "host/engine/properties_by_text.h"
#include "host/output/errors.h"
#include "tests/fuzz/support/entry.h"
#include "tests/fuzz/support/require.h"
#include "tools/se_host/commands/commands.h"

namespace quill::fuzz {
namespace {

constexpr size_t kMostArguments = 64;

struct Parsed {};

// A command ends here instead of running, once its options have been checked.
void disarm(CLI::App& app) {
    const auto commands = app.get_subcommands([](CLI::App*) { return true; });
    for (CLI::App* const command : commands) disarm(*command);
    if (app.get_require_subcommand_min() == 0) app.parse_complete_callback([] { throw Parsed(); });
}

CLI::App& parser() {
    static CLI::App app("host", "se_host");
    static const bool is_made = [] {
        app.set_version_flag("--version", "se_host 1");
        se_host::addCommands(app);
        disarm(app);
        return true;
    }();
    static_cast<void>(is_made);
    return app;
}

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; lines.size() < kMostArguments && std::getline(in, line);) lines.push_back(line);
    return lines;
}

void parse(const std::vector<std::string>& arguments) {
    std::vector<const char*> argv = {"se_host"};
    for (const std::string& argument : arguments) argv.push_back(argument.c_str());
    try {
        parser().parse(static_cast<int>(argv.size()), argv.data());
        fail("a line without a command was accepted");
    } catch (const Parsed&) {
    } catch (const CLI::Success&) {
        require(!parser().help().empty(), "no help");
    } catch (const CLI::ParseError& error) {
        require(*error.what() != '\0', "a refusal without a reason");
        require(error.get_exit_code() != 0, "a refusal that counts as success");
    } catch (const se_output::UsageError& error) {
        require(*error.what() != '\0', "a refusal without a reason");
    }
}

void setProperties(const PropertyNodePtr& root, const std::vector<std::string>& assignments) {
    for (const std::string& assignment : assignments) {
        try {
            se_host::setByText(root, assignment);
        } catch (const se_output::UsageError& error) {
            require(*error.what() != '\0', "a refusal without a reason");
        }
    }
}

const PropertyNodePtr& boundTree() {
    static const PropertyNodePtr root = [] {
        PropertyNodePtr made = PropertyNode::createRoot();
        initStaticProperties(made);
        return made;
    }();
    return root;
}

}  // namespace
}  // namespace quill::fuzz

int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
    quill::setAssertionHandler([](const quill::AssertionRecord&) { return false; });
    quill::setLogThreshold(1);
    quill::fuzz::boundTree();
    quill::fuzz::parser();
    return 0;
}

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const auto lines = quill::fuzz::linesOf(std::string(reinterpret_cast<const char*>(data), size));
    quill::fuzz::parse(lines);
    quill::fuzz::setProperties(quill::fuzz::boundTree(), lines);
    return 0;
}
