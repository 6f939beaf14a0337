#include "host/live/live_tree.h"

#include <algorithm>
#include <cstring>
#include <type_traits>
#include <utility>

#include "common/string_printf.h"
#include "host/live/limits.h"
#include "webrtc_common/se_wrapper/diags/exchange.h"
#include "webrtc_common/se_wrapper/diags/print_array.h"

namespace se_host {
namespace {

namespace se = quill::media::se_wrapper;
using quill::PropertyNode;
using Source = EngineValue::Source;

template <class Type>
constexpr bool kIsEnum = std::is_same_v<typename Type::NodeType, std::string>;

template <class Type>
void publishNumber(const Type&, PropertyNode& node, uint64_t word) {
    using Node = typename Type::NodeType;
    using Mark = typename Type::MarkType;
    const auto value = static_cast<Node>(unpack<typename Type::ValueType>(word));
    Mark mark{};
    const bool has_mark = node.findMeta(se::kDiagMark, mark);
    if (!se::isToBePublished(has_mark, mark, value)) return;
    node.set<Node>(value);
    node.setMeta<Mark>(se::kDiagMark, value);
}

template <class Type>
void publishEnum(const Type&, PropertyNode& node, const uint64_t* words) {
    const auto number = unpack<typename Type::ValueType>(words[0]);
    char label[kLabelBytes];
    std::memcpy(label, words + 1, sizeof(label));
    node.set<std::string>(quill::stringPrintf("%d - %s", number, label));
    node.setMeta<typename Type::MarkType>(se::kDiagMark, number);
}

template <class Type>
void publishArray(const Type& type, PropertyNode& node, const uint64_t* words) {
    if (type.get_array == nullptr) return;
    using Value = typename Type::ValueType;
    std::vector<Value> elements(words[0]);
    std::transform(words + 1, words + 1 + words[0], elements.begin(), unpack<Value>);
    node.set<std::string>(se::printArray(elements.data(), static_cast<int>(elements.size())));
}

void publishDiagnostic(const EngineValue& value, PropertyNode& node, const uint64_t* words) {
    se::withDiagType(value.type, [&](const auto& type) {
        if (value.isArray()) {
            publishArray(type, node, words);
        } else if constexpr (kIsEnum<std::decay_t<decltype(type)>>) {
            publishEnum(type, node, words);
        } else {
            publishNumber(type, node, words[0]);
        }
    });
}

// Of a node as an edit of its type reads it.
uint64_t editOf(const EngineValue& value, PropertyNode& node) {
    uint64_t word = 0;
    se::withDiagType(value.type, [&](const auto& type) {
        word = pack(node.get<typename std::decay_t<decltype(type)>::EditType>());
    });
    return word;
}

uint64_t markOf(const EngineValue& value, PropertyNode& node) {
    uint64_t word = 0;
    se::withDiagType(value.type, [&](const auto& type) {
        typename std::decay_t<decltype(type)>::EditType mark{};
        node.findMeta(se::kDiagMark, mark);
        word = pack(mark);
    });
    return word;
}

bool isSameEdit(const EngineValue& value, uint64_t a, uint64_t b) {
    bool same = true;
    se::withDiagType(value.type, [&](const auto& type) {
        using Edit = typename std::decay_t<decltype(type)>::EditType;
        same = unpack<Edit>(a) == unpack<Edit>(b);
    });
    return same;
}

void setMark(const EngineValue& value, PropertyNode& node, uint64_t word) {
    se::withDiagType(value.type, [&](const auto& type) {
        using Edit = typename std::decay_t<decltype(type)>::EditType;
        node.setMeta<Edit>(se::kDiagMark, unpack<Edit>(word));
    });
}

// Values without a type and arrays that are too long keep what they had at the start.
bool isServed(const DiagInfo& diag) {
    return diag.kind->type != SE_DIAG_TYPE_NONE && diag.length <= kMostElements;
}

}  // namespace

LiveTree::LiveTree(DiagTree& tree) : tree_(tree), entries_(entriesOf(tree)), engine_(valuesOf(entries_)) {
    // What stands beside the diagnostics comes before a diagnostic of the same name.
    for (size_t place = entries_.size(); place-- > 0;) {
        places_.emplace(entries_[place].node->getFullName(), place);
    }
    for (size_t place = 0; place < entries_.size(); ++place)
        places_.emplace(entries_[place].node->name(), place);
}

std::vector<LiveTree::Entry> LiveTree::entriesOf(const DiagTree& tree) {
    PropertyNode& root = *tree.root();
    std::vector<Entry> entries;
    for (const DiagInfo& diag : tree.diags()) {
        if (!isServed(diag)) continue;
        const EngineValue value{Source::kDiagnostic, diag.index, diag.kind->type,
                                static_cast<uint32_t>(diag.length)};
        entries.push_back({value, root.getNode(diag.path, true)});
    }
    for (const auto& [name, source] :
         {std::pair{"location", Source::kLocation}, std::pair{"location_conf", Source::kConfidence},
          std::pair{"aec_bypass", Source::kAecBypass},
          std::pair{"noise_reduction_bypass", Source::kNoiseReductionBypass}}) {
        if (const quill::PropertyNodePtr node = root.getNode(name, false)) {
            entries.push_back({{source, 0, SE_DIAG_TYPE_NONE, 1}, node});
        }
    }
    return entries;
}

std::vector<EngineValue> LiveTree::valuesOf(const std::vector<Entry>& entries) {
    std::vector<EngineValue> values;
    for (const Entry& entry : entries) values.push_back(entry.value);
    return values;
}

LiveTree::Posted LiveTree::set(const std::string& name, const std::string& text) {
    update(name);
    const size_t place = places_.at(name);
    Entry& entry = entries_[place];
    if (room() == 0) return Posted::kFull;
    const bool is_switch = entry.value.source != Source::kDiagnostic;
    const uint64_t expected = is_switch ? 0 : markOf(entry.value, *entry.node);
    tree_.edit(name, text);
    const uint64_t wanted = is_switch ? pack(entry.node->get<bool>()) : editOf(entry.value, *entry.node);
    if (!is_switch && isSameEdit(entry.value, wanted, expected)) return Posted::kUnchanged;
    engine_.post({static_cast<uint32_t>(place), wanted, expected});
    setMark(entry.value, *entry.node, wanted);
    ++entry.on_their_way;
    return Posted::kYes;
}

void LiveTree::update(const std::string& name) {
    takeAnswers();
    const auto found = places_.find(name);
    if (found != places_.end()) publish(found->second);
}

void LiveTree::updateAll() {
    takeAnswers();
    for (size_t place = 0; place < entries_.size(); ++place) publish(place);
}

void LiveTree::takeAnswers() {
    for (uint32_t place = 0; engine_.answer(&place);) --entries_[place].on_their_way;
}

void LiveTree::publish(size_t place) {
    Entry& entry = entries_[place];
    if (entry.on_their_way > 0 || engine_.snapshot().version(place) == entry.version) return;
    entry.version = engine_.snapshot().get(place, words_);
    publishWords(entry);
}

void LiveTree::publishWords(Entry& entry) {
    switch (entry.value.source) {
        case Source::kDiagnostic:
            return publishDiagnostic(entry.value, *entry.node, words_.data());
        case Source::kLocation:
        case Source::kConfidence:
            entry.node->set<int>(unpack<int>(words_[0]));
            return;
        case Source::kAecBypass:
        case Source::kNoiseReductionBypass:
            entry.node->set<bool>(words_[0] != 0);
            return;
    }
}

}  // namespace se_host
