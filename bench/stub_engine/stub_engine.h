// An engine that does nothing: the interface table filled with functions of this program, so that the wrapper's
// own part is measured alone.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace bench {

inline constexpr int kStubLevels = 4;

// Its diagnostics: writable, type Int32, spread over the levels, all scalars or all arrays.
struct StubEngine {
    std::vector<std::string> names;
    int length = 1;
    int32_t value = 0;
    int32_t elements[10] = {};
};

StubEngine& stubEngine();

// `count` diagnostics of `length` elements, all zero.
void fillStubCatalogue(std::size_t count, int length);

void fillInterfaceTable();

}  // namespace bench
