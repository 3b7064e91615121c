// tests/quad/quad_test.cpp - rules, messages, user code, bad input of the integrators
#include <cmath>
#include <cstdio>
#include <limits>
#include <string>
#include <utility>

#include "tests/quad/quadrature.h"
#include "tests/refusing_memory.h"

namespace {

using namespace orvel_test;

constexpr double infinity = std::numeric_limits<double>::infinity();

template <class T>
class Quad : public Quiet {
protected:
    Quad()
    {
        requests = failing = 0;
        set_switches(0, 1, 0);
    }
    Capture page;
};
using Precisions = ::testing::Types<float, double>;
TYPED_TEST_SUITE(Quad, Precisions);

// Legendre polynomials: of the degrees a rule is exact for, the integral is 0; of the next even one it is
// not.
int degree;
TYPED_TEST(Quad, RulesHaveTheirDegree)
{
    using T = TypeParam;
    const auto legendre = [](const T* x) {
        double older = 0, p = 1;
        for (int k = 0; k < degree; ++k)
            older = std::exchange(p, ((2 * k + 1) * double(*x) * p - k * older) / (k + 1));
        return static_cast<T>(p);
    };
    const int exact[] = {23, 31, 47, 61, 77, 91};
    const T a = -1, b = 1, tiny = std::numeric_limits<T>::epsilon();
    for (int k = 0; k < 6; ++k)
        for (degree = 0; degree <= exact[k] + 1; ++degree) {
            T result, error, absolute, deviation;
            Quadrature<T>::rule[k](legendre, &a, &b, &result, &error, &absolute, &deviation);
            const T integral = degree == 0 ? T(2) : T(0);
            if (degree <= exact[k]) {
                EXPECT_NEAR(result, integral, 40 * tiny) << k << " " << degree;
            } else {
                EXPECT_GT(std::abs(result), T(1e-5)) << k;
            }
            EXPECT_GE(absolute, std::abs(result));
            if (degree == 0) {
                EXPECT_NEAR(deviation, 0, 8 * tiny);
            }
        }
}

int kind;
TYPED_TEST(Quad, EveryMessage)
{
    using T = TypeParam;
    const auto f = [](const T* x) -> T {
        const T root = std::abs(*x - T(0.3));
        const T hard = sizeof(T) == 8 ? std::pow(*x, T(-0.75)) + T(3e-7) * std::cos(T(1e5) * *x)
                                      : std::pow(*x, T(-0.95)) * (1 + T(5e-5) * std::sin(1000 * *x));
        const T functions[] = {T(*x > T(0.3)), 1, 1 / (*x * *x), 1 / root, hard};
        return functions[kind];
    };
    const std::string
        most = "The maximum number of subintervals MAXSUB = 0.  It must be at least 1.",
        many = "The maximum number of subintervals allowed MAXSUB = ", reached = " has been reached.",
        more = " and increase MAXSUB.  Dimension adjustments may be necessary.",
        both =
            "The error tolerance arguments ERRABS and ERRREL are both equal to zero.  At least one of them must be greater than zero.",
        bad =
            "Precision is degraded due to too fine a subdivision relative to the requested tolerance.  This may be due to bad integrand behavior in the interval (",
        error = "Roundoff error has been detected",
        rounding = error + ".  The requested tolerances, ERRABS = 1.0",
        table = error + " in the extrapolation table.  The requested ";
    const double hard_to = sizeof(T) == 8 ? 1e-8 : 1e-6;
    const struct {
        int kind;
        int32_t irule, maxsub;
        double errabs, errrel;
        Outcome outcome;
        std::string text;
    } rows[] = {{0, 0, 0, 1, 0, {5, 1}, most},
                {0, 6, 3, 0, 0, {5, 5}, both},
                {0, 0, 3, 0, 1e-5, {4, 1}, many + "3" + reached + "  Use Q2AGS" + more},
                {0, 6, 3, 0, 1e-5, {4, 1}, many + "3" + reached + "  Use Q2AG" + more},
                {1, 0, 1, 0, 0.5, {4, 1}, many + "1" + reached},  // although 1 is integrated
                {1, 0, 3, 1e-30, 0, {3, 2}, rounding},
                {1, 0, 3, 1e-30, 0, {3, 2}, "00E+00, cannot be reached."},
                {1, 1, 3, 1e-30, 0, {3, 2}, "00E+00 cannot be reached."},
                {3, 0, 500, 0, 1e-6, {3, 3}, bad},
                {3, 6, 500, 0, 1e-6, {3, 3}, bad},
                {2, 0, 500, 0, 1e-3, {4, 5}, "Integral is probably divergent or slowly convergent."},
                {4, 0, 500, 0, hard_to, {3, 4}, table},
                {4, 0, 500, 0, hard_to, {3, 4}, " cannot be reached."}};
    for (const auto& row : rows) {
        kind = row.kind;
        const Quadrature<T> q(row.irule, f, 0, 1, static_cast<T>(row.errabs), static_cast<T>(row.errrel),
                              row.maxsub);
        EXPECT_EQ(outcome(), row.outcome) << row.text;
        const std::string text = one_line(this->page.take());
        EXPECT_NE(text.find(row.text), text.npos) << row.text << text;
        EXPECT_EQ(q.neval == -7 && q.result == T(-7), row.outcome.type == 5);
        if (row.text == bad) {
            char ends[80];
            const int digits = sizeof(T) == 8 ? 15 : 6, first = q.order[0] - 1;
            std::snprintf(ends, sizeof ends, "(%.*E,%.*E)", digits, double(q.lo[first]), digits,
                          double(q.hi[first]));
            EXPECT_NE(text.find(ends), text.npos) << ends << text;
        }
    }
}

TYPED_TEST(Quad, EndsAndEmptyIntervals)
{
    using T = TypeParam;
    const auto pole = [](const T* x) { return T(1) / (*x - T(1)); };
    const auto cubic = [](const T* x) { return *x * *x * *x; };
    for (int32_t irule = 0; irule <= 6; ++irule) {
        const Quadrature<T> forth(irule, cubic, 0, 2, 0, T(1e-3), 9), back(irule, cubic, 2, 0, 0, T(1e-3), 9);
        EXPECT_NEAR(forth.result, 4, 8 * std::numeric_limits<T>::epsilon());
        EXPECT_EQ(back.result, -forth.result);
        EXPECT_EQ(forth.pieces, 1);
        EXPECT_EQ(forth.neval, (std::array{21, 15, 21, 31, 41, 51, 61}[irule]));
        const Quadrature<T> empty(irule, pole, 1, 1, 1, 0, 9);  // infinite there
        EXPECT_EQ(empty.result, 0);
        EXPECT_EQ(empty.error, 0);
        EXPECT_EQ(empty.pieces, 1);
        EXPECT_EQ(this->page.take(), "");
    }
}

// The ends are not called, nor what is beyond them, however few numbers are between: pieces beside and across
// powers of two, where midpoints are rounded.
TYPED_TEST(Quad, NodesAreInsideOfNarrowPieces)
{
    using T = TypeParam;
    static T low, high;
    static int outside;
    const auto f = [](const T* x) {
        outside += !(*x > low && *x < high);
        return T(1);
    };
    constexpr std::size_t half = 600;
    for (const T power : {T(1), T(-2), T(1024)}) {
        std::vector<T> number(2 * half + 2, power);  // in ascending order, the power of two in the middle
        for (std::size_t k = half; k > 0; --k) number[k - 1] = std::nextafter(number[k], T(-9999));
        for (std::size_t k = half; k <= 2 * half; ++k) number[k + 1] = std::nextafter(number[k], T(9999));
        for (std::size_t width = 2; width <= half; ++width)
            for (const std::size_t start :
                 {half - width, half - width / 2, half - width / 3, half, half + 1}) {
                low = number[start], high = number[start + width];
                for (std::size_t k = 0; k < 6; ++k) {
                    T e[4];
                    outside = 0;
                    Quadrature<T>::rule[k](f, &low, &high, e, e + 1, e + 2, e + 3);
                    Quadrature<T>::rule[k](f, &high, &low, e, e + 1, e + 2, e + 3);
                    ASSERT_EQ(outside, 0)
                        << power << " rule " << k + 1 << " width " << width << " at " << start;
                }
            }
    }
    // Halves between whose ends no number lies; a noisy function is bisected.
    static int calls;
    const auto noise = [](const T* x) {
        outside += !(*x > low && *x < high);
        return T(++calls % 3);
    };
    for (int width = 2; width < 9; ++width)
        for (int32_t irule = 0; irule <= 6; ++irule) {
            low = high = 1;
            for (int k = 0; k < width; ++k)
                (k % 2 == 0 ? high : low) = std::nextafter(k % 2 == 0 ? high : low, T(9 * (1 - k % 2)));
            outside = 0;
            const Quadrature<T> q(irule, noise, low, high, 0, T(1e-6), 50);
            EXPECT_EQ(q.pieces, 2);
            EXPECT_EQ(outside, 0) << irule << " width " << width;
        }
    // Sums and differences of the ends may overflow.
    const T largest = std::numeric_limits<T>::max();
    for (const T from : {-largest, largest / 4 * 3})
        for (int32_t irule = 0; irule <= 6; ++irule) {
            low = from, high = largest;
            outside = 0;
            const auto inverse = [](const T* x) {
                outside += !(*x > low && *x < high);
                return std::abs(*x) < 1 ? T(1) : T(1) / *x;
            };
            const Quadrature<T> q(irule, inverse, low, high, 0, T(1e-3), 50);
            EXPECT_EQ(outside, 0) << irule;
            if (from > 0) {
                EXPECT_NEAR(q.result, std::log(T(4) / 3), T(1e-3));
            }
        }
}

struct Thrown {};
TYPED_TEST(Quad, UserCode)
{
    using T = TypeParam;
    using Q = Quadrature<T>;
    T result = 0, error;
    // A function that calls the same routine, and one whose errors are its own.
    const auto outer = [](const T* x) {
        static T y;
        y = *x;
        T inner, e;
        Q::front([](const T* t) { return std::sqrt(*t) * y; }, 0, 1, T(1e-3), &inner, &e, 0);
        const int32_t bad = 9;
        Q::front([](const T* t) { return *t; }, 0, 1, T(1e-3), &e, &e, bad);
        return inner;
    };
    for (const int32_t irule : {0, 3}) {
        Q::front(outer, 0, 3, T(1e-3), &result, &error, irule);
        EXPECT_NEAR(result, 3, 3e-3);
        EXPECT_EQ(outcome(), (Outcome{0, 0}));
        const std::string text = this->page.take();
        EXPECT_NE(text.find("IRULE = 9"), text.npos);
        // An exception leaves nothing behind, not even with storage in use.
        const auto throws = [](const T* x) -> T {
            if (requests > 0) throw Thrown();
            return std::sin(1 / *x) / *x;
        };
        requests = 0;
        EXPECT_THROW(Q::front(throws, 0, 1, T(1e-6), &result, &error, irule), Thrown);
        EXPECT_EQ(ERCOM1.level, 1);
        EXPECT_EQ(ERCOM4.user[2], 0);
        EXPECT_EQ(this->page.take(), "");
    }
}

// NaN or infinity in F, limits and tolerances: a bounded number of calls, and no number
// without a message that pretends to be the integral.
double value, from, to;
TYPED_TEST(Quad, WildArguments)
{
    using T = TypeParam;
    set_switches(0, 0, 0);
    const double nan = std::nan(""), inf = infinity;
    const auto f = [](const T* x) {
        const auto at = static_cast<double>(*x);
        return at >= from && at <= to ? static_cast<T>(value) : *x;
    };
    const struct {
        double a, b, errabs, errrel, value, from, to;
        Outcome outcome;
        int32_t least, most;  // pieces
        double result;
    } rows[] = {
        {0, 1, 1e-3, 1e-3, nan, 0, 1, {4, 1}, 100, 100, nan},  // F
        {0, 1, 1e-3, 1e-3, inf, 0, 1, {4, 1}, 100, 100, inf},
        {0, 1, 1e-3, 1e-3, nan, 0.7, 1, {3, 2}, 2, 20, nan},
        {0, 1, 1e-3, 1e-3, nan, 0.5, 0.5, {3, 2}, 2, 20, 0.5},  // later pieces have no node there
        {nan, 1, 1e-3, 1e-3, 0, 2, 2, {4, 1}, 100, 100, nan},   // limits
        {0, nan, 1e-3, 1e-3, 0, 2, 2, {4, 1}, 100, 100, nan},
        {-inf, inf, 1e-3, 1e-3, 0, 2, 2, {4, 1}, 100, 100, nan},
        {0, inf, 1e-3, 1e-3, 0, 2, 2, {3, 3}, 2, 2, nan},
        {-inf, 1, 1e-3, 1e-3, 0, 2, 2, {3, 3}, 2, 2, nan},
        {0, 1, nan, 1e-3, 0, 2, 2, {3, 2}, 1, 20, 0.5},  // tolerances
        {0, 1, inf, 1e-3, 0, 2, 2, {0, 0}, 1, 1, 0.5},
        {0, 1, 1e-3, nan, 0, 2, 2, {0, 0}, 1, 1, 0.5},
        {0, 1, 0, nan, 0, 2, 2, {3, 2}, 1, 20, 0.5},
    };
    for (const auto& row : rows)
        for (int32_t irule = 0; irule <= 6; ++irule) {
            SCOPED_TRACE(testing::Message() << &row - rows << " rule " << irule);
            value = row.value, from = row.from, to = row.to;
            const auto real = [](double v) { return static_cast<T>(v); };
            const Quadrature<T> q(irule, f, real(row.a), real(row.b), real(row.errabs), real(row.errrel),
                                  100);
            EXPECT_EQ(outcome(), row.outcome);
            EXPECT_TRUE(q.pieces >= row.least && q.pieces <= row.most) << q.pieces;
            if (std::isnan(row.result)) {
                EXPECT_TRUE(std::isnan(q.result));
            } else {
                EXPECT_FLOAT_EQ(static_cast<float>(q.result), static_cast<float>(row.result));
            }
            EXPECT_EQ(std::isnan(q.error), row.outcome != (Outcome{0, 0}) && row.errabs == 1e-3);
        }
}

}  // namespace
