// One call of a kernel: lengths, places and contents of the buffers, all drawn from a seed. Two problems of one
// seed are equal, so the kernels that run on them can be compared byte by byte.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <initializer_list>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "kernel_check/problem/fillers.h"
#include "kernel_check/problem/guarded_buffer.h"

namespace quill::test {

// Lengths around multiples of four and eight, and those that engines use.
inline constexpr int kLengths[] = {0, 1, 4, 5, 7, 8, 9, 12, 13, 15, 16, 17, 31, 55, 56, 160, 256};

// Fixed values that replace drawn numbers, by name.
using Numbers = std::vector<std::pair<std::string, int>>;

// How a problem's call is run: once, or repeatedly for timing.
class CallRunner {
  public:
    virtual ~CallRunner() = default;
    virtual bool timed() const = 0;
    // `repeat(call, n)` makes the call n times.
    virtual void run(void (*repeat)(const void* call, size_t times), const void* call) = 0;
};

class Problem {
  public:
    Problem(uint32_t seed, Numbers given, CallRunner& runner)
        : random_(seed), given_(std::move(given)), runner_(runner) {}

    // One of the values, or the given one of this name.
    template <class Values>
    int draw(const std::string& name, const Values& values) {
        return drawFrom(name, std::data(values), std::size(values));
    }
    int draw(const std::string& name, std::initializer_list<int> values) {
        return drawFrom(name, values.begin(), values.size());
    }

    // Buffers that end or begin at a page without access, or up to 15 elements away from it. Their contents and
    // the memory around them are compared after the call.
    int16_t* samples(const char* name, size_t count);                 // filled by a drawn filler
    float* floats(const char* name, size_t count, FloatFiller fill);  // zeros when timed
    template <class T>
    T* output(const char* name, size_t count) {  // poisoned
        return static_cast<T*>(place(name, sizeof(T), count).data);
    }
    // The kernel's own scratch: guarded, never compared.
    template <class T>
    T* scratch(const char* name, const std::vector<T>& contents) {
        Buffer& buffer = place(name, sizeof(T), contents.size());
        buffer.compared = false;
        T* const data = static_cast<T*>(buffer.data);
        std::copy(contents.begin(), contents.end(), data);
        return data;
    }

    // The call's results besides its buffers; compared, too.
    void result(int64_t value) { result_ = value; }

    // The work of a call: its output samples and its multiply-accumulates.
    void work(double samples, double multiply_adds) {
        work_samples = samples;
        work_multiply_adds = multiply_adds;
    }

    // Makes the call. It may be left by a jump, so it must own nothing.
    template <class Call>
    void call(const Call& call) {
        runner_.run(
            [](const void* object, size_t times) {
                for (size_t i = 0; i < times; ++i) (*static_cast<const Call*>(object))();
            },
            &call);
    }

    // Checks a reference against a more exact computation. `judge` returns the fault, or an empty text. Used only
    // when the reference itself is checked.
    void judge(std::function<std::string()> judge) { judge_ = std::move(judge); }
    std::string verdict() const { return judge_ ? judge_() : std::string(); }

    // The first difference from another kernel's result of the same problem, both rows in hex; else empty.
    std::string difference(const Problem& reference) const;
    // Which element of which buffer an address is nearest to: "signal[40] of 40".
    std::string whereIs(uintptr_t address) const;
    // Every drawn number.
    std::string description() const;

    double work_samples = 0;
    double work_multiply_adds = 0;

  private:
    struct Buffer {
        Buffer(const char* buffer_name, size_t element_size, size_t elements, size_t offset,
               GuardedBytes::Edge edge);
        const std::string name;
        const size_t element;
        const size_t count;
        const GuardedBytes bytes;
        void* const data;
        bool compared = true;
        // The element that a byte belongs to, counted from the first.
        ptrdiff_t indexOf(uintptr_t address) const;
    };

    int drawFrom(const std::string& name, const int* values, size_t count);
    Buffer& place(const char* name, size_t element, size_t count);

    std::mt19937 random_;
    const Numbers given_;
    CallRunner& runner_;
    Numbers drawn_;
    std::deque<Buffer> buffers_;
    int64_t result_ = 0;
    std::function<std::string()> judge_;
};

}  // namespace quill::test
