// tests/kernels/matrices.h - matrices with poison around them, wide reference arithmetic, kernels by
// precision
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include "tests/levels.h"
#include "tests/numbers.h"
#include "tests/support.h"

namespace orvel_test {

template <class T>
T poison()
{
    return T(std::numeric_limits<Real<T>>::quiet_NaN());
}

template <class T>
bool is_poison(T x)
{
    return std::isnan(std::real(x));
}

template <class T>
Wide<T> wide(T x)
{
    return Wide<T>(x);
}

// By columns, with three more rows than the leading dimension needs, all poison where nothing is stored.
template <class T>
struct Matrix {
    int32_t rows, columns, ld;
    std::vector<T> elements;

    Matrix(int32_t m, int32_t n)
        : rows(m), columns(n), ld(m + 3), elements(static_cast<size_t>(ld) * n, poison<T>())
    {}
    Matrix(int32_t m, int32_t n, std::mt19937& random) : Matrix(m, n)
    {
        for (int32_t j = 0; j < n; ++j)
            for (int32_t i = 0; i < m; ++i) (*this)(i, j) = random_value<T>(random);
    }
    T& operator()(int32_t i, int32_t j) { return elements[static_cast<size_t>(j) * ld + i]; }
    const T& operator()(int32_t i, int32_t j) const { return elements[static_cast<size_t>(j) * ld + i]; }
    T* data() { return elements.data(); }

    void poison_outside(char uplo, bool diagonal = false)
    {
        for (int32_t j = 0; j < columns; ++j)
            for (int32_t i = 0; i < rows; ++i)
                if ((uplo == 'U' ? i > j : i < j) || (diagonal && i == j)) (*this)(i, j) = poison<T>();
    }
};

template <class T>
Wide<T> op(const Matrix<T>& a, char trans, int32_t i, int32_t j)
{
    return trans == 'N' ? wide(a(i, j)) : trans == 'T' ? wide(a(j, i)) : conjugated(wide(a(j, i)));
}

// The elements of a whole matrix of which one triangle is stored.
template <class T>
Wide<T> symmetric(const Matrix<T>& a, char uplo, bool hermitian, int32_t i, int32_t j)
{
    const bool here = uplo == 'U' ? i <= j : i >= j;
    const Wide<T> x = here ? wide(a(i, j)) : wide(a(j, i));
    return !hermitian ? x : i == j ? Wide<T>(std::real(x)) : here ? x : conjugated(x);
}
template <class T>
Wide<T> triangular(const Matrix<T>& a, char uplo, char trans, char diag, int32_t i, int32_t j)
{
    if (i == j) return diag == 'U' ? Wide<T>(1) : op(a, trans, i, i);
    return ((uplo == 'U') == (trans == 'N') ? i < j : i > j) ? op(a, trans, i, j) : Wide<T>(0);
}

// A triangle far from singular.
template <class T>
Matrix<T> triangle(int32_t n, char uplo, char diag, std::mt19937& random)
{
    Matrix<T> a(n, n, random);
    for (int32_t j = 0; j < n; ++j) {
        for (int32_t i = 0; i < n; ++i) a(i, j) *= i == j ? Real<T>(1) : Real<T>(1) / n;
        a(j, j) += T(std::real(a(j, j)) < 0 ? -1 : 1);
    }
    a.poison_outside(uplo, diag == 'U');
    return a;
}

// A result against its reference: within `terms` roundings of sums whose magnitudes add up to `size`.
template <class T>
void expect_close(T value, Wide<T> exact, double size, double terms, const std::string& what)
{
    const double eps = static_cast<double>(std::numeric_limits<Real<T>>::epsilon());
    ASSERT_LE(static_cast<double>(std::abs(wide(value) - exact)), 4 * eps * (terms + 2) * (size + 1e-30))
        << what;
}

#define ORVEL_TEST_KERNEL(name, S, D, C, Z)                        \
    template <class T>                                             \
    inline constexpr auto name = [] {                              \
        if constexpr (std::is_same_v<T, float>)                    \
            return S;                                              \
        else if constexpr (std::is_same_v<T, double>)              \
            return D;                                              \
        else if constexpr (std::is_same_v<T, std::complex<float>>) \
            return C;                                              \
        else                                                       \
            return Z;                                              \
    }()

using Precisions = ::testing::Types<float, double, std::complex<float>, std::complex<double>>;

}  // namespace orvel_test
