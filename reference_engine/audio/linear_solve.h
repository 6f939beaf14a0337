// Solves small symmetric positive definite systems of equations by Cholesky's method. [setup]
#pragma once

#include <vector>

namespace reference_engine {

// in: `matrix`, row after row, symmetric positive definite, its lower triangle read; `values`, the right-hand
// side. out: `values`, the solution; `matrix`, its triangular factor.
void solvePositiveDefinite(std::vector<double>& matrix, std::vector<double>& values);

}  // namespace reference_engine
