// tests/optim/uvmif_test.cpp - points of UVMIF worked out by hand, outcomes, what holds for every search
#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "tests/user_function.h"

namespace {

using namespace orvel_test;

template <class T>
struct Case {
    T (*f)(T);
    T guess, step, bound, acc;
    int32_t maxfn;
};

template <class T>
T uvmif(const Case<T>& c)
{
    points<T>.clear();
    function<T> = c.f;
    T x = 77;
    member<T>(UVMIF, DUVMIF)(recorded<T>, &c.guess, &c.step, &c.bound, &c.acc, &c.maxfn, &x);
    return x;
}

template <class T>
class Uvmif : public Searching<T> {};
TYPED_TEST_SUITE(Uvmif, Precisions);

// The first points, as far as whole numbers lead. Of a parabola every vertex is the minimum, 3.
TYPED_TEST(Uvmif, PointsByHand)
{
    using T = TypeParam;
    const Function<T> parabola = [](T x) { return (x - 3) * (x - 3); }, falling = [](T x) { return -x; },
                      peak = [](T x) { return std::abs(x - 2); },
                      mirrored = [](T x) { return (x + 3) * (x + 3); };
    const T far = std::ldexp(T(1), std::numeric_limits<T>::digits),
            acc = T(1e-3);  // numbers are 2 apart there
    const auto check = [](const Case<T>& c, const std::vector<double>& by_hand) {
        SCOPED_TRACE(::testing::Message() << by_hand.back() << " after " << by_hand.size() << " points");
        uvmif(c);
        expect_points(points<T>, by_hand);
    };
    // The quotients of steps and of descents make the step 9, then 19/3 times longer; uphill, 9 and 20/3
    // times.
    check({parabola, 0, T(.1), 100, acc, 100}, {0, .1, .2, 1.1, 6.8, 3});
    check({parabola, 0, T(-.1), 100, acc, 100}, {0, -.1, .1, 1, 7, 3});
    // First steps: a hundredth of BOUND, which then grows threefold; XACC; what moves a large guess.
    check({parabola, 0, 0, 100, acc, 100}, {0, 1, 2, 5, 3});
    check({parabola, 0, T(.1), 100, T(.5), 100}, {0, .5, 1, 5.5, 3});
    uvmif<T>({falling, far, T(.3), 1000, 0, 2});
    EXPECT_EQ(points<T>.back() - far, 8);  // a step of 0.3 * 5 * 5
    // BOUND on either side; a line grows ninefold towards it, and looks a hundredth of the last step inside,
    check({parabola, 9, -200, 100, acc, 100}, {9, -91, 109, 3});
    check({falling, 0, 1, 20, acc, 100}, {0, 1, 2, 11, 20, 19.91});
    check({parabola, 0, 1, T(2.99), acc, 100}, {0, 1, 2, 2.99, 2.9801});
    // but for no more than half of it; one and a half steps are compared with BOUND;
    check({falling, 0, 1, T(2.99), T(.9), 100}, {0, 1, 2, 2.99, 2.495});
    check({falling, 0, 1, T(2.45), acc, 100}, {0, 1, 2.45});
    check({falling, 0, 1, T(2.5), acc, 100}, {0, 1, 2.5});
    // where the minimum is enclosed here; the enclosure is lopsided, of which a tenth is taken;
    check({parabola, 0, 1, T(3.05), acc, 100}, {0, 1, 2, 3.05, 3.0395, 2.93555});
    check({parabola, 0, 1, T(3.05), T(.03), 100},
          {0, 1, 2, 3.05, 3.023, 2.954});  // thrice the way to the vertex, on either side
    check({mirrored, 0, -1, T(3.05), T(.03), 100}, {0, -1, -2, -3.05, -3.023, -2.954});
    // or nine tenths of XACC.
    check({parabola, 0, 1, T(2.99), T(.5), 100}, {0, 1, 2, 2.99, 2.54});
    // An enclosure below 2.9 XACC is halved, or divided by 0.33 where a half is longer than XACC.
    check({parabola, 0, T(1.5), 100, T(1.2), 100}, {0, 1.5, 3, 6, 3.99, 2.25});
    // The vertex, 4; then one that is too close to the best point, and the least step is too long on both
    // sides.
    check({peak, 0, 1, 100, acc, 100}, {0, 1, 2, 11, 4, 3});
    // The vertex of three values, two of them level; when it is level, too, the order is turned round, the
    // slopes vanish, and nine tenths of XACC are the least step.
    script<T> = {2, 1, 1, 1};
    check({scripted<T>, 0, 1, 100, acc, 5}, {0, 1, 2, 1.5, 1.5009});
    script<T> = {1};
    check({scripted<T>, 0, 1, 100, acc, 3}, {0, 1, -1});
}

TYPED_TEST(Uvmif, Outcomes)
{
    using T = TypeParam;
    struct Row {
        Case<T> c;
        Outcome outcome;
        double x;  // within XACC, or the precision
        const char* text;
    };
    const Function<T> parabola = [](T x) { return (x - 3) * (x - 3); }, falling = [](T x) { return -x; },
                      quartic = [](T x) { return x * x * x * x - 4 * x; };
    const char* const bound =
        "The final value for X is at a bound.  The minimum is probably beyond the bound.";
    const char* const small = "The input value for BOUND is too small.  No change in X can be made.";
    const char* const rounding = "Computer rounding errors prevent further refinement of X.";
    const char* const many = "The maximum number of function evaluations, MAXFN = 7, has been exceeded.";
    const T acc = T(1e-3), tiny = 8 * std::numeric_limits<T>::denorm_min();
    const Row rows[] = {
        {{parabola, 0, T(.1), 100, acc, 100}, {0, 0}, 3, ""},
        {{parabola, 9, -200, 100, acc, 100}, {0, 0}, 3, ""},
        {{parabola, 0, 1, T(3.05), acc, 100}, {0, 0}, 3, ""},
        {{parabola, T(1e4), 1, T(2e4), T(1e-2), 100}, {0, 0}, 3, ""},
        {{quartic, T(1e4), std::numeric_limits<T>::min(), T(1e5), T(1e-2), 90}, {0, 0}, 1, ""},
        {{quartic, 0, 1, 10, 0, 300}, {3, 1}, 1, rounding},
        {{parabola, 0, 1, T(2.99), acc, 100}, {3, 2}, 2.99, bound},
        {{falling, 5, -30, 20, acc, 100}, {3, 2}, 25, bound},
        {{quartic, 5, 1, 10, acc, 7}, {4, 3}, 0, many},
        {{quartic, 5, 1, 10, acc, 1}, {4, 3}, 5, "MAXFN = 1, has"},
        {{quartic, 5, 1, 10, acc, -1}, {4, 3}, 5, "MAXFN = -1, has"},
        {{quartic, 5, 1, 10, 10, 7}, {5, 1}, 5, small},
        {{quartic, 5, 1, -1, 0, 7}, {5, 1}, 5, small},
        {{quartic, T(1e9), T(1e-9), T(1e-9), 0, 7}, {5, 1}, 1e9, small},
        {{quartic, 5, 0, tiny, 0, 7}, {5, 1}, 5, small},  // a hundredth of BOUND is 0
        {{falling, 0, 0, tiny, -1, 99}, {3, 2}, 0, bound}};
    for (const Row& row : rows) {
        SCOPED_TRACE(&row - rows);
        const T x = uvmif(row.c);
        EXPECT_EQ(outcome(), row.outcome);
        const std::string text = one_line(this->page.take());
        EXPECT_NE(text.find(row.text), text.npos) << text;
        EXPECT_EQ(text.empty(), row.text[0] == 0) << text;
        if (row.text != many) {
            const double precision = std::sqrt(static_cast<double>(std::numeric_limits<T>::epsilon()));
            EXPECT_NEAR(static_cast<double>(x), row.x,
                        std::max(0.0, static_cast<double>(row.c.acc)) + precision);
        }
    }
}

// X is the best point, the bound is kept, and a convex function is minimized within XACC in few calls.
TYPED_TEST(Uvmif, ManyStarts)
{
    using T = TypeParam;
    set_switches(0, 0, 0);
    const struct {
        Function<T> f;
        double minimum;  // or none that is known
    } problems[] = {{[](T x) { return std::cosh(x - 2); }, 2},
                    {[](T x) { return std::exp(x) - 2 * x; }, 0.69314718055994531},
                    {[](T x) { return std::abs(x - T(.75)); }, 0.75},
                    {[](T x) { return std::max(std::abs(x - 3) - 2, T(0)); }, 99},  // flat
                    {[](T x) { return std::floor(x * x) - x; }, 99},
                    {[](T x) { return std::abs(x - 1) + std::sin(3 * x); }, 99}};
    std::size_t calls = 0, searches = 0;
    for (const auto& problem : problems)
        for (T guess = -3; guess < 4; guess += T(0.7))
            for (T step = -2; step < 3; step += T(0.37))
                for (const T bound : {T(0.5), T(2.1), T(4), T(40)})
                    for (const T acc : {T(0.3), T(0.02), T(1e-3)}) {
                        const Case<T> c{problem.f, guess, step, bound, acc, 200};
                        const T x = uvmif(c);
                        calls += points<T>.size(), ++searches;
                        for (const T p : points<T>) {
                            ASSERT_LE(c.f(x), c.f(p));
                            ASSERT_LE(std::abs(p - guess), bound * T(1.000001));
                        }
                        ASSERT_TRUE(outcome() == (Outcome{0, 0}) || outcome().type == 3);
                        if (problem.minimum == 99) continue;
                        SCOPED_TRACE(testing::Message() << guess << " " << step << " " << bound);
                        const double away = std::abs(problem.minimum - static_cast<double>(guess)),
                                     off = std::abs(problem.minimum - static_cast<double>(x));
                        ASSERT_TRUE(outcome().type != 0 || off <= static_cast<double>(acc) * 1.001);
                        ASSERT_TRUE(outcome().type == 0 || away >= 0.99 * static_cast<double>(bound - acc));
                    }
    EXPECT_LE(static_cast<double>(calls), 8.3 * static_cast<double>(searches));
}

TYPED_TEST(Uvmif, AlwaysEnds)
{
    using T = TypeParam;
    set_switches(0, 0, 0);
    const T nan = std::numeric_limits<T>::quiet_NaN(), infinity = std::numeric_limits<T>::infinity();
    for (const T wild :
         {nan, infinity, -infinity, std::numeric_limits<T>::max(), std::numeric_limits<T>::denorm_min()})
        for (int where = 0; where < 7; ++where) {
            Case<T> c{[](T x) { return std::cosh(x - 2); }, 0, 1, 100, T(1e-3),
                      std::numeric_limits<int32_t>::max()};
            if (where < 4) (where == 0 ? c.guess : where == 1 ? c.step : where == 2 ? c.bound : c.acc) = wild;
            if (where == 4) c.f = [](T) { return std::numeric_limits<T>::quiet_NaN(); };
            if (where == 5) c.f = [](T x) { return x > 1 ? std::numeric_limits<T>::quiet_NaN() : -x; };
            if (where == 6) c.f = [](T x) { return x > 1 ? -std::numeric_limits<T>::infinity() : x; };
            const T x = uvmif(c);
            EXPECT_LE(points<T>.size(), 3000u) << where << " " << wild;
            EXPECT_TRUE(where >= 3 || !std::isnan(wild) || outcome() == (Outcome{5, 1})) << where;
            EXPECT_TRUE(where != 5 || !std::isnan(c.f(x)));
        }
}

}  // namespace
