#include "tools/se_host/engine/engine_info.h"

#include "common/cpu_info.h"
#include "host/engine/engine_files.h"
#include "host/engine/properties_by_text.h"
#include "webrtc_common/se_wrapper.h"
#include "webrtc_common/se_wrapper/dsp/dsp_kernels.h"

namespace se_host {
namespace {

namespace se = quill::media::se_wrapper;

struct Feature {
    const char* name;
    bool quill::CPUInfo::*flag;
};

constexpr Feature kFeatures[] = {
    {"ssse3", &quill::CPUInfo::has_ssse3},
    {"sse4.1", &quill::CPUInfo::has_sse41},
    {"avx", &quill::CPUInfo::has_avx},
    {"avx2", &quill::CPUInfo::has_avx2},
    {"avx-vnni", &quill::CPUInfo::has_avx_vnni},
    {"avx512", &quill::CPUInfo::has_avx512},
    {"avx512-vnni", &quill::CPUInfo::has_avx512_vnni},
};

// Asks the library and not the table, because some slots of the table hold the wrapper's own defaults.
std::vector<Presence> optionalEntryPoints(quill::DynLibHandle engine) {
    std::vector<Presence> found;
    for (const se::EngineRow& row : se::kEngineRows) {
        if (se::isRequired(row.kind)) continue;
        found.push_back({row.symbols[0], quill::getSymbolAddress(engine, row.symbols[0]) != nullptr});
    }
    return found;
}

std::vector<Presence> processorFeatures() {
    const quill::CPUInfo processor;
    std::vector<Presence> features;
    for (const Feature& feature : kFeatures) features.push_back({feature.name, processor.*feature.flag});
    return features;
}

std::vector<KernelLine> kernelLines() {
    std::vector<KernelLine> lines;
    for (const auto& [family, variant] : se::selectedKernels()) {
        lines.push_back({family, variant == nullptr ? "unknown" : variant});
    }
    return lines;
}

std::vector<PropertyLine> propertyLines(const quill::PropertyNodePtr& root) {
    std::vector<PropertyLine> lines;
    for (const quill::PropertyNodePtr& node : nodesWithValues(root)) {
        bool read_only = false;
        node->getMeta<bool>("read_only", read_only);
        const quill::PropertyValue value = node->value();
        lines.push_back({node->getFullName(), value.typeName(), value.toString(), read_only});
    }
    return lines;
}

}  // namespace

EngineInfo gatherInfo(const Engine& engine) {
    return {engine.build,
            engine.version,
            {{"beam_forming", se::g_has_beam_forming}, {"noise_tests", se::g_has_noise_tests}},
            optionalEntryPoints(openEngineFile(engine.build)),
            processorFeatures(),
            kernelLines(),
            quill::media::se_wrapper::engineFolder(),
            engineNames(),
            propertyLines(engine.root)};
}

}  // namespace se_host
