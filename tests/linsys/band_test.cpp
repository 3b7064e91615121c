// tests/linsys/band_test.cpp - general band systems: storage, factorization, solution, condition, determinant
#include "tests/linsys/kinds.h"

using namespace orvel_test;

namespace {

ORVEL_TEST_KIND(Band, RB, CB);

// A matrix with kl and ku diagonals, dense and as a band; what no routine may read is poison.
template <class T>
struct Matrix {
    int32_t n, kl, ku, lda;
    std::vector<T> dense, band;

    Matrix(int32_t order, int32_t below, int32_t above, unsigned seed, int32_t extra = 0)
        : n(order), kl(below), ku(above), lda(below + above + 1 + extra),
          dense(static_cast<std::size_t>(order) * order),
          band(static_cast<std::size_t>(lda) * order, T(std::nanf("")))
    {
        std::mt19937 random(seed);
        for (int32_t j = 0; j < n; ++j)
            for (int32_t i = std::max(0, j - ku); i < std::min(n, j + kl + 1); ++i)
                set(i, j, random_value<T>(random));
        // A narrow triangle of random numbers would have a condition that grows with every row.
        const auto weight = static_cast<Real<T>>(2 * std::sqrt(std::min(n, kl + ku + 1)));
        for (int32_t k = 0; std::min(kl, ku) < 4 && k < n; ++k) set(k, k, (*this)(k, k) + weight);
    }
    void set(int32_t i, int32_t j, T value)
    {
        dense[static_cast<std::size_t>(i + j * n)] = value;
        band[static_cast<std::size_t>(ku + i - j + j * lda)] = value;
    }
    T operator()(int32_t i, int32_t j) const { return dense[static_cast<std::size_t>(i + j * n)]; }
    int32_t ldfac() const { return 2 * kl + ku + 1; }
};

template <class T>
class Banded : public Solving<T> {
protected:
    Banded() { set_switches(0, 0, 0); }
};
TYPED_TEST_SUITE(Banded, Types);

// No diagonal beside the main one, few, as many as there can be, more than that; by columns and in blocks.
const int32_t shapes[][3] = {{1, 0, 0},      {1, 3, 2},    {7, 0, 2},    {7, 2, 0},   {9, 2, 3},
                             {9, 8, 8},      {9, 20, 30},  {40, 7, 12},  {61, 60, 3}, {150, 50, 20},
                             {150, 64, 100}, {131, 49, 0}, {200, 90, 90}};

TYPED_TEST(Banded, SolvesBothWays)
{
    using T = TypeParam;
    for (const auto& [n, kl, ku] : shapes)
        for (const int32_t path : {1, 2}) {
            const Matrix<T> a(n, kl, ku, static_cast<unsigned>(n + kl), path);
            std::vector<T> b = this->vector(n, 3), x(b.size());
            const auto element = [&](int32_t i, int32_t j) {
                if (path == 1) return a(i, j);
                if constexpr (std::is_same_v<T, Real<T>>)
                    return a(j, i);
                else
                    return std::conj(a(j, i));
            };
            Guarded<T> band(a.band);  // reads nothing beside it
            Band<T>::refined_solve(&n, band.data(), &a.lda, &kl, &ku, b.data(), &path, x.data());
            EXPECT_LE(backward_error(n, element, x, b), 2 * this->eps) << n << " " << kl << " " << ku;
            Band<T>::solve(&n, band.data(), &a.lda, &kl, &ku, b.data(), &path, b.data());  // in place
            for (int32_t k = 0; k < n; ++k) EXPECT_TRUE(is_number(b[static_cast<std::size_t>(k)]));
            EXPECT_LE(outcome().type, 3);
        }
}

TYPED_TEST(Banded, FactorsInPlaceAndApartWithTheSameBits)
{
    using T = TypeParam;
    for (const auto& [n, kl, ku] : shapes) {
        const Matrix<T> a(n, kl, ku, static_cast<unsigned>(n + ku), kl);  // LDA = LDFAC
        const int32_t ld = a.ldfac();
        std::vector<T> apart(a.band.size()), place = a.band, b = this->vector(n, 1), x(b.size()), y(b.size());
        std::vector<int32_t> p(b.size()), q(b.size());
        Band<T>::factor(&n, a.band.data(), &ld, &kl, &ku, apart.data(), &ld, p.data());
        Real<T> rcond;
        Band<T>::condition(&n, place.data(), &ld, &kl, &ku, place.data(), &ld, q.data(), &rcond);
        EXPECT_EQ(p, q);
        for (const int32_t path : {1, 2}) {
            Band<T>::back(&n, apart.data(), &ld, &kl, &ku, p.data(), b.data(), &path, x.data());
            Band<T>::back(&n, place.data(), &ld, &kl, &ku, q.data(), b.data(), &path, y.data());
            EXPECT_EQ(x, y) << n << " " << kl << " " << ku;
            Band<T>::solve(&n, a.band.data(), &ld, &kl, &ku, b.data(), &path, y.data());
            EXPECT_EQ(x, y);
            std::vector<T> correction(b.size());
            Band<T>::refine(&n, a.band.data(), &ld, &kl, &ku, apart.data(), &ld, p.data(), b.data(), &path,
                            x.data(), correction.data());
            Band<T>::refined_solve(&n, a.band.data(), &ld, &kl, &ku, b.data(), &path, y.data());
            EXPECT_EQ(x, y);
        }
    }
}

// The general members are the reference: condition and determinant, with interchanges and without.
TYPED_TEST(Banded, ConditionAndDeterminantAreThoseOfTheMatrix)
{
    using T = TypeParam;
    for (const auto& [n, kl, ku] : shapes)
        for (const bool dominant : {false, true}) {
            Matrix<T> a(n, kl, ku, static_cast<unsigned>(n));
            if (dominant)
                for (int32_t k = 0; k < n; ++k)
                    a.set(k, k, T(4) * static_cast<Real<T>>(std::sqrt(std::min(n, kl + ku + 1))));
            const int32_t ld = a.ldfac();
            std::vector<T> fact(static_cast<std::size_t>(ld) * n), lu(a.dense.size()),
                inverse(a.dense.size());
            std::vector<int32_t> pivots(static_cast<std::size_t>(n)), p(pivots);
            Real<T> rcond, exponent, e;
            T mantissa, m;
            Band<T>::condition(&n, a.band.data(), &a.lda, &kl, &ku, fact.data(), &ld, pivots.data(), &rcond);
            Band<T>::determinant(&n, fact.data(), &ld, &kl, &ku, pivots.data(), &mantissa, &exponent);
            Member<T>::lftrg(&n, a.dense.data(), &n, lu.data(), &n, p.data());
            Member<T>::lfdrg(&n, lu.data(), &n, p.data(), &m, &e);
            const Real<T> size = std::pow(Real<T>(10), exponent - e);
            EXPECT_LE(std::abs(mantissa * size - m), 1e4f * this->eps * static_cast<Real<T>>(n))
                << n << " " << kl;
            Member<T>::linrg(&n, a.dense.data(), &n, inverse.data(), &n);
            const auto exact = reciprocal_condition(n, a, [&, order = n](int32_t i, int32_t j) {
                return inverse[static_cast<std::size_t>(i + j * order)];
            });
            EXPECT_LE(static_cast<long double>(rcond), 10 * exact) << n << " " << kl << " " << ku;
            EXPECT_GE(static_cast<long double>(rcond), exact * 0.9L) << n << " " << kl << " " << ku;
        }
}

// Long bands take a time in proportion: the estimate does not bring back all of a vector at every step. The
// second difference matrix has the inverse norm (N + 1)^2 / 8.
TEST(BandCondition, OfTheSecondDifferencesOfALongString)
{
    constexpr int32_t n = 99999, kl = 1, ku = 1, lda = 3, ld = 4;
    std::vector<double> a(std::size_t{lda} * n), fact(std::size_t{ld} * n);
    for (std::size_t j = 0; j < n; ++j) a[3 * j] = a[3 * j + 2] = -1, a[3 * j + 1] = 2;
    std::vector<int32_t> pivots(n);
    double rcond;
    DLFCRB(&n, a.data(), &lda, &kl, &ku, fact.data(), &ld, pivots.data(), &rcond);
    EXPECT_NEAR(rcond * 4 * 1e10 / 8, 1.5, 0.5);
    // Graded over the range of the numbers, where the result is representable.
    for (std::size_t j = 0; j < n; ++j)
        for (std::size_t i = 0; i < 3; ++i) a[3 * j + i] *= 0x1p1000;
    double same;
    DLFCRB(&n, a.data(), &lda, &kl, &ku, fact.data(), &ld, pivots.data(), &same);
    EXPECT_EQ(rcond, same);
}

TYPED_TEST(Banded, SingularMatricesAndForeignPivots)
{
    using T = TypeParam;
    Matrix<T> a(60, 52, 2, 5);
    for (int32_t j = 0; j < 60; ++j)
        for (int32_t i = std::max(0, j - 2); i < 60 && i <= j + 52; ++i)
            if (j == 30) a.set(i, j, T(0));
    const int32_t n = 60, ld = a.ldfac(), path = 1;
    std::vector<T> fact(static_cast<std::size_t>(ld) * 60), x(60, T(7)), b(60, T(1));
    std::vector<int32_t> pivots(60);
    Band<T>::factor(&n, a.band.data(), &a.lda, &a.kl, &a.ku, fact.data(), &ld, pivots.data());
    EXPECT_EQ(outcome(), (Outcome{4, 2}));
    Band<T>::refined_solve(&n, a.band.data(), &a.lda, &a.kl, &a.ku, b.data(), &path, x.data());
    EXPECT_EQ(outcome(), (Outcome{4, 2}));
    Band<T>::back(&n, fact.data(), &ld, &a.kl, &a.ku, pivots.data(), b.data(), &path, x.data());
    EXPECT_EQ(outcome(), (Outcome{5, 6}));
    for (const int32_t foreign : {0, 5, 61, 10 + 53}) {  // row 10 is step 10's: 10 to 62, and to 60 at most
        pivots[9] = foreign;
        Band<T>::back(&n, fact.data(), &ld, &a.kl, &a.ku, pivots.data(), b.data(), &path, x.data());
        EXPECT_EQ(outcome(), (Outcome{5, 7})) << foreign;
    }
    EXPECT_EQ(x, std::vector<T>(60, T(7)));
}

}  // namespace
