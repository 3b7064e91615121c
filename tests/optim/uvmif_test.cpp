// tests/optim/uvmif_test.cpp - points of UVMIF against a model written from its description; outcomes and bad
// input
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

// The description read from top to bottom, with its names and stages.
template <class T>
std::vector<T> model(const Case<T>& c)
{
    std::vector<T> at;
    const T x0 = c.guess, acc = c.acc > 0 ? c.acc : 0;
    T x = x0, h = c.step, xa = 0, fa = 0, xb = 0, fb = 0, xc = 0, fc = 0, xd = 0, fd = 0;
    int is = 1;
    const auto sign = [](T length, T of) { return of < 0 ? -length : length; };
    const auto step = [&] {
        const bool cut = std::abs(T(1.5) * h + xb - x0) >= c.bound;
        x = cut ? x0 + sign(c.bound, h) : xb + h;
        if (cut) is = 2;
    };
    while (static_cast<int32_t>(at.size()) < std::max(c.maxfn, 1)) {
        at.push_back(x);
        const T fx = c.f(x);
        const std::size_t nf = at.size();
        if (nf == 1) {
            xb = x;
            fb = fx;
            if (acc >= c.bound) return at;
            if (std::abs(h) > c.bound) h = sign(c.bound, h);
            if (h == 0) h = T(0.01) * c.bound;
            if (acc > std::abs(h)) h = sign(acc, h);
            while (!(x0 + T(0.5) * std::abs(h) > x0 && x0 + T(0.5) * std::abs(h) < x0 + std::abs(h))) h *= 5;
            if (std::abs(h) > c.bound) return at;
            step();
            continue;
        }
        if (nf == 2 && fx >= fb) {
            xa = x, fa = fx, h = -h, is = 1;
            step();
            continue;
        }
        if (nf > 2) xd = xa, fd = fa;
        if (fx >= fb) {
            if (is == 3) return at;
            if (is <= 2)
                xc = x, fc = fx, is = -4;
            else
                xa = x, fa = fx;
        } else {
            xa = xb, fa = fb, xb = x, fb = fx;
            if (is == 1) {
                if (nf > 2) {
                    const T r1 = (xb - xa) / (xb - xd), r2 = (fb - fa) / (fb - fd);
                    h *= r1 > r2 ? std::clamp((r1 - r2 / r1) * T(1.5) / (r2 - r1), T(2), T(9)) : 9;
                }
                step();
                continue;
            }
            if (is == 2) {
                T y = xb + sign(std::max(T(0.9) * acc, T(0.01) * std::abs(xb - xa)), xa - xb);
                if (std::abs(y - xb) > std::abs(y - xa)) y = (xb + xa) / 2;
                if ((xb - y) / (xb - xa) <= 0) return at;
                x = y, is = 3;
                continue;
            }
            if (is == 3) xc = xd, fc = fd, is = -4;
        }
        if (is > 0) {
            if (!((xb - xa) / (xc - xd) > 0)) std::swap(xc, xd), std::swap(fc, fd);
            while (fc != fb && fd == fb && fa == fb)
                std::swap(xa, xb), std::swap(fa, fb), std::swap(xc, xd), std::swap(fc, fd);
        }
        const T s1 = (fb - fc) / (xb - xc), s2 = (fa - fb) / (xa - xb), width = xc - xa;
        T t = T(0.01) * std::abs(width);
        if (is > 0) {
            const T s3 = (fd - fa) / (xd - xa);
            t = s2 == 0 ? 0 : std::abs(width);
            if (s2 != 0 && (s3 - s2) / width < 0)
                t = std::min(t, T(0.5) * std::abs((width / (s2 - s1) + (xd - xb) / (s3 - s2)) * s2));
        }
        is = 5;
        t = std::max(t, T(0.9) * acc);
        const T v = s1 == s2 ? xb : ((xb + xa) * s1 - (xb + xc) * s2) * T(0.5) / (s1 - s2);
        if ((xc - xb) / (xb - xa) < 1) std::swap(xa, xc), std::swap(fa, fc);
        const T w = xc - xb, d = std::abs(w);
        if (acc >= d) return at;
        T y = v;
        const auto nearer_to = [&](T other) { return std::abs(y - xb) > std::abs(y - other); };
        if (w / (xb - xa) > 10) {
            t = std::max(t, std::abs(xb - xa));
            y = xb + sign(std::min(std::max((v - xb) * (w >= 0 ? 3 : -3), t), T(0.1) * d), w);
        } else if (d > T(2.9) * acc) {
            if (std::abs(v - xb) < t) {
                y = xb + sign(t, v - xb);
                if (nearer_to(xa)) y = xb + sign(t, w);
                if (nearer_to(xc)) y = (xb + xc) / 2;
            }
        } else {
            y = (xb + xc) / 2;
            if (std::abs(y - xb) > acc) y = T(0.67) * xb + T(0.33) * xc;
        }
        if (y == xb || !((xc - y) / w > 0) || !((y - xa) / w > 0)) {
            y = xc;
            for (T m = (xb + y) / 2; (m > xb && m < y) || (m < xb && m > y); m = (xb + y) / 2) y = m;
            if (y == xc) return at;
        }
        x = y;
    }
    return at;
}

template <class T>
T uvmif(const Case<T>& c)
{
    points<T>.clear();
    function<T> = c.f;
    T x = 77;
    if constexpr (sizeof(T) == 4)
        UVMIF(recorded<T>, &c.guess, &c.step, &c.bound, &c.acc, &c.maxfn, &x);
    else
        DUVMIF(recorded<T>, &c.guess, &c.step, &c.bound, &c.acc, &c.maxfn, &x);
    return x;
}

template <class T>
class Uvmif : public Searching<T> {};
TYPED_TEST_SUITE(Uvmif, Precisions);

TYPED_TEST(Uvmif, PointsAreThoseOfTheModel)
{
    using T = TypeParam;
    struct Row {
        Case<T> c;
        Outcome outcome;
        const char* text;
    };
    const auto parabola = [](T x) { return (x - 3) * (x - 3); };
    const auto falling = [](T x) { return -x; };
    const auto flat = [](T x) { return std::max(std::abs(x - 3) - 2, T(0)); };
    const auto steps = [](T x) { return std::floor(std::abs(x - T(2.7)) * 2); };
    const auto quartic = [](T x) { return x * x * x * x - 3 * x; };
    const auto valley = [](T x) { return std::exp(x) - 20 * x + std::sqrt(std::abs(x - 4)); };
    const char* const bound =
        "The final value for X is at a bound.  The minimum is probably beyond the bound.";
    const char* const small = "The input value for BOUND is too small.  No change in X can be made.";
    const char* const rounding = "Computer rounding errors prevent further refinement of X.";
    const char* const many = "The maximum number of function evaluations, MAXFN = 7, has been exceeded.";
    const Row rows[] = {{{parabola, 0, T(0.1), 100, T(1e-3), 100}, {0, 0}, ""},
                        {{parabola, 0, T(-0.1), 100, T(1e-3), 100}, {0, 0}, ""},  // uphill first
                        {{parabola, 0, 0, 100, T(1e-3), 100}, {0, 0}, ""},
                        {{parabola, 9, -200, 100, T(1e-3), 100}, {0, 0}, ""},
                        {{parabola, 0, 1, T(3.05), T(1e-3), 100}, {0, 0}, ""},  // the probe is better
                        {{parabola, 0, 1, T(2.99), T(1e-3), 100}, {3, 2}, bound},
                        {{parabola, T(1e4), 1, T(2e4), T(1e-2), 100}, {0, 0}, ""},
                        {{quartic, 0, 1, 10, T(1e-3), 100}, {0, 0}, ""},
                        {{quartic, 0, T(1e-6), 10, T(1e-3), 100}, {0, 0}, ""},
                        {{quartic, 0, 1, 10, 0, 300}, {3, 1}, rounding},
                        {{valley, 0, T(0.5), 10, T(1e-3), 100}, {0, 0}, ""},
                        {{falling, 0, 1, 20, T(1e-3), 100}, {3, 2}, bound},
                        {{falling, 5, -30, 20, T(1e-3), 100}, {3, 2}, bound},
                        {{flat, 0, 1, 50, T(1e-3), 200}, {0, 0}, ""},
                        {{flat, 0, T(0.01), 50, 0, 400}, {3, 1}, rounding},
                        {{flat, 3, 1, 50, T(1e-3), 200}, {0, 0}, ""},
                        {{steps, 0, T(0.3), 50, T(1e-3), 200}, {0, 0}, ""},
                        {{steps, 0, T(0.3), 50, 0, 400}, {3, 1}, rounding},
                        {{quartic, 5, 1, 10, T(1e-3), 7}, {4, 3}, many},
                        {{quartic, 5, 1, 10, T(1e-3), 1}, {4, 3}, "MAXFN = 1, has"},
                        {{quartic, 5, 1, 10, T(1e-3), -1}, {4, 3}, "MAXFN = -1, has"},
                        {{quartic, 5, 1, 10, 10, 7}, {5, 1}, small},
                        {{quartic, 5, 1, -1, 0, 7}, {5, 1}, small},
                        {{quartic, T(1e9), T(1e-9), T(1e-9), 0, 7}, {5, 1}, small},
                        {{quartic, T(1e4), std::numeric_limits<T>::min(), T(1e5), T(1e-2), 90}, {0, 0}, ""}};
    for (const Row& row : rows) {
        SCOPED_TRACE(&row - rows);
        const T x = uvmif(row.c);
        EXPECT_EQ(outcome(), row.outcome);
        const std::string text = one_line(this->page.take());
        EXPECT_NE(text.find(row.text), text.npos) << text;
        EXPECT_EQ(text.empty(), row.text[0] == 0) << text;
        EXPECT_EQ(points<T>, model(row.c));
        // X is the best point, the bound is kept, and a parabola is minimized within XACC.
        for (const T p : points<T>) {
            EXPECT_LE(row.c.f(x), row.c.f(p));
            EXPECT_LE(std::abs(p - row.c.guess), std::abs(row.c.bound));
        }
        if (row.c.f == +parabola && row.outcome.type == 0) {
            EXPECT_NEAR(x, 3, row.c.acc);
        }
    }
}

TYPED_TEST(Uvmif, ManyStarts)
{
    using T = TypeParam;
    set_switches(0, 0, 0);
    const Function<T> functions[] = {
        [](T x) { return std::cosh(x - 2); }, [](T x) { return std::abs(x - 1) + std::sin(3 * x); },
        [](T x) { return std::floor(x * x) - x; }, [](T x) { return std::exp(-x) - std::exp(-x * x); }};
    for (const Function<T> f : functions)
        for (T guess = -3; guess < 4; guess += T(0.7))
            for (T step = -2; step < 3; step += T(0.37))
                for (const T bound : {T(0.5), T(2.1), T(4), T(40)})
                    for (const T acc : {T(0.3), T(0.02), T(1e-3), T(1e-5)}) {
                        const Case<T> c{f, guess, step, bound, acc, 60};
                        uvmif(c);
                        ASSERT_EQ(points<T>, model(c)) << guess << " " << step << " " << bound << " " << acc;
                    }
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
            const bool bad = where < 3 && std::isnan(wild);
            if (bad) {
                EXPECT_EQ(outcome(), (Outcome{5, 1})) << where;
            }
            if (where == 5) {
                EXPECT_FALSE(std::isnan(c.f(x)));
            }
        }
}

}  // namespace
