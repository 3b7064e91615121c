// special/log_gamma.cpp - ALNGAM and ALGAMS: logarithm and sign of the gamma function
#include <algorithm>
#include <iterator>

#include "frame/export.h"
#include "orvel/special.h"
#include "special/gamma.h"
#include "special/log_gamma_zeros.h"

namespace orvel::special {

namespace {

template <class T>
using Frame = Routine<T, "ALNGAM", "DLNGAM">;

// ln |Gamma(x)| at most 1 in magnitude, x < -2, from the way to the nearest zero: of the reflection formula
// each factor is divided by its value there.
double log_gamma_near_zero(double x)
{
    const int n = std::min(static_cast<int>(-x), static_cast<int>(std::size(log_gamma_zeros)) / 2 + 1);
    const LogGammaZero* const pair = log_gamma_zeros + 2 * (n - 2);
    const LogGammaZero& zero = pair[std::abs(x - pair[1].at) < std::abs(x - pair[0].at)];
    const double d = (zero.at - x) + zero.rest;
    const double sine = std::copysign(sin_pi<double>(std::abs(d)), d), half = sin_pi<double>(std::abs(d / 2));
    return -(std::log1p(zero.cotangent * sine - 2 * half * half) + d * power_sum(d, zero.growth));
}

// -10 <= x < -2 and not an integer: from the product x (x + 1) ... (x + n), each factor of which is exact,
// and what it loses.
double log_gamma_by_product(double x)
{
    const int n = 1 - static_cast<int>(x);
    double product = x, lost = 0.0;
    for (int k = 1; k <= n; ++k) {
        const isa::TwoDoubles<double> next = isa::two_product<true>(product, x + k);
        product = next.head;
        lost += next.tail / next.head;
    }
    isa::TwoDoubles<double> above = long_log_gamma_of_one_plus(x + n);
    above.tail -= lost;
    return difference(above, long_log(std::abs(product)));
}

// x < -10 and not an integer. Beside integers the terms of the logarithm would cancel, until they are large.
double log_gamma_of_large_negative(double x)
{
    const double y = -x, sine = std::abs(sin_pi<double>(y));
    if (y < 30.0) return std::log(pi / gamma_of_large<double>(y, y * sine));
    return half_log_half_pi - (y + 0.5) * (std::log(y) - 1.0) - 0.5 - std::log(sine) -
           stirling_correction<double>(y);
}

// Zero, negative and extreme arguments.
template <class T>
[[gnu::noinline]] double log_gamma_elsewhere(frame::State& s, T x)
{
    Frame<T> me(s);
    using Limits = GammaLimits<T>;
    constexpr double missing = static_cast<double>(machine<T>(6));
    const double wide = static_cast<double>(x);
    if (x != x) return missing;
    // Every error for |x| <= 10 is posted by the gamma function in its own frame. The way from a zero loses
    // more than the product unless it is short.
    if (std::abs(x) <= T(10)) {
        const double value = std::log(std::abs(gamma(s, x)));
        if (wide >= -2.0 || !(std::abs(value) < 1.0)) return value;
        return std::abs(value) < 1.0 / 32 ? log_gamma_near_zero(wide) : log_gamma_by_product(wide);
    }
    if (std::abs(x) > Limits::log_xmax) {
        me.post(terminal, 4, "The function overflows because ABS(%(R1)) is greater than %(R2).",
                {r(1, wide), r(2, static_cast<double>(Limits::log_xmax))});
        return missing;
    }
    if (x == std::trunc(x)) {
        me.post(terminal, 5,
                "The argument for the function can not be a negative integer. Argument X = %(R1).",
                {r(1, wide)});
        return missing;
    }
    const double far = log_gamma_of_large_negative(wide);
    const double result = std::abs(far) < 1.0 ? log_gamma_near_zero(wide) : far;
    if (std::abs(distance_from_pole(x) * static_cast<T>(result)) < Limits::dxrel)
        me.post(
            warning, 2,
            "The result is accurate to less than one half precision because X = %(R1) is too close to a negative integer.",
            {r(1, wide)});
    return result;
}

template <class T>
[[gnu::always_inline]] inline double log_gamma(frame::State& s, T x)
{
    using Limits = GammaLimits<T>;
    if (x >= Limits::xsml && x <= Limits::log_xmax) {
        Frame<T>::visit(s);
        const double wide = static_cast<double>(x);
        return x <= T(10) ? log_gamma_of_positive<T>(wide) : log_gamma_of_large<T>(wide);
    }
    return log_gamma_elsewhere(s, x);
}

template <class T>
T log_gamma_function(const T* x)
{
    return static_cast<T>(log_gamma(frame::state(), *x));
}

template <class T>
void log_gamma_with_sign(const T* x, T* algm, T* sign)
{
    const LogGamma<T> result = log_gamma_and_sign(frame::state(), *x);
    *algm = static_cast<T>(result.value);
    *sign = result.sign;
}

}  // namespace

template <class T>
LogGamma<T> log_gamma_and_sign(frame::State& s, T x)
{
    Routine<T, "ALGAMS", "DLGAMS"> me(s);
    const bool is_negative = x <= T(0) && std::fmod(std::trunc(-x), T(2)) == T(0);
    return {log_gamma(s, x), is_negative ? T(-1) : T(1)};
}

template LogGamma<float> log_gamma_and_sign(frame::State&, float);
template LogGamma<double> log_gamma_and_sign(frame::State&, double);

}  // namespace orvel::special

ORVEL_EXPORT_REALS(ALNGAM, alngam_, DLNGAM, dlngam_, 1, orvel::special::log_gamma_function);
ORVEL_EXPORT_REALS(ALGAMS, algams_, DLGAMS, dlgams_, 3, orvel::special::log_gamma_with_sign);
