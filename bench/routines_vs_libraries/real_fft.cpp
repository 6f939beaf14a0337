// The real FFT in single precision, and the hooks compared with their own transform.
// libavcodec's transform takes powers of two only. SpeexDSP's is scalar, and only the static archive exports it.
// Left out: PFFFT, which is not packaged by Debian, and the transform of Opus, which its library does not export.
#include <fftw3.h>
#include <kiss_fftr.h>

extern "C" {
#include <libavcodec/avfft.h>
#include <libavutil/tx.h>
}

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <optional>

#include "bench/routines_vs_libraries/areas.h"
#include "bench/routines_vs_libraries/signals.h"
#include "kernel_check/references/fft_hooks.h"
#include "kernel_check/references/published_fft.h"
#include "kernel_check/references/transforms.h"
#include "webrtc_common/fftpack/real_fft.h"
#include "webrtc_common/se_wrapper/dsp/fft_context.h"
#include "webrtc_common/se_wrapper/dsp/fft_hooks.h"

namespace routines_vs_libraries {
namespace {

namespace se = quill::media::se_wrapper;
namespace fftpack = quill::fftpack;

using Aligned = std::shared_ptr<float>;

constexpr int kLengths[] = {256, 320, 512, 640, 1024};
constexpr double kTolerance = 1e-5;
const Figure kCost = {"cycles a transform", false};

Aligned aligned(int count) {
    const size_t bytes = (static_cast<size_t>(count) * sizeof(float) + 63) / 64 * 64;
    auto* const floats = static_cast<float*>(std::aligned_alloc(64, bytes));
    std::memset(floats, 0, bytes);
    return {floats, std::free};
}

// The memory layout of half a spectrum.
enum class Layout {
    fftpack,  // DC, then re, im of each bin, Nyquist last: n floats
    complex,  // n / 2 + 1 complex values
    packed,   // DC and Nyquist, then re, im of each bin: n floats
};

Floats laidOut(const Floats& spectrum, Layout layout) {
    Floats out = spectrum;
    if (layout == Layout::fftpack) return out;
    out.insert(out.begin() + 1, 0.0f);
    if (layout == Layout::complex) {
        out.push_back(0.0f);
    } else {
        out[1] = out.back();
        out.pop_back();
    }
    return out;
}

// A transform and the published one's result for the same values.
struct Problem {
    Problem(int length, bool is_forward)
        : n(length),
          forward(is_forward),
          time(widened(noise(static_cast<size_t>(n), 1000, 1))),
          spectrum(time) {
        quill::test::publishedForwardFft(n, spectrum.data());
        back = spectrum;
        quill::test::publishedBackwardFft(n, back.data());
    }
    Floats given(Layout layout) const { return forward ? time : laidOut(spectrum, layout); }
    Floats expected(Layout layout) const { return forward ? laidOut(spectrum, layout) : back; }

    const int n;
    const bool forward;
    const Floats time;
    Floats spectrum, back;
};

// When timed, zeros are transformed, so that values do not grow in place.
template <class Call>
Contestant inPlace(const std::string& name, Role role, const Problem& p, Layout layout, const Aligned& data,
                   const Call& call, double gain = 1, double tolerance = 0) {
    const auto error = [&p, layout, data, call, gain] {
        const Floats given = p.given(layout);
        Floats expected = p.expected(layout);
        for (float& value : expected) value *= static_cast<float>(gain);
        std::copy(given.begin(), given.end(), data.get());
        call();
        const double difference = relativeError(data.get(), expected.data(), expected.size());
        std::fill_n(data.get(), expected.size(), 0.0f);
        return difference;
    };
    return {name, role, timing::repeated(call), error, tolerance};
}

template <class Call>
Contestant outOfPlace(const std::string& name, const Problem& p, const Aligned& in, const Aligned& out,
                      const Call& call) {
    const auto error = [&p, in, out, call] {
        const Floats given = p.given(Layout::complex), expected = p.expected(Layout::complex);
        std::copy(given.begin(), given.end(), in.get());
        call();
        std::fill_n(in.get(), given.size(), 0.0f);
        return relativeError(out.get(), expected.data(), expected.size());
    };
    return {name, Role::peer, timing::repeated(call), error, kTolerance};
}

Contestant ours(const std::string& name, fftpack::RealFft* transform, const Problem& p) {
    const Aligned data = aligned(p.n);
    const auto call = [data, transform, n = p.n, tables = std::make_shared<quill::test::RealFft>(p.n)] {
        transform(n, data.get(), tables->wsave.data(), tables->ifac.data());
    };
    return inPlace(name, Role::ours, p, Layout::fftpack, data, call);
}

Contestant speex(const Problem& p) {
    const Aligned data = aligned(p.n);
    const auto call = [data, n = p.n,
                       transform = p.forward
                                       ? quill::test::publishedForwardFft
                                       : quill::test::publishedBackwardFft] { transform(n, data.get()); };
    return inPlace("SpeexDSP, spx_drft", Role::peer, p, Layout::fftpack, data, call);
}

Contestant fftw(const Problem& p, unsigned flag, const std::string& name) {
    const Aligned in = aligned(p.n + 2), out = aligned(p.n + 2);
    fftwf_forget_wisdom();  // else an estimate would use earlier measurements
    auto* const bins = reinterpret_cast<fftwf_complex*>(p.forward ? out.get() : in.get());
    const auto plan =
        std::shared_ptr<fftwf_plan_s>(p.forward ? fftwf_plan_dft_r2c_1d(p.n, in.get(), bins, flag)
                                                : fftwf_plan_dft_c2r_1d(p.n, bins, out.get(), flag),
                                      fftwf_destroy_plan);
    return outOfPlace("FFTW, " + name, p, in, out, [plan] { fftwf_execute(plan.get()); });
}

Contestant kissFft(const Problem& p) {
    const Aligned in = aligned(p.n + 2), out = aligned(p.n + 2);
    const auto made =
        std::shared_ptr<kiss_fftr_state>(kiss_fftr_alloc(p.n, p.forward ? 0 : 1, nullptr, nullptr),
                                         [](kiss_fftr_state* s) { kiss_fftr_free(s); });
    const auto call = [made, in, out, forward = p.forward] {
        if (forward) {
            kiss_fftr(made.get(), in.get(), reinterpret_cast<kiss_fft_cpx*>(out.get()));
        } else {
            kiss_fftri(made.get(), reinterpret_cast<const kiss_fft_cpx*>(in.get()), out.get());
        }
    };
    return outOfPlace("KissFFT, kiss_fftr", p, in, out, call);
}

std::optional<Contestant> libavutil(const Problem& p) {
    const Aligned in = aligned(p.n + 2), out = aligned(p.n + 2);
    const float unity = 1;
    AVTXContext* context = nullptr;
    av_tx_fn transform = nullptr;
    if (av_tx_init(&context, &transform, AV_TX_FLOAT_RDFT, p.forward ? 0 : 1, p.n, &unity, 0) < 0) return {};
    const auto made = std::shared_ptr<AVTXContext>(context, [](AVTXContext* c) { av_tx_uninit(&c); });
    const auto stride = static_cast<ptrdiff_t>(p.forward ? sizeof(float) : 2 * sizeof(float));
    return outOfPlace("libavutil, av_tx", p, in, out, [made, transform, in, out, stride] {
        transform(made.get(), out.get(), in.get(), stride);
    });
}

std::optional<Contestant> libavcodec(const Problem& p) {
    if ((p.n & (p.n - 1)) != 0) return {};
    int bits = 0;
    while (1 << bits < p.n) ++bits;
    const Aligned data = aligned(p.n);
    const auto made =
        std::shared_ptr<RDFTContext>(av_rdft_init(bits, p.forward ? DFT_R2C : IDFT_C2R), av_rdft_end);
    // Its inverse has half the scale of the others.
    return inPlace(
        "libavcodec, av_rdft", Role::peer, p, Layout::packed, data,
        [made, data] { av_rdft_calc(made.get(), data.get()); }, p.forward ? 1 : 0.5, kTolerance);
}

void transform(Session& session, int n, bool forward) {
    const Problem p(n, forward);
    std::vector<Contestant> all;
    for (const fftpack::RealFftVariant& v : fftpack::kRealFftVariants) {
        if (!(session.machine().*v.feature)) continue;
        all.push_back(ours(std::string("ours, ") + v.name, forward ? v.forward : v.backward, p));
    }
    all.push_back(speex(p));
    all.push_back(fftw(p, FFTW_ESTIMATE, "estimated plan"));
    all.push_back(fftw(p, session.quick() ? FFTW_MEASURE : FFTW_PATIENT, "measured plan"));
    all.push_back(kissFft(p));
    for (auto& peer : {libavutil(p), libavcodec(p)}) {
        if (peer) all.push_back(*peer);
    }
    session.hold(
        {std::string("real FFT, ") + (forward ? "forward" : "backward"), "n", n, kCost, 1, std::move(all)});
}

// A hook and the transform that it runs, on the arrays of one context.
struct HookProblem {
    explicit HookProblem(int length)
        : n(length),
          context(static_cast<uint16_t>(n), static_cast<uint16_t>(n)),
          object{&context},
          in(noise(static_cast<size_t>(n) + 2, 20000, 1)),
          out(in.size()) {}

    const int n;
    se::FFTContext context;
    DftObj_t object;
    Samples in, out;
};

struct Hook {
    const char* name;
    const char* transform;
    void (*run)(HookProblem&);
    void (*reference)(HookProblem&);
    fftpack::RealFft* fftpack::RealFftVariant::*bare;
};

const Hook kHooks[] = {
    {"fwdFFT", "fdrfftf",
     [](HookProblem& p) {
         se::fwdFFT(&p.object, p.in.data(), 0, 1024, p.out.data(), static_cast<uint16_t>(p.out.size()));
     },
     [](HookProblem& p) {
         quill::test::referenceFwdFft(&p.object, p.in.data(), 0, 1024, p.out.data(),
                                      static_cast<uint16_t>(p.out.size()));
     },
     &fftpack::RealFftVariant::forward},
    {"invFFT", "fdrfftb",
     [](HookProblem& p) { se::invFFT(&p.object, p.in.data(), 4, 1024, p.out.data(), 0); },
     [](HookProblem& p) { quill::test::referenceInvFft(&p.object, p.in.data(), 4, 1024, p.out.data(), 0); },
     &fftpack::RealFftVariant::backward},
};

Contestant wholeHook(HookProblem& p, const Hook& hook) {
    const auto call = [&p, run = hook.run] { run(p); };
    const auto error = [&p, call, reference = hook.reference] {
        reference(p);
        const Samples expected = p.out;
        std::fill(p.out.begin(), p.out.end(), int16_t{0});
        call();
        const bool is_equal = std::equal(expected.begin(), expected.begin() + p.n, p.out.begin());
        std::fill(p.in.begin(), p.in.end(), int16_t{0});
        call();  // the bare transform then gets zeros
        return is_equal ? 0.0 : 1.0;
    };
    return {std::string("ours, ") + hook.name, Role::ours, timing::repeated(call), error};
}

void hook(Session& session, const Hook& hook, const fftpack::RealFftVariant& transform, int n) {
    if (!(session.machine().*transform.feature)) return;
    fftpack::g_real_fft = &transform;
    HookProblem p(n);
    const std::string bare = std::string("ours, ") + hook.transform;
    const auto call_bare = [&p, run = transform.*hook.bare] {
        run(p.n, p.context.scratch_.get(), p.context.twiddles_.get(), p.context.factors_.get());
    };
    session.hold({std::string(hook.name) + ", " + transform.name,
                  "n",
                  n,
                  kCost,
                  1,
                  {wholeHook(p, hook), {bare, Role::ours, timing::repeated(call_bare), nullptr}},
                  bare});
}

}  // namespace

void realFft(Session& session) {
    for (const char* kernel : {"fdrfftf", "fdrfftb", "fwdFFT", "invFFT"}) session.requireRight(kernel);
    for (const bool forward : {true, false}) {
        for (const int n : kLengths) transform(session, n, forward);
    }
    for (const Hook& each : kHooks) {
        for (const fftpack::RealFftVariant& transform : fftpack::kRealFftVariants) {
            for (const int n : kLengths) hook(session, each, transform, n);
        }
    }
}

}  // namespace routines_vs_libraries
