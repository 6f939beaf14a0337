// Prints the features that CPUInfo reports: "features: ssse3 sse41 .", for example.
#include <cstdio>

#include "common/cpu_info.h"

int main() {
    const quill::CPUInfo cpu;
    const struct {
        const char* name;
        bool present;
    } features[] = {
        {"ssse3", cpu.has_ssse3},
        {"sse41", cpu.has_sse41},
        {"avx", cpu.has_avx},
        {"avx2", cpu.has_avx2},
        {"avx_vnni", cpu.has_avx_vnni},
        {"avx512", cpu.has_avx512},
        {"avx512_vnni", cpu.has_avx512_vnni},
    };
    std::printf("features: ");
    for (const auto& feature : features) {
        if (feature.present) std::printf("%s ", feature.name);
    }
    std::puts(".");
}
