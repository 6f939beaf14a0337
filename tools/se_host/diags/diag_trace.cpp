#include "tools/se_host/diags/diag_trace.h"

#include "common/string_printf.h"
#include "host/output/one_line.h"
#include "tools/se_host/sound/resample.h"
#include "webrtc_common/se_wrapper.h"

namespace se_host {
namespace {

using Json = nlohmann::ordered_json;
using quill::media::se_wrapper::BLOCK_SIZE;

constexpr size_t kWrittenAtOnce = 65536;  // bytes

// A name with a separator or a quote stands in quotes, its own quotes twice.
std::string inQuotes(const std::string& name) {
    if (name.find_first_of(",\"") == std::string::npos) return name;
    std::string quoted = "\"";
    for (const char c : name) quoted.append(c == '"' ? 2 : 1, c);
    return quoted + "\"";
}

std::string columnsOf(const DiagInfo& diag) {
    const std::string name = se_output::oneLine(diag.name);
    if (!diag.isArray()) return "," + inQuotes(name);
    std::string columns;
    for (int i = 0; i < diag.length; ++i) columns += "," + inQuotes(name + "[" + std::to_string(i) + "]");
    return columns;
}

// A value that is not a number leaves its cell empty.
std::string cell(const Json& value) {
    if (value.is_number()) return "," + value.dump();
    if (!value.is_string()) return ",";
    const std::string text = value.get<std::string>();
    return "," + text.substr(0, text.find(' '));
}

std::string cellsOf(const DiagInfo& diag, const Json& value) {
    if (!diag.isArray()) return cell(value);
    if (!value.is_array()) return std::string(static_cast<size_t>(diag.length), ',');
    std::string cells;
    for (const Json& element : value) cells += cell(element);
    return cells;
}

}  // namespace

DiagTrace::DiagTrace(const std::string& path, DiagTree& tree, const std::string& pattern)
    : tree_(tree), diags_(tree.matching(pattern)), file_(path), lines_("seconds") {
    for (const DiagInfo& diag : diags_) lines_ += columnsOf(diag);
    lines_ += '\n';
}

void DiagTrace::sample(size_t block) {
    tree_.publish();
    lines_ += quill::stringPrintf("%.2f", static_cast<double>((block + 1) * BLOCK_SIZE) / kEngineSampleRate);
    for (const DiagInfo& diag : diags_) lines_ += cellsOf(diag, tree_.value(diag));
    lines_ += '\n';
    if (lines_.size() >= kWrittenAtOnce) finish();
}

void DiagTrace::finish() {
    file_.write(lines_);
    lines_.clear();
}

}  // namespace se_host
