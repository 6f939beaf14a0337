// Structs that begin with their size, of a caller that was built with an earlier or a later version of the header.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace se_host {

// The fields that a caller's struct of an earlier or later version has, the defaults for others.
template <class Struct>
Struct known(const Struct* given, const Struct& defaults) {
    Struct all = defaults;
    std::memcpy(&all, given, std::min(given->size, sizeof(Struct)));
    all.size = sizeof(Struct);
    return all;
}

// The other way; the caller's size stays.
template <class Struct>
void fill(Struct* to, const Struct& from) {
    const size_t size = to->size;
    std::memcpy(to, &from, std::min(size, sizeof(Struct)));
    to->size = size;
}

}  // namespace se_host
