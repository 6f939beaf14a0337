#include "kernel_check/problem/guarded_buffer.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace quill::test {

GuardedBytes::GuardedBytes(size_t size, Edge edge) {
    const auto page = static_cast<size_t>(::sysconf(_SC_PAGESIZE));
    pages_size_ = size == 0 ? page : (size + page - 1) / page * page;
    mapping_size_ = pages_size_ + 2 * page;
    mapping_ = ::mmap(nullptr, mapping_size_, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    pages_ = static_cast<unsigned char*>(mapping_) + page;
    if (mapping_ == MAP_FAILED || ::mprotect(pages_, pages_size_, PROT_READ | PROT_WRITE) != 0) {
        std::perror("guarded buffer");
        std::abort();
    }
    std::memset(pages_, 0xA5, pages_size_);
    data_ = edge == Edge::kEnd ? pages_ + pages_size_ - size : pages_;
}

GuardedBytes::~GuardedBytes() {
    ::munmap(mapping_, mapping_size_);
}

}  // namespace quill::test
