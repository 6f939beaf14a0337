// kernel_harness: checks and times every variant of every kernel.
// Exit codes: 0 success, 1 a variant is wrong or another failure, 2 wrong usage.
#include <random>
#include <string>

#include "kernel_check/check.h"
#include "kernel_check/harness/report.h"
#include "kernel_check/harness/sweep.h"
#include "kernel_check/program/engine.h"
#include "kernel_check/program/program.h"
#include "kernel_check/self_test/self_test.h"
#include "kernel_check/timing/measure.h"
#include "kernel_check/timing/multiply_add_limit.h"
#include "webrtc_common/se_wrapper/engine/load.h"

namespace kernel_harness {
namespace {

namespace se = quill::media::se_wrapper;

constexpr const char* kName = "kernel_harness";

constexpr const char* kDescription =
    "Checks each variant of each kernel against a reference that states what it must compute, on problems\n"
    "drawn from a seed: lengths around multiples of eight, any alignment, extreme values, pages without\n"
    "access around every buffer. Outputs and the memory around them are compared.\n"
    "With --bench it then times the variants in core cycles; the core's clock is measured with each case.\n"
    "The first line is the machine's own limit: multiply-accumulates that use registers only.";

constexpr const char* kExamples =
    "Examples:\n"
    "  kernel_harness                                          checks everything\n"
    "  kernel_harness --engine se_lib_beamv1.14                the engine's own routines as well\n"
    "  kernel_harness --bench --function convolve_i16_i16      times one kernel's variants\n"
    "  kernel_harness --bench --sweep 8 --variant avx2         their speed over the number of taps\n"
    "  kernel_harness --function widen --variant sse41 --seed 7 --repeat 1\n"
    "                                                          repeats one problem";

struct Options {
    bool list = false, bench = false, json = false, self_test = false;
    std::string function, variant, engine;
    uint32_t seed = std::random_device()();
    int repeat = 2000;
    int sweep = 0;
};

void addOptions(CLI::App& app, Options& options) {
    app.add_flag("--list", options.list, "List the variants and whether they run on this machine");
    app.add_option("--function", options.function, "Only this function")->type_name("NAME");
    app.add_option("--variant", options.variant, "Only this variant of each function")->type_name("NAME");
    app.add_option("--seed", options.seed, "Seed of the first problem (default: another one each time)");
    app.add_option("--repeat", options.repeat, "Problems for each variant, of consecutive seeds")
        ->capture_default_str()
        ->check(CLI::PositiveNumber);
    app.add_flag("--bench", options.bench, "Time the variants if all are correct");
    app.add_option("--sweep", options.sweep,
                   "With --bench: time over 16 to 512 taps, this far apart, instead")
        ->check(CLI::PositiveNumber);
    app.add_flag("--json", options.json, "Print JSON");
    app.add_option("--engine", options.engine, "Engine build in selibs/ whose own routines take part")
        ->type_name("NAME");
    app.add_flag("--self-test", options.self_test, "Check that deliberately broken kernels are caught");
    app.footer(kExamples);
}

std::string repeatCommand(const Options& options, const Selected& row, uint32_t seed) {
    return "kernel_harness --function " + row.function->name + " --variant " + row.variant->name +
           " --seed " + std::to_string(seed) + " --repeat 1" +
           (options.engine.empty() ? "" : " --engine " + options.engine);
}

// True when the variant is correct, or cannot run on this machine.
bool check(const Options& options, const Selected& row, Report& report) {
    if (!row.runs) {
        report.skipped(row);
        return true;
    }
    const auto [seed, text] =
        quill::test::firstFault(*row.function, *row.variant, options.seed, options.repeat);
    if (text.empty()) {
        report.passed(row, options.repeat);
        return true;
    }
    report.failed(row, text, repeatCommand(options, row, seed));
    return false;
}

bool checkAll(const Options& options, const std::vector<Selected>& rows, Report& report) {
    bool good = true;
    for (const Selected& row : rows) good = check(options, row, report) && good;
    return good;
}

void timeAll(const Options& options, const std::vector<Selected>& rows, Report& report) {
    for (const Selected& row : rows) {
        if (!row.runs) continue;
        for (const auto& numbers : row.function->timed_cases) {
            report.timed(row, numbers, timing::measure(*row.variant, numbers, options.seed));
        }
    }
}

// A function that is only timed; there is no reference.
KernelFunction machineLimits() {
    KernelFunction function{"multiply_add_limit", {}, {{}}};
    for (const timing::MultiplyAddLimit& limit : timing::multiplyAddLimits()) {
        function.variants.push_back({limit.name, limit.needs, [&limit](quill::test::Problem& problem) {
                                         problem.work(0, limit.multiply_adds);
                                         problem.call(limit.loop);
                                     }});
    }
    return function;
}

bool list(const std::vector<Selected>& rows, Report& report) {
    for (const Selected& row : rows) report.listed(row);
    return true;
}

bool run(const Options& options) {
    Machine machine;
    if (!options.engine.empty()) {
        program::startEngine(kName, options.engine, se::initSignalEssenceOptimForTests);
        machine.has_engine = true;
    }
    se::selectKernels(machine);
    Report report(options.seed, options.json);
    report.selected(se::selectedKernels());
    if (options.self_test) return quill::test::selfTest(options.seed, options.repeat);
    const std::vector<KernelFunction> functions = quill::test::allKernelFunctions();
    const std::vector<Selected> rows = select(functions, machine, options.function, options.variant);
    const bool good = options.list ? list(rows, report) : checkAll(options, rows, report);
    if (good && options.bench && options.sweep > 0) {
        for (const Sweep& sweep : sweepTaps(rows, options.sweep, options.seed)) report.swept(sweep);
    } else if (good && options.bench) {
        const std::vector<KernelFunction> limits = {machineLimits()};
        timeAll(options, select(limits, machine, {}, {}), report);
        timeAll(options, rows, report);
    }
    report.finish();
    return good;
}

}  // namespace
}  // namespace kernel_harness

int main(int argc, char** argv) {
    using namespace kernel_harness;
    Options options;
    CLI::App app(kDescription, kName);
    addOptions(app, options);
    return program::run(app, argc, argv, [&] { return run(options) ? program::kDone : program::kFailure; });
}
