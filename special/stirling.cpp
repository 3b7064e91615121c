// special/stirling.cpp - R9LGMC and R9GAML: correction of Stirling's formula, range of the gamma function
#include "frame/export.h"
#include "orvel/special.h"
#include "special/gamma.h"

namespace orvel::special {

namespace {

template <class T>
T log_gamma_correction(const T* px)
{
    const T x = *px;
    Routine<T, "R9LGMC", "D9LGMC"> me;
    if (x < T(10)) {
        me.post(terminal, 5, "The argument X = %(R1) must be greater than or equal to 10.0.",
                {r(1, static_cast<double>(x))});
        return machine<T>(6);
    }
    if (x >= GammaLimits<T>::correction_xmax) {
        me.post(alert, 1,
                "The function underflows because X = %(R1) is greater than %(R2). The result is set to zero.",
                {r(1, static_cast<double>(x)), r(2, static_cast<double>(GammaLimits<T>::correction_xmax))});
        return T(0);
    }
    return static_cast<T>(stirling_correction<T>(static_cast<double>(x)));
}

template <class T>
void range(T* xmin, T* xmax)
{
    gamma_range(xmin, xmax);
}

}  // namespace

}  // namespace orvel::special

ORVEL_EXPORT_REALS(R9LGMC, r9lgmc_, D9LGMC, d9lgmc_, 1, orvel::special::log_gamma_correction);
ORVEL_EXPORT_REALS(R9GAML, r9gaml_, D9GAML, d9gaml_, 2, orvel::special::range);
