// special/reciprocal_gamma.cpp - GAMR: the reciprocal of the gamma function, an entire function
#include "frame/export.h"
#include "orvel/special.h"
#include "special/gamma.h"

namespace orvel::special {

namespace {

// 1 / Gamma(x) for |x| > 10. A power of two, or what makes the reciprocal small beside an integer, keeps
// Gamma(|x|) in range; the logarithm, which would cost digits, serves where nothing does.
template <class T>
double reciprocal_of_large(T x, const LogGamma<T>& log_gamma)
{
    const double y = std::abs(static_cast<double>(x));
    if (y > largest_useful) return static_cast<double>(log_gamma.sign) * std::exp(-log_gamma.value);
    if (x < T(0)) return -gamma_of_large<T>(y, y * (sin_pi<T>(y) / pi));
    constexpr double small = 0x1p-300;
    return small / gamma_of_large<T>(y, small);
}

template <class T>
T reciprocal_gamma(const T* px)
{
    const T x = *px;
    Routine<T, "GAMR"> me;
    if (x <= T(0) && x == std::trunc(x) && std::isfinite(x)) return T(0);
    double result;
    if (std::abs(x) <= T(10))
        result = 1.0 / gamma(me.state(), x);
    else
        result = reciprocal_of_large(x, log_gamma_and_sign(me.state(), x));
    if (me.error_type() == terminal) return machine<T>(6);
    if (me.error_type() == warning) me.clear();
    return static_cast<T>(result);
}

}  // namespace

}  // namespace orvel::special

ORVEL_EXPORT_REALS(GAMR, gamr_, DGAMR, dgamr_, 1, orvel::special::reciprocal_gamma);
