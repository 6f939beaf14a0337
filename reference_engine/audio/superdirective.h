// Designs the beam former's weights: sound from the look direction passes unchanged, diffuse noise is lowered. Pure function;
// [setup].
#pragma once

#include "reference_engine/audio/beam_weights.h"

namespace reference_engine {

// `robust` lowers the microphones' own noise almost as far as their mean does; `sharp` may raise it, and lowers what comes from
// other directions further.
void designSuperdirective(BeamDesign* robust, BeamDesign* sharp);

}  // namespace reference_engine
