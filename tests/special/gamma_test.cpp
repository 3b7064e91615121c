// tests/special/gamma_test.cpp - values, symmetries and every error of the gamma family
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "tests/support.h"

namespace {

using namespace orvel_test;

template <class T>
struct Members {
    using Real = T;
    static constexpr bool single = sizeof(T) == 4;
    static constexpr const char *prefix = single ? "" : "D", *log_name = single ? "ALNGAM" : "DLNGAM";
    static T gamma(T x) { return member<T>(GAMMA, DGAMMA)(&x); }
    static T log_gamma(T x) { return member<T>(ALNGAM, DLNGAM)(&x); }
    static T reciprocal(T x) { return member<T>(GAMR, DGAMR)(&x); }
    static T correction(T x) { return member<T>(R9LGMC, D9LGMC)(&x); }
    static void with_sign(T x, T* value, T* sign) { member<T>(ALGAMS, DLGAMS)(&x, value, sign); }
    static constexpr auto range = member<T>(R9GAML, D9GAML);
};

template <class P>
class Gamma : public Quiet {
protected:
    using Real = typename P::Real;
    static constexpr Real eps = std::numeric_limits<Real>::epsilon();
    static constexpr Real infinity = std::numeric_limits<Real>::infinity(),
                          tiny = std::numeric_limits<Real>::min(),
                          nan = std::numeric_limits<Real>::quiet_NaN();

    Gamma() { set_switches(0, 1, 0); }

    static void expect_close(Real value, double exact, double ulps, const std::string& what)
    {
        EXPECT_LE(std::abs(static_cast<double>(value) - exact),
                  ulps * static_cast<double>(eps) * std::abs(exact))
            << what;
    }

    struct Row {
        double x;
        Outcome outcome;
        const char* text;  // of the message, without line breaks
    };
    // Calls `function` for a row; its message, if any, is from `name`.
    template <class Function>
    Real expect(const Row& row, Function function, const std::string& name)
    {
        const Real value = function(static_cast<Real>(row.x));
        EXPECT_EQ(outcome(), row.outcome) << row.x;
        const std::string text = one_line(printed.take());
        EXPECT_NE(text.find(row.text), std::string::npos) << row.x << text;
        EXPECT_NE(text.find(" from " + name + ".  "), std::string::npos) << text;
        EXPECT_EQ(text.find("traceback"), std::string::npos) << text;
        EXPECT_EQ(std::isnan(value), row.outcome.type == 5) << row.x;
        return value;
    }

    Capture printed;
};

using Precisions = ::testing::Types<Members<float>, Members<double>>;
TYPED_TEST_SUITE(Gamma, Precisions);

// Values of all branches: reference digits computed with mpmath at 30 digits for the arguments as they stand.
TYPED_TEST(Gamma, ValuesOfEveryBranch)
{
    struct Row {
        double x, gamma, log_gamma;
    };
    // Arguments are exact in both precisions.
    const Row rows[] = {
        {0.5, 1.7724538509055160273, 0.57236494292470008707},
        {0.0009765625, 1023.4237493455678304, 6.9309089024194618895},
        {1.5, 0.88622692545275801365, -0.12078223763524522235},
        {2.25, 1.1330030963193463475, 0.1248717148923965943},
        {3.75, 4.4229884104602505629, 1.4868155785934170555},
        {10.0, 362880.0, 12.801827480081469611},
        {10.5, 1133278.3889487855673, 13.940625219403763633},
        {30.25, 2.062805313775346887e+31, 72.104204742007999824},
        {-0.5, -3.5449077018110320546, 1.2655121234846453965},
        {-1.5, 2.3632718012073547031, 0.86004701537648101451},
        {-9.25, 6.9503384943770399588e-6, -11.876720195346673467},
        {-10.5, -2.6401218205477163162e-7, -15.147270590717841146},
        {-20.75, -1.869850001195195727e-19, -43.12325855250222991},
    };
    for (const Row& row : rows) {
        const auto x = static_cast<typename TypeParam::Real>(row.x);
        const std::string what = "x = " + std::to_string(row.x);
        this->expect_close(TypeParam::gamma(x), row.gamma, 8, what);
        this->expect_close(TypeParam::log_gamma(x), row.log_gamma, 4, what);
        this->expect_close(TypeParam::reciprocal(x), 1.0 / row.gamma, 8, what);
        EXPECT_EQ(outcome(), (Outcome{0, 0})) << what;
    }
    for (int n = 1; n <= 2; ++n) {
        EXPECT_EQ(TypeParam::gamma(n), 1) << n;
        EXPECT_EQ(TypeParam::log_gamma(n), 0) << n;
    }
    EXPECT_EQ(this->printed.take(), "");
}

// Gamma(x + 1) = x Gamma(x) and the reflection formula tie neighbouring branches together, also at their
// seams.
TYPED_TEST(Gamma, RecurrenceAndReflection)
{
    using Real = typename TypeParam::Real;
    unsigned state = 12345;
    for (int k = 0; k < 2000; ++k) {
        state = state * 1664525u + 1013904223u;
        const Real x =
            std::ldexp(static_cast<Real>(static_cast<int>(state >> 10)) - Real(1 << 21), -17);  // -16 to 16
        if (std::abs(x - std::round(x)) < Real(0.01) || std::abs(x) > 15) continue;
        const double exact_x = static_cast<double>(x);
        const double g = static_cast<double>(TypeParam::gamma(x));
        // x + 1 and 1 - x are exact: x is a multiple of 2^-17 and small.
        this->expect_close(TypeParam::gamma(x + 1), exact_x * g, 12, "recurrence at " + std::to_string(x));
        const double product = g * static_cast<double>(TypeParam::gamma(1 - x));
        const double sine = std::sin(3.14159265358979323846 * std::remainder(exact_x, 1.0)) *
                            (std::remainder(std::round(exact_x), 2.0) == 0.0 ? 1 : -1);
        this->expect_close(static_cast<Real>(product * sine), 3.14159265358979323846, 16,
                           "reflection at " + std::to_string(x));
    }
    EXPECT_EQ(this->printed.take(), "");
}

// Where |Gamma| is 1 its logarithm keeps its relative accuracy, and 1 / Gamma is right as far as it is
// finite. Values as above, for arguments that are rounded to the precision first.
TYPED_TEST(Gamma, BesideZerosAndAtTheEnds)
{
    using Real = typename TypeParam::Real;
    constexpr bool single = sizeof(Real) == 4;
    struct Near {
        double x, in_double, in_single;  // an integer has no value
    };
    const Near zeros[] = {
        {-0x1.3a7fc9600f86cp+1, 5.6191923589500964509e-17, -1.1287842529645815756e-7},
        {-0x1.5fb410a1bd901p+1, 1.7335092440245008611e-16, -1.4418167987778364406e-7},
        {-0x1.9260dbc9e59afp+1, 1.6978655906121084302e-15, -1.9605461541614246695e-7},
        {-0x1.7fe93e93c3112p+2, 0.0026040146092145421809, 0.0025051957196351825911},
        {-0x1.2000000000001p+3, 21.16238436735584655, 0},
        {-0x1.7ffffffee1127p+3, -4.7999282550186212126e-8, 0},
        {-0x1.fffffffffffe5p+3, -0.0034851246475472554177, 0},
        {-40.75, -111.61223339289072749, -111.61223339289072749},
        {-1000.125, -5910.8864411311101966, -5910.8864411311101966},
    };
    for (const Near& row : zeros) {
        const auto x = static_cast<Real>(row.x);
        if (x == std::trunc(x)) continue;
        this->expect_close(TypeParam::log_gamma(x), single ? row.in_single : row.in_double, single ? 1 : 8,
                           "ln Gamma at " + std::to_string(row.x));
    }
    struct End {
        double x, exact, smallest;  // what a subnormal result may be off
    };
    const End ends[] = {
        {-170.96875, -3.2969375713375677083e+307, 0},    {-171 - 0x1p-40, 1.1286993596727138655e+297, 0},
        {-175 - 0x1p-45, 3.1958776704809152982e+304, 0}, {171.625, 5.544890680704912928e-309, 0x1p-1074},
        {177, 5.0529776809556651441e-321, 0x1p-1074},
    };
    for (const End& row : ends) {
        if (single) break;  // its arithmetic does not come to an end
        const auto value = static_cast<double>(TypeParam::reciprocal(static_cast<Real>(row.x)));
        EXPECT_NEAR(value, row.exact, 6 * 0x1p-52 * std::abs(row.exact) + row.smallest) << row.x;
    }
}

TYPED_TEST(Gamma, ErrorsOfTheFunction)
{
    using Real = typename TypeParam::Real;
    Real low, high;
    TypeParam::range(&low, &high);
    const double inf = HUGE_VAL, tiny = static_cast<double>(this->tiny),
                 off = sizeof(Real) == 4 ? 5e-4 : 1e-8;
    const double below = static_cast<double>(std::nextafter(low, Real(-1000))),
                 above = static_cast<double>(std::nextafter(high, Real(1000)));
    const char* const zero = "The argument for the function can not be zero.";
    const typename TestFixture::Row rows[] = {
        {below, {2, 1}, "The function underflows because X = "},
        {-inf, {2, 1}, "X = -Infinity is less than "},
        {-2.0 - off, {3, 2}, "The result is accurate to less than one half precision because X = -2.00"},
        {-30.0 - 2 * off, {3, 2}, "too close to a negative integer."},
        {above, {5, 4}, "The function overflows because X = "},
        {inf, {5, 4}, "X = Infinity is greater than "},
        {tiny, {5, 4}, "The function overflows because X = "},
        {-tiny, {5, 4}, " is too close to zero."},
        {0.0, {5, 5}, zero},
        {-0.0, {5, 5}, zero},
        {-3.0, {5, 6}, "The argument for the function can not be a negative integer. Argument X = -3.000000"},
        {-10.0, {5, 6}, "Argument X = -1.000000"},
        {-11.0,
         {5, 7},
         "The argument for the function can not be a negative integer. Argument X = -1.100000"},
    };
    set_switches(2, 1, 0);  // let underflows print
    for (const auto& row : rows) {
        const Real value = this->expect(row, TypeParam::gamma, std::string(TypeParam::prefix) + "GAMMA");
        EXPECT_TRUE(row.outcome.type != 2 || value == 0) << row.x;
    }
    EXPECT_NEAR(
        static_cast<double>(TypeParam::gamma(high)) / static_cast<double>(std::numeric_limits<Real>::max()),
        0.955, 0.02);  // ln Gamma grows by 0.01 * ln(xmax) to the end of the range
    EXPECT_NE(TypeParam::gamma(low + Real(0.5)), 0);
    EXPECT_EQ(outcome(), (Outcome{0, 0}));
    EXPECT_TRUE(std::isnan(TypeParam::gamma(this->nan)));
    EXPECT_EQ(outcome(), (Outcome{0, 0}));
}

TYPED_TEST(Gamma, ErrorsOfTheLogarithm)
{
    using Real = typename TypeParam::Real;
    const double largest = static_cast<double>(std::numeric_limits<Real>::max());
    const typename TestFixture::Row own[] = {
        {largest, {5, 4}, "The function overflows because ABS("},
        {-largest, {5, 4}, "The function overflows because ABS(-"},
        {HUGE_VAL, {5, 4}, "ABS(Infinity) is greater than "},
        {-12.0, {5, 5}, "can not be a negative integer. Argument X = -1.200000"},
        {-1e15, {5, 5}, "can not be a negative integer. Argument X = -1."},
        {-30.0 - (sizeof(Real) == 4 ? 1e-4 : 1e-10), {3, 2}, "less than one half precision because X = -3.0"},
    };
    for (const auto& row : own) this->expect(row, TypeParam::log_gamma, TypeParam::log_name);
    // For |x| <= 10 the gamma function posts, inside the logarithm, and the traceback shows both.
    for (const double x : {0.0, -4.0, 1e-310}) {
        EXPECT_TRUE(std::isnan(TypeParam::log_gamma(static_cast<Real>(x))));
        EXPECT_EQ(outcome().type, 5) << x;
        const std::string text = this->printed.take();
        EXPECT_NE(text.find(std::string(" from ") + TypeParam::prefix + "GAMMA.  "), std::string::npos)
            << text;
        const auto gamma_line = text.find(std::string("\n     ") + TypeParam::prefix + "GAMMA ");
        const auto log_line = text.find(std::string("\n     ") + TypeParam::log_name + " ");
        EXPECT_LT(gamma_line, log_line) << text;
        EXPECT_LT(log_line, text.find("\n     USER ")) << text;
    }
    EXPECT_EQ(TypeParam::log_gamma(static_cast<Real>(-2.0005)) > 6, true);
    EXPECT_EQ(outcome(), sizeof(Real) == 4 ? (Outcome{3, 2}) : (Outcome{0, 0}));
    EXPECT_TRUE(std::isnan(TypeParam::log_gamma(this->nan)));
    EXPECT_EQ(outcome(), (Outcome{0, 0}));
}

TYPED_TEST(Gamma, Sign)
{
    using Real = typename TypeParam::Real;
    struct Signed {
        double x;
        int sign;
    };
    const double odd =
        sizeof(Real) == 4 ? 4194303.0 : 2251799813685247.0;  // odd + 0.5 is exact in its precision
    const Signed rows[] = {{0.5, 1},  {30, 1},     {-0.5, -1}, {-1.5, 1},       {-2.5, -1},
                           {-9.5, 1}, {-10.5, -1}, {-11.5, 1}, {-odd - 0.5, 1}, {-odd + 0.5, -1}};
    for (const Signed& row : rows) {
        Real value, sign;
        TypeParam::with_sign(static_cast<Real>(row.x), &value, &sign);
        EXPECT_EQ(sign, row.sign) << row.x;
        EXPECT_EQ(value, TypeParam::log_gamma(static_cast<Real>(row.x))) << row.x;
        if (std::abs(row.x) < 30) {
            EXPECT_EQ(std::signbit(TypeParam::gamma(static_cast<Real>(row.x))), row.sign < 0) << row.x;
        }
    }
    Real value, sign;
    TypeParam::with_sign(static_cast<Real>(-1e30), &value, &sign);  // even: no parity is lost in a conversion
    EXPECT_EQ(sign, -1);
    EXPECT_EQ(outcome(), (Outcome{5, 5}));
}

TYPED_TEST(Gamma, Reciprocal)
{
    using Real = typename TypeParam::Real;
    for (const double x : {0.0, -3.0, -10.0, -11.0, -1e20}) {
        EXPECT_EQ(TypeParam::reciprocal(static_cast<Real>(x)), 0) << x;
        EXPECT_EQ(outcome(), (Outcome{0, 0})) << x;
    }
    // Close to a pole of Gamma the reciprocal is accurate, and the warning of the callee is taken back.
    const double step = sizeof(Real) == 4 ? 0x1p-12 : 0x1p-40;
    for (const double n : {2.0, 12.0}) {
        double slope = 1;  // 1 / Gamma(-n + s) = (-1)^n n! s + ...
        for (int k = 2; k <= n; ++k) slope *= k;
        const Real value = TypeParam::reciprocal(static_cast<Real>(-n + step));
        EXPECT_EQ(outcome(), (Outcome{0, 0})) << n;
        EXPECT_NEAR(static_cast<double>(value), slope * step, 4 * step * slope * step) << n;
    }
    EXPECT_EQ(this->printed.take(), "");
    EXPECT_EQ(TypeParam::reciprocal(Real(500)), 0);
    EXPECT_TRUE(std::isinf(TypeParam::reciprocal(Real(-500.5))));
    EXPECT_EQ(outcome(), (Outcome{0, 0}));
    for (const Real x : {this->tiny, this->infinity, -this->infinity}) {
        EXPECT_TRUE(std::isnan(TypeParam::reciprocal(x))) << x;
        EXPECT_EQ(outcome(), (Outcome{5, 4})) << x;
    }
}

TYPED_TEST(Gamma, Correction)
{
    using Real = typename TypeParam::Real;
    struct Value {
        double x, exact;
    };
    for (const Value& row : {Value{10, 8.3305634333628712565e-3}, Value{16, 5.2076559196096404407e-3},
                             Value{1000, 8.3333330555556349206e-5}, Value{1e9, 8.3333333333333333331e-11}})
        this->expect_close(TypeParam::correction(static_cast<Real>(row.x)), row.exact, 3,
                           std::to_string(row.x));
    set_switches(2, 1, 0);
    EXPECT_TRUE(std::isnan(TypeParam::correction(std::nextafter(Real(10), Real(0)))));
    EXPECT_EQ(outcome(), (Outcome{5, 5}));
    EXPECT_NE(one_line(this->printed.take()).find("must be greater than or equal to 10.0."),
              std::string::npos);
    EXPECT_EQ(TypeParam::correction(this->infinity), 0);
    EXPECT_EQ(outcome(), (Outcome{2, 1}));
    const std::string text = one_line(this->printed.take());
    EXPECT_NE(text.find(std::string("ALERT    ERROR 1 from ") + (sizeof(Real) == 4 ? "R9LGMC" : "D9LGMC")),
              std::string::npos)
        << text;
    EXPECT_NE(text.find("is greater than "), std::string::npos) << text;
    EXPECT_EQ(text.find('%'), std::string::npos) << text;
}

}  // namespace
