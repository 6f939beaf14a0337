// `se_host info`, as text and as JSON.
#include <algorithm>
#include <filesystem>
#include <iterator>
#include <nlohmann/json.hpp>

#include "tests/tools/se_host/host_test.h"
#include "webrtc_common/se_wrapper/table/engine_table.h"

namespace se_host_test {
namespace {

namespace se = quill::media::se_wrapper;

class Info : public HostTest {
  protected:
    nlohmann::json json(std::vector<std::string> more = {}) {
        more.insert(more.begin(), {"info", "--json"});
        const HostRun result = run(more);
        expectDone(result);
        return nlohmann::json::parse(result.out);
    }

    // For an engine with all optional entry points, or with none.
    void expectAllOptional(const std::string& build, bool present) {
        const nlohmann::json engine = json({"--engine", build})["engine"];
        EXPECT_EQ(engine["optional_entry_points"].size(),
                  std::count_if(std::begin(se::kEngineRows), std::end(se::kEngineRows),
                                [](const se::EngineRow& row) { return !se::isRequired(row.kind); }));
        for (const auto& [name, found] : engine["optional_entry_points"].items()) {
            EXPECT_EQ(found, present) << name;
        }
        EXPECT_EQ(engine["capabilities"],
                  (nlohmann::json{{"beam_forming", present}, {"noise_tests", present}}));
    }
};

TEST_F(Info, NamesTheBuildThatWouldRun) {
    EXPECT_EQ(json()["engine"]["build"], "se_lib_beamv1.14");
    EXPECT_EQ(json({"--device-model"})["engine"]["build"], "se_lib_harborv006");
    EXPECT_EQ(json({"--engine", "se_lib_harborv006"})["engine"]["build"], "se_lib_harborv006");
}

TEST_F(Info, ListsTheBuildsThatThereAre) {
    EXPECT_EQ(json()["folder"], (std::filesystem::path(SE_HOST_PATH).parent_path() / "selibs").string());
    EXPECT_EQ(json()["builds"], (nlohmann::json{"se_lib_beamv1.14", "se_lib_harborv006"}));
}

TEST_F(Info, AFullEngineHasEveryOptionalEntryPoint) {
    expectAllOptional("test_engines/full", true);
}

TEST_F(Info, AMinimalEngineHasNone) {
    expectAllOptional("test_engines/minimal", false);
}

TEST_F(Info, NamesAMissingEntryPoint) {
    const nlohmann::json engine =
        json({"--engine", "test_engines/without_MMIfGetNoiseReductionBypass"})["engine"];
    EXPECT_EQ(engine["optional_entry_points"]["MMIfGetNoiseReductionBypass"], false);
    EXPECT_EQ(engine["optional_entry_points"]["MMIfSetNoiseReductionBypass"], true);
}

TEST_F(Info, TheConvolutionIsTheWidestBuildThatTheProcessorRuns) {
    const nlohmann::json info = json();
    std::string widest;
    for (const char* body : {"ssse3", "avx", "avx2", "avx-vnni", "avx512-vnni"}) {
        if (info["processor_features"][body]) widest = body;
    }
    EXPECT_EQ(info["kernels"]["convolution"], widest);
    EXPECT_NE(run({"info"}).out.find("kernels     convolution " + widest + ", "), std::string::npos);
}

TEST_F(Info, NamesTheBuildsOfTheOtherKernels) {
    const nlohmann::json info = json();
    const bool avx = info["processor_features"]["avx"];
    const bool avx2 = info["processor_features"]["avx2"];
    const std::string real_fft = avx2 ? "avx2" : avx ? "avx" : "sse41";
    const std::string dsp = avx2 ? "avx2" : "sse41";
    EXPECT_EQ(info["kernels"]["real_fft"], real_fft);
    EXPECT_EQ(info["kernels"]["dsp"], dsp);
    EXPECT_NE(run({"info"}).out.find("real_fft " + real_fft + ", dsp " + dsp + "\n"), std::string::npos);
}

TEST_F(Info, ListsThePropertiesThatCanBeSet) {
    const nlohmann::json properties = json({"--device-model"})["properties"];
    EXPECT_EQ(properties["config/is_harbor"],
              (nlohmann::json{{"type", "bool"}, {"value", "1"}, {"read_only", false}}));
    EXPECT_EQ(properties["media/signal_essence/signal_essence_library"],
              (nlohmann::json{{"type", "string"}, {"value", "se_lib_harborv006"}, {"read_only", true}}));
}

TEST_F(Info, TheTextSaysTheSame) {
    const HostRun result = run({"info"});
    expectDone(result);
    for (const char* word :
         {"engine      se_lib_beamv1.14 (", "/selibs\nbuilds      se_lib_beamv1.14, se_lib_harborv006",
          "processor   ssse3", "kernels     convolution ", "MMIfStartNoiseTest",
          "config/is_harbor = 0 (bool)", "signal_essence_library = se_lib_beamv1.14"}) {
        EXPECT_NE(result.out.find(word), std::string::npos) << word << " in\n" << result.out;
    }
}

}  // namespace
}  // namespace se_host_test
