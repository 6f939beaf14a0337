// A filter of 55 taps with a continuous signal, block by block. The libraries filter floats, and the conversion is
// not counted. Ours has 16-bit input and output.
#include <fftw3.h>
#include <liquid/liquid.h>
#include <volk/volk.h>

#include <algorithm>
#include <cstring>
#include <memory>

#include "bench/routines_vs_libraries/areas.h"
#include "bench/routines_vs_libraries/plain.h"
#include "bench/routines_vs_libraries/signals.h"
#include "kernel_check/references/dsp.h"
#include "webrtc_common/convolve/convolve.h"
#include "webrtc_common/se_wrapper/dsp/block_size.h"
#include "webrtc_common/se_wrapper/dsp/filter.h"

namespace routines_vs_libraries {
namespace {

namespace se = quill::media::se_wrapper;

constexpr int kBlock = se::BLOCK_SIZE;
constexpr int kBlocks = 8;  // of a check

// The input of the filters, and the output without delay: the newest sample included.
struct Problem {
    Problem() : coeffs(se::kHighPass600Hz.coeffs_, se::kHighPass600Hz.coeffs_ + taps) {
        Samples history(taps - 1);
        history.insert(history.end(), signal.begin(), signal.end());
        quill::test::referenceRFir(history.data(), coeffs.data(), expected.data(),
                                   static_cast<uint16_t>(taps - 1), static_cast<uint16_t>(signal.size()), 1);
    }

    const size_t taps = static_cast<size_t>(se::kHighPass600Hz.num_coeffs_);
    Samples coeffs;
    const Samples signal = noise(kBlocks * kBlock, 12000, 1);
    Samples expected = Samples(signal.size());
    const Floats float_signal = widened(signal), float_coeffs = widened(coeffs, 1.0f / 32768);
};

// A filter that starts with silence: `block(in, out)` filters one block. Samples come `delay` late.
template <class Sample, class Block>
Contestant filter(const std::string& name, Role role, const Problem& p, const Sample* signal, size_t delay,
                  double tolerance, Block block) {
    const auto error = [&p, signal, delay, block]() mutable {
        std::vector<Sample> out(p.signal.size());
        for (size_t i = 0; i < out.size(); i += kBlock) block(signal + i, out.data() + i);
        return largestDifference(out.data() + delay, p.expected.data(), out.size() - delay);
    };
    const auto run = [signal, block, out = std::vector<Sample>(kBlock)]() mutable {
        block(signal, out.data());
    };
    return {name, role, timing::repeated(run), error, tolerance};
}

// A block of input after the samples of the filter's history.
template <class Sample>
class History {
  public:
    explicit History(size_t taps) : samples_(taps - 1 + kBlock) {}
    Sample* append(const Sample* in) {
        std::memmove(samples_.data(), samples_.data() + kBlock, (samples_.size() - kBlock) * sizeof(Sample));
        std::memcpy(samples_.data() + samples_.size() - kBlock, in, kBlock * sizeof(Sample));
        return samples_.data();
    }

  private:
    std::vector<Sample> samples_;
};

// Overlap-save in transforms of n samples: the first taps - 1 outputs are wrong, the next kBlock are the block's.
class OverlapSave {
  public:
    OverlapSave(const Problem& p, size_t n)
        : history_(p.taps - 1), bins_(n / 2 + 1), in_(n), out_(n), spectrum_(bins_), response_(bins_) {
        auto* const spectrum = reinterpret_cast<fftwf_complex*>(spectrum_.data());
        forward_ = fftwf_plan_dft_r2c_1d(static_cast<int>(n), in_.data(), spectrum,
                                         FFTW_PATIENT | FFTW_PRESERVE_INPUT);
        backward_ = fftwf_plan_dft_c2r_1d(static_cast<int>(n), spectrum, out_.data(), FFTW_PATIENT);
        // The oldest sample's coefficient comes first.
        std::fill(in_.begin(), in_.end(), 0.0f);
        for (size_t k = 0; k < p.taps; ++k) in_[p.taps - 1 - k] = p.float_coeffs[k] / static_cast<float>(n);
        fftwf_execute(forward_);
        response_ = spectrum_;
        std::fill(in_.begin(), in_.end(), 0.0f);
    }
    ~OverlapSave() {
        fftwf_destroy_plan(forward_);
        fftwf_destroy_plan(backward_);
    }
    OverlapSave(const OverlapSave&) = delete;
    OverlapSave& operator=(const OverlapSave&) = delete;

    void block(const float* in, float* out) {
        std::memmove(in_.data(), in_.data() + kBlock, history_ * sizeof(float));
        std::memcpy(in_.data() + history_, in, kBlock * sizeof(float));
        fftwf_execute(forward_);
        volk_32fc_x2_multiply_32fc(spectrum_.data(), spectrum_.data(), response_.data(),
                                   static_cast<unsigned>(bins_));
        fftwf_execute(backward_);
        std::memcpy(out, out_.data() + history_, kBlock * sizeof(float));
    }

  private:
    template <class T>
    struct Allocator {  // with FFTW's alignment
        using value_type = T;
        T* allocate(size_t count) { return static_cast<T*>(fftwf_malloc(count * sizeof(T))); }
        void deallocate(T* data, size_t) { fftwf_free(data); }
        bool operator==(const Allocator&) const { return true; }
        bool operator!=(const Allocator&) const { return false; }
    };

    const size_t history_, bins_;
    std::vector<float, Allocator<float>> in_, out_;
    std::vector<lv_32fc_t, Allocator<lv_32fc_t>> spectrum_, response_;
    fftwf_plan forward_, backward_;
};

std::vector<Contestant> ours(const Session& session, const Problem& p) {
    // One sample later than necessary, as the filter's header explains.
    constexpr size_t kExtraDelay = 1;
    std::vector<Contestant> all;
    for (const se::ConvolveVariant& v : se::kConvolveVariants) {
        if (!(session.machine().*v.feature)) continue;
        const auto block = [&v, made = std::make_shared<se::Filter>(se::kHighPass600Hz)](const int16_t* in,
                                                                                         int16_t* out) {
            g_convolve_i16_i16 = v.i16_i16;
            made->filterBlock(const_cast<int16_t*>(in), out, 1.0f);
        };
        all.push_back(filter(std::string("ours, filterBlock, ") + v.name, Role::ours, p, p.signal.data(),
                             kExtraDelay, 0, block));
    }
    return all;
}

std::vector<Contestant> plainLoops(const Problem& p) {
    std::vector<Contestant> all;
    for (const PlainLoops* loops : {&kPlainFloor, &kPlainNative}) {
        const auto block = [&p, loops, history = History<int16_t>(p.taps)](const int16_t* in,
                                                                           int16_t* out) mutable {
            loops->correlate(p.coeffs.data(), history.append(in), out, kBlock,
                             static_cast<ptrdiff_t>(p.taps));
        };
        all.push_back(filter(loops->name, Role::plain, p, p.signal.data(), 0, 0, block));
    }
    return all;
}

template <class Block>
Contestant library(const std::string& name, const Problem& p, const Block& block) {
    return filter(name, Role::peer, p, p.float_signal.data(), 0, 0.6, block);
}

Contestant overlapSave(const Problem& p, size_t n) {
    const auto made = std::make_shared<OverlapSave>(p, n);
    return library("FFTW and VOLK, overlap-save, n = " + std::to_string(n), p,
                   [made](const float* in, float* out) { made->block(in, out); });
}

std::vector<Contestant> libraries(const Problem& p) {
    const auto taps = static_cast<unsigned>(p.taps);
    Floats reversed(p.float_coeffs.rbegin(), p.float_coeffs.rend());
    return {
        library("VOLK, dot product of floats", p,
                [&p, taps, history = History<float>(p.taps)](const float* in, float* out) mutable {
                    const float* const samples = history.append(in);
                    for (size_t i = 0; i < kBlock; ++i) {
                        volk_32f_x2_dot_prod_32f(out + i, samples + i, p.float_coeffs.data(), taps);
                    }
                }),
        library("liquid-dsp, firfilt_rrrf", p,
                [q = std::shared_ptr<firfilt_rrrf_s>(firfilt_rrrf_create(reversed.data(), taps),
                                                     firfilt_rrrf_destroy)](const float* in, float* out) {
                    firfilt_rrrf_execute_block(q.get(), const_cast<float*>(in), kBlock, out);
                }),
        library("liquid-dsp, fftfilt_rrrf", p,
                [q = std::shared_ptr<fftfilt_rrrf_s>(fftfilt_rrrf_create(reversed.data(), taps, kBlock),
                                                     fftfilt_rrrf_destroy)](const float* in, float* out) {
                    fftfilt_rrrf_execute(q.get(), const_cast<float*>(in), out);
                }),
        overlapSave(p, 216),
        overlapSave(p, 224),
        overlapSave(p, 256),
    };
}

}  // namespace

void fir(Session& session) {
    session.requireRight("computeRFir");
    const Problem p;
    std::vector<Contestant> all = ours(session, p);
    for (auto& more : {plainLoops(p), libraries(p)}) all.insert(all.end(), more.begin(), more.end());
    const Figure cost = {"cycles a block", false};
    session.hold(
        {"filterBlock, blocks of 160 samples", "taps", static_cast<int>(p.taps), cost, 1, std::move(all)});
}

}  // namespace routines_vs_libraries
