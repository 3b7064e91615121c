// tests/linsys/definite_test.cpp - positive definite systems: factors, solutions, condition, inverse, errors
#include <cfenv>
#include <cmath>
#include <string>

#include "linsys/definite.h"
#include "tests/linsys/kinds.h"

namespace {

using namespace orvel_test;

ORVEL_TEST_KIND(Definite, DS, DH);

template <class T>
class DefiniteSystems : public Solving<T> {
protected:
    using R = Real<T>;
    DefiniteSystems() { set_switches(0, 1, 0); }
    Capture printed;

    enum Family { random, graded, hilbert };
    static constexpr Family families[3] = {random, graded, hilbert};

    // The upper triangle, and poison below it and behind its columns: G^H * G + I, the same with rows and
    // columns scaled, or that of Hilbert and a small part of I.
    static std::vector<T> matrix_of(Family family, int32_t n, int32_t ld, unsigned seed = 3)
    {
        const std::vector<T> g = DefiniteSystems::matrix(n, n, seed);
        std::vector<T> a(DefiniteSystems::at(0, n, ld), make<T>(std::nanf(""), std::nanf("")));
        const auto scale = [family](int32_t k) {
            return family == graded ? std::pow(R(2), static_cast<R>(9 * (k * 7 % 5) - 18)) : R(1);
        };
        for (int32_t j = 0; j < n; ++j)
            for (int32_t i = 0; i <= j; ++i) {
                std::complex<long double> sum = i == j ? 1 : 0;
                for (int32_t k = 0; k < n; ++k)
                    sum += std::conj(wide(g[DefiniteSystems::at(k, i, n)])) *
                           wide(g[DefiniteSystems::at(k, j, n)]);
                if (family == hilbert)
                    sum = 1.0L / (i + j + 1) + (i == j ? 100.0L * R(n) * DefiniteSystems::eps : 0);
                if (family == hilbert && is_complex<T>) sum *= std::polar(1.0L, 1.0L * (j - i));
                a[DefiniteSystems::at(i, j, ld)] =
                    make<T>(static_cast<R>(sum.real()) * scale(i) * scale(j),
                            i == j ? 0 : static_cast<R>(sum.imag()) * scale(i) * scale(j));
            }
        return a;
    }

    static auto element_of(const std::vector<T>& a, int32_t ld)
    {
        return [&a, ld](int32_t i, int32_t j) {
            return i <= j ? a[DefiniteSystems::at(i, j, ld)] : conjugated(a[DefiniteSystems::at(j, i, ld)]);
        };
    }
};
TYPED_TEST_SUITE(DefiniteSystems, Types);

}  // namespace

TYPED_TEST(DefiniteSystems, FactorsHaveTheBitsOfTheirPlainDefinition)
{
    using T = TypeParam;
    for (const int32_t n : {1, 2, 3, 7, 16, 31, 32, 33, 47, 64, 65, 100, 161, 230}) {
        SCOPED_TRACE("n " + std::to_string(n));
        const int32_t ld = n + n % 2;
        const auto a = this->matrix_of(this->random, n, n);
        // Step by step, each with its rank one product.
        std::vector<T> plain = a, fact(this->at(0, n, ld), T(7));
        const std::vector<Real<T>> least(static_cast<std::size_t>(n));
        for (const int64_t width : {1, 5, 32}) {
            std::vector<T> r = a;
            ASSERT_EQ(orvel::linsys::factor_definite<T>(n, width, r.data(), n, least.data()), n);
            if (width == 1) plain = r;
            for (int32_t j = 0; j < n; ++j)
                for (int32_t i = 0; i <= j; ++i)
                    ASSERT_EQ(r[this->at(i, j, n)], plain[this->at(i, j, n)])
                        << width << " " << i << " " << j;
        }
        Guarded<T> guarded(a), guarded_fact(fact);
        Definite<T>::factor(&n, guarded.data(), &n, guarded_fact.data(), &ld);
        EXPECT_EQ(outcome(), (Outcome{0, 0}));
        fact = guarded_fact.values();
        for (int32_t j = 0; j < n; ++j)
            for (int32_t i = 0; i < ld; ++i)
                ASSERT_EQ(fact[this->at(i, j, ld)], i <= j ? plain[this->at(i, j, n)] : T(7));
        // R^H * R is A, element by element.
        const auto r = [&](int32_t i, int32_t j) { return i <= j ? wide(fact[this->at(i, j, ld)]) : 0; };
        for (int32_t j = 0; j < n; ++j)
            for (int32_t i = 0; i <= j; ++i) {
                std::complex<long double> sum = -wide(a[this->at(i, j, n)]);
                long double size = 0;
                for (int32_t k = 0; k <= i; ++k) {
                    sum += std::conj(r(k, i)) * r(k, j);
                    size += std::abs(r(k, i)) * std::abs(r(k, j));
                }
                ASSERT_LE(std::abs(sum), 2 * (n + 1) * this->eps * size);
            }
    }
}

TYPED_TEST(DefiniteSystems, RefinedSolutionsHaveNoBackwardErrorToSpeakOf)
{
    using T = TypeParam;
    for (const auto family : this->families)
        for (const int32_t n : {1, 2, 5, 17, 33, 90, 150})
            for (const bool sparse : {false, true}) {
                SCOPED_TRACE(std::to_string(family) + " n " + std::to_string(n));
                const int32_t ld = n;
                const auto a = this->matrix_of(family, n, ld);
                auto b = this->vector(n, 5);
                if (sparse) std::fill(b.begin() + 1, b.end(), T(0));
                std::vector<T> refined(b.size()), plain = b, in_place = b;
                Guarded<T> guarded(a);
                Definite<T>::refined_solve(&n, guarded.data(), &ld, b.data(), refined.data());
                // Scaling makes a condition that is not above eps, but no difference to the solution.
                EXPECT_TRUE(outcome() == (Outcome{0, 0}) ||
                            (family == this->graded && outcome() == (Outcome{3, 1})));
                EXPECT_LE(backward_error(n, this->element_of(a, ld), refined, b), 2 * this->eps);
                Definite<T>::refined_solve(&n, a.data(), &ld, in_place.data(), in_place.data());
                EXPECT_EQ(in_place, refined);
                Definite<T>::solve(&n, a.data(), &ld, plain.data(), plain.data());
                EXPECT_LE(backward_error(n, this->element_of(a, ld), plain, b), 4 * this->eps * n);
            }
}

TYPED_TEST(DefiniteSystems, ConditionIsEstimatedWithinAFactor)
{
    using T = TypeParam;
    using R = Real<T>;
    for (const auto family : this->families)
        for (const int32_t n : {1, 2, 3, 8, 40, 90})
            for (unsigned seed = 1; seed < 4; ++seed) {
                const auto a = this->matrix_of(family, n, n, seed);
                std::vector<T> fact = a, inverse(a.size(), T(0));
                R rcond = -1;
                Definite<T>::condition(&n, fact.data(), &n, fact.data(), &n, &rcond);
                for (int32_t j = 0; j < n; ++j) {
                    T* const column = &inverse[this->at(0, j, n)];
                    column[j] = T(1);
                    Definite<T>::back(&n, fact.data(), &n, column, column);
                }
                const long double exact =
                    reciprocal_condition(n, this->element_of(a, n),
                                         [&](int32_t i, int32_t j) { return inverse[this->at(i, j, n)]; });
                EXPECT_GE(rcond, exact * 0.98L) << family << " n " << n;
                EXPECT_LE(rcond, exact * 10) << family << " n " << n;
            }
}

// The pivot of a step is taken away: the text names its order, the columns before it are those of R, and
// nothing is solved.
TYPED_TEST(DefiniteSystems, FirstLeadingOrderThatFailsIsNamed)
{
    using T = TypeParam;
    using R = Real<T>;
    const int32_t n = 100;
    const auto a = this->matrix_of(this->random, n, n);
    std::vector<T> whole = a;
    Definite<T>::factor(&n, whole.data(), &n, whole.data(), &n);
    for (const int32_t k : {0, 1, 15, 31, 32, 33, 63, 64, 65, 98, 99})
        for (const R pivot : {R(0), R(-1), std::numeric_limits<R>::quiet_NaN()}) {
            auto bad = a;
            T& diagonal = bad[this->at(k, k, n)];
            diagonal = T(std::real(diagonal) + (pivot - 1) * std::norm(whole[this->at(k, k, n)]));
            if (pivot == 0) diagonal -= 64 * this->eps * a[this->at(k, k, n)];  // what rounding may leave
            std::vector<T> fact(a.size(), T(7)), x(100, T(7));
            const std::vector<T> b(100, T(1)), untouched = x;
            R rcond = -1;
            this->printed.take();
            Definite<T>::condition(&n, bad.data(), &n, fact.data(), &n, &rcond);
            EXPECT_EQ(outcome(), (Outcome{4, 2})) << k << " " << pivot;
            const std::string text = one_line(this->printed.take());
            EXPECT_NE(text.find("has the order " + std::to_string(k + 1) + "."), text.npos) << k << text;
            EXPECT_EQ(rcond, R(1));
            for (int32_t j = 0; j < k; ++j)
                for (int32_t i = 0; i <= j; ++i)
                    ASSERT_EQ(fact[this->at(i, j, n)], whole[this->at(i, j, n)]) << k;
            for (auto* solver : {Definite<T>::solve, Definite<T>::refined_solve}) {
                solver(&n, bad.data(), &n, b.data(), x.data());
                EXPECT_EQ(outcome(), (Outcome{4, 2}));
                EXPECT_EQ(x, untouched);
            }
        }
    // A pivot of eps times its element is not above it; twice that is.
    const R eps = this->eps;
    std::vector<T> fact(4);
    for (const int above : {1, 2}) {
        const std::vector<T> close = {T(1), T(0), T(1), T(1 + static_cast<R>(above) * eps)};
        Definite<T>::factor(&two, close.data(), &two, fact.data(), &two);
        EXPECT_EQ(outcome(), above == 1 ? (Outcome{4, 2}) : (Outcome{0, 0}));
    }
    for (const R first : {R(0), R(-3), std::numeric_limits<R>::infinity()}) {
        const std::vector<T> one_by_one = {T(first)};
        Definite<T>::factor(&one, one_by_one.data(), &one, fact.data(), &one);
        EXPECT_EQ(outcome(), (Outcome{4, 2}));
    }
}

// Imaginary parts of the diagonal count as zero, and are said when they are not negligible.
TYPED_TEST(DefiniteSystems, HermitianDiagonalsAreReal)
{
    using T = TypeParam;
    using R = Real<T>;
    if constexpr (is_complex<T>) {
        for (const int32_t n : {3, 50}) {
            const auto a = this->matrix_of(this->random, n, n);
            const std::vector<T> b = this->vector(n, 4);
            std::vector<T> expected(b.size());
            Definite<T>::refined_solve(&n, a.data(), &n, b.data(), expected.data());
            for (const R part : {R(0.5), R(4), std::numeric_limits<R>::quiet_NaN()}) {
                auto tilted = a;
                T& e = tilted[this->at(1, 1, n)];
                e = {e.real(), part < 1 ? this->eps * part * e.real() : part};
                std::vector<T> x(b.size());
                this->printed.take();
                Definite<T>::refined_solve(&n, tilted.data(), &n, b.data(), x.data());
                EXPECT_EQ(outcome(), part < 1 ? (Outcome{0, 0}) : (Outcome{3, 3}));
                const std::string text = one_line(this->printed.take());
                EXPECT_EQ(text.find("the element 2 has") == text.npos, part < 1) << text;
                EXPECT_EQ(x, expected);
            }
        }
        // The condition has the last word.
        const std::vector<T> weak = {{1, 1}, T(0), T(0), T(this->eps / 2)};
        std::vector<T> fact(4);
        R rcond = 0;
        Definite<T>::condition(&two, weak.data(), &two, fact.data(), &two, &rcond);
        EXPECT_EQ(outcome(), (Outcome{3, 1}));
        EXPECT_NEAR(rcond, this->eps / 2, this->eps * this->eps);
        EXPECT_EQ(fact[0], T(1));
    }
}

TYPED_TEST(DefiniteSystems, DeterminantIsRealAndInverseIsWhole)
{
    using T = TypeParam;
    using R = Real<T>;
    const std::vector<T> fact = {T(20), T(9), make<T>(3, 4), make<T>(R(0.5))},
                         zero = {T(40), T(0), T(0), T(0)};
    R det1 = 9, det2 = 9;
    Definite<T>::determinant(&two, fact.data(), &two, &det1, &det2);
    EXPECT_EQ(det1, R(1));
    EXPECT_EQ(det2, R(2));
    Definite<T>::determinant(&two, zero.data(), &two, &det1, &det2);
    EXPECT_EQ(det1, R(0));
    EXPECT_EQ(det2, R(3));
    if constexpr (!is_complex<T>)
        for (const int32_t n : {1, 2, 16, 17, 33, 64, 150}) {
            constexpr auto linds = member<T>(LINDS, DLINDS);
            const auto a = this->matrix_of(this->graded, n, n);
            const auto element = this->element_of(a, n);
            std::vector<T> inverse(a.size(), T(7)), in_place = a;
            Guarded<T> guarded(inverse);
            linds(&n, a.data(), &n, guarded.data(), &n);
            EXPECT_TRUE(outcome() == (Outcome{0, 0}) || outcome() == (Outcome{3, 1}));  // it is graded
            inverse = guarded.values();
            linds(&n, in_place.data(), &n, in_place.data(), &n);
            EXPECT_EQ(in_place, inverse);
            // With rows and columns scaled back, so that the small ones count.
            const auto size = [&](int32_t k) { return std::sqrt(static_cast<long double>(element(k, k))); };
            long double worst = 0, largest = 0;
            for (int32_t j = 0; j < n; ++j)
                for (int32_t i = 0; i < n; ++i) {
                    long double sum = i == j ? -1 : 0;
                    for (int32_t k = 0; k < n; ++k)
                        sum += static_cast<long double>(inverse[this->at(i, k, n)]) * element(k, j);
                    worst = std::max(worst, std::abs(sum) * size(i) / size(j));
                    largest = std::max(largest, std::abs(inverse[this->at(i, j, n)]) * size(i) * size(j));
                    ASSERT_EQ(inverse[this->at(i, j, n)], inverse[this->at(j, i, n)]);
                }
            EXPECT_LE(worst, 4 * this->eps * n * largest) << n;
        }
}

TYPED_TEST(DefiniteSystems, RefinementSeesAFactorThatIsNotThatOfA)
{
    using T = TypeParam;
    using R = Real<T>;
    for (const R multiple : {R(1), R(1.5), R(5)}) {  // factors of the error: 0, 1/3, 0.8
        const std::vector<T> a = {T(8), T(0), T(0), T(1), T(8), T(0), T(1), T(1), T(8)}, b(3, T(1));
        std::vector<T> fact = a, x = b, res = b;
        for (T& e : fact) e *= multiple;
        Definite<T>::factor(&three, fact.data(), &three, fact.data(), &three);
        Definite<T>::refine(&three, a.data(), &three, fact.data(), &three, b.data(), x.data(), res.data());
        EXPECT_EQ(outcome(), multiple == 5 ? (Outcome{3, 2}) : (Outcome{0, 0})) << multiple;
        for (const T& e : x) EXPECT_NEAR(std::real(e), R(0.1), multiple == 5 ? R(2e-6) : this->eps / 8);
    }
    // Corrections are small because one element of R is large; the residual is not.
    for (const int32_t place : {0, 1, 31, 32, 49}) {
        const int32_t n = 50;
        std::vector<T> a(2500, T(0)), b(50, T(1)), x = b, res = b;
        for (int32_t k = 0; k < n; ++k) a[this->at(k, k, n)] = T(1);
        std::vector<T> fact = a;
        fact[this->at(place, place, n)] = T(1e10f);
        Definite<T>::refine(&n, a.data(), &n, fact.data(), &n, b.data(), x.data(), res.data());
        EXPECT_EQ(outcome(), (Outcome{3, 2})) << place;
        fact[this->at(place, place, n)] = T(0);
        const std::vector<T> before = x;
        Definite<T>::back(&n, fact.data(), &n, b.data(), x.data());
        EXPECT_EQ(outcome(), (Outcome{5, 3}));
        EXPECT_EQ(x, before);
    }
}

// Diagonals near both ends of the range: nothing overflows on the way to results that do not.
TYPED_TEST(DefiniteSystems, GradedMatricesRaiseNoExceptions)
{
    using T = TypeParam;
    using R = Real<T>;
    const int32_t n = 40;
    const R ends[] = {std::sqrt(this->most) / 16, std::sqrt(this->tiny) * 1024};
    for (const auto family : {this->random, this->graded})
        for (const R end : ends) {
            if (family == this->graded && end < 1) continue;  // would be denormalized
            auto a = this->matrix_of(family, n, n);
            R largest = 0;
            for (int32_t k = 0; k < n; ++k) largest = std::max(largest, std::real(a[this->at(k, k, n)]));
            const R factor = std::exp2(std::floor(std::log2(end / std::sqrt(largest))));
            for (int32_t j = 0; j < n; ++j)
                for (int32_t i = 0; i <= j; ++i) {
                    const R by_row = i < n / 2 ? factor : 1, by_column = j < n / 2 ? factor : 1;
                    a[this->at(i, j, n)] = a[this->at(i, j, n)] * by_row * by_column;
                }
            for (int32_t j = 0; j < n; ++j)
                for (int32_t i = j + 1; i < n; ++i) a[this->at(i, j, n)] = T(0);
            const std::vector<T> b = this->vector(n, 5);
            std::vector<T> x = b;
            std::feclearexcept(FE_ALL_EXCEPT);
            Definite<T>::refined_solve(&n, a.data(), &n, b.data(), x.data());
            EXPECT_EQ(std::fetestexcept(FE_INVALID | FE_OVERFLOW | FE_DIVBYZERO), 0) << family << " " << end;
            EXPECT_LE(backward_error(n, this->element_of(a, n), x, b), 2 * this->eps) << family << " " << end;
        }
}

TYPED_TEST(DefiniteSystems, OptionsAreLookedAtFirst)
{
    using T = TypeParam;
    const int32_t n = 30;
    const auto a = this->matrix_of(this->hilbert, n, n);
    const auto b = this->vector(n, 8);
    Real<T> rcond = -1;
    std::vector<T> fact(a.size(), T(7));
    // Option 17 has the number 3 in the solvers, and stops them.
    int32_t bad = 3, on = 2;
    const int32_t option = 17;
    IUMAG("MATH", &two, &option, &one, &bad, 4);
    std::vector<T> x(b.size(), T(7));
    Definite<T>::solve(&n, a.data(), &n, b.data(), x.data());
    EXPECT_EQ(outcome(), (Outcome{5, 3}));
    EXPECT_EQ(x[0], T(7));
    Definite<T>::condition(&n, a.data(), &n, fact.data(), &n, &rcond);
    EXPECT_EQ(outcome(), (Outcome{5, 4}));
    IUMAG("MATH", &two, &option, &one, &on, 4);
}
