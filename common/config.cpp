#include "common/config.h"

namespace quill {

StaticProperty<bool> p_config_is_harbor("config/is_harbor", false, __FILE__);

}  // namespace quill
