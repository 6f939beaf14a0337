#include "reference_engine/audio/linear_solve.h"

#include <cmath>
#include <cstddef>

namespace reference_engine {
namespace {

double dot(const double* a, const double* b, size_t count) {
    double sum = 0;
    for (size_t k = 0; k < count; ++k) sum += a[k] * b[k];
    return sum;
}

// matrix = L L^T; L replaces the lower triangle.
void factorise(std::vector<double>& matrix, size_t n) {
    for (size_t i = 0; i < n; ++i) {
        double* row = &matrix[i * n];
        for (size_t j = 0; j < i; ++j) {
            const double* above = &matrix[j * n];
            row[j] = (row[j] - dot(row, above, j)) / above[j];
        }
        row[i] = std::sqrt(row[i] - dot(row, row, i));
    }
}

}  // namespace

void solvePositiveDefinite(std::vector<double>& matrix, std::vector<double>& values) {
    const size_t n = values.size();
    factorise(matrix, n);
    for (size_t i = 0; i < n; ++i) {
        values[i] = (values[i] - dot(&matrix[i * n], values.data(), i)) / matrix[i * n + i];
    }
    for (size_t i = n; i-- > 0;) {
        values[i] /= matrix[i * n + i];
        for (size_t k = 0; k < i; ++k) values[k] -= matrix[i * n + k] * values[i];
    }
}

}  // namespace reference_engine
