#include "kernel_check/timing/rounds.h"

#include <algorithm>

#include "tools/core_clock/core_clock.h"

namespace timing {
namespace {

using core_clock::now;
using core_clock::secondsPerCycle;
using core_clock::threadNow;

class Track {
  public:
    // Warms up, too. The shortest of three: an interruption would make a few repetitions seem enough.
    Track(const Repeated& call, double round_seconds) : call_(call) {
        for (times_ = 1;; times_ *= 2) {
            round_seconds_ = std::min({once(), once(), once()});
            if (round_seconds_ >= round_seconds) return;
        }
    }

    double roundSeconds() const { return round_seconds_; }

    // An interrupted clock measurement would make the calls seem fast, so the faster clock counts.
    void round() {
        call_(times_ / 8 + 1);  // the other calls have replaced the cache contents
        const double before = secondsPerCycle();
        double (*const clock)() = times_ > 1 ? now : threadNow;  // long calls are interrupted
        const double begin = clock();
        call_(times_);
        const double each = (clock() - begin) / static_cast<double>(times_);
        const double after = secondsPerCycle();
        seconds_.push_back(each);
        cycles_.push_back(each / std::min(before, after));
    }

    Timing timing() { return {fastestTenth(cycles_), 1e9 * fastestTenth(seconds_)}; }

  private:
    double once() const {
        const double begin = now();
        call_(times_);
        return now() - begin;
    }

    static double fastestTenth(std::vector<double>& values) {
        const auto tenth = values.begin() + static_cast<ptrdiff_t>(values.size() / 10);
        std::nth_element(values.begin(), tenth, values.end());
        return *tenth;
    }

    const Repeated& call_;
    size_t times_ = 1;
    double round_seconds_ = 0;
    std::vector<double> seconds_, cycles_;
};

int numberOf(const Rounds& rounds, const std::vector<Track>& tracks) {
    double once = 0;
    for (const Track& track : tracks) once += track.roundSeconds();
    const double affordable = rounds.together / once;
    return affordable >= rounds.most ? rounds.most : std::max(rounds.fewest, static_cast<int>(affordable));
}

}  // namespace

std::vector<Timing> timeInTurn(const std::vector<Repeated>& calls, const Rounds& rounds) {
    std::vector<Track> tracks;
    tracks.reserve(calls.size());
    for (const Repeated& call : calls) tracks.emplace_back(call, rounds.seconds);
    const int number = numberOf(rounds, tracks);
    for (int round = 0; round < number; ++round) {
        for (Track& track : tracks) track.round();
    }
    std::vector<Timing> timings;
    timings.reserve(calls.size());
    for (Track& track : tracks) timings.push_back(track.timing());
    return timings;
}

}  // namespace timing
