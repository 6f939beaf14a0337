// `se_host check-engine`: whether the wrapper can use an engine build.
#include <filesystem>
#include <memory>

#include "tools/output/errors.h"
#include "tools/se_host/commands/commands.h"
#include "tools/se_host/commands/print_json.h"
#include "tools/se_host/engine/engine_check.h"

namespace se_host {
namespace {

namespace fs = std::filesystem;

constexpr const char* kHelp =
    "The build is opened and not started. The exit code is 0 when it can be used, 1 when it cannot.\n"
    "Example:\n"
    "  se_host check-engine selibs/se_lib_beamv1.14\n";

struct CheckEngineOptions {
    std::string path;
    bool json = false;
};

// The loader would search for a path without a slash in the system's library folders.
quill::DynLibHandle open(const std::string& path) {
    std::error_code error;
    if (!fs::exists(path, error))
        throw se_output::UsageError("no file '" + path + "'; give the path of an engine build");
    std::string reason;
    const quill::DynLibHandle engine = quill::loadPermanentLibrary(fs::absolute(path).string(), &reason);
    if (engine != nullptr) return engine;
    throw se_output::Failure("'" + path + "' cannot be loaded (" + reason +
                             "); it must be a shared library for this machine");
}

void run(const CheckEngineOptions& options) {
    const EngineCheck check = checkEngine(options.path, open(options.path));
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
    command->add_flag("--json", options->json, "The answer as JSON");
    command->footer(kHelp);
    command->callback([options] { run(*options); });
}

}  // namespace se_host
