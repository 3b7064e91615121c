// tests/util/sort_test.cpp - every sort on every level, its bound of time, its errors
#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <random>
#include <vector>

#include "tests/levels.h"
#include "tests/support.h"
#include "util/isa/quicksort.h"
#include "util/sort.h"

namespace {

using namespace orvel_test;

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
std::vector<Members<T>> members()
{
    if constexpr (std::is_integral_v<T>)
        return {{SVIGN, SVIGP, value}, {SVIBN, SVIBP, magnitude}};
    else
        return {{member<T>(SVRGN, DSVRGN), member<T>(SVRGP, DSVRGP), value},
                {member<T>(SVRBN, DSVRBN), member<T>(SVRBP, DSVRBP), magnitude}};
}

template <class T>
class Sort : public Quiet {
protected:
    using Limits = std::numeric_limits<T>;

    // Patterns: random, few values, extreme values, two runs, pipe of organs, sawtooth.
    std::vector<T> input(int n, int pattern)
    {
        const T most = Limits::max(), infinity = Limits::has_infinity ? Limits::infinity() : T(2);
        const T extreme[] = {Limits::lowest(), most, T(-most), infinity, T(-T(0)), T(0), T(1), T(-1)};
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
                const T moved = x[from_place];
                ASSERT_TRUE(sorted[k] == moved || moved != moved);
            }
        } else if (std::ranges::none_of(x, [](T v) { return v != v; })) {
            std::vector<T> before = x, after = sorted;
            std::ranges::sort(before), std::ranges::sort(after);
            ASSERT_EQ(before, after);
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
    on_every_level([&] {
        for (int n = 1; n < 5000; n += n < 140 ? 1 : n / 3)
            for (int pattern = 0; pattern < 6; ++pattern) {
                SCOPED_TRACE(::testing::Message() << "n " << n << " pattern " << pattern);
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
    });
}

using Known = Quiet;

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
    set_switches(0, 1, 0);
    Capture printed;
    double x = 42;
    float f = 42;
    int32_t k = 42, n;
    const auto expect = [&](const std::string& name, const std::string& text, auto call) {
        for (n = 0; n > -10; n -= 5) {
            call();
            std::string line = text;
            line.replace(line.find('#'), 1, std::to_string(n));
            expect_terminal(printed, name, 1, line);
            EXPECT_TRUE(x == 42 && f == 42 && k == 42) << name;
        }
    };
    const std::string plain = "N = #.  The length of RA and RB, N, must be greater than or equal to one.";
    const auto of = [](const std::string& vectors) {
        return "The length of vector" + vectors +
               " must be greater than or equal to one.  On input the length, N, is given as #.";
    };
    expect("SVRGN", plain, [&] { SVRGN(&n, &f, &f); });
    expect("SVRBN", plain, [&] { SVRBN(&n, &f, &f); });
    expect("DSVRGN", plain, [&] { DSVRGN(&n, &x, &x); });
    expect("SVRGP", of("s RA, RB and IPERM"), [&] { SVRGP(&n, &f, &f, &k); });
    expect("SVRBP", of("s RA, RB, and IPERM"), [&] { SVRBP(&n, &f, &f, &k); });
    expect("DSVRBP", of("s RA, RB, and IPERM"), [&] { DSVRBP(&n, &x, &x, &k); });
    expect("SVIGN", of(" IA"), [&] { SVIGN(&n, &k, &k); });
    expect("SVIBN", of(" IA"), [&] { SVIBN(&n, &k, &k); });
    expect("SVIGP", of("s IA, IB, and IPERM"), [&] { SVIGP(&n, &k, &k, &k); });
    expect("SVIBP", of("s IA, IB, and IPERM"), [&] { SVIBP(&n, &k, &k, &k); });
}

// Natural patterns are divided as well as a vector in random order, on every level, and are not left to
// heapsort.
TYPED_TEST(Sort, PatternsAreDividedWell)
{
    constexpr int n = 200000;
    using std::abs, std::min, std::sin;
    double (*const places[])(int) = {[](int k) -> double { return abs(n / 2 - k); },  // V
                                     [](int k) -> double { return min(k, n - k); },   // pipe of organs
                                     [](int k) { return 1e9 * sin(6.2831853 * k / n); },
                                     [](int k) { return 1e9 * sin(62.831853 * k / n); },
                                     [](int k) -> double { return (k + n / 3) % n; },  // rotated
                                     [](int k) -> double { return (k + 1) % n; },
                                     [](int k) -> double { return k < n / 2 ? 2 * k : 2 * (k - n / 2) + 1; },
                                     [](int k) -> double { return k == n / 3 ? 0 : n - k; },
                                     [](int k) -> double { return k % 2 == 0 ? k : n - k; },
                                     [](int k) -> double { return k % (n / 100); }};  // saw teeth
    const auto sorted = [](std::vector<TypeParam> x) {
        const orvel::util::Difficulties met = orvel::util::sort_labelled(n, x.data(), nullptr);
        EXPECT_TRUE(std::is_sorted(x.begin(), x.end()));
        return met;
    };
    const std::vector<TypeParam> any = this->input(n, 0);
    on_every_level([&] {
        const orvel::util::Difficulties random = sorted(any);
        EXPECT_EQ(random.heapsorted, 0);
        for (const auto& place : places) {
            std::vector<TypeParam> x(n);
            for (int k = 0; k < n; ++k) x[static_cast<std::size_t>(k)] = static_cast<TypeParam>(place(k));
            const orvel::util::Difficulties met = sorted(x);
            EXPECT_LE(met.heapsorted, n / 1000) << &place - places;
            EXPECT_LE(met.bad_divisions, 2 * random.bad_divisions) << &place - places;
        }
    });
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
