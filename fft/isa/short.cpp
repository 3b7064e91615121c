// fft/isa/short.cpp - transforms of short powers of two, for the level ORVEL_ISA
//
// Complex ones are the steps; real ones join or split halves behind or before them.
#include "fft/isa/opposites.h"
#include "fft/isa/short_steps.h"

namespace orvel::fft {

namespace {

template <class R, int n, Form form>
void complex_transform(const R* from, R* to, R* rows)
{
    transform<R, n, form, form>(from, to, rows);
}

// ---- real sequences -------------------------------------------------------------------------------------

// The elements in the opposite order, after the first one of the next vector.
template <class R, int W>
ORVEL_INLINE Vector<R, W> mirrored(Vector<R, W> v, Vector<R, W> next)
{
    if constexpr (W == 1)
        return next;
    else
        return shuffled<R, W>(v, next, [](int k) {
            const int element = element_of<R, W, Lanes::near>(k);
            return element == 0 ? W : lane_of<R, W, Lanes::near>(W - element);
        });
}
template <class R, int W>
ORVEL_INLINE Complex<R, W> mirrored(Complex<R, W> z, Complex<R, W> next)
{
    return {mirrored<R, W>(z.re, next.re), mirrored<R, W>(z.im, next.im)};
}

// The coefficients k..k+W-1 and m-k..m-k-W+1 of c(2m). Those of 0 and m are single numbers: the vectors that
// have them begin or end one number beside the others.
template <class R, int W>
ORVEL_INLINE Opposites<R, W> read_opposites(const R* c, int m, int k)
{
    constexpr Lanes near = Lanes::near, back = Lanes::near_reversed;
    const R* const end = c + 2 * (m - k - W + 1) - 1;
    if (k > 0) return {read_interleaved<R, W, near>(c + 2 * k - 1), read_interleaved<R, W, back>(end)};
    if constexpr (W == 1) {
        return {{*c, 0}, {*end, 0}};
    } else {
        const Vector<R, W> none = {};
        const Vector<R, W> first = shuffled<R, W>(isa::at<W>(c), none, [](int lane) {
            return lane == 0 ? 0 : lane == 1 ? W : lane - 1;
        });
        const Vector<R, W> last =
            shuffled<R, W>(isa::at<W>(end + W - 1), none, [](int lane) { return lane + 1; });
        return {deinterleaved<R, W, near>(first, isa::at<W>(c + W - 1)),
                deinterleaved<R, W, back>(isa::at<W>(end), last)};
    }
}
template <class R, int W>
ORVEL_INLINE void write_opposites(R* c, int m, int k, const Opposites<R, W>& x)
{
    constexpr Lanes near = Lanes::near, back = Lanes::near_reversed;
    R* const end = c + 2 * (m - k - W + 1) - 1;
    if (k > 0) {
        write_interleaved<R, W, near>(c + 2 * k - 1, x.low);
        write_interleaved<R, W, back>(end, x.high);
    } else if constexpr (W == 1) {
        *c = x.low.re;
        *end = x.high.re;
    } else {
        isa::at<W>(c) = interleaved<R, W, near>(x.low, [](int at) { return at == 0 ? 0 : at + 1; });
        isa::at<W>(c + W - 1) = interleaved<R, W, near>(x.low, [](int at) { return W + at; });
        isa::at<W>(end) = interleaved<R, W, back>(x.high, [](int at) { return at; });
        isa::at<W>(end + W - 1) = interleaved<R, W, back>(x.high, [](int at) { return W - 1 + at; });
    }
}

template <class R, int m, int W>
ORVEL_INLINE void join_block(const R* z, R* c, int k, Complex<R, W>& next)
{
    const R half = R(0.5);
    const Complex<R, W> a = take<R, W, Form::rows>(z, k), block = take<R, W, Form::rows>(z, m - k - W);
    const Complex<R, W> root = take<R, W, Form::rows>(half_roots<R, m>.at, k);
    write_opposites<R, W>(c, m, k, joined(a, mirrored(block, next), {root.re * half, root.im * half}));
    next = block;
}

// The transform of the halves may lie where the coefficients go: both ways every block is read before another
// is written over it.
template <class R, int m>
void real_forward(const R* from, R* to, R* rows)
{
    constexpr int W = lanes_of_steps<R>(m);
    R* const z = to;
    transform<R, m, Form::interleaved, Form::rows>(from, z, rows);
    Complex<R, W> next = take<R, W, Form::rows>(z, 0);
    const R middle_re = z[m], middle_im = z[m + W];
    join_block<R, m, W>(z, to, 0, next);
    if constexpr (m <= 128) {
#pragma GCC unroll 16
        for (int k = W; k < m / 2; k += W) join_block<R, m, W>(z, to, k, next);
    } else {
#pragma GCC unroll 1
        for (int k = W; k < m / 2; k += W) join_block<R, m, W>(z, to, k, next);
    }
    to[m - 1] = middle_re;
    to[m] = -middle_im;
}

// The transform is that of exchanged parts.
template <class R, int m, int W>
ORVEL_INLINE void split_block(const R* c, R* z, int k, Complex<R, W>& next)
{
    const Complex<R, W> root = take<R, W, Form::rows>(half_roots<R, m>.at, k);
    const Opposites<R, W> in = read_opposites<R, W>(c, m, k);
    const Opposites<R, W> x = split(in.low, in.high, root);
    put<R, W, Form::rows>(z, k, exchanged(x.low));
    put<R, W, Form::rows>(z, m - k - W, exchanged(mirrored(x.high, next)));
    next = x.high;
}

template <class R, int m>
void real_backward(const R* from, R* to, R* rows)
{
    constexpr int W = lanes_of_steps<R>(m);
    R* const z = to;
    Complex<R, W> next = {};
    if constexpr (W == 1) {
        next = {2 * from[m - 1], -2 * from[m]};
    } else {
        next.re[0] = 2 * from[m - 1];
        next.im[0] = -2 * from[m];
    }
    if constexpr (m <= 128) {
#pragma GCC unroll 16
        for (int k = m / 2 - W; k > 0; k -= W) split_block<R, m, W>(from, z, k, next);
    } else {
#pragma GCC unroll 1
        for (int k = m / 2 - W; k > 0; k -= W) split_block<R, m, W>(from, z, k, next);
    }
    split_block<R, m, W>(from, z, 0, next);
    transform<R, m, Form::rows, Form::exchanged>(z, to, rows);
}

template <class R, int... place>
constexpr ShortLoops<R> loops_of(std::integer_sequence<int, place...>)
{
    return {{{complex_transform<R, (4 << place), Form::interleaved>...},
             {complex_transform<R, (4 << place), Form::exchanged>...},
             {real_forward<R, (2 << place)>...},
             {real_backward<R, (2 << place)>...}}};
}
using Places = std::make_integer_sequence<int, short_lengths>;

}  // namespace

constinit const isa::ForReals<ShortLoops> ORVEL_ISA::short_loops = {loops_of<float>(Places()),
                                                                    loops_of<double>(Places())};

}  // namespace orvel::fft
