// kernels/rotations.cpp - plane rotations and modified plane rotations
#include <cmath>

#include "frame/export.h"
#include "kernels/entry.h"
#include "orvel/kernels.h"

namespace orvel::kernels {

namespace {

// (x, y) = (h0 x + h1 y, h2 x + h3 y). Complex vectors are transformed by parts.
template <class T>
void transform(int64_t n, const Part<T> (&h)[4], T* x, int64_t incx, T* y, int64_t incy)
{
    if (incx == 1 && incy == 1 && in_step(n, x, y) && in_step(n, y, x)) {
        of_type<Part<T>>(update_loops()).transform(Number<T>::parts * n, h, parts(x), parts(y));
        return;
    }
    x = start(x, n, incx);
    y = start(y, n, incy);
    for (int64_t k = 0; k < n; ++k) {
        T &u = x[k * incx], &v = y[k * incy];
        const T kept = h[0] * u + h[1] * v;
        v = h[3] * v + h[2] * u;
        u = kept;
    }
}

template <class T>
void rot(int64_t n, T* x, int64_t incx, T* y, int64_t incy, Part<T> c, Part<T> s)
{
    transform<T>(n, {c, s, -s, c}, x, incx, y, incy);
}

// param: flag, h11, h21, h12, h22. The flag says which elements of the matrix have fixed values.
template <class T>
void rotm(int64_t n, T* x, int64_t incx, T* y, int64_t incy, const Part<T>* param)
{
    using R = Part<T>;
    const R flag = param[0];
    if (flag == -2) return;
    if (flag < 0)
        transform<T>(n, {param[1], param[3], param[2], param[4]}, x, incx, y, incy);
    else if (flag == 0)
        transform<T>(n, {R(1), param[3], param[2], R(1)}, x, incx, y, incy);
    else
        transform<T>(n, {param[1], R(1), R(-1), param[4]}, x, incx, y, incy);
}

// Scaling by a power of two adds no rounding error; c and s do not come from r, which may overflow.
template <class T>
void rotg(T* a, T* b, T* c, T* s)
{
    if (*a == 0 && *b == 0) {
        *a = *b = *s = 0;
        *c = 1;
        return;
    }
    const bool by_a = std::abs(*a) > std::abs(*b);
    const T largest = std::abs(by_a ? *a : *b);
    const int exponent = largest != 0 && std::isfinite(largest) ? std::ilogb(largest) : 0;
    const T u = std::scalbn(*a, -exponent), v = std::scalbn(*b, -exponent);
    const T r = std::copysign(std::sqrt(u * u + v * v), by_a ? u : v);
    *c = u / r;
    *s = v / r;
    *a = std::scalbn(r, exponent);
    *b = by_a ? *s : *c != 0 ? 1 / *c : T(1);
}

// The matrix of a modified rotation, with all four elements while it is rescaled.
template <class T>
struct Modified {
    T flag = -1, h11 = 0, h21 = 0, h12 = 0, h22 = 0;

    // A rescaled matrix has no fixed elements any more.
    void scale_row(T& first, T& second, T by)
    {
        first *= by;
        second *= by;
        flag = -1;
    }

    void store(T* param) const
    {
        param[0] = flag;
        if (flag != 0) param[1] = h11;
        if (flag <= 0) param[2] = h21;
        if (flag <= 0) param[3] = h12;
        if (flag != 0) param[4] = h22;
    }
};

// Brings d1 and d2 back into 2^-24 < |d| < 2^24, with x1 and the rows of the matrix after them. An infinite d
// stays as it is.
template <class T>
void rescale(Modified<T>& h, T* d1, T* d2, T* x1)
{
    const T gamma = 4096, high = gamma * gamma, low = 1 / high;
    const auto outside = [=](T d) {
        return d != 0 && std::isfinite(d) && (std::abs(d) <= low || std::abs(d) >= high);
    };
    while (outside(*d1)) {
        const bool small = std::abs(*d1) <= low;
        *d1 *= small ? high : low;
        *x1 *= small ? 1 / gamma : gamma;
        h.scale_row(h.h11, h.h12, small ? 1 / gamma : gamma);
    }
    while (outside(*d2)) {
        const bool small = std::abs(*d2) <= low;
        *d2 *= small ? high : low;
        h.scale_row(h.h21, h.h22, small ? 1 / gamma : gamma);
    }
}

template <class T>
void rotmg(T* d1, T* d2, T* x1, const T* y1, T* param)
{
    const T p2 = *d2 * *y1;
    if (p2 == 0 && !(*d1 < 0)) {
        param[0] = -2;
        return;
    }
    const T p1 = *d1 * *x1;
    const T q2 = p2 * *y1, q1 = p1 * *x1;
    Modified<T> h;
    bool possible = !(*d1 < 0);
    if (possible && std::abs(q1) > std::abs(q2)) {
        h = {0, 1, -*y1 / *x1, p2 / p1, 1};
        const T u = 1 - h.h12 * h.h21;
        possible = !(u <= 0);
        if (possible) {
            *d1 /= u;
            *d2 /= u;
            *x1 *= u;
        }
    } else if (possible && !(q2 < 0)) {
        h = {1, p1 / p2, -1, 1, *x1 / *y1};
        const T u = 1 + h.h11 * h.h22;
        const T kept = *d2 / u;
        *d2 = *d1 / u;
        *d1 = kept;
        *x1 = *y1 * u;
    } else {
        possible = false;
    }
    if (possible) {
        rescale(h, d1, d2, x1);
    } else {
        h = Modified<T>();
        *d1 = *d2 = *x1 = 0;
    }
    h.store(param);
}

}  // namespace

}  // namespace orvel::kernels

using namespace orvel::kernels;

ORVEL_EXPORT_UPPER(SROT, 7, entry<rot<float>>);
ORVEL_EXPORT_UPPER(DROT, 7, entry<rot<double>>);
ORVEL_EXPORT_UPPER(CSROT, 7, entry<rot<orvel_complex>>);
ORVEL_EXPORT_UPPER(ZDROT, 7, entry<rot<orvel_dcomplex>>);
ORVEL_EXPORT_UPPER(SROTG, 4, rotg);
ORVEL_EXPORT_UPPER(DROTG, 4, rotg);
ORVEL_EXPORT_UPPER(SROTM, 6, entry<rotm<float>>);
ORVEL_EXPORT_UPPER(DROTM, 6, entry<rotm<double>>);
ORVEL_EXPORT_UPPER(CSROTM, 6, entry<rotm<orvel_complex>>);
ORVEL_EXPORT_UPPER(ZDROTM, 6, entry<rotm<orvel_dcomplex>>);
ORVEL_EXPORT_UPPER(SROTMG, 5, rotmg);
ORVEL_EXPORT_UPPER(DROTMG, 5, rotmg);
