// The real FFT: factors, twiddle factors and the sequence of passes.
// Threads: any.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

#include "webrtc_common/fftpack/fftpack.h"
#include "webrtc_common/fftpack/passes.h"

namespace quill::fftpack {
namespace {

constexpr int kFirstFactor = 2;  // place in ifac, behind n and the number of factors

// 4, 2, 3, 5, then the odd numbers: the candidate after the one at `index`.
int candidate(int index) {
    constexpr int kFirst[] = {4, 2, 3, 5};
    return index < 4 ? kFirst[index] : 2 * index - 1;
}

void factorise(int n, int* ifac) {
    int* const factors = ifac + kFirstFactor;
    int count = 0;
    int rest = n;
    for (int index = 0; rest > 1; ++index) {
        const int factor = candidate(index);
        for (; rest % factor == 0; rest /= factor) {
            factors[count++] = factor;
            if (factor == 2) std::rotate(factors, factors + count - 1, factors + count);  // to the front
        }
    }
    ifac[0] = n;
    ifac[1] = count;
}

// Every angle is a product of floats, as published; its cosine and sine are those of that float. Angles of
// higher precision would change many results in their last bits.
void fillTwiddles(int n, const int* ifac, float* twiddles) {
    constexpr float kTwoPi = 6.28318530717958647692f;
    const float unit = kTwoPi / static_cast<float>(n);
    float* row = twiddles;
    int groups = 1;
    for (int f = 0; f < ifac[1] - 1; ++f) {  // rows of width 1, behind the last factor, hold no pair
        const int radix = ifac[kFirstFactor + f];
        const int width = n / (groups * radix);
        for (int j = 1; j < radix; ++j, row += width) {
            const float step = static_cast<float>(j * groups) * unit;
            float count = 0.0f;
            for (int m = 0; m + 2 < width; m += 2) {
                count += 1.0f;
                const double angle = static_cast<double>(count * step);
                row[m] = static_cast<float>(std::cos(angle));
                row[m + 1] = static_cast<float>(std::sin(angle));
            }
        }
        groups *= radix;
    }
}

Pass& forwardPass(int radix) {
    return radix == 4 ? forward4 : radix == 2 ? forward2 : forwardGeneral;
}

Pass& backwardPass(int radix) {
    return radix == 4 ? backward4 : radix == 2 ? backward2 : radix == 3 ? backward3 : backwardGeneral;
}

// Data that a pass moves to and fro between the caller's array and the scratch.
struct PingPong {
    float* data;
    float* scratch;
    float* from = data;
    float* to = scratch;

    void run(Pass& pass, const Stage& stage) {
        pass(stage, from, to);
        std::swap(from, to);
    }
    void finish(std::size_t n) const {
        if (from == data) return;
        for (std::size_t i = 0; i < n; ++i) data[i] = from[i];
    }
};

}  // namespace
}  // namespace quill::fftpack

using namespace quill::fftpack;

void __ogg_fdrffti(int n, float* wsave, int* ifac) {
    if (n <= 1) return;
    factorise(n, ifac);
    fillTwiddles(n, ifac, wsave + n);
}

// From the last factor to the first.
void __ogg_fdrfftf(int n, float* r, float* wsave, int* ifac) {
    if (n <= 1) return;
    const auto length = static_cast<std::size_t>(n);
    PingPong buffers{r, wsave};
    Stage stage{0, length, 1, wsave + 2 * length - 1};
    for (int f = ifac[1] - 1; f >= 0; --f) {
        const int radix = ifac[kFirstFactor + f];
        stage.radix = static_cast<std::size_t>(radix);
        stage.groups /= stage.radix;
        stage.twiddles -= (stage.radix - 1) * stage.width;
        buffers.run(forwardPass(radix), stage);
        stage.width *= stage.radix;
    }
    buffers.finish(length);
}

// From the first factor to the last.
void __ogg_fdrfftb(int n, float* r, float* wsave, int* ifac) {
    if (n <= 1) return;
    const auto length = static_cast<std::size_t>(n);
    PingPong buffers{r, wsave};
    Stage stage{0, 1, length, wsave + length};
    for (int f = 0; f < ifac[1]; ++f) {
        const int radix = ifac[kFirstFactor + f];
        stage.radix = static_cast<std::size_t>(radix);
        stage.width /= stage.radix;
        buffers.run(backwardPass(radix), stage);
        stage.twiddles += (stage.radix - 1) * stage.width;
        stage.groups *= stage.radix;
    }
    buffers.finish(length);
}
