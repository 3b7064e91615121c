// kernels/triangular.h - products and solutions with triangles, for library code
//
// Matrices by columns, sizes in 64 bits and at least 0, nothing is checked.
#pragma once

#include <cstdint>

namespace orvel::kernels {

// x(n) = the solution of A * x = x, or with the conjugate transpose of A when `turned`. x is contiguous.
template <class T>
void solve_triangle(bool lower, bool turned, int64_t n, const T* a, int64_t lda, T* x);

// B(m, n) = A * B, or B * A when A is not on the left.
template <class T>
void multiply_by_triangle(bool left, bool lower, int64_t m, int64_t n, const T* a, int64_t lda, T* b,
                          int64_t ldb);

// B(m, n) = B * L^-1, L lower with a diagonal of 1 that is not read.
template <class T>
void solve_with_unit_lower(int64_t m, int64_t n, const T* a, int64_t lda, T* b, int64_t ldb);

}  // namespace orvel::kernels
