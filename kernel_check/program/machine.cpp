#include "kernel_check/program/machine.h"

#include <fstream>
#include <utility>

namespace program {
namespace {

// The value of a name in the first processor's list.
std::string processorEntry(const std::string& name) {
    std::ifstream lines("/proc/cpuinfo");
    for (std::string line; std::getline(lines, line);) {
        const size_t colon = line.find(": ");
        if (colon == std::string::npos || line.substr(0, line.find_first_of("\t:")) != name) continue;
        return line.substr(colon + 2);
    }
    return "unknown";
}

}  // namespace

std::string processorName() {
    return processorEntry("model name");
}

std::string processorModel() {
    std::string text;
    for (const auto& [name, entry] : {std::pair("family", "cpu family"), std::pair("model", "model"),
                                      std::pair("stepping", "stepping")}) {
        text += (text.empty() ? "" : ", ") + (name + (" " + processorEntry(entry)));
    }
    return text;
}

std::string compilerName() {
#ifdef __clang__
    return __VERSION__;  // includes the compiler's name
#else
    return "g++ " __VERSION__;
#endif
}

}  // namespace program
