#include "kernel_check/problem/problem.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <sstream>

namespace quill::test {
namespace {

constexpr ptrdiff_t kRow = 8;  // elements of a row shown

uint32_t elementAt(const void* data, size_t element, ptrdiff_t index) {
    const char* const p = static_cast<const char*>(data) + index * static_cast<ptrdiff_t>(element);
    uint32_t value = 0;
    std::memcpy(&value, p, element);
    return value;
}

std::string hexRow(const void* data, size_t element, ptrdiff_t begin, ptrdiff_t end) {
    std::string row;
    for (ptrdiff_t i = begin; i < end; ++i) {
        char text[16];
        std::snprintf(text, sizeof text, " %0*x", static_cast<int>(2 * element), elementAt(data, element, i));
        row += text;
    }
    return row;
}

}  // namespace

Problem::Buffer::Buffer(const char* buffer_name, size_t element_size, size_t elements, size_t offset,
                        GuardedBytes::Edge edge)
    : name(buffer_name),
      element(element_size),
      count(elements),
      bytes((elements + offset) * element_size, edge),
      data(static_cast<char*>(bytes.data()) +
           (edge == GuardedBytes::Edge::kEnd ? 0 : offset * element_size)) {}

ptrdiff_t Problem::Buffer::indexOf(uintptr_t address) const {
    const auto byte = static_cast<ptrdiff_t>(address - reinterpret_cast<uintptr_t>(data));
    const auto size = static_cast<ptrdiff_t>(element);
    return byte >= 0 ? byte / size : -((-byte + size - 1) / size);
}

int Problem::drawFrom(const std::string& name, const int* values, size_t count) {
    const size_t index = random_() % count;
    const auto given =
        std::find_if(given_.begin(), given_.end(), [&](const auto& number) { return number.first == name; });
    const int value = given == given_.end() ? values[index] : given->second;
    drawn_.emplace_back(name, value);
    return value;
}

Problem::Buffer& Problem::place(const char* name, size_t element, size_t count) {
    const std::string prefix = std::string(name) + ".";
    bool at_end = false;
    size_t offset = 144 * buffers_.size();  // timed: no two buffers at the same offset in their pages
    if (!runner_.timed()) {
        at_end = draw(prefix + "at_end", {0, 1, 1}) != 0;
        offset = static_cast<size_t>(draw(prefix + "offset", {0, 0, 0, 1, 2, 3, 4, 5, 6, 7, 8, 15}));
    }
    return buffers_.emplace_back(name, element, count, offset,
                                 at_end ? GuardedBytes::Edge::kEnd : GuardedBytes::Edge::kBegin);
}

int16_t* Problem::samples(const char* name, size_t count) {
    int filler = static_cast<int>(kNumFillers) - 1;
    if (!runner_.timed()) filler = draw(std::string(name) + ".filler", {0, 1, 2, 3, 4, 5, 6, 7});
    auto* const data = static_cast<int16_t*>(place(name, sizeof(int16_t), count).data);
    kFillers[filler].fill(data, count, random_);
    return data;
}

float* Problem::floats(const char* name, size_t count, FloatFiller fill) {
    auto* const data = static_cast<float*>(place(name, sizeof(float), count).data);
    if (runner_.timed()) {
        std::fill(data, data + count, 0.0f);
    } else {
        fill(data, count, random_);
    }
    return data;
}

std::string Problem::difference(const Problem& reference) const {
    if (result_ != reference.result_) {
        return "gives " + std::to_string(result_) + " instead of " + std::to_string(reference.result_);
    }
    for (size_t b = 0; b < buffers_.size(); ++b) {
        const Buffer& is = buffers_[b];
        const Buffer& should = reference.buffers_[b];
        if (!is.compared) continue;
        const unsigned char* const pages = is.bytes.pages();
        const size_t size = is.bytes.pages_size();
        const size_t bad =
            static_cast<size_t>(std::mismatch(pages, pages + size, should.bytes.pages()).first - pages);
        if (bad == size) continue;
        const ptrdiff_t index = is.indexOf(reinterpret_cast<uintptr_t>(pages + bad));
        const ptrdiff_t first = is.indexOf(reinterpret_cast<uintptr_t>(pages));
        const ptrdiff_t behind = is.indexOf(reinterpret_cast<uintptr_t>(pages + size));
        const ptrdiff_t begin = std::max(first, index - kRow / 2);
        const ptrdiff_t end = std::min(behind, begin + kRow);
        std::ostringstream text;
        text << is.name << '[' << index << "] of " << is.count << " differs\n  from [" << begin
             << "] is       " << hexRow(is.data, is.element, begin, end) << "\n  from [" << begin
             << "] should be" << hexRow(should.data, is.element, begin, end);
        return text.str();
    }
    return {};
}

std::string Problem::whereIs(uintptr_t address) const {
    for (const Buffer& buffer : buffers_) {
        const auto page = reinterpret_cast<uintptr_t>(buffer.bytes.pages());
        const size_t guard = 4096;
        if (address + guard < page || address >= page + buffer.bytes.pages_size() + guard) continue;
        return buffer.name + "[" + std::to_string(buffer.indexOf(address)) + "] of " +
               std::to_string(buffer.count);
    }
    return "memory outside of all buffers";
}

std::string Problem::description() const {
    std::string text;
    for (const auto& [name, value] : drawn_) {
        text += (text.empty() ? "" : ", ") + name + " " + std::to_string(value);
    }
    return text;
}

}  // namespace quill::test
