// fft/isa/known_roots.h - rounded roots of unity that the compiler knows
#pragma once

#include "fft/isa/root_table.h"

namespace orvel::fft {
namespace {

// All roots of the circle: those of the first eighth with the parts exchanged or their signs changed.
struct CircleRoots {
    double at[circle][4] = {};

    constexpr CircleRoots()
    {
        constexpr int quarter = circle / 4;
        for (int k = 0; k < circle; ++k) {
            const int turns = k / quarter, rest = k % quarter;
            const bool is_low = rest <= quarter / 2;
            const double* const root = eighth_roots[is_low ? rest : quarter - rest];
            const int cosine = is_low == (turns % 2 == 0) ? 0 : 2;
            for (int part = 0; part < 2; ++part) {
                const double x = root[cosine + part], y = root[2 - cosine + part];
                at[k][part] = turns == 1 || turns == 2 ? 0 - x : x;
                at[k][2 + part] = turns >= 2 ? 0 - y : y;
            }
        }
    }
};
constexpr CircleRoots circle_roots;

// A number as the nearest double and what it leaves.
struct TwoDoubles {
    double high, low;
};

// a * b. Source: T. J. Dekker, A floating-point technique for extending the available precision, 1971.
constexpr TwoDoubles exact_product(double a, double b)
{
    const double split = 0x1.0000002p27, a_up = split * a, b_up = split * b;
    const double a_high = a_up - (a_up - a), a_low = a - a_high;
    const double b_high = b_up - (b_up - b), b_low = b - b_high;
    const double product = a * b;
    return {product, a_high * b_high - product + a_high * b_low + a_low * b_high + a_low * b_low};
}

// a * b + c * d, rounded; all of them in two doubles.
constexpr double sum_of_products(TwoDoubles a, TwoDoubles b, TwoDoubles c, TwoDoubles d)
{
    const TwoDoubles x = exact_product(a.high, b.high), y = exact_product(c.high, d.high);
    const double sum = x.high + y.high, share = sum - x.high;
    const double left = (x.high - (sum - share)) + (y.high - share);
    const double low = a.high * b.low + a.low * b.high + (c.high * d.low + c.low * d.high);
    return sum + (left + (x.low + y.low + low));
}

// The cosines and sines of 2 pi k / n.
template <int n>
struct RoundedRoots {
    double cosine[n], sine[n];
};

template <int n>
constexpr RoundedRoots<n> rounded_roots()
{
    constexpr int parts = fine_circle / circle;
    RoundedRoots<n> roots = {};
    for (int k = 0; k < n; ++k) {
        const int at = fine_circle / n * k;
        const double *const a = circle_roots.at[at / parts], *const b = fine_roots[at % parts];
        const TwoDoubles c = {a[0], a[1]}, s = {a[2], a[3]}, u = {b[0], b[1]}, v = {b[2], b[3]};
        roots.cosine[k] = sum_of_products(c, u, s, {-v.high, -v.low});
        roots.sine[k] = sum_of_products(s, u, c, v);
    }
    return roots;
}
template <int n>
constexpr RoundedRoots<n> known_roots = rounded_roots<n>();

}  // namespace
}  // namespace orvel::fft
