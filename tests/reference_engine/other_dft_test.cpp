// The engine with another DFT: the definition in double precision, with the same 16-bit conversions. The last
// places of spectra differ, so the output differs within bounds.
#include "tests/reference_engine/engine_under_test.h"
#include "tests/reference_engine/signals.h"
#include "tools/scene/scene.h"

using namespace reference_engine_test;

namespace {

constexpr size_t kSize = 512;  // the size that the engine uses

struct Turns {
    double cosine[kSize], sine[kSize];
    Turns() {
        for (size_t i = 0; i < kSize; ++i) {
            cosine[i] = std::cos(2 * M_PI * static_cast<double>(i) / kSize);
            sine[i] = std::sin(2 * M_PI * static_cast<double>(i) / kSize);
        }
    }
};
const Turns kTurns;
uint16_t g_data_len = 0;

int16_t truncated(double value) {
    return static_cast<int16_t>(value);
}

void init(DftObj_t* /*object*/, uint16_t size, uint16_t data_len) {
    ASSERT_EQ(size, kSize);
    g_data_len = data_len;
}

void forward(DftObj_t* /*object*/, int16_t* in, uint16_t type, uint16_t /*scale*/, int16_t* out,
             uint16_t len) {
    ASSERT_EQ(type, 3);
    ASSERT_GE(len, kSize + 2);
    std::fill(in + g_data_len, in + kSize, int16_t{0});
    for (size_t k = 0; k <= kSize / 2; ++k) {
        double re = 0, im = 0;
        for (size_t j = 0; j < kSize; ++j) {
            re += in[j] * kTurns.cosine[j * k % kSize];
            im -= in[j] * kTurns.sine[j * k % kSize];
        }
        out[2 * k] = truncated(re / kSize);
        out[2 * k + 1] = truncated(im / kSize);
        if (k == 0) out[0] = truncated(re / kSize / 2);
    }
    out[kSize] = static_cast<int16_t>(out[kSize] >> 1);
    out[1] = out[kSize + 1] = 0;
}

uint16_t backward(DftObj_t* /*object*/, int16_t* in, uint16_t type, uint16_t scale, int16_t* out,
                  uint16_t /*len*/) {
    EXPECT_EQ(type, 4);
    for (size_t j = 0; j < kSize; ++j) {
        double sum = in[0] + in[kSize] * (j % 2 == 0 ? 1 : -1);
        for (size_t k = 1; k < kSize / 2; ++k) {
            sum += in[2 * k] * kTurns.cosine[j * k % kSize] - in[2 * k + 1] * kTurns.sine[j * k % kSize];
        }
        out[j] = rounded(std::floor((2 * sum * scale + 512) / 1024));
    }
    return kSize;
}

class OtherDft : public EngineTest {};
INSTANTIATE_FOR_EACH_BUILD(OtherDft);

}  // namespace

// The difference stays 50 dB below the output, and no sample differs by more than 1/256 of the loudest.
TEST_P(OtherDft, ChangesTheOutputByLittle) {
    se_scene::SceneOptions options;
    options.seconds = 3;
    options.array_radius_m = arrayRadiusOf(GetParam());
    options.sensor_noise_dbfs = -50;
    const auto rows = se_scene::makeScene(options).mixture();
    const Samples own = engine.process(rows);

    *engine.InitDftFcnHook = init;
    *engine.FwdDftFcnHook = forward;
    *engine.InvDftFcnHook = backward;
    engine.MMIfInit(0);
    Samples difference = engine.process(rows);
    int largest = 0, peak = 0;
    for (size_t i = 0; i < own.size(); ++i) {
        difference[i] = static_cast<int16_t>(difference[i] - own[i]);
        largest = std::max(largest, std::abs(int{difference[i]}));
        peak = std::max(peak, std::abs(int{own[i]}));
    }
    EXPECT_LT(decibels(powerOf(difference) / powerOf(own)), -50);
    EXPECT_LE(largest, peak / 256);
}
