// linsys/lfdrg.cpp - LFDRG: determinant from a factorization
#include "frame/export.h"
#include "linsys/checks.h"
#include "linsys/determinant.h"
#include "linsys/linsys.h"

namespace orvel::linsys {

namespace {

template <class T>
void lfdrg(const int32_t* n, const T* fact, const int32_t* ldfac, const int32_t* ipvt, T* det1, Part<T>* det2)
{
    Routine<T, name_of<T>("LFDRG", "LFDCG")> me;
    check_order(me, 1, *n);
    if (me.failed()) return;
    check_ldfac(me, 2, *n, *ldfac);
    if (me.failed()) return;
    check_pivots(me, 3, *n, ipvt);
    if (me.failed()) return;
    Determinant<T> product;
    for (int64_t k = 0; k < *n; ++k) {
        if (ipvt[k] != k + 1) product.mantissa = -product.mantissa;
        if (!product.multiply(fact[k + k * *ldfac])) break;
    }
    *det1 = product.mantissa;
    *det2 = product.exponent;
}

}  // namespace

}  // namespace orvel::linsys

using namespace orvel::linsys;

ORVEL_EXPORT_ALL(LFDRG, lfdrg_, DLFDRG, dlfdrg_, LFDCG, lfdcg_, DLFDCG, dlfdcg_, 6, lfdrg);
