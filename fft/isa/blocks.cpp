// fft/isa/blocks.cpp - passes of several groups of factors over blocks, for the level ORVEL_ISA
//
// A block is a vector of columns, or a few of them: their elements come together from all over the sequence
// and go through all groups while they are in the nearer caches. So a sequence is read and written only once
// for all these factors. The elements of a block have digits, one for each group: a group takes its digit of
// the input to one of the results in the same place, so that nothing is moved.
#ifdef __x86_64__
#include <immintrin.h>
#endif

#include "fft/isa/pass.h"

namespace orvel::fft {

namespace {

// A sequence beyond the second cache comes from memory, and its columns from one page after another: hardware
// does not see what is next.
template <class R>
bool comes_from_far(const Pass<R>& p, int64_t length)
{
    return p.l * p.m * length * 2 * static_cast<int64_t>(sizeof(R)) >= p.distant;
}

// A result that is larger than the third cache is written past the caches, which would read each line before
// it is written. That takes whole lines.
template <class R>
bool leaves_the_caches(const Pass<R>& p, int64_t length)
{
    const uintptr_t re = reinterpret_cast<uintptr_t>(p.out.re), im = reinterpret_cast<uintptr_t>(p.out.im);
    const uintptr_t places = p.out.stride == 1 ? re | im : re < im ? re : im;
    return p.l * p.m * length * 2 * static_cast<int64_t>(sizeof(R)) >= p.huge && places % 64 == 0;
}

// Non-temporal stores: they pass the caches by.
struct NonTemporal {
    template <class R, int W>
    static ORVEL_INLINE void store(R* p, Vector<R, W> v)
    {
#ifdef __x86_64__
        if constexpr (sizeof v == 16) return _mm_stream_si128(reinterpret_cast<__m128i*>(p), (__m128i)v);
#ifdef __AVX2__
        if constexpr (sizeof v == 32) return _mm256_stream_si256(reinterpret_cast<__m256i*>(p), (__m256i)v);
#endif
#ifdef __AVX512F__
        if constexpr (sizeof v == 64) return _mm512_stream_si512(reinterpret_cast<__m512i*>(p), (__m512i)v);
#endif
#endif
        isa::at<W>(p) = v;
    }
};

// Non-temporal stores are seen by others behind this.
inline void finish_writes()
{
#ifdef __x86_64__
    _mm_sfence();
#endif
}

template <class R>
constexpr int64_t line_of = 64 / static_cast<int64_t>(sizeof(R));

// The elements of a column of which the first is at p.
template <int count, class R>
ORVEL_INLINE void prefetch_column(const R* p, int64_t step)
{
    constexpr int second_cache = 2;
    for (int c = 0; c < count; ++c) __builtin_prefetch(p + c * step, 0, second_cache);
}

// A loop over columns: the next ones are `in` numbers further, their results `out` and their roots `roots`.
struct Loop {
    int64_t count, in, out, roots;
};

// Columns of one group in three loops, the innermost over so many vectors side by side: their rows of roots
// are `next_row` apart. Result c of a column goes to element `to` + c * `to_step`. With `ahead` those of the
// next round of the second loop are called for.
template <class R>
struct Steps {
    Parts<R> in;
    int64_t at, step;
    const R* roots;
    Parts<R> out;
    int64_t to, to_step, vectors, next_row;
    Loop inner, outer;
    bool ahead = false;
};

// A group of one factor may be the last one of all, whose results have any layout.
template <class R, int W, int r, int s, int row, class Memory>
[[gnu::noinline]] void run_steps(const Steps<R>& steps)
{
    const Steps<R> all = steps;
    const Layout to = s == 1 ? layout_of(all.out) : Layout::split;
    for (int64_t o = 0; o < all.outer.count; ++o)
        for (int64_t n = 0; n < all.inner.count; ++n) {
            const int64_t at = all.at + o * all.outer.in + n * all.inner.in;
            const int64_t result = all.to + o * all.outer.out + n * all.inner.out;
            const R* const roots = all.roots + n * all.inner.roots;
            for (int64_t v = 0; v < all.vectors; ++v) {
                const R* const rows = roots + v * W / row * all.next_row + v * W % row;
                if (all.ahead) {
                    prefetch_column<r * s>(all.in.re + at + v * W + all.inner.in, all.step);
                    prefetch_column<r * s>(all.in.im + at + v * W + all.inner.in, all.step);
                }
                const Parts<R> out = hidden_from<true>(all.out, result + v * W);
                const int64_t to_step = hidden<true>(all.to_step);
                Complex<R, W> z[r * s];
                columns<R, W, r, s, Twiddles::rows, row>(
                    Step<R>{all.in, at + v * W, all.step, rows, nullptr, 0, 0},
                    z, [&](int c) __attribute__((always_inline)) {
                        constexpr int apart = apart_in<r, s>;
                        write<R, W, put_at_once<r, s>, Memory>(out, c * to_step, to_step * apart, to, z + c,
                                                               apart);
                    });
            }
        }
}

template <class R, int W, int row = twiddle_row, class Memory = Cached>
void steps_of(const Group<R>& g, const Steps<R>& all)
{
    g.second == 1 ? run_steps<R, W, 4, 1, row, Memory>(all) : run_steps<R, W, 4, 4, row, Memory>(all);
}

// The last group of all.
template <class R, int W, class Memory>
void last_steps(const Group<R>& g, const Steps<R>& all)
{
    g.first == 3   ? run_steps<R, W, 3, 1, twiddle_row, Memory>(all)
    : g.first == 5 ? run_steps<R, W, 5, 1, twiddle_row, Memory>(all)
                   : run_steps<R, W, 4, 1, twiddle_row, Memory>(all);
}

// The numbers of the rows of roots of a vector of columns.
template <class R>
int64_t rows_of(const Group<R>& g)
{
    return 2 * twiddle_row * (g.first * g.second - 1);
}

// The digits of the elements of a block. Digit j of an element in memory counts its groups before; the input
// counts the other way round.
template <class R>
struct Digits {
    const Group<R>* group;
    int64_t count;
    int64_t before[most_groups + 1];  // products of the groups before j; the last is the length

    explicit Digits(const Pass<R>& p) : group(p.group), count(p.groups)
    {
        before[0] = 1;
        for (int64_t j = 0; j < count; ++j) before[j + 1] = before[j] * group[j].first * group[j].second;
    }
    int64_t length() const { return before[count]; }
    int64_t of(int64_t j) const { return before[j + 1] / before[j]; }

    // The place in the input of the element with the digits of `high` from digit 2 on, the others being 0.
    int64_t input(int64_t high) const
    {
        int64_t at = 0;
        for (int64_t j = 2; j < count; ++j) {
            at += high % of(j) * (length() / before[j + 1]);
            high /= of(j);
        }
        return at;
    }
};

// Rows of so many numbers for the blocks of a first pass.
template <class R>
struct BlockRows {
    Parts<R> at;
    int64_t pitch;
};

// The first group of blocks of the first pass: those of all lanes from column b on.
template <class R, int r, int s>
[[gnu::noinline]] void first_steps(const Pass<R>& pass, const Digits<R>& d, int64_t b,
                                   const BlockRows<R>& rows)
{
    const Pass<R> p = pass;
    const Group<R> g = p.group[0];
    const BlockRows<R> out = rows;
    constexpr int W = lanes<R> < r * s ? lanes<R> : r * s;
    const bool far = comes_from_far(p, d.length());
    const Layout from = layout_of(p.in);
    const R* const memory = from == Layout::exchanged ? p.in.im : p.in.re;
    const int64_t second = d.of(1), rest = d.length() / (r * s), step = p.m * rest,
                  next = p.m * (rest / second);
    for (int64_t lane = 0; lane < lanes<R>; lane += W) {
        int64_t to = lane * out.pitch;
        for (int64_t high = 0; high < rest / second; ++high) {
            int64_t at = b + lane + p.m * d.input(high);
            for (int64_t i = 0; i < second; ++i, at += next, to += r * s) {
                if (far) {
                    const R* const line = memory + (at + next) * p.in.stride;
                    prefetch_column<r * s>(line, step * p.in.stride);
                    prefetch_column<r * s>(line + line_of<R>, step * p.in.stride);
                }
                Complex<R, W> z[r * s];
                columns<R, W, r, s, Twiddles::none>(
                    Step<R>{p.in, at, step, g.first_twiddles, g.second_twiddles, 1, 0, from}, z, [](int) {});
                scatter<R, W, r * s>(out.at, to, out.pitch, from, z);
            }
        }
    }
}

// The blocks are where their results will be: a pass never writes where it reads, and a step only where it
// has read. Results that pass the caches by have their blocks elsewhere before.
template <class R>
void first_blocks(const Pass<R>& pass)
{
    const Pass<R> p = pass;
    constexpr int W = lanes<R>, narrow = W > 8 ? 8 : W;
    const Digits<R> d(p);
    const int64_t n = d.length(), block_pitch = n + twiddle_row;
    const bool streams = d.count > 2 && p.room >= W * block_pitch && leaves_the_caches(p, n);
    for (int64_t b = 0; b < p.m; b += W) {
        if (b > p.m - W) b = p.m - W;
        const Parts<R> result = {p.out.re + b * p.pitch, p.out.im + b * p.pitch, 1};
        BlockRows<R> rows = {result, p.pitch};
        if (streams) rows = {{p.block, p.block + p.room, 1}, block_pitch};
        if (p.group[0].first == 2)
            first_steps<R, 2, 4>(p, d, b, rows);
        else
            first_steps<R, 4, 4>(p, d, b, rows);
        for (int64_t j = 1; j < d.count; ++j) {
            const Group<R>& g = p.group[j];
            const int64_t l = d.before[j], next = d.before[j + 1], row = rows_of(g);
            const Loop parts = {n / next, next, next, 0}, columns = {W, rows.pitch, rows.pitch, 0};
            Steps<R> steps = {rows.at, 0, l, g.first_twiddles, rows.at, 0, l, l / W, row, parts, columns};
            if (l == 8) {
                steps.vectors = l / narrow;
                steps_of<R, narrow, 8>(g, steps);
            } else if (streams && j == d.count - 1) {
                steps.out = result;
                steps.outer.out = p.pitch;
                steps_of<R, W, twiddle_row, NonTemporal>(g, steps);
            } else {
                steps_of<R, W>(g, steps);
            }
        }
    }
    if (streams) finish_writes();
}

template <class R>
void last_blocks(const Pass<R>& pass)
{
    const Pass<R> p = pass;
    constexpr int W = lanes<R>;
    const Digits<R> d(p);
    const Group<R>* const g = p.group;
    const int64_t n = d.length(), first = d.of(0), rest = n / first, second = d.of(1), l = p.l;
    int64_t vectors = most_vectors;
    while (vectors > 1 && (vectors * W > l || vectors * W * n > p.room)) vectors /= 2;
    const int64_t width = vectors * W;
    const Parts<R> block = {p.block, p.block + width * n, 1};
    const bool far = comes_from_far(p, n), streams = leaves_the_caches(p, n);
    const Loop once = {1, 0, 0, 0};
    for (int64_t k = 0; k < l; k += width) {
        const int64_t chunk = k / twiddle_row, lane = k % twiddle_row, row = rows_of(g[0]);
        for (int64_t high = 0; high < rest / second; ++high) {
            const int64_t at = k + p.pitch * d.input(high), place = width * first * second * high;
            const Loop inner = {second, p.pitch * (rest / second), width * first, 0};
            const Steps<R> steps = {p.in,  at,    p.pitch * rest, g[0].first_twiddles + chunk * row + lane,
                                    block, place, width,          vectors,
                                    row,   inner, once,           far};
            steps_of<R, W>(g[0], steps);
        }
        for (int64_t j = 1; j < d.count; ++j) {
            const int64_t before = d.before[j], step = width * before, next = width * d.before[j + 1],
                          one = rows_of(g[j]), all = one * before;
            const R* const roots = g[j].first_twiddles + chunk * all + lane;
            if (j < d.count - 1) {
                const Loop inner = {before, width, width, one}, parts = {n / d.before[j + 1], next, next, 0};
                const Steps<R> steps = {block, 0, step, roots, block, 0, step, vectors, all, inner, parts};
                steps_of<R, W>(g[j], steps);
            } else {
                const Loop inner = {before, width, l, one};
                const Steps<R> steps = {block,      0,       step, roots, p.out, k,
                                        l * before, vectors, all,  inner, once};
                streams ? last_steps<R, W, NonTemporal>(g[j], steps) : last_steps<R, W, Cached>(g[j], steps);
            }
        }
    }
    if (streams) finish_writes();
}

template <class R>
void block_pass(const Pass<R>& p)
{
    p.l == 1 ? first_blocks(p) : last_blocks(p);
}

}  // namespace

const isa::ForReals<PassLoop> ORVEL_ISA::block_passes = {block_pass<float>, block_pass<double>};

}  // namespace orvel::fft
