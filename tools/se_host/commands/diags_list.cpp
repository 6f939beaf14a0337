// `se_host diags list`: the diagnostics, with type, access, value and help.
#include <algorithm>
#include <iostream>
#include <memory>

#include "common/string_printf.h"
#include "host/output/errors.h"
#include "host/output/one_line.h"
#include "tools/se_host/commands/commands.h"
#include "tools/se_host/commands/print_json.h"
#include "tools/se_host/commands/tuned_engine.h"

namespace se_host {
namespace {

using quill::stringPrintf;
using Json = nlohmann::ordered_json;

constexpr size_t kValueWidth = 24;     // longer values are cut in the table
constexpr size_t kMostNameWidth = 48;  // longer names are whole, and not aligned

struct ListOptions : DiagsOptions {
    std::string pattern = "*";
    std::string level;
    bool json = false;
};

// "basic" of "diags/basic/NAME".
std::string diagLevelOf(const DiagInfo& diag) {
    const size_t begin = diag.path.find('/') + 1;
    return diag.path.substr(begin, diag.path.find('/', begin) - begin);
}

const char* accessText(const DiagInfo& diag) {
    return diag.writable ? "rw" : "r-";
}

std::string cut(std::string text) {
    if (text.size() <= kValueWidth) return text;
    return text.substr(0, kValueWidth - 3) + "...";
}

std::vector<DiagInfo> chosen(const ListOptions& options, const DiagTree& tree) {
    std::vector<DiagInfo> diags;
    for (const DiagInfo& diag : tree.matching(options.pattern)) {
        if (options.level.empty() || diagLevelOf(diag) == options.level) diags.push_back(diag);
    }
    if (diags.empty()) {
        throw se_output::UsageError("no diagnostic of level '" + options.level + "' matches '" +
                                    options.pattern + "'; leave out --level");
    }
    return diags;
}

void printTable(const std::vector<DiagInfo>& diags, const DiagTree& tree) {
    size_t width = 0;
    for (const DiagInfo& diag : diags) width = std::max(width, se_output::oneLine(diag.name).size());
    width = std::min(width, kMostNameWidth);
    for (const char* const level : {"basic", "intermediate", "advanced", "debug"}) {
        bool named = false;
        for (const DiagInfo& diag : diags) {
            if (diagLevelOf(diag) != level) continue;
            if (!named) std::cout << level << '\n';
            named = true;
            std::cout << stringPrintf("  %-*s  %-12s %s  %-*s  %s\n", static_cast<int>(width),
                                      se_output::oneLine(diag.name).c_str(), diag.typeText().c_str(),
                                      accessText(diag), static_cast<int>(kValueWidth),
                                      cut(se_output::oneLine(toText(tree.value(diag)))).c_str(),
                                      diag.help.c_str());
        }
    }
}

Json toJson(const std::vector<DiagInfo>& diags, const DiagTree& tree) {
    Json list = Json::array();
    for (const DiagInfo& diag : diags) {
        list.push_back({{"name", diag.name},
                        {"level", diagLevelOf(diag)},
                        {"path", diag.path},
                        {"type", diag.typeText()},
                        {"writable", diag.writable},
                        {"value", tree.value(diag)},
                        {"help", diag.help}});
    }
    return list;
}

void run(const ListOptions& options) {
    superviseEngine(options.engine.supervision);
    const auto tuned = startTuned(options);
    const std::vector<DiagInfo> shown = chosen(options, tuned->tree);
    processWith(options, *tuned);
    if (options.json) {
        printJson(toJson(shown, tuned->tree));
    } else {
        printTable(shown, tuned->tree);
    }
}

}  // namespace

void addDiagsList(CLI::App& diags) {
    CLI::App* const command = diags.add_subcommand("list", "Show diagnostics with type, access, value, help");
    const auto options = std::make_shared<ListOptions>();
    command->add_option("PATTERN", options->pattern, "Names or paths, with * and ? (default: all)")
        ->type_name("");
    command->add_option("--level", options->level, "Only those of a level")
        ->check(CLI::IsMember({"basic", "intermediate", "advanced", "debug"}).description(""))
        ->type_name("basic|intermediate|advanced|debug");
    addRecording(*command, *options);
    addEngineAndTuning(*command, *options);
    command->add_flag("--json", options->json, "The list as JSON");
    command->callback([options] { run(*options); });
}

}  // namespace se_host
