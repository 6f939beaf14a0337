// One call of a kernel: its lengths, where its buffers stand and what they hold, all drawn from a seed, so
// that two problems of one seed are equal and the kernels run on them can be compared byte by byte.
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

// Lengths around whole fours and eights and those that engines ask for.
inline constexpr int kLengths[] = {0, 1, 4, 5, 7, 8, 9, 12, 13, 15, 16, 17, 31, 55, 56, 160, 256};

// Values of drawn numbers that are given instead, by name.
using Numbers = std::vector<std::pair<std::string, int>>;

// What becomes of a problem's call: made once, or again and again while a clock runs.
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

    // Buffers that end at a page without access, or begin at one, or stand up to 15 elements away. Whatever a
    // call leaves in them and around them is compared.
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

    // What a call gives beside its buffers, compared too.
    void result(int64_t value) { result_ = value; }

    // How much a call does: samples that it gives, multiplications with addition.
    void work(double samples, double multiply_adds) {
        work_samples = samples;
        work_multiply_adds = multiply_adds;
    }

    // Makes the call. It may be left by a jump, so it owns nothing.
    template <class Call>
    void call(const Call& call) {
        runner_.run(
            [](const void* object, size_t times) {
                for (size_t i = 0; i < times; ++i) (*static_cast<const Call*>(object))();
            },
            &call);
    }

    // Judges a reference by what stands above it; `judge` says what is wrong or nothing. Only
    // the check of the reference itself asks.
    void judge(std::function<std::string()> judge) { judge_ = std::move(judge); }
    std::string verdict() const { return judge_ ? judge_() : std::string(); }

    // The first difference to what another kernel left of the same problem, both rows in hex; else empty.
    std::string difference(const Problem& reference) const;
    // Which element of which buffer an address is nearest to: "signal[40] of 40".
    std::string whereIs(uintptr_t address) const;
    // Every number drawn.
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
