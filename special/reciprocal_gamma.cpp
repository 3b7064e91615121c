// special/reciprocal_gamma.cpp - GAMR: the reciprocal of the gamma function, an entire function
#include "frame/export.h"
#include "orvel/special.h"
#include "special/gamma.h"

namespace orvel::special {

namespace {

// 1 / Gamma(x) for |x| > 10. The logarithm serves where Gamma(|x|) overflows; elsewhere it would cost digits.
template <class T>
double reciprocal_of_large(T x, const LogGamma<T>& log_gamma)
{
    const double y = std::abs(static_cast<double>(x));
    if (y > static_cast<double>(GammaLimits<T>::xmax))
        return static_cast<double>(log_gamma.sign) * std::exp(-log_gamma.value);
    const double g = gamma_of_large<T>(y);
    return x > T(0) ? 1.0 / g : -y * g * (sin_pi<T>(y) / pi);
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

ORVEL_EXPORT(GAMR, gamr_, 1, orvel::special::reciprocal_gamma<float>);
ORVEL_EXPORT(DGAMR, dgamr_, 1, orvel::special::reciprocal_gamma<double>);
