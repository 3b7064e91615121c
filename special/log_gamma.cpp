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

// ln |Gamma(x)| at most 1 in magnitude, x < -2, from the way to the nearest zero (or minimum between zeros):
// of the reflection formula each factor is divided by its value there.
double log_gamma_near_zero(double x)
{
    const int n = std::min(static_cast<int>(-x), static_cast<int>(std::size(log_gamma_zeros) + 1) / 2);
    const LogGammaZero* const first = log_gamma_zeros + (n == 2 ? 0 : 2 * n - 3);
    const LogGammaZero* const last = log_gamma_zeros + 2 * n - 1;
    const LogGammaZero& zero =
        *std::min_element(first, last, [x](const LogGammaZero& p, const LogGammaZero& q) {
            return std::abs(x - p.at) < std::abs(x - q.at);
        });
    const double d = (zero.at - x) + zero.rest;
    const double sine = std::copysign(sin_pi<double>(std::abs(d)), d), half = sin_pi<double>(std::abs(d / 2));
    return zero.value - (std::log1p(zero.cotangent * sine - 2 * half * half) + d * power_sum(d, zero.growth));
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
    const auto refined = [wide](double value) {
        return wide < -2.0 && std::abs(value) < 1.0 ? log_gamma_near_zero(wide) : value;
    };
    // Every error for |x| <= 10 is posted by the gamma function in its own frame.
    if (std::abs(x) <= T(10)) return refined(std::log(std::abs(gamma(s, x))));
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
    const double result = refined(log_gamma_of_large_negative(wide));
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
