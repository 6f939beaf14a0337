// Catalogues of a scripted engine through publishing and applying, and what the diag commands make of them.
#include <set>
#include <string>

#include "common/assertion.h"
#include "common/logging.h"
#include "host/diags/diag_tree.h"
#include "host/diags/tuning.h"
#include "host/output/errors.h"
#include "tests/fuzz/host/scripted_engine.h"
#include "tests/fuzz/support/entry.h"
#include "tests/fuzz/support/require.h"
#include "tests/fuzz/support/scratch_file.h"
#include "webrtc_common/se_wrapper/diags/apply.h"
#include "webrtc_common/se_wrapper/diags/publish.h"

namespace quill::fuzz {
namespace {

namespace se = media::se_wrapper;
using Json = nlohmann::ordered_json;

uint64_t changesBelow(const PropertyNodePtr& node) {
    uint64_t changes = 0;
    for (const PropertyNodePtr& child : node->children()) changes += changesBelow(child);
    const PropertyNodeData::SharedDataLock lock(node.get(), nullptr);
    return changes + lock->change_counter;
}

// Whether each diagnostic has a node of its own.
bool areDistinct(const std::vector<se_host::DiagInfo>& diags) {
    std::set<std::string> paths;
    const PropertyNodePtr scratch = PropertyNode::createRoot();
    for (const se_host::DiagInfo& diag : diags)
        paths.insert(scratch->getNode(diag.path, true)->getFullName());
    return paths.size() == diags.size();
}

// Nothing that a terminal or a log would act on.
void requireOneLine(const std::string& text) {
    for (const char c : text) require(static_cast<unsigned char>(c) >= 32 && c != 127, "a control character");
}

void passes() {
    const PropertyNodePtr root = PropertyNode::createRoot();
    root->getNode("transfer_large_arrays", true)->set<bool>(true);
    se::readSignalEssenceDiags(root);
    if (!areDistinct(se_host::allDiags())) return;
    const uint64_t changes = changesBelow(root);
    se::readSignalEssenceDiags(root);
    requireEqual(changes, changesBelow(root), "changes of a second publishing pass");
    g_engine.edits = 0;
    se::writeSignalEssenceDiags(root);
    requireEqual(0, g_engine.edits, "edits of an applying pass without an edit");
}

// What is written comes back. Bytes that are not UTF-8 are replaced in a file, so names may differ then.
void requireRoundTrip(const se_host::Tuning& tuning) {
    static ScratchFile file;
    const std::string written = toJson(tuning).dump(2, ' ', false, Json::error_handler_t::replace);
    const bool is_exact = written.find("\xef\xbf\xbd") == std::string::npos;
    if (!is_exact) {
        require(!Json::parse(written, nullptr, false).is_discarded(), "a tuning that is not JSON");
        return;
    }
    const se_host::Tuning read = se_host::readTuning(file.holding(written));
    for (const std::string& line : differences("a", tuning, "b", read))
        fail("written and read again: " + line);
}

void edit(se_host::DiagTree& tree, Input& input) {
    if (tree.diags().empty()) return;
    const se_host::DiagInfo diag = tree.diags()[input.below(static_cast<unsigned>(tree.diags().size()))];
    const std::string text = input.coin() ? std::to_string(input.number<int16_t>()) : input.text();
    const auto before = g_engine.edits;
    const auto objection = tree.edit(diag.name, text);
    require(g_engine.edits == before, "an edit reached the engine before it was applied");
    if (objection) requireEqual(false, objection->empty(), "an objection without a reason");
}

void commands(Input& input) {
    se_host::DiagTree tree;
    const bool distinct = areDistinct(tree.diags());
    for (const se_host::DiagInfo& diag : tree.diags()) {
        require(diag.length >= 1, "a length below 1");
        requireOneLine(diag.help);
        require(!se_host::toText(tree.value(diag)).empty() || tree.value(diag).is_string(),
                "a value without a text");
        require(matches(diag, "*") || diag.name.find('/') != std::string::npos, "* does not match");
    }
    const se_host::Engine engine{nullptr, "scripted", "scripted_1.0"};
    const se_host::Tuning first = tuningOf(engine, tree);
    requireRoundTrip(first);
    for (unsigned edits = input.below(6); edits != 0; --edits) edit(tree, input);
    for (const std::string& difference : tree.apply())
        require(!difference.empty(), "a difference without a text");
    requireRoundTrip(tuningOf(engine, tree));
    const se_host::Applied applied = applyTuning(first, engine, tree);
    require(applied.unknown.empty() && !applied.other_version, "the engine does not know its own tuning");
    if (distinct) {
        require(applied.kept + applied.refused.size() <= 2 * tree.diags().size() + 2,
                "more answers than entries");
    }
    warnings("a.json", first, engine, applied);
}

}  // namespace
}  // namespace quill::fuzz

int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
    quill::setAssertionHandler([](const quill::AssertionRecord&) { return false; });
    quill::setLogThreshold(1);
    quill::fuzz::installScriptedEngine();
    return 0;
}

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    quill::fuzz::Input input(data, size);
    quill::fuzz::g_engine = quill::fuzz::engineFrom(input);
    quill::fuzz::passes();
    quill::fuzz::commands(input);
    return 0;
}
