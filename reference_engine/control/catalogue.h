// The catalogue of diagnostics: one table of the settings and readings that a client may access. Threads:
// built when the library is loaded, constant afterwards.
#pragma once

#include "reference_engine/engine_interface.h"

namespace reference_engine {

int32_t catalogueSize();

// null outside the catalogue.
SEDiag_t* catalogueRow(int32_t index);

}  // namespace reference_engine
