// No block of the engine meets a subnormal number: neither as an operand nor as a result, which the processor
// notes in its floating-point flags. Processors take up to a hundred times longer for one, so that a state
// that decays towards 0 without reaching it would make silence expensive.
#include <xmmintrin.h>

#include <string>
#include <utility>

#include "tests/reference_engine/engine_under_test.h"
#include "tests/reference_engine/signals.h"

using namespace reference_engine_test;

namespace {

constexpr unsigned kSubnormalOperand = 0x02;
constexpr unsigned kSubnormalResult = 0x10;
constexpr size_t kSecond = 100;  // blocks

using Block = int16_t[kBlock];

struct Sound {
    Block far_end = {};
    Block microphones[kMicrophones] = {};
};

class Denormals : public EngineTest {
  protected:
    void fill(int16_t* block, double level_dbfs) {
        const Samples noise = whiteNoise(kBlock, level_dbfs, ++seed_);
        std::copy(noise.begin(), noise.end(), block);
    }

    void fillAll(double far_end_dbfs, double microphones_dbfs) {
        fill(sound_.far_end, far_end_dbfs);
        for (auto& microphone : sound_.microphones) fill(microphone, microphones_dbfs);
    }

    // Blocks that met subnormal numbers are counted.
    void process() {
        Block out;
        const unsigned before = _mm_getcsr();
        _mm_setcsr(before & ~(kSubnormalOperand | kSubnormalResult));
        engine.RcvIfProcessReceivePath(sound_.far_end, out);
        engine.MMIfProcessMicrophones(sound_.microphones[0], sound_.microphones[1], out);
        if ((_mm_getcsr() & (kSubnormalOperand | kSubnormalResult)) != 0) {
            if (met_++ == 0) first_ = blocks_;
        }
        _mm_setcsr(before);
        ++blocks_;
    }

    // Echo and speech that the engine has learnt from.
    void processSpeech(size_t blocks) {
        for (size_t i = 0; i < blocks; ++i) {
            fillAll(-25, -30);
            process();
        }
    }

    void processSilence(size_t blocks) {
        sound_ = {};
        for (size_t i = 0; i < blocks; ++i) process();
    }

    void TearDown() override {
        EXPECT_EQ(met_, 0) << "blocks of " << blocks_ << ", the first is block " << first_;
    }

    Sound sound_;
    uint32_t seed_ = 0;
    size_t blocks_ = 0, first_ = 0;
    int met_ = 0;
};
INSTANTIATE_FOR_EACH_BUILD(Denormals);

// The slowest state decays by 1 % in each block with an active far end and by 3 % in every other one: from full
// scale it passes the smallest normal number after 115 s and 40 s.
constexpr size_t kSlowestDecay = 120 * kSecond;
constexpr size_t kSlowDecay = 45 * kSecond;

}  // namespace

TEST_P(Denormals, AreNotMetInSilence) {
    processSpeech(2 * kSecond);
    processSilence(kSlowDecay);
}

TEST_P(Denormals, AreNotMetWithASilentFarEnd) {
    processSpeech(2 * kSecond);
    sound_ = {};
    for (size_t i = 0; i < kSlowDecay; ++i) {
        for (auto& microphone : sound_.microphones) fill(microphone, -40);
        process();
    }
}

TEST_P(Denormals, AreNotMetWithOneMutedMicrophone) {
    processSpeech(2 * kSecond);
    for (size_t i = 0; i < 10 * kSecond; ++i) {
        fillAll(-30, -40);
        std::fill_n(sound_.microphones[3], kBlock, int16_t{0});
        process();
    }
}

TEST_P(Denormals, AreNotMetWithMutedMicrophones) {
    processSpeech(2 * kSecond);
    sound_ = {};
    for (size_t i = 0; i < kSlowestDecay; ++i) {
        fill(sound_.far_end, -30);
        process();
    }
}

TEST_P(Denormals, AreNotMetInDecayingTails) {
    for (int tail = 0; tail < 20; ++tail) {
        processSpeech(kSecond / 10);
        for (int level = -30; level > -110; --level) {
            fillAll(level, level);
            process();
        }
        processSilence(kSecond);
    }
}

TEST_P(Denormals, AreNotMetAfterImpulses) {
    for (size_t place = 0; place < kBlock; place += 9) {
        sound_ = {};
        sound_.far_end[place] = 32767;
        sound_.microphones[place % kMicrophones][place] = -32768;
        process();
        processSilence(kSecond / 2);
    }
}

TEST_P(Denormals, AreNotMetInLoudSpeechOverAQuietFloor) {
    for (size_t i = 0; i < 20 * kSecond; ++i) {
        const bool loud = i / 50 % 2 == 1;
        fillAll(-100, loud ? -3 : -90);
        process();
    }
}

TEST_P(Denormals, AreNotMetInANoiseTestOfSilence) {
    engine.MMIfStartNoiseTest();
    processSilence(3 * kSecond);
}
