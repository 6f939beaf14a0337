// Shared by the tests of the command-line host: a folder for each test, files in it, and runs of the host.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/tools/se_host/run_host.h"
#include "tests/tools/se_host/sound_files.h"

namespace se_host_test {

class HostTest : public ::testing::Test {
  protected:
    HostTest();
    ~HostTest() override;

    // A path in the test's folder.
    std::string path(const std::string& name) const { return folder_ + "/" + name; }
    // Names of the files in the folder, sorted.
    std::vector<std::string> files() const;

    void writeText(const std::string& name, const std::string& text) const;

    // Runs the host; the words are its arguments.
    HostRun run(const std::vector<std::string>& arguments) const { return runHost(folder_, arguments); }
    HostRun runOnTerminal(const std::vector<std::string>& arguments) const {
        return runHostOnTerminal(folder_, arguments);
    }
    // A script of the shell in the folder; `se_host` is the host.
    HostRun shell(const std::string& script) const;
    // A copy of the host in the folder "copy/bin", where it finds its libraries and no engines.
    HostRun runCopy(const std::vector<std::string>& arguments) const;
    // `se_host process in.wav out.wav` in the folder, with more arguments.
    HostRun process(const std::vector<std::string>& more = {}) const;

    // The host succeeded and printed no error.
    void expectDone(const HostRun& run) const;
    // The host refused: this exit code, one error line that contains `mention`, nothing on standard output,
    // and the folder holds the same files as before the run.
    void expectRefused(const HostRun& run, int exit_code, const std::string& mention) const;

    // Records the present files; expectRefused compares with them.
    void noteFiles() { before_ = files(); }

  private:
    std::string folder_;
    std::vector<std::string> before_;
};

// Exit codes of the host.
inline constexpr int kFailure = 1;
inline constexpr int kWrongUsage = 2;
inline constexpr int kSettingsDiffer = 3;
inline constexpr int kEngineEnded = 4;

}  // namespace se_host_test
