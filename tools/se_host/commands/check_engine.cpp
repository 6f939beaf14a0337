// `se_host check-engine`: whether the wrapper can use an engine build.
#include <filesystem>
#include <memory>

#include "host/engine/engine_stage.h"
#include "host/output/errors.h"
#include "tools/se_host/commands/commands.h"
#include "tools/se_host/commands/engine_options.h"
#include "tools/se_host/commands/print_json.h"
#include "tools/se_host/engine/engine_check_output.h"

namespace se_host {
namespace {

namespace fs = std::filesystem;

constexpr const char* kCheckEngineHelp =
    "The build is opened and not started.\n"
    "Example:\n"
    "  se_host check-engine selibs/se_lib_beamv1.14\n";

struct CheckEngineOptions {
    std::string path;
    bool json = false;
    Supervision supervision;
};

// The loader would search for a path without a slash in the system's library folders.
quill::DynLibHandle open(const std::string& path) {
    std::error_code error;
    if (!fs::exists(path, error))
        throw se_output::UsageError("no file '" + path + "'; give the path of an engine build");
    std::string reason;
    const auto load = [&] { return quill::loadPermanentLibrary(fs::absolute(path).string(), &reason); };
    const quill::DynLibHandle engine = callEngine(EngineStage::kLoading, load);
    if (engine != nullptr) return engine;
    throw se_output::Failure("'" + path + "' cannot be loaded (" + reason +
                             "); it must be a shared library for this machine");
}

EngineCheck refusal(const std::string& path, const std::string& objection) {
    EngineCheck check;
    check.path = path;
    check.objection = objection;
    return check;
}

// With --json there is an answer also when the build cannot be opened.
quill::DynLibHandle openOrAnswer(const CheckEngineOptions& options) {
    try {
        return open(options.path);
    } catch (const std::exception& error) {
        if (options.json) printJson(toJson(refusal(options.path, error.what())));
        throw;
    }
}

void run(const CheckEngineOptions& options) {
    Supervision supervision = options.supervision;
    supervision.on_engine_end = [&](const std::string& reason) {
        if (options.json) printJson(toJson(refusal(options.path, reason)));
    };
    superviseEngine(supervision);
    const EngineCheck check = checkEngine(options.path, openOrAnswer(options));
    print(check, options.json);
    if (!check.objection.empty()) {
        throw se_output::Failure("'" + options.path + "' cannot be used: " + check.objection +
                                 "; ask for a complete build");
    }
}

}  // namespace

void addCheckEngine(CLI::App& app) {
    CLI::App* const command = app.add_subcommand("check-engine", "Check whether an engine build can be used");
    const auto options = std::make_shared<CheckEngineOptions>();
    command->add_option("PATH", options->path, "The engine build, a shared library")
        ->required()
        ->type_name("");
    addSupervision(*command, options->supervision);
    command->add_flag("--json", options->json, "The answer as JSON");
    command->footer(kCheckEngineHelp);
    command->callback([options] { run(*options); });
}

}  // namespace se_host
