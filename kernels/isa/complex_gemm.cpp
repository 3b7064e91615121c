// kernels/isa/complex_gemm.cpp - complex matrix products on packed panels
//
// Panels keep real and imaginary parts apart, so that a tile runs like a real one. Each element of C
// receives, for each inner index in ascending order, the products re*re, -im*im and re*im, im*re, in this
// order.
#include "kernels/isa/loops.h"
#include "kernels/isa/tile.h"

namespace orvel::kernels {

namespace {

template <class R>
constexpr int most_rows = complex_tile_vectors* lanes<R>;
template <class R>
constexpr int most_across = most_rows<R> > complex_tile_columns ? most_rows<R> : complex_tile_columns;

// Where a tile lies in C, and what of it exists.
template <class R>
struct Place {
    const R* next;
    int64_t row, column;
    int rows;
    char triangle;  // A when the whole tile counts
    bool from_zero;
};

// Elements of C at a place, which is at c, apart from each other. What does not exist is not touched, and
// zero in the tile.
template <class R, int V, int N>
struct TileOfC {
    static constexpr int rows = V * lanes<R>;

    void load(const R* c, int64_t ldc, const Place<R>& place)
    {
        const auto fill = [&](auto exists) __attribute__((always_inline))
        {
            for (int j = 0; j < N; ++j)
                for (int i = 0; i < rows; ++i) {
                    re[j][i] = exists(i, j) ? c[2 * (j * ldc + i)] : R(0);
                    im[j][i] = exists(i, j) ? c[2 * (j * ldc + i) + 1] : R(0);
                }
        };
        if (place.from_zero)
            fill([](int, int) { return false; });
        else if (is_whole(place))
            fill([](int, int) { return true; });
        else
            fill([&place](int i, int j) { return is_at(place, i, j); });
    }
    void store(R* c, int64_t ldc, const Place<R>& place) const
    {
        const bool whole = is_whole(place);
        for (int j = 0; j < N; ++j)
            for (int i = 0; i < place.rows; ++i)
                if (whole || is_at(place, i, j)) {
                    c[2 * (j * ldc + i)] = re[j][i];
                    c[2 * (j * ldc + i) + 1] = im[j][i];
                }
    }

    R re[N][rows], im[N][rows];

private:
    static bool is_whole(const Place<R>& place) { return place.rows == rows && place.triangle == 'A'; }
    static bool is_at(const Place<R>& place, int i, int j)
    {
        return i < place.rows && is_in(place.triangle, place.row + i, place.column + j);
    }
};

// One tile of V vectors by N columns. While it runs, the next one of C is fetched.
template <class R, int V, int N>
void complex_tile(int64_t k, const R* a, const R* b, R* c, int64_t ldc, const Place<R>& place)
{
    constexpr int L = lanes<R>;
    for (int j = 0; j < N; ++j)
        for (int v = 0; v < 2 * V; ++v) __builtin_prefetch(place.next + 2 * j * ldc + v * L, 1);
    Vector<R, L> re[N][V], im[N][V];
    TileOfC<R, V, N> tile;
    tile.load(c, ldc, place);
#pragma GCC unroll 16
    for (int j = 0; j < N; ++j)
#pragma GCC unroll 16
        for (int v = 0; v < V; ++v) {
            re[j][v] = at<L>(tile.re[j] + v * L);
            im[j][v] = at<L>(tile.im[j] + v * L);
        }
    for (int64_t l = 0; l < k; ++l) {
        Vector<R, L> x[V], y[V];
#pragma GCC unroll 16
        for (int v = 0; v < V; ++v) {
            x[v] = at<L>(a + v * L);
            y[v] = at<L>(a + (V + v) * L);
        }
#pragma GCC unroll 16
        for (int j = 0; j < N; ++j)
#pragma GCC unroll 16
            for (int v = 0; v < V; ++v) {
                re[j][v] += x[v] * b[j];
                im[j][v] += y[v] * b[j];
                re[j][v] -= y[v] * b[N + j];
                im[j][v] += x[v] * b[N + j];
            }
        a += 2 * V * L;
        b += 2 * N;
    }
#pragma GCC unroll 16
    for (int j = 0; j < N; ++j)
#pragma GCC unroll 16
        for (int v = 0; v < V; ++v) {
            at<L>(tile.re[j] + v * L) = re[j][v];
            at<L>(tile.im[j] + v * L) = im[j][v];
        }
    tile.store(c, ldc, place);
}

// Where a factor lies as its panels see it: across a panel and along it, in complex elements.
template <class R>
struct Source {
    const R* p;
    int64_t across, along;
    R sign;  // of the imaginary parts

    const R* at(int64_t a, int64_t l) const { return p + 2 * (a * across + l * along); }
    Source from(int64_t a, int64_t l) const { return {at(a, l), across, along, sign}; }
};

// A symmetric or Hermitian factor of which one triangle is stored, or a factor that is.
template <class R>
struct Whole {
    Source<R> source;
    char stored;
    bool hermitian;

    // The numbers of lower or higher index in the panel's direction than along it.
    Source<R> part(bool lower) const
    {
        if (stored == 'A' || (stored == 'L') == lower) return source;
        return {source.p, source.along, source.across, hermitian ? -source.sign : source.sign};
    }
};

// `width` numbers side by side in a panel, real parts, then imaginary parts: alpha times those of the source
// that are there, and zeros.
template <class R>
void pack_part(int64_t k, const Source<R>& from, const R* alpha, int width, int here, R* __restrict to)
{
    const bool one = alpha[0] == R(1) && alpha[1] == R(0);
    for (int64_t l = 0; l < k; ++l, to += 2 * width) {
        const R* e = from.at(0, l);
#pragma GCC ivdep
        for (int a = 0; a < here; ++a) {
            const R re = e[2 * a * from.across], im = from.sign * e[2 * a * from.across + 1];
            to[a] = one ? re : alpha[0] * re - alpha[1] * im;
            to[width + a] = one ? im : alpha[0] * im + alpha[1] * re;
        }
        for (int a = here; a < width; ++a) to[a] = to[width + a] = 0;
    }
}

// The same where the panel, which begins at a0, meets the diagonal in every column from l0 on.
template <class R>
void pack_diagonal(int64_t k, const Whole<R>& all, int64_t a0, int64_t l0, const R* alpha, int width,
                   int here, R* to)
{
    const Source<R> lower = all.part(true), upper = all.part(false);
    for (int64_t l = 0; l < k; ++l) {
        R column[2 * most_across<R>];
        for (int a = 0; a < here; ++a) {
            const bool diagonal = a0 + a == l0 + l;
            const Source<R>& half = a0 + a < l0 + l ? upper : lower;
            const R* e = half.at(a0 + a, l0 + l);
            column[2 * a] = e[0];
            column[2 * a + 1] = all.hermitian && diagonal ? R(0) : half.sign * e[1];
        }
        pack_part<R>(1, {column, 1, 0, R(1)}, alpha, width, here, to + 2 * width * l);
    }
}

// The panel that begins at a0, of the inner indices from l0 on.
template <class R>
void pack_panel(int64_t k, const Whole<R>& all, int64_t a0, int64_t l0, const R* alpha, int width, int here,
                R* to)
{
    if (all.stored == 'A') return pack_part(k, all.source.from(a0, l0), alpha, width, here, to);
    const int64_t first = clamped(a0 - l0, 0, k), last = clamped(a0 + here - l0, 0, k);
    pack_part(first, all.part(true).from(a0, l0), alpha, width, here, to);
    pack_diagonal(last - first, all, a0, l0 + first, alpha, width, here, to + 2 * width * first);
    pack_part(k - last, all.part(false).from(a0, l0 + last), alpha, width, here, to + 2 * width * last);
}

template <class R>
int panel_rows(int64_t left)
{
    constexpr int L = lanes<R>;
    return left >= most_rows<R> ? most_rows<R> : static_cast<int>((left + L - 1) / L * L);
}

// Whole panels of columns that lie in a row: down one column after the other, as the memory has them.
template <class R>
void pack_columns(int64_t panels, int64_t k, const Source<R>& from, R* __restrict to)
{
    constexpr int L = lanes<R>, rows = most_rows<R>, ahead = 4;
    isa::Integers<R, L> even{}, odd{};
    for (int i = 0; i < L; ++i) even[i] = 2 * i, odd[i] = 2 * i + 1;
    for (int64_t l = 0; l < k; ++l)
        for (int64_t i = 0; i < panels; ++i) {
            const R* column = from.at(i * rows, l);
            R* panel = to + 2 * rows * (i * k + l);
            for (int r = 0; r < rows; r += L) {
                const R* e = column + 2 * r;
                __builtin_prefetch(e + 2 * ahead * from.along);
                __builtin_prefetch(e + 2 * ahead * from.along + L);
                const Vector<R, L> first = at<L>(e), second = at<L>(e + L);
                at<L>(panel + r) = isa::shuffle(first, second, even);
                at<L>(panel + rows + r) = from.sign * isa::shuffle(first, second, odd);
            }
        }
}

// Panels of most_rows rows, the last one narrower by whole vectors.
template <class R>
void pack_a(int64_t m, int64_t k, const Whole<R>& a, int64_t i0, int64_t l0, R* to)
{
    const R one[] = {1, 0};
    int64_t i = 0;
    if (a.stored == 'A' && a.source.across == 1) {
        const int64_t panels = m / most_rows<R>;
        pack_columns(panels, k, a.source.from(i0, l0), to);
        i = panels * most_rows<R>;
        to += 2 * i * k;
    }
    while (i < m) {
        const int rows = panel_rows<R>(m - i), here = m - i < rows ? static_cast<int>(m - i) : rows;
        pack_panel(k, a, i0 + i, l0, one, rows, here, to);
        to += 2 * rows * k;
        i += here;
    }
}

// Widths of the panels of B: as many of the largest as fit, then narrower ones without a gap.
constexpr int panel_columns(int64_t left)
{
    return left >= complex_tile_columns ? complex_tile_columns : left >= 4 ? 4 : left >= 2 ? 2 : 1;
}

template <class R>
void pack_b(int64_t k, int64_t n, const Whole<R>& b, int64_t j0, int64_t l0, const R* alpha, R* to)
{
    for (int64_t j = 0; j < n;) {
        const int columns = panel_columns(n - j);
        pack_panel(k, b, j0 + j, l0, alpha, columns, columns, to);
        to += 2 * columns * k;
        j += columns;
    }
}

template <class R, int V>
void tiles_of_columns(int columns, int64_t k, const R* a, const R* b, R* c, int64_t ldc,
                      const Place<R>& place)
{
    if (columns == complex_tile_columns)
        return complex_tile<R, V, complex_tile_columns>(k, a, b, c, ldc, place);
    if constexpr (complex_tile_columns > 4)
        if (columns == 4) return complex_tile<R, V, 4>(k, a, b, c, ldc, place);
    if (columns == 2) return complex_tile<R, V, 2>(k, a, b, c, ldc, place);
    complex_tile<R, V, 1>(k, a, b, c, ldc, place);
}

// The rows from i0 and columns from j0 of C, with panels of an inner depth k.
template <class R>
void multiply_panels(const ComplexProduct<R>& p, int64_t i0, int64_t m, int64_t j0, int64_t n, int64_t k,
                     const R* a, const R* b, bool from_zero)
{
    for (int64_t j = 0; j < n;) {
        const int columns = panel_columns(n - j);
        const R* panel = a;
        for (int64_t i = 0; i < m;) {
            const int rows = panel_rows<R>(m - i);
            const int here = m - i < rows ? static_cast<int>(m - i) : rows;
            R* tile = p.c + 2 * (i0 + i + (j0 + j) * p.c_columns);
            const Position where = position(p.triangle, i0 + i, j0 + j, here, columns);
            const R* next = i + here < m ? tile + 2 * here : tile + 2 * (columns * p.c_columns - i);
            const Place<R> place{next,     i0 + i, j0 + j, here, where == Position::across ? p.triangle : 'A',
                                 from_zero};
            if (where != Position::outside) {
                if (complex_tile_vectors > 1 && rows == most_rows<R>)
                    tiles_of_columns<R, complex_tile_vectors>(columns, k, panel, b, tile, p.c_columns, place);
                else
                    tiles_of_columns<R, 1>(columns, k, panel, b, tile, p.c_columns, place);
            }
            panel += 2 * rows * k;
            i += here;
        }
        b += 2 * columns * k;
        j += columns;
    }
}

// ---- small sizes: no packing, A with contiguous columns ---------------------------------------------------

// (re, im) pairs to (-im, re).
template <class R, int L>
inline Vector<R, L> turned(Vector<R, L> z)
{
    Vector<R, L> sign = {};
    for (int k = 0; k < L; k += 2) sign[k] = R(-1), sign[k + 1] = R(1);
    return isa::exchanged<R, L>(z) * sign;
}

// C(V*L/2, N) += A(V*L/2, k) * B(k, N); L counts real numbers.
template <class R, int L, int V, int N>
void direct_tile(const ComplexProduct<R>& p, int64_t row, int64_t column)
{
    typedef Vector<R, L> Pairs;
    R* c = p.c + 2 * (row + column * p.c_columns);
    const R* a = p.a + 2 * row;
    const R* b = p.b + 2 * column * p.b_columns;
    const R sign = p.b_conjugate ? R(-1) : R(1);
    Pairs sum[N][V];
#pragma GCC unroll 16
    for (int j = 0; j < N; ++j)
#pragma GCC unroll 16
        for (int v = 0; v < V; ++v)
            sum[j][v] = p.from_zero ? Pairs{} : at<L>(c + 2 * j * p.c_columns + v * L);
    for (int64_t l = 0; l < p.k; ++l) {
        Pairs x[V], y[V];
#pragma GCC unroll 16
        for (int v = 0; v < V; ++v) {
            x[v] = at<L>(a + v * L);
            y[v] = turned<R, L>(x[v]);
        }
#pragma GCC unroll 16
        for (int j = 0; j < N; ++j) {
            const R re = b[2 * j * p.b_columns], im = sign * b[2 * j * p.b_columns + 1];
#pragma GCC unroll 16
            for (int v = 0; v < V; ++v) {
                sum[j][v] += x[v] * re;
                sum[j][v] += y[v] * im;
            }
        }
        a += 2 * p.a_columns;
        b += 2 * p.b_rows;
    }
#pragma GCC unroll 16
    for (int j = 0; j < N; ++j)
#pragma GCC unroll 16
        for (int v = 0; v < V; ++v) at<L>(c + 2 * j * p.c_columns + v * L) = sum[j][v];
}

template <class R, int L, int V>
void direct_columns(const ComplexProduct<R>& p, int64_t row)
{
    int64_t j = 0;
    for (; j + 4 <= p.n; j += 4) direct_tile<R, L, V, 4>(p, row, j);
    for (; j < p.n; ++j) direct_tile<R, L, V, 1>(p, row, j);
}

// Rows that are left over go to ever narrower vectors.
template <class R, int L>
void direct_rows(const ComplexProduct<R>& p, int64_t row)
{
    if constexpr (L == lanes<R> && L > 2)
        for (; row + L <= p.m; row += L) direct_columns<R, L, 2>(p, row);
    for (; row + L / 2 <= p.m; row += L / 2) direct_columns<R, L, 1>(p, row);
    if constexpr (L > 2)
        if (row < p.m) direct_rows<R, L / 2>(p, row);
}

template <class R>
void direct(const ComplexProduct<R>* p)
{
    direct_rows<R, lanes<R>>(*p, 0);
}

// ---- large sizes ------------------------------------------------------------------------------------------

template <class R>
void packed(const ComplexProduct<R>* product, Blocks blocks, R* packed_a, R* packed_b)
{
    const ComplexProduct<R>& p = *product;
    const Whole<R> a{{p.a, p.a_rows, p.a_columns, p.a_conjugate ? R(-1) : R(1)}, p.a_stored, p.hermitian};
    const Whole<R> b{
        {p.b, p.b_columns, p.b_rows, p.b_conjugate ? R(-1) : R(1)}, turned_triangle(p.b_stored), p.hermitian};
    for (int64_t j = 0; j < p.n; j += blocks.columns) {
        const int64_t n = smaller(p.n - j, blocks.columns);
        for (int64_t l = 0; l < p.k; l += blocks.depth) {
            const int64_t k = smaller(p.k - l, blocks.depth);
            pack_b(k, n, b, j, l, p.alpha, packed_b);
            for (int64_t i = 0; i < p.m; i += blocks.rows) {
                const int64_t m = smaller(p.m - i, blocks.rows);
                pack_a(m, k, a, i, l, packed_a);
                multiply_panels(p, i, m, j, n, k, packed_a, packed_b, p.from_zero && l == 0);
            }
        }
    }
}

template <class R>
constexpr ComplexLevel3<R> complex_loops = {most_rows<R>, complex_tile_columns, direct<R>, packed<R>};

}  // namespace

const isa::ForComplex<ComplexLevel3> ORVEL_ISA::complex_product_loops = {complex_loops<float>,
                                                                         complex_loops<double>};

}  // namespace orvel::kernels
