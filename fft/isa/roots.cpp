// fft/isa/roots.cpp - cosines and sines of fractions of the circle, for the level ORVEL_ISA
//
// An angle is a multiple c of a 256th of the circle and a rest g of at most half of one, both from integers.
// The table has the root at c in two doubles; polynomials of sin(g) and 1 - cos(g) give a correction of at
// most 0.0123, so that the result is within 0.54 ulp of a part that is not small.
#include "fft/isa/loops.h"
#include "fft/isa/root_table.h"

namespace orvel::fft {

namespace {

template <class R>
void roots(int64_t n, int64_t start, int64_t step, int64_t count, int64_t stride, R* cosine, R* sine)
{
    const double part = static_cast<double>(circle) / static_cast<double>(n);
    const double unit = 6.283185307179586476925 / (static_cast<double>(circle) * static_cast<double>(n));
#pragma GCC ivdep
    for (int64_t k = 0; k < count; ++k) {
        const int64_t j = start + step * k;
        const int64_t c = static_cast<int64_t>(static_cast<double>(j) * part + 0.5);
        const double g = static_cast<double>(circle * j - c * n) * unit, gg = g * g;
        const double u = g + g * gg * (gg * (gg * (-1.0 / 5040) + 1.0 / 120) - 1.0 / 6);
        const double v = gg * (gg * (gg * (1.0 / 720) - 1.0 / 24) + 0.5);
        const double* const root = circle_roots[c & (circle - 1)];
        cosine[k * stride] = static_cast<R>(root[0] + (root[1] - (root[0] * v + root[2] * u)));
        sine[k * stride] = static_cast<R>(root[2] + (root[3] + (root[0] * u - root[2] * v)));
    }
}

}  // namespace

namespace ORVEL_ISA {
extern const RootLoop root_loop;
const RootLoop root_loop = {roots<float>, roots<double>};
}  // namespace ORVEL_ISA

}  // namespace orvel::fft
