// The arrays of a problem. They are kept from problem to problem, because an allocation takes longer than a call.
#pragma once

#include <string>
#include <vector>

#include "tests/fuzz/kernels/guarded.h"
#include "tests/fuzz/kernels/random.h"

namespace quill::fuzz {

using Samples = std::vector<int16_t>;

// An input: what it holds, and the copy that the code under test gets.
class InputSamples {
  public:
    Samples& draw(Random& random, size_t count) {
        contents_.resize(count);
        random.fill(contents_.data(), count);
        shift_ = random.below(8);
        return contents_;
    }
    // A new copy for each call.
    int16_t* copy() {
        std::copy(contents_.begin(), contents_.end(), memory_.place(contents_.size(), shift_));
        return memory_.data();
    }
    Guarded<int16_t>& memory() { return memory_; }

    void requireUnchanged(const char* routine) {
        if (!memory_.holds(contents_)) fail(std::string(routine) + " wrote to an input");
        memory_.requireUntouchedMargins();
    }

  private:
    Samples contents_;
    Guarded<int16_t> memory_;
    size_t shift_ = 0;
};

// Makes a call while the memory around the arrays is guarded.
template <class Call, class... Arrays>
void guardedCall(const Call& call, Arrays&... arrays) {
    (arrays.guard(), ...);
    call();
    (arrays.accessible(), ...);
}

// "convolve_i16_i16/avx2 (num_out 4, num_taps 9): out[3] is 5, the reference has 4".
template <class T>
void requireSame(const std::vector<T>& expected, const T* found, const std::string& what) {
    if (expected.empty() || std::memcmp(expected.data(), found, expected.size() * sizeof(T)) == 0) return;
    size_t i = 0;
    while (std::memcmp(&expected[i], &found[i], sizeof(T)) == 0) ++i;
    fail(what + ": out[" + std::to_string(i) + "] is " + std::to_string(found[i]) + ", the reference has " +
         std::to_string(expected[i]));
}

}  // namespace quill::fuzz
