#include "webrtc_common/se_wrapper/diags/publish.h"

#include <cstdint>
#include <string>
#include <type_traits>

#include "common/string_printf.h"
#include "webrtc_common/se_wrapper/diags/diag_nodes.h"
#include "webrtc_common/se_wrapper/diags/diag_types.h"
#include "webrtc_common/se_wrapper/diags/exchange.h"
#include "webrtc_common/se_wrapper/diags/print_array.h"
#include "webrtc_common/se_wrapper/records.h"
#include "webrtc_common/se_wrapper/table/engine_answers.h"

namespace quill::media::se_wrapper {
namespace {

constexpr int kMaxSmallArray = 10;

template <class Type>
void publishNumber(const Type& type, PropertyNode& node, int index) {
    using Node = typename Type::NodeType;
    const auto value = static_cast<Node>((*type.get)(index));
    typename Type::MarkType mark{};
    const bool has_mark = node.findMeta(kDiagMark, mark);
    if (!isToBePublished(has_mark, mark, value)) return;
    SE_WRAPPER_LOG(5) << "Updating " << diagName(index) << " to " << value;
    node.set<Node>(value);
    node.setMeta<typename Type::MarkType>(kDiagMark, value);
}

// Kept on purpose: the mark is the engine's answer to a separate query.
template <class Type>
void publishEnum(const Type& type, PropertyNode& node, int index) {
    const char* const label = diagLabel(index);
    const int number = (*type.get)(index);
    node.set<std::string>(stringPrintf("%d - %s", number, label));
    node.setMeta<typename Type::MarkType>(kDiagMark, (*type.get)(index));
}

void publishScalar(PropertyNode& node, int index) {
    withDiagType(SEDiagGetType(index), [&](const auto& type) {
        using Type = std::decay_t<decltype(type)>;
        if constexpr (std::is_same_v<typename Type::NodeType, std::string>) {
            publishEnum(type, node, index);
        } else {
            publishNumber(type, node, index);
        }
    });
}

void publishArray(PropertyNode& node, int index, int length) {
    withDiagType(SEDiagGetType(index), [&](const auto& type) {
        if (type.get_array == nullptr) return;
        const auto* const elements = (*type.get_array)(index);
        node.set<std::string>(printArray(elements, numElements(elements, length)));
    });
}

void publishDiag(DiagNodes& nodes, int index) {
    const auto [node, is_new] = nodes.at(index);
    if (is_new) node->setMeta<std::string>("help", diagHelp(index));
    if (!isDiagWritable(index)) node->setMeta<bool>("read_only", true);
    SE_WRAPPER_LOG(5) << node->getFullName();
    const int length = SEDiagGetLen(index);
    if (length <= 1) {
        publishScalar(*node, index);
    } else if (isLengthPossible(length)) {
        publishArray(*node, index, length);
    } else {
        SE_WRAPPER_LOG(5) << "No value for " << diagName(index) << ": its length is " << length;
    }
}

void publishLocation(PropertyNode& root) {
    uint16_t location = 0;
    int16_t confidence = 0;
    MMIfGetCurrentLocation(&location, &confidence);
    root.getNode("location", true)->set<int>(location);
    root.getNode("location_conf", true)->set<int>(confidence);
}

void publishBypasses(PropertyNode& root) {
    root.getNode("aec_bypass", true)->set<bool>(MMIfGetAecBypass() != 0);
    if (MMIfGetNoiseReductionBypass_Optional == nullptr) return;
    // Builds differ in the width of the result; the low 16 bits are the flag in each.
    const auto get_bypass = reinterpret_cast<uint32_t (*)()>(MMIfGetNoiseReductionBypass_Optional);
    const bool bypass = static_cast<uint16_t>(get_bypass()) != 0;
    root.getNode("noise_reduction_bypass", true)->set<bool>(bypass);
}

}  // namespace

void readSignalEssenceDiags(const PropertyNodePtr& root) {
    bool transfer_large_arrays = false;
    root->getNode("transfer_large_arrays", true)->get<bool>(transfer_large_arrays, false);
    const int answered = SEDiagGetNumDiags();
    const int count = possibleCount(answered);
    if (count < answered) SE_WRAPPER_LOG(5) << "No diagnostics: their number is " << answered;
    DiagNodes nodes(*root);
    for (int index = 0; index < count; ++index) {
        if (SEDiagGetLen(index) > kMaxSmallArray && !transfer_large_arrays) continue;
        publishDiag(nodes, index);
    }
    publishLocation(*root);
    publishBypasses(*root);
}

}  // namespace quill::media::se_wrapper
