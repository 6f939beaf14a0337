// Runs the built command-line host as a user would.
#pragma once

#include <string>
#include <vector>

namespace se_host_test {

struct HostRun {
    int exit_code = -1;  // -1: it was ended by a signal
    int signal = 0;
    std::string out;  // standard output
    std::string err;  // standard error

    // Lines on standard error.
    size_t errorLines() const;
};

// Starts bin/se_host, or a copy of it, with these arguments and waits for its end; its outputs go through
// files in `folder`, which are removed afterwards.
HostRun runHost(const std::string& folder, const std::vector<std::string>& arguments,
                const std::string& program = SE_HOST_PATH);

// The same with a terminal as standard error.
HostRun runHostOnTerminal(const std::string& folder, const std::vector<std::string>& arguments);

}  // namespace se_host_test
