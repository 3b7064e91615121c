// fft/isa/halves.cpp - halves of a real sequence, joined and split, for the level ORVEL_ISA
#include "fft/isa/join.h"

namespace orvel::fft {

namespace {

template <class R, int W>
ORVEL_INLINE Vector<R, W> reversed(Vector<R, W> v)
{
    if constexpr (W == 1) {
        return v;
    } else {
        Order<R, W> order = {};
        for (int k = 0; k < W; ++k) order[k] = W - 1 - k;
        return __builtin_shuffle(v, order);
    }
}

template <class R, int W>
ORVEL_INLINE Complex<R, W> reversed(Complex<R, W> z)
{
    return {reversed<R, W>(z.re), reversed<R, W>(z.im)};
}

template <class R, int W>
ORVEL_INLINE Vector<R, W> each_twice(Vector<R, W / 2> v)
{
    if constexpr (W == 2)
        return Vector<R, W>{v, v};
    else if constexpr (W == 4)
        return __builtin_shufflevector(v, v, 0, 0, 1, 1);
    else if constexpr (W == 8)
        return __builtin_shufflevector(v, v, 0, 0, 1, 1, 2, 2, 3, 3);
    else
        return __builtin_shufflevector(v, v, 0, 0, 1, 1, 2, 2, 3, 3, 4, 4, 5, 5, 6, 6, 7, 7);
}

// What makes the roots k..k+W-1 from those of the even ones, for an even k where W > 1.
template <class R, int W>
struct Turns {
    Vector<R, W> u, v;

    ORVEL_INLINE explicit Turns(const Halves<R>& h)
    {
        if constexpr (W == 1) {
            u = h.u;
            v = h.v;
        } else {
            Vector<R, W> odd = {};  // a product: single numbers would go through memory, and wait there
            for (int t = 1; t < W; t += 2) odd[t] = 1;
            u = odd * h.u;
            v = odd * h.v;
        }
    }

    ORVEL_INLINE Complex<R, W> roots(int64_t k, const R* cosine, const R* sine) const
    {
        Vector<R, W> c, s;
        if constexpr (W == 1) {
            c = *cosine;
            s = *sine;
            if (k % 2 == 0) return {c, s};
        } else {
            c = each_twice<R, W>(load<R, W / 2>(cosine));
            s = each_twice<R, W>(load<R, W / 2>(sine));
        }
        return {c - (c * v + s * u), s - (s * v - c * u)};
    }
};

// Elements k..k+W-1 and their opposites.
template <class R, int W>
ORVEL_INLINE void join_at(const Halves<R>& h, int64_t k, Complex<R, W> root)
{
    const int64_t opposite = h.m - k - W + 1;
    const Parts<R> z = {h.re, h.im, 1}, c = {h.c - 1, h.c, 2};
    const Complex<R, W> a = read<R, W, Layout::apart>(z, k);
    const Complex<R, W> b = reversed<R, W>(read<R, W, Layout::apart>(z, opposite));
    const Opposites<R, W> x = joined<R, W>(a, b, {root.re * R(0.5), root.im * R(0.5)});
    write<R, W, Layout::pairs>(c, k, x.z);
    write<R, W, Layout::pairs, Lanes::reversed>(c, opposite, x.opposite);
}

template <class R, int W>
ORVEL_INLINE void split_at(const Halves<R>& h, int64_t k, Complex<R, W> root)
{
    const int64_t opposite = h.m - k - W + 1;
    const Parts<R> z = {h.re, h.im, 1}, c = {h.c - 1, h.c, 2};
    const Complex<R, W> a = read<R, W, Layout::pairs>(c, k);
    const Complex<R, W> b = read<R, W, Layout::pairs, Lanes::reversed>(c, opposite);
    const Opposites<R, W> x = split(a, b, root);
    write<R, W, Layout::apart>(z, k, x.z);
    write<R, W, Layout::apart>(z, opposite, reversed(x.opposite));
}

template <class R, int W, bool join>
ORVEL_INLINE void halves_from(const Halves<R>& h, int64_t begin, int64_t k, int64_t end, const R* cosine,
                              const R* sine)
{
    const Turns<R, W> turns(h);
    for (; end - k >= W; k += W) {
        const int64_t j = (k - begin) / 2;
        const Complex<R, W> root = turns.roots(k, cosine + j, sine + j);
        if constexpr (join)
            join_at<R, W>(h, k, root);
        else
            split_at<R, W>(h, k, root);
    }
    if constexpr (W > 1)
        halves_from<R, (W * static_cast<int>(sizeof(R)) > 16 ? W / 2 : 1), join>(h, begin, k, end, cosine,
                                                                                 sine);
}

template <class R, bool join>
void halves(const Halves<R>& all, int64_t begin, int64_t end, const R* cosine, const R* sine)
{
    const Halves<R> h = all;  // what is written is never part of it
    halves_from<R, kernels::lanes<R>, join>(h, begin, begin, end, cosine, sine);
}

}  // namespace

namespace ORVEL_ISA {
extern const HalvesLoops halves_loops;
const HalvesLoops halves_loops = {halves<float, true>, halves<float, false>, halves<double, true>,
                                  halves<double, false>};
}  // namespace ORVEL_ISA

}  // namespace orvel::fft
