// Included by one file for each instruction set. Static functions only, so that no two builds are confused by the linker.
// The transform: pairs of samples are the complex values of a transform of half the size, computed in radix 4 after one
// step in radix 4 or 8 that needs no twiddles (Cooley and Tukey 1965; the packing of real data: Press et al.,
// Numerical Recipes, "FFT of real functions").
#include <cstddef>

#include "reference_engine/lanes/lane_bin.inl.h"
#include "reference_engine/lanes/lane_kernels.h"

namespace reference_engine {
namespace {

struct FourBins {
    Bin bin[4];
};

// The transform of four values.
inline FourBins transformFour(const Bin& a, const Bin& b, const Bin& c, const Bin& d) {
    const Bin even_sum = a + c, even_gap = a - c;
    const Bin odd_sum = b + d, odd_gap = timesMinusI(b - d);
    return {{even_sum + odd_sum, even_gap + odd_gap, even_sum - odd_sum, even_gap - odd_gap}};
}

// Of eight values: two of four, the second of which is turned by an eighth of a circle more each.
inline void transformEight(const Bin (&from)[8], LaneBin* to) {
    constexpr float kHalfRoot = 0.70710678f;
    const FourBins even = transformFour(from[0], from[2], from[4], from[6]);
    const FourBins odd = transformFour(from[1], from[3], from[5], from[7]);
    const FourBins turns = {{odd.bin[0], turned(odd.bin[1], turnOf(kHalfRoot, -kHalfRoot)),
                             timesMinusI(odd.bin[2]), turned(odd.bin[3], turnOf(-kHalfRoot, -kHalfRoot))}};
    for (int i = 0; i < 4; ++i) {
        store(even.bin[i] + turns.bin[i], to + i);
        store(even.bin[i] - turns.bin[i], to + i + 4);
    }
}

// The first step of the transform, without twiddles. `load` returns the value of a place.
template <class Load>
inline __attribute__((always_inline)) int firstStep(int half, const Load& load, LaneBin* pairs) {
    if (__builtin_ctz(static_cast<unsigned>(half)) % 2 != 0) {
        for (int i = 0; i < half; i += 8) {
            const Bin from[] = {load(i),     load(i + 1), load(i + 2), load(i + 3),
                                load(i + 4), load(i + 5), load(i + 6), load(i + 7)};
            transformEight(from, pairs + i);
        }
        return 8;
    }
    for (int i = 0; i < half; i += 4) {
        const FourBins out = transformFour(load(i), load(i + 1), load(i + 2), load(i + 3));
        for (int n = 0; n < 4; ++n) store(out.bin[n], pairs + i + n);
    }
    return 4;
}

struct Turns {
    Turn one, two, three;
};

inline Turns turnsOf(const LaneFftTables& tables, int index) {
    const auto at = [&](int k) { return turnOf(tables.cosine[k], tables.sine[k]); };
    return {at(index), at(2 * index), at(3 * index)};
}

// Of four values at a distance of `span`.
inline FourBins butterfly(const Turns& turns, const LaneBin* at, int span) {
    return transformFour(load(at[0]), turned(load(at[span]), turns.one),
                         turned(load(at[2 * span]), turns.two), turned(load(at[3 * span]), turns.three));
}

// The other steps but the last, decimation in time. Returns the span of the last one.
inline int middleSteps(const LaneFftTables& tables, int first, LaneBin* pairs) {
    const int half = tables.size / 2;
    int span = first;
    for (; 4 * span < half; span *= 4) {
        const int turn = half / 2 / span;
        for (int j = 0; j < span; ++j) {
            const Turns turns = turnsOf(tables, j * turn);
            for (LaneBin* at = pairs + j; at < pairs + half; at += 4 * span) {
                const FourBins out = butterfly(turns, at, span);
                for (int n = 0; n < 4; ++n) store(out.bin[n], at + n * span);
            }
        }
    }
    return span;
}

// The last step; `put` takes each value and its place.
template <class Put>
inline __attribute__((always_inline)) void lastStep(const LaneFftTables& tables, int span,
                                                    const LaneBin* pairs, const Put& put) {
    const int turn = tables.size / 4 / span;
    for (int j = 0; j < span; ++j) {
        const FourBins out = butterfly(turnsOf(tables, j * turn), pairs + j, span);
        for (int n = 0; n < 4; ++n) put(out.bin[n], j + n * span);
    }
}

// Both directions work in the array of their result, so that input and output alone pass through the cache.
void forward(const LaneFftTables& tables, const Lanes* signals, LaneBin* spectra) {
    const int half = tables.size / 2;
    const LaneBin* pairs = reinterpret_cast<const LaneBin*>(signals);
    const uint16_t* source = tables.source;
    const int first = firstStep(
        half, [=](int place) { return load(pairs[source[place]]); }, spectra);
    const int span = middleSteps(tables, first, spectra);
    lastStep(tables, span, spectra, [=](const Bin& value, int place) { store(value, spectra + place); });
    spectra[half] = {spectra[0].re - spectra[0].im, Lanes{}};
    spectra[0] = {spectra[0].re + spectra[0].im, Lanes{}};
    for (int k = 1; k <= half / 2; ++k) {
        const Bin a = load(spectra[k]), b = conjugate(load(spectra[half - k]));
        const Bin even = (a + b) * 0.5f;
        const Bin odd = turned(timesMinusI(a - b) * 0.5f, turnOf(tables.cosine[k], tables.sine[k]));
        store(even + odd, spectra + k);
        store(conjugate(even - odd), spectra + half - k);
    }
}

// Input and output are conjugated, so that the forward butterflies compute this direction, too.
void backward(const LaneFftTables& tables, const LaneBin* spectra, Lanes* signals) {
    const int half = tables.size / 2;
    LaneBin* const pairs = reinterpret_cast<LaneBin*>(signals);
    pairs[0] = {spectra[0].re + spectra[half].re, spectra[half].re - spectra[0].re};
    for (int k = 1; k <= half / 2; ++k) {
        const Bin a = load(spectra[k]), b = conjugate(load(spectra[half - k]));
        const Bin even = a + b;
        const Bin odd = timesMinusI(turned(a - b, turnOf(tables.cosine[k], -tables.sine[k])));
        store(conjugate(even - odd), pairs + tables.place[k]);
        store(even + odd, pairs + tables.place[half - k]);
    }
    const int first = firstStep(
        half, [=](int place) { return load(pairs[place]); }, pairs);
    const int span = middleSteps(tables, first, pairs);
    lastStep(tables, span, pairs,
             [=](const Bin& value, int place) { store(conjugate(value), pairs + place); });
}

// From its bin k on.
inline LanePartition partitionFrom(const LanePartition& all, int k) {
    return {all.path + k,      all.re + k,   all.im + k,       all.learnt_re + k,
            all.learnt_im + k, all.step + k, all.last_step + k};
}

inline Bin adapted(const LanePartition& from, int i, const Bin& error, const Bin& turned_error) {
    const Bin gradient = timesConjugate(error, turned_error, from.learnt_re[i], from.learnt_im[i]);
    return load(from.path[i]) + factors(from.step[i], from.last_step[i]) * gradient;
}

void adapt(const LanePartition& partition, const LaneBin* errors, int bins) {
    const LanePartition from = partition;
    for (int k = 0; k < bins; ++k) {
        const Bin error = load(errors[k]);
        store(adapted(from, k, error, timesMinusI(error)), from.path + k);
    }
}

// Of `together` bins, so few that they stay in registers. The products with real and imaginary parts are added up apart.
template <int together>
inline __attribute__((always_inline)) void adaptAndPredictBins(const LanePartition* partitions, int learning,
                                                               int count, const LaneBin* errors, float factor,
                                                               int k, LaneBin* sum) {
    Bin error[std::size_t{together}], turned_error[std::size_t{together}];
    Bin by_re[std::size_t{together}], by_im[std::size_t{together}];
    for (int i = 0; i < together; ++i) {
        error[i] = load(errors[k + i]);
        turned_error[i] = timesMinusI(error[i]);
        by_re[i] = by_im[i] = zero();
    }
    for (int p = 0; p < learning; ++p) {
        const LanePartition from = partitionFrom(partitions[p], k);
        for (int i = 0; i < together; ++i) {
            const Bin path = adapted(from, i, error[i], turned_error[i]);
            store(path, from.path + i);
            by_re[i] = by_re[i] + path * from.re[i];
            by_im[i] = by_im[i] + path * from.im[i];
        }
    }
    for (int p = learning; p < count; ++p) {
        const LanePartition from = partitionFrom(partitions[p], k);
        for (int i = 0; i < together; ++i) {
            const Bin path = load(from.path[i]);
            by_re[i] = by_re[i] + path * from.re[i];
            by_im[i] = by_im[i] + path * from.im[i];
        }
    }
    for (int i = 0; i < together; ++i) store((by_re[i] - timesMinusI(by_im[i])) * factor, sum + k + i);
}

void adaptAndPredict(const LanePartition* partitions, int learning, int count, const LaneBin* errors,
                     float factor, int bins, LaneBin* sum) {
    int k = 0;
    for (; k + kTogether <= bins; k += kTogether) {
        adaptAndPredictBins<kTogether>(partitions, learning, count, errors, factor, k, sum);
    }
    for (; k < bins; ++k) adaptAndPredictBins<1>(partitions, learning, count, errors, factor, k, sum);
}

Lanes powerOf(const LaneBin& bin) {
    return bin.re * bin.re + bin.im * bin.im;
}

// The first of a pair of rows of eight has the even columns of both, the second the odd ones.
inline void transposePairs(Lanes* rows, int distance) {
    for (int i = 0; i < kLanes; ++i) {
        if ((i & distance) != 0) continue;
        const Lanes a = rows[i], b = rows[i + distance];
        switch (distance) {
            case 1:
                rows[i] = __builtin_shufflevector(a, b, 0, 8, 2, 10, 4, 12, 6, 14);
                rows[i + 1] = __builtin_shufflevector(a, b, 1, 9, 3, 11, 5, 13, 7, 15);
                break;
            case 2:
                rows[i] = __builtin_shufflevector(a, b, 0, 1, 8, 9, 4, 5, 12, 13);
                rows[i + 2] = __builtin_shufflevector(a, b, 2, 3, 10, 11, 6, 7, 14, 15);
                break;
            default:
                rows[i] = __builtin_shufflevector(a, b, 0, 1, 2, 3, 8, 9, 10, 11);
                rows[i + 4] = __builtin_shufflevector(a, b, 4, 5, 6, 7, 12, 13, 14, 15);
        }
    }
}

inline void transpose(Lanes* rows) {
    transposePairs(rows, 1);
    transposePairs(rows, 2);
    transposePairs(rows, 4);
}

// Of `count` bins, up to eight, whose powers are transposed.
inline __attribute__((always_inline)) void powersOf(const LaneBin* spectra, int count, float* mean,
                                                    float* last) {
    constexpr float kShare = 1.0f / (kLanes - 1);
    Lanes rows[std::size_t{kLanes}] = {};
    for (int i = 0; i < count; ++i) rows[i] = powerOf(spectra[i]);
    transpose(rows);
    Lanes sum = rows[0];
    for (int m = 1; m < kLanes - 1; ++m) sum += rows[m];
    sum *= kShare;
    for (int i = 0; i < count; ++i) mean[i] = sum[i];
    for (int i = 0; i < count; ++i) last[i] = rows[kLanes - 1][i];
}

void powers(const LaneBin* spectra, int bins, float* mean, float* last) {
    int k = 0;
    for (; k + kLanes <= bins; k += kLanes) powersOf(spectra + k, kLanes, mean + k, last + k);
    powersOf(spectra + k, bins - k, mean + k, last + k);
}

void groupPowers(const LaneBin* spectra, int bins, float* first, float* last) {
    for (int begin = 0; begin < bins; begin += kGroup) {
        const int count = bins - begin < kGroup ? bins - begin : kGroup;
        Lanes sum = {};
        for (int k = begin; k < begin + count; ++k) sum += powerOf(spectra[k]);
        sum /= static_cast<float>(count);
        *first++ = sum[0];
        *last++ = sum[kLanes - 1];
    }
}

// One register of neighbouring bins.
#ifdef __AVX512F__
using Wide = Group;
#elif defined(__AVX__)
using Wide = Lanes;
#else
using Wide = Quad;
#endif
constexpr int kWidesOfGroup = kGroup * sizeof(float) / sizeof(Wide);

inline const Wide* wides(const Group* groups) {
    return reinterpret_cast<const Wide*>(groups);
}

inline Wide* wides(Group* groups) {
    return reinterpret_cast<Wide*>(groups);
}

// Of a group, so that each address and each value for a group is found once for all registers.
inline void kalmanOf(const LaneUncertainty* partitions, int learning, int count, const LaneKalman& of, int g,
                     const Wide* power, Wide* noise, Wide* residual) {
    constexpr float kTiny = 1e-3f;  // against division by zero; samples are integers
    Wide unknown[std::size_t{kWidesOfGroup}] = {};
    for (int p = 0; p < learning; ++p) {
        const LaneUncertainty& from = partitions[p];
        Wide* const uncertainty = wides(from.uncertainty + g);
        const Wide* const far_power = wides(from.far_power + g);
        const float grown = from.path_power[g] * of.forgetting + from.appearing;
        for (int i = 0; i < kWidesOfGroup; ++i) {
            uncertainty[i] = uncertainty[i] * (1 - of.forgetting) + grown;
            unknown[i] += uncertainty[i] * far_power[i];
        }
    }
    for (int p = learning; p < count; ++p) {
        const Wide* const uncertainty = wides(partitions[p].uncertainty + g);
        const Wide* const far_power = wides(partitions[p].far_power + g);
        for (int i = 0; i < kWidesOfGroup; ++i) unknown[i] += uncertainty[i] * far_power[i];
    }
    Wide to_step[std::size_t{kWidesOfGroup}];
    for (int i = 0; i < kWidesOfGroup; ++i) {
        residual[i] = unknown[i] * of.share_of_frame;
        noise[i] = noise[i] * of.noise_memory + power[i] * (1 - of.noise_memory);
        to_step[i] = 1 / (residual[i] + (noise[i] > power[i] ? noise[i] : power[i]) + kTiny);
    }
    const float share = of.share_of_sample * of.share_of_frame;
    for (int p = 0; p < learning; ++p) {
        const LaneUncertainty& from = partitions[p];
        Wide* const uncertainty = wides(from.uncertainty + g);
        Wide* const steps = wides(from.step + g);
        const Wide* const far_power = wides(from.far_power + g);
        for (int i = 0; i < kWidesOfGroup; ++i) {
            const Wide step = uncertainty[i] * to_step[i];
            steps[i] = step;
            uncertainty[i] = uncertainty[i] / (1 + step * far_power[i] * share);
        }
    }
}

void kalman(const LaneUncertainty* partitions, int learning, int count, const LaneKalman& constants,
            const Group* error_power, int groups, Group* noise, Group* residual) {
    const LaneKalman all = constants;
    for (int g = 0; g < groups; ++g) {
        kalmanOf(partitions, learning, count, all, g, wides(error_power + g), wides(noise + g),
                 wides(residual + g));
    }
}

void subtract(const Lanes* signals, const Lanes* echo, int count, Lanes* errors, Lanes* energy) {
    Lanes sum = {};
    for (int n = 0; n < count; ++n) {
        errors[n] = signals[n] - echo[n];
        sum += echo[n] * echo[n];
    }
    *energy = sum;
}

Lanes magnitudeOf(const Lanes& a) {
    return a < 0 ? -a : a;
}

void scale(Lanes* signals, float factor, float least, int count, Lanes* squares) {
    Lanes sum = {};
    for (int n = 0; n < count; ++n) {
        const Lanes scaled = signals[n] * factor;
        signals[n] = magnitudeOf(scaled) < least ? Lanes{} : scaled;
        sum += signals[n] * signals[n];
    }
    *squares = sum;
}

void magnitudes(const Lanes* signals, int count, Lanes* sum, Lanes* largest) {
    *sum = *largest = Lanes{};
    for (int n = 0; n < count; ++n) {
        const Lanes magnitude = magnitudeOf(signals[n]);
        *sum += magnitude;
        *largest = *largest < magnitude ? magnitude : *largest;
    }
}

void quantise(const Lanes* signals, const Lanes* factor, float limit, int count, int16_t* const* rows) {
    const Lanes highest = Lanes{} + limit;
    const Lanes half = Lanes{} + 0.5f;
    for (int n = 0; n < count; n += kLanes) {
        Lanes rounded[std::size_t{kLanes}];
        for (int i = 0; i < kLanes; ++i) {
            const Lanes scaled = signals[n + i] * *factor;
            const Lanes above = scaled < -highest ? -highest : scaled;
            const Lanes limited = highest < above ? highest : above;
            rounded[i] = limited + (limited < 0 ? -half : half);
        }
        transpose(rounded);
        for (int m = 0; m < kLanes; ++m) {
            const LaneInts whole = __builtin_convertvector(rounded[m], LaneInts);
            *reinterpret_cast<LooseSamples*>(rows[m] + n) = __builtin_convertvector(whole, LooseSamples);
        }
    }
}

void gather(const int16_t* const* rows, int count, Lanes* signals) {
    for (int n = 0; n < count; n += kLanes) {
        Lanes columns[std::size_t{kLanes}];
        for (int m = 0; m < kLanes; ++m) {
            const LooseSamples samples = *reinterpret_cast<const LooseSamples*>(rows[m] + n);
            columns[m] = __builtin_convertvector(__builtin_convertvector(samples, LaneInts), Lanes);
        }
        transpose(columns);
        for (int i = 0; i < kLanes; ++i) signals[n + i] = columns[i];
    }
}

void addRows(const int32_t* const* rows, const Lanes* factor, int count, Lanes* signals) {
    for (int n = 0; n < count; n += kLanes) {
        Lanes columns[std::size_t{kLanes}];
        for (int m = 0; m < kLanes; ++m) {
            columns[m] = __builtin_convertvector(*reinterpret_cast<const LooseInts*>(rows[m] + n), Lanes);
        }
        transpose(columns);
        for (int i = 0; i < kLanes; ++i) signals[n + i] += columns[i] * *factor;
    }
}

// Of eight values, each of which is a Lanes: their transform. out: eight each.
inline void transformAcross(const Lanes* re, const Lanes* im, Lanes* out_re, Lanes* out_im) {
    constexpr float kHalfRoot = 0.70710678f;
    Lanes sum_re[4], sum_im[4], gap_re[4], gap_im[4];
    for (int i = 0; i < 4; ++i) {
        sum_re[i] = re[i] + re[i + 4], sum_im[i] = im[i] + im[i + 4];
        gap_re[i] = re[i] - re[i + 4], gap_im[i] = im[i] - im[i + 4];
    }
    // The gaps are turned by an eighth of a circle more each.
    const Lanes one_re = (gap_re[1] + gap_im[1]) * kHalfRoot, one_im = (gap_im[1] - gap_re[1]) * kHalfRoot;
    const Lanes two_re = gap_im[2], two_im = -gap_re[2];
    const Lanes three_re = (gap_im[3] - gap_re[3]) * kHalfRoot;
    const Lanes three_im = -(gap_re[3] + gap_im[3]) * kHalfRoot;
    const auto four = [&](int first, const Lanes(&r)[4], const Lanes(&i)[4]) {
        const Lanes a = r[0] + r[2], b = r[0] - r[2], c = r[1] + r[3], d = r[1] - r[3];
        const Lanes e = i[0] + i[2], f = i[0] - i[2], g = i[1] + i[3], h = i[1] - i[3];
        out_re[first] = a + c, out_im[first] = e + g;
        out_re[first + 2] = b + h, out_im[first + 2] = f - d;
        out_re[first + 4] = a - c, out_im[first + 4] = e - g;
        out_re[first + 6] = b - h, out_im[first + 6] = f + d;
    };
    four(0, {sum_re[0], sum_re[1], sum_re[2], sum_re[3]}, {sum_im[0], sum_im[1], sum_im[2], sum_im[3]});
    four(1, {gap_re[0], one_re, two_re, three_re}, {gap_im[0], one_im, two_im, three_im});
}

// Of `count` bins of the phases, up to eight: those of each eighth of the spectrum.
inline __attribute__((always_inline)) void combineBins(const LaneBin* phases, const LaneBin* turns, int count,
                                                       Lanes* re, Lanes* im) {
    Lanes rows_re[std::size_t{kLanes}] = {}, rows_im[std::size_t{kLanes}] = {};
    for (int i = 0; i < count; ++i) {
        rows_re[i] = phases[i].re * turns[i].re - phases[i].im * turns[i].im;
        rows_im[i] = phases[i].re * turns[i].im + phases[i].im * turns[i].re;
    }
    transpose(rows_re);
    transpose(rows_im);
    transformAcross(rows_re, rows_im, re, im);
}

inline void storeReversed(const Lanes& value, float* last) {
    *reinterpret_cast<LooseLanes*>(last - (kLanes - 1)) =
        __builtin_shufflevector(value, value, 7, 6, 5, 4, 3, 2, 1, 0);
}

// The phases' last bin is in the middle of each eighth. The spectrum's second half mirrors the first one.
void combine(const LaneBin* phases, const LaneBin* turns, int size, float* re, float* im) {
    const int eighth = size / kLanes;
    Lanes of_re[std::size_t{kLanes}], of_im[std::size_t{kLanes}];
    for (int k = 0; k < eighth / 2; k += kLanes) {
        combineBins(phases + k, turns + k, kLanes, of_re, of_im);
        for (int q = 0; q < kLanes / 2; ++q) {
            *reinterpret_cast<LooseLanes*>(re + q * eighth + k) = of_re[q];
            *reinterpret_cast<LooseLanes*>(im + q * eighth + k) = of_im[q];
        }
        for (int q = kLanes / 2; q < kLanes; ++q) {
            storeReversed(of_re[q], re + (kLanes - q) * eighth - k);
            storeReversed(-of_im[q], im + (kLanes - q) * eighth - k);
        }
    }
    combineBins(phases + eighth / 2, turns + eighth / 2, 1, of_re, of_im);
    for (int q = 0; q < kLanes / 2; ++q) {
        re[q * eighth + eighth / 2] = of_re[q][0];
        im[q * eighth + eighth / 2] = of_im[q][0];
    }
}

float sumOf(const Lanes& a) {
    return ((a[0] + a[4]) + (a[2] + a[6])) + ((a[1] + a[5]) + (a[3] + a[7]));
}

void interpolate(const float* samples, const Lanes* taps, const int* place, const int* phase,
                 const float* share, int count, float* out) {
    constexpr int kRow = 24 / kLanes;
    for (int i = 0; i < count; ++i) {
        const LooseLanes* at = reinterpret_cast<const LooseLanes*>(samples + place[i]);
        const Lanes* row = taps + phase[i] * kRow;
        Lanes sum = {};
        for (int g = 0; g < kRow; ++g) sum += at[g] * (row[g] + (row[g + kRow] - row[g]) * share[i]);
        out[i] = sumOf(sum);
    }
}

void correlate(const Lanes* a_re, const Lanes* a_im, const Lanes* b_re, const Lanes* b_im, float memory,
               int groups, Lanes* cross_re, Lanes* cross_im, Lanes* power) {
    Lanes sum = {};
    for (int g = 0; g < groups; ++g) {
        cross_re[g] = cross_re[g] * memory + (a_re[g] * b_re[g] + a_im[g] * b_im[g]) * (1 - memory);
        cross_im[g] = cross_im[g] * memory + (a_re[g] * b_im[g] - a_im[g] * b_re[g]) * (1 - memory);
        sum += cross_re[g] * cross_re[g] + cross_im[g] * cross_im[g];
    }
    *power = sum;
}

Lanes squareRootOf(const Lanes& a) {
    Lanes root;
    for (int i = 0; i < kLanes; i += 4) {
        float* const to = reinterpret_cast<float*>(&root) + i;
        _mm_store_ps(to, _mm_sqrt_ps(_mm_load_ps(reinterpret_cast<const float*>(&a) + i)));
    }
    return root;
}

void steer(const LaneBin* spectra, const LaneBin* steering, const float* weight, int bins, Lanes* power,
           Lanes* opposite) {
    constexpr int kSteered = kLanes - 2;
    constexpr float kTiny = 1e-3f;  // against division by zero
    Lanes ahead = {}, behind = {};
    for (int k = 0; k < bins; ++k) {
        if (weight[k] == 0) continue;
        const LaneBin& bin = spectra[k];
        const Lanes to_unit = 1 / squareRootOf(bin.re * bin.re + bin.im * bin.im + kTiny);
        const LaneBin phase = {bin.re * to_unit, bin.im * to_unit};
        Lanes re_cosine = Lanes{} + phase.re[0], im_cosine = Lanes{} + phase.im[0];
        Lanes re_sine = {}, im_sine = {};
        for (int m = 0; m < kSteered; ++m) {
            const LaneBin& turn = steering[k * kSteered + m];
            re_cosine += turn.re * phase.re[m + 1];
            im_cosine += turn.re * phase.im[m + 1];
            re_sine += turn.im * phase.re[m + 1];
            im_sine += turn.im * phase.im[m + 1];
        }
        const LaneBin sum = {re_cosine - im_sine, im_cosine + re_sine};
        const LaneBin mirrored = {re_cosine + im_sine, im_cosine - re_sine};
        ahead += (sum.re * sum.re + sum.im * sum.im) * weight[k];
        behind += (mirrored.re * mirrored.re + mirrored.im * mirrored.im) * weight[k];
    }
    *power = ahead;
    *opposite = behind;
}

constexpr LaneKernels kLaneKernels = {forward,     backward,    adapt,     adaptAndPredict, subtract, powers,
                                      groupPowers, kalman,      scale,     magnitudes,      quantise, gather,
                                      addRows,     interpolate, correlate, steer,           combine};

}  // namespace
}  // namespace reference_engine
