// kernels/axpy.cpp - AXPY, SCAL, VCAL: multiples of a vector
#include "frame/export.h"
#include "kernels/entry.h"
#include "kernels/level1.h"
#include "orvel/kernels.h"

namespace orvel::kernels {

template <class T>
void axpy(int64_t n, T a, const T* x, int64_t incx, T* y, int64_t incy)
{
    if (n < 1 || a == T()) return;
    if (incx == 1 && incy == 1 && in_step(n, x, y)) {
        if constexpr (is_complex<T>)
            of_type<Part<T>>(update_loops()).complex_axpy(2 * n, a.real(), a.imag(), parts(x), parts(y));
        else
            of_type<Part<T>>(update_loops()).axpy(n, a, x, y);
        return;
    }
    const T* from = start(x, n, incx);
    T* to = start(y, n, incy);
    for (int64_t k = 0; k < n; ++k) to[k * incy] += a * from[k * incx];
}

namespace {

// y = a x for complex or real x; A is T, or the real type of a complex T.
template <class T, class A>
void multiple(int64_t n, A a, const T* x, int64_t incx, T* y, int64_t incy)
{
    if (incx == 1 && incy == 1 && in_step(n, x, y)) {
        if constexpr (is_complex<A>)
            of_type<Part<T>>(update_loops()).complex_scale(2 * n, a.real(), a.imag(), parts(x), parts(y));
        else
            of_type<Part<T>>(update_loops()).scale(Number<T>::parts * n, a, parts(x), parts(y));
        return;
    }
    for (int64_t k = 0; k < n; ++k) y[k * incy] = a * x[k * incx];
}

template <class T, class A>
void vcal(int64_t n, A a, const T* x, int64_t incx, T* y, int64_t incy)
{
    if (n >= 1) multiple(n, a, start(x, n, incx), incx, start(y, n, incy), incy);
}

template <class T, class A>
void scale_in_place(int64_t n, A a, T* x, int64_t incx)
{
    if (n >= 1 && incx >= 0) multiple<T>(n, a, x, incx, x, incx);
}

}  // namespace

template <class T>
void scal(int64_t n, T a, T* x, int64_t incx)
{
    scale_in_place(n, a, x, incx);
}

template void axpy(int64_t, float, const float*, int64_t, float*, int64_t);
template void axpy(int64_t, double, const double*, int64_t, double*, int64_t);
template void axpy(int64_t, orvel_complex, const orvel_complex*, int64_t, orvel_complex*, int64_t);
template void axpy(int64_t, orvel_dcomplex, const orvel_dcomplex*, int64_t, orvel_dcomplex*, int64_t);
template void scal(int64_t, float, float*, int64_t);
template void scal(int64_t, double, double*, int64_t);
template void scal(int64_t, orvel_complex, orvel_complex*, int64_t);
template void scal(int64_t, orvel_dcomplex, orvel_dcomplex*, int64_t);

}  // namespace orvel::kernels

using namespace orvel::kernels;

ORVEL_EXPORT_UPPER(SAXPY, 6, entry<axpy<float>>);
ORVEL_EXPORT_UPPER(DAXPY, 6, entry<axpy<double>>);
ORVEL_EXPORT_UPPER(CAXPY, 6, entry<axpy<orvel_complex>>);
ORVEL_EXPORT_UPPER(ZAXPY, 6, entry<axpy<orvel_dcomplex>>);
ORVEL_EXPORT_UPPER(SSCAL, 4, entry<scal<float>>);
ORVEL_EXPORT_UPPER(DSCAL, 4, entry<scal<double>>);
ORVEL_EXPORT_UPPER(CSCAL, 4, entry<scal<orvel_complex>>);
ORVEL_EXPORT_UPPER(ZSCAL, 4, entry<scal<orvel_dcomplex>>);
ORVEL_EXPORT_UPPER(CSSCAL, 4, (entry<scale_in_place<orvel_complex, float>>));
ORVEL_EXPORT_UPPER(ZDSCAL, 4, (entry<scale_in_place<orvel_dcomplex, double>>));
ORVEL_EXPORT(SVCAL, svcal_, 6, (entry<vcal<float, float>>));
ORVEL_EXPORT(DVCAL, dvcal_, 6, (entry<vcal<double, double>>));
ORVEL_EXPORT(CVCAL, cvcal_, 6, (entry<vcal<orvel_complex, orvel_complex>>));
ORVEL_EXPORT(ZVCAL, zvcal_, 6, (entry<vcal<orvel_dcomplex, orvel_dcomplex>>));
ORVEL_EXPORT(CSVCAL, csvcal_, 6, (entry<vcal<orvel_complex, float>>));
ORVEL_EXPORT(ZDVCAL, zdvcal_, 6, (entry<vcal<orvel_dcomplex, double>>));
