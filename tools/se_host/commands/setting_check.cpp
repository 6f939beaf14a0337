#include "tools/se_host/commands/setting_check.h"

#include <iostream>

#include "host/output/one_line.h"

namespace se_host {
namespace {

ExitStatus g_status = kDone;

}  // namespace

void addOnDifference(CLI::App& command, OnDifference& on_difference) {
    CLI::Option* const strict = command.add_flag_callback(
        "--strict", [&on_difference] { on_difference = OnDifference::kEnd; },
        "A setting that the engine does not hold as asked for ends the run, and nothing is written");
    command
        .add_flag_callback(
            "--lenient", [&on_difference] { on_difference = OnDifference::kAccept; },
            "Such a setting is a warning, and the exit status is 0; not with --strict")
        ->excludes(strict);
}

void printWarnings(const std::vector<std::string>& lines) {
    for (const std::string& line : lines) std::cerr << "se_host: " << se_output::oneLine(line) << std::endl;
}

void settingsDiffer(OnDifference on_difference) {
    if (on_difference == OnDifference::kAccept) return;
    g_status = kSettingsDiffer;
    if (on_difference == OnDifference::kEnd) {
        throw SettingsDiffer("nothing is written, because of --strict; correct the settings");
    }
}

ExitStatus settingStatus() {
    return g_status;
}

}  // namespace se_host
