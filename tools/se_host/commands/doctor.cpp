// `se_host doctor`: why there is no sound or no cancelling in PipeWire.
#include <array>
#include <cstdio>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

#include "host/output/descriptor.h"
#include "host/output/errors.h"
#include "host/output/input_file.h"
#include "host/output/one_line.h"
#include "tools/se_host/commands/commands.h"
#include "tools/se_host/pipewire/findings.h"

namespace se_host {
namespace {

constexpr const char* kDoctorHelp =
    "Looks at the running PipeWire and writes what is wrong and what to do, a sentence a line.\n"
    "Examples:\n"
    "  se_host doctor\n"
    "  pw-dump > dump.json; se_host doctor dump.json\n";

constexpr se_output::InputKind kDump{"give what pw-dump wrote", size_t{64} << 20,
                                     [](std::string_view) { return true; }};

// What a command of the shell writes.
std::string outputOf(const std::string& command) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> pipe(
        ::popen(("exec timeout 10 " + command + " 2>/dev/null").c_str(), "r"), ::pclose);
    std::string text;
    std::array<char, 65536> piece{};
    for (size_t bytes = 0; pipe && (bytes = std::fread(piece.data(), 1, piece.size(), pipe.get())) > 0;) {
        text.append(piece.data(), bytes);
    }
    return text;
}

std::string contentOf(const std::string& path) {
    const se_output::Descriptor file = se_output::openInput(path, kDump);
    return se_output::contentOf(file.number());
}

Graph graphIn(const std::string& text, const std::string& origin) {
    const nlohmann::json dump = nlohmann::json::parse(text, nullptr, false);
    if (!dump.is_array()) {
        throw se_output::Failure("'" + origin + "' is no dump of PipeWire; give what pw-dump wrote");
    }
    return graphOf(dump);
}

Graph runningGraph() {
    const std::string text = outputOf("pw-dump");
    if (text.empty()) {
        throw se_output::Failure(
            "'pw-dump' says nothing; install it with 'apt-get install pipewire-bin', and start PipeWire with "
            "'systemctl --user start pipewire'");
    }
    return graphIn(text, "pw-dump");
}

// The canceller's advice is as of the last change of a parameter.
void refreshAdvice(const Graph& graph) {
    const GraphNode* const canceller = cancellerNode(graph);
    if (canceller == nullptr) return;
    outputOf("pw-cli set-param " + std::to_string(canceller->id) +
             " Props '{ params = [ \"se.advice\" \"\" ] }'");
}

Graph presentGraph() {
    refreshAdvice(runningGraph());
    return runningGraph();
}

void run(const std::string& path) {
    const Graph graph = path.empty() ? presentGraph() : graphIn(contentOf(path), path);
    const std::vector<std::string> findings = findingsIn(graph);
    for (const std::string& finding : findings) std::cout << se_output::oneLine(finding) << '\n';
    if (findings.empty()) {
        std::cout << "nothing is wrong\n";
        return;
    }
    throw se_output::Failure(std::to_string(findings.size()) +
                             (findings.size() == 1 ? " thing is" : " things are") +
                             " wrong; do what is written above");
}

}  // namespace

void addDoctor(CLI::App& app) {
    CLI::App* const command =
        app.add_subcommand("doctor", "Say why there is no sound or no cancelling in PipeWire");
    const auto path = std::make_shared<std::string>();
    command->add_option("DUMP", *path, "What pw-dump wrote, to look at instead of the running PipeWire")
        ->type_name("");
    command->footer(kDoctorHelp);
    command->callback([path] { run(*path); });
}

}  // namespace se_host
