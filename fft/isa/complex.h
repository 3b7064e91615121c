// fft/isa/complex.h - vectors of complex numbers in split format, and how they are read and written
//
// Everything is local to the file that includes it: it is compiled once per instruction-set level.
#pragma once

#include <utility>

#include "fft/isa/loops.h"
#include "isa/vector.h"

#define ORVEL_INLINE inline __attribute__((always_inline))

#define ORVEL_LAMBDA __attribute__((always_inline))

// A function that stays one: neither inlined nor copied for the constants that it is called with.
#ifdef __clang__
#define ORVEL_SHARED __attribute__((noinline))
#else
#define ORVEL_SHARED __attribute__((noinline, noclone))
#endif

namespace orvel::fft {
namespace {

using isa::lanes;
using isa::Vector;

// Widths go down to four lanes of float and two of double, then to one.
template <class R, int W>
constexpr int next_width = W* static_cast<int>(sizeof(R)) > 16 ? W / 2 : 1;

template <class R, int W>
struct Complex {
    Vector<R, W> re, im;

    ORVEL_INLINE Complex operator+(Complex z) const { return {re + z.re, im + z.im}; }
    ORVEL_INLINE Complex operator-(Complex z) const { return {re - z.re, im - z.im}; }
};

// z * (cosine - i sine)
template <class R, int W, class V>
ORVEL_INLINE Complex<R, W> turned(Complex<R, W> z, V cosine, V sine)
{
    return {z.re * cosine + z.im * sine, z.im * cosine - z.re * sine};
}

// Forced into a register: compilers would rather read operands twice.
template <class R, int W>
ORVEL_INLINE Vector<R, W> load_once(const R* p)
{
    Vector<R, W> v = isa::at<W>(p);
#if defined(__AVX512F__)
    __asm__("" : "+v"(v));
#elif defined(__x86_64__)
    __asm__("" : "+x"(v));
#endif
    return v;
}

// Lane k of the result is lane order(k) of both vectors in a row.
template <class R, int W, class Order, int... k>
ORVEL_INLINE Vector<R, W> shuffled(Vector<R, W> a, Vector<R, W> b, Order order,
                                   std::integer_sequence<int, k...>)
{
    return __builtin_shufflevector(a, b, order(k)...);
}
template <class R, int W, class Order>
ORVEL_INLINE Vector<R, W> shuffled(Vector<R, W> a, Vector<R, W> b, Order order)
{
    return shuffled<R, W>(a, b, order, std::make_integer_sequence<int, W>());
}

// Which of W elements a lane has. Between interleaved and split numbers `near` is the cheapest order: each
// shuffle stays within 16 bytes.
enum class Lanes { in_turn, reversed, near, near_reversed };

template <class R>
constexpr int pairs_in_16_bytes = 8 / static_cast<int>(sizeof(R));

template <class R, int W, Lanes order>
constexpr int element_of(int lane)
{
    constexpr int half = pairs_in_16_bytes<R>, all = 2 * half;
    if (order == Lanes::reversed) return W - 1 - lane;
    if (order == Lanes::near_reversed) return W - 1 - element_of<R, W, Lanes::near>(lane);
    if (order == Lanes::in_turn || W <= all) return lane;
    return lane / all * half + lane % all / half * (W / 2) + lane % half;
}
template <class R, int W, Lanes order>
constexpr int lane_of(int element)
{
    int lane = 0;
    while (element_of<R, W, order>(lane) != element) ++lane;
    return lane;
}

// W interleaved numbers, the first parts as real ones.
template <class R, int W, Lanes order>
ORVEL_INLINE Complex<R, W> deinterleaved(Vector<R, W> low, Vector<R, W> high)
{
    return {shuffled<R, W>(low, high, [](int k) { return 2 * element_of<R, W, order>(k); }),
            shuffled<R, W>(low, high, [](int k) { return 2 * element_of<R, W, order>(k) + 1; })};
}
// The numbers number(0)..number(W-1) of 2 W interleaved ones.
template <class R, int W, Lanes order, class Number>
ORVEL_INLINE Vector<R, W> interleaved(Complex<R, W> z, Number number)
{
    return shuffled<R, W>(z.re, z.im, [number](int k) {
        return lane_of<R, W, order>(number(k) / 2) + (number(k) % 2 == 0 ? 0 : W);
    });
}

struct Cached {
    template <class R, int W>
    static ORVEL_INLINE void store(R* p, Vector<R, W> v)
    {
        isa::at<W>(p) = v;
    }
};

template <class R, int W>
ORVEL_INLINE Complex<R, W> exchanged(Complex<R, W> z)
{
    return {z.im, z.re};
}

template <class R, int W>
ORVEL_INLINE Complex<R, W> reversed(Complex<R, W> z)
{
    const auto order = [](int k) { return W - 1 - k; };
    if constexpr (W == 1)
        return z;
    else
        return {shuffled<R, W>(z.re, z.re, order), shuffled<R, W>(z.im, z.im, order)};
}

template <class R, int W, Lanes order>
ORVEL_INLINE Complex<R, W> read_interleaved(const R* p)
{
    if constexpr (W == 1)
        return {p[0], p[1]};
    else
        return deinterleaved<R, W, order>(isa::at<W>(p), isa::at<W>(p + W));
}
template <class R, int W, Lanes order, class Memory = Cached>
ORVEL_INLINE void write_interleaved(R* p, Complex<R, W> z)
{
    if constexpr (W == 1) {
        p[0] = z.re;
        p[1] = z.im;
    } else {
        Memory::template store<R, W>(p, interleaved<R, W, order>(z, [](int k) { return k; }));
        Memory::template store<R, W>(p + W, interleaved<R, W, order>(z, [](int k) { return W + k; }));
    }
}

// Two results that are found together: elements k and n - k of n.
template <class R, int W>
struct Opposites {
    Complex<R, W> low, high;
};

// How complex numbers lie in memory; see Parts.
enum class Layout { split, interleaved, exchanged };

template <class R>
ORVEL_INLINE Layout layout_of(const Parts<R>& p)
{
    return p.stride == 1 ? Layout::split : p.im > p.re ? Layout::interleaved : Layout::exchanged;
}

// In short loops within others, compilers would keep a pointer for each element of a column in memory and
// advance them all. So they must not know there that a pointer is another one plus a constant.
template <bool hide, class T>
ORVEL_INLINE T hidden(T x)
{
    if constexpr (hide) __asm__("" : "+r"(x));
    return x;
}
template <bool hide, class R>
ORVEL_INLINE Parts<R> hidden_from(const Parts<R>& p, int64_t e)
{
    return {hidden<hide>(p.re + e * p.stride), hidden<hide>(p.im + e * p.stride), p.stride};
}

// Calls work(j) for j < count, all written out.
template <int count, class Work>
ORVEL_INLINE void for_each(Work work)
{
#pragma GCC unroll 16
    for (int j = 0; j < count; ++j) work(j);
}

// Vectors of `count` elements that are `step` apart, from element `e` on. The layout is looked at once for
// all of them: that costs nothing beside a butterfly, and one function serves all layouts.
template <class R, int W, int count, Lanes of_interleaved>
ORVEL_INLINE void read(const Parts<R>& p, int64_t e, int64_t step, Layout layout, Complex<R, W>* z)
{
    if constexpr (W == 1) {
        for_each<count>([&](int j) {
            z[j] = {p.re[(e + j * step) * p.stride], p.im[(e + j * step) * p.stride]};
        });
    } else if (layout == Layout::split) {
        for_each<count>([&](int j) {
            z[j] = {load_once<R, W>(p.re + e + j * step), load_once<R, W>(p.im + e + j * step)};
        });
    } else if (layout == Layout::interleaved) {
        for_each<count>(
            [&](int j) { z[j] = read_interleaved<R, W, of_interleaved>(p.re + 2 * (e + j * step)); });
    } else {
        for_each<count>([&](int j) {
            z[j] = exchanged(read_interleaved<R, W, of_interleaved>(p.im + 2 * (e + j * step)));
        });
    }
}

// z[0], z[apart] ... to such elements, the lanes in turn.
template <class R, int W, int count, class Memory = Cached>
ORVEL_INLINE void write(const Parts<R>& p, int64_t e, int64_t step, Layout layout, const Complex<R, W>* z,
                        int apart)
{
    constexpr Lanes in_turn = Lanes::in_turn;
    if constexpr (W == 1) {
        for_each<count>([&](int j) {
            p.re[(e + j * step) * p.stride] = z[j * apart].re;
            p.im[(e + j * step) * p.stride] = z[j * apart].im;
        });
    } else if (layout == Layout::split) {
        for_each<count>([&](int j) {
            Memory::template store<R, W>(p.re + e + j * step, z[j * apart].re);
            Memory::template store<R, W>(p.im + e + j * step, z[j * apart].im);
        });
    } else if (layout == Layout::interleaved) {
        for_each<count>([&](int j) {
            write_interleaved<R, W, in_turn, Memory>(p.re + 2 * (e + j * step), z[j * apart]);
        });
    } else {
        for_each<count>([&](int j) {
            write_interleaved<R, W, in_turn, Memory>(p.im + 2 * (e + j * step), exchanged(z[j * apart]));
        });
    }
}

}  // namespace
}  // namespace orvel::fft
