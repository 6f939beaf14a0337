// The plain DFT routines, reached through the hook variables.
#include <complex>

#include "tests/reference_engine/engine_under_test.h"
#include "tests/reference_engine/signals.h"

using namespace reference_engine_test;

namespace {

constexpr uint16_t kPlain = 1, kDataAtEnd = 2, kDataAtStart = 3, kInverse = 4;

class PlainDft : public testing::TestWithParam<Build> {
  protected:
    PlainDft() : engine(GetParam()) {}

    void prepare(uint16_t size, uint16_t data_len) {
        size_ = size;
        (*engine.InitDftFcnHook)(&object_, size, data_len);
    }
    Samples forward(Samples& block, uint16_t type = kPlain) {
        Samples spectrum(size_t{size_} + 2, 99);
        (*engine.FwdDftFcnHook)(&object_, block.data(), type, 1024, spectrum.data(),
                                static_cast<uint16_t>(size_ + 2));
        return spectrum;
    }
    Samples backward(Samples& spectrum, uint16_t gain_q10) {
        Samples block(size_, 99);
        EXPECT_EQ((*engine.InvDftFcnHook)(&object_, spectrum.data(), kInverse, gain_q10, block.data(), 0),
                  size_);
        return block;
    }

    EngineUnderTest engine;

  private:
    uint16_t size_ = 0;
    DftObj_t object_ = {};
};
INSTANTIATE_FOR_EACH_BUILD(PlainDft);

std::complex<double> bin(const Samples& block, size_t k) {
    std::complex<double> sum = 0;
    const double n = static_cast<double>(block.size());
    for (size_t j = 0; j < block.size(); ++j) {
        sum += std::polar(double{1} * block[j], -2 * M_PI * static_cast<double>(j * k % block.size()) / n);
    }
    return sum / n;
}

}  // namespace

TEST_P(PlainDft, SpreadsAnImpulseOverAllBins) {
    prepare(256, 256);
    Samples impulse(256, 0);
    impulse[0] = 32767;
    Samples expected(258, 0);
    for (size_t k = 1; k < 128; ++k) expected[2 * k] = 127;
    expected[0] = expected[256] = 63;
    EXPECT_EQ(forward(impulse), expected);
}

TEST_P(PlainDft, AgreesWithTheDefinitionForEachSize) {
    for (uint16_t size = 4; size <= 1024; size = static_cast<uint16_t>(2 * size)) {
        prepare(size, size);
        Samples block = whiteNoise(size, -10, size);
        const Samples original = block;
        const Samples spectrum = forward(block);
        for (size_t k = 1; k < size / 2u; ++k) {
            EXPECT_NEAR(spectrum[2 * k], bin(original, k).real(), 1.01) << size << " bin " << k;
            EXPECT_NEAR(spectrum[2 * k + 1], bin(original, k).imag(), 1.01) << size << " bin " << k;
        }
    }
}

TEST_P(PlainDft, ZeroesTheStartWhenTheDataIsAtTheEnd) {
    prepare(256, 160);
    Samples block(256, 1000);
    forward(block, kDataAtEnd);
    Samples expected(256, 1000);
    std::fill(expected.begin(), expected.begin() + 96, int16_t{0});
    EXPECT_EQ(block, expected);
}

TEST_P(PlainDft, ZeroesTheEndWhenTheDataIsAtTheStart) {
    prepare(256, 160);
    Samples block(256, 1000);
    forward(block, kDataAtStart);
    Samples expected(256, 1000);
    std::fill(expected.begin() + 160, expected.end(), int16_t{0});
    EXPECT_EQ(block, expected);
}

TEST_P(PlainDft, ReconstructsTheSignal) {
    prepare(512, 512);
    Samples block = whiteNoise(512, -10, 3);
    Samples spectrum = forward(block);
    const Samples back = backward(spectrum, 1024);
    double error = 0;
    for (size_t i = 0; i < 512; ++i) error += std::pow(block[i] - back[i], 2);
    EXPECT_LT(std::sqrt(error / 512), 20);  // each part of each bin is truncated by up to one unit
}

TEST_P(PlainDft, SaturatesInTheInverse) {
    prepare(256, 256);
    Samples block = square(256, 64);
    Samples spectrum = forward(block);
    const Samples back = backward(spectrum, 2048);
    EXPECT_EQ(back[16], 32767);
    EXPECT_EQ(back[48], -32768);
}

TEST_P(PlainDft, HalvesNyquistDownwardsAndDcTowardsZero) {
    prepare(4, 4);
    Samples minus_dc = {-2, -2, -2, -1};  // the mean is -1.75
    EXPECT_EQ(forward(minus_dc)[0], 0);
    Samples minus_nyquist = {-2, 2, -2, 1};  // -1.75 at Nyquist
    EXPECT_EQ(forward(minus_nyquist)[4], -1);
}
