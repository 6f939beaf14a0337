// Kernels that exist in several builds: each family has a table, a row a build, and gets the widest that the
// processor runs.
#pragma once

#include <cstddef>

#include "common/cpu_info.h"

namespace quill {

// What every row has; each family adds its functions.
struct KernelVariant {
    const char* name;
    bool CPUInfo::*feature;  // that a processor must have
};

// A family's table: first the floor, which runs on every processor of this library, last the widest.
template <class Variant>
class KernelVariants {
  public:
    using value_type = Variant;

    template <std::size_t kCount>
    constexpr explicit KernelVariants(const Variant (&rows)[kCount]) : rows_(rows), count_(kCount) {}

    constexpr const Variant* begin() const { return rows_; }
    constexpr const Variant* end() const { return rows_ + count_; }
    constexpr std::size_t size() const { return count_; }
    constexpr const Variant& operator[](std::size_t row) const { return rows_[row]; }

  private:
    const Variant* rows_;
    std::size_t count_;
};

// The last row that `cpu` has the feature for; null when that is the floor or none: a selection is left alone then,
// so that one once made is never taken back.
template <class Variant>
const Variant* widestAboveFloor(const KernelVariants<Variant>& variants, const CPUInfo& cpu) {
    const Variant* widest = nullptr;
    for (const Variant* row = variants.begin() + 1; row != variants.end(); ++row) {
        if (cpu.*row->feature) widest = row;
    }
    return widest;
}

}  // namespace quill
