// linsys/band.h - general band matrices: storage, factorization, solution
#pragma once

#include <algorithm>
#include <limits>

#include "linsys/linsys.h"

namespace orvel::linsys {

// A band matrix of order n with kl diagonals below the main one and ku above it, of which none lies outside.
// A matrix by columns whose rows shift by one from column to column: elements of a row are `step` apart.
template <class T>
struct Band {
    int64_t n, kl, ku;
    T* origin;  // where element (0, 0) is
    int64_t step;

    // Diagonal ku is in the first row of the array; those that lie outside the matrix are left out. Sizes
    // that are still to be refused give the least band; nothing of it is read.
    static Band in_array(int64_t n, int64_t kl, int64_t ku, T* a, int64_t lda)
    {
        n = std::max<int64_t>(n, 1), kl = std::max<int64_t>(kl, 0), ku = std::max<int64_t>(ku, 0);
        return {n, std::min(kl, n - 1), std::min(ku, n - 1), a + ku, lda - 1};
    }
    Band<const T> constant() const { return {n, kl, ku, origin, step}; }

    T& operator()(int64_t i, int64_t j) const { return origin[i + j * step]; }

    // The rows of a column, and the columns of a row.
    int64_t first_row(int64_t j) const { return std::max<int64_t>(0, j - ku); }
    int64_t rows_end(int64_t j) const { return std::min(n, j + kl + 1); }
    int64_t first_column(int64_t i) const { return std::max<int64_t>(0, i - kl); }
    int64_t columns_end(int64_t i) const { return std::min(n, i + ku + 1); }
};

// FACT of L2TRB: U has kl more diagonals than A above the main one.
template <class T>
inline Band<T> band_factor(int64_t n, int64_t kl, int64_t ku, T* fact, int64_t ldfac)
{
    kl = std::max<int64_t>(kl, 0), ku = std::max<int64_t>(ku, 0);
    Band<T> fact_in_array = Band<T>::in_array(n, kl, kl + ku, fact, ldfac);
    const int64_t most = fact_in_array.n - 1;
    fact_in_array.ku = std::min(fact_in_array.kl + std::min(ku, most), most);
    return fact_in_array;
}

inline constexpr int64_t enough = std::numeric_limits<int64_t>::max();  // a leading dimension that is our own

// The largest column sum of magnitudes of `scale` * A, of which the upper part is given; NaN when a column
// has one.
template <class T>
Part<T> norm_of_hermitian(const Band<const T>& a, Part<T>* sums, Part<T> scale)
{
    for (int64_t j = 0; j < a.n; ++j) {
        const int64_t first = a.first_row(j);
        for (int64_t i = first; i < j; ++i) sums[i] += magnitude(scale * a(i, j));
        sums[j] = sum_of_magnitudes(j - first, &a(first, j), scale) + std::abs(scale * std::real(a(j, j)));
    }
    return largest_sum<Part<T>>(a.n, [&](int64_t j) { return sums[j]; });
}

// Where a call takes longer than the work, it is done in place: x^H * y, and y -= a * x.
inline constexpr int64_t few_elements = 8;
template <class T>
inline T short_product(int64_t n, const T* x, const T* y)
{
    if (n > few_elements) return kernels::dotc<T>(n, x, 1, y, 1);
    T sum = 0;
    for (int64_t k = 0; k < n; ++k) sum += conjugate(x[k]) * y[k];
    return sum;
}
template <class T>
inline void subtract_short(int64_t n, T a, const T* x, T* y)
{
    if (n > few_elements) return kernels::axpy<T>(n, -a, x, 1, y, 1);
    for (int64_t k = 0; k < n; ++k) y[k] -= a * x[k];
}

// FACT = A, factored with row-scaled partial pivoting; s(n) is scratch. FACT may be A's array. Returns
// whether a pivot was close to zero.
template <class T>
bool factor_band(const Band<const T>& a, const Band<T>& fact, int32_t* ipvt, Part<T>* s);

// x = the solution of A * x = x, or with the conjugate transpose, from the factorization.
template <class T>
void solve_band(const Band<const T>& fact, const int32_t* ipvt, bool turned, T* x);

// R(n) = the factor of a positive definite band in place, kl = 0; a pivot must be above least(k). Returns the
// number of columns that are done, n when A is positive definite.
template <class T>
int64_t factor_definite_band(const Band<T>& r, const Part<T>* least);

// x = the solution of R^H * R * x = x.
template <class T>
void solve_definite_band(const Band<const T>& r, T* x);

// An estimate of the reciprocal of the condition number of A in the 1-norm, from its norm; z(n) is scratch.
// Without IPVT the factorization is that of a positive definite band.
template <class T>
Part<T> condition_of_band(const ScaledNorm<Part<T>>& norm, const Band<const T>& fact, const int32_t* ipvt,
                          T* z);

}  // namespace orvel::linsys
