// `se_host diags`: shows and sets an engine's diagnostics.
#include "tools/se_host/commands/commands.h"

namespace se_host {
namespace {

constexpr const char* kDiagsExamples =
    "An engine is loaded anew for each command: a setting is kept in a tuning, a JSON\n"
    "file, which every command with --tuning applies.\n"
    "Examples:\n"
    "  se_host diags list --level basic\n"
    "  se_host diags list 'senr_*' --recording meeting.wav\n"
    "  se_host diags set senr_nf_weight_factor_q10=200 --save quiet_room.json\n"
    "  se_host process meeting.wav talker.wav --tuning quiet_room.json\n"
    "'se_host diags COMMAND --help' explains a command.";

}  // namespace

void addDiags(CLI::App& app) {
    CLI::App* const diags = app.add_subcommand("diags", "Show and set an engine's diagnostics");
    diags->require_subcommand(1);
    addDiagsList(*diags);
    addDiagsGet(*diags);
    addDiagsSet(*diags);
    addDiagsDump(*diags);
    addDiagsRestore(*diags);
    addDiagsDiff(*diags);
    addDiagsWatch(*diags);
    diags->footer(kDiagsExamples);  // last: subcommands inherit what stands when they are added
}

}  // namespace se_host
