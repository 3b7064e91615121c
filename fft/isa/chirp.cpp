// fft/isa/chirp.cpp - loops of a convolution with a chirp, for the level ORVEL_ISA
#include "fft/isa/complex.h"

namespace orvel::fft {

namespace {

// Calls use(j, count, e, rising) for elements j..j+count-1 of a part, which are stored from e on, up or down.
template <class R, class Use>
ORVEL_INLINE void for_stored(const ChirpPart<R>& part, Use use)
{
    const int64_t r = part.r;
    for (int64_t j = 0, i = part.first; j < part.count;) {
        const bool rising = i <= r / 2;
        const int64_t rest = part.count - j, run = (rising ? r / 2 + 1 : r) - i;
        const int64_t count = run < rest ? run : rest;
        use(j, count, rising ? i : r - i, rising);
        j += count;
        i = i + count == r ? 0 : i + count;
    }
}

template <class R, int W, bool rising>
ORVEL_INLINE Complex<R, W> chirp_from(const R* chirp, int64_t e)
{
    if constexpr (rising) return read_interleaved<R, W, Lanes::in_turn>(chirp + 2 * e);
    return read_interleaved<R, W, Lanes::reversed>(chirp + 2 * (e - W + 1));
}

// Calls use(j, element j of the chirp) for j..end-1, the elements stored from e on.
template <class R, int W, bool rising, class Use>
ORVEL_INLINE void with_chirp(const R* chirp, int64_t j, int64_t end, int64_t e, Use use)
{
    for (; end - j >= W; j += W, e += rising ? W : -W) use(j, chirp_from<R, W, rising>(chirp, e));
    if constexpr (W > 1) with_chirp<R, next_width<R, W>, rising>(chirp, j, end, e, use);
}

template <class R, int W, class Use>
ORVEL_INLINE void for_part(const ChirpPart<R>& part, Use use)
{
    for_stored(part, [&](int64_t j, int64_t count, int64_t e, bool rising) {
        if (rising)
            with_chirp<R, W, true>(part.chirp, j, j + count, e, use);
        else
            with_chirp<R, W, false>(part.chirp, j, j + count, e, use);
    });
}

template <class R, int W>
void turn_with(const ChirpPart<R>& all, const Parts<R>& from, const Parts<R>& to)
{
    const ChirpPart<R> part = all;
    const Parts<R> in = from, out = to;
    const Layout in_layout = layout_of(in), out_layout = layout_of(out);
    for_part<R, W>(part, [&]<int V>(int64_t j, Complex<R, V> root) {
        Complex<R, V> z;
        read<R, V, 1, Lanes::in_turn>(in, j, 0, in_layout, &z);
        z = turned(z, root.re, root.im);
        write<R, V, 1>(out, j, 0, out_layout, &z, 1);
    });
}

// Whether the numbers follow one another, or the columns of a pass are between them.
template <class R>
bool is_dense(const Parts<R>& z)
{
    return z.stride == 1 || (z.stride == 2 && (z.im == z.re + 1 || z.re == z.im + 1));
}

template <class R>
void turn(const ChirpPart<R>& part, const Parts<R>& in, const Parts<R>& out)
{
    if (is_dense(in) && is_dense(out))
        turn_with<R, lanes<R>>(part, in, out);
    else
        turn_with<R, 1>(part, in, out);
}

template <class R>
void spread(const ChirpPart<R>& all, R scale, R* re, R* im)
{
    const ChirpPart<R> part = all;
    for_part<R, lanes<R>>(part, [&]<int V>(int64_t j, Complex<R, V> root) {
        isa::at<V>(re + j) = root.re * scale;
        isa::at<V>(im + j) = root.im * scale;
    });
}

// A vector of frequencies of all blocks, and of the kernel of q - p at around[blocks - 1 + q - p]. Of few
// blocks the number is `known`: their loops would take longer than what they do.
template <class R, int known>
struct Frequencies {
    static constexpr int W = lanes<R>;
    alignas(64) Complex<R, W> block[most_chirp_blocks];
    alignas(64) Complex<R, W> around[2 * most_chirp_blocks - 1];

    ORVEL_INLINE Frequencies(const ChirpSpectra<R>& x, int64_t f, bool far)
    {
        const int64_t blocks = known > 0 ? known : x.blocks;
        const int64_t opposite = x.n - f - W + 1, last = blocks - 1, stored = blocks / 2;
        for (int64_t p = 0; p < blocks; ++p) {
            const R* const from = x.block + 2 * p * x.pitch + f;
            if (far) call_for(from + ahead, x.pitch);
            block[p] = pair(from, x.pitch);
        }
        for (int64_t d = 0; d <= stored && d <= last; ++d) {
            const R* const from = x.kernel + 2 * d * x.pitch;
            if (far) {
                call_for(from + f + ahead, x.pitch);
                call_for(from + opposite - ahead, x.pitch);
            }
            around[last - d] = reversed(pair(from + opposite, x.pitch));
            around[last + d] = pair(from + f, x.pitch);
        }
        if (last <= stored) return;
        const Complex<R, W> turn = {isa::at<W>(x.cosine + f), isa::at<W>(x.sine + f)};
        for (int64_t d = stored + 1; d <= last; ++d) {
            const int64_t mirrored = blocks - d;
            around[last + d] = turned(around[last - mirrored], turn.re, -turn.im);
            around[last - d] = turned(around[last + mirrored], turn.re, turn.im);
        }
    }

private:
    static constexpr int64_t ahead = 512 / static_cast<int64_t>(sizeof(R));

    static ORVEL_INLINE Complex<R, W> pair(const R* from, int64_t pitch)
    {
        return {isa::at<W>(from), isa::at<W>(from + pitch)};
    }
    // Hardware fetches ahead for fewer rows than these.
    static ORVEL_INLINE void call_for(const R* next, int64_t pitch)
    {
        __builtin_prefetch(next);
        __builtin_prefetch(next + pitch);
    }
};

// A sum of products, whose terms need not wait for one another.
template <class R, int W>
struct Products {
    Complex<R, W> by_real = {}, by_imaginary = {};

    ORVEL_INLINE void add(const Complex<R, W>& a, const Complex<R, W>& b)
    {
        by_real.re += a.re * b.re;
        by_real.im += a.re * b.im;
        by_imaginary.re += a.im * b.re;
        by_imaginary.im += a.im * b.im;
    }
    ORVEL_INLINE void store(const ChirpSpectra<R>& x, int64_t block, int64_t f) const
    {
        R* const to = x.block + 2 * block * x.pitch + f;
        isa::at<W>(to) = by_real.re - by_imaginary.im;
        isa::at<W>(to + x.pitch) = by_real.im + by_imaginary.re;
    }
};

// Result q, or two at a time: the kernel that the second one takes is next the one of the first.
template <bool both, class R, int known>
ORVEL_INLINE void multiply_for(const ChirpSpectra<R>& x, const Frequencies<R, known>& of, int64_t q,
                               int64_t f)
{
    constexpr int W = lanes<R>;
    const int64_t blocks = known > 0 ? known : x.blocks;
    const Complex<R, W>* const kernel = of.around + blocks - 1 + q;
    Products<R, W> sum, next;
    Complex<R, W> second = {};
    if constexpr (both) second = kernel[1];
    for (int64_t p = 0; p < blocks; ++p) {
        const Complex<R, W> first = kernel[-p];
        sum.add(of.block[p], first);
        if constexpr (both) next.add(of.block[p], second);
        second = first;
    }
    sum.store(x, q, f);
    if constexpr (both) next.store(x, q + 1, f);
}

template <class R, int known>
void multiply_blocks(const ChirpSpectra<R>& all)
{
    const ChirpSpectra<R> x = all;
    const int64_t blocks = known > 0 ? known : x.blocks;
    const bool far = known == 0 && x.n * blocks * static_cast<int64_t>(sizeof(R)) >= 1 << 18;
    for (int64_t f = 0; f < x.n; f += lanes<R>) {
        const Frequencies<R, known> of(x, f, far);
        int64_t q = 0;
        for (; q + 1 < blocks; q += 2) multiply_for<true>(x, of, q, f);
        if (q < blocks) multiply_for<false>(x, of, q, f);
    }
}

template <class R>
void multiply(const ChirpSpectra<R>& x)
{
    x.blocks == 1   ? multiply_blocks<R, 1>(x)
    : x.blocks == 2 ? multiply_blocks<R, 2>(x)
                    : multiply_blocks<R, 0>(x);
}

}  // namespace

const isa::ForReals<ChirpLoops> ORVEL_ISA::chirp_loops = {{turn<float>, spread<float>, multiply<float>},
                                                          {turn<double>, spread<double>, multiply<double>}};

}  // namespace orvel::fft
