// kernels/utilities.cpp - ADD, SUB, XYZ, HPROD: constants added and subtracted, triple and elementwise
// products
#include "frame/export.h"
#include "kernels/entry.h"
#include "orvel/kernels.h"

namespace orvel::kernels {

namespace {

template <class T>
void add(int64_t n, T a, T* x, int64_t incx)
{
    if (incx == 1)
        of_type<Part<T>>(update_loops()).add(Number<T>::parts * n, first_part(a), second_part(a), parts(x));
    else if (incx >= 0)
        for (int64_t k = 0; k < n; ++k) x[k * incx] += a;
}

template <class T>
void sub(int64_t n, T a, T* x, int64_t incx)
{
    if (incx == 1)
        of_type<Part<T>>(update_loops())
            .subtract_from(Number<T>::parts * n, first_part(a), second_part(a), parts(x));
    else if (incx >= 0)
        for (int64_t k = 0; k < n; ++k) x[k * incx] = a - x[k * incx];
}

template <class T>
T xyz(int64_t n, const T* x, int64_t incx, const T* y, int64_t incy, const T* z, int64_t incz)
{
    if (incx == 1 && incy == 1 && incz == 1) return of_type<Part<T>>(sum_loops()).triple_products(n, x, y, z);
    x = start(x, n, incx);
    y = start(y, n, incy);
    z = start(z, n, incz);
    T sum = 0;
    for (int64_t k = 0; k < n; ++k) sum += x[k * incx] * y[k * incy] * z[k * incz];
    return sum;
}

template <class T>
void hprod(int64_t n, const T* x, int64_t incx, const T* y, int64_t incy, T* z, int64_t incz)
{
    if (incx == 1 && incy == 1 && incz == 1 && in_step(n, x, z) && in_step(n, y, z)) {
        of_type<Part<T>>(update_loops()).multiply(n, x, y, z);
        return;
    }
    x = start(x, n, incx);
    y = start(y, n, incy);
    z = start(z, n, incz);
    for (int64_t k = 0; k < n; ++k) z[k * incz] = x[k * incx] * y[k * incy];
}

}  // namespace

}  // namespace orvel::kernels

using namespace orvel::kernels;

ORVEL_EXPORT(SADD, sadd_, 4, entry<add<float>>);
ORVEL_EXPORT(DADD, dadd_, 4, entry<add<double>>);
ORVEL_EXPORT(CADD, cadd_, 4, entry<add<orvel_complex>>);
ORVEL_EXPORT(ZADD, zadd_, 4, entry<add<orvel_dcomplex>>);
ORVEL_EXPORT(SSUB, ssub_, 4, entry<sub<float>>);
ORVEL_EXPORT(DSUB, dsub_, 4, entry<sub<double>>);
ORVEL_EXPORT(CSUB, csub_, 4, entry<sub<orvel_complex>>);
ORVEL_EXPORT(ZSUB, zsub_, 4, entry<sub<orvel_dcomplex>>);
ORVEL_EXPORT(SXYZ, sxyz_, 7, entry<xyz<float>>);
ORVEL_EXPORT(DXYZ, dxyz_, 7, entry<xyz<double>>);
ORVEL_EXPORT(SHPROD, shprod_, 7, entry<hprod<float>>);
ORVEL_EXPORT(DHPROD, dhprod_, 7, entry<hprod<double>>);
