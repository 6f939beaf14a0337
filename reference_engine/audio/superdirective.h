// Designs the beam former's weights: sound from the look direction passes unchanged, diffuse noise is lowered
// as far as the microphones' own noise allows. Pure function; [setup].
#pragma once

#include "reference_engine/audio/beam_weights.h"

namespace reference_engine {

void designSuperdirective(BeamDesign* design);

}  // namespace reference_engine
