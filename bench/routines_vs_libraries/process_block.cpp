// The wrapper's own share of a block, with an engine that does nothing, compared with a copy of the rows that it fills.
#include <algorithm>
#include <array>
#include <cstring>
#include <memory>

#include "bench/routines_vs_libraries/areas.h"
#include "bench/routines_vs_libraries/signals.h"
#include "bench/routines_vs_libraries/swresample.h"
#include "bench/stub_engine/stub_engine.h"
#include "kernel_check/references/dsp.h"
#include "webrtc_common/se_wrapper/dsp/deinterleave.h"
#include "webrtc_common/se_wrapper/engine/process_block.h"
#include "webrtc_common/se_wrapper/table/engine_table.h"

namespace routines_vs_libraries {
namespace {

namespace se = quill::media::se_wrapper;

constexpr size_t kRows = se::kNumMicrophones * se::BLOCK_SIZE;
constexpr const char* kCopy = "memcpy of the rows";

// The engine's last input: the centre microphone, and the others after it.
int16_t g_centre[se::BLOCK_SIZE], g_others[kRows - se::BLOCK_SIZE];

void keepRows(int16_t* centre, int16_t* others, int16_t*) {
    std::copy_n(centre, std::size(g_centre), g_centre);
    std::copy_n(others, std::size(g_others), g_others);
}

struct Problem {
    explicit Problem(size_t of_channels) : channels(of_channels) {
        quill::test::referenceDeinterleave(interleaved.data(), channels, expected);
    }
    const size_t channels;
    const Samples interleaved = noise(se::BLOCK_SIZE * channels, 32767, 1);
    // Aligned for the fastest copy.
    alignas(64) int16_t expected[kRows] = {};
    alignas(64) int16_t rows[kRows] = {};
    int16_t output[se::BLOCK_SIZE] = {};
};

Contestant wholeBlock(Problem& p) {
    const auto call = [&p] {
        se::processBlock(static_cast<uint32_t>(p.channels), p.interleaved.data(), se::BLOCK_SIZE, p.output,
                         true);
    };
    const auto error = [&p, call] {
        const auto does_nothing = se::MMIfProcessMicrophones;
        se::MMIfProcessMicrophones = keepRows;
        call();
        se::MMIfProcessMicrophones = does_nothing;
        return largestDifference(g_centre, p.expected, std::size(g_centre)) +
               largestDifference(g_others, p.expected + se::BLOCK_SIZE, std::size(g_others));
    };
    return {"ours, processBlock", Role::ours, timing::repeated(call), error};
}

template <class Call>
Contestant rowsOf(const char* name, Role role, Problem& p, const Call& call) {
    const auto error = [&p, call] {
        call();
        return largestDifference(p.rows, p.expected, kRows);
    };
    return {name, role, timing::repeated(call), error};
}

// Outputs all channels, in their own order.
Contestant swresample(Problem& p) {
    const Swr made = makeSwr(static_cast<int>(p.channels), AV_SAMPLE_FMT_S16P, 16000, 16000);
    const auto rows = std::make_shared<Samples>(p.channels * se::BLOCK_SIZE);
    const auto call = [made, rows, &p] {
        std::array<uint8_t*, 8> targets{};
        for (size_t c = 0; c < p.channels; ++c) {
            targets[c] = reinterpret_cast<uint8_t*>(rows->data() + c * se::BLOCK_SIZE);
        }
        const auto* source = reinterpret_cast<const uint8_t*>(p.interleaved.data());
        swr_convert(made.get(), targets.data(), se::BLOCK_SIZE, &source, se::BLOCK_SIZE);
    };
    const auto error = [call, rows, &p] {
        call();
        double difference = 0;
        for (size_t r = 0; r < se::kNumMicrophones; ++r) {
            const int16_t* const row = rows->data() + se::kMicrophoneChannels[r] * se::BLOCK_SIZE;
            difference += largestDifference(row, &p.expected[r * se::BLOCK_SIZE], se::BLOCK_SIZE);
        }
        return difference;
    };
    return {"libswresample, 8 interleaved to 8 planes", Role::peer, timing::repeated(call), error};
}

void block(Session& session, size_t channels) {
    Problem p(channels);
    std::vector<Contestant> all = {
        wholeBlock(p),
        rowsOf("ours, deinterleaveMicrophones", Role::ours, p,
               [&p] { se::deinterleaveMicrophones(p.interleaved.data(), p.channels, p.rows); }),
        rowsOf("plain loop", Role::plain, p,
               [&p] { quill::test::referenceDeinterleave(p.interleaved.data(), p.channels, p.rows); }),
        rowsOf(kCopy, Role::limit, p, [&p] { std::memcpy(p.rows, p.expected, kRows * sizeof(int16_t)); }),
    };
    if (channels == se::kMinChannels) all.push_back(swresample(p));
    const Figure cost = {"cycles a block", false};
    session.hold(
        {"processBlock, 160 frames", "channels", static_cast<int>(channels), cost, 1, std::move(all), kCopy});
}

}  // namespace

void processBlock(Session& session) {
    session.requireRight("deinterleaveMicrophones");
    bench::fillInterfaceTable();
    for (const size_t channels : {8u, 10u, 16u}) block(session, channels);
}

}  // namespace routines_vs_libraries
