// What a report says about its run.
#include "bench/engine_vs_peer/report_table.h"
#include "common/string_printf.h"
#include "kernel_check/program/machine.h"

namespace engine_vs_peer {
namespace {

using quill::stringPrintf;

std::string voicesText(const std::vector<std::string>& recorded_talkers) {
    if (recorded_talkers.empty()) return "synthetic";
    std::string names;
    for (const std::string& name : recorded_talkers) names += (names.empty() ? "" : ", ") + name;
    return stringPrintf("recordings of %zu people: ", recorded_talkers.size()) + names;
}

}  // namespace

std::vector<Cells> environmentOf(const RunText& run) {
    return {{"engine", run.engine.build + " (" + run.engine.version + ")"},
            {"kernels", run.engine.kernels},
            {"peer", "SpeexDSP " SPEEXDSP_VERSION " behind a delay-and-sum"},
            {"processor", program::processorName()},
            {"compiler", program::compilerName()},
            {"seeds", stringPrintf("%u to %u", run.options.seed,
                                   run.options.seed + static_cast<uint32_t>(run.seeds) - 1)},
            {"voices", voicesText(run.recorded_talkers)},
            {"times", stringPrintf("the shortest of %d passes, for each block", run.passes)},
            {"rooms", run.options.free_field ? "none" : "drawn, 0.2 to 0.5 s"},
            {"look", run.options.tell_engine
                         ? "both are given the position of the talker"
                         : "the engine searches for the talker, the peer is given its position"}};
}

}  // namespace engine_vs_peer
