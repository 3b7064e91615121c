// fft/isa/short.cpp - transforms of short powers of two, for the level ORVEL_ISA
//
// Complex ones are the steps; real ones join or split halves behind or before them.
#include "fft/isa/join.h"
#include "fft/isa/short_steps.h"

namespace orvel::fft {

namespace {

template <class R, int n, bool forward>
void complex_transform(const R* from, R* to, R* rows)
{
    constexpr Form form = forward ? Form::pairs : Form::exchanged;
    transform<R, n, form, form>(from, to, rows);
}

// ---- real sequences -------------------------------------------------------------------------------------

// The lanes of an order. Those that take some thought are constants, so that the compiler sees no arithmetic.
template <int W>
struct LaneList {
    int at[W] = {};
};
template <class R, int W>
ORVEL_INLINE Vector<R, W> shuffled(Vector<R, W> a, Vector<R, W> b, const LaneList<W>& list)
{
    Order<R, W> order = {};
    for (int k = 0; k < W; ++k) order[k] = list.at[k];
    return __builtin_shuffle(a, b, order);
}

// The elements in the opposite order, after the first one of the next vector.
template <class R, int W>
constexpr LaneList<W> mirror()
{
    int lane_of[W + 1] = {};
    for (int k = 0; k < W; ++k) lane_of[element_of<R, W>(k)] = k;
    lane_of[W] = W;
    LaneList<W> list;
    for (int k = 0; k < W; ++k) list.at[k] = lane_of[W - element_of<R, W>(k)];
    return list;
}
template <class R, int W>
ORVEL_INLINE Vector<R, W> mirrored(Vector<R, W> v, Vector<R, W> next)
{
    if constexpr (W == 1) {
        return next;
    } else {
        constexpr LaneList<W> list = mirror<R, W>();
        return shuffled<R, W>(v, next, list);
    }
}

template <class R, int W>
ORVEL_INLINE Complex<R, W> mirrored(Complex<R, W> z, Complex<R, W> next)
{
    return {mirrored<R, W>(z.re, next.re), mirrored<R, W>(z.im, next.im)};
}

// Where coefficients are in the 2W - 1 numbers of the first W, whose imaginary part 0 is not stored, and in
// those of the last W in descending order: `im` of element 0 is nowhere.
template <int W>
constexpr int place_of_re(bool at_front, int k)
{
    return !at_front ? 2 * (W - 1 - k) : k == 0 ? 0 : 2 * k - 1;
}
template <int W>
constexpr int place_of_im(bool at_front, int k)
{
    return k == 0 ? -1 : place_of_re<W>(at_front, k) + 1;
}

// Those numbers as two vectors that overlap in one: where parts come from, and where they go.
template <class R, int W, bool at_front>
struct End {
    LaneList<W> re, im, low, high;

    constexpr End()
    {
        for (int k = 0; k < W; ++k) {
            const int element = element_of<R, W>(k);
            const int x = place_of_re<W>(at_front, element), y = place_of_im<W>(at_front, element);
            re.at[k] = x < W ? x : x + 1;
            im.at[k] = y < 0 ? 0 : y < W ? y : y + 1;
            if (x < W) low.at[x] = k;
            if (x >= W - 1) high.at[x - W + 1] = k;
            if (y >= 0 && y < W) low.at[y] = W + k;
            if (y >= W - 1) high.at[y - W + 1] = W + k;
        }
    }
};

template <class R, int W, bool at_front>
ORVEL_INLINE Complex<R, W> read_end(const R* c)
{
    if constexpr (W == 1) {
        return {*c, 0};
    } else {
        constexpr End<R, W, at_front> end;
        const Vector<R, W> low = load<R, W>(c), high = load<R, W>(c + W - 1);
        Vector<R, W> zero_first = shuffled<R, W>(low, high, end.im);
        zero_first[0] = 0;
        return {shuffled<R, W>(low, high, end.re), zero_first};
    }
}

template <class R, int W, bool at_front>
ORVEL_INLINE void write_end(R* c, Complex<R, W> z)
{
    if constexpr (W == 1) {
        *c = z.re;
    } else {
        constexpr End<R, W, at_front> end;
        store<R, W>(c, shuffled<R, W>(z.re, z.im, end.low));
        store<R, W>(c + W - 1, shuffled<R, W>(z.re, z.im, end.high));
    }
}

// The coefficients k..k+W-1 and m-k..m-k-W+1 in c(2m).
template <class R, int W>
ORVEL_INLINE Opposites<R, W> read_opposites(const R* c, int m, int k)
{
    if (k == 0) return {read_end<R, W, true>(c), read_end<R, W, false>(c + 2 * (m - W) + 1)};
    R* const p = const_cast<R*>(c);
    const Parts<R> parts = {p - 1, p, 2};
    return {read<R, W, Layout::pairs, Lanes::near>(parts, k),
            read<R, W, Layout::pairs, Lanes::near_reversed>(parts, m - k - W + 1)};
}
template <class R, int W>
ORVEL_INLINE void write_opposites(R* c, int m, int k, const Opposites<R, W>& x)
{
    if (k == 0) {
        write_end<R, W, true>(c, x.z);
        write_end<R, W, false>(c + 2 * (m - W) + 1, x.opposite);
    } else {
        const Parts<R> parts = {c - 1, c, 2};
        write<R, W, Layout::pairs, Lanes::near>(parts, k, x.z);
        write<R, W, Layout::pairs, Lanes::near_reversed>(parts, m - k - W + 1, x.opposite);
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
    transform<R, m, Form::pairs, Form::rows>(from, z, rows);
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
    const Opposites<R, W> x = split(in.z, in.opposite, root);
    put<R, W, Form::rows>(z, k, exchanged(x.z));
    put<R, W, Form::rows>(z, m - k - W, exchanged(mirrored(x.opposite, next)));
    next = x.opposite;
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

template <class R, bool forward>
constexpr ShortLoops<R> complex_loops = {
    {complex_transform<R, 4, forward>, complex_transform<R, 8, forward>, complex_transform<R, 16, forward>,
     complex_transform<R, 32, forward>, complex_transform<R, 64, forward>, complex_transform<R, 128, forward>,
     complex_transform<R, 256, forward>, complex_transform<R, 512, forward>,
     complex_transform<R, 1024, forward>, complex_transform<R, 2048, forward>,
     complex_transform<R, 4096, forward>}};
template <class R>
constexpr ShortLoops<R> forward_loops = {{real_forward<R, 2>, real_forward<R, 4>, real_forward<R, 8>,
                                          real_forward<R, 16>, real_forward<R, 32>, real_forward<R, 64>,
                                          real_forward<R, 128>, real_forward<R, 256>, real_forward<R, 512>,
                                          real_forward<R, 1024>, real_forward<R, 2048>}};
template <class R>
constexpr ShortLoops<R> backward_loops = {
    {real_backward<R, 2>, real_backward<R, 4>, real_backward<R, 8>, real_backward<R, 16>,
     real_backward<R, 32>, real_backward<R, 64>, real_backward<R, 128>, real_backward<R, 256>,
     real_backward<R, 512>, real_backward<R, 1024>, real_backward<R, 2048>}};

}  // namespace

namespace ORVEL_ISA {
extern const ShortTables short_tables;
const ShortTables short_tables = {
    {complex_loops<float, true>, complex_loops<float, false>, forward_loops<float>, backward_loops<float>},
    {complex_loops<double, true>, complex_loops<double, false>, forward_loops<double>,
     backward_loops<double>}};
}  // namespace ORVEL_ISA

}  // namespace orvel::fft
