#include "bench/measure/machine.h"

#include <fstream>

namespace bench {

std::string processorName() {
    std::ifstream lines("/proc/cpuinfo");
    for (std::string line; std::getline(lines, line);) {
        const size_t colon = line.find(": ");
        if (line.rfind("model name", 0) == 0 && colon != std::string::npos) return line.substr(colon + 2);
    }
    return "unknown";
}

std::string compilerName() {
#ifdef __clang__
    return __VERSION__;  // names itself
#else
    return "g++ " __VERSION__;
#endif
}

}  // namespace bench
