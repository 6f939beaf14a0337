// se_host: the command-line host. Parses, runs one command and turns every failure into one line and
// an exit status.
#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <new>
#include <string>
#include <vector>

#include "host/engine/engine_stage.h"
#include "host/output/descriptor.h"
#include "host/output/errors.h"
#include "host/output/one_line.h"
#include "host/output/temporaries.h"
#include "tools/se_host/commands/commands.h"
#include "tools/se_host/commands/fatal_record.h"
#include "tools/se_host/commands/help_format.h"
#include "tools/se_host/commands/setting_check.h"
#include "tools/se_host/engine/exit_status.h"

namespace {

using se_host::ExitStatus;

constexpr const char* kDescription =
    "Sends recordings of a microphone array through an acoustic engine: eight or more channels in, the\n"
    "talker's voice out. Channels 1 to 7 are the microphones; 16 kHz, other rates are resampled.\n";

constexpr const char* kExamples =
    "Examples:\n"
    "  se_host scene meeting.wav --azimuth 60          a simulated recording to try it with\n"
    "  se_host process meeting.wav talker.wav          through the engine\n"
    "  se_host noise-test noise.txt --plot noise.png   the microphones' noise\n"
    "  se_host info                                    the engine and its capabilities\n"
    "  se_host sweep recordings/ --tuning new.json     many recordings: is this tuning better?\n"
    "'se_host COMMAND --help' explains a command.\n";

std::string footer() {
    std::string text = kExamples;
    text += "Exit status:\n";
    for (const se_host::ExitStatusRow& row : se_host::kExitStatuses) {
        text += "  " + std::to_string(row.status) + "  " + row.meaning + "\n";
    }
    return text;
}

ExitStatus complain(const std::string& text, ExitStatus status) {
    std::cerr << "se_host: " << se_output::oneLine(text) << std::endl;
    return status;
}

// What the parser says, or the word that it took for a command, and where to read on.
std::string usageText(const CLI::App& app, const CLI::ParseError& error) {
    std::string command;
    for (const CLI::App* last = &app; !last->get_subcommands().empty();) {
        last = last->get_subcommands().front();
        command += last->get_name() + " ";
    }
    if (!command.empty()) return std::string(error.what()) + "; see 'se_host " + command + "--help'";
    const std::vector<std::string> words = app.remaining();
    const std::string text = words.empty() ? error.what() : "no command or option '" + words.front() + "'";
    return text + "; see 'se_host --help'";
}

ExitStatus parseAndRun(CLI::App& app, int argc, char** argv) {
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& help) {
        app.exit(help);
    } catch (const CLI::ParseError& error) {
        return complain(usageText(app, error), se_host::kWrongUsage);
    } catch (const se_output::UsageError& error) {
        return complain(error.what(), se_host::kWrongUsage);
    } catch (const se_host::SettingsDiffer& error) {
        return complain(error.what(), se_host::kSettingsDiffer);
    } catch (const se_host::EngineFailure& error) {
        return complain(error.what(), se_host::kEngineEnded);
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& error) {
        return complain(error.what(), se_host::kFailure);
    }
    std::cout.flush();
    if (!std::cout) {
        return complain("cannot write to standard output: it is full or closed", se_host::kFailure);
    }
    return se_host::settingStatus();
}

ExitStatus runHost(int argc, char** argv) {
    se_output::openStandardStreams();
    se_host::installRecordSink();
    se_output::removeTemporaryFilesOnSignals();
    CLI::App app(kDescription, "se_host");
    app.formatter(std::make_shared<se_host::HelpFormat>());
    app.set_version_flag("--version", "se_host " SE_HOST_VERSION);
    app.footer(footer());
    se_host::addCommands(app);
    const ExitStatus status = parseAndRun(app, argc, argv);
    se_host::noteEnd(status);
    return status;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return runHost(argc, argv);
    } catch (const std::bad_alloc&) {
        return complain("out of memory", se_host::kFailure);
    }
}
