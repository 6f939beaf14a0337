// An audio thread, and others that edit, read and look at the health meanwhile. ThreadSanitizer runs this too.
#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "tests/host/library/opened_host.h"

namespace se_host_library_test {
namespace {

TEST(HostThreads, EditsPourInWhileSoundRuns) {
    ScriptedEngine scripted;
    constexpr int kValues = 20;
    constexpr int kEdits = 4000;
    std::vector<int> diags;
    for (int i = 0; i < kValues; ++i) diags.push_back(scripted.add("value" + std::to_string(i), kInt32));
    scripted.add("array", kFloat32, 50);
    scripted.engine->set_recording(false);
    const Opened host("test_engines/full");
    std::atomic<bool> ended{false};

    std::thread audio([&] {
        while (!ended) host.run();
    });
    std::vector<int> wanted(kValues);
    const auto edit = [&](int parity) {
        for (int i = 0; i < kEdits; ++i) {
            const int value = 2 * (i % (kValues / 2)) + parity;
            const std::string name = "value" + std::to_string(value);
            wanted[static_cast<size_t>(value)] = i + 1;
            se_host_status_t status = SE_HOST_FULL;
            while (status == SE_HOST_FULL) {
                status = host.set(name, std::to_string(i + 1));
                if (status == SE_HOST_FULL) std::this_thread::yield();
            }
            ASSERT_EQ(status, SE_HOST_OK);
            ASSERT_EQ(host.get(name), std::to_string(i + 1));  // its own edit, taken or not
        }
    };
    std::thread even([&] { edit(0); });
    std::thread odd([&] { edit(1); });
    std::thread looking([&] {
        for (int i = 0; i < 200; ++i) {
            host.health();
            host.get("array");
            se_host_bypass(host, i % 2);
        }
    });
    even.join();
    odd.join();
    looking.join();
    ended = true;
    audio.join();
    host.run(SE_HOST_MOST_EDITS / 4 + 1);

    EXPECT_EQ(host.health().edits_applied, 2U * kEdits);
    EXPECT_EQ(host.health().edits_dropped, 0U);
    for (size_t i = 0; i < diags.size(); ++i) {
        EXPECT_EQ(scripted.engine->integer(diags[i]), wanted[i]);
        EXPECT_EQ(host.get("value" + std::to_string(i)), std::to_string(wanted[i]));
    }
}

// A writer of the engine's own: values that the audio thread publishes are whole and in order.
TEST(HostThreads, AReaderSeesWholeValuesInOrder) {
    ScriptedEngine scripted;
    const int array = scripted.add("array", kInt32, 40);
    scripted.engine->set_recording(false);
    const Opened host("test_engines/full");
    std::atomic<bool> ended{false};
    std::thread audio([&] {
        for (int round = 1; !ended; ++round) {
            for (int i = 0; i < 40; ++i) scripted.engine->set_element(array, i, round);
            host.run();
        }
    });
    long last = 0;
    for (int i = 0; i < 2000; ++i) {
        const std::string text = host.get("array");
        const std::string first = text.substr(2, text.find_first_of(", ", 2) - 2);
        std::string whole = "[ " + first;
        for (int element = 1; element < 40; ++element) whole += ", " + first;
        ASSERT_EQ(text, whole + " ]");
        ASSERT_GE(std::stol(first), last);
        last = std::stol(first);
    }
    ended = true;
    audio.join();
}

}  // namespace
}  // namespace se_host_library_test
