// From 16 to 48 kHz in blocks of 80 samples: three phases of 24 taps.
// libswresample and SpeexDSP take 16-bit samples and design their own filters, so they are checked with a tone.
// liquid-dsp and VOLK get our filter and floats; the conversion is not counted.
#include <liquid/liquid.h>
#include <samplerate.h>
#include <speex/speex_resampler.h>
#include <volk/volk.h>

#include <cmath>
#include <memory>
#include <numeric>

#include "bench/routines_vs_libraries/areas.h"
#include "bench/routines_vs_libraries/plain.h"
#include "bench/routines_vs_libraries/signals.h"
#include "bench/routines_vs_libraries/swresample.h"
#include "kernel_check/references/dsp.h"
#include "webrtc_common/convolve/convolve.h"
#include "webrtc_common/se_wrapper/dsp/interpolate.h"

namespace routines_vs_libraries {
namespace {

namespace se = quill::media::se_wrapper;

constexpr int kIn = 80, kFactor = 3, kTaps = 24, kOut = kIn * kFactor;
constexpr int kBlocks = 16;                    // of a check, the first half of which settles
constexpr double kFrequency = 1000.0 / 48000;  // of the tone, cycles an output sample
constexpr double kAmplitude = 8000;
constexpr double kToneTolerance = 0.02;

// A windowed sinc at a third of the output rate, each phase with unity gain. Index of phase p, tap t: p * kTaps + t.
Samples designedCoeffs() {
    Samples coeffs;
    for (int p = 0; p < kFactor; ++p) {
        std::vector<double> phase;
        for (int t = 0; t < kTaps; ++t) {
            const double x = t - (kTaps / 2 - 1) - p / double{kFactor};
            const double window = std::pow(std::cos(M_PI * x / (kTaps + 2)), 2);
            phase.push_back(window * (std::fabs(x) < 1e-9 ? 1 : std::sin(M_PI * 0.9 * x) / (M_PI * 0.9 * x)));
        }
        const double gain = std::accumulate(phase.begin(), phase.end(), 0.0);
        for (const double c : phase) coeffs.push_back(static_cast<int16_t>(std::lround(32767 * c / gain)));
    }
    return coeffs;
}

Samples tone(size_t count) {
    Samples samples;
    for (size_t i = 0; i < count; ++i) {
        const double phase = 2 * M_PI * kFrequency * kFactor * static_cast<double>(i);
        samples.push_back(static_cast<int16_t>(std::lround(kAmplitude * std::cos(phase))));
    }
    return samples;
}

struct Problem {
    Problem() {
        int16_t* position = signal.data();
        quill::test::referenceInterpolate(kIn, kFactor, &position, expected.data(), coeffs.data(), kTaps);
        for (int p = 0; p < kFactor; ++p) {
            for (int t = 0; t < kTaps; ++t) {
                const auto at = static_cast<size_t>((kTaps - 1 - t) * kFactor + p);
                prototype[at] = float_coeffs[static_cast<size_t>(p * kTaps + t)];
            }
        }
    }

    Samples coeffs = designedCoeffs();
    const Samples in = tone(kIn * kBlocks);
    Samples signal = noise(kIn + kTaps + 7, 20000, 1), expected = Samples(kOut), out = Samples(kOut);
    const Floats float_coeffs = widened(coeffs, 1.0f / 32768), float_signal = widened(signal);
    Floats float_out = Floats(kOut);
    Floats prototype = Floats(kTaps * kFactor);  // the phases interleaved, the newest sample's first
};

template <class Call>
Contestant withOurFilter(const std::string& name, Role role, Problem& p, const Call& call) {
    const auto error = [&p, call] {
        call();
        return largestDifference(p.out.data(), p.expected.data(), kOut);
    };
    return {name, role, timing::repeated(call), error};
}

template <class Call>
Contestant inFloats(const std::string& name, Problem& p, const Call& call, const Call& check) {
    const auto error = [&p, check] {
        check();
        return largestDifference(p.float_out.data(), p.expected.data(), kOut);
    };
    return {name, Role::peer, timing::repeated(call), error, 1};
}

// `block(in, out)` takes the next kIn samples and returns the number of output samples.
template <class Sample, class Block>
Contestant resampler(const std::string& name, const std::vector<Sample>& in, const Block& block) {
    const auto error = [&in, block] {
        Floats settled;
        for (size_t i = 0; i < kBlocks; ++i) {
            std::vector<Sample> out(2 * kOut);
            const size_t count = block(in.data() + i * kIn, out.data());
            if (i >= kBlocks / 2)
                settled.insert(settled.end(), out.begin(), out.begin() + static_cast<ptrdiff_t>(count));
        }
        return toneError(settled, kFrequency, kAmplitude);
    };
    const auto run = [&in, block, out = std::vector<Sample>(2 * kOut)]() mutable {
        block(in.data(), out.data());
    };
    return {name, Role::peer, timing::repeated(run), error, kToneTolerance};
}

Contestant swresample(const Samples& in) {
    const Swr made = makeSwr(1, AV_SAMPLE_FMT_S16, 16000, kFactor * 16000,
                             {{"filter_size", kTaps},
                              {"exact_rational", 1},
                              {"linear_interp", 0},
                              {"internal_sample_fmt", AV_SAMPLE_FMT_S16P}});
    return resampler("libswresample, 24 taps", in, [made](const int16_t* from, int16_t* to) {
        const auto* const source = reinterpret_cast<const uint8_t*>(from);
        auto* const target = reinterpret_cast<uint8_t*>(to);
        const uint8_t* sources[] = {source};
        uint8_t* targets[] = {target};
        return static_cast<size_t>(swr_convert(made.get(), targets, 2 * kOut, sources, kIn));
    });
}

Contestant speex(const Samples& in, int quality, const std::string& taps) {
    const auto made = std::shared_ptr<SpeexResamplerState>(
        speex_resampler_init(1, 16000, kFactor * 16000, quality, nullptr), speex_resampler_destroy);
    return resampler("SpeexDSP, " + taps, in, [made](const int16_t* from, int16_t* to) {
        spx_uint32_t taken = kIn, given = 2 * kOut;
        speex_resampler_process_int(made.get(), 0, from, &taken, to, &given);
        return size_t{given};
    });
}

Contestant samplerate(const Floats& in) {
    int error = 0;
    const auto made = std::shared_ptr<SRC_STATE>(src_new(SRC_SINC_FASTEST, 1, &error), src_delete);
    return resampler("libsamplerate, SRC_SINC_FASTEST, floats", in, [made](const float* from, float* to) {
        SRC_DATA data = {from, to, kIn, 2 * kOut, 0, 0, 0, kFactor};
        src_process(made.get(), &data);
        return static_cast<size_t>(data.output_frames_gen);
    });
}

std::vector<Contestant> withOurFilter(const Session& session, Problem& p) {
    std::vector<Contestant> all;
    for (const se::ConvolveVariant& v : se::kConvolveVariants) {
        if (!(session.machine().*v.feature)) continue;
        all.push_back(withOurFilter(std::string("ours, interp1ToNCore, ") + v.name, Role::ours, p, [&p, &v] {
            g_convolve_i16_i16 = v.i16_i16;
            int16_t* position = p.signal.data();
            se::interp1ToNCore(kIn, kFactor, &position, p.out.data(), p.coeffs.data(), kTaps);
        }));
    }
    for (const PlainLoops* loops : {&kPlainFloor, &kPlainNative}) {
        all.push_back(withOurFilter(loops->name, Role::plain, p, [&p, loops] {
            loops->interpolate(p.signal.data(), p.coeffs.data(), p.out.data(), kIn, kFactor, kTaps);
        }));
    }
    return all;
}

std::vector<Contestant> inFloats(Problem& p) {
    const auto dot_products = [&p] {
        for (size_t j = 0; j < kIn; ++j) {
            for (size_t phase = 0; phase < kFactor; ++phase) {
                volk_32f_x2_dot_prod_32f(&p.float_out[j * kFactor + phase], &p.float_signal[j],
                                         &p.float_coeffs[phase * kTaps], kTaps);
            }
        }
    };
    const auto interpolator = std::shared_ptr<firinterp_rrrf_s>(
        firinterp_rrrf_create(kFactor, p.prototype.data(), kTaps * kFactor), firinterp_rrrf_destroy);
    const std::function<void()> block = [&p, interpolator] {
        firinterp_rrrf_execute_block(interpolator.get(), const_cast<float*>(&p.float_signal[kTaps - 1]), kIn,
                                     p.float_out.data());
    };
    const std::function<void()> from_the_start = [&p, interpolator, block] {
        firinterp_rrrf_reset(interpolator.get());
        for (size_t i = 0; i < kTaps - 1; ++i) {
            firinterp_rrrf_execute(interpolator.get(), p.float_signal[i], p.float_out.data());
        }
        block();
    };
    return {inFloats("VOLK, dot product of floats", p, dot_products, dot_products),
            inFloats("liquid-dsp, firinterp_rrrf", p, block, from_the_start)};
}

}  // namespace

void resampling(Session& session) {
    session.requireRight("interp1ToNCore");
    Problem p;
    const Floats float_in = widened(p.in);
    std::vector<Contestant> all = withOurFilter(session, p);
    for (Contestant& more : inFloats(p)) all.push_back(std::move(more));
    all.push_back(swresample(p.in));
    all.push_back(speex(p.in, 1, "quality 1, 16 taps"));
    all.push_back(speex(p.in, 2, "quality 2, 32 taps"));
    all.push_back(samplerate(float_in));
    const Figure cost = {"cycles a block", false};
    session.hold({"interp1ToNCore, 80 samples times 3", "taps", kTaps, cost, 1, std::move(all)});
}

}  // namespace routines_vs_libraries
