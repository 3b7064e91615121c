// kernels/copy.cpp - COPY, SWAP, SET: vectors moved, exchanged, filled
#include "frame/export.h"
#include "kernels/entry.h"
#include "kernels/level1.h"
#include "orvel/kernels.h"

namespace orvel::kernels {

template <class T>
void set(int64_t n, T a, T* x, int64_t incx)
{
    if (n < 1 || incx < 0) return;
    if (incx == 1)
        of_type<Part<T>>(update_loops()).set(Number<T>::parts * n, first_part(a), second_part(a), parts(x));
    else
        for (int64_t k = 0; k < n; ++k) x[k * incx] = a;
}

template <class T>
void copy(int64_t n, const T* x, int64_t incx, T* y, int64_t incy)
{
    if (n < 1) return;
    if (incx == 1 && incy == 1 && in_step(n, x, y)) {
        of_type<Part<T>>(update_loops()).copy(Number<T>::parts * n, parts(x), parts(y));
        return;
    }
    const T* from = start(x, n, incx);
    T* to = start(y, n, incy);
    for (int64_t k = 0; k < n; ++k) to[k * incy] = from[k * incx];
}

template <class T>
void swap(int64_t n, T* x, int64_t incx, T* y, int64_t incy)
{
    if (n < 1) return;
    if (incx == 1 && incy == 1 && in_step(n, x, y) && in_step(n, y, x)) {
        of_type<Part<T>>(update_loops()).swap(Number<T>::parts * n, parts(x), parts(y));
        return;
    }
    T* from = start(x, n, incx);
    T* to = start(y, n, incy);
    for (int64_t k = 0; k < n; ++k) {
        const T kept = from[k * incx];
        from[k * incx] = to[k * incy];
        to[k * incy] = kept;
    }
}

template void set(int64_t, float, float*, int64_t);
template void set(int64_t, double, double*, int64_t);
template void set(int64_t, orvel_complex, orvel_complex*, int64_t);
template void set(int64_t, orvel_dcomplex, orvel_dcomplex*, int64_t);
template void copy(int64_t, const float*, int64_t, float*, int64_t);
template void copy(int64_t, const double*, int64_t, double*, int64_t);
template void copy(int64_t, const orvel_complex*, int64_t, orvel_complex*, int64_t);
template void copy(int64_t, const orvel_dcomplex*, int64_t, orvel_dcomplex*, int64_t);
template void swap(int64_t, float*, int64_t, float*, int64_t);
template void swap(int64_t, double*, int64_t, double*, int64_t);
template void swap(int64_t, orvel_complex*, int64_t, orvel_complex*, int64_t);
template void swap(int64_t, orvel_dcomplex*, int64_t, orvel_dcomplex*, int64_t);

}  // namespace orvel::kernels

using namespace orvel::kernels;

ORVEL_EXPORT_UPPER(SCOPY, 5, entry<copy<float>>);
ORVEL_EXPORT_UPPER(DCOPY, 5, entry<copy<double>>);
ORVEL_EXPORT_UPPER(CCOPY, 5, entry<copy<orvel_complex>>);
ORVEL_EXPORT_UPPER(ZCOPY, 5, entry<copy<orvel_dcomplex>>);
ORVEL_EXPORT_UPPER(SSWAP, 5, entry<orvel::kernels::swap<float>>);
ORVEL_EXPORT_UPPER(DSWAP, 5, entry<orvel::kernels::swap<double>>);
ORVEL_EXPORT_UPPER(CSWAP, 5, entry<orvel::kernels::swap<orvel_complex>>);
ORVEL_EXPORT_UPPER(ZSWAP, 5, entry<orvel::kernels::swap<orvel_dcomplex>>);
ORVEL_EXPORT(SSET, sset_, 4, entry<set<float>>);
ORVEL_EXPORT(DSET, dset_, 4, entry<set<double>>);
ORVEL_EXPORT(CSET, cset_, 4, entry<set<orvel_complex>>);
ORVEL_EXPORT(ZSET, zset_, 4, entry<set<orvel_dcomplex>>);
