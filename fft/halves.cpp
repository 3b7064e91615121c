// fft/halves.cpp - real transforms of even length by complex ones of half the length
#include "fft/halves.h"

#include <algorithm>

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
void for_pairs(typename JoinSplit<R>::Loop loop, const Factors& h, const Halves<R>& at, const R* roots_of_passes)
{
    const int64_t m = h.n, end = (m + 1) / 2;
    const R one = 1, zero = 0;
    if (end > 1) loop(at, 1, 2, &one, &zero);
    int64_t known = 1;
    const auto take = [&](int64_t x, int64_t count, const R* cosine, const R* sine) {
        const int64_t done = x == 0 ? 1 : 0, begin = 2 * (x + done);
        known = x + count;
        if (begin < end) loop(at, begin, std::min(2 * known, end), cosine + done, sine + done);
    };
    if (goes_in_two(h)) {
        for_last_roots<R>(h, roots_of_passes, take);
    } else if (h.count > 1) {
        const int64_t l = m / h.factor[h.count - 1];
        const R* const cosine = roots_of_passes + 2 * (l - h.factor[0]);
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
void even_forward(const Factors& f, const R* in, R* out, R* scratch, const R* roots_of_passes)
{
    const Factors h = half_of(f);
    const int64_t m = h.n;
    R *const re = scratch, *const im = scratch + m;
    if (m == 1) {
        re[0] = in[0];
        im[0] = in[1];
    } else {
        if (in == out && goes_in_two(h)) in = std::copy(in, in + f.n, scratch) - f.n;
        Storage<R> storage = {pairs(const_cast<R*>(in)), apart(scratch, m), out, nullptr};
        if (goes_in_two(h)) storage.between = narrow_between(h, out);
        transform<R>(h, roots_of_passes, storage);
    }
    out[0] = re[0] + im[0];
    out[f.n - 1] = re[0] - im[0];
    if (m == 1) return;
    const R* const turn = roots_of_passes + f.n - 2;
    for_pairs<R>(isa::of_type<R>(join_split_loops()).join, h, {m, re, im, out, turn[0], turn[1]}, roots_of_passes);
    if (m % 2 == 0) {
        out[m - 1] = re[m / 2];
        out[m] = -im[m / 2];
    }
}

template <class R>
void even_backward(const Factors& f, const R* in, R* out, R* scratch, const R* roots_of_passes)
{
    const Factors h = half_of(f);
    const int64_t m = h.n;
    // What the first pass reads is not what it writes; the number of passes decides.
    R* const z = goes_in_two(h) || first_target_is_scratch(h) ? out : scratch;
    if (z == in) {
        std::copy(in, in + f.n, scratch);
        in = scratch;
    }
    R *const re = z, *const im = z + m;
    R* const c = const_cast<R*>(in);
    const R first = c[0], last = c[f.n - 1], middle_re = m % 2 == 0 ? c[m - 1] : R(0),
            middle_im = m % 2 == 0 ? c[m] : R(0);
    if (m > 1) {
        const R* const turn = roots_of_passes + f.n - 2;
        for_pairs<R>(isa::of_type<R>(join_split_loops()).split, h, {m, re, im, c, turn[0], turn[1]}, roots_of_passes);
    }
    re[0] = first + last;
    im[0] = first - last;
    if (m % 2 == 0) {
        re[m / 2] = 2 * middle_re;
        im[m / 2] = -2 * middle_im;
    }
    if (m == 1) {
        const R sum = re[0], difference = im[0];
        out[0] = sum;
        out[1] = difference;
        return;
    }
    Storage<R> storage = {apart(z, m, false), pairs(out, false), scratch, nullptr};
    if (goes_in_two(h)) storage.between = narrow_between(h, scratch);
    transform<R>(h, roots_of_passes, storage);
}

}  // namespace

template <class R>
void store_real_roots(const Factors& f, R* stored)
{
    if (f.n % 2 != 0) return store_odd_roots<R>(f, stored);
    if (f.n == 2) return;
    const Factors h = half_of(f);
    store_blocks<R>(h, stored);
    R* const turn = stored + f.n - 2;
    R cosine, half;
    roots<R>(f.n, 1, 0, 1, 1, &cosine, turn);
    roots<R>(2 * f.n, 1, 0, 1, 1, &cosine, &half);
    turn[1] = 2 * half * half;
}

template <class R>
void real_forward(const Factors& f, const R* in, R* out, R* scratch, const R* roots_of_passes)
{
    if (f.n % 2 == 0)
        even_forward<R>(f, in, out, scratch, roots_of_passes);
    else
        odd_forward<R>(f, in, out, scratch, roots_of_passes);
}

template <class R>
void real_backward(const Factors& f, const R* in, R* out, R* scratch, const R* roots_of_passes)
{
    if (f.n % 2 == 0)
        even_backward<R>(f, in, out, scratch, roots_of_passes);
    else
        odd_backward<R>(f, in, out, scratch, roots_of_passes);
}

template void store_real_roots(const Factors&, float*);
template void store_real_roots(const Factors&, double*);
template void real_forward(const Factors&, const float*, float*, float*, const float*);
template void real_forward(const Factors&, const double*, double*, double*, const double*);
template void real_backward(const Factors&, const float*, float*, float*, const float*);
template void real_backward(const Factors&, const double*, double*, double*, const double*);

}  // namespace orvel::fft
