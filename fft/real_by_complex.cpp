// fft/real_by_complex.cpp - real transforms of even length by complex ones of half the length
//
// The twiddle factors that join the halves would not fit beside those of the passes in the N reals of the
// work vector. Even ones are those of the last pass, and odd ones are made from them by one turn.
#include "fft/real_by_complex.h"

#include "fft/odd_real.h"
#include "fft/transform.h"

namespace orvel::fft {

namespace {

// The factors of half the length, in the same order.
Factors half_of(const Factors& f)
{
    Factors h;
    h.n = f.n / 2;
    h.most_in_last = most_in_last_of_real;
    int32_t even = 0;
    while (f.factor[even] % 2 != 0) ++even;
    if (f.factor[even] == 4) h.append(2);
    for (int32_t k = 0; k < f.count; ++k)
        if (k != even) h.append(f.factor[k]);
    return h;
}

// All elements between the first and the middle one, with their opposites. The last pass has the first of the
// roots that join them.
template <class R>
void for_pairs(typename JoinSplit<R>::Loop loop, const Factors& h, const R* tables, R* re, R* im, R* c)
{
    const int64_t m = h.n, end = (m + 1) / 2;
    const R* const turn = tables + 2 * m - 2;
    const Halves<R> at = {m, re, im, c, turn[0], turn[1]};
    const R one = 1, zero = 0;
    if (end > 1) loop(at, 1, 2, &one, &zero);
    int64_t known = 1;
    const auto take = [&](int64_t x, int64_t count, const R* cosine, const R* sine) {
        const int64_t done = x == 0 ? 1 : 0, begin = 2 * (x + done);
        known = x + count;
        if (begin < end) loop(at, begin, std::min(2 * known, end), cosine + done, sine + done);
    };
    if (goes_in_two(h)) {
        for_last_roots<R>(h, tables, take);
    } else if (h.count > 1) {
        const int64_t l = m / h.factor[h.count - 1];
        const R* const cosine = table_at(h, tables, l);
        take(0, l, cosine, cosine + l);
    }
    constexpr int64_t batch = 64;
    R cosine[batch], sine[batch];
    for (; 2 * known < end; known += batch) {
        const int64_t count = std::min(batch, (end + 1) / 2 - known);
        roots<R>(m, known, 1, count, 1, cosine, sine);
        loop(at, 2 * known, std::min(2 * (known + count), end), cosine, sine);
    }
}

template <class R>
void even_forward(const Factors& f, const R* in, R* out, R* scratch, const R* tables)
{
    const Factors h = half_of(f);
    const int64_t m = h.n;
    R *const re = scratch, *const im = scratch + m;
    transform<R>(h, tables, {interleaved(const_cast<R*>(in)), split_format(scratch, m), out});
    out[0] = re[0] + im[0];
    out[f.n - 1] = re[0] - im[0];
    for_pairs<R>(isa::of_type<R>(join_split_loops()).join, h, tables, re, im, out);
    if (m % 2 == 0) {
        out[m - 1] = re[m / 2];
        out[m] = -im[m / 2];
    }
}

template <class R>
void even_backward(const Factors& f, const R* in, R* out, R* scratch, const R* tables)
{
    const Factors h = half_of(f);
    const int64_t m = h.n;
    R* const z = first_target_is_scratch(h) ? out : scratch;
    if (z == in) {
        std::copy(in, in + f.n, scratch);
        in = scratch;
    }
    R *const re = z, *const im = z + m;
    const R first = in[0], last = in[f.n - 1], middle_re = m % 2 == 0 ? in[m - 1] : R(0),
            middle_im = m % 2 == 0 ? in[m] : R(0);
    if (m > 1) for_pairs<R>(isa::of_type<R>(join_split_loops()).split, h, tables, re, im, const_cast<R*>(in));
    re[0] = first + last;
    im[0] = first - last;
    if (m % 2 == 0) {
        re[m / 2] = 2 * middle_re;
        im[m / 2] = -2 * middle_im;
    }
    transform<R>(h, tables, {split_format(z, m, false), interleaved(out, false), scratch});
}

}  // namespace

template <class R>
void store_real_roots(const Factors& f, R* stored)
{
    if (f.n % 2 != 0) return store_odd_roots<R>(f, stored);
    if (f.n == 2) return;
    store_tables<R>(half_of(f), stored);
    R* const turn = stored + f.n - 2;
    R cosine, half;
    roots<R>(f.n, 1, 0, 1, 1, &cosine, turn);
    roots<R>(2 * f.n, 1, 0, 1, 1, &cosine, &half);
    turn[1] = 2 * half * half;
}

namespace {

// The transform of two numbers, either way.
template <class R>
void sum_and_difference(const R* in, R* out)
{
    const R first = in[0], second = in[1];
    out[0] = first + second;
    out[1] = first - second;
}

}  // namespace

template <class R>
void real_forward(const Factors& f, const R* in, R* out, R* scratch, const R* stored)
{
    if (f.n == 2) return sum_and_difference(in, out);
    (f.n % 2 == 0 ? even_forward<R> : odd_transform<R, true>)(f, in, out, scratch, stored);
}

template <class R>
void real_backward(const Factors& f, const R* in, R* out, R* scratch, const R* stored)
{
    if (f.n == 2) return sum_and_difference(in, out);
    (f.n % 2 == 0 ? even_backward<R> : odd_transform<R, false>)(f, in, out, scratch, stored);
}

template void store_real_roots(const Factors&, float*);
template void store_real_roots(const Factors&, double*);
template void real_forward(const Factors&, const float*, float*, float*, const float*);
template void real_forward(const Factors&, const double*, double*, double*, const double*);
template void real_backward(const Factors&, const float*, float*, float*, const float*);
template void real_backward(const Factors&, const double*, double*, double*, const double*);

}  // namespace orvel::fft
