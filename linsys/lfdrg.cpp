// linsys/lfdrg.cpp - LFDRG: determinant from a factorization
#include <limits>

#include "frame/export.h"
#include "linsys/checks.h"
#include "linsys/linsys.h"

namespace orvel::linsys {

namespace {

// The mantissa is brought to 1 <= |det1| < 10 after each factor; infinities and NaN stay. The
// magnitude of a complex mantissa is |Re| + |Im|. A factor that ten times would overflow is divided first.
template <class T>
void lfdrg(const int32_t* n, const T* fact, const int32_t* ldfac, const int32_t* ipvt, T* det1, Part<T>* det2)
{
    Routine<T, general<T>("LFDRG", "LFDCG")> me;
    check_order(me, 1, *n);
    if (me.failed()) return;
    check_ldfac(me, 2, *n, *ldfac);
    if (me.failed()) return;
    check_pivots(me, 3, *n, ipvt);
    if (me.failed()) return;
    T mantissa = 1;
    Part<T> exponent = 0;
    const auto size = [&mantissa] { return magnitude(mantissa); };
    const auto is_large = [](T x) {
        constexpr Part<T> large = std::numeric_limits<Part<T>>::max() / 100;
        return std::abs(std::real(x)) > large || std::abs(std::imag(x)) > large;
    };
    const auto is_finite = [&mantissa] {
        return std::isfinite(std::real(mantissa)) && std::isfinite(std::imag(mantissa));
    };
    for (int64_t k = 0; k < *n; ++k) {
        if (ipvt[k] != k + 1) mantissa = -mantissa;
        T factor = fact[k + k * *ldfac];
        if (is_large(factor)) factor /= Part<T>(100), exponent += 2;
        mantissa *= factor;
        if (mantissa == T(0)) break;
        while (size() < 1) mantissa *= Part<T>(10), exponent -= 1;
        while (size() >= 10 && is_finite()) mantissa /= Part<T>(10), exponent += 1;
    }
    *det1 = mantissa;
    *det2 = exponent;
}

}  // namespace

}  // namespace orvel::linsys

using namespace orvel::linsys;

ORVEL_EXPORT_ALL(LFDRG, lfdrg_, DLFDRG, dlfdrg_, LFDCG, lfdcg_, DLFDCG, dlfdcg_, 6, lfdrg);
