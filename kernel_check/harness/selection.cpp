#include "kernel_check/harness/selection.h"

#include <set>
#include <stdexcept>

namespace kernel_harness {
namespace {

std::string joined(const std::set<std::string>& names) {
    std::string text;
    for (const std::string& name : names) text += (text.empty() ? "" : ", ") + name;
    return text;
}

}  // namespace

std::vector<Selected> select(const std::vector<KernelFunction>& functions, const Machine& machine,
                             const std::string& function, const std::string& variant) {
    std::vector<Selected> selected;
    std::set<std::string> function_names, variant_names;
    for (const KernelFunction& f : functions) {
        function_names.insert(f.name);
        if (!function.empty() && f.name != function) continue;
        for (const FunctionVariant& v : f.variants) {
            variant_names.insert(v.name);
            if (variant.empty() || v.name == variant) selected.push_back({&f, &v, machine.*v.needs});
        }
    }
    if (!selected.empty()) return selected;
    if (variant_names.empty()) {
        throw std::invalid_argument("no function '" + function + "'; use one of " + joined(function_names));
    }
    throw std::invalid_argument("no variant '" + variant + "'; use one of " + joined(variant_names));
}

std::string described(const quill::test::Numbers& numbers) {
    std::string text;
    for (const auto& [name, value] : numbers) {
        text += (text.empty() ? "" : " ") + name + "=" + std::to_string(value);
    }
    return text;
}

std::string missing(const FunctionVariant& variant) {
    return variant.needs == &Machine::has_engine ? "--engine names no build"
                                                 : "this processor has no " + variant.name;
}

}  // namespace kernel_harness
