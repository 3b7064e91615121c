// kernels/product.h - the matrix product that all level 3 kernels are built on
#pragma once

#include "kernels/matrix.h"

namespace orvel::kernels {

// C(m, n) += A(m, k) * (alpha * B(k, n)). Each element of C receives its products one by one in ascending
// order of the inner index, so the result does not depend on the path. C has contiguous rows or columns, in
// either direction; when its rows are not contiguous, alpha must be 1 or -1. C must not overlap A or B.
template <class T>
void add_product(int64_t m, int64_t n, int64_t k, T alpha, Factor<T> a, Factor<T> b, View<T> c);

extern template void add_product(int64_t, int64_t, int64_t, float, Factor<float>, Factor<float>, View<float>);
extern template void add_product(int64_t, int64_t, int64_t, double, Factor<double>, Factor<double>,
                                 View<double>);
extern template void add_product(int64_t, int64_t, int64_t, std::complex<float>, Factor<std::complex<float>>,
                                 Factor<std::complex<float>>, View<std::complex<float>>);
extern template void add_product(int64_t, int64_t, int64_t, std::complex<double>,
                                 Factor<std::complex<double>>, Factor<std::complex<double>>,
                                 View<std::complex<double>>);

// C = beta * C, with C not read when beta is 0; only the part that `uplo` names when it is U or L.
template <class T>
void scale(int64_t m, int64_t n, T beta, View<T> c, char uplo = 'A');

}  // namespace orvel::kernels
