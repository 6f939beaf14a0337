// Memory with a page without access on either side: one byte read or written outside ends the process.
#pragma once

#include <cstddef>

namespace quill::test {

// `count` elements that end exactly at the page after them (Edge::kEnd), or begin exactly at the end of the page
// before them (Edge::kBegin). Other bytes of the mapping are filled with 0xA5.
class GuardedBytes {
  public:
    enum class Edge { kBegin, kEnd };
    GuardedBytes(size_t size, Edge edge);
    ~GuardedBytes();
    GuardedBytes(const GuardedBytes&) = delete;
    GuardedBytes& operator=(const GuardedBytes&) = delete;
    void* data() const { return data_; }

    // The whole pages with access that contain the elements.
    const unsigned char* pages() const { return pages_; }
    size_t pages_size() const { return pages_size_; }

  private:
    void* mapping_;
    size_t mapping_size_;
    unsigned char* pages_;
    size_t pages_size_;
    void* data_;
};

template <class T>
class GuardedBuffer {
  public:
    using Edge = GuardedBytes::Edge;
    explicit GuardedBuffer(size_t count, Edge edge = Edge::kEnd)
        : bytes_(count * sizeof(T), edge), count_(count) {}
    T* data() const { return static_cast<T*>(bytes_.data()); }
    size_t size() const { return count_; }
    T* begin() const { return data(); }
    T* end() const { return data() + count_; }
    T& operator[](size_t index) const { return data()[index]; }

  private:
    GuardedBytes bytes_;
    size_t count_;
};

}  // namespace quill::test
