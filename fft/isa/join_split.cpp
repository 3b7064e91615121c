// fft/isa/join_split.cpp - halves of a real sequence, joined and split, for the level ORVEL_ISA
#include "fft/isa/opposites.h"

namespace orvel::fft {

namespace {

template <class R, int W, int... k>
ORVEL_INLINE Vector<R, W> each_twice(Vector<R, W / 2> v, std::integer_sequence<int, k...>)
{
    if constexpr (W == 2)
        return Vector<R, W>{v, v};
    else
        return __builtin_shufflevector(v, v, k / 2 ...);
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
            c = each_twice<R, W>(isa::at<W / 2>(cosine), std::make_integer_sequence<int, W>());
            s = each_twice<R, W>(isa::at<W / 2>(sine), std::make_integer_sequence<int, W>());
        }
        return {c - (c * v + s * u), s - (s * v - c * u)};
    }
};

// Elements k..k+W-1 and their opposites.
template <class R, int W, bool join>
ORVEL_INLINE void halves_at(const Halves<R>& h, int64_t k, Complex<R, W> root)
{
    constexpr Lanes in_turn = Lanes::in_turn, back = Lanes::reversed;
    const int64_t opposite = h.m - k - W + 1;
    R *const low = h.c + 2 * k - 1, *const high = h.c + 2 * opposite - 1;
    if constexpr (join) {
        const Complex<R, W> a = {load_once<R, W>(h.re + k), load_once<R, W>(h.im + k)};
        const Complex<R, W> b = {load_once<R, W>(h.re + opposite), load_once<R, W>(h.im + opposite)};
        const Opposites<R, W> x = joined<R, W>(a, reversed(b), {root.re * R(0.5), root.im * R(0.5)});
        write_interleaved<R, W, in_turn>(low, x.low);
        write_interleaved<R, W, back>(high, x.high);
    } else {
        const Opposites<R, W> x =
            split(read_interleaved<R, W, in_turn>(low), read_interleaved<R, W, back>(high), root);
        const Complex<R, W> b = reversed(x.high);
        isa::at<W>(h.re + k) = x.low.re;
        isa::at<W>(h.im + k) = x.low.im;
        isa::at<W>(h.re + opposite) = b.re;
        isa::at<W>(h.im + opposite) = b.im;
    }
}

template <class R, int W, bool join>
ORVEL_INLINE void halves_from(const Halves<R>& h, int64_t begin, int64_t k, int64_t end, const R* cosine,
                              const R* sine)
{
    const Turns<R, W> turns(h);
    for (; end - k >= W; k += W) {
        const int64_t j = (k - begin) / 2;
        halves_at<R, W, join>(h, k, turns.roots(k, cosine + j, sine + j));
    }
    if constexpr (W > 1) halves_from<R, next_width<R, W>, join>(h, begin, k, end, cosine, sine);
}

template <class R, bool join>
void halves(const Halves<R>& all, int64_t begin, int64_t end, const R* cosine, const R* sine)
{
    const Halves<R> h = all;  // what is written is never part of it
    halves_from<R, lanes<R>, join>(h, begin, begin, end, cosine, sine);
}

}  // namespace

const isa::ForReals<JoinSplit> ORVEL_ISA::join_split_loops = {{halves<float, true>, halves<float, false>},
                                                              {halves<double, true>, halves<double, false>}};

}  // namespace orvel::fft
