// fft/isa/roots.cpp - cosines and sines of fractions of the circle, for the level ORVEL_ISA
//
// An angle is a multiple c of a 256th of the circle and a rest g of at most half of one, both from whole
// numbers. The table has the root at c in two doubles; polynomials of sin(g) and 1 - cos(g) give a correction
// of at most 0.0123, so that the result is within 0.27 eps, 0.25 of which are the rounding. Where angles are
// close, only one of each group is made so, and its neighbours from it by corrections of at most 0.05: 0.31
// eps. Single roots are rounded from double ones, so that theirs may be further apart.
#include "fft/isa/known_roots.h"
#include "fft/isa/loops.h"
#include "isa/vector.h"

namespace orvel::fft {

namespace {

using isa::Vector;

// Lanes of numbers that come from the table, and of their neighbours.
constexpr int wide = isa::lanes<double>, lanes = wide < 4 ? wide : 4;
using Doubles = Vector<double, lanes>;
typedef int64_t Wholes __attribute__((vector_size(8 * lanes)));
constexpr int64_t smallest_group = 8, largest_group = 64;

#define ORVEL_INLINE inline __attribute__((always_inline))

// Some roots: each part is the head, a double, and a correction.
struct RootLanes {
    Doubles cosine_head, cosine_tail, sine_head, sine_tail;

    ORVEL_INLINE Doubles cosine() const { return cosine_head + cosine_tail; }
    ORVEL_INLINE Doubles sine() const { return sine_head + sine_tail; }
};

class Circle {
public:
    explicit Circle(int64_t n)
        : n_(static_cast<double>(n)), part_(circle / n_), unit_(6.283185307179586476925 / (circle * n_))
    {}

    // Roots start + step * i. They are whole numbers, and no product of them is rounded.
    ORVEL_INLINE RootLanes roots(int64_t start, int64_t step) const
    {
        Doubles j = {};
        for (int i = 0; i < lanes; ++i) j[i] = static_cast<double>(start + step * i);
        const double whole = 0x1.8p52;  // numbers beside it are whole, and their last bits those of c
        const Doubles rounded = j * part_ + whole, c = rounded - whole;
        const Wholes at = reinterpret_cast<Wholes>(rounded) & (circle - 1);
        const Doubles g = (circle * j - c * n_) * unit_, gg = g * g;
        const Doubles u = g + g * gg * (gg * (gg * (-1.0 / 5040) + 1.0 / 120) - 1.0 / 6);
        const Doubles v = gg * (gg * (gg * (1.0 / 720) - 1.0 / 24) + 0.5);
        Doubles x[4];
        for (int part = 0; part < 4; part += lanes) {
            Doubles rows[lanes];
            for (int i = 0; i < lanes; ++i) rows[i] = isa::at<lanes>(circle_roots.at[at[i]] + part);
            isa::transpose<double, lanes>(rows);
            for (int i = 0; i < lanes; ++i) x[part + i] = rows[i];
        }
        return {x[0], x[1] - (x[0] * v + x[2] * u), x[2], x[3] + (x[0] * u - x[2] * v)};
    }

private:
    double n_, part_, unit_;
};

template <class R>
ORVEL_INLINE void store_wide(R* to, const Vector<double, wide>& x)
{
    isa::at<wide>(to) = __builtin_convertvector(x, Vector<R, wide>);
}

// The sines of the angles from the middle of a group, and 1 minus their cosines.
struct Neighbours {
    double sine[largest_group], rest[largest_group];

    Neighbours(const Circle& of, int64_t step, int64_t group)
    {
        for (int64_t t = 0; t <= group / 2; t += lanes) {
            const RootLanes r = of.roots(step * t, step);
            const Doubles s = r.sine(), v = s * s / (1 + r.cosine());  // 1 - cos = sin^2 / (1 + cos)
            for (int64_t i = 0; i < lanes; ++i) {
                const int64_t up = group / 2 + t + i, down = group / 2 - t - i;
                if (up < group) {
                    sine[up] = s[i];
                    rest[up] = v[i];
                }
                if (down >= 0) {
                    sine[down] = -s[i];
                    rest[down] = v[i];
                }
            }
        }
    }
};

// The roots in whole vectors; returns how many.
template <class R>
int64_t by_groups(const Circle& of, int64_t group, int64_t start, int64_t step, int64_t count, R* cosine,
                  R* sine)
{
    const Neighbours near(of, step, group);
    int64_t k = 0;
    while (k + wide <= count) {
        const RootLanes middle = of.roots(start + step * (k + group / 2), step * group);
        const Doubles cosines = middle.cosine(), sines = middle.sine();
        for (int i = 0; i < lanes; ++i) {
            const double c = cosines[i], s = sines[i];
            const double c_head = middle.cosine_head[i], c_tail = middle.cosine_tail[i];
            const double s_head = middle.sine_head[i], s_tail = middle.sine_tail[i];
            for (int64_t t = 0; t < group && k + wide <= count; t += wide, k += wide) {
                const auto u = isa::at<wide>(near.sine + t);
                const auto v = isa::at<wide>(near.rest + t);
                store_wide<R>(cosine + k, c_head + (c_tail - (c * v + s * u)));
                store_wide<R>(sine + k, s_head + (s_tail + (c * u - s * v)));
            }
        }
    }
    return k;
}

template <class R>
void roots(int64_t n, int64_t start, int64_t step, int64_t count, int64_t stride, R* cosine, R* sine)
{
    const Circle of(n);
    int64_t k = 0;
    constexpr int64_t closest = sizeof(R) == sizeof(float) ? 4 : 64;
    if (stride == 1 && count >= 2 * smallest_group && closest * smallest_group * step <= n) {
        int64_t group = smallest_group;
        while (group < largest_group && group * group < count && 2 * closest * group * step <= n) group *= 2;
        k = by_groups(of, group, start, step, count, cosine, sine);
    }
    for (; k < count; k += lanes) {
        const RootLanes r = of.roots(start + step * k, step);
        const Doubles c = r.cosine(), s = r.sine();
        for (int i = 0; i < lanes && k + i < count; ++i) {
            cosine[(k + i) * stride] = static_cast<R>(c[i]);
            sine[(k + i) * stride] = static_cast<R>(s[i]);
        }
    }
}

}  // namespace

const isa::ForReals<RootLoop> ORVEL_ISA::root_loops = {roots<float>, roots<double>};

}  // namespace orvel::fft
