// fft/isa/roots.cpp - cosines and sines of fractions of the circle, for the level ORVEL_ISA
//
// An angle is a multiple c of a 256th of the circle and a rest g of at most half of one, both from integers.
// The table has the root at c in two doubles; polynomials of sin(g) and 1 - cos(g) give a correction of at
// most 0.0123, so that the result is within 0.54 ulp of a part that is not small. Where angles are close,
// every eighth root is made so, and its neighbours from it by corrections of at most 0.05 (0.8 for single
// ones, of double): 0.6 ulp.
#include "fft/isa/loops.h"
#include "fft/isa/root_table.h"

namespace orvel::fft {

namespace {

typedef double Eight __attribute__((vector_size(64)));
constexpr int64_t eight = 8;

// A root is the head, a double, and a correction.
struct Root {
    double head[2], tail[2];
};

class Circle {
public:
    explicit Circle(int64_t n)
        : n_(n), part_(static_cast<double>(circle) / static_cast<double>(n)),
          unit_(6.283185307179586476925 / (static_cast<double>(circle) * static_cast<double>(n)))
    {}

    Root root(int64_t j) const
    {
        const int64_t c = static_cast<int64_t>(static_cast<double>(j) * part_ + 0.5);
        const double g = static_cast<double>(circle * j - c * n_) * unit_, gg = g * g;
        const double u = g + g * gg * (gg * (gg * (-1.0 / 5040) + 1.0 / 120) - 1.0 / 6);
        const double v = gg * (gg * (gg * (1.0 / 720) - 1.0 / 24) + 0.5);
        const double* const at = circle_roots[c & (circle - 1)];
        return {{at[0], at[2]}, {at[1] - (at[0] * v + at[2] * u), at[3] + (at[0] * u - at[2] * v)}};
    }

private:
    int64_t n_;
    double part_, unit_;
};

template <class R>
void store_eight(R* to, const Eight& x)
{
    typedef R Stored __attribute__((vector_size(8 * sizeof(R)), aligned(alignof(R)), may_alias));
    *reinterpret_cast<Stored*>(to) = __builtin_convertvector(x, Stored);
}

// The first roots in multiples of eight; returns how many.
template <class R>
int64_t neighbours(const Circle& of, int64_t start, int64_t step, int64_t count, R* cosine, R* sine)
{
    Eight u = {}, v = {};
    for (int t = 0; t < eight; ++t) {
        const Root r = of.root(step * (t < 4 ? 4 - t : t - 4));
        // 1 - cos = sin^2 / (1 + cos)
        const double c = r.head[0] + r.tail[0], s = r.head[1] + r.tail[1];
        u[t] = t < 4 ? -s : s;
        v[t] = s * s / (1 + c);
    }
    int64_t k = 0;
    for (; k + eight <= count; k += eight) {
        const Root r = of.root(start + step * (k + 4));
        const double c = r.head[0] + r.tail[0], s = r.head[1] + r.tail[1];
        store_eight(cosine + k, r.head[0] + (r.tail[0] - (c * v + s * u)));
        store_eight(sine + k, r.head[1] + (r.tail[1] + (c * u - s * v)));
    }
    return k;
}

template <class R>
void roots(int64_t n, int64_t start, int64_t step, int64_t count, int64_t stride, R* cosine, R* sine)
{
    const Circle of(n);
    int64_t k = 0;
    // Roots that are rounded to single can be further apart.
    constexpr int64_t least = sizeof(R) == sizeof(float) ? 32 : 512;
    if (stride == 1 && count >= 2 * eight && step * least <= n)
        k = neighbours(of, start, step, count, cosine, sine);
    for (; k < count; ++k) {
        const Root r = of.root(start + step * k);
        cosine[k * stride] = static_cast<R>(r.head[0] + r.tail[0]);
        sine[k * stride] = static_cast<R>(r.head[1] + r.tail[1]);
    }
}

}  // namespace

namespace ORVEL_ISA {
extern const RootLoop root_loop;
const RootLoop root_loop = {roots<float>, roots<double>};
}  // namespace ORVEL_ISA

}  // namespace orvel::fft
