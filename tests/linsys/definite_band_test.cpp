// tests/linsys/definite_band_test.cpp - positive definite band systems
#include "tests/linsys/kinds.h"

using namespace orvel_test;

namespace {

ORVEL_TEST_KIND(DefiniteBand, QS, QH);
ORVEL_TEST_KIND(Definite, DS, DH);

// Random rows beside a diagonal that outweighs them; what no routine may read is poison.
template <class T>
struct Matrix {
    int32_t n, kd, lda;
    std::vector<T> dense, band;

    Matrix(int32_t order, int32_t above, unsigned seed, int32_t extra = 0)
        : n(order), kd(above), lda(above + 1 + extra), dense(static_cast<std::size_t>(order) * order),
          band(static_cast<std::size_t>(lda) * order, T(std::nanf("")))
    {
        std::mt19937 random(seed);
        for (int32_t j = 0; j < n; ++j)
            for (int32_t i = std::max(0, j - kd); i <= j; ++i)
                set(i, j,
                    i == j ? T(static_cast<Real<T>>(2 + 2 * std::min(kd, n))) : random_value<T>(random));
    }
    void set(int32_t i, int32_t j, T value)
    {
        dense[at(i, j, n)] = value;
        band[at(kd + i - j, j, lda)] = value;
    }
    T operator()(int32_t i, int32_t j) const
    {
        return i <= j ? dense[at(i, j, n)] : conjugated(dense[at(j, i, n)]);
    }
    static std::size_t at(int32_t i, int32_t j, int32_t ld) { return static_cast<std::size_t>(i + j * ld); }
};

template <class T>
class DefiniteBands : public Solving<T> {
protected:
    DefiniteBands() { set_switches(0, 0, 0); }
};
TYPED_TEST_SUITE(DefiniteBands, Types);

const int32_t shapes[][2] = {{1, 0},  {1, 4},   {8, 0},   {8, 1},    {9, 8},    {9, 30},
                             {60, 7}, {70, 47}, {90, 48}, {200, 64}, {150, 300}};

TYPED_TEST(DefiniteBands, AreSolvedInPlaceAndApart)
{
    using T = TypeParam;
    for (const auto& [n, kd] : shapes) {
        const Matrix<T> a(n, kd, static_cast<unsigned>(n + kd), n % 2);
        const std::vector<T> b = this->vector(n, 3);
        std::vector<T> x = b, y = b, z = b, place = a.band, apart(a.band.size());
        Guarded<T> band(a.band);  // reads nothing beside it
        DefiniteBand<T>::refined_solve(&n, band.data(), &a.lda, &kd, b.data(), x.data());
        EXPECT_LE(backward_error(n, a, x, b), 2 * this->eps) << n << " " << kd;
        DefiniteBand<T>::solve(&n, band.data(), &a.lda, &kd, y.data(), y.data());
        DefiniteBand<T>::factor(&n, band.data(), &a.lda, &kd, apart.data(), &a.lda);
        DefiniteBand<T>::factor(&n, place.data(), &a.lda, &kd, place.data(), &a.lda);
        DefiniteBand<T>::back(&n, place.data(), &a.lda, &kd, b.data(), z.data());
        EXPECT_EQ(y, z);
        DefiniteBand<T>::back(&n, apart.data(), &a.lda, &kd, b.data(), z.data());
        EXPECT_EQ(y, z);
        EXPECT_EQ(outcome(), (Outcome{0, 0}));
    }
}

TYPED_TEST(DefiniteBands, ConditionAndDeterminantAreThoseOfTheMatrix)
{
    using T = TypeParam;
    for (const auto& [n, kd] : shapes) {
        const Matrix<T> a(n, kd, static_cast<unsigned>(n));
        std::vector<T> fact(a.band.size()), full(a.dense), inverse(full.size());
        for (int32_t j = 0; j < n; ++j)
            for (int32_t i = 0; i < n; ++i) full[a.at(i, j, n)] = a(i, j);
        Real<T> rcond, mantissa, exponent, m, e;
        DefiniteBand<T>::condition(&n, a.band.data(), &a.lda, &kd, fact.data(), &a.lda, &rcond);
        DefiniteBand<T>::determinant(&n, fact.data(), &a.lda, &kd, &mantissa, &exponent);
        Member<T>::linrg(&n, full.data(), &n, inverse.data(), &n);
        Definite<T>::factor(&n, full.data(), &n, full.data(), &n);
        Definite<T>::determinant(&n, full.data(), &n, &m, &e);
        EXPECT_LE(std::abs(mantissa * std::pow(Real<T>(10), exponent - e) - m),
                  200 * this->eps * static_cast<Real<T>>(n));
        const auto exact = static_cast<Real<T>>(reciprocal_condition(
            n, a, [&, order = n](int32_t i, int32_t j) { return inverse[a.at(i, j, order)]; }));
        EXPECT_LE(rcond, 10 * exact) << n << " " << kd;
        EXPECT_GE(rcond, exact * 0.9f) << n << " " << kd;
    }
}

TYPED_TEST(DefiniteBands, TheOrderThatFailsIsNamed)
{
    using T = TypeParam;
    for (const int32_t kd : {0, 3, 60})
        for (const int32_t failing : {0, 1, 40, 69}) {
            const int32_t n = 70;
            Matrix<T> good(n, kd, 9);
            for (int32_t j = 0; j < n; ++j)  // what is too small for a row would do for its neighbour
                for (int32_t i = std::max(0, j - kd); i <= j; ++i)
                    good.set(i, j, std::ldexp(Real<T>(1), 20 * (i % 2 + j % 2)) * good(i, j));
            Matrix<T> a = good;
            a.set(failing, failing, T(failing % 2 ? -1.0f : std::nanf("")));
            std::vector<T> fact(a.band.size(), T(7)), expected(fact), x(70, T(7));
            const std::vector<T> b(70, T(1));
            orvel_outcome said;
            orvel_begin_quiet(&said);
            DefiniteBand<T>::factor(&n, a.band.data(), &a.lda, &kd, fact.data(), &a.lda);
            orvel_end_quiet(&said);
            EXPECT_EQ(said.severity * 10 + said.code, 42);
            EXPECT_NE(std::string(said.text).find("order " + std::to_string(failing + 1) + "."),
                      std::string::npos)
                << said.text;
            DefiniteBand<T>::factor(&n, good.band.data(), &a.lda, &kd, expected.data(), &a.lda);
            for (int32_t j = 0; j < failing; ++j)
                EXPECT_EQ(fact[a.at(kd, j, a.lda)], expected[a.at(kd, j, a.lda)]);
            DefiniteBand<T>::refined_solve(&n, a.band.data(), &a.lda, &kd, b.data(), x.data());
            EXPECT_EQ(outcome(), (Outcome{4, 2}));
            EXPECT_EQ(x[0], T(7));
        }
}

TYPED_TEST(DefiniteBands, ImaginaryDiagonals)
{
    using T = TypeParam;
    Matrix<T> a(900, 30, 4);
    const std::vector<T> b = this->vector(a.n, 2);
    std::vector<T> expected = b;
    DefiniteBand<T>::refined_solve(&a.n, a.band.data(), &a.lda, &a.kd, b.data(), expected.data());
    if constexpr (!std::is_same_v<T, Real<T>>) {  // is taken as real, and said
        std::vector<T> x = b;
        a.set(5, 5, a(5, 5) + T(0, 1));
        DefiniteBand<T>::refined_solve(&a.n, a.band.data(), &a.lda, &a.kd, b.data(), x.data());
        EXPECT_EQ(outcome(), (Outcome{3, 3}));
        EXPECT_EQ(x, expected);
        a.set(5, 5, std::real(a(5, 5)));
    }
}

}  // namespace
