#include "webrtc_common/se_wrapper/diags/apply.h"

#include <cstdint>

#include "webrtc_common/se_wrapper/diags/diag_nodes.h"
#include "webrtc_common/se_wrapper/diags/diag_types.h"
#include "webrtc_common/se_wrapper/diags/exchange.h"
#include "webrtc_common/se_wrapper/records.h"
#include "webrtc_common/se_wrapper/table/engine_answers.h"

namespace quill::media::se_wrapper {
namespace {

template <class Type>
void applyEdit(const Type& type, PropertyNode& node, int index) {
    using Edit = typename Type::EditType;
    const Edit wanted = node.get<Edit>();
    Edit mark{};
    node.findMeta(kDiagMark, mark);
    const auto ask_engine = [&] { return static_cast<Edit>((*type.get)(index)); };
    if (!isToBeApplied(wanted, mark, ask_engine)) return;
    SE_WRAPPER_LOG(5) << "User changed " << diagName(index) << " to " << wanted;
    (*type.set)(index, static_cast<typename Type::ValueType>(wanted));
    node.setMeta<Edit>(kDiagMark, wanted);
}

void applyDiag(DiagNodes& nodes, int index) {
    const PropertyNodePtr node = nodes.at(index).node;
    withDiagType(SEDiagGetType(index), [&](const auto& type) { applyEdit(type, *node, index); });
}

uint16_t switchPosition(PropertyNode& root, const char* name) {
    return root.getNode(name, true)->get<bool>() ? 1 : 0;
}

void applyBypasses(PropertyNode& root) {
    MMIfSetAecBypass(switchPosition(root, "aec_bypass"));
    if (MMIfSetNoiseReductionBypass_Optional == nullptr) return;
    // A whole register, so that builds with a wider argument get no undefined bits.
    const auto set_bypass = reinterpret_cast<void (*)(uint32_t)>(MMIfSetNoiseReductionBypass_Optional);
    set_bypass(switchPosition(root, "noise_reduction_bypass"));
}

}  // namespace

void writeSignalEssenceDiags(const PropertyNodePtr& root) {
    const int count = numDiags();
    DiagNodes nodes(*root);
    for (int index = 0; index < count; ++index) {
        if (SEDiagGetLen(index) <= 1 && isDiagWritable(index)) applyDiag(nodes, index);
    }
    applyBypasses(*root);
}

}  // namespace quill::media::se_wrapper
