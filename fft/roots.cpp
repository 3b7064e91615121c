// fft/roots.cpp - roots of unity, and the tables of twiddle factors of a length
#include "fft/roots.h"

#include "fft/chirp.h"

namespace orvel::fft {

template <class R>
void roots(int64_t n, int64_t start, int64_t step, int64_t count, int64_t stride, R* cosine, R* sine)
{
    isa::of_type<R>(root_loops())(n, start, step, count, stride, cosine, sine);
}

namespace {

// Rows of roots; see Group. The columns are k + l * kappa, k < l in rows and kappa < before.
template <class R>
struct Rows {
    R* to;
    int64_t l, before, factors;

    // Roots w(n)^(i (first + x)) for the columns x; `place` is theirs among those of a column.
    void store(int64_t n, int64_t i, int64_t first, int64_t place)
    {
        constexpr int64_t most = 512;
        R cosine[most], sine[most];
        const int64_t row = std::min<int64_t>(twiddle_row, l), all = l * before;
        for (int64_t begin = 0; begin < all; begin += most) {
            const int64_t count = std::min(most, all - begin);
            roots<R>(n, i * (first + begin), i, count, 1, cosine, sine);
            for (int64_t x = 0; x < count; x += row) {
                const int64_t k = (begin + x) % l, kappa = (begin + x) / l;
                R* const at = to + 2 * row * ((k / row * before + kappa) * (factors - 1) + place);
                std::copy(cosine + x, cosine + x + row, at);
                std::copy(sine + x, sine + x + row, at + row);
            }
        }
    }
};

template <class R>
void store_rows(int64_t r, int64_t s, int64_t l, int64_t before, R* table)
{
    Rows<R> rows = {table, l, before, r * s};
    const int64_t columns = l * before;
    for (int64_t i = 1; i < r; ++i) rows.store(columns * r, i, 0, i - 1);
    for (int64_t k2 = 0; s > 1 && k2 < r; ++k2)
        for (int64_t i = 1; i < s; ++i)
            rows.store(columns * r * s, i, columns * k2, r - 1 + (s - 1) * k2 + i - 1);
}

template <class R>
void store_plainly(int64_t r, int64_t l, R* table)
{
    for (int64_t i = 1; l > 1 && i < r; ++i)
        roots<R>(l * r, 0, i, l, 1, table + 2 * l * (i - 1), table + 2 * l * (i - 1) + l);
}

}  // namespace

template <class R>
void store_tables(const Factors& f, R* tables)
{
    if (f.count == 1 && f.n > largest_general) return store_chirp<R>(f.n, tables);
    const Plan plan(f);
    int64_t l = 1;
    for (int32_t pass = 0, k = 0; pass < plan.count; ++pass) {
        const int64_t rows = l;
        while (k < plan.end[pass]) {
            const int32_t together =
                plan.over_blocks(pass) ? factors_of_group(f, k, plan.end[pass], plan.in_two) : 1;
            const int64_t r = f.factor[k], s = together == 2 ? f.factor[k + 1] : 1;
            R* const table = table_at(f, tables, l);
            if (k == 0 && together == 2)
                store_plainly<R>(s, r, tables);
            else if (!plan.over_blocks(pass))
                store_plainly<R>(r, l, table);
            else if (pass == 0)
                store_rows<R>(r, s, l, 1, table);
            else
                store_rows<R>(r, s, rows, l / rows, table);
            l *= r * s;
            k += together;
        }
    }
}

template void roots(int64_t, int64_t, int64_t, int64_t, int64_t, float*, float*);
template void roots(int64_t, int64_t, int64_t, int64_t, int64_t, double*, double*);
template void store_tables(const Factors&, float*);
template void store_tables(const Factors&, double*);

}  // namespace orvel::fft
