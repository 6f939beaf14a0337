// The frame of a measuring program: the command line, exit codes, messages of one line.
#pragma once

#include <CLI/CLI.hpp>
#include <functional>

namespace program {

enum ExitCode : int { kDone = 0, kFailure = 1, kWrongUsage = 2 };

// Parses the command line and runs `work`, which returns the exit code.
// fails: one line on standard error, after the program's name. Wrong usage (2): what CLI11 finds, and any
//        std::invalid_argument; the line refers to --help. Failure (1): any other std::exception.
int run(CLI::App& app, int argc, char** argv, const std::function<int()>& work);

}  // namespace program
