// Product of complex vectors in Q15. VOLK's product has no Q15. It keeps the low 16 bits of each product, which is
// less work and gives the same result only for small numbers.
#include <volk/volk.h>

#include "bench/routines_vs_libraries/areas.h"
#include "bench/routines_vs_libraries/plain.h"
#include "bench/routines_vs_libraries/signals.h"
#include "kernel_check/references/dsp.h"
#include "webrtc_common/se_wrapper/dsp/complex_multiply.h"

namespace routines_vs_libraries {
namespace {

constexpr int kLengths[] = {64, 129, 256, 512};

Samples productsOf(const Samples& a, const Samples& b) {
    Samples out(a.size());
    for (size_t k = 0; k < a.size(); k += 2) {
        out[k] = static_cast<int16_t>(a[k] * b[k] - a[k + 1] * b[k + 1]);
        out[k + 1] = static_cast<int16_t>(a[k] * b[k + 1] + a[k + 1] * b[k]);
    }
    return out;
}

void multiply(Session& session, int n) {
    const auto parts = 2 * static_cast<size_t>(n);
    Samples a = noise(parts, 23000, 1), b = noise(parts, 23000, 2), expected(parts), out(parts);
    quill::test::referenceVcmul(a.data(), b.data(), expected.data(), static_cast<uint16_t>(n));
    const Samples small_a = noise(parts, 100, 3), small_b = noise(parts, 100, 4);
    const Samples small_expected = productsOf(small_a, small_b);
    const Floats float_a = widened(a), float_b = widened(b, 1.0f / 32768);
    Floats float_out(parts);

    const auto in_q15 = [&](const std::string& name, Role role, auto call) -> Contestant {
        return {name, role, timing::repeated(call), [&, call] {
                    call();
                    return largestDifference(out.data(), expected.data(), parts);
                }};
    };
    const auto volk_16ic = [&] {
        volk_16ic_x2_multiply_16ic(
            reinterpret_cast<lv_16sc_t*>(out.data()), reinterpret_cast<const lv_16sc_t*>(small_a.data()),
            reinterpret_cast<const lv_16sc_t*>(small_b.data()), static_cast<unsigned>(n));
    };
    const auto volk_32fc = [&] {
        volk_32fc_x2_multiply_32fc(reinterpret_cast<lv_32fc_t*>(float_out.data()),
                                   reinterpret_cast<const lv_32fc_t*>(float_a.data()),
                                   reinterpret_cast<const lv_32fc_t*>(float_b.data()),
                                   static_cast<unsigned>(n));
    };
    std::vector<Contestant> all = {
        in_q15("ours, vcmul_i16", Role::ours,
               [&] {
                   quill::media::se_wrapper::vcmul_i16(a.data(), b.data(), out.data(),
                                                       static_cast<uint16_t>(n));
               }),
        {"VOLK, 16ic, low halves", Role::peer, timing::repeated(volk_16ic),
         [&] {
             volk_16ic();
             return largestDifference(out.data(), small_expected.data(), parts);
         }},
        {"VOLK, 32fc, floats", Role::peer, timing::repeated(volk_32fc),
         [&] {
             volk_32fc();
             return largestDifference(float_out.data(), expected.data(), parts);
         },
         0.6},
    };
    for (const PlainLoops* loops : {&kPlainFloor, &kPlainNative}) {
        all.push_back(in_q15(loops->name, Role::plain,
                             [&, loops] { loops->multiply(a.data(), b.data(), out.data(), n); }));
    }
    const Figure rate = {"complex values a cycle", true};
    session.hold({"vcmul_i16", "values", n, rate, static_cast<double>(n), std::move(all)});
}

}  // namespace

void complexMultiply(Session& session) {
    session.requireRight("vcmul_i16");
    for (const int n : kLengths) multiply(session, n);
}

}  // namespace routines_vs_libraries
