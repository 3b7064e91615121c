// kernels/dot.cpp - dot products
#include "frame/export.h"
#include "kernels/contiguous.h"
#include "kernels/level1.h"
#include "orvel/kernels.h"

namespace orvel::kernels {

namespace {

// The sum of the products of x and y, or of the conjugate of x and y, carried in the type W; its start is the
// plain loop of the others.
template <class W, bool conjugated, class T>
W products(int64_t n, const T* x, int64_t incx, const T* y, int64_t incy)
{
    constexpr bool wide = !std::is_same_v<W, T>;
    if (incx == 1 && incy == 1) {
        if constexpr (is_complex<T>) {
            Part<W> s[4];
            if constexpr (wide)
                wide_sum_loops().complex_products(2 * n, parts(x), parts(y), s);
            else
                of_type<Part<T>>(sum_loops()).complex_products(2 * n, parts(x), parts(y), s);
            return conjugated ? W(s[0] + s[1], s[2] - s[3]) : W(s[0] - s[1], s[2] + s[3]);
        } else if constexpr (wide) {
            return wide_sum_loops().products(n, x, y);
        } else {
            return of_type<Part<T>>(sum_loops()).products(n, x, y);
        }
    }
    x = start(x, n, incx);
    y = start(y, n, incy);
    W sum = W();
    for (int64_t k = 0; k < n; ++k) {
        const W left = static_cast<W>(x[k * incx]);
        sum += (conjugated ? conjugate(left) : left) * static_cast<W>(y[k * incy]);
    }
    return sum;
}

// The type in which T is carried with double length.
template <class T>
using Wide = std::conditional_t<is_complex<T>, orvel_dcomplex, double>;

template <bool conjugated, class T>
T from_start(int64_t n, T b, const T* x, int64_t incx, const T* y, int64_t incy)
{
    if (n < 1) return b;
    return static_cast<T>(static_cast<Wide<T>>(b) + products<Wide<T>, conjugated>(n, x, incx, y, incy));
}

// The start value counts even when there are no elements.
template <bool conjugated, class T>
T from_start_by_reference(const int32_t* n, const T* b, const T* x, const int32_t* incx, const T* y,
                          const int32_t* incy)
{
    return *n < 1 ? *b : from_start<conjugated>(*n, *b, x, *incx, y, *incy);
}

double dsdot(int64_t n, const float* x, int64_t incx, const float* y, int64_t incy)
{
    return products<double, false>(n, x, incx, y, incy);
}

orvel_complex czcdot(int64_t n, const orvel_complex* x, int64_t incx, const orvel_complex* y, int64_t incy)
{
    return static_cast<orvel_complex>(products<orvel_dcomplex, true>(n, x, incx, y, incy));
}

}  // namespace

template <class T>
T dot(int64_t n, const T* x, int64_t incx, const T* y, int64_t incy)
{
    return n < 1 ? T() : products<T, false>(n, x, incx, y, incy);
}

template <class T>
T dotc(int64_t n, const T* x, int64_t incx, const T* y, int64_t incy)
{
    return n < 1 ? T() : products<T, true>(n, x, incx, y, incy);
}

template float dot(int64_t, const float*, int64_t, const float*, int64_t);
template double dot(int64_t, const double*, int64_t, const double*, int64_t);
template orvel_complex dot(int64_t, const orvel_complex*, int64_t, const orvel_complex*, int64_t);
template orvel_dcomplex dot(int64_t, const orvel_dcomplex*, int64_t, const orvel_dcomplex*, int64_t);
template float dotc(int64_t, const float*, int64_t, const float*, int64_t);
template double dotc(int64_t, const double*, int64_t, const double*, int64_t);
template orvel_complex dotc(int64_t, const orvel_complex*, int64_t, const orvel_complex*, int64_t);
template orvel_dcomplex dotc(int64_t, const orvel_dcomplex*, int64_t, const orvel_dcomplex*, int64_t);

}  // namespace orvel::kernels

using namespace orvel::kernels;

ORVEL_EXPORT_UPPER_ALL(SDOT, DDOT, CDOTU, ZDOTU, 5, dot);
ORVEL_EXPORT_UPPER(CDOTC, 5, dotc<orvel_complex>);
ORVEL_EXPORT_UPPER(ZDOTC, 5, dotc<orvel_dcomplex>);
ORVEL_EXPORT_UPPER(DSDOT, 5, dsdot);
ORVEL_EXPORT_UPPER(SDSDOT, 6, (from_start_by_reference<false, float>));
ORVEL_EXPORT(CZDOTU, czdotu_, 6, (from_start_by_reference<false, orvel_complex>));
ORVEL_EXPORT(CZDOTC, czdotc_, 6, (from_start_by_reference<true, orvel_complex>));
ORVEL_EXPORT(CZCDOT, czcdot_, 5, czcdot);
