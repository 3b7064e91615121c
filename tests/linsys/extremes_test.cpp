// tests/linsys/extremes_test.cpp - numbers near the ends of the range, growth, foreign pivots, traps
#include <cfenv>
#include <cmath>
#include <limits>
#include <vector>

#include "tests/linsys/members.h"

namespace {

using namespace orvel_test;

template <class T>
class Extremes : public Solving<T> {
protected:
    Extremes() { set_switches(0, 0, 0); }
};
TYPED_TEST_SUITE(Extremes, Types);

}  // namespace

// Ones above, minus ones below, ones in the last column: elements double in each step until the others are
// lost. Corrections are small then, and the solution is wrong.
TYPED_TEST(Extremes, GrowthThatSpoilsTheFactorizationIsSaid)
{
    using T = TypeParam;
    const int32_t n = sizeof(Real<T>) == 4 ? 60 : 120;
    std::vector<T> a(static_cast<std::size_t>(n * n)), fact = a, x(static_cast<std::size_t>(n)), res = x;
    for (int32_t j = 0; j < n; ++j)
        for (int32_t i = 0; i < n; ++i) a[this->at(i, j, n)] = T(i == j || j == n - 1 ? 1 : i > j ? -1 : 0);
    const std::vector<T> b = this->vector(n, 3);
    std::vector<int32_t> ipvt(x.size());
    Member<T>::lftrg(&n, a.data(), &n, fact.data(), &n, ipvt.data());
    for (const int32_t ipath : {1, 2}) {
        Member<T>::lsarg(&n, a.data(), &n, b.data(), &ipath, x.data());
        EXPECT_EQ(outcome(), (Outcome{3, 1})) << ipath;
        Member<T>::lfirg(&n, a.data(), &n, fact.data(), &n, ipvt.data(), b.data(), &ipath, x.data(),
                         res.data());
        EXPECT_EQ(outcome(), (Outcome{3, 2})) << ipath;
    }
}

// Sparse right sides, rows and columns of very different size, solutions near the smallest number.
TYPED_TEST(Extremes, RefinementWarnsOnlyThen)
{
    using T = TypeParam;
    using R = typename TestFixture::R;
    for (const int32_t n : {1, 2, 7, 40, 101})
        for (int kind = 0; kind < 4; ++kind)
            for (const int32_t ipath : {1, 2}) {
                std::vector<T> a = this->matrix(n, n, 7), b = this->vector(n, 5), x = b;
                for (int32_t i = 0; i < n; ++i) {
                    T& e = b[static_cast<std::size_t>(i)];
                    if (kind == 1) e = T(i == n / 2);
                    if (kind == 2) e *= std::pow(R(10), static_cast<R>(i % 4));
                    if (kind == 3) e *= 16 * this->tiny * this->eps;
                    for (int32_t j = 0; j < n; ++j) {
                        if (i == j) a[this->at(i, j, n)] += T(static_cast<R>(n));
                        if (kind == 2)
                            a[this->at(i, j, n)] *= std::pow(R(10), static_cast<R>((ipath == 1 ? i : j) % 4));
                    }
                }
                Member<T>::lsarg(&n, a.data(), &n, b.data(), &ipath, x.data());
                EXPECT_EQ(outcome(), (Outcome{0, 0})) << n << " kind " << kind << " ipath " << ipath;
            }
}

TYPED_TEST(Extremes, PivotsThatAreNoRowsAreRefused)
{
    using T = TypeParam;
    using R = typename TestFixture::R;
    const std::vector<T> a = {T(2), T(1), T(0), T(1), T(3), T(1), T(0), T(1), T(4)};
    const std::vector<T> untouched(3, T(7));
    const int32_t n = 3;
    for (const int32_t bad :
         {0, 4, -1, std::numeric_limits<int32_t>::min(), std::numeric_limits<int32_t>::max()})
        for (const std::size_t place : {0, 1, 2}) {
            std::vector<int32_t> ipvt = {1, 2, 3};
            ipvt[place] = bad;
            for (const int32_t ipath : {1, 2}) {
                std::vector<T> x = untouched, res = untouched;
                Member<T>::lfsrg(&n, a.data(), &n, ipvt.data(), a.data(), &ipath, x.data());
                EXPECT_EQ(outcome(), (Outcome{5, 6}));
                Member<T>::lfirg(&n, a.data(), &n, a.data(), &n, ipvt.data(), a.data(), &ipath, x.data(),
                                 res.data());
                EXPECT_EQ(outcome(), (Outcome{5, 6}));
                EXPECT_EQ(x, untouched);
            }
            T det1 = T(7);
            R det2 = 7;
            Member<T>::lfdrg(&n, a.data(), &n, ipvt.data(), &det1, &det2);
            EXPECT_EQ(outcome(), (Outcome{5, 3}));
            EXPECT_EQ(det1, T(7));
        }
}

// Magnitudes |Re| + |Im|, column sums, products and denominators beyond the largest number, results within
// it.
TYPED_TEST(Extremes, NearTheLargestNumberResultsAreRight)
{
    using T = TypeParam;
    using R = typename TestFixture::R;
    const R big = this->most * R(0.75);
    const T z = make<T>(big, big), turned = make<T>(1, 1);
    const std::vector<T> a = {z, T(0), T(0), z};
    std::vector<T> fact(4), x = {z, -z};
    std::vector<int32_t> ipvt(2);
    R rcond = 0, det2 = 0;
    Member<T>::lfcrg(&two, a.data(), &two, fact.data(), &two, ipvt.data(), &rcond);
    EXPECT_EQ(outcome(), (Outcome{0, 0}));
    EXPECT_GT(rcond, R(0.5));
    for (const int32_t ipath : {1, 2}) {
        x = {z, -z};
        Member<T>::lfsrg(&two, fact.data(), &two, ipvt.data(), x.data(), &ipath, x.data());
        const T expected = ipath == 1 || !is_complex<T> ? T(1) : turned * turned / R(2);
        EXPECT_LE(std::abs(x[0] - expected), 4 * this->eps);
        EXPECT_LE(std::abs(x[1] + expected), 4 * this->eps);
    }
    // Each of some 300 steps to the mantissa rounds.
    T det1 = T(0);
    const std::vector<T> factors = {T(9), T(0), T(0), T(big)};
    Member<T>::lfdrg(&two, factors.data(), &two, std::vector<int32_t>{1, 2}.data(), &det1, &det2);
    const long double scale = std::pow(10.0L, static_cast<long double>(det2));
    EXPECT_NEAR(static_cast<double>(static_cast<long double>(std::real(det1)) *
                                    (scale / static_cast<long double>(big))),
                9, 3000 * static_cast<double>(this->eps));
    // The sum of the first column is beyond the largest number: the condition is 4.
    const std::vector<T> sums = {T(big), T(big), T(0), T(big)};
    Member<T>::lfcrg(&two, sums.data(), &two, fact.data(), &two, ipvt.data(), &rcond);
    EXPECT_GE(rcond, R(0.24));
    EXPECT_LE(rcond, R(0.6));
    // A norm with something that is no number is none, wherever that stands.
    R norm = 0;
    for (std::size_t k = 0; k < 4; ++k) {
        std::vector<T> m(4, T(1));
        m[k] = T(std::numeric_limits<R>::quiet_NaN());
        Member<T>::nr1rr(&two, &two, m.data(), &two, &norm);
        EXPECT_TRUE(std::isnan(norm)) << k;
    }
}

// X * L and U * ... of an inverse triangle: the sum of the magnitudes of the products bounds what is left,
// even where the triangle is ill-conditioned.
TYPED_TEST(Extremes, InversesOfTrianglesHaveSmallResiduals)
{
    using T = TypeParam;
    for (const int32_t n : {1, 20, 40, 100})
        for (const int32_t ipath : {1, 2}) {
            std::vector<T> a = this->matrix(n, n, 11);
            for (int32_t j = 0; j < n; ++j)  // the other triangle
                for (int32_t i = 0; i < n; ++i)
                    if (ipath == 1 ? i < j : i > j) a[this->at(i, j, n)] = T(std::nanf(""));
            std::vector<T> inverse = a;
            Member<T>::linrt(&n, a.data(), &n, &ipath, inverse.data(), &n);
            for (int32_t j = 0; j < n; ++j)
                for (int32_t i = ipath == 1 ? j : 0; i < (ipath == 1 ? n : j + 1); ++i) {
                    std::complex<long double> sum = i == j ? -1 : 0;
                    long double bound = 0;
                    for (int32_t k = std::min(i, j); k <= std::max(i, j); ++k) {
                        const auto left = wide(inverse[this->at(i, k, n)]),
                                   right = wide(a[this->at(k, j, n)]);
                        sum += left * right;
                        bound += std::abs(left) * std::abs(right);
                    }
                    ASSERT_LE(std::abs(sum), 2 * n * static_cast<long double>(this->eps) * bound)
                        << n << " ipath " << ipath << " at " << i << ", " << j;
                }
        }
}

// No division by the zeros of padding, no comparison with what lies there.
TYPED_TEST(Extremes, ValidDataRaiseNoTrap)
{
    using T = TypeParam;
    using R = typename TestFixture::R;
    for (int32_t n = 1; n <= 40; ++n) {
        const std::vector<T> a = this->matrix(n, n, static_cast<unsigned>(n)), b = this->vector(n, 1);
        std::vector<T> x = b, fact = a;
        std::vector<int32_t> ipvt(x.size());
        R rcond = 0, det2 = 0;
        T det1{};
        std::feclearexcept(FE_ALL_EXCEPT);
        for (const int32_t ipath : {1, 2}) Member<T>::lsarg(&n, a.data(), &n, b.data(), &ipath, x.data());
        Member<T>::lfcrg(&n, a.data(), &n, fact.data(), &n, ipvt.data(), &rcond);
        Member<T>::lfdrg(&n, fact.data(), &n, ipvt.data(), &det1, &det2);
        Member<T>::linrg(&n, a.data(), &n, fact.data(), &n);
        for (const int32_t ipath : {1, 2}) Member<T>::linrt(&n, a.data(), &n, &ipath, fact.data(), &n);
        EXPECT_EQ(std::fetestexcept(FE_INVALID | FE_DIVBYZERO | FE_OVERFLOW), 0) << n;
    }
}
