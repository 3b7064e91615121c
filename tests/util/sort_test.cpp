// tests/util/sort_test.cpp - every sort on every level, its bound of time, its errors
#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <numeric>
#include <random>
#include <vector>

#include "kernels/isa/loops.h"
#include "tests/support.h"
#include "util/isa/quicksort.h"

namespace {

using orvel_test::Capture;
using orvel_test::one_line;
using orvel_test::Outcome;
using orvel_test::outcome;
using orvel_test::set_switches;

// The members of one type: without and with labels, by value and by magnitude.
template <class T>
struct Members {
    void (*plain)(const int32_t*, const T*, T*);
    void (*labelled)(const int32_t*, const T*, T*, int32_t*);
    double (*key)(T);
};

template <class T>
double value(T x)
{
    return static_cast<double>(x);
}
template <class T>
double magnitude(T x)
{
    return std::abs(static_cast<double>(x));
}

template <class T>
std::vector<Members<T>> members();
template <>
std::vector<Members<float>> members()
{
    return {{SVRGN, SVRGP, value}, {SVRBN, SVRBP, magnitude}};
}
template <>
std::vector<Members<double>> members()
{
    return {{DSVRGN, DSVRGP, value}, {DSVRBN, DSVRBP, magnitude}};
}
template <>
std::vector<Members<int32_t>> members()
{
    return {{SVIGN, SVIGP, value}, {SVIBN, SVIBP, magnitude}};
}

template <class T>
bool same_bits(T a, T b)
{
    using Bits = std::conditional_t<sizeof(T) == 8, uint64_t, uint32_t>;
    return std::bit_cast<Bits>(a) == std::bit_cast<Bits>(b);
}

template <class T>
class Sort : public orvel_test::Quiet {
protected:
    using Limits = std::numeric_limits<T>;

    ~Sort() override { orvel::kernels::force_level(nullptr); }

    // Patterns: random, few values, extreme values, two runs, pipe of organs, sawtooth.
    std::vector<T> input(int n, int pattern)
    {
        const T extreme[] = {Limits::lowest(),
                             Limits::max(),
                             T(-Limits::max()),
                             T(0),
                             T(-T(0)),
                             T(1),
                             Limits::has_infinity ? Limits::infinity() : T(2),
                             T(-1)};
        std::vector<T> x(static_cast<std::size_t>(n));
        for (int k = 0; k < n; ++k) {
            const auto any = static_cast<int32_t>(random());
            const int32_t choices[] = {any, any & 3, 0, (k * 2) % n, std::min(k, n - k), k % 37};
            x[static_cast<std::size_t>(k)] =
                pattern == 2 ? extreme[any & 7] : static_cast<T>(choices[pattern]);
        }
        return x;
    }

    // Elements past both ends, outside the vector, are not touched; labels start at 100.
    void check(const Members<T>& m, const std::vector<T>& x, bool with_labels, bool in_place)
    {
        const T guard = T(77);
        const auto n = static_cast<int32_t>(x.size());
        std::vector<T> result(x.size() + 2, guard);
        std::vector<int32_t> labels(x.size() + 2);
        std::iota(labels.begin(), labels.end(), 99);
        if (in_place) std::copy(x.begin(), x.end(), result.begin() + 1);
        const T* from = in_place ? result.data() + 1 : x.data();
        if (with_labels)
            m.labelled(&n, from, result.data() + 1, labels.data() + 1);
        else
            m.plain(&n, from, result.data() + 1);
        ASSERT_EQ(result.front(), guard);
        ASSERT_EQ(result.back(), guard);
        ASSERT_EQ(labels.front(), 99);
        ASSERT_EQ(labels.back(), 100 + n);

        // NaNs last, the others ascending by key.
        const auto precedes = [&](T a, T b) { return m.key(a) < m.key(b) || (a == a && b != b); };
        const std::vector<T> sorted(result.begin() + 1, result.end() - 1);
        ASSERT_TRUE(std::is_sorted(sorted.begin(), sorted.end(), precedes));
        if (with_labels) {
            std::vector<bool> seen(x.size());
            for (std::size_t k = 0; k < x.size(); ++k) {
                const auto from_place = static_cast<std::size_t>(labels[k + 1] - 100);
                ASSERT_LT(from_place, x.size());
                ASSERT_FALSE(seen[from_place]);
                seen[from_place] = true;
                ASSERT_TRUE(same_bits(sorted[k], x[from_place]));
            }
        } else {
            const auto bitwise = [](std::vector<T> v) {
                std::sort(v.begin(), v.end(), [](T a, T b) {
                    return std::pair(std::signbit(static_cast<double>(a)), a) <
                           std::pair(std::signbit(static_cast<double>(b)), b);
                });
                return v;
            };
            if (std::none_of(x.begin(), x.end(), [](T v) { return v != v; })) {
                ASSERT_TRUE(std::ranges::equal(bitwise(x), bitwise(sorted), same_bits<T>));
            }
        }
    }

    void check_all(const std::vector<T>& x)
    {
        for (const Members<T>& m : members<T>())
            for (const bool with_labels : {false, true})
                ASSERT_NO_FATAL_FAILURE(check(m, x, with_labels, with_labels == (x.size() % 2 == 0)));
    }

    std::mt19937 random{5};
};

using Types = ::testing::Types<float, double, int32_t>;
TYPED_TEST_SUITE(Sort, Types);

TYPED_TEST(Sort, OrdersAndKeepsEveryElement)
{
    for (int level = 0; level < orvel::kernels::level_count(); ++level) {
        orvel::kernels::force_level(orvel::kernels::level_name(level));
        for (int n = 1; n < 5000; n += n < 140 ? 1 : n / 3)
            for (int pattern = 0; pattern < 6; ++pattern) {
                SCOPED_TRACE(::testing::Message()
                             << "level " << level << " n " << n << " pattern " << pattern);
                std::vector<TypeParam> x = this->input(n, pattern);
                ASSERT_NO_FATAL_FAILURE(this->check_all(x));
                if (n % 3 == 0) {  // already sorted, and reversed
                    std::sort(x.begin(), x.end());
                    ASSERT_NO_FATAL_FAILURE(this->check_all(x));
                    std::reverse(x.begin(), x.end());
                    ASSERT_NO_FATAL_FAILURE(this->check_all(x));
                }
                if (TypeParam(0.5) != 0) {
                    for (TypeParam& v : x)
                        if (this->random() % 8 == 0) v = std::numeric_limits<TypeParam>::quiet_NaN();
                    ASSERT_NO_FATAL_FAILURE(this->check_all(x));
                }
            }
    }
}

using Known = orvel_test::Quiet;

TEST_F(Known, SignsStayWithMagnitudes)
{
    const int32_t n = 3, four = 4;
    float x[] = {-3, 1, -2};
    int32_t labels[] = {1, 2, 3};
    SVRBP(&n, x, x, labels);
    EXPECT_EQ(std::vector(x, x + 3), (std::vector<float>{1, -2, -3}));
    EXPECT_EQ(std::vector(labels, labels + 3), (std::vector<int32_t>{2, 3, 1}));
    const int32_t least = std::numeric_limits<int32_t>::min(), k[] = {least, 5, -2147483647, -1};
    int32_t sorted[4];
    SVIBN(&four, k, sorted);
    EXPECT_EQ(std::vector(sorted, sorted + 4), (std::vector<int32_t>{-1, 5, -2147483647, least}));
}

TEST_F(Known, ErrorsOfEveryMember)
{
    const auto expect = [](const std::string& name, const std::string& text, auto call) {
        for (const int32_t n : {0, -5}) {
            set_switches(0, 1, 0);
            Capture printed;
            double out = 42;  // room for the element of any member
            int32_t label = 43;
            const double kept = out;
            call(&n, &out, &label);
            EXPECT_EQ(outcome(), (Outcome{5, 1}));
            EXPECT_EQ(out, kept);
            EXPECT_EQ(label, 43);
            std::string line = text;
            line.replace(line.find('#'), 1, std::to_string(n));
            EXPECT_EQ(one_line(printed.take()), "\n *** TERMINAL ERROR 1 from " + name + ".  " + line + "\n");
        }
    };
    const char* const r = "N = #.  The length of RA and RB, N, must be greater than or equal to one.";
    const char* const without_comma =
        "The length of vectors RA, RB and IPERM must be greater than or equal to one.  On input the length, "
        "N, "
        "is given as #.";
    const char* const with_comma =
        "The length of vectors RA, RB, and IPERM must be greater than or equal to one.  On input the length, "
        "N, "
        "is given as #.";
    const char* const one_integer =
        "The length of vector IA must be greater than or equal to one.  On input the length, N, is given as "
        "#.";
    const char* const integers =
        "The length of vectors IA, IB, and IPERM must be greater than or equal to one.  On input the length, "
        "N, "
        "is given as #.";
    const auto reals = [](auto member) {
        return [=](const int32_t* n, double* out, int32_t*) {
            member(n, reinterpret_cast<float*>(out), reinterpret_cast<float*>(out));
        };
    };
    const auto labelled_reals = [](auto member) {
        return [=](const int32_t* n, double* out, int32_t* label) {
            member(n, reinterpret_cast<float*>(out), reinterpret_cast<float*>(out), label);
        };
    };
    expect("SVRGN", r, reals(SVRGN));
    expect("SVRBN", r, reals(SVRBN));
    expect("SVRGP", without_comma, labelled_reals(SVRGP));
    expect("SVRBP", with_comma, labelled_reals(SVRBP));
    expect("DSVRGN", r, [](auto n, double* x, auto) { DSVRGN(n, x, x); });
    expect("DSVRBP", with_comma, [](auto n, double* x, auto label) { DSVRBP(n, x, x, label); });
    expect("SVIGN", one_integer, [](auto n, auto, auto x) { SVIGN(n, x, x); });
    expect("SVIBN", one_integer, [](auto n, auto, auto x) { SVIBN(n, x, x); });
    expect("SVIGP", integers, [](auto n, auto, auto x) { SVIGP(n, x, x, x); });
    expect("SVIBP", integers, [](auto n, auto, auto x) { SVIBP(n, x, x, x); });
}

// Answers comparisons so that pivots turn out to be small: M. D. McIlroy, A killer adversary for quicksort,
// Software: Practice and Experience 29, 1999.
struct Adversary {
    std::vector<int> place;  // undecided ones are larger than all decided
    int decided = 0, candidate = 0;
    int64_t comparisons = 0;
} adversary;

struct Undecided {
    int id;
    friend bool operator<(Undecided a, Undecided b)
    {
        auto& [place, decided, candidate, comparisons] = adversary;
        const int open = static_cast<int>(place.size());
        ++comparisons;
        int &p = place[static_cast<std::size_t>(a.id)], &q = place[static_cast<std::size_t>(b.id)];
        if (p == open && q == open && a.id != b.id) (a.id == candidate ? p : q) = decided++;
        if (p == open) candidate = a.id;
        if (q == open) candidate = b.id;
        return p < q;
    }
    friend bool operator<=(Undecided a, Undecided b) { return !(b < a); }
    bool operator==(const Undecided&) const = default;
};

TEST(Adversary, CannotMakeTheSortSlow)
{
    for (const int n : {1000, 30000}) {
        adversary = {std::vector<int>(static_cast<std::size_t>(n), n), 3};
        std::ranges::copy(std::vector{1, 0, 2}, adversary.place.begin());  // no run
        std::vector<Undecided> x(static_cast<std::size_t>(n));
        for (int k = 0; k < n; ++k) x[static_cast<std::size_t>(k)].id = k;
        orvel::util::Quicksort<orvel::util::ByValue, Undecided, false>(n, x.data(), nullptr).sort();
        EXPECT_LT(static_cast<double>(adversary.comparisons), 4 * n * std::log2(n));
        EXPECT_TRUE(std::is_sorted(x.begin(), x.end()));
    }
}

}  // namespace
