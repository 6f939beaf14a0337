// The audio path with the reference engine on a thread whose stack is as small as that of some hosts' audio threads.
#include <gtest/gtest.h>
#include <pthread.h>
#include <sys/mman.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include "common/properties.h"
#include "tests/support/log_capture.h"
#include "webrtc_common/se_wrapper.h"

namespace se = quill::media::se_wrapper;

namespace {

constexpr size_t kStack = 64 * 1024;  // of a thread, with the thread library's own share
constexpr size_t kPage = 4096;
constexpr std::byte kPaint{0xA5};
constexpr uint32_t kChannels = 8;

// A thread's stack with a page without access below it.
class Stack {
  public:
    Stack()
        : whole_(
              ::mmap(nullptr, kPage + kStack, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0)) {
        if (whole_ == MAP_FAILED || ::mprotect(whole_, kPage, PROT_NONE) != 0)
            throw std::runtime_error("no memory for a stack");
        std::memset(lowest(), static_cast<int>(kPaint), kStack);
    }
    ~Stack() { ::munmap(whole_, kPage + kStack); }
    Stack(const Stack&) = delete;
    Stack& operator=(const Stack&) = delete;

    std::byte* lowest() const { return static_cast<std::byte*>(whole_) + kPage; }
    size_t used() const {
        size_t untouched = 0;
        while (untouched < kStack && lowest()[untouched] == kPaint) ++untouched;
        return kStack - untouched;
    }

  private:
    void* whole_;
};

void run(const Stack& stack, void* (*body)(void*), void* argument) {
    pthread_attr_t attributes;
    pthread_t thread;
    ASSERT_EQ(0, pthread_attr_init(&attributes));
    ASSERT_EQ(0, pthread_attr_setstack(&attributes, stack.lowest(), kStack));
    ASSERT_EQ(0, pthread_create(&thread, &attributes, body, argument));
    ASSERT_EQ(0, pthread_join(thread, nullptr));
    pthread_attr_destroy(&attributes);
}

// Noise from the loudspeaker and its echo at the microphones, one block after the other.
struct Call {
    int16_t far_end[se::BLOCK_SIZE] = {};
    int16_t played[se::BLOCK_SIZE] = {};
    int16_t interleaved[se::BLOCK_SIZE * kChannels] = {};
    int16_t output[se::BLOCK_SIZE] = {};
    std::minstd_rand random{1};

    int noise(int peak) { return std::uniform_int_distribution<int>(-peak, peak)(random); }

    void processBlocks(int count) {
        for (int block = 0; block < count; ++block) {
            for (int16_t& sample : far_end) sample = static_cast<int16_t>(noise(8000));
            se::RcvIfProcessReceivePath(far_end, played);
            for (uint32_t i = 0; i < se::BLOCK_SIZE; ++i) {
                for (uint32_t channel = 0; channel < kChannels; ++channel)
                    interleaved[i * kChannels + channel] = static_cast<int16_t>(played[i] / 4 + noise(50));
            }
            se::processBlock(kChannels, interleaved, se::BLOCK_SIZE, output, true);
            se::processBlock(kChannels, interleaved, se::BLOCK_SIZE, output, false);
        }
    }
};

class SmallStack : public testing::TestWithParam<const char*> {
  protected:
    void SetUp() override {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
        GTEST_SKIP() << "sanitizers widen every frame";
#endif
        const quill::test::ScopedLogCapture no_load_notice(2);
        quill::initStaticProperties(quill::PropertyNode::createRoot());
        se::p_signal_essence_library.node()->set<std::string>(GetParam());
        se::initSignalEssence();
    }
    Call call_;
};
INSTANTIATE_TEST_SUITE_P(EachBuild, SmallStack, testing::Values("se_lib_beamv1.14", "se_lib_harborv006"),
                         [](const auto& build) {
                             return build.param == std::string("se_lib_harborv006") ? "DeviceModel"
                                                                                    : "BeamForming";
                         });

// Long enough for the echo canceller to fill every partition, and for each of the engine's slower routines.
TEST_P(SmallStack, HoldsTheAudioPath) {
    const Stack stack;
    run(
        stack, [](void* call) -> void* { return static_cast<Call*>(call)->processBlocks(300), nullptr; },
        &call_);
    RecordProperty("bytes", static_cast<int>(stack.used()));
    // The header's promise; what is left is for the host's own frames.
    EXPECT_LE(stack.used(), size_t{48} * 1024);
    EXPECT_GT(stack.used(), size_t{8} * 1024) << "the measurement sees nothing";
}

}  // namespace
