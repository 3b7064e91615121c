// special/series.cpp - INITS and CSEVL: length and sum of Chebyshev series
#include "special/series.h"

#include <cmath>

#include "frame/constants.h"
#include "frame/export.h"
#include "frame/routine.h"
#include "orvel/special.h"

namespace orvel::special {

namespace {

template <class T>
int32_t inits(const T* os, const int32_t* nos, const float* eta)
{
    Routine<T, "INITS", "INITDS"> me;
    if (*nos < 1) {
        me.post(terminal, 5, "The number of coefficients is less than 1. NOS = %(I1).", {i(1, *nos)});
        return 0;
    }
    const int32_t length = series_length(os, *nos, *eta);
    if (length == *nos) {
        me.post(terminal, 6, "Too much accuracy may be requested. ETA should be increased.");
        return 0;
    }
    return length;
}

template <class T>
T csevl(const T* x, const T* cs, const int32_t* n)
{
    Routine<T, "CSEVL"> me;
    if (*n < 1)
        me.post(terminal, 5, "The number of terms in the series is not positive. N = %(I1).", {i(1, *n)});
    else if (*n > 1000)
        me.post(terminal, 6, "The number of terms in the series is greater than 1000. N = %(I1).",
                {i(1, *n)});
    if (me.failed()) return machine<T>(6);
    if (std::abs(*x) > static_cast<T>(1.1))
        me.post(warning, 7, "The argument X = %(R1) is outside the interval (-1.1,+1.1).",
                {r(1, static_cast<double>(*x))});
    return static_cast<T>(chebyshev_sum(static_cast<double>(*x), cs, *n));
}

}  // namespace

}  // namespace orvel::special

ORVEL_EXPORT_REALS(INITS, inits_, INITDS, initds_, 3, orvel::special::inits);
ORVEL_EXPORT_REALS(CSEVL, csevl_, DCSEVL, dcsevl_, 3, orvel::special::csevl);
