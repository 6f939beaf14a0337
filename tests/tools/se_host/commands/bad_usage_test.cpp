// Invalid command lines.
#include "tests/tools/se_host/host_test.h"

namespace se_host_test {
namespace {

class BadUsage : public HostTest {
  protected:
    BadUsage() {
        writeSound(path("in.wav"), patternedSound(320));
        noteFiles();
    }
};

TEST_F(BadUsage, NoCommand) {
    expectRefused(run({}), kWrongUsage, "A subcommand is required; see 'se_host --help'");
}

TEST_F(BadUsage, AnUnknownCommand) {
    expectRefused(run({"listen"}), kWrongUsage, "no command or option 'listen'; see 'se_host --help'");
}

TEST_F(BadUsage, AnUnknownOption) {
    expectRefused(process({"--louder"}), kWrongUsage, "--louder");
}

TEST_F(BadUsage, NoOutput) {
    expectRefused(run({"process", path("in.wav")}), kWrongUsage, "OUT is required");
}

TEST_F(BadUsage, AnOptionWithoutItsValue) {
    expectRefused(process({"--engine"}), kWrongUsage, "--engine");
}

TEST_F(BadUsage, AFarEndChannelThatIsNoNumber) {
    expectRefused(process({"--far-end-channel", "left"}), kWrongUsage, "left");
}

TEST_F(BadUsage, ASettingWithoutAnEqualsSign) {
    expectRefused(process({"--set", "config/is_harbor"}), kWrongUsage,
                  "'config/is_harbor' is not an assignment; write PATH=VALUE");
}

TEST_F(BadUsage, ASettingWithoutAPath) {
    expectRefused(process({"--set", "=1"}), kWrongUsage, "'=1'");
}

TEST_F(BadUsage, AnUnknownProperty) {
    expectRefused(process({"--set", "config/volume=11"}), kWrongUsage,
                  "no property 'config/volume'; 'se_host info' lists the properties");
}

TEST_F(BadUsage, AValueThatThePropertyCannotHold) {
    expectRefused(process({"--set", "config/is_harbor=perhaps"}), kWrongUsage,
                  "\"config/is_harbor\" takes 0 or 1, not \"perhaps\"");
}

TEST_F(BadUsage, AReadOnlyProperty) {
    expectRefused(process({"--set", "media/signal_essence/signal_essence_library=x"}), kWrongUsage,
                  "\"media/signal_essence/signal_essence_library\" is read-only");
}

}  // namespace
}  // namespace se_host_test
