// The differences of the two builds, apart from the symbols that they export. Constants only.
#pragma once

namespace reference_engine {

#ifdef SE_ENGINE_DEVICE_MODEL
inline constexpr double kArrayRadius = 0.035;  // metres
inline constexpr char kVersion[] = "harbor_006|reference";
inline constexpr char kReceiveGainName[] = "sercv_gain_q10";
#else
inline constexpr double kArrayRadius = 0.0425;  // metres
inline constexpr char kVersion[] = "beam_1.14|reference";
inline constexpr char kReceiveGainName[] = "RcvGainQ10";
#endif

}  // namespace reference_engine
