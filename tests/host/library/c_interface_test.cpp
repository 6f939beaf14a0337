// The border: null pointers, structs of other versions, texts.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>

#include "tests/host/library/opened_host.h"

namespace se_host_library_test {
namespace {

TEST(CInterface, EveryFunctionTakesNull) {
    se_host_options_t options = SE_HOST_OPTIONS_INIT;
    se_host_t* host = nullptr;
    char why[200];
    EXPECT_EQ(se_host_open(nullptr, &host, why, sizeof(why)), SE_HOST_BAD_ARGUMENT);
    EXPECT_STREQ(why, "a pointer is null; give what se_host.h asks for");
    EXPECT_EQ(se_host_open(&options, nullptr, nullptr, 0), SE_HOST_BAD_ARGUMENT);
    se_host_close(nullptr);
    EXPECT_EQ(se_host_latency(nullptr), 0U);
    EXPECT_EQ(se_host_process_f32(nullptr, nullptr, 0, nullptr, 0, nullptr), SE_HOST_BAD_ARGUMENT);
    EXPECT_EQ(se_host_process_planes_f32(nullptr, nullptr, 0, nullptr, 0, nullptr), SE_HOST_BAD_ARGUMENT);
    se_host_clock(nullptr, 0);
    se_host_bypass(nullptr, 1);
    EXPECT_EQ(se_host_set(nullptr, "a", "1", nullptr, 0), SE_HOST_BAD_ARGUMENT);
    EXPECT_EQ(se_host_get(nullptr, "a", nullptr, 0, nullptr), SE_HOST_BAD_ARGUMENT);
    EXPECT_EQ(se_host_setting_count(nullptr), 0U);
    EXPECT_EQ(se_host_setting(nullptr, 0, nullptr), SE_HOST_BAD_ARGUMENT);
    EXPECT_EQ(se_host_load_tuning(nullptr, "a", nullptr, 0), SE_HOST_BAD_ARGUMENT);
    EXPECT_EQ(se_host_save_tuning(nullptr, "a", nullptr, 0), SE_HOST_BAD_ARGUMENT);
    EXPECT_EQ(se_host_health(nullptr, nullptr), SE_HOST_BAD_ARGUMENT);
    EXPECT_EQ(se_host_advice(nullptr, nullptr, 0), 0U);
    EXPECT_STREQ(se_host_engine_build(nullptr), "");
    EXPECT_STREQ(se_host_engine_version(nullptr), "");
}

TEST(CInterface, AnOlderProgramsOptionsGetTheDefaultsOfTheRest) {
    se_host_options_t options = SE_HOST_OPTIONS_INIT;
    options.size = offsetof(se_host_options_t, quantum);
    options.quantum = 160;  // not among the fields that this program knows
    options.far_end_channel = 2000;
    se_host_t* host = nullptr;
    char why[200];
    ASSERT_EQ(se_host_open(&options, &host, why, sizeof(why)), SE_HOST_OK) << why;
    EXPECT_EQ(se_host_latency(host), 159U);
    se_host_close(host);
}

TEST(CInterface, ANewerProgramsOptionsAreReadAsFarAsKnown) {
    struct Newer {
        se_host_options_t options = SE_HOST_OPTIONS_INIT;
        char more[64] = {};
    } newer;
    newer.options.size = sizeof(newer);
    newer.options.quantum = 160;
    se_host_t* host = nullptr;
    ASSERT_EQ(se_host_open(&newer.options, &host, nullptr, 0), SE_HOST_OK);
    EXPECT_EQ(se_host_latency(host), 0U);
    se_host_close(host);
}

TEST(CInterface, OnlyTheFieldsThatAProgramKnowsAreWritten) {
    const Opened host("");
    host.run();
    se_host_health_t health;
    std::memset(&health, 0x55, sizeof(health));
    health.size = offsetof(se_host_health_t, bypassed_blocks);
    ASSERT_EQ(se_host_health(host, &health), SE_HOST_OK);
    EXPECT_EQ(health.size, offsetof(se_host_health_t, bypassed_blocks));
    EXPECT_EQ(health.frames, 160U);
    EXPECT_EQ(health.bypassed_blocks, 0x5555555555555555U);
}

TEST(CInterface, AWhyIsCutToItsBuffer) {
    se_host_options_t options = SE_HOST_OPTIONS_INIT;
    options.sample_rate = 8000;
    se_host_t* host = nullptr;
    char why[12];
    EXPECT_EQ(se_host_open(&options, &host, why, sizeof(why)), SE_HOST_BAD_ARGUMENT);
    EXPECT_STREQ(why, "the engine ");
}

TEST(CInterface, EveryStatusHasAText) {
    for (int status = SE_HOST_OK; status <= SE_HOST_FAILED; ++status) {
        EXPECT_STRNE(se_host_status_text(status), "unknown status");
    }
    EXPECT_STREQ(se_host_status_text(99), "unknown status");
    EXPECT_STREQ(se_host_status_text(-1), "unknown status");
}

}  // namespace
}  // namespace se_host_library_test
