// tests/kernels/level1_sums_test.cpp - sums, dot products, norms
#include <cfenv>
#include "tests/kernels/level1_support.h"

namespace {

using namespace orvel_test;

template <class T>
class Sums : public ::testing::Test {
protected:
    // Calls a kernel on all shapes and compares with the sum of term(x, y), which is exact.
    template <class Call, class Term>
    void check(const char* name, Call call, Term term)
    {
        SCOPED_TRACE(name);
        on_all_shapes([&](int32_t n, int32_t incx, int32_t incy) {
            Strided<T> x(n, incx, 1), y(n, incy, 2);
            decltype(term(x[0], y[0])) sum = 0;
            for (int64_t k = 0; k < n; ++k) sum += term(x[k], y[k]);
            EXPECT_EQ(call(&n, x.first(), &incx, y.first(), &incy), sum);
        });
    }
    template <class Call, class Term>
    void check_one(const char* name, Call call, Term term)
    {
        check(
            name,
            [&](auto n, T* x, auto incx, T*, auto) {
                const int32_t up = *incx == least ? 1 : std::abs(*incx);
                return call(n, x, &up);
            },
            [&](T x, T) { return term(x); });
        const int32_t n = 3, back = -1;
        const T x[] = {1, 2, 3};
        EXPECT_EQ(call(&n, x + 2, &back), 0) << name;
    }
};

template <class T>
Real<T> magnitude(T x)
{
    return std::abs(std::real(x)) + std::abs(std::imag(x));
}

TYPED_TEST_SUITE(Sums, All);

TYPED_TEST(Sums, AreThoseOfThePlainLoop)
{
    using T = TypeParam;
    const auto product = [](T x, T y) { return x * y; };
    const auto inner = [](T x, T y) { return conjugated(x) * y; };
    const T b = T(100) + whole<T>();
    const auto with_start = [&](auto dot) {
        return [&b, dot](auto n, auto... v) { return dot(n, &b, v...) - b; };
    };
    if constexpr (std::is_same_v<T, float>) {
        this->check("SDSDOT", with_start(SDSDOT), product);
        this->check("DSDOT", DSDOT, [](T x, T y) { return static_cast<double>(x * y); });
    }
    if constexpr (std::is_same_v<T, orvel_complex>) {
        this->check("CDOTU", CDOTU, product);
        this->check("CDOTC", CDOTC, inner);
        this->check("CZDOTU", with_start(CZDOTU), product);
        this->check("CZDOTC", with_start(CZDOTC), inner);
        this->check("CZCDOT", CZCDOT, inner);
    }
    if constexpr (std::is_same_v<T, orvel_dcomplex>) {
        this->check("ZDOTU", ZDOTU, product);
        this->check("ZDOTC", ZDOTC, inner);
    }
    if constexpr (!is_complex<T>) {
        using K = RealKernels<T>;
        this->check("dot", K::dot, product);
        this->check_one("sum", K::sum, [](T x) { return x; });
        this->check(
            "xyz", [](auto n, T* x, auto ix, T* y, auto iy) { return K::xyz(n, x, ix, y, iy, y, iy); },
            [](T x, T y) { return x * y * y; });
    }
    this->check_one("asum", Kernels<T>::asum, magnitude<T>);
    // The squares are whole numbers; the root and its square are not half a unit off.
    const auto squared = [](auto n, const T* x, auto ix) {
        const Real<T> r = Kernels<T>::nrm2(n, x, ix);
        return std::round(r * r);
    };
    this->check_one("nrm2", squared, [](T x) { return static_cast<Real<T>>(std::norm(x)); });
}

TEST(WideSums, AreRoundedOnceAtTheEnd)
{
    const int32_t one = 1;
    on_every_level([&] {
        for (const int32_t n : {3, 35}) {
            // The large products cancel; in single precision the small one is lost before.
            std::vector<float> x(n, 4096.0f), y = x;
            y[1] = -4096.0f * static_cast<float>(n - 2);
            x[2] = y[2] = 0x1p-8f;
            const float start = 0.5f;
            EXPECT_EQ(DSDOT(&n, x.data(), &one, y.data(), &one), 0x1p-16);
            EXPECT_EQ(SDSDOT(&n, &start, x.data(), &one, y.data(), &one), 0.5f + 0x1p-16f);
            std::vector<orvel_complex> u(n), v(n);
            for (int32_t k = 0; k < n; ++k) {
                u[k] = {x[k], 0};
                v[k] = {0, y[k]};
            }
            const orvel_complex c(0.5f, 0.5f), up(0, 0x1p-16f);
            EXPECT_EQ(CZDOTU(&n, &c, u.data(), &one, v.data(), &one), c + up);
            EXPECT_EQ(CZDOTC(&n, &c, v.data(), &one, u.data(), &one), c - up);
            EXPECT_EQ(CZCDOT(&n, v.data(), &one, u.data(), &one), -up);
        }
    });
    const int32_t none = 0;
    const float start = 0.5f;
    const orvel_complex c(1, 2);
    EXPECT_EQ(SDSDOT(&none, &start, nullptr, nullptr, nullptr, nullptr), start);
    EXPECT_EQ(CZDOTU(&none, &c, nullptr, nullptr, nullptr, nullptr), c);
    EXPECT_EQ(CZDOTC(&none, &c, nullptr, nullptr, nullptr, nullptr), c);
    EXPECT_EQ(CZCDOT(&none, nullptr, nullptr, nullptr, nullptr), orvel_complex());
}

// Sums that round: the same bits at every alignment, and close to the exact sum.
TEST(Sums, DependOnNothingButTheirArguments)
{
    std::normal_distribution<double> normal;
    const int32_t n = 1000, one = 1;
    std::vector<double> values(2 * n);
    for (double& value : values) value = normal(generator());
    long double exact = 0, size = 0;
    for (int k = 0; k < n; ++k) {
        exact += static_cast<long double>(values[k]) * values[n + k];
        size += std::abs(static_cast<long double>(values[k]) * values[n + k]);
    }
    on_every_level([&] {
        std::vector<double> x(n + 16), y(n + 16);
        double first[3];
        for (int shift = 0; shift < 16; ++shift) {
            std::copy_n(values.begin(), n, x.begin() + shift);
            std::copy_n(values.begin() + n, n, y.begin() + 15 - shift);
            const double* u = x.data() + shift;
            const double* v = y.data() + 15 - shift;
            const double now[3] = {DDOT(&n, u, &one, v, &one), DASUM(&n, u, &one), DNRM2(&n, u, &one)};
            if (shift == 0) std::memcpy(first, now, sizeof now);
            EXPECT_EQ(std::memcmp(first, now, sizeof now), 0) << shift;
        }
        // No chain of additions is longer than one element in eight, and a few to join the chains.
        EXPECT_NEAR(first[0], static_cast<double>(exact), static_cast<double>(size) * (n / 8 + 8) * 0x1p-53);
    });
}

template <class T>
class Norms : public ::testing::Test {};
TYPED_TEST_SUITE(Norms, All);

TYPED_TEST(Norms, NeitherOverflowNorUnderflow)
{
    using T = TypeParam;
    using R = Real<T>;
    using Limits = std::numeric_limits<R>;
    const R eps = Limits::epsilon();
    on_every_level([&] {
        for (const R size : {Limits::max() / 128, std::sqrt(Limits::max()) / 64, R(1), Limits::min() * 64,
                             std::sqrt(Limits::min()) / 64, Limits::denorm_min() * 1024})
            for (const int32_t n : {1, 2, 9, 1000}) {
                const int32_t two = 2, one = 1, zero = 0, back = -1;
                std::vector<T> x(2 * n, T(size));
                const R expected = size * std::sqrt(static_cast<R>(n));
                // Each way rounds each square and sum of its chain and the root; numbers without full length
                // have one unit more.
                const R allowed = expected * eps * static_cast<R>(n / 4 + 4) + Limits::denorm_min();
                std::feclearexcept(FE_ALL_EXCEPT);
                EXPECT_NEAR(Kernels<T>::nrm2(&n, x.data(), &one), expected, allowed) << size << " " << n;
                EXPECT_NEAR(Kernels<T>::nrm2(&n, x.data(), &two), expected, allowed) << size << " " << n;
                EXPECT_EQ(Kernels<T>::nrm2(&n, x.data(), &zero), expected);
                EXPECT_EQ(Kernels<T>::nrm2(&n, x.data() + n, &back), 0);
                EXPECT_EQ(std::fetestexcept(FE_INVALID | FE_DIVBYZERO | FE_OVERFLOW), 0) << size << " " << n;
            }
        const int32_t n = 3, one = 1;
        const R inf = Limits::infinity(), nan = Limits::quiet_NaN();
        const T rows[][3] = {{1, -inf, 2}, {inf, inf, 0}, {1, nan, 2}, {Limits::max(), nan, 2}};
        for (const auto& row : rows) {
            const R norm = Kernels<T>::nrm2(&n, row, &one);
            EXPECT_TRUE(row[1] == row[1] ? norm == inf : norm != norm);
        }
    });
}

// In single precision the two ways round differently, which shows on which side of a threshold a sum lies.
TEST(Norms, TakeTheWayThatTheSumOfMagnitudesTells)
{
    const int32_t one = 1, two = 2;
    std::uniform_real_distribution<float> uniform(0.5f, 1.0f);
    int seen[4] = {};
    for (int trial = 0; trial < 20000; ++trial) {
        const float u = uniform(generator()), v = uniform(generator());
        const float squares = std::sqrt(u * u + v * v), fused = std::sqrt(std::fma(u, u, v * v));
        const auto wide = static_cast<float>(std::hypot(static_cast<double>(u), static_cast<double>(v)));
        if (squares != fused || squares == wide) continue;
        // Sums just below and above N*CUTLO = 2^-50.5 and CUTHI = 2^52.5; powers of two keep the rounding.
        const float sum = u + v;
        if (sum < 1.3f || sum > 1.52f || std::abs(sum - std::sqrt(2.0f)) < 1e-3f) continue;
        const bool above = sum > std::sqrt(2.0f);
        for (const bool high : {false, true}) {
            const float by = high ? 0x1p52f : 0x1p-51f, expected = by * (above == high ? wide : squares);
            const orvel_complex z(u * by, v * by);
            EXPECT_EQ(SNRM2(&two, reinterpret_cast<const float*>(&z), &one), expected)
                << u << " " << v << " " << high;
            EXPECT_EQ(SCNRM2(&one, &z, &one), expected);
            ++seen[2 * high + above];
        }
    }
    for (const int count : seen) EXPECT_GT(count, 10);
}

}  // namespace
