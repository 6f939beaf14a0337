#include "kernel_check/references/published_fft.h"

#include <cstddef>
#include <vector>

// Exported by the static archive only.
extern "C" {
void spx_drft_init(quill::test::PublishedTables* tables, int n);
void spx_drft_forward(quill::test::PublishedTables* tables, float* data);
void spx_drft_backward(quill::test::PublishedTables* tables, float* data);
}

namespace quill::test {
namespace {

PublishedTables& tablesOf(int n) {
    static auto* const all = new std::vector<PublishedTables>;
    const auto index = static_cast<size_t>(n);
    if (index >= all->size()) all->resize(index + 1);
    PublishedTables& tables = (*all)[index];
    if (tables.wsave == nullptr) spx_drft_init(&tables, n);
    return tables;
}

}  // namespace

const PublishedTables& publishedTables(int n) {
    return tablesOf(n);
}

void publishedForwardFft(int n, float* r) {
    spx_drft_forward(&tablesOf(n), r);
}

void publishedBackwardFft(int n, float* r) {
    spx_drft_backward(&tablesOf(n), r);
}

}  // namespace quill::test
