// FIR correlation of 16-bit samples: out[i] = sum over k of coeffs[k] signal[i + k].
// VOLK and liquid-dsp have no dot product of two real 16-bit vectors. They get floats, and the conversion is not
// counted. The libraries of libav do not export theirs.
#include <liquid/liquid.h>
#include <volk/volk.h>

#include <memory>

#include "bench/routines_vs_libraries/areas.h"
#include "bench/routines_vs_libraries/plain.h"
#include "bench/routines_vs_libraries/signals.h"
#include "kernel_check/references/convolve.h"
#include "kernel_check/timing/multiply_add_limit.h"
#include "webrtc_common/convolve/convolve.h"

namespace routines_vs_libraries {
namespace {

using quill::media::se_wrapper::ConvolveVariant;
using quill::media::se_wrapper::kConvolveVariants;

constexpr int kOutputs = 160;
constexpr int kShift = 15;
constexpr int kTaps[] = {8, 16, 24, 32, 48, 64, 96, 128, 256, 512};
const Figure kRate = {"multiply-accumulates a cycle", true};

// A problem whose sums fit in 32 bits and whose outputs mostly fit in 16.
struct Problem {
    explicit Problem(int num_taps)
        : taps(num_taps),
          coeffs(noise(static_cast<size_t>(taps), 32767 / taps, 1)),
          signal(noise(quill::test::signalExtent(kOutputs, taps), 32767, 2)) {
        quill::test::referenceConvolve(coeffs.data(), signal.data(), expected.data(), kOutputs, taps);
        quill::test::referenceConvolve(coeffs.data(), signal.data(), expected_scaled.data(), kShift, kOutputs,
                                       taps, 0);
    }

    const int taps;
    const Samples coeffs, signal;
    Samples expected = Samples(kOutputs), out = Samples(kOutputs);
    std::vector<int32_t> expected_scaled = std::vector<int32_t>(kOutputs), out_scaled = expected_scaled;
    const Floats float_coeffs = widened(coeffs, 1.0f / 32768), float_signal = widened(signal);
    Floats float_out = Floats(kOutputs);
};

template <class Call>
Contestant narrowed(const std::string& name, Role role, Problem& p, const Call& call) {
    const auto error = [&p, call] {
        call();
        return largestDifference(p.out.data(), p.expected.data(), kOutputs);
    };
    return {name, role, timing::repeated(call), error};
}

template <class Call>
Contestant inFloats(const std::string& name, Problem& p, const Call& call) {
    const auto error = [&p, call] {
        call();
        return largestDifference(p.float_out.data(), p.expected.data(), kOutputs);
    };
    return {name, Role::peer, timing::repeated(call), error, 0.6};
}

Contestant scaled(const ConvolveVariant& variant, Problem& p) {
    const auto call = [&p, kernel = variant.i16_i32] {
        kernel(p.coeffs.data(), p.signal.data(), p.out_scaled.data(), kShift, kOutputs, p.taps, 0);
    };
    const auto error = [&p, call] {
        call();
        return p.out_scaled == p.expected_scaled ? 0.0 : 1.0;
    };
    return {std::string("ours, ") + variant.name, Role::ours, timing::repeated(call), error};
}

std::vector<Contestant> plainLoops(Problem& p) {
    std::vector<Contestant> all;
    for (const PlainLoops* loops : {&kPlainFloor, &kPlainNative}) {
        all.push_back(narrowed(loops->name, Role::plain, p, [&p, loops] {
            loops->correlate(p.coeffs.data(), p.signal.data(), p.out.data(), kOutputs, p.taps);
        }));
    }
    return all;
}

std::vector<Contestant> libraries(Problem& p) {
    const auto taps = static_cast<unsigned>(p.taps);
    return {
        inFloats("VOLK, dot product of floats", p,
                 [&p, taps] {
                     for (size_t i = 0; i < kOutputs; ++i) {
                         volk_32f_x2_dot_prod_32f(&p.float_out[i], &p.float_signal[i], p.float_coeffs.data(),
                                                  taps);
                     }
                 }),
        inFloats("liquid-dsp, dotprod_rrrf of floats", p,
                 [&p, dot = std::shared_ptr<dotprod_rrrf_s>(
                          dotprod_rrrf_create(const_cast<float*>(p.float_coeffs.data()), taps),
                          dotprod_rrrf_destroy)] {
                     for (size_t i = 0; i < kOutputs; ++i) {
                         dotprod_rrrf_execute(dot.get(), const_cast<float*>(&p.float_signal[i]),
                                              &p.float_out[i]);
                     }
                 }),
    };
}

std::vector<Contestant> limits(const Session& session) {
    std::vector<Contestant> all;
    for (const timing::MultiplyAddLimit& limit : timing::multiplyAddLimits()) {
        if (!(session.machine().*limit.needs)) continue;
        all.push_back({std::string("limit, ") + limit.name, Role::limit, timing::repeated(limit.loop),
                       nullptr, 0, limit.multiply_adds});
    }
    return all;
}

void append(std::vector<Contestant>& to, std::vector<Contestant> more) {
    for (Contestant& contestant : more) to.push_back(std::move(contestant));
}

void correlate(Session& session, int taps) {
    Problem p(taps);
    const double work = static_cast<double>(kOutputs) * taps;
    std::vector<Contestant> narrow, wide;
    for (const ConvolveVariant& v : kConvolveVariants) {
        if (!(session.machine().*v.feature)) continue;
        narrow.push_back(narrowed(std::string("ours, ") + v.name, Role::ours, p, [&p, kernel = v.i16_i16] {
            kernel(p.coeffs.data(), p.signal.data(), p.out.data(), kOutputs, p.taps);
        }));
        wide.push_back(scaled(v, p));
    }
    append(narrow, plainLoops(p));
    append(narrow, libraries(p));
    append(narrow, limits(session));
    session.hold({"convolve_i16_i16, 160 outputs", "taps", taps, kRate, work, std::move(narrow)});
    session.hold({"convolve_i16_i32, 160 outputs", "taps", taps, kRate, work, std::move(wide)});
}

}  // namespace

void correlation(Session& session) {
    session.requireRight("convolve_i16_i16");
    session.requireRight("convolve_i16_i32");
    for (const int taps : kTaps) correlate(session, taps);
}

}  // namespace routines_vs_libraries
