// tests/zeros/zreal_test.cpp - points of ZREAL worked out by hand, what holds for all zeros, limits, bad
// input
#include <algorithm>
#include <array>
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

template <class T>
Trace<T> zreal(const Case<T>& c, bool in_place = false)
{
    Trace<T> t{
        {}, in_place ? c.guesses : std::vector<T>(c.guesses.size()), std::vector<int32_t>(c.guesses.size())};
    points<T>.clear();
    function<T> = c.f;
    const int32_t n = static_cast<int32_t>(c.guesses.size());
    const T* guesses = in_place ? t.zeros.data() : c.guesses.data();
    member<T>(ZREAL, DZREAL)(recorded<T>, &c.errabs, &c.errrel, &c.eps, &c.eta, &n, &c.itmax, guesses,
                             t.zeros.data(), t.info.data());
    t.points = points<T>;
    return t;
}

template <class T>
class Zreal : public Searching<T> {};
TYPED_TEST_SUITE(Zreal, Precisions);

// The points, zeros and counts of a search; `values` of F stand in place of those of the function.
template <class T>
void check(Case<T> c, const std::vector<double>& at, const std::vector<double>& zeros,
           const std::vector<int32_t>& info, const std::vector<double>& values = {})
{
    SCOPED_TRACE(::testing::Message() << zeros[0] << " in " << at.size() << " points");
    script<T>.assign(values.begin(), values.end());
    if (!values.empty()) c.f = scripted<T>;
    for (const bool in_place : {false, true}) {
        const Trace<T> t = zreal(c, in_place);
        EXPECT_EQ(t.points.size(), at.size());
        expect_points(t.points, at);
        expect_points(t.zeros, zeros);
        EXPECT_EQ(t.info, info);
        const bool failed = *std::max_element(info.begin(), info.end()) > c.itmax;
        EXPECT_EQ(outcome(), failed ? (Outcome{3, 1}) : (Outcome{0, 0}));
    }
}

// A parabola is its own interpolant, and so is the line that deflation leaves of it; where values are given
// in advance the steps follow from the three formulas of a step with small whole numbers.
TYPED_TEST(Zreal, PointsByHand)
{
    using T = TypeParam;
    const Function<T> parabola = [](T x) { return x * x - 4; }, line = [](T x) { return x - 5; };
    const T acc = T(1e-3), none = 0;
    // From three points around the guess straight to the zero; the other one of the line that is left.
    check<T>({parabola, {1, 1}, acc, none, T(1e-3), T(1e-2), 50}, {.9, 1.1, 1, 2, .9, 1.1, 1, -2}, {2, -2},
             {4, 4});
    // From -1, 1, 0; ITMAX counts one evaluation less; a step is compared with ERRREL before the
    // evaluation.
    check<T>({line, {0}, acc, none, none, none, 5}, {-1, 1, 0, 5}, {5}, {4});
    check<T>({line, {0}, acc, none, none, none, 4}, {-1, 1, 0}, {5}, {5});
    check<T>({line, {0}, none, T(1.001), none, none, 50}, {-1, 1, 0}, {5}, {3});
    check<T>({line, {0}, none, T(.999), none, none, 5}, {-1, 1, 0, 5}, {5}, {4});
    // A tenfold value halves the step, a little less does not.
    check<T>({line, {0}, none, none, none, none, 7}, {-1, 1, 0, 2, 1, .5}, {2}, {8},
             {-3, -1, -2, 20, -25, -1.5});
    check<T>({line, {0}, none, none, none, none, 5}, {-1, 1, 0, 2}, {0.8655807864649041}, {6},
             {-3, -1, -2, -19.5});
    // A parabola without zeros, 0 for the root; level values, 1 for the divisor.
    check<T>({line, {0}, none, none, none, none, 4}, {-1, 1, 0}, {1}, {5}, {9, 5, 1});
    check<T>({line, {0}, none, none, none, none, 4}, {-1, 1, 0}, {3}, {5}, {3, 3, 3});
}

// Points close to zeros that were found are moved.
TYPED_TEST(Zreal, PointsAwayFromFoundZeros)
{
    using T = TypeParam;
    const T ninth = T(10) / 9, inf = std::numeric_limits<T>::infinity(),
            largest = std::numeric_limits<T>::max();
    const Function<T> twice = [](T x) { return (x - 2) * (x - 2); }, pair = [](T x) { return x * (x + 1); },
                      cubic = [](T x) { return (x - 1) * (x - T(1.5)) * (x - 4); },
                      apart = [](T x) { return (x + 1) * (x - 9); };
    const T acc = T(1e-3), none = 0;
    // The zero that was found is moved by ETA, and accepted if both values are small,
    check<T>({twice, {0, 0}, T(.2), none, T(.01), T(.125), 50}, {-1, 1, 0, 2, -1, 1, 0, 2, 2.125}, {2, 2.125},
             {4, 4});
    // not if the deflated one is not.
    check<T>({twice, {0, 0}, T(.05), none, T(.01), T(.125), 50},
             {-1, 1, 0, 2, -1, 1, 0, 2, 2.125, 2.0191471140279678}, {2, 2.0191471140279678}, {4, 5});
    // A point is moved until it is away from all zeros: past two of them,
    check<T>({cubic, {ninth, ninth * T(1.5), 1}, T(1e-2), none, T(.25), T(.3), 50},
             {1, 1.5, .9, 1.2, 1.5, 1.8, 1.1, 1.4, 1.7, 2, 1, 1.3, 1.6, 1.9, 4}, {1, 1.5, 4}, {1, 1, 4});
    check<T>({cubic, {ninth, ninth * T(1.5), ninth * T(.8)}, acc, none, T(.25), T(.1), 2},
             {1, 1.5, .8, .9, 1, 1.1, 1.2, 1.3, 1.4, 1.5, 1.6, 1.7, 1.8}, {1, 1.5, 8.8 / 9}, {1, 1, 3});
    // and in small steps past one.
    check<T>({cubic, {ninth, 1}, acc, none, T(.25), T(.1), 3}, {1, .9, 1, 1.1, 1.2, 1.3, 1.1, 1.2, 1.3},
             {1, 1}, {1, 4});
    // What is as far as EPS stays; nothing is moved that could not get away.
    check<T>({apart, {0, 0}, acc, none, T(.5), T(.5), 4}, {-1, -1, -.5, 1, 0}, {-1, 4.684658438426491},
             {1, 5});
    for (const auto& [eps, eta] : {std::pair{T(.25), T(0)},
                                   {T(.25), std::nanf("")},
                                   {T(.25), T(1e-30)},
                                   {largest, T(1e-2)},
                                   {inf, T(1e-2)},
                                   {-inf, T(1e-2)}})
        check<T>({pair, {0, T(-1.1)}, acc, none, eps, eta, 50}, {-1, -.99, -1.21, -1.1, 0}, {-1, 0}, {1, 4});
    check<T>({pair, {0, 0}, acc, none, T(1e-30), T(1e-31), 2}, {-1, -1}, {-1, 1}, {1, 3});
}

// Different zeros, small values, no more calls than iterations and moves.
TYPED_TEST(Zreal, ZerosOfSmoothFunctions)
{
    using T = TypeParam;
    const T acc = 64 * std::numeric_limits<T>::epsilon();
    const Case<T> cases[] = {
        {[](T x) { return std::cos(x); }, {1, 5, 8, -1}, acc, 0, T(1e-3), T(1e-2), 60},
        {[](T x) { return std::exp(x) - 10 * x * x; }, {1, 0, 3}, 16 * acc, 0, T(1e-3), T(1e-2), 60},
        {[](T x) { return x * x * x * x - 10 * x * x + 9; }, {0, 0, 0, 0}, 16 * acc, 0, T(1e-3), T(1e-2), 60},
        {[](T x) { return std::exp(x) - 1000; }, {T(0.5)}, 4096 * acc, 0, T(1e-3), T(1e-2), 90}};
    for (const Case<T>& c : cases) {
        SCOPED_TRACE(&c - cases);
        const Trace<T> t = zreal(c);
        EXPECT_EQ(outcome(), (Outcome{0, 0}));
        int32_t iterations = 0;
        for (std::size_t k = 0; k < t.zeros.size(); ++k) {
            EXPECT_LT(std::abs(c.f(t.zeros[k])), c.errabs);
            EXPECT_LE(t.info[k], 40);
            iterations += t.info[k];
            for (std::size_t j = 0; j < k; ++j) EXPECT_GT(std::abs(t.zeros[k] - t.zeros[j]), T(0.1));
        }
        EXPECT_GE(t.points.size(), static_cast<std::size_t>(iterations));
        EXPECT_LE(t.points.size(), static_cast<std::size_t>(iterations) + 12);
    }
    const Trace<T> t = zreal<T>({[](T x) { return x * x + 1; }, {T(0.5), 0}, acc, 0, T(1e-3), T(1e-2), 40});
    EXPECT_EQ(t.info, (std::vector{41, 41}));
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
            *std::array{&w.errabs, &w.errrel, &w.eps, &w.eta, &w.guesses[1], &w.guesses[1]}[where] = wild;
            if (where == 5) w.f = [](T x) { return x > 3 ? x : std::numeric_limits<T>::quiet_NaN(); };
            EXPECT_LE(zreal(w).points.size(), 29u * 9u);
        }
}

}  // namespace
