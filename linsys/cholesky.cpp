// linsys/cholesky.cpp - Cholesky factorization and its way back to a product, by halves
//
// An element gets its products in ascending order of the steps on every path.
#include <algorithm>

#include "kernels/product.h"
#include "kernels/triangular.h"
#include "linsys/definite.h"

namespace orvel::linsys {

namespace {

// The order of the first of two triangles: a multiple of `unit`.
int64_t first_half(int64_t n, int64_t unit) { return (n / 2 + unit - 1) / unit * unit; }

}  // namespace

template <class T>
int64_t factor_definite(int64_t n, int64_t width, T* r, int64_t ldr, const Part<T>* least)
{
    if (n <= width)
        return of_type<T>(small_cholesky_loops())(n, kernels::parts(r), ldr, kernels::parts(r), ldr, least);
    const int64_t half = first_half(n, width), rest = n - half;
    T* const right = r + half * ldr;
    T* const corner = right + half;
    const int64_t done = factor_definite(half, width, r, ldr, least);
    if (done < half) return done;
    kernels::divide_by_turned_triangle<T>(half, rest, r, ldr, right, ldr);
    const kernels::Factor<T> rows{{right, 1, ldr}};
    kernels::add_product<T>(rest, rest, half, T(-1), rows.adjoint(), rows, {corner, 1, ldr}, {false, 'U'});
    return half + factor_definite(rest, width, corner, ldr, least + half);
}

namespace {

template <class T>
void multiply_small(int64_t n, T* r, int64_t ldr)
{
    for (int64_t i = 0; i < n; ++i)
        for (int64_t j = i; j < n; ++j) {
            T sum = 0;
            for (int64_t k = j; k < n; ++k) sum += r[i + k * ldr] * conjugate(r[j + k * ldr]);
            r[i + j * ldr] = sum;
        }
}

}  // namespace

template <class T>
void multiply_by_own_adjoint(int64_t n, T* r, int64_t ldr)
{
    constexpr int64_t small = 16;
    if (n <= small) return multiply_small(n, r, ldr);
    const int64_t half = first_half(n, small), rest = n - half;
    T* const right = r + half * ldr;
    T* const corner = right + half;
    const kernels::Factor<T> rows{{right, 1, ldr}};
    multiply_by_own_adjoint(half, r, ldr);
    kernels::add_product<T>(half, half, rest, T(1), rows, rows.adjoint(), {r, 1, ldr}, {false, 'U'});
    kernels::multiply_by_turned_triangle<T>(half, rest, corner, ldr, right, ldr);
    multiply_by_own_adjoint(rest, corner, ldr);
}

template int64_t factor_definite(int64_t, int64_t, float*, int64_t, const float*);
template int64_t factor_definite(int64_t, int64_t, double*, int64_t, const double*);
template int64_t factor_definite(int64_t, int64_t, orvel_complex*, int64_t, const float*);
template int64_t factor_definite(int64_t, int64_t, orvel_dcomplex*, int64_t, const double*);
template void multiply_by_own_adjoint(int64_t, float*, int64_t);
template void multiply_by_own_adjoint(int64_t, double*, int64_t);

}  // namespace orvel::linsys
