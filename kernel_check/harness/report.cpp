#include "kernel_check/harness/report.h"

#include <cstdio>
#include <iostream>

namespace kernel_harness {
namespace {

using Json = nlohmann::ordered_json;

void printRow(const Selected& row, const char* text) {
    std::printf("%-24s %-11s %s\n", row.function->name.c_str(), row.variant->name.c_str(), text);
    std::fflush(stdout);
}

}  // namespace

Report::Report(uint32_t seed, bool json) : json_(json), document_{{"seed", seed}} {
    if (!json_) std::printf("seed %u\n", seed);
}

void Report::selected(const std::vector<quill::media::se_wrapper::SelectedKernels>& families) {
    std::string text;
    for (const auto& [family, variant] : families) {
        document_["selected"][family] = variant;
        text += (text.empty() ? "" : ", ") + std::string(family) + " " + variant;
    }
    if (!json_) std::printf("selected here: %s\n", text.c_str());
}

void Report::add(const char* list, const Selected& row, Json more) {
    Json entry = {{"function", row.function->name}, {"variant", row.variant->name}};
    entry.update(more);
    document_[list].push_back(std::move(entry));
}

void Report::listed(const Selected& row) {
    add("variants", row, {{"runs", row.runs}});
    if (!json_) printRow(row, row.runs ? "runs here" : missing(*row.variant).c_str());
}

void Report::skipped(const Selected& row) {
    add("checks", row, {{"skipped", missing(*row.variant)}});
    if (!json_) printRow(row, ("skipped: " + missing(*row.variant)).c_str());
}

void Report::passed(const Selected& row, int problems) {
    add("checks", row, {{"passed", true}, {"problems", problems}});
    if (!json_) printRow(row, (std::to_string(problems) + " problems, all right").c_str());
}

void Report::failed(const Selected& row, const std::string& text, const std::string& repeat_command) {
    add("checks", row, {{"passed", false}, {"text", text}, {"repeat", repeat_command}});
    if (!json_) printRow(row, ("WRONG: " + text + "\n  again with: " + repeat_command).c_str());
}

void Report::timed(const Selected& row, const quill::test::Numbers& numbers, const timing::Measurement& m) {
    Json numbers_given = Json::object();
    for (const auto& [name, value] : numbers) numbers_given[name] = value;
    const Json per_sample = m.samples > 0 ? Json(m.cycles / m.samples) : Json();
    const double per_cycle = m.multiply_adds / m.cycles;
    // The first variant that is timed is the reference, if it is selected.
    const double first =
        first_cycles_.emplace(row.function->name + described(numbers), m.cycles).first->second;
    const double times_as_fast = first / m.cycles;
    add("timings", row,
        {{"case", numbers_given},
         {"nanoseconds", m.nanoseconds},
         {"cycles", m.cycles},
         {"cycles_per_sample", per_sample},
         {"multiply_adds_per_cycle", per_cycle},
         {"times_as_fast_as_first", times_as_fast}});
    if (json_) return;
    if (!table_begun_) {
        std::printf("%-24s %-11s %-58s %10s %8s %10s %8s %8s\n", "function", "variant", "case", "cycles",
                    "GHz", "cycles/smp", "MAC/cyc", "speed");
        table_begun_ = true;
    }
    char samples[32] = "-", multiply_adds[32] = "-";
    if (m.samples > 0) std::snprintf(samples, sizeof samples, "%.3f", m.cycles / m.samples);
    if (m.multiply_adds > 0) std::snprintf(multiply_adds, sizeof multiply_adds, "%.2f", per_cycle);
    std::printf("%-24s %-11s %-58s %10.1f %8.2f %10s %8s %7.2fx\n", row.function->name.c_str(),
                row.variant->name.c_str(), described(numbers).c_str(), m.cycles, m.cycles / m.nanoseconds,
                samples, multiply_adds, times_as_fast);
    std::fflush(stdout);
}

void Report::swept(const Sweep& sweep) {
    const std::size_t count = sweep.variants.size();
    std::vector<std::size_t> lowest(count, 0);
    if (!json_) {
        std::printf("\n%s, %s: multiply-accumulates a cycle, share of the better neighbour\n%5s",
                    sweep.function->name.c_str(), sweep.shape.c_str(), "taps");
        for (const FunctionVariant* variant : sweep.variants) std::printf("%16s", variant->name.c_str());
        std::printf("\n");
    }
    for (std::size_t t = 0; t < sweep.taps.size(); ++t) {
        if (!json_) std::printf("%5d", sweep.taps[t]);
        for (std::size_t v = 0; v < count; ++v) {
            const double share = sweep.share(v, t);
            if (share < sweep.share(v, lowest[v])) lowest[v] = t;
            add("sweep", {sweep.function, sweep.variants[v], true},
                {{"shape", sweep.shape},
                 {"taps", sweep.taps[t]},
                 {"multiply_adds_per_cycle", sweep.per_cycle[v][t]},
                 {"share_of_better_neighbour", share}});
            if (!json_) std::printf("%11.1f %4.2f", sweep.per_cycle[v][t], share);
        }
        if (!json_) std::printf("\n");
    }
    if (json_) return;
    std::printf("lowest");
    for (std::size_t v = 0; v < count; ++v) {
        std::printf("%s%4.2f at %3d", v == 0 ? "    " : "     ", sweep.share(v, lowest[v]),
                    sweep.taps[lowest[v]]);
    }
    std::printf("\n");
    std::fflush(stdout);
}

void Report::finish() const {
    if (json_) std::cout << document_.dump(2) << std::endl;
}

}  // namespace kernel_harness
