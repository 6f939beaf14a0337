#include "kernel_check/problem/fillers.h"

#include <cmath>
#include <cstring>
#include <vector>

namespace quill::test {
namespace {

template <int kValue>
void constant(int16_t* data, size_t count, std::mt19937&) {
    for (size_t i = 0; i < count; ++i) data[i] = kValue;
}

void alternatingExtremes(int16_t* data, size_t count, std::mt19937& random) {
    const size_t phase = random() & 1u;
    for (size_t i = 0; i < count; ++i) data[i] = (i + phase) % 2 == 0 ? INT16_MIN : INT16_MAX;
}

void uniform(int16_t* data, size_t count, std::mt19937& random) {
    for (size_t i = 0; i < count; ++i) data[i] = static_cast<int16_t>(random() & 0xffffu);
}

void extremesInNoise(int16_t* data, size_t count, std::mt19937& random) {
    uniform(data, count, random);
    for (size_t i = 0; i < count; ++i) {
        if (random() % 4 == 0) data[i] = random() % 2 == 0 ? INT16_MIN : INT16_MAX;
    }
}

void ramp(int16_t* data, size_t count, std::mt19937& random) {
    const size_t first = random();
    const size_t step = random() % 512;
    for (size_t i = 0; i < count; ++i) {
        data[i] = static_cast<int16_t>((first + step * i) & 0xffffu);
    }
}

}  // namespace

const Filler kFillers[kNumFillers] = {
    {"zeros", constant<0>},
    {"ones", constant<1>},
    {"all -32768", constant<INT16_MIN>},
    {"all 32767", constant<INT16_MAX>},
    {"alternating extremes", alternatingExtremes},
    {"extremes in noise", extremesInNoise},
    {"ramp", ramp},
    {"uniform", uniform},
};

const Filler& kUniform = kFillers[7];

void fillWithSampleValues(float* data, size_t count, std::mt19937& random) {
    std::vector<int16_t> samples(count);
    kFillers[random() % kNumFillers].fill(samples.data(), count, random);
    for (size_t i = 0; i < count; ++i) data[i] = static_cast<float>(samples[i]);
}

void fillWithAnyFloats(float* data, size_t count, std::mt19937& random) {
    constexpr float kLimits[] = {0.0f,        0.5f,          1.0f,          32767.0f,      32768.0f, 65536.0f,
                                 33554432.0f, 2147483520.0f, 2147483648.0f, 4294967296.0f, INFINITY, NAN};
    for (size_t i = 0; i < count; ++i) {
        const auto bits = static_cast<uint32_t>(random());
        std::memcpy(&data[i], &bits, sizeof bits);
        if (random() % 4 == 0) continue;
        const float limit =
            random() % 2 == 0 ? kLimits[random() % std::size(kLimits)] : static_cast<float>(random() % 65536);
        const float near = limit + static_cast<float>(random() % 257) / 128.0f - 1.0f;
        data[i] = random() % 2 == 0 ? near : -near;
    }
}

}  // namespace quill::test
