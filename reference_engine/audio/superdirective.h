// Designs the beam former's weights: sound from the look direction passes unchanged, noise that comes from
// all around is lowered as far as the noise of the microphones themselves allows. Pure function; [setup].
#pragma once

#include "reference_engine/audio/beam_weights.h"

namespace reference_engine {

void designSuperdirective(BeamDesign* design);

}  // namespace reference_engine
