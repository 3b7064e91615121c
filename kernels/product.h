// kernels/product.h - the matrix product that all level 3 kernels are built on
#pragma once

#include "kernels/isa/loops.h"
#include "kernels/matrix.h"

namespace orvel::kernels {

// C(m, n) += A(m, k) * (alpha * B(k, n)). Each element of C receives its products one by one in ascending
// order of the inner index, so the result does not depend on the path. C has contiguous rows or columns, in
// either direction; when its rows are not contiguous, alpha must be 1 or -1. C must not overlap A or B.
//
// With `from_zero` the sums start from zero and C is not read. With a triangle L or U only that part of a C
// by columns is read and written.
struct Target {
    bool from_zero = false;
    char triangle = 'A';
};
template <class T>
void add_product(int64_t m, int64_t n, int64_t k, T alpha, Factor<T> a, Factor<T> b, View<T> c,
                 Target target = {});

extern template void add_product(int64_t, int64_t, int64_t, float, Factor<float>, Factor<float>, View<float>,
                                 Target);
extern template void add_product(int64_t, int64_t, int64_t, double, Factor<double>, Factor<double>,
                                 View<double>, Target);
extern template void add_product(int64_t, int64_t, int64_t, std::complex<float>, Factor<std::complex<float>>,
                                 Factor<std::complex<float>>, View<std::complex<float>>, Target);
extern template void add_product(int64_t, int64_t, int64_t, std::complex<double>,
                                 Factor<std::complex<double>>, Factor<std::complex<double>>,
                                 View<std::complex<double>>, Target);

// The blocks that a large product goes through on this machine.
template <class T>
Blocks product_blocks(int64_t m, int64_t n, int64_t k);

// C(m, n) += A * (alpha * B) with a symmetric or Hermitian A(m, m), or with such a B(n, n); C by columns. Of
// that matrix one triangle, L or U, is read. False when there is no memory for panels; nothing has been done
// then.
struct SymmetricSide {
    bool left;
    char stored;
    bool hermitian;
};
template <class T>
bool add_symmetric_product(int64_t m, int64_t n, T alpha, SymmetricSide how, View<const T> a, View<const T> b,
                           View<T> c, bool from_zero);

// The product of add_product for a small A with alpha = 1, with as little as possible around the tiles. False
// when the sizes or the form of A are not for the tiles; nothing has been done then.
template <class T>
bool add_small_product(int64_t m, int64_t n, int64_t k, const T* a, int64_t a_rows, int64_t a_columns,
                       const T* b, int64_t b_rows, int64_t b_columns, bool b_conjugated, T* c, int64_t ldc,
                       bool from_zero);

// C = beta * C, with C not read when beta is 0; only the part that `uplo` names when it is U or L. A real
// beta scales the parts of a complex C.
template <class T, class S>
void scale(int64_t m, int64_t n, S beta, View<T> c, char uplo = 'A');

}  // namespace orvel::kernels
