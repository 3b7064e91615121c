// kernels/triangular.h - products and solutions with triangles, for library code
//
// Matrices by columns, sizes in 64 bits and at least 0, nothing is checked.
#pragma once

#include <cstdint>

namespace orvel::kernels {

// x(n) = the solution of A * x = x, or with the conjugate transpose of A when `turned`. x is contiguous.
template <class T>
void solve_triangle(bool lower, bool turned, int64_t n, const T* a, int64_t lda, T* x);

// B(m, n) = A * B.
template <class T>
void multiply_by_triangle(int64_t m, int64_t n, bool lower, const T* a, int64_t lda, T* b, int64_t ldb);

// B(m, n) = A^-1 * B, and B * A^-1; a diagonal of ones is not read.
struct TriangleKind {
    bool lower, unit;
};
template <class T>
void solve_with_triangle(int64_t m, int64_t n, TriangleKind kind, const T* a, int64_t lda, T* b, int64_t ldb);
template <class T>
void divide_by_triangle(int64_t m, int64_t n, TriangleKind kind, const T* a, int64_t lda, T* b, int64_t ldb);

// B(m, n) = A^-H * B, and B(m, n) = B * A^H, with an upper triangle.
template <class T>
void divide_by_turned_triangle(int64_t m, int64_t n, const T* a, int64_t lda, T* b, int64_t ldb);
template <class T>
void multiply_by_turned_triangle(int64_t m, int64_t n, const T* a, int64_t lda, T* b, int64_t ldb);

}  // namespace orvel::kernels
