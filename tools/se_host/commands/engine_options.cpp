#include "tools/se_host/commands/engine_options.h"

namespace se_host {

void addEngineChoice(CLI::App& command, EngineChoice& options) {
    command
        .add_option("--engine", options.build, "Engine build, a file in selibs/ (default: by device model)")
        ->type_name("NAME");
    command.add_flag("--device-model", options.device_model,
                     "The device is the model with an engine build of its own");
    addSupervision(command, options.supervision);
}

void addArray(CLI::App& command, std::string& array) {
    command
        .add_option(
            "--array", array,
            "The places of the microphones of another array: a text with a line for each of the channels 2 "
            "to 7, of its channel, millimetres from channel 1's microphone and degrees")
        ->type_name("FILE");
}

void addSupervision(CLI::App& command, Supervision& supervision) {
    CLI::Option* const timeout = command.add_option(
        "--engine-timeout", supervision.timeout,
        "End the run when one call of the engine takes this many seconds (default: a warning after 5 s)");
    timeout->type_name("S")->check(CLI::Range(1, 86400).description(""));
    command
        .add_flag("--in-process", supervision.in_process,
                  "Run the engine in this process, for debuggers: what ends the engine ends se_host, too")
        ->excludes(timeout);
}

void addEngineSettings(CLI::App& command, EngineOptions& options) {
    CLI::Option* const engine_routines = command.add_flag_callback(
        "--engine-routines", [&options] { options.routines = Routines::kEngine; },
        "Leave the engine's own signal processing routines in place");
    CLI::Option* const engine_dft = command.add_flag_callback(
        "--engine-dft", [&options] { options.routines = Routines::kEngineDft; },
        "Leave the engine's own Fourier transform in place: all else must give the same output; not with "
        "--engine-routines");
    engine_dft->excludes(engine_routines);
    command
        .add_option("--gain", options.gain,
                    "Receive gain in the engine's units (Q10: 1024 is unity); not with the engine's routines")
        ->type_name("N")
        ->excludes(engine_routines)
        ->excludes(engine_dft);
    command
        .add_option("--echo-safety-factor", options.echo_safety_factor,
                    "Echo safety factor in the engine's units (Q10 in recent builds); not with the "
                    "engine's routines")
        ->type_name("N")
        ->excludes(engine_routines)
        ->excludes(engine_dft);
    command
        .add_option("--set", options.settings,
                    "Set a property of 'se_host info' before processing; repeatable; a bool is 0 or 1")
        ->type_name("PATH=VALUE")
        ->expected(1)
        ->take_all();
}

}  // namespace se_host
