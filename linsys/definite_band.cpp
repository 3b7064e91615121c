// linsys/definite_band.cpp - Cholesky factorization of a band matrix, and solution with it
//
// Source: J. Du Croz, P. Mayes and G. Radicati, Factorization of band matrices using level 3 BLAS, 1990.
#include <algorithm>

#include "kernels/level1.h"
#include "kernels/product.h"
#include "kernels/triangular.h"
#include "linsys/band.h"
#include "linsys/definite.h"

namespace orvel::linsys {

namespace {

constexpr int64_t block = 32, blocked_from = 48, few = 6;

// A step at a time; KU is below `blocked_from`.
template <class T>
int64_t factor_by_columns(const Band<T>& r, const Part<T>* least)
{
    kernels::OnStack<T, blocked_from> row;  // of R, conjugated, beside its diagonal
    for (int64_t k = 0; k < r.n; ++k) {
        const Part<T> pivot = std::real(r(k, k));
        if (!(pivot > least[k])) return k;
        const Part<T> root = std::sqrt(pivot), t = 1 / root;
        r(k, k) = root;
        const int64_t width = r.columns_end(k) - k - 1;
        for (int64_t j = 0; j < width; ++j) {
            T& e = r(k, k + 1 + j);
            e *= t;
            row[j] = conjugate(e);
        }
        for (int64_t j = 0; j < width; ++j) {
            T* const column = &r(k + 1, k + 1 + j);
            const T factor = r(k, k + 1 + j);
            if (j < few)
                for (int64_t i = 0; i <= j; ++i) column[i] -= row[i] * factor;
            else
                kernels::axpy<T>(j + 1, -factor, row, 1, column, 1);
        }
    }
    return r.n;
}

// C(columns) -= A(nb, columns)^H * A, upper triangle.
template <class T>
void subtract_own_products(int64_t nb, int64_t columns, kernels::Factor<T> a, T* c, int64_t ldc)
{
    kernels::add_product<T>(columns, columns, nb, T(-1), a.adjoint(), a, {c, 1, ldc}, {false, 'U'});
}

// Rows j to j + nb - 1 of R: a triangle, the rows beside it, of which the corner beyond the band is in a
// square meanwhile, and the products of these.
template <class T>
void finish_rows(const Band<T>& r, int64_t j, int64_t nb)
{
    const int64_t next = j + nb, whole = std::min(r.n, j + r.ku + 1), end = std::min(r.n, next + r.ku);
    const int64_t near = std::max<int64_t>(whole - next, 0), far = end - std::max(whole, next);
    T* const triangle = &r(j, j);
    if (near > 0) {
        kernels::divide_by_turned_triangle<T>(nb, near, triangle, r.step, &r(j, next), r.step);
        subtract_own_products<T>(nb, near, {{&r(j, next), 1, r.step}}, &r(next, next), r.step);
    }
    if (far <= 0) return;
    kernels::OnStack<T, block * block> square;
    T* const corner = square;
    std::fill_n(corner, block * block, T(0));
    for (int64_t c = 0; c < far; ++c)
        for (int64_t k = whole + c - r.ku; k < next; ++k) corner[k - j + c * block] = r(k, whole + c);
    kernels::divide_by_turned_triangle<T>(nb, far, triangle, r.step, corner, block);
    const kernels::Factor<T> beyond{{corner, 1, block}};
    if (near > 0)
        kernels::add_product<T>(near, far, nb, T(-1), kernels::Factor<T>{{&r(j, next), 1, r.step}}.adjoint(),
                                beyond, {&r(next, whole), 1, r.step});
    subtract_own_products<T>(nb, far, beyond, &r(whole, whole), r.step);
    for (int64_t c = 0; c < far; ++c)
        for (int64_t k = whole + c - r.ku; k < next; ++k) r(k, whole + c) = corner[k - j + c * block];
}

}  // namespace

template <class T>
int64_t factor_definite_band(const Band<T>& r, const Part<T>* least)
{
    if (r.ku < blocked_from) return factor_by_columns<T>(r, least);
    for (int64_t j = 0; j < r.n; j += block) {
        const int64_t nb = std::min(block, r.n - j);
        const int64_t done = factor_definite<T>(nb, definite_width, &r(j, j), r.step, least + j);
        if (done < nb) return j + done;
        finish_rows(r, j, nb);
    }
    return r.n;
}

template <class T>
void solve_definite_band(const Band<const T>& r, T* x)
{
    for (int64_t k = 0; k < r.n; ++k) {
        const int64_t first = r.first_row(k);
        x[k] -= short_product<T>(k - first, &r(first, k), x + first);
        x[k] /= std::real(r(k, k));
    }
    for (int64_t k = r.n - 1; k >= 0; --k) {
        const int64_t first = r.first_row(k);
        x[k] /= std::real(r(k, k));
        subtract_short<T>(k - first, x[k], &r(first, k), x + first);
    }
}

template int64_t factor_definite_band(const Band<float>&, const float*);
template int64_t factor_definite_band(const Band<double>&, const double*);
template int64_t factor_definite_band(const Band<orvel_complex>&, const float*);
template int64_t factor_definite_band(const Band<orvel_dcomplex>&, const double*);
template void solve_definite_band(const Band<const float>&, float*);
template void solve_definite_band(const Band<const double>&, double*);
template void solve_definite_band(const Band<const orvel_complex>&, orvel_complex*);
template void solve_definite_band(const Band<const orvel_dcomplex>&, orvel_dcomplex*);

}  // namespace orvel::linsys
