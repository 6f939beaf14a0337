#include "tools/scene/room_decay.h"

namespace se_scene {

namespace {

constexpr double kStep = 0.001;  // seconds

// Energy that arrives in each time step, by number of reflections, with perfectly reflecting walls.
using EnergyTable = std::vector<std::vector<double>>;

EnergyTable energyOfImages(const RoomSize& room, double seconds, const Point& source, const Point& listener) {
    EnergyTable table(static_cast<size_t>(seconds / kStep) + 1);
    const auto put = [&table](const Point& image, int reflections) {
        const double distance = length(image);
        auto& row = table[static_cast<size_t>(distance / kSpeedOfSound / kStep)];
        const auto count = static_cast<size_t>(reflections);
        if (row.size() <= count) row.resize(count + 1);
        row[count] += 1 / (distance * distance);
    };
    visitImages(room, source, listener, seconds * kSpeedOfSound, put);
    return table;
}

double reverberationWith(const EnergyTable& table, double reflection) {
    std::vector<double> energy;
    for (const auto& row : table) {
        double sum = 0;
        for (size_t count = row.size(); count-- > 0;) sum = sum * reflection * reflection + row[count];
        energy.push_back(sum);
    }
    return reverberationTime(energy, kStep);
}

// The energy still to come at each step, in dB relative to all of it.
std::vector<double> decayCurve(std::vector<double> energy) {
    for (size_t i = energy.size() - 1; i-- > 0;) energy[i] += energy[i + 1];
    const double whole = energy.front();
    for (double& value : energy) value = 10 * std::log10(value / whole);
    return energy;
}

}  // namespace

double reverberationTime(const std::vector<double>& energy, double step_s) {
    // A straight line through the curve, by least squares.
    double n = 0, t = 0, tt = 0, d = 0, td = 0;
    const std::vector<double> curve = decayCurve(energy);
    for (size_t i = 0; i < curve.size(); ++i) {
        if (curve[i] > -5 || curve[i] < -35) continue;
        const double time = static_cast<double>(i) * step_s;
        n += 1;
        t += time;
        tt += time * time;
        d += curve[i];
        td += time * curve[i];
    }
    const double spread = n * tt - t * t;
    return spread > 0 ? -60 * spread / (n * td - t * d) : 0;
}

double reflectionFor(const RoomSize& room, double reverberation_s, const Point& source,
                     const Point& listener) {
    const EnergyTable table = energyOfImages(room, reverberation_s, source, listener);
    double low = 0;
    double high = 1;
    for (int halvings = 0; halvings < 30; ++halvings) {
        const double middle = (low + high) / 2;
        (reverberationWith(table, middle) < reverberation_s ? low : high) = middle;
    }
    return (low + high) / 2;
}

}  // namespace se_scene
