#include "bench/routines_vs_libraries/session.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <utility>

#include "kernel_check/check.h"
#include "tests/common/property_node/allocation_count.h"

namespace routines_vs_libraries {
namespace {

constexpr uint32_t kSeed = 1;

void requireRight(const Contest& contest, const Contestant& contestant) {
    if (!contestant.error) return;
    const double error = contestant.error();
    if (error <= contestant.tolerance) return;  // not so for NaN
    throw Mismatch(contest.subject + ", " + contest.parameter + " " + std::to_string(contest.value) + ": '" +
                   contestant.name + "' is off by " + std::to_string(error) + ", of which " +
                   std::to_string(contestant.tolerance) + " is allowed");
}

double allocationsOf(const Contestant& contestant) {
    return static_cast<double>(quill::test::allocationsOf([&] { contestant.run(1); }));
}

// A line that the next one overwrites, on a terminal only.
void showProgress(const std::string& text) {
    if (::isatty(STDERR_FILENO) != 0) std::fprintf(stderr, "\r\033[K%s", text.c_str());
}

}  // namespace

void Session::requireRight(const std::string& kernel) {
    for (const quill::test::KernelFunction& function : quill::test::allKernelFunctions()) {
        if (function.name != kernel) continue;
        for (const quill::test::FunctionVariant& variant : function.variants) {
            if (!(machine_.*variant.needs)) continue;
            const auto failure = quill::test::firstFault(function, variant, kSeed, quick_ ? 20 : 500);
            if (failure.text.empty()) continue;
            throw Mismatch(kernel + ", variant " + variant.name + ", seed " + std::to_string(failure.seed) +
                           ": " + failure.text);
        }
        return;
    }
    throw std::logic_error("no kernel '" + kernel + "'");
}

void Session::hold(const Contest& contest) {
    std::vector<timing::Repeated> calls;
    for (const Contestant& contestant : contest.contestants) {
        routines_vs_libraries::requireRight(contest, contestant);
        calls.push_back(contestant.run);
    }
    showProgress(contest.subject + ", " + contest.parameter + " " + std::to_string(contest.value));
    const timing::Rounds rounds = quick_ ? timing::Rounds{11, 20e-6, 0.1, 3} : timing::Rounds();
    const std::vector<timing::Timing> timings = timing::timeInTurn(calls, rounds);
    for (size_t i = 0; i < calls.size(); ++i) {
        const Contestant& contestant = contest.contestants[i];
        const double work = contestant.work > 0 ? contestant.work : contest.work;
        const double allocations = contest.count_allocations ? allocationsOf(contestant) / work : -1;
        keep({area_, contest.subject, contest.parameter, contest.value, contest.figure, contestant.name,
              contestant.role, timings[i].cycles, timings[i].nanoseconds, work, contest.beside, allocations});
    }
    showProgress("");
}

void Session::keep(Result result) {
    const auto same = std::find_if(results_.begin(), results_.end(), [&](const Result& r) {
        return r.subject == result.subject && r.value == result.value && r.name == result.name;
    });
    if (same == results_.end()) {
        results_.push_back(std::move(result));
    } else if (result.cycles < same->cycles) {
        *same = std::move(result);
    }
}

}  // namespace routines_vs_libraries
