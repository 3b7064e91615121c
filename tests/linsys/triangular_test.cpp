// tests/linsys/triangular_test.cpp - systems, condition and determinant of triangles
#include <cmath>

#include "tests/linsys/kinds.h"

namespace {

using namespace orvel_test;

template <class T>
struct Triangular;
#define ORVEL_TEST_TRIANGULAR(T, p, K)                 \
    template <>                                        \
    struct Triangular<T> {                             \
        static constexpr auto solve = p##LSL##K;       \
        static constexpr auto condition = p##LFC##K;   \
        static constexpr auto determinant = p##LFD##K; \
        static constexpr auto inverse = p##LIN##K;     \
    };
ORVEL_TEST_TRIANGULAR(float, , RT)
ORVEL_TEST_TRIANGULAR(double, D, RT)
ORVEL_TEST_TRIANGULAR(std::complex<float>, , CT)
ORVEL_TEST_TRIANGULAR(std::complex<double>, D, CT)

template <class T>
class Triangles : public Solving<T> {
protected:
    using R = Real<T>;
    Triangles() { set_switches(0, 0, 0); }

    enum Family { random, graded, hilbert };

    // One triangle, and poison in the other.
    static std::vector<T> triangle(Family family, bool lower, int32_t n, int32_t ld, unsigned seed = 1)
    {
        std::vector<T> a = Triangles::matrix(n, ld, seed);
        for (int32_t j = 0; j < n; ++j)
            for (int32_t i = 0; i < n; ++i) {
                T& e = a[Triangles::at(i, j, ld)];
                if (i != j && (i > j) != lower) e = T(std::nanf(""));
                if (i == j) e += e * R(2) / std::abs(e);
                if (family == graded) e *= std::pow(R(2), static_cast<R>(i % 7 - 2 * (j % 5)));
                if (family == hilbert && is_number(e)) e = make<T>(R(1) / R(i + j + 1), R(1) / R(i + j + 9));
            }
        return a;
    }
};
TYPED_TEST_SUITE(Triangles, Types);

}  // namespace

// Substitution is backward stable; each of the four paths is checked with its own matrix.
TYPED_TEST(Triangles, AreSolvedOnEachPath)
{
    using T = TypeParam;
    for (const int32_t n : {1, 2, 5, 31, 33, 70, 131})
        for (const int32_t ipath : {1, 2, 3, 4}) {
            const bool lower = ipath % 2 == 1;
            const int32_t ld = n + n % 3;
            const auto a = this->triangle(this->random, lower, n, ld);
            const auto element = [&](int32_t i, int32_t j) {
                if (ipath > 2) std::swap(i, j);
                if (i != j && (i > j) != lower) return T(0);
                const T e = a[this->at(i, j, ld)];
                return ipath > 2 ? conjugated(e) : e;
            };
            const std::vector<T> b = this->vector(n, 5);
            std::vector<T> x = b, in_place = b;
            Guarded<T> guarded({a.begin(), a.end() - (ld - n)});
            Triangular<T>::solve(&n, guarded.data(), &ld, b.data(), &ipath, x.data());
            EXPECT_EQ(outcome(), (Outcome{0, 0}));
            EXPECT_LE(backward_error(n, element, x, b), (n + 3) * this->eps) << n << " path " << ipath;
            Triangular<T>::solve(&n, a.data(), &ld, in_place.data(), &ipath, in_place.data());
            EXPECT_EQ(in_place, x);
        }
}

TYPED_TEST(Triangles, ConditionIsEstimatedWithinAFactor)
{
    using T = TypeParam;
    using R = Real<T>;
    for (const auto family : {this->random, this->graded, this->hilbert})
        for (const int32_t n : {1, 2, 3, 8, 40, 90})
            for (const int32_t ipath : {1, 2})
                for (unsigned seed = 1; seed < 6; ++seed) {
                    if (family == this->hilbert && n > 8) continue;
                    const auto a = this->triangle(family, ipath == 1, n, n, seed);
                    std::vector<T> inverse(a.size());
                    Triangular<T>::inverse(&n, a.data(), &n, &ipath, inverse.data(), &n);
                    const auto part = [&](const std::vector<T>& of) {
                        return [&of, n, ipath](int32_t i, int32_t j) {
                            return (ipath == 1 ? i >= j : i <= j) ? of[Triangles<T>::at(i, j, n)] : T(0);
                        };
                    };
                    const long double exact = reciprocal_condition(n, part(a), part(inverse));
                    R rcond = -1;
                    Guarded<T> guarded(a);
                    Triangular<T>::condition(&n, guarded.data(), &n, &ipath, &rcond);
                    EXPECT_GE(rcond, exact * 0.99L) << family << " n " << n << " path " << ipath;
                    EXPECT_LE(rcond, exact * 10) << family << " n " << n << " path " << ipath;
                }
}

// A vector that grows in a substitution may miss the largest column of the inverse by more than that.
TYPED_TEST(Triangles, ConditionIsNotMissedWhereGrowthIsSmall)
{
    using T = TypeParam;
    using R = Real<T>;
    const int32_t n = 120;
    for (unsigned seed = 1; seed <= 60; ++seed) {
        auto a = this->matrix(n, n, seed);
        for (int32_t j = 0; j < n; ++j) {
            a[this->at(j, j, n)] *= 2 * std::sqrt(R(n));
            std::fill_n(&a[this->at(j, j, n)] + 1, n - j - 1, T(0));
        }
        std::vector<T> inverse(a.size());
        Triangular<T>::inverse(&n, a.data(), &n, &two, inverse.data(), &n);
        const auto part = [&](const std::vector<T>& of) {
            return [&of, this](int32_t i, int32_t j) { return of[this->at(i, j, n)]; };
        };
        R rcond = -1;
        Triangular<T>::condition(&n, a.data(), &n, &two, &rcond);
        EXPECT_LE(rcond, 10 * reciprocal_condition(n, part(a), part(inverse))) << seed;
    }
}

// 1 above the diagonal counts for the upper triangle only; elements whose sum overflows are scaled.
TYPED_TEST(Triangles, ConditionIsThatOfItsSideAndKnowsZeros)
{
    using T = TypeParam;
    using R = Real<T>;
    const R nan = std::numeric_limits<R>::quiet_NaN(), big = this->most * R(0.75);
    R rcond = -1;
    const auto within = [](R exact, R estimate) {
        EXPECT_GE(estimate, exact * R(0.99));
        EXPECT_LE(estimate, exact * R(1.3));
    };
    const std::vector<T> a = {T(1), T(nan), T(3), T(1)}, huge = {T(big), T(nan), T(big), T(big)};
    Triangular<T>::condition(&two, a.data(), &two, &two, &rcond);
    within(1 / R(16), rcond);
    Triangular<T>::condition(&two, huge.data(), &two, &two, &rcond);
    within(R(0.25), rcond);
    const std::vector<T> below = {T(1), T(5), T(nan), T(1)};
    Triangular<T>::condition(&two, below.data(), &two, &one, &rcond);
    within(1 / R(36), rcond);
    // Option 17 has no say.
    int32_t off = 1, on = 2;
    const int32_t option = 17;
    IUMAG("MATH", &two, &option, &one, &off, 4);
    for (const int32_t n : {1, 3, 40})
        for (int32_t place = 0; place < n; place += 2) {
            auto zero = this->triangle(this->random, true, n, n);
            zero[this->at(place, place, n)] = T(this->tiny / 2);
            Triangular<T>::condition(&n, zero.data(), &n, &one, &rcond);
            EXPECT_EQ(outcome(), (Outcome{3, 1}));
            EXPECT_EQ(rcond, R(0));
            // A solve with it touches nothing.
            const std::vector<T> b(static_cast<std::size_t>(n), T(1)), untouched(b.size(), T(7));
            std::vector<T> x = untouched;
            for (const int32_t ipath : {1, 3}) {
                Triangular<T>::solve(&n, zero.data(), &n, b.data(), &ipath, x.data());
                EXPECT_EQ(outcome(), (Outcome{5, 4}));
                EXPECT_EQ(x, untouched);
            }
        }
    const std::vector<T> weak = {T(1), T(nan), T(0), T(this->eps / 2)};
    Triangular<T>::condition(&two, weak.data(), &two, &two, &rcond);
    EXPECT_EQ(outcome(), (Outcome{3, 1}));
    EXPECT_EQ(rcond, this->eps / 2);
    IUMAG("MATH", &two, &option, &one, &on, 4);
}

TYPED_TEST(Triangles, DeterminantIsThatOfTheDiagonal)
{
    using T = TypeParam;
    using R = Real<T>;
    const T nan = T(std::nanf(""));
    const std::vector<T> a = {T(200), nan, nan, nan, make<T>(R(-0.5)), nan, nan, nan, T(30)};
    T det1 = T(9);
    R det2 = 9;
    Triangular<T>::determinant(&three, a.data(), &three, &det1, &det2);
    EXPECT_EQ(det1, T(-3));
    EXPECT_EQ(det2, R(3));
    const int32_t n = 300;
    const std::vector<T> large(this->at(0, n, n), make<T>(3, 4));
    Triangular<T>::determinant(&n, large.data(), &n, &det1, &det2);
    const std::complex<long double> power =
        std::pow(is_complex<T> ? std::complex<long double>(3, 4) : std::complex<long double>(3), 300);
    const auto expected = power / std::pow(10.0L, static_cast<long double>(det2));
    EXPECT_LE(std::abs(wide(det1) - expected), 1200 * this->eps * std::abs(expected));
    EXPECT_TRUE(size_of(det1) >= 1 && size_of(det1) < 10);
}
