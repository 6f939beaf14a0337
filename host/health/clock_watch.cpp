#include "host/health/clock_watch.h"

#include <algorithm>

#include "host/engine/sample_rate.h"

namespace se_host {
namespace {

constexpr int64_t kSecond = 1'000'000'000;
constexpr int64_t kFrame = kSecond / kEngineSampleRate;
constexpr int64_t kPiece = kSecond;
constexpr int64_t kLate = kSecond / 50;
// More than clocks drift in a piece, less than the shortest loss that is heard as a click.
constexpr int64_t kLoss = kSecond / 500;

}  // namespace

void ClockWatch::begin(int64_t offset, int64_t now) {
    least_ = offset;
    piece_began_ = now;
}

void ClockWatch::call(uint64_t nanoseconds, uint64_t frames) {
    const auto now = static_cast<int64_t>(nanoseconds);
    const int64_t offset = now - static_cast<int64_t>(frames) * kFrame;
    if (calls_.get() == 0) {
        reference_ = offset;
        begin(offset, now);
    }
    calls_.add();
    if (offset - reference_ > kLate) late_.add();
    least_ = std::min(least_, offset);
    if (now - piece_began_ < kPiece) return;
    if (least_ - reference_ > kLoss) missing_.add(static_cast<uint64_t>((least_ - reference_) / kFrame));
    reference_ = least_;
    begin(offset, now);
}

}  // namespace se_host
