// fft/roots.h - roots of unity, and the tables of twiddle factors of a length
#pragma once

#include "fft/plan.h"

namespace orvel::fft {

// `count` roots exp(2 pi i (start + step k) / n), cosine and sine `stride` apart from the next.
template <class R>
void roots(int64_t n, int64_t start, int64_t step, int64_t count, int64_t stride, R* cosine, R* sine);

// Calls use(j, cosine, sine) for the angles 2 pi j k / n, j < count: for sums from the definition, which make
// the roots as they need them, a few at a time.
template <class R, class Use>
void for_multiples(int64_t n, int64_t k, int64_t count, Use use)
{
    constexpr int64_t batch = 64;
    R cosine[batch], sine[batch];
    for (int64_t first = 0; first < count; first += batch) {
        const int64_t here = std::min(batch, count - first);
        roots<R>(n, first * k % n, k, here, 1, cosine, sine);
        for (int64_t t = 0; t < here; ++t) use(first + t, cosine[t], sine[t]);
    }
}

// The tables of all passes; see Group and table_at. They take 2 * (n - factor[0]) numbers. A single factor
// has none, but beyond largest_general its chirp of n + 1 numbers.
template <class R>
void store_tables(const Factors& f, R* tables);

// Calls use(x, count, cosine, sine) for the roots w(n)^x, x < n / 5 at least, of a transform that goes in
// two, some at a time.
template <class R, class Use>
void for_last_roots(const Factors& f, const R* tables, Use use)
{
    const int64_t last = f.factor[f.count - 1], all = f.n / last, l = length_of_rows(f), before = all / l;
    const R* const rows = table_at(f, tables, all);
    for (int64_t x = 0; x < all; x += twiddle_row) {
        const R* const row = rows + 2 * (last - 1) * twiddle_row * (x % l / twiddle_row * before + x / l);
        use(x, int64_t{twiddle_row}, row, row + twiddle_row);
    }
}

}  // namespace orvel::fft
