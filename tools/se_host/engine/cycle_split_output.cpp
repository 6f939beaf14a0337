#include "tools/se_host/engine/cycle_split_output.h"

#include "common/string_printf.h"

namespace se_host {
namespace {

using quill::stringPrintf;
using Json = nlohmann::ordered_json;

// What the hooks do, in the order of kAudioHooks.
constexpr const char* kHookLabels[] = {"FIR filters",    "echo convolutions", "complex products",
                                       "interpolations", "forward DFTs",      "inverse DFTs"};
static_assert(std::size(kHookLabels) == kNumAudioHooks);

constexpr const char* kLabel = "    %-18s";
constexpr const char* kCell = "%9.0f %5.1f %% %8s";  // cycles, share, calls

std::string cell(double cycles, const CycleShares& of, const std::string& calls) {
    return stringPrintf(kCell, cycles, 100 * cycles / of.total(), calls.c_str());
}

std::string row(const char* label, const std::string& first, const std::string& second) {
    const std::string text = stringPrintf(kLabel, label) + first + "   " + second;
    return text.substr(0, text.find_last_not_of(' ') + 1) + "\n";
}

// One row: the cell of each run.
template <class CellOf>
std::string row(const char* label, const CycleShares& shares, const CycleShares* own, const CellOf& cellOf) {
    return row(label, cellOf(shares), own ? cellOf(*own) : std::string());
}

std::string interruptedText(const CycleShares& shares) {
    if (shares.interrupted == 0) return "";
    return stringPrintf(" (without %zu interrupted ones)", shares.interrupted);
}

}  // namespace

std::string toText(const CycleShares& shares, const CycleShares* own) {
    const std::string head = stringPrintf("%9s %7s %8s", "cycles", "share", "calls");
    std::string text = stringPrintf("  cycles    of the core a block, on average over %zu", shares.blocks) +
                       interruptedText(shares) + "\n";
    if (own) text += row("", stringPrintf("%26s", "this run"), stringPrintf("%26s", "engine's own"));
    text += row("", head, own ? head : "");
    text += row("de-interleaving", shares, own, [](const auto& of) { return cell(of.deinterleave, of, ""); });
    text += row("the engine itself", shares, own, [](const auto& of) { return cell(of.engine, of, ""); });
    for (size_t i = 0; i < kNumAudioHooks; ++i) {
        text += row(kHookLabels[i], shares, own, [i](const auto& of) {
            return cell(of.hooks[i].cycles, of, stringPrintf("%.1f", of.hooks[i].calls));
        });
    }
    return text + row("all", shares, own, [](const auto& of) { return cell(of.total(), of, ""); });
}

Json toJson(const CycleShares& shares) {
    Json hooks = Json::object();
    for (size_t i = 0; i < kNumAudioHooks; ++i) {
        hooks[kAudioHooks[i]] = {{"cycles", shares.hooks[i].cycles}, {"calls", shares.hooks[i].calls}};
    }
    return {{"deinterleave", shares.deinterleave},
            {"engine", shares.engine},
            {"hooks", hooks},
            {"total", shares.total()},
            {"blocks", shares.blocks},
            {"interrupted", shares.interrupted}};
}

}  // namespace se_host
