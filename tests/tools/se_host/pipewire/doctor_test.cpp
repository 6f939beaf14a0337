// `se_host doctor` on a dump of PipeWire, recorded while the echo canceller worked, in which one thing at a time is changed.
#include <filesystem>
#include <fstream>
#include <functional>
#include <nlohmann/json.hpp>

#include "tests/tools/se_host/host_test.h"

namespace se_host_test {
namespace {

using Json = nlohmann::json;

class Doctor : public HostTest {
  protected:
    Doctor() { std::ifstream(SE_HOST_DUMPS "/working.json") >> dump; }

    HostRun doctor() {
        writeText("dump.json", dump.dump());
        return run({"doctor", path("dump.json")});
    }

    // One line with this text, and how many things are wrong.
    void expectFinding(const std::string& mention) {
        const HostRun result = doctor();
        EXPECT_EQ(result.exit_code, kFailure);
        EXPECT_EQ(result.err, "se_host: 1 thing is wrong; do what is written above\n");
        EXPECT_NE(result.out.find(mention), std::string::npos) << result.out;
    }

    Json& node(const std::string& name) {
        for (Json& object : dump) {
            if (object["type"] == "PipeWire:Interface:Node" && object["info"]["props"]["node.name"] == name)
                return object;
        }
        throw std::runtime_error("the dump has no node " + name);
    }

    void removeIf(const std::function<bool(const Json&)>& condition) {
        Json kept = Json::array();
        for (const Json& object : dump) {
            if (!condition(object)) kept.push_back(object);
        }
        dump = kept;
    }

    // All but `kept` of the links with this end: "input-node-id" or "output-node-id".
    void removeLinks(const std::string& name, const char* end, int kept = 0) {
        const Json id = node(name)["id"];
        removeIf([&](const Json& object) {
            return object["type"] == "PipeWire:Interface:Link" && object["info"][end] == id && kept-- <= 0;
        });
    }

    Json& setting(const std::string& key) {
        for (Json& object : dump) {
            if (object["type"] != "PipeWire:Interface:Metadata" ||
                object["props"]["metadata.name"] != "settings")
                continue;
            for (Json& row : object["metadata"]) {
                if (row["key"] == key) return row["value"];
            }
        }
        throw std::runtime_error("the dump has no setting " + key);
    }

    Json dump;
};

TEST_F(Doctor, FindsNothingWhereAllWorks) {
    const HostRun result = doctor();
    expectDone(result);
    EXPECT_EQ(result.out, "nothing is wrong\n");
}

TEST_F(Doctor, ReadsStandardInput) {
    writeText("dump.json", dump.dump());
    const HostRun result = shell("se_host doctor - < dump.json");
    EXPECT_EQ(result.out, "nothing is wrong\n") << result.err;
}

TEST_F(Doctor, SaysThatTheCancellerDoesNotRun) {
    removeIf([](const Json& object) {
        return object["type"] == "PipeWire:Interface:Node" &&
               object["info"]["props"].value("node.name", "").rfind("se_echo_cancel", 0) == 0;
    });
    expectFinding("systemctl --user start se-echo-cancel");
}

TEST_F(Doctor, SaysThatNoMicrophoneIsLinked) {
    removeLinks("microphones", "input-node-id");
    removeLinks("se_echo_cancel_capture", "input-node-id");
    expectFinding("target.object into capture.props");
}

TEST_F(Doctor, SaysThatChannelsAreMissing) {
    removeLinks("se_echo_cancel_capture", "input-node-id", 2);
    expectFinding("only 2 channels");
}

TEST_F(Doctor, SaysThatNobodyRecords) {
    removeLinks("se_echo_cancel_microphone", "output-node-id");
    expectFinding("no program records 'Microphone without echo'");
}

TEST_F(Doctor, SaysThatThereIsNoLoudspeaker) {
    removeLinks("se_echo_cancel_playback", "output-node-id");
    expectFinding("target.object into playback.props");
}

TEST_F(Doctor, SaysWhichProgramPlaysPastTheCanceller) {
    Json program = node("loudspeaker");
    program["id"] = 9000;
    program["info"]["props"] = {{"node.name", "browser"}, {"media.class", "Stream/Output/Audio"}};
    Json link = {{"id", 9001}, {"type", "PipeWire:Interface:Link"}};
    link["info"] = {{"output-node-id", 9000}, {"input-node-id", node("loudspeaker")["id"]}};
    dump.push_back(program);
    dump.push_back(link);
    expectFinding("'browser' plays to 'loudspeaker', past the canceller");
}

TEST_F(Doctor, SaysThatTheCycleIsTooLong) {
    setting("clock.min-quantum") = 2048;
    expectFinding("write node.latency = 800/16000");
}

TEST_F(Doctor, SaysThatAForcedCycleIsTooLong) {
    setting("clock.force-quantum") = 4096;
    expectFinding("a cycle of the sound graph is 85.3 ms");
}

TEST_F(Doctor, RepeatsWhatTheCancellerFound) {
    for (Json& props : node("se_echo_cancel_capture")["info"]["params"]["Props"]) {
        Json& params = props["params"];
        for (size_t i = 0; params.is_array() && i + 1 < params.size(); i += 2) {
            if (params[i] == "se.advice") params[i + 1] = "microphone 3 clips (5 samples); lower its gain";
        }
    }
    expectFinding("microphone 3 clips (5 samples); lower its gain\n");
}

TEST_F(Doctor, PassesOverWhatItDoesNotKnow) {
    for (const char* text : {"null", "[]", "{}", "3"}) dump.push_back(Json::parse(text));
    dump.push_back({{"type", "PipeWire:Interface:Node"}, {"info", 3}});
    dump.push_back({{"type", "PipeWire:Interface:Node"}, {"info", {{"props", "x"}, {"params", 5}}}});
    EXPECT_EQ(doctor().out, "nothing is wrong\n");
}

TEST_F(Doctor, RefusesWhatIsNoDump) {
    writeText("dump.json", "{ not JSON");
    noteFiles();
    expectRefused(run({"doctor", path("dump.json")}), kFailure, "is no dump of PipeWire");
}

TEST_F(Doctor, RefusesAFileThatThereIsNot) {
    noteFiles();
    expectRefused(run({"doctor", path("nothing.json")}), kFailure, "nothing.json");
}

TEST_F(Doctor, SaysWhatToInstallWithoutPipeWire) {
    const HostRun result = shell("PATH=/nowhere se_host doctor");
    EXPECT_EQ(result.exit_code, kFailure);
    EXPECT_NE(result.err.find("apt-get install pipewire-bin"), std::string::npos) << result.err;
}

}  // namespace
}  // namespace se_host_test
