// The bytes of a fuzzer's input as values. After the last byte everything is 0, so that any input is valid.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <type_traits>

namespace quill::fuzz {

class Input {
  public:
    Input(const uint8_t* data, size_t size) : at_(data), end_(data + size) {}

    bool empty() const { return at_ == end_; }

    // A number of any bits, floats included.
    template <class T>
    T number() {
        static_assert(std::is_arithmetic_v<T>);
        unsigned char bytes[sizeof(T)] = {};
        const size_t count = std::min(sizeof(T), static_cast<size_t>(end_ - at_));
        std::copy_n(at_, count, bytes);
        at_ += count;
        T value;
        std::memcpy(&value, bytes, sizeof(T));
        return value;
    }

    bool coin() { return (number<uint8_t>() & 1u) != 0; }

    // 0 to limit - 1.
    unsigned below(unsigned limit) { return number<uint16_t>() % limit; }

    template <class T, size_t kCount>
    const T& oneOf(const T (&values)[kCount]) {
        return values[number<uint8_t>() % kCount];
    }

    // A length byte and as many characters as there are.
    std::string text() { return text(number<uint8_t>()); }
    std::string rest() { return text(static_cast<size_t>(end_ - at_)); }

  private:
    std::string text(size_t length) {
        const size_t count = std::min(length, static_cast<size_t>(end_ - at_));
        std::string result(reinterpret_cast<const char*>(at_), count);
        at_ += count;
        return result;
    }

    const uint8_t* at_;
    const uint8_t* end_;
};

}  // namespace quill::fuzz
