// soak: hours of sound through an engine behind the wrapper. Exit code 0: the memory stayed flat and every run had
// the same checksum, that of --checksum if given; 1: not so; 2: wrong usage.
#include <sys/wait.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <cmath>
#include <iostream>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "common/string_printf.h"
#include "tests/reliability/soak/run.h"

namespace {

using quill::stringPrintf;
using reliability::SoakResult;

constexpr double kBlocksAnHour = 360'000;
constexpr uint64_t kMostGrowthKib = 64;  // the allocator may keep some pages of a larger pass

struct Options {
    std::string engine = "se_lib_beamv1.14";
    double hours = 1;
    int runs = 1;
    std::string checksum;  // empty: any
    bool json = false;
};

double microseconds(const SoakResult& result, uint64_t ticks) {
    return 1e6 * static_cast<double>(ticks) / result.ticks_per_second;
}

bool isFlat(const SoakResult& result) {
    return result.last_kib <= result.first_kib + kMostGrowthKib;
}

std::string checksumOf(const SoakResult& result) {
    return stringPrintf("%016llx", static_cast<unsigned long long>(result.checksum));
}

std::string textOf(const SoakResult& result) {
    const auto duration = [&](const char* name, uint64_t ticks) {
        return stringPrintf("    %-12s %10llu  %9.1f us\n", name, static_cast<unsigned long long>(ticks),
                            microseconds(result, ticks));
    };
    const double sound = static_cast<double>(result.blocks) / 100;
    return stringPrintf("  sound     %.2f h in %.1f s, %.0f times as fast as spoken\n", sound / 3600,
                        result.seconds, sound / result.seconds) +
           stringPrintf("  passes    %llu rounds of edits, applied and published\n",
                        static_cast<unsigned long long>(result.rounds)) +
           stringPrintf("  memory    %llu KiB at the start, %llu KiB at the end, at most %llu KiB\n",
                        static_cast<unsigned long long>(result.first_kib),
                        static_cast<unsigned long long>(result.last_kib),
                        static_cast<unsigned long long>(result.most_kib)) +
           "  checksum  " + checksumOf(result) + "\n" + "  block     cycles of the time-stamp counter\n" +
           duration("median", result.median) + duration("99.9 %", result.share_999) +
           duration("99.99 %", result.share_9999) + duration("longest", result.longest) +
           stringPrintf("    interrupted by the system: %llu blocks, the longest %.1f us\n",
                        static_cast<unsigned long long>(result.interrupted),
                        microseconds(result, result.longest_interrupted));
}

nlohmann::ordered_json jsonOf(const SoakResult& result) {
    const auto duration = [&](uint64_t ticks) {
        return nlohmann::ordered_json{{"cycles", ticks}, {"microseconds", microseconds(result, ticks)}};
    };
    return {
        {"blocks", result.blocks},
        {"rounds", result.rounds},
        {"seconds", result.seconds},
        {"checksum", checksumOf(result)},
        {"resident_kib", {{"start", result.first_kib}, {"end", result.last_kib}, {"most", result.most_kib}}},
        {"block",
         {{"median", duration(result.median)},
          {"share_99.9", duration(result.share_999)},
          {"share_99.99", duration(result.share_9999)},
          {"longest", duration(result.longest)},
          {"interrupted", result.interrupted},
          {"longest_interrupted", duration(result.longest_interrupted)}}}};
}

// An engine stays in its process, so that every run has one of its own.
bool soakInChild(const Options& options, uint64_t blocks, SoakResult* result) {
    int ends[2];
    if (::pipe(ends) != 0) return false;
    const pid_t child = ::fork();
    if (child == 0) {
        const SoakResult own = reliability::soak(options.engine, blocks);
        ::_exit(::write(ends[1], &own, sizeof(own)) == sizeof(own) ? 0 : 1);
    }
    ::close(ends[1]);
    const bool whole = ::read(ends[0], result, sizeof(*result)) == static_cast<ssize_t>(sizeof(*result));
    ::close(ends[0]);
    int status = 0;
    ::waitpid(child, &status, 0);
    return whole && status == 0;
}

int run(const Options& options) {
    const auto blocks = static_cast<uint64_t>(std::llround(options.hours * kBlocksAnHour));
    std::vector<SoakResult> results;
    nlohmann::ordered_json json = {{"engine", options.engine}, {"runs", nlohmann::ordered_json::array()}};
    bool good = true;
    for (int i = 0; i < options.runs; ++i) {
        SoakResult result{};
        if (!soakInChild(options, blocks, &result)) {
            std::cerr << "soak: the run ended early; the record before this line says why\n";
            return 1;
        }
        if (!options.json) std::cout << options.engine << '\n' << textOf(result) << std::flush;
        json["runs"].push_back(jsonOf(result));
        good = good && isFlat(result) && (results.empty() || results[0].checksum == result.checksum);
        results.push_back(result);
    }
    if (options.json) std::cout << json.dump(2) << '\n';
    if (!good) std::cerr << "soak: the memory grew, or the checksums differ\n";
    if (!options.checksum.empty() && checksumOf(results[0]) != options.checksum) {
        std::cerr << "soak: the checksum is " << checksumOf(results[0]) << ", not " << options.checksum
                  << "; where the engine's sound was changed on purpose, put the new one in its place\n";
        good = false;
    }
    return good ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
    Options options;
    CLI::App app(
        "Sends hours of sound through an engine as fast as it goes, with edits and passes in between.");
    app.add_option("--engine", options.engine, "Build in the folder selibs beside the program")
        ->capture_default_str();
    app.add_option("--hours", options.hours, "Of sound, a run")
        ->capture_default_str()
        ->check(CLI::Range(0.001, 10'000.0));
    app.add_option("--runs", options.runs, "One after the other; their checksums have to agree")
        ->capture_default_str()
        ->check(CLI::Range(1, 1000));
    app.add_option("--checksum", options.checksum, "Of the sound, which has to come out");
    app.add_flag("--json", options.json, "The results as JSON");
    CLI11_PARSE(app, argc, argv);
    return run(options);
}
