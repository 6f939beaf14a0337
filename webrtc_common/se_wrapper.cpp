// What the wrapper declares while it is loaded.
#include "webrtc_common/se_wrapper.h"

namespace quill::media::se_wrapper {

StaticProperty<std::string> p_signal_essence_library =
    StaticProperty<std::string>("media/signal_essence/signal_essence_library", "", __FILE__)
        .setReadOnly(true);

}  // namespace quill::media::se_wrapper
