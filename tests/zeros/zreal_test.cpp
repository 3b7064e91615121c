// tests/zeros/zreal_test.cpp - points of ZREAL against a model written from its description; limits and bad
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
    Function<T> f;
    std::vector<T> guesses;
    T errabs, errrel, eps, eta;
    int32_t itmax;
};

template <class T>
struct Trace {
    std::vector<T> points, zeros;
    std::vector<int32_t> info;
};

// Muller's method as a sequence of whole histories: no state but the list of accepted values.
template <class T>
Trace<T> model(const Case<T>& c)
{
    Trace<T> t;
    for (const T g : c.guesses) {
        const T start[] = {g == 0 ? T(-1) : T(0.9) * g, g == 0 ? T(1) : T(1.1) * g, g};
        std::vector<T> kept;
        T x = start[0], h = 0, ratio = 0;
        int32_t info = c.itmax + 1;
        for (int32_t k = 1; k < c.itmax; ++k) {
            T f, deflated;
            for (std::size_t moves = 0;; ++moves) {
                t.points.push_back(x);
                deflated = f = c.f(x);
                bool close = false;
                for (const T z : t.zeros) {
                    close = close || std::abs(x - z) < c.eps;
                    deflated /= x - z;
                }
                if (!close || moves == t.zeros.size()) break;
                x += c.eta;
            }
            if (std::abs(f) < c.errabs && std::abs(deflated) < c.errabs) {
                info = k;
                break;
            }
            if (k > 3 && !(std::abs(deflated) < 10 * std::abs(kept.back()))) {
                h /= 2;
                ratio /= 2;
                x -= h;
                continue;
            }
            kept.push_back(deflated);
            if (k < 3) {
                x = start[k];
                continue;
            }
            if (k == 3) {
                h = g == 0 ? T(-1) : T(-0.1) * g;
                ratio = T(-0.5);
            }
            const T *last = &kept.back(), f1 = last[-2], f2 = last[-1], f3 = last[0], delta = 1 + ratio;
            const T q = ratio * ratio * f1 - delta * delta * f2 + (ratio + delta) * f3;
            const T d = q * q - 4 * f3 * ratio * delta * (ratio * f1 - delta * f2 + f3);
            const T root = d > 0 ? std::sqrt(d) : 0;
            T divisor = std::abs(q + root) > std::abs(q - root) ? q + root : q - root;
            if (divisor == 0) divisor = 1;
            ratio = -2 * f3 * delta / divisor;
            h *= ratio;
            x += h;
            if (std::abs(h) < c.errrel * std::abs(x)) {
                info = k;
                break;
            }
        }
        t.zeros.push_back(x);
        t.info.push_back(info);
    }
    return t;
}

template <class T>
Trace<T> zreal(const Case<T>& c, bool in_place = false)
{
    Trace<T> t{
        {}, in_place ? c.guesses : std::vector<T>(c.guesses.size()), std::vector<int32_t>(c.guesses.size())};
    points<T>.clear();
    function<T> = c.f;
    const int32_t n = static_cast<int32_t>(c.guesses.size());
    const T* guesses = in_place ? t.zeros.data() : c.guesses.data();
    if constexpr (sizeof(T) == 4)
        ZREAL(recorded<T>, &c.errabs, &c.errrel, &c.eps, &c.eta, &n, &c.itmax, guesses, t.zeros.data(),
              t.info.data());
    else
        DZREAL(recorded<T>, &c.errabs, &c.errrel, &c.eps, &c.eta, &n, &c.itmax, guesses, t.zeros.data(),
               t.info.data());
    t.points = points<T>;
    return t;
}

template <class T>
class Zreal : public Searching<T> {};
TYPED_TEST_SUITE(Zreal, Precisions);

TYPED_TEST(Zreal, PointsAreThoseOfTheModel)
{
    using T = TypeParam;
    const T acc = 8 * std::numeric_limits<T>::epsilon();
    const Case<T> cases[] = {
        {[](T x) { return x * x - 2; }, {0, -1}, acc, acc, T(1e-3), T(1e-2), 50},
        {[](T x) { return std::cos(x); }, {1, 5, 8, -1}, acc, 0, T(1e-3), T(1e-2), 50},
        {[](T x) { return (x - 1) * (x - 1) * (x + 3); },
         {T(1.3), T(1.3), 0},
         T(1e-5),
         T(1e-5),
         T(1e-2),
         T(1e-1),
         90},
        {[](T x) { return (x - 1) * (x - 1); }, {2, 2}, 0, T(1e-3), T(1e-2), T(1e-1), 60},
        {[](T x) { return std::exp(x) - 1000; }, {T(0.5), 0}, T(1e-3), acc, T(1e-3), T(1e-2), 90},  // halves
        {[](T x) { return std::pow(x, T(9)) - T(1e-3); }, {3, 3, 3}, T(1e-5), 0, T(1e-1), T(1e-1), 30},
        {[](T x) { return x * x + 1; }, {T(0.5), 0}, acc, acc, T(1e-3), T(1e-2), 40},  // none
        {[](T x) { return x * x * x - x; }, {0, 0, 0}, acc, acc, T(0.6), 0, 50},       // ETA = 0
        {[](T x) { return x * x * x - x; }, {0, 0, 0}, acc, acc, T(0.6), std::nanf(""), 50},
        {[](T x) { return x * x * x - x; }, {0, 0, 0}, acc, acc, T(0.6), T(1e-30), 50},
        {[](T x) { return x * (x - 1); }, {0, 0}, acc, acc, 0, T(1e-2), 50},  // EPS = 0
        {[](T x) { return x - 5; }, {4}, 0, 0, T(1e-3), T(1e-2), 12},
        {[](T x) { return x - 5; }, {4, 3}, 1, 0, T(1e-3), T(1e-2), 1}};
    for (const Case<T>& c : cases) {
        SCOPED_TRACE(&c - cases);
        const Trace<T> expected = model(c);
        for (const bool in_place : {false, true}) {
            const Trace<T> t = zreal(c, in_place);
            const bool failed = *std::max_element(t.info.begin(), t.info.end()) == c.itmax + 1;
            EXPECT_EQ(outcome(), failed ? (Outcome{3, 1}) : (Outcome{0, 0}));
            EXPECT_TRUE(same(t.points, expected.points));
            EXPECT_TRUE(same(t.zeros, expected.zeros));
            EXPECT_EQ(t.info, expected.info);
        }
    }
    EXPECT_NEAR(zreal(cases[0]).zeros[0] * zreal(cases[0]).zeros[1], -2, 8 * acc);  // not the same one twice
    const Trace<T> twice = zreal(cases[2]);  // the double zero, pushed off, and the simple one
    EXPECT_NEAR(twice.zeros[1], twice.zeros[0], 0.2);
    EXPECT_NEAR(twice.zeros[2], -3, 1e-4);
}

TYPED_TEST(Zreal, LimitsAndMessage)
{
    using T = TypeParam;
    Case<T> c{[](T x) { return x - 5; }, {4, 0}, T(1e-4), T(1e-4), T(1e-3), T(1e-2), 1};
    for (const int32_t itmax : {1, 0, -7, std::numeric_limits<int32_t>::min()}) {
        c.itmax = itmax;
        const Trace<T> t = zreal(c);
        EXPECT_TRUE(t.points.empty());
        EXPECT_EQ(t.info, (std::vector{2, 2}));
        EXPECT_EQ(t.zeros, (std::vector{T(0.9) * 4, T(-1)}));
        EXPECT_EQ(one_line(this->page.take()),
                  std::string("\n *** WARNING  ERROR 1 from ") + (sizeof(T) == 8 ? "D" : "") +
                      "ZREAL.  Failure to converge within  ITMAX = " + std::to_string(itmax) +
                      " iterations for at least  one of the NROOT = 2 roots. \n");
    }
    c.itmax = 5;
    EXPECT_EQ(zreal(c).info[0], 4);  // ITMAX - 1 evaluations suffice here
    c.itmax = 4;
    EXPECT_EQ(zreal(c).info[0], 5);
    EXPECT_EQ(points<T>.size(), 6u);
    c.guesses.clear();
    this->page.take();
    zreal(c);
    EXPECT_TRUE(points<T>.empty());
    EXPECT_EQ(this->page.take(), "");
    // Whatever the numbers are, the search ends.
    const T nan = std::numeric_limits<T>::quiet_NaN(), infinity = std::numeric_limits<T>::infinity();
    for (const T wild : {nan, infinity, -infinity, std::numeric_limits<T>::max(), T(0)})
        for (int where = 0; where < 6; ++where) {
            Case<T> w{[](T x) { return x - 1 / x; }, {2, 2, 2}, T(1e-4), T(1e-4), T(1e-3), T(1e-2), 30};
            (where == 0   ? w.errabs
             : where == 1 ? w.errrel
             : where == 2 ? w.eps
             : where == 3 ? w.eta
                          : w.guesses[1]) = wild;
            if (where == 5) w.f = [](T x) { return x > 3 ? x : std::numeric_limits<T>::quiet_NaN(); };
            EXPECT_LE(zreal(w).points.size(), 29u * 6u);
        }
}

}  // namespace
