// `se_host sweep merge`: one table of all rows.
#include <iostream>
#include <memory>

#include "tools/se_host/commands/commands.h"
#include "tools/se_host/commands/sweep_steps.h"
#include "tools/se_host/sweep/merge.h"

namespace se_host {

void mergeSweep(const SweepMergeOptions& options) {
    const sweep::Merged merged = sweep::mergeRows(sweep::Folder(options.folder), options.partial);
    if (options.quiet) return;
    std::cout << "wrote " << options.folder << "/results.jsonl, .csv and .sqlite: " << merged.rows << " rows";
    if (merged.failed != 0) std::cout << ", " << merged.failed << " of them failed";
    if (merged.missing != 0) std::cout << "; " << merged.missing << " are missing";
    std::cout << '\n';
}

void addSweepMerge(CLI::App& sweep) {
    CLI::App* const command =
        sweep.add_subcommand("merge", "Write the results of all shards: JSON lines, CSV and SQLite");
    const auto options = std::make_shared<SweepMergeOptions>();
    addSweepFolder(*command, options->folder);
    command->add_flag("--partial", options->partial, "Also when tasks have no row yet: without them");
    command->add_flag("--quiet", options->quiet, "No summary");
    command->footer(
        "The rows are sorted by recording and tuning. The same tasks give the same bytes, whatever computed\n"
        "them.\n"
        "Examples:\n"
        "  se_host sweep merge\n"
        "  sqlite3 sweep/results.sqlite 'SELECT tuning, avg(output_speech_dbfs) FROM results GROUP BY 1'\n");
    command->callback([options] { mergeSweep(*options); });
}

}  // namespace se_host
