// Random numbers and samples of one input.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace quill::fuzz {

class Random {
  public:
    explicit Random(uint64_t seed) : state_(seed) {}

    // splitmix64.
    uint64_t next() {
        uint64_t x = state_ += 0x9e3779b97f4a7c15u;
        x = (x ^ (x >> 30)) * 0xbf58476d1ce4e5b9u;
        x = (x ^ (x >> 27)) * 0x94d049bb133111ebu;
        return x ^ (x >> 31);
    }

    // 0 to limit - 1.
    unsigned below(unsigned limit) { return static_cast<unsigned>((next() >> 32) * limit >> 32); }
    bool oneIn(unsigned times) { return below(times) == 0; }

    template <size_t kCount>
    int oneOf(const int (&values)[kCount]) {
        return values[below(kCount)];
    }

    // Mostly less than two steps of the kernels, sometimes what engines use.
    int length() {
        if (!oneIn(16)) return static_cast<int>(below(18));
        return static_cast<int>(below(oneIn(16) ? 300 : 70));
    }

    // Any contents, most often with the ends of the range: moderate noise does not show the errors of fixed-point
    // kernels.
    void fill(int16_t* samples, size_t count) {
        const unsigned style = below(8);
        for (size_t i = 0; i < count; i += 4) {
            const uint64_t bits = next();
            for (size_t k = i; k < i + 4 && k < count; ++k) {
                samples[k] = sample(style, static_cast<uint16_t>(bits >> (16 * (k - i))));
            }
        }
    }

  private:
    static int16_t sample(unsigned style, uint16_t bits) {
        switch (style) {
            case 0:
                return INT16_MIN;
            case 1:
                return (bits & 1u) != 0 ? INT16_MAX : INT16_MIN;
            case 2:
                return (bits & 6u) != 0 ? static_cast<int16_t>(bits) : INT16_MIN;
            case 3:
                return static_cast<int16_t>(bits % 5 - 2);
            default:
                return static_cast<int16_t>(bits);
        }
    }

    uint64_t state_;
};

}  // namespace quill::fuzz
