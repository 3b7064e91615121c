// tests/interp/spline_test.cpp - splines by the conditions that define them, their values, and every error
#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <random>
#include <vector>

#include "interp/interp.h"
#include "tests/levels.h"
#include "tests/support.h"

using namespace orvel_test;

namespace {

template <class T>
struct Members {
    using Real = T;
    static constexpr auto csint = member<T>(CSINT, DCSINT);
    static constexpr auto csdec = member<T>(CSDEC, DCSDEC);
    static constexpr auto csakm = member<T>(CSAKM, DCSAKM);
    static constexpr auto csper = member<T>(CSPER, DCSPER);
    static constexpr auto csval = member<T>(CSVAL, DCSVAL);
    static constexpr auto csder = member<T>(CSDER, DCSDER);
    static constexpr auto csvals = member<T>(CSVALS, DCSVALS);
    static constexpr auto csders = member<T>(CSDERS, DCSDERS);
    static constexpr auto csitg = member<T>(CSITG, DCSITG);
    static constexpr auto ppval = member<T>(PPVAL, DPPVAL);
    static constexpr auto ppder = member<T>(PPDER, DPPDER);
    static constexpr auto ppitg = member<T>(PPITG, DPPITG);
    static constexpr auto p3der = member<T>(P3DER, DP3DER);
    static constexpr const char* prefix = sizeof(T) == 4 ? "" : "D";
};

template <class P>
class Spline : public Quiet {
protected:
    using Real = typename P::Real;
    using Vector = std::vector<Real>;

    Spline() { set_switches(0, 1, 0); }

    // Points at unequal distances, in any order when shuffled.
    void make_data(int32_t count, bool shuffled)
    {
        n = count;
        const auto size = static_cast<std::size_t>(n);
        Vector at(size), value(size);
        for (std::size_t k = 0; k < size; ++k) {
            at[k] = (k == 0 ? Real(-1) : at[k - 1]) + Real(0.25) + uniform();
            value[k] = uniform();
        }
        std::vector<std::size_t> order(size);
        std::iota(order.begin(), order.end(), 0);
        if (shuffled) std::shuffle(order.begin(), order.end(), random);
        x.resize(size), f.resize(size), brkpt.assign(size, 0), c.assign(4 * size, 0);
        for (std::size_t k = 0; k < size; ++k) x[k] = at[order[k]], f[k] = value[order[k]];
        sorted_x = at, sorted_f = value;
    }
    Real uniform() { return static_cast<Real>(static_cast<double>(random()) * 0x1p-32); }

    template <class Constructor>
    void make(Constructor constructor)
    {
        constructor(&n, x.data(), f.data(), brkpt.data(), c.data());
    }

    double row(int j, int64_t piece) const
    {
        return static_cast<double>(c[static_cast<std::size_t>(4 * piece + j)]);
    }
    double width(int64_t k) const
    {
        return static_cast<double>(brkpt[k + 1]) - static_cast<double>(brkpt[k]);
    }
    // Derivative j at the right end of a piece.
    double right(int j, int64_t k) const
    {
        double v = 0;
        for (int m = 3; m >= j; --m) v = v / (m - j + 1) * width(k) + row(m, k);
        return v;
    }
    void near(double a, double b, const char* what, double eps = 2000) const
    {
        EXPECT_NEAR(a, b, eps * static_cast<double>(std::numeric_limits<Real>::epsilon()) * (1 + std::abs(b)))
            << what << ", n = " << n;
    }
    void expect_smooth(int highest)
    {
        EXPECT_EQ(outcome(), (Outcome{0, 0}));
        EXPECT_EQ(brkpt, sorted_x);
        for (int64_t k = 0; k < n; ++k) EXPECT_EQ(row(0, k), static_cast<double>(sorted_f[k]));
        for (int64_t k = 0; k + 1 < n; ++k)
            for (int j = 0; j <= (k + 2 < n ? highest : 1); ++j) near(right(j, k), row(j, k + 1), "smooth");
    }

    int32_t n = 0;
    Vector x, f, sorted_x, sorted_f, brkpt, c;
    std::mt19937 random{17};
    Capture printed;
};

using Precisions = ::testing::Types<Members<float>, Members<double>>;
TYPED_TEST_SUITE(Spline, Precisions);

TYPED_TEST(Spline, EndConditions)
{
    using Real = typename TypeParam::Real;
    const Real vleft = Real(0.75), vright = Real(-1.25);
    for (const int32_t n : {2, 3, 4, 5, 90})
        for (int32_t left = 0; left < 3; ++left)
            for (int32_t right = 0; right < 3; ++right) {
                SCOPED_TRACE(::testing::Message() << "ends " << left << right);
                this->make_data(n, n % 2 == 1);
                TypeParam::csdec(&n, this->x.data(), this->f.data(), &left, &vleft, &right, &vright,
                                 this->brkpt.data(), this->c.data());
                this->expect_smooth(2);
                const int64_t last = n - 2;
                const double third = n == 2 ? 0 : this->row(3, 1),
                             before = n == 2 ? 0 : this->row(3, last - 1);
                if (left == 0) this->near(this->row(3, 0), third, "not-a-knot on the left", 2e4);
                if (right == 0) this->near(this->row(3, last), before, "not-a-knot on the right", 2e4);
                if (left > 0) this->near(this->row(left, 0), static_cast<double>(vleft), "left");
                if (right > 0) this->near(this->right(right, last), static_cast<double>(vright), "right");
                if (left == 0 && right == 0) {
                    EXPECT_EQ(n == 2 ? this->row(2, 0) : 0, 0);
                    if (n == 3) this->near(third, 0, "parabola", 2e4);
                    const auto kept = this->c;
                    this->make(TypeParam::csint);
                    EXPECT_EQ(this->c, kept);
                }
            }
}

TYPED_TEST(Spline, Periodic)
{
    using Real = typename TypeParam::Real;
    for (const int32_t n : {4, 5, 6, 7, 301})
        for (const bool shuffled : {false, true}) {
            this->make_data(n, shuffled);
            *std::find(this->f.begin(), this->f.end(), this->sorted_f.back()) = this->sorted_f.front();
            this->sorted_f.back() = this->sorted_f.front();
            this->make(TypeParam::csper);
            this->expect_smooth(2);
            for (int j = 0; j < 3; ++j) this->near(this->right(j, n - 2), this->row(j, 0), "period");
        }
    const int32_t four = 4;
    const Real x[] = {3, 0, 1, 2}, f[] = {5, 1, 2, 0};
    Real brkpt[4], c[16];
    TypeParam::csper(&four, x, f, brkpt, c);
    EXPECT_EQ(outcome(), (Outcome{3, 1}));
    EXPECT_EQ(c[0], 1);
    EXPECT_EQ(c[12], 1);
    EXPECT_NE(
        one_line(this->printed.take())
            .find(sizeof(Real) == 4
                      ? "points, 0.000000E+00 and 3.000000E+00, are not equal.  They are 1.000000E+00 and "
                        "5.000000E+00,  respectively.  1.000000E+00 is used."
                      : "are not equal.  They are "),
        std::string::npos);
}

TYPED_TEST(Spline, Akima)
{
    using Real = typename TypeParam::Real;
    on_every_level([&] {
        for (const int32_t n : {4, 5, 129, 130, 131, 132, 400}) {
            this->make_data(n, n == 130);
            // Flat stretches, on both sides of which weights vanish.
            for (auto [at, f] : {std::pair{&this->x, &this->f}, {&this->sorted_x, &this->sorted_f}})
                for (std::size_t k = 0; k < f->size(); ++k)
                    if ((*at)[k] > 2 && (*at)[k] < 7) (*f)[k] = (*at)[k] < Real(4.5) ? Real(1) : Real(2);
            this->make(TypeParam::csakm);
            this->expect_smooth(1);
            const auto size = static_cast<std::size_t>(n);
            std::vector<Real> m(size + 3);  // m[k + 2] belongs to piece k
            for (std::size_t k = 0; k + 1 < size; ++k)
                m[k + 2] =
                    (this->sorted_f[k + 1] - this->sorted_f[k]) / (this->brkpt[k + 1] - this->brkpt[k]);
            for (const std::size_t k : {1, 0}) m[k] = 2 * m[k + 1] - m[k + 2];
            for (const std::size_t k : {size + 1, size + 2}) m[k] = 2 * m[k - 1] - m[k - 2];
            for (std::size_t k = 0; k < size; ++k) {
                const Real a = std::abs(m[k + 3] - m[k + 2]), b = std::abs(m[k + 1] - m[k]);
                const Real slope =
                    a + b == 0 ? (m[k + 1] + m[k + 2]) / 2 : (a * m[k + 1] + b * m[k + 2]) / (a + b);
                EXPECT_EQ(static_cast<Real>(this->row(1, static_cast<int64_t>(k))), slope)
                    << k << " of " << n;
            }
        }
    });
    const int32_t n = 4;
    const Real x[] = {0, 1, 2, 4}, f[] = {1, 4, 7, 13};  // a line
    Real brkpt[4], c[16];
    TypeParam::csakm(&n, x, f, brkpt, c);
    for (int k = 0; k < 3; ++k)
        EXPECT_EQ(std::vector(c + 4 * k, c + 4 * k + 4), (std::vector<Real>{f[k], 3, 0, 0}));
}

TYPED_TEST(Spline, ValuesAndIntegralsWithTheHintAnywhere)
{
    using Real = typename TypeParam::Real;
    for (const int32_t n : {2, 300, 3, 6000, 40}) {
        this->make_data(n, false);
        this->make(TypeParam::csint);
        const int32_t nintv = n - 1, order = 4;
        const std::vector<Real> left_ends(this->brkpt.begin(), this->brkpt.end() - 1);  // all that is read
        const Real *const b = left_ends.data(), end = this->brkpt.back();
        const auto piece = [&](Real at) { return std::upper_bound(b + 1, b + nintv, at) - b - 1; };
        double area[5] = {};
        const auto naive_integral = [&](Real to) {  // from the first break point
            double sum = 0;
            for (int64_t k = 0; k <= piece(to); ++k) {
                const double h = k == piece(to) ? static_cast<double>(to - b[k]) : this->width(k);
                for (int j = 3; j >= 0; --j) area[j] = h / (j + 1) * (this->row(j, k) + area[j + 1]);
                sum += area[0];
            }
            return sum;
        };
        for (int trial = 0; trial < 2000; ++trial) {
            const std::size_t any = this->random() % static_cast<unsigned>(nintv);
            const Real outside[] = {b[0] - 1, end + 1, b[any], std::nextafter(b[any], Real(-9))};
            const Real at = trial % 2 ? outside[trial / 2 % 4] : b[0] + (end - b[0]) * this->uniform();
            const int64_t k = piece(at);
            int32_t left;
            TypeParam::p3der(&order, &nintv, b, &at, &left);
            ASSERT_EQ(left, k + 1);
            const Real h = at - b[k], *const c = this->c.data() + 4 * k;
            const Real value = c[0] + (c[1] + (c[2] + c[3] / 3 * h) / 2 * h) * h;
            const Real expected[] = {value, c[1] + (c[2] + c[3] / 2 * h) * h, c[2] + c[3] * h, c[3], 0, 0};
            for (int32_t j = 0; j < 6; ++j)
                ASSERT_EQ(TypeParam::csder(&j, &at, &nintv, b, this->c.data()), expected[j]) << j;
            ASSERT_EQ(TypeParam::csval(&at, &nintv, b, this->c.data()), expected[0]);
            const Real other = b[any];
            const Real integral = TypeParam::csitg(&at, &other, &nintv, b, this->c.data());
            ASSERT_EQ(integral, -TypeParam::csitg(&other, &at, &nintv, b, this->c.data()));
            this->near(static_cast<double>(integral), naive_integral(other) - naive_integral(at), "integral",
                       20.0 * n);
        }
        const Real nan = std::numeric_limits<Real>::quiet_NaN();
        EXPECT_TRUE(std::isnan(TypeParam::csval(&nan, &nintv, b, this->c.data())));
        EXPECT_TRUE(std::isnan(TypeParam::csitg(&nan, b, &nintv, b, this->c.data())));
        EXPECT_EQ(TypeParam::csitg(b, b, &nintv, b, this->c.data()), 0);
    }
    // Order 5 and order 1: x^4 about 1 and a step.
    const Real brkpt[] = {1, 2, 3}, quartic[] = {1, 4, 12, 24, 24, 16, 32, 48, 48, 24}, step[] = {2, 5};
    const Real x = Real(2.5), low = 1, high = 3;
    const int32_t five = 5, one = 1, two = 2;
    EXPECT_EQ(TypeParam::ppval(&x, &five, &two, brkpt, quartic), Real(39.0625));
    EXPECT_EQ(TypeParam::ppder(&two, &x, &five, &two, brkpt, quartic), Real(75));
    EXPECT_NEAR(TypeParam::ppitg(&low, &high, &five, &two, brkpt, quartic), 48.4, 1e-5);
    EXPECT_EQ(TypeParam::ppitg(&low, &x, &one, &two, brkpt, step), Real(4.5));
}

// A million pieces of order 1 lose no more than a few.
TYPED_TEST(Spline, IntegralOfManyPieces)
{
    using Real = typename TypeParam::Real;
    const int32_t pieces = 1000000, one = 1;
    std::vector<Real> at(pieces + 1), step(pieces);
    long double exact = 0;
    for (std::size_t k = 0; k < at.size(); ++k) at[k] = static_cast<Real>(k);
    for (Real& value : step) exact += static_cast<long double>(value = 1 + this->uniform() / 3);
    const Real integral = TypeParam::ppitg(&at.front(), &at.back(), &one, &pieces, at.data(), step.data());
    EXPECT_NEAR(static_cast<double>(integral / static_cast<Real>(exact)), 1,
                2 * static_cast<double>(std::numeric_limits<Real>::epsilon()));
    const Real large[] = {std::numeric_limits<Real>::max(), std::numeric_limits<Real>::max()};
    const int32_t two = 2;
    EXPECT_TRUE(std::isinf(TypeParam::ppitg(&at[0], &at[2], &one, &two, at.data(), large)));
}

// Multiplied by powers of two, data give the same bits with other exponents as far as these are normal.
TYPED_TEST(Spline, FollowsTheScaleOfTheDataOnEveryLevel)
{
    using Real = typename TypeParam::Real;
    using Limits = std::numeric_limits<Real>;
    this->make_data(24, false);
    this->f.back() = this->f.front();
    const int32_t n = this->n, pieces = n - 1;
    const auto multiply = [](Real& v, int exponent) {  // whether the product is normal, with room
        const bool is_zero = v == 0;
        v = std::ldexp(v, exponent);
        return is_zero || (std::abs(v) >= 64 * Limits::min() && std::isfinite(v));
    };
    const auto construct = [&](int kind, const auto& x, const auto& f, Real first, Real second, auto& b,
                               auto& c) {
        const auto plain = kind == 0 ? TypeParam::csint : kind == 1 ? TypeParam::csakm : TypeParam::csper;
        const int32_t left = kind == 3 ? 1 : 2, right = 3 - left;
        if (kind < 3) return plain(&n, x.data(), f.data(), b.data(), c.data());
        if (left == 2) std::swap(first, second);
        TypeParam::csdec(&n, x.data(), f.data(), &left, &first, &right, &second, b.data(), c.data());
    };
    const int range = Limits::max_exponent;
    for (int kind = 0; kind < 5; ++kind) {
        construct(kind, this->x, this->f, Real(0.75), Real(-1.5), this->brkpt, this->c);
        int scales = 0;
        const auto on_all_scales = [&] {
            for (int a = -range; a <= range; a += range / 32)
                for (int e = -range; e <= range; e += range / 32) {
                    auto x = this->x, f = this->f, expected = this->c, b = x, c = expected;
                    bool possible = true;
                    for (Real& v : x) possible &= multiply(v, a);
                    for (Real& v : f) possible &= multiply(v, e);
                    for (std::size_t k = 0; k + 2 < expected.size(); ++k)
                        possible &= multiply(expected[k], e - static_cast<int>(k % 4) * a);
                    if (!possible) continue;
                    ++scales;
                    construct(kind, x, f, std::ldexp(Real(0.75), e - a), std::ldexp(Real(-1.5), e - 2 * a), b,
                              c);
                    ASSERT_EQ(c, expected) << kind << " x by 2^" << a << ", f by 2^" << e;
                    const Real at = (this->x[5] + this->x[6]) / 2, wide = std::ldexp(at, a);
                    for (int32_t j = 0; j < 4; ++j)
                        ASSERT_EQ(
                            TypeParam::csder(&j, &wide, &pieces, b.data(), c.data()),
                            std::ldexp(TypeParam::csder(&j, &at, &pieces, this->brkpt.data(), this->c.data()),
                                       e - j * a))
                            << kind << " " << a << " " << e << " " << j << " at " << at << " " << wide;
                    Real integral =
                        TypeParam::csitg(&at, &this->x[20], &pieces, this->brkpt.data(), this->c.data());
                    if (multiply(integral, a + e)) {
                        ASSERT_EQ(TypeParam::csitg(&wide, &x[20], &pieces, b.data(), c.data()), integral);
                    }
                }
        };
        on_every_level(on_all_scales);
        EXPECT_GT(scales, 100) << kind;
    }
}

// Akima's slopes are local: what is small beside large neighbours is as good as alone.
TYPED_TEST(Spline, AkimaKeepsSmallDataBesideLargeOnes)
{
    using Real = typename TypeParam::Real;
    this->make_data(24, false);
    const int32_t n = this->n, exponent = -std::numeric_limits<Real>::max_exponent / 2 - 8;
    auto f = this->f, alone = this->c;
    for (std::size_t k = 10; k < f.size(); ++k) f[k] = std::ldexp(f[k], exponent);
    TypeParam::csakm(&n, this->x.data(), this->f.data(), this->brkpt.data(), alone.data());
    TypeParam::csakm(&n, this->x.data(), f.data(), this->brkpt.data(), this->c.data());
    for (std::size_t k = 4 * 13; k + 2 < alone.size(); ++k)
        ASSERT_EQ(this->c[k], std::ldexp(alone[k], exponent)) << k;
}

TYPED_TEST(Spline, Errors)
{
    using Real = typename TypeParam::Real;
    const auto posted = [&](const std::string& name, int code, const std::string& text) {
        const std::string all = one_line(this->printed.take()), number = std::to_string(code);
        const std::string line =
            "TERMINAL ERROR " + number + " from " + TypeParam::prefix + name + ".  " + text;
        EXPECT_NE(all.find(line), std::string::npos) << line << all;
    };
    const Real x[] = {3, 1, 2, 1}, ascending[] = {0, 1, 1, 2}, f[] = {1, 2, 3, 4}, nan = std::nanf("");
    Real b[8], c[32];
    const int32_t four = 4;
    const std::string equal = "Points in the data point abscissas array, XDATA, must be distinct, but ";
    const std::string value = sizeof(Real) == 4 ? "1.000000E+00." : "1.00000000000000";
    for (const auto constructor : {TypeParam::csint, TypeParam::csakm, TypeParam::csper}) {
        constructor(&four, x, f, b, c);
        EXPECT_EQ(outcome(), (Outcome{5, 2}));
        posted("C1SOR", 2, equal + "XDATA(2) = XDATA(4) = " + value);
        constructor(&four, ascending, f, b, c);
        posted("C1SOR", 2, equal + "XDATA(2) = XDATA(3) = " + value);
    }
    const Real missing[] = {1, nan, 0, 2};  // ends, with NaN in the coefficients
    for (const auto constructor : {TypeParam::csint, TypeParam::csakm, TypeParam::csper})
        constructor(&four, missing, f, b, c);
    EXPECT_EQ(b[2], 2);
    EXPECT_TRUE(std::isnan(b[3]));
    this->printed.take();
}

// Many points at once give what calls one by one give, whatever their order and whatever is among them.
TYPED_TEST(Spline, ManyPointsHaveTheBitsOfSinglePoints)
{
    using Real = typename TypeParam::Real;
    for (const int32_t n : {4, 5, 60, 5000}) {
        this->make_data(n, false);
        this->make(TypeParam::csint);
        const Real* const b = this->brkpt.data();
        const Real low = b[0], width = b[n - 1] - low;
        std::mt19937 random(9);
        std::uniform_real_distribution<Real> anywhere(low - width / 8, low + width * 9 / 8);
        std::vector<Real> x(203);
        for (Real& at : x) at = anywhere(random);
        std::sort(x.begin() + 40, x.begin() + 100);  // ascending between points at random
        std::copy_n(b, 4, x.begin() + 120);
        x[50] = std::nanf("");
        x[150] = -std::numeric_limits<Real>::infinity();
        x[151] = std::numeric_limits<Real>::infinity();
        for (const int32_t pieces : {1, 2, n - 1})
            for (const int32_t points : {1, 15, 16, 17, 203})
                for (int32_t ideriv = 0; ideriv < 5; ++ideriv) {
                    std::vector<Real> values(x.begin(), x.begin() + points);  // in place
                    values.push_back(77);
                    if (ideriv == 0)
                        TypeParam::csvals(&points, values.data(), &pieces, b, this->c.data(), values.data());
                    else
                        TypeParam::csders(&ideriv, &points, values.data(), &pieces, b, this->c.data(),
                                          values.data());
                    EXPECT_EQ(values.back(), 77);
                    for (int32_t k = 0; k < points; ++k) {
                        const Real one = TypeParam::csder(&ideriv, &x[k], &pieces, b, this->c.data());
                        ASSERT_TRUE(values[k] == one || (std::isnan(values[k]) && std::isnan(one)))
                            << n << " " << pieces << " " << ideriv << " at " << x[k];
                    }
                }
    }
    EXPECT_EQ(this->printed.take(), "");
}

}  // namespace
