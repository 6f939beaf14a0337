#include "tests/engines/engine_state.h"

namespace test_engine {

State& state() {
    static State the_state;
    return the_state;
}

}  // namespace test_engine
