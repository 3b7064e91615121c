// tests/linsys/solve_test.cpp - the dense solvers: errors, accuracy, condition, determinant, inverse

#include <algorithm>
#include <cmath>
#include <vector>

#include "tests/linsys/members.h"

namespace {

using namespace orvel_test;

template <class T>
class Solvers : public Solving<T> {
protected:
    Solvers() { set_switches(0, 1, 0); }

    Capture printed;

    // Largest |b - A x| / (|A| |x| + |b|) of a row, formed in twice the precision of doubles where needed.
    static double backward_error(const std::vector<T>& a, int32_t lda, int32_t n, const std::vector<T>& x,
                                 const std::vector<T>& b, int32_t ipath)
    {
        double worst = 0;
        for (int32_t i = 0; i < n; ++i) {
            auto residual = wide(b[static_cast<std::size_t>(i)]);
            long double size = std::abs(residual);
            for (int32_t j = 0; j < n; ++j) {
                const auto e =
                    ipath == 1 ? wide(a[Solvers::at(i, j, lda)]) : std::conj(wide(a[Solvers::at(j, i, lda)]));
                residual -= e * wide(x[static_cast<std::size_t>(j)]);
                size += std::abs(e) * std::abs(wide(x[static_cast<std::size_t>(j)]));
            }
            worst = std::max(worst, static_cast<double>(std::abs(residual) / size));
        }
        return worst;
    }
};
TYPED_TEST_SUITE(Solvers, Types);

}  // namespace

TYPED_TEST(Solvers, RefinedSolutionsHaveNoBackwardErrorToSpeakOf)
{
    using T = TypeParam;
    for (const int32_t n : {1, 2, 5, 17, 33, 90, 150})
        for (const int32_t ipath : {1, 2}) {
            const int32_t lda = n + 3;
            const auto a = this->matrix(n, lda, 3), b = this->vector(n, 5);
            std::vector<T> refined(b.size()), plain = b;
            Member<T>::lsarg(&n, a.data(), &lda, b.data(), &ipath, refined.data());
            EXPECT_EQ(outcome(), (Outcome{0, 0}));
            EXPECT_LE(this->backward_error(a, lda, n, refined, b, ipath), 2 * this->eps) << n << " " << ipath;
            // X may be B. Elimination alone loses some more.
            Member<T>::lslrg(&n, a.data(), &lda, plain.data(), &ipath, plain.data());
            EXPECT_LE(this->backward_error(a, lda, n, plain, b, ipath), 4 * this->eps * n)
                << n << " " << ipath;
            auto in_place = b;
            Member<T>::lsarg(&n, a.data(), &lda, in_place.data(), &ipath, in_place.data());
            EXPECT_EQ(in_place, refined);
        }
}

// Scaled pivots, multipliers in the order of their step.
TYPED_TEST(Solvers, FactorsAreLaidOutByScaledPivots)
{
    using T = TypeParam;
    using R = Real<T>;
    // The second row is largest, but not when it is scaled; the first and third tie.
    const int32_t n = 3;
    const std::vector<T> a = {T(2), T(1000), T(2), T(-4), T(16000), T(4), T(1), T(3000), T(-4)};
    std::vector<T> fact(9), wk(3);
    std::vector<int32_t> ipvt(3);
    Member<T>::l2trg(&n, a.data(), &n, fact.data(), &n, ipvt.data(), wk.data());
    EXPECT_EQ(ipvt, (std::vector<int32_t>{1, 3, 3}));
    EXPECT_EQ(fact, (std::vector<T>{T(2), T(-500), T(-1), T(-4), T(8), T(-2250), T(1), T(-5), T(13750)}));
    const R* const s = reinterpret_cast<const R*>(wk.data());
    EXPECT_EQ(s[1], R(1) / 4);
    EXPECT_EQ(s[2], R(1) / 16000);

    // Interchanges in steps 1 and 2: the multipliers of step 1 stay where they were.
    const std::vector<T> b = {T(1), T(2), T(4), T(1), T(4), T(2), T(3), T(2), T(2)};
    Member<T>::lftrg(&n, b.data(), &n, fact.data(), &n, ipvt.data());
    EXPECT_EQ(ipvt, (std::vector<int32_t>{3, 2, 3}));
    EXPECT_EQ(fact[0], T(4));
    EXPECT_EQ(fact[1], T(-0.5));
    EXPECT_EQ(fact[2], T(-0.25));
    // Ties, the largest of a later block of rows among them, go to the lowest row.
    std::vector<T> x(900, T(1));
    std::vector<R> s_ties(900, R(1));
    const int32_t count = 900;
    int32_t l = 0;
    x[399] = x[400] = x[801] = T(-3);
    Member<T>::l4trg(&count, x.data(), s_ties.data(), &l);
    EXPECT_EQ(l, 400);
}

TYPED_TEST(Solvers, NotNumbersEndWithoutAnAnswer)
{
    using T = TypeParam;
    for (const int32_t n : {4, 40, 300})
        for (const float bad : {std::nanf(""), HUGE_VALF})
            for (const bool in_matrix : {true, false}) {
                auto a = this->matrix(n, n, 1), b = this->vector(n, 2);
                (in_matrix ? a[this->at(n / 2, n / 3, n)] : b[0]) = T(bad);
                std::vector<T> x(b.size()), ainv(a.size());
                const int32_t ipath = 1;
                Member<T>::lsarg(&n, a.data(), &n, b.data(), &ipath, x.data());
                EXPECT_TRUE(outcome().type > 0 || std::isnan(std::abs(x[0]))) << n << " " << in_matrix;
                if (in_matrix) Member<T>::linrg(&n, a.data(), &n, ainv.data(), &n);
            }
}

TYPED_TEST(Solvers, ConditionIsEstimatedWithinAFactor)
{
    using T = TypeParam;
    using R = Real<T>;
    for (const int32_t n : {1, 3, 20, 70, 129}) {
        auto a = this->matrix(n, n, 9);
        for (int32_t i = 0; i < n; ++i) a[this->at(i, 0, n)] *= R(0.01);  // one weak column
        std::vector<T> fact(a.size()), ainv(a.size());
        std::vector<int32_t> ipvt(static_cast<std::size_t>(n));
        R rcond = 0, norm = 0, norm_of_inverse = 0;
        Member<T>::lfcrg(&n, a.data(), &n, fact.data(), &n, ipvt.data(), &rcond);
        Member<T>::linrg(&n, a.data(), &n, ainv.data(), &n);
        Member<T>::nr1rr(&n, &n, a.data(), &n, &norm);
        Member<T>::nr1rr(&n, &n, ainv.data(), &n, &norm_of_inverse);
        const R exact = 1 / (norm * norm_of_inverse);
        // Never below, because a lower bound of the norm is found, and not far above.
        EXPECT_GE(rcond, exact * R(0.99)) << n;
        EXPECT_LE(rcond, exact * 10) << n;
    }
    // Exactly eps is too little; one of the neighbours of eps gives it.
    const int32_t n = 2;
    const R eps = this->eps;
    int exact = 0, better = 0;
    for (int k = -20; k <= 20; ++k) {
        const std::vector<T> a = {T(1), T(0), T(0), T(eps + static_cast<R>(k) * eps * eps / 2)};
        std::vector<T> fact(4);
        std::vector<int32_t> ipvt(2);
        R rcond = 0;
        Member<T>::lfcrg(&n, a.data(), &n, fact.data(), &n, ipvt.data(), &rcond);
        EXPECT_EQ(outcome(), rcond <= eps ? (Outcome{3, 1}) : (Outcome{0, 0})) << k;
        exact += rcond == eps;
        better += rcond > eps;
    }
    EXPECT_GT(exact, 0);
    EXPECT_GT(better, 0);
}

TYPED_TEST(Solvers, DeterminantHasAMantissaAndAnExponent)
{
    using T = TypeParam;
    using R = Real<T>;
    const auto det = [](std::vector<T> fact, std::vector<int32_t> ipvt) {
        const auto n = static_cast<int32_t>(ipvt.size());
        T det1 = T(9);
        R det2 = 9;
        Member<T>::lfdrg(&n, fact.data(), &n, ipvt.data(), &det1, &det2);
        return std::pair<T, R>(det1, det2);
    };
    EXPECT_EQ(det({T(200), T(0), T(0), T(0.5)}, {2, 2}), (std::pair<T, R>(T(-1), R(2))));
    EXPECT_EQ(det({T(10)}, {1}), (std::pair<T, R>(T(1), R(1))));
    // A zero keeps the exponent reached; what is infinite ends.
    EXPECT_EQ(det({T(4000), T(0), T(0), T(0)}, {1, 2}), (std::pair<T, R>(T(0), R(3))));
    EXPECT_FALSE(std::isfinite(std::abs(det({T(HUGE_VALF)}, {1}).first)));
    EXPECT_TRUE(std::isnan(std::abs(det({T(std::nanf(""))}, {1}).first)));
    // Against the product of eigenvalues known to be those of a triangle with interchanged rows.
    const int32_t n = 40;
    std::vector<T> a(1600);
    for (int32_t j = 0; j < n; ++j)
        for (int32_t i = 0; i <= j; ++i)
            a[this->at((i + 1) % n, j, n)] = i == j ? T(3) : T(R(1) / R(1 + i + j));
    std::vector<T> fact(1600);
    std::vector<int32_t> ipvt(40);
    Member<T>::lftrg(&n, a.data(), &n, fact.data(), &n, ipvt.data());
    const auto [mantissa, exponent] = det(fact, ipvt);
    EXPECT_EQ(exponent, R(19));  // -3^40, 39 interchanges of neighbours
    EXPECT_NEAR(std::real(mantissa), R(-1.2157665459056929), 200 * this->eps);
}

TYPED_TEST(Solvers, InverseTimesMatrixIsOne)
{
    using T = TypeParam;
    using R = Real<T>;
    for (const int32_t n : {1, 2, 15, 33, 64, 65, 150}) {
        const int32_t lda = n + 1;
        const auto a = this->matrix(n, lda, 4);
        std::vector<T> inverse(a.size());
        Member<T>::linrg(&n, a.data(), &lda, inverse.data(), &lda);
        R norm = 0, norm_of_inverse = 0;
        Member<T>::nr1rr(&n, &n, a.data(), &lda, &norm);
        Member<T>::nr1rr(&n, &n, inverse.data(), &lda, &norm_of_inverse);
        double worst = 0;
        for (int32_t j = 0; j < n; ++j)
            for (int32_t i = 0; i < n; ++i) {
                T sum = i == j ? T(-1) : T(0);
                for (int32_t k = 0; k < n; ++k) sum += inverse[this->at(i, k, lda)] * a[this->at(k, j, lda)];
                worst = std::max(worst, static_cast<double>(std::abs(sum)));
            }
        EXPECT_LE(worst, 4 * this->eps * n * norm * norm_of_inverse) << n;
        auto in_place = a;
        Member<T>::linrg(&n, in_place.data(), &lda, in_place.data(), &lda);
        for (int32_t j = 0; j < n; ++j)
            for (int32_t i = 0; i < n; ++i)
                ASSERT_EQ(in_place[this->at(i, j, lda)], inverse[this->at(i, j, lda)]);
    }
}

TYPED_TEST(Solvers, SingularMatricesStopTheirCallers)
{
    using T = TypeParam;
    using R = Real<T>;
    for (const int32_t n : {1, 2, 20, 90}) {
        auto a = this->matrix(n, n, 8);
        std::fill_n(a.begin() + (n - 1) / 2 * n, n, T(0));
        const int32_t ipath = 1, transposed = 2;
        std::vector<T> x(static_cast<std::size_t>(n), T(7)), b = x, fact(a.size());
        std::vector<int32_t> ipvt(x.size());
        R rcond = 0;
        Member<T>::lfcrg(&n, a.data(), &n, fact.data(), &n, ipvt.data(), &rcond);
        EXPECT_EQ(outcome(), (Outcome{4, 2}));
        EXPECT_EQ(rcond, R(1));
        EXPECT_EQ(ipvt.back(), n);
        for (auto* solver : {Member<T>::lsarg, Member<T>::lslrg}) {
            solver(&n, a.data(), &n, b.data(), &ipath, x.data());
            EXPECT_EQ(outcome(), (Outcome{4, 2}));
            EXPECT_EQ(x, b);
        }
        Member<T>::linrg(&n, a.data(), &n, fact.data(), &n);
        EXPECT_EQ(outcome(), (Outcome{4, 2}));
        Member<T>::lfsrg(&n, fact.data(), &n, ipvt.data(), b.data(), &ipath, x.data());
        EXPECT_EQ(outcome(), (Outcome{5, 3}));
        Member<T>::lfsrg(&n, fact.data(), &n, ipvt.data(), b.data(), &transposed, x.data());
        EXPECT_EQ(outcome(), (Outcome{5, 4}));
    }
}
