// Memory of exactly so many elements. With AddressSanitizer an access beside them is an error; without it, a write
// beside them is found by `requireUntouchedMargins`.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

#include "tests/fuzz/support/require.h"
#ifdef FUZZ_ADDRESS_SANITIZER
#include <sanitizer/asan_interface.h>
#endif

namespace quill::fuzz {

template <class T>
class Guarded {
  public:
    // `shift` elements away from an address that is aligned for every vector.
    T* place(size_t count, size_t shift) {
        count_ = count;
        before_ = kMargin + shift * sizeof(T);
        accessible();
        memory_.resize(before_ + count * sizeof(T) + kMargin + kAlignment);
        base_ = memory_.data();
        base_ += (kAlignment - reinterpret_cast<uintptr_t>(base_) % kAlignment) % kAlignment;
        std::memset(base_, kPoison, before_);
        std::memset(base_ + before_ + bytes(), kPoison, kMargin);
        return data();
    }
    T* data() { return reinterpret_cast<T*>(base_ + before_); }
    T* begin() { return data(); }
    T* end() { return data() + count_; }
    size_t size() const { return count_; }

    // Around a call of the code under test.
    void guard() {
#ifdef FUZZ_ADDRESS_SANITIZER
        if (base_ == nullptr) return;
        __asan_poison_memory_region(base_, before_);
        __asan_poison_memory_region(base_ + before_ + bytes(), kMargin);
        guarded_ = true;
#endif
    }
    void accessible() {
#ifdef FUZZ_ADDRESS_SANITIZER
        if (guarded_) __asan_unpoison_memory_region(base_, before_ + bytes() + kMargin);
        guarded_ = false;
#endif
    }

    void requireUntouchedMargins() const {
        const auto poisoned = [](const unsigned char* at, size_t size) {
            return std::all_of(at, at + size, [](unsigned char byte) { return byte == kPoison; });
        };
        require(poisoned(base_ + before_ - kMargin, kMargin), "a write before the first element");
        require(poisoned(base_ + before_ + bytes(), kMargin), "a write after the last element");
    }

    bool holds(const std::vector<T>& expected) {
        return expected.size() == count_ && std::memcmp(data(), expected.data(), bytes()) == 0;
    }

  private:
    static constexpr size_t kAlignment = 64;
    static constexpr size_t kMargin = 64;
    static constexpr unsigned char kPoison = 0xA5;

    size_t bytes() const {
        return count_ * sizeof(T);
    }

    std::vector<unsigned char> memory_;
    unsigned char* base_ = nullptr;
    size_t before_ = 0;
    size_t count_ = 0;
    bool guarded_ = false;
};

}  // namespace quill::fuzz
