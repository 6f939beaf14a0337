// The rate at which the engine works.
#pragma once

namespace se_host {

inline constexpr int kEngineSampleRate = 16000;  // Hz

}  // namespace se_host
