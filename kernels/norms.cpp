// kernels/norms.cpp - ASUM, SUM, NRM2: sums of magnitudes, plain sums, Euclidean norms
#include <algorithm>
#include <cmath>

#include "frame/constants.h"
#include "frame/export.h"
#include "kernels/entry.h"
#include "kernels/level1.h"
#include "orvel/kernels.h"

namespace orvel::kernels {

namespace {

// Calls visit for every part of x.
template <class T, class F>
void each_part(int64_t n, const T* x, int64_t incx, F visit)
{
    for (int64_t k = 0; k < n; ++k)
        for (int64_t j = 0; j < Number<T>::parts; ++j) visit(parts(x + k * incx)[j]);
}

// Norm from the squares of parts divided by unit. Carried in double, so that a long vector of moderate
// numbers loses nothing to a large unit in single precision.
template <class T>
Part<T> scaled_norm(int64_t n, const T* x, int64_t incx, double unit)
{
    const double factor = 1 / unit;
    double sum = 0.0;
    each_part(n, x, incx, [&](Part<T> part) {
        const double scaled = factor * static_cast<double>(part);
        sum += scaled * scaled;
    });
    return static_cast<Part<T>>(unit * std::sqrt(sum));
}

template <class T>
T sum(int64_t n, const T* x, int64_t incx)
{
    if (n < 1 || incx < 0) return T();
    if (incx == 1) return of_type<Part<T>>(sum_loops()).sum(n, x);
    T total = 0;
    each_part(n, x, incx, [&](T part) { total += part; });
    return total;
}

}  // namespace

template <class T>
Part<T> asum(int64_t n, const T* x, int64_t incx)
{
    if (n < 1 || incx < 0) return 0;
    if (incx == 1) return of_type<Part<T>>(sum_loops()).magnitudes(Number<T>::parts * n, parts(x));
    Part<T> total = 0;
    each_part(n, x, incx, [&](Part<T> part) { total += std::abs(part); });
    return total;
}

// Sums of the magnitudes and of their squares. Magnitudes beyond 2 cuthi count as 2 cuthi, and elements
// behind a sum beyond cuthi are not looked at: neither changes what is decided by the first sum, and nothing
// overflows.
template <class T>
void norms(int64_t n, const T* x, int64_t incx, Part<T> cuthi, Part<T> s[2])
{
    using R = Part<T>;
    constexpr int64_t section = 1 << 18;
    const R most = 2 * cuthi;
    for (int64_t first = 0; first < n && !(s[0] > cuthi); first += section) {
        const int64_t here = std::min(section, n - first);
        R part_sums[2] = {0, 0};
        if (incx == 1)
            of_type<Part<T>>(sum_loops()).norms(Number<T>::parts * here, parts(x + first), most, part_sums);
        else
            each_part(here, x + first * incx, incx, [&](R part) {
                const R size = std::abs(part), cut = size > most ? most : size;
                part_sums[0] += cut;
                part_sums[1] += cut * cut;
            });
        s[0] += part_sums[0];
        s[1] += part_sums[1];
    }
}

// The path is decided by the sum of the magnitudes.
template <class T>
Part<T> nrm2(int64_t n, const T* x, int64_t incx)
{
    using R = Part<T>;
    const R cutlo = std::sqrt(machine<R>(1) / machine<R>(4));
    const R cuthi = std::sqrt(machine<R>(2) * machine<R>(4));
    if (n < 1 || incx < 0) return 0;
    if (incx == 0) {
        const R root = std::sqrt(static_cast<R>(n));
        if constexpr (is_complex<T>)
            return nrm2(1, x, 1) * root;
        else
            return std::abs(*x) * root;
    }
    R s[2] = {0, 0};
    norms(n, x, incx, cuthi, s);
    if (s[0] > cuthi) return scaled_norm(n, x, incx, static_cast<double>(cuthi) / static_cast<double>(cutlo));
    if (s[0] >= static_cast<R>(Number<T>::parts * n) * cutlo) return std::sqrt(s[1]);
    return scaled_norm(n, x, incx, static_cast<double>(cutlo) * static_cast<double>(machine<R>(4)));
}

template float asum(int64_t, const float*, int64_t);
template double asum(int64_t, const double*, int64_t);
template float asum(int64_t, const orvel_complex*, int64_t);
template double asum(int64_t, const orvel_dcomplex*, int64_t);
template float nrm2(int64_t, const float*, int64_t);
template double nrm2(int64_t, const double*, int64_t);
template float nrm2(int64_t, const orvel_complex*, int64_t);
template double nrm2(int64_t, const orvel_dcomplex*, int64_t);

}  // namespace orvel::kernels

using namespace orvel::kernels;

ORVEL_EXPORT_UPPER(SASUM, 3, entry<asum<float>>);
ORVEL_EXPORT_UPPER(DASUM, 3, entry<asum<double>>);
ORVEL_EXPORT_UPPER(SCASUM, 3, entry<asum<orvel_complex>>);
ORVEL_EXPORT_UPPER(DZASUM, 3, entry<asum<orvel_dcomplex>>);
ORVEL_EXPORT_UPPER(SNRM2, 3, entry<nrm2<float>>);
ORVEL_EXPORT_UPPER(DNRM2, 3, entry<nrm2<double>>);
ORVEL_EXPORT_UPPER(SCNRM2, 3, entry<nrm2<orvel_complex>>);
ORVEL_EXPORT_UPPER(DZNRM2, 3, entry<nrm2<orvel_dcomplex>>);
ORVEL_EXPORT(SSUM, ssum_, 3, entry<sum<float>>);
ORVEL_EXPORT(DSUM, dsum_, 3, entry<sum<double>>);
