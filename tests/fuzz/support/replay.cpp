// Runs a fuzzer's entry point without libFuzzer: on the files of a corpus, then on mutations of them. Mutation k is
// the same in every run, and --only=k repeats it.
//
// Usage: replay_NAME [--mutations=N] [--only=K] FOLDER...
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "tests/fuzz/support/entry.h"

namespace {

using Bytes = std::vector<uint8_t>;

constexpr size_t kLargestInput = 4096;

char g_present[512];  // the input that runs, for the signal handler

void nameInput(const std::string& name) {
    std::snprintf(g_present, sizeof g_present, "replay: failed on %s\n", name.c_str());
}

void tellInput(int signal) {
    [[maybe_unused]] const auto written = ::write(STDERR_FILENO, g_present, std::strlen(g_present));
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

struct Seed {
    std::string path;
    Bytes bytes;
};

std::vector<Seed> seedsIn(const std::string& folder) {
    std::vector<Seed> seeds;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        std::ifstream in(entry.path(), std::ios::binary);
        seeds.push_back({entry.path().string(), Bytes(std::istreambuf_iterator<char>(in), {})});
    }
    std::sort(seeds.begin(), seeds.end(), [](const Seed& a, const Seed& b) { return a.path < b.path; });
    return seeds;
}

void mutateOnce(Bytes& bytes, const Bytes& other, std::mt19937& random) {
    const size_t place = bytes.empty() ? 0 : random() % bytes.size();
    const auto at = bytes.begin() + static_cast<std::ptrdiff_t>(place);
    const size_t length = 1 + random() % 16;
    switch (bytes.empty() ? 2 : random() % 6) {
        case 0:
            *at = static_cast<uint8_t>(random());
            break;
        case 1:
            *at = static_cast<uint8_t>(*at ^ (1u << random() % 8));
            break;
        case 2:
            bytes.insert(at, length, static_cast<uint8_t>(random()));
            break;
        case 3:
            bytes.erase(at, at + static_cast<std::ptrdiff_t>(std::min(length, bytes.size() - place)));
            break;
        case 4:
            bytes.insert(at, other.begin(), other.begin() + static_cast<std::ptrdiff_t>(other.size() / 2));
            break;
        default:
            *at = std::array<uint8_t, 6>{0, 1, 0x7f, 0x80, 0xff, '"'}[random() % 6];
            break;
    }
}

Bytes mutation(const std::vector<Seed>& seeds, unsigned number) {
    std::mt19937 random(number);
    Bytes bytes = seeds[random() % seeds.size()].bytes;
    const Bytes& other = seeds[random() % seeds.size()].bytes;
    for (size_t times = 1 + random() % 8; times != 0; --times) mutateOnce(bytes, other, random);
    bytes.resize(std::min(bytes.size(), kLargestInput));
    return bytes;
}

Bytes randomInput(std::mt19937& random) {
    Bytes bytes(16 + random() % 240);
    std::generate(bytes.begin(), bytes.end(), [&] { return static_cast<uint8_t>(random()); });
    return bytes;
}

void run(const std::string& name, const Bytes& bytes) {
    nameInput(name);
    LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
}

}  // namespace

int main(int argc, char** argv) {
    for (const int signal : {SIGABRT, SIGSEGV, SIGBUS, SIGFPE, SIGILL}) std::signal(signal, tellInput);
    LLVMFuzzerInitialize(&argc, &argv);
    std::vector<Seed> seeds;
    unsigned mutations = 0, first = 0, random_inputs = 0, random_seed = 1;
    for (int i = 1; i < argc; ++i) {
        if (std::sscanf(argv[i], "--mutations=%u", &mutations) == 1) continue;
        if (std::sscanf(argv[i], "--random=%u", &random_inputs) == 1) continue;
        if (std::sscanf(argv[i], "--seed=%u", &random_seed) == 1) continue;
        if (std::sscanf(argv[i], "--only=%u", &first) == 1) {
            mutations = 1;
            continue;
        }
        if (std::strncmp(argv[i], "--", 2) == 0) continue;  // the fuzzer's own
        for (Seed& seed : seedsIn(argv[i])) seeds.push_back(std::move(seed));
    }
    if (seeds.empty()) {
        std::fprintf(stderr, "replay: no inputs; name the folder of a corpus\n");
        return 2;
    }
    for (const Seed& seed : seeds) run(seed.path, seed.bytes);
    for (unsigned k = first; k < first + mutations; ++k)
        run("--only=" + std::to_string(k), mutation(seeds, k));
    std::mt19937 random(random_seed);
    for (unsigned k = 0; k < random_inputs; ++k)
        run("random input " + std::to_string(k), randomInput(random));
    std::printf("%zu inputs of the corpus, %u mutations, %u random inputs\n", seeds.size(), mutations,
                random_inputs);
    return 0;
}
