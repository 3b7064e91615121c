// fft/chirp.cpp - passes of large odd factors, by convolution with a chirp or summed up directly
//
// With h = (r + 1) / 2, which is 1/2 modulo r, jk = h j^2 + h k^2 - h (j - k)^2 modulo r: a transform of
// length r is a convolution with the chirp w(r)^(-h j^2), made by transforms of a length of small factors.
// Source: L. Bluestein, A linear filtering approach to the computation of discrete Fourier transform, 1970.
// Elements j and r - j of the chirp are equal, so that half of it is stored: cosine and sine in turn.
//
// The convolution is done in blocks: s inputs of block p give s results of block q by a transform of length
// n >= 2 s - 1, with the elements of the chirp around (q - p) s; those around -d s are the same, backwards,
// and so, but for a shift, are those around (P - d) s of P blocks, because s P is r or a little more. All
// blocks together take the transforms of one long convolution, but shorter ones, which stay in the caches and
// share one table of roots. Source: H. D. Helms, Fast Fourier transform method of computing difference
// equations and simulating filters, 1967. Between calls nothing of it can be kept: the half of the spectrum
// that is no mirror of the other has more than 2 r numbers, which is all that a work vector has beside
// its scratch.
#include "fft/chirp.h"

#ifdef __linux__
#include <sys/mman.h>
#endif

#include <algorithm>
#include <bit>

#include "fft/transform.h"
#include "frame/scratch.h"

namespace orvel::fft {

namespace {

// The least length from n on that is 1, 5/4 or 3/2 of a power of 2, and a multiple of `widest`.
constexpr int64_t shortest = 5 * widest;
int64_t convolution_length(int64_t n)
{
    int64_t best = 8 * widest;
    while (best < n) best *= 2;
    for (const int64_t eighths : {5, 6})
        if (best / 8 * eighths >= n) return best / 8 * eighths;
    return best;
}

struct Blocks {
    int64_t count, size, length;  // of the transforms
    int64_t excess;               // of all together, beyond r

    int64_t kernels() const { return std::min(count, count / 2 + 1); }
};

// The fastest ones by a count of operations: those of the transforms and the roots, and a product for each
// pair. Transforms of more than `longest` numbers come from memory and take half as long again. Bits depend
// on this choice, and so it knows neither the level nor the caches of the machine.
template <class R>
Blocks blocks_of(int64_t r)
{
    constexpr int64_t longest = (int64_t(2) << 20) / (2 * static_cast<int64_t>(sizeof(R))), call = 2500;
    Blocks best = {};
    int64_t least = INT64_MAX;
    for (int64_t count = 1, length = 0; count <= most_chirp_blocks && length != shortest; ++count) {
        const int64_t size = (r + count - 1) / count;
        length = convolution_length(2 * size - 1 + count * size - r);
        auto passes = static_cast<int64_t>(std::bit_width(static_cast<uint64_t>(length)));
        if (length > longest) passes += passes / 2;
        const int64_t transforms = 2 * count + std::min(count, count / 2 + 1);
        const int64_t roots = count > 2 ? 3 * passes : passes;
        const int64_t cost = length * (transforms * passes + roots + 2 * count * count) + call * count;
        if (cost >= least) continue;
        best = {count, size, length, count * size - r};
        least = cost;
    }
    return best;
}

// Asks for large pages: with small ones the transforms would take nearly twice the time.
void prefer_large_pages([[maybe_unused]] void* memory, [[maybe_unused]] int64_t bytes)
{
#if defined(__linux__) && defined(MADV_HUGEPAGE)
    constexpr uintptr_t page = 2 << 20;
    const uintptr_t begin = (reinterpret_cast<uintptr_t>(memory) + page - 1) / page * page;
    const uintptr_t end = (reinterpret_cast<uintptr_t>(memory) + static_cast<uintptr_t>(bytes)) / page * page;
    if (end > begin) madvise(reinterpret_cast<void*>(begin), end - begin, MADV_HUGEPAGE);
#endif
}

template <class R>
class Chirp {
public:
    // `stored` is the chirp or null.
    [[nodiscard]] bool prepare(int64_t r, const R* stored);

    // The transform of r numbers, which may be where their results go.
    void run(const Parts<R>& in, const Parts<R>& out) const;

private:
    static constexpr int64_t beside = 16;  // a part is no power of two from the next

    int64_t pitch() const { return blocks_.length + beside; }
    Parts<R> parts(R* spectra, int64_t k) const
    {
        R* const re = spectra + 2 * k * pitch();
        return {re, re + pitch(), 1};
    }
    int64_t size_of(int64_t block) const { return std::min(blocks_.size, r_ - block * blocks_.size); }
    void transform(const Parts<R>& from, const Parts<R>& to) const
    {
        fft::transform<R>(factors_, tables_, {from, to, scratch_, nullptr, numbers_of_scratch<R>(factors_)});
    }
    void make_chirp();
    void make_kernels();

    int64_t r_ = 0;
    Blocks blocks_;
    Factors factors_;
    Scratch<R> memory_;  // one block: the run-time library gives small ones back to the system in each call
    const R* chirp_;
    R *kernels_, *spectra_, *one_, *tables_, *turns_, *scratch_, *own_chirp_;
};

template <class R>
bool Chirp<R>::prepare(int64_t r, const R* stored)
{
    r_ = r;
    blocks_ = blocks_of<R>(r);
    factors_ = factorize(blocks_.length);
    const int64_t one = 2 * pitch(), spectra = blocks_.count * one, kernels = blocks_.kernels() * one;
    const int64_t scratch = numbers_of_scratch<R>(factors_) + beside;
    const int64_t chirp = stored == nullptr ? 3 * r + 1 : 0;
    const int64_t all = kernels + spectra + 3 * one + scratch + chirp;
    if (!memory_.allocate(all)) return false;
    prefer_large_pages(memory_, all * static_cast<int64_t>(sizeof(R)));
    kernels_ = memory_;
    spectra_ = kernels_ + kernels;
    one_ = spectra_ + spectra;
    tables_ = one_ + one;
    turns_ = tables_ + one;
    scratch_ = turns_ + one;
    own_chirp_ = scratch_ + scratch;
    store_tables<R>(factors_, tables_);
    chirp_ = stored;
    if (stored == nullptr) make_chirp();
    make_kernels();
    if (blocks_.count > 2)
        roots<R>(blocks_.length, 0, blocks_.excess, blocks_.length, 1, turns_, turns_ + pitch());
    return true;
}

template <class R>
void Chirp<R>::make_chirp()
{
    R *const cosine = own_chirp_ + r_ + 1, *const sine = cosine + r_;
    roots<R>(r_, 0, 1, r_, 1, cosine, sine);
    for_chirp(r_, [&](int64_t j, int64_t at) {
        own_chirp_[2 * j] = cosine[at];
        own_chirp_[2 * j + 1] = sine[at];
    });
    chirp_ = own_chirp_;
}

// The elements around d * size, those before it at the end; `excess` of these are for the opposite kernel.
template <class R>
void Chirp<R>::make_kernels()
{
    const auto& loops = isa::of_type<R>(chirp_loops());
    const int64_t n = blocks_.length, size = blocks_.size, before = size - 1 + blocks_.excess;
    const R scale = 1 / static_cast<R>(n);
    const Parts<R> x = parts(one_, 0);
    std::fill(x.re + size, x.re + n - before, R(0));
    std::fill(x.im + size, x.im + n - before, R(0));
    for (int64_t d = 0; d < blocks_.kernels(); ++d) {
        const int64_t first = d * size;
        loops.spread({r_, chirp_, first % r_, size}, scale, x.re, x.im);
        loops.spread({r_, chirp_, (first + r_ - before) % r_, before}, scale, x.re + n - before,
                     x.im + n - before);
        const Parts<R> kernel = parts(kernels_, d);
        transform(x, kernel);
        kernel.re[n] = kernel.re[0];
        kernel.im[n] = kernel.im[0];
    }
}

template <class R>
void Chirp<R>::run(const Parts<R>& in, const Parts<R>& out) const
{
    const auto& loops = isa::of_type<R>(chirp_loops());
    const auto block_of = [&](const Parts<R>& z, int64_t block) {
        const int64_t at = block * blocks_.size * z.stride;
        return Parts<R>{z.re + at, z.im + at, z.stride};
    };
    const auto exchanged = [](const Parts<R>& z) { return Parts<R>{z.im, z.re, z.stride}; };
    const int64_t n = blocks_.length;
    const Parts<R> x = parts(one_, 0);
    for (int64_t p = 0; p < blocks_.count; ++p) {
        const int64_t size = size_of(p);
        loops.turn({r_, chirp_, p * blocks_.size, size}, block_of(in, p), x);
        std::fill(x.re + size, x.re + n, R(0));
        std::fill(x.im + size, x.im + n, R(0));
        transform(x, parts(spectra_, p));
    }
    loops.multiply({n, pitch(), blocks_.count, spectra_, kernels_, turns_, turns_ + pitch()});
    for (int64_t q = 0; q < blocks_.count; ++q) {
        transform(exchanged(parts(spectra_, q)), exchanged(x));
        loops.turn({r_, chirp_, q * blocks_.size, size_of(q)}, x, block_of(out, q));
    }
}

// Every result from the definition.
template <class R>
void sum_directly(const Pass<R>& p)
{
    const int64_t r = p.group[0].first, l = p.l, n = l * r;
    for (int64_t b = 0; b < p.m; ++b)
        for (int64_t to = 0; to < n; ++to) {
            R re = 0, im = 0;
            for_multiples<R>(n, to, r, [&](int64_t i, R cosine, R sine) {
                const int64_t e = (to % l + l * (b + p.m * i)) * p.in.stride;
                re += p.in.re[e] * cosine + p.in.im[e] * sine;
                im += p.in.im[e] * cosine - p.in.re[e] * sine;
            });
            p.out.re[(to + n * b) * p.out.stride] = re;
            p.out.im[(to + n * b) * p.out.stride] = im;
        }
}

}  // namespace

template <class R>
void store_chirp(int64_t r, R* chirp)
{
    for_chirp(r, [&](int64_t j, int64_t at) { roots<R>(r, at, 0, 1, 1, chirp + 2 * j, chirp + 2 * j + 1); });
}

namespace {

// The elements of column k of l, each times its twiddle factor.
template <class R>
void turn_column(const R* twiddles, int64_t l, int64_t k, int64_t r, const Parts<R>& in, const Parts<R>& x)
{
    x.re[0] = in.re[0];
    x.im[0] = in.im[0];
    for (int64_t i = 1; i < r; ++i) {
        const R c = twiddles[2 * l * (i - 1) + k], s = twiddles[2 * l * (i - 1) + l + k];
        const R re = in.re[i * in.stride], im = in.im[i * in.stride];
        x.re[i] = re * c + im * s;
        x.im[i] = im * c - re * s;
    }
}

}  // namespace

template <class R>
void large_pass(const Pass<R>& p)
{
    Chirp<R> chirp;
    Scratch<R> column;
    const int64_t r = p.group[0].first, l = p.l, step = l * p.m * p.in.stride;
    if (!chirp.prepare(r, l == 1 && p.m == 1 ? p.group[0].first_twiddles : nullptr) ||
        (l > 1 && !column.allocate(2 * r)))
        return sum_directly(p);
    const Parts<R> x = split_format<R>(column, r);
    for (int64_t b = 0; b < p.m; ++b)
        for (int64_t k = 0; k < l; ++k) {
            const int64_t at = (k + l * b) * p.in.stride, to = (k + l * r * b) * p.out.stride;
            const Parts<R> in = {p.in.re + at, p.in.im + at, step};
            const Parts<R> out = {p.out.re + to, p.out.im + to, l * p.out.stride};
            if (k > 0) turn_column(p.group[0].first_twiddles, l, k, r, in, x);
            chirp.run(k > 0 ? x : in, out);
        }
}

template void store_chirp(int64_t, float*);
template void store_chirp(int64_t, double*);
template void large_pass(const Pass<float>&);
template void large_pass(const Pass<double>&);

}  // namespace orvel::fft
