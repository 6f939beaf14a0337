#include "tests/kernel_check/scalar_fft/scalar_fft.h"

#include <cstddef>
#include <utility>

#include "tests/kernel_check/scalar_fft/passes.h"

namespace quill::test {
namespace {

using namespace scalar_fft;

constexpr int kFirstFactor = 2;  // place in ifac, behind n and the number of factors

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

// From the last factor to the first.
void scalarForwardFft(int n, float* r, float* wsave, const int* ifac) {
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
void scalarBackwardFft(int n, float* r, float* wsave, const int* ifac) {
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

}  // namespace quill::test
