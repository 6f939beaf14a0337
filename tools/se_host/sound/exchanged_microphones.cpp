#include "tools/se_host/sound/exchanged_microphones.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <complex>
#include <cstddef>
#include <map>
#include <numeric>
#include <vector>

#include "host/health/real_transform.h"
#include "tools/se_host/sound/resample.h"
#include "tools/se_host/sound/windowed_spectrum.h"

namespace se_host {
namespace {

using Complex = std::complex<float>;

constexpr size_t kMicrophones = kArrayMicrophones;
constexpr size_t kFrame = 512;
constexpr size_t kFrames = 80;  // the loudest of the recording
constexpr size_t kFirstBin = 600 * kFrame / kEngineSampleRate;
constexpr size_t kLastBin = 4000 * kFrame / kEngineSampleRate;
constexpr size_t kBins = (kLastBin - kFirstBin) / 2;
constexpr size_t kDirections = 24;
constexpr double kSpeedOfSound = 343e3;  // millimetres a second
// Of responses. Noise of the microphones has 0.17, a talker at 1 m 0.9, in a room 0.45.
constexpr double kNoise = 0.25;
constexpr double kHealthy = 0.8;
constexpr double kBetter = 1.06;  // of what it is; no exchange betters a right order by more than 1.01
constexpr double kAlike = 0.99;   // of the best

using Phases = std::array<std::array<Complex, kBins>, kMicrophones>;  // of a frame, or towards a direction
using Order = std::array<size_t, kMicrophones>;                       // the row that stands at each place

constexpr Order kOtherOrders[] = {
    // Recorded in the order of the engine's rows, and mapped as if it were.
    {0, 2, 1, 6, 3, 4, 5},
    {0, 2, 1, 4, 5, 6, 3},
    // All late or early by one.
    {1, 2, 3, 4, 5, 6, 0},
    {6, 0, 1, 2, 3, 4, 5},
    // The outer ones.
    {0, 2, 3, 4, 5, 6, 1},
    {0, 6, 1, 2, 3, 4, 5},
};

double hertzOf(size_t k) {
    return static_cast<double>(kFirstBin + 2 * k) * kEngineSampleRate / kFrame;
}

// That undo the differences of time of a sound from this direction.
Phases towards(size_t direction, const ArrayFile& array) {
    const double azimuth = 2 * M_PI * static_cast<double>(direction) / kDirections;
    Phases phases;
    for (size_t m = 0; m < kMicrophones; ++m) {
        double lead = 0;
        if (m > 0) {
            const ArrayFile::Place& place = array.placeOf(static_cast<int>(m) + 1);
            lead = place.millimetres * std::cos(azimuth - place.degrees * M_PI / 180) / kSpeedOfSound;
        }
        for (size_t k = 0; k < kBins; ++k) {
            phases[m][k] = std::polar(1.0F, static_cast<float>(-2 * M_PI * hertzOf(k) * lead));
        }
    }
    return phases;
}

// The starts of the loudest frames.
std::vector<size_t> loudestFrames(const std::vector<int16_t>& samples) {
    std::vector<std::pair<double, size_t>> frames;
    for (size_t start = 0; start + kFrame <= samples.size(); start += kFrame / 2) {
        const auto* const frame = samples.data() + start;
        frames.emplace_back(-std::inner_product(frame, frame + kFrame, frame, 0.0), start);
    }
    std::sort(frames.begin(), frames.end());
    frames.resize(std::min(frames.size(), kFrames));
    std::vector<size_t> starts;
    for (const auto& frame : frames) starts.push_back(frame.second);
    return starts;
}

std::vector<Phases> phasesOf(const Recording& recording) {
    RealTransform transform(kFrame);
    const std::vector<double> window = hannWindow(kFrame);
    std::vector<std::vector<int16_t>> rows;
    for (size_t m = 0; m < kMicrophones; ++m)
        rows.push_back(channelOf(recording.microphones, static_cast<int>(m) + 1));
    std::vector<Phases> frames;
    for (const size_t start : loudestFrames(rows[0])) {
        frames.emplace_back();
        for (size_t m = 0; m < kMicrophones; ++m) {
            std::vector<float> samples(kFrame);
            for (size_t i = 0; i < kFrame; ++i)
                samples[i] = static_cast<float>(rows[m][start + i] * window[i]);
            const std::vector<Complex> bins = transform.forward(std::move(samples));
            for (size_t k = 0; k < kBins; ++k) {
                const Complex bin = bins[kFirstBin + 2 * k];
                frames.back()[m][k] = std::abs(bin) > 0 ? bin / std::abs(bin) : Complex(0);
            }
        }
    }
    return frames;
}

// 1 when all of the frame comes from this direction.
double responseOf(const Phases& frame, const Phases& direction, const Order& order) {
    double power = 0;
    for (size_t k = 0; k < kBins; ++k) {
        float re = 0, im = 0;
        for (size_t m = 0; m < kMicrophones; ++m) {
            const Complex a = frame[order[m]][k], b = direction[m][k];
            re += a.real() * b.real() - a.imag() * b.imag();
            im += a.real() * b.imag() + a.imag() * b.real();
        }
        power += double{re * re + im * im};
    }
    return power / (kBins * kMicrophones * kMicrophones);
}

// Mean over the frames, each from its best direction.
double responseOf(const std::vector<Phases>& frames, const std::vector<Phases>& directions,
                  const Order& order) {
    double sum = 0;
    for (const Phases& frame : frames) {
        double best = 0;
        for (const Phases& direction : directions) best = std::max(best, responseOf(frame, direction, order));
        sum += best;
    }
    return sum / static_cast<double>(std::max<size_t>(frames.size(), 1));
}

// With each pair of `order` exchanged.
std::map<MicrophonePair, double> responsesOfPairs(const std::vector<Phases>& frames,
                                                  const std::vector<Phases>& directions, Order order) {
    std::map<MicrophonePair, double> responses;
    for (size_t m = 0; m < kMicrophones; ++m) {
        for (size_t n = 0; n < m; ++n) {
            std::swap(order[m], order[n]);
            responses[{static_cast<int>(n) + 1, static_cast<int>(m) + 1}] =
                responseOf(frames, directions, order);
            std::swap(order[m], order[n]);
        }
    }
    return responses;
}

}  // namespace

ExchangedMicrophones exchangedMicrophones(const Recording& recording, const ArrayFile& array) {
    const std::vector<Phases> frames = phasesOf(recording);
    std::vector<Phases> directions;
    for (size_t d = 0; d < kDirections; ++d) directions.push_back(towards(d, array));
    Order right;
    std::iota(right.begin(), right.end(), size_t{0});
    const double as_it_is = responseOf(frames, directions, right);
    if (as_it_is < kNoise || as_it_is > kHealthy) return {};
    const std::map<MicrophonePair, double> responses = responsesOfPairs(frames, directions, right);
    const auto weaker = [](const auto& a, const auto& b) { return a.second < b.second; };
    const double of_pairs = std::max_element(responses.begin(), responses.end(), weaker)->second;

    std::map<double, const Order*> of_orders;
    for (const Order& other : kOtherOrders) of_orders[responseOf(frames, directions, other)] = &other;
    const double best = std::max(of_pairs, of_orders.rbegin()->first);
    if (best <= kBetter * as_it_is) return {};

    ExchangedMicrophones found;
    for (const auto& [pair, response] : responses) {
        if (response > kAlike * best) found.pairs.push_back(pair);
    }
    if (of_orders.rbegin()->first > kAlike * best) {
        for (const size_t row : *of_orders.rbegin()->second) found.order.push_back(static_cast<int>(row) + 1);
    }
    return found;
}

}  // namespace se_host
