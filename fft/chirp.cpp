// fft/chirp.cpp - passes of large odd factors, by convolution with a chirp or summed up directly
//
// With h = (r + 1) / 2, which is 1/2 modulo r, jk = h j^2 + h k^2 - h (j - k)^2 modulo r: a transform of
// length r is a convolution with the chirp w(r)^(-h j^2), made by transforms of a length of small factors.
// Source: L. Bluestein, A linear filtering approach to the computation of discrete Fourier transform, 1970.
// Elements j and r - j of the chirp are equal, so that half of it is stored: cosine and sine in turn.
#include "fft/chirp.h"

#ifdef __linux__
#include <sys/mman.h>
#endif

#include <algorithm>

#include "fft/transform.h"
#include "frame/scratch.h"

namespace orvel::fft {

namespace {

// The shortest length from n on that is 1, 5/4 or 3/2 of a power of 2.
int64_t convolution_length(int64_t n)
{
    int64_t best = 16;
    while (best < n) best *= 2;
    for (const int64_t eighths : {5, 6})
        if (best / 8 * eighths >= n) return best / 8 * eighths;
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

    // The transform of the r numbers that were put into input().
    void run(Parts<R> z);
    Parts<R> input() { return split_format<R>(a_, length_.n); }

private:
    // `from` may be `to`.
    void transform(R* from, R* to, bool forward) const
    {
        const int64_t n = length_.n;
        fft::transform<R>(length_, tables_,
                          {split_format(from, n, forward), split_format(to, n, forward), scratch_, nullptr,
                           numbers_of_scratch<R>(length_)});
    }

    int64_t r_ = 0;
    Factors length_;
    Scratch<R> memory_;  // one block: the run-time library gives small ones back to the system in each call
    const R* chirp_;
    R *spectrum_, *tables_, *a_, *b_, *scratch_;
};

template <class R>
bool Chirp<R>::prepare(int64_t r, const R* stored)
{
    r_ = r;
    length_ = factorize(convolution_length(2 * r - 1));
    const int64_t n = length_.n, apart_by = 2 * n + 16;
    const bool in_place = goes_in_two(length_);  // else a first pass would have to move its input
    const int64_t scratch = numbers_of_scratch<R>(length_) + 16;
    const int64_t all = (in_place ? 3 : 4) * apart_by + scratch + r + 1;
    if (!memory_.allocate(all)) return false;
    prefer_large_pages(memory_, all * static_cast<int64_t>(sizeof(R)));
    spectrum_ = memory_;
    tables_ = spectrum_ + apart_by;
    a_ = tables_ + apart_by;
    b_ = in_place ? a_ : a_ + apart_by;
    scratch_ = b_ + apart_by;
    store_tables<R>(length_, tables_);
    chirp_ = stored;
    if (stored == nullptr) {
        R *const cosine = scratch_, *const sine = scratch_ + n, *const chirp = scratch_ + scratch;
        roots<R>(r, 0, 1, r, 1, cosine, sine);
        for_chirp(r, [&](int64_t j, int64_t at) {
            chirp[2 * j] = cosine[at];
            chirp[2 * j + 1] = sine[at];
        });
        chirp_ = chirp;
    }

    R *const re = a_, *const im = re + n;
    std::fill(re + r, re + n - r + 1, R(0));
    std::fill(im + r, im + n - r + 1, R(0));
    const R scale = 1 / static_cast<R>(n);
    re[0] = scale;
    im[0] = 0;
    for (int64_t j = 1; j <= r / 2; ++j) {
        re[j] = re[r - j] = re[n - j] = re[n - r + j] = chirp_[2 * j] * scale;
        im[j] = im[r - j] = im[n - j] = im[n - r + j] = chirp_[2 * j + 1] * scale;
    }
    transform(a_, spectrum_, true);
    return true;
}

template <class R>
void Chirp<R>::run(Parts<R> z)
{
    const int64_t n = length_.n;
    R *const re = a_, *const im = re + n;
    const auto turn = [&](int64_t j, int64_t at) {
        const R c = chirp_[2 * at], s = chirp_[2 * at + 1], x = re[j], y = im[j];
        re[j] = x * c + y * s;
        im[j] = y * c - x * s;
    };
    const auto turn_all = [&] {
        for (int64_t j = 0; j <= r_ / 2; ++j) turn(j, j);
        for (int64_t j = r_ / 2 + 1; j < r_; ++j) turn(j, r_ - j);
    };
    turn_all();
    std::fill(re + r_, re + n, R(0));
    std::fill(im + r_, im + n, R(0));
    transform(a_, b_, true);
    R *const bre = b_, *const bim = bre + n;
    const R *const sre = spectrum_, *const sim = sre + n;
    for (int64_t k = 0; k < n; ++k) {
        const R x = bre[k], y = bim[k];
        bre[k] = x * sre[k] - y * sim[k];
        bim[k] = x * sim[k] + y * sre[k];
    }
    transform(b_, a_, false);
    turn_all();
    for (int64_t k = 0; k < r_; ++k) {
        z.re[k * z.stride] = re[k];
        z.im[k * z.stride] = im[k];
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

template <class R>
void large_pass(const Pass<R>& p)
{
    Chirp<R> chirp;
    const int64_t r = p.group[0].first, l = p.l;
    if (!chirp.prepare(r, l == 1 && p.m == 1 ? p.group[0].first_twiddles : nullptr)) return sum_directly(p);
    const Parts<R> x = chirp.input();
    for (int64_t b = 0; b < p.m; ++b)
        for (int64_t k = 0; k < l; ++k) {
            for (int64_t i = 0; i < r; ++i) {
                const int64_t e = (k + l * (b + p.m * i)) * p.in.stride;
                x.re[i] = p.in.re[e];
                x.im[i] = p.in.im[e];
                if (k == 0 || i == 0) continue;
                const R c = p.group[0].first_twiddles[2 * l * (i - 1) + k],
                        s = p.group[0].first_twiddles[2 * l * (i - 1) + l + k];
                const R re = x.re[i] * c + x.im[i] * s;
                x.im[i] = x.im[i] * c - x.re[i] * s;
                x.re[i] = re;
            }
            const int64_t to = (k + l * r * b) * p.out.stride;
            chirp.run({p.out.re + to, p.out.im + to, l * p.out.stride});
        }
}

template void store_chirp(int64_t, float*);
template void store_chirp(int64_t, double*);
template void large_pass(const Pass<float>&);
template void large_pass(const Pass<double>&);

}  // namespace orvel::fft
