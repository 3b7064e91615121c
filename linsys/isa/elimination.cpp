// linsys/isa/elimination.cpp - Gaussian elimination of a panel, a leaf of columns at a time
//
// Every element receives its products in ascending order of the steps. A complex product is added as four
// real ones: those with the real part of the element of U first. So the bits are those of the elimination
// column by column with the vector kernels.
#include "kernels/isa/lanes.h"
#include "kernels/isa/tile.h"
#include "linsys/isa/loops.h"

namespace orvel::linsys {

namespace {

using kernels::held;
using kernels::lanes;
using kernels::Vector;
using kernels::WholeOf;

template <class R>
using Lane = Vector<R, lanes<R>>;

// Whole numbers in lanes as wide as those of R.
template <class R>
struct WholeLane;
template <>
struct WholeLane<float> {
    typedef int32_t type __attribute__((vector_size(kernels::vector_bytes)));
};
template <>
struct WholeLane<double> {
    typedef int64_t type __attribute__((vector_size(kernels::vector_bytes)));
};
template <class R>
using Whole = typename WholeLane<R>::type;

template <class R>
inline Lane<R>& at(R* p)
{
    return *reinterpret_cast<Lane<R>*>(p);
}
template <class R>
inline const Lane<R>& at(const R* p)
{
    return *reinterpret_cast<const Lane<R>*>(p);
}

// A vector of rows, and one number; imaginary parts are not touched in real panels.
template <class R, bool Complex>
struct Rows {
    Lane<R> re, im;

    static Rows load(const R* p, int64_t half) { return {at(p), Complex ? at(p + half) : Lane<R>{}}; }
    void store(R* p, int64_t half) const
    {
        at(p) = re;
        if constexpr (Complex) at(p + half) = im;
    }
    // += m * u
    template <class U>
    void add(const Rows& m, const U& u_re, const U& u_im)
    {
        re += m.re * u_re;
        if constexpr (Complex) {
            im += m.im * u_re;
            re -= m.im * u_im;
            im += m.re * u_im;
        }
    }
    // What is left of a where the rows are not chosen.
    template <class Mask>
    static Rows choose(Mask chosen, const Rows& a, const Rows& b)
    {
        return {chosen ? a.re : b.re, Complex ? (chosen ? a.im : b.im) : Lane<R>{}};
    }
};

template <class R>
inline Whole<R> lane_numbers()
{
    Whole<R> lane = {};
    for (int k = 0; k < lanes<R>; ++k) lane[k] = static_cast<typename WholeOf<R>::type>(k);
    return lane;
}

// Rows within a vector that lie below row t of it.
template <class R>
inline Whole<R> below(int64_t t)
{
    return lane_numbers<R>() > static_cast<typename WholeOf<R>::type>(t);
}

template <class R>
inline Lane<R> broadcast(Lane<R> v, int t)
{
    const Whole<R> order = Whole<R>{} + static_cast<typename WholeOf<R>::type>(t);
    return __builtin_shuffle(v, order);
}

// ---- forward elimination with the columns before ----------------------------------------------------------

// V vectors of rows of N columns get their products with k rows of C.
template <class R, bool Complex, int V, int N>
inline __attribute__((always_inline)) void add_products(int64_t k, const R* a, const R* top, PanelShape shape,
                                                        Rows<R, Complex> (&sum)[N][V])
{
    for (int64_t l = 0; l < k; ++l, a += shape.step) {
        Rows<R, Complex> m[V];
#pragma GCC unroll 4
        for (int v = 0; v < V; ++v) m[v] = Rows<R, Complex>::load(a + v * lanes<R>, shape.half);
#pragma GCC unroll 8
        for (int j = 0; j < N; ++j) {
            const R re = top[j * shape.step + l], im = Complex ? top[j * shape.step + shape.half + l] : R(0);
#pragma GCC unroll 4
            for (int v = 0; v < V; ++v) sum[j][v].add(m[v], re, im);
        }
    }
}

// The triangle at the diagonal: rows of one vector, each lane used as soon as it is final.
template <class R, bool Complex, int N>
inline __attribute__((always_inline)) void apply_triangle(const R* a, PanelShape shape,
                                                          Rows<R, Complex> (&sum)[N][1])
{
    using Here = Rows<R, Complex>;
#pragma GCC unroll 16
    for (int t = 0; t < lanes<R> - 1; ++t) {
        const Here m = Here::load(a + t * shape.step, shape.half);
        const Whole<R> rest = below<R>(t);
#pragma GCC unroll 8
        for (int j = 0; j < N; ++j) {
            Here next = sum[j][0];
            next.add(m, broadcast<R>(sum[j][0].re, t), Complex ? broadcast<R>(sum[j][0].im, t) : Lane<R>{});
            sum[j][0] = Here::choose(rest, next, sum[j][0]);
        }
    }
}

template <class R, bool Complex, int V, int N, bool Triangle>
inline __attribute__((always_inline)) void eliminate_rows(int64_t k, int64_t row, const R* p, R* c,
                                                          PanelShape shape)
{
    Rows<R, Complex> sum[N][V];
#pragma GCC unroll 8
    for (int j = 0; j < N; ++j)
#pragma GCC unroll 4
        for (int v = 0; v < V; ++v)
            sum[j][v] = Rows<R, Complex>::load(c + j * shape.step + row + v * lanes<R>, shape.half);
    add_products<R, Complex, V, N>(k, p + row, c, shape, sum);
    if constexpr (Triangle) apply_triangle<R, Complex, N>(p + row + row * shape.step, shape, sum);
#pragma GCC unroll 8
    for (int j = 0; j < N; ++j)
#pragma GCC unroll 4
        for (int v = 0; v < V; ++v) sum[j][v].store(c + j * shape.step + row + v * lanes<R>, shape.half);
}

// Vectors of rows and columns of a tile, as the registers allow.
#if defined(__AVX512F__)
template <bool Complex>
constexpr int tall = Complex ? 1 : 3;
template <bool Complex>
constexpr int wide = 8;
#else
template <bool Complex>
constexpr int tall = 1;
template <bool Complex>
constexpr int wide = Complex ? 4 : 8;
#endif

template <class R, bool Complex, int N>
void eliminate_columns(int64_t k, int64_t m, const R* p, R* c, PanelShape shape)
{
    constexpr int L = lanes<R>, V = tall<Complex>;
    int64_t row = 0;
    for (; row < k; row += L) eliminate_rows<R, Complex, 1, N, true>(row, row, p, c, shape);
    for (; row + (V - 1) * L < m; row += V * L) eliminate_rows<R, Complex, V, N, false>(k, row, p, c, shape);
    for (; row < m; row += L) eliminate_rows<R, Complex, 1, N, false>(k, row, p, c, shape);
}

template <class R, bool Complex>
void eliminate(int64_t k, int64_t m, int64_t n, const R* p, R* c, PanelShape shape)
{
    constexpr int N = wide<Complex>;
    int64_t j = 0;
    for (; j + N <= n; j += N) eliminate_columns<R, Complex, N>(k, m, p, c + j * shape.step, shape);
    for (; j + N / 2 <= n; j += N / 2)
        eliminate_columns<R, Complex, N / 2>(k, m, p, c + j * shape.step, shape);
    for (; j < n; ++j) eliminate_columns<R, Complex, 1>(k, m, p, c + j * shape.step, shape);
}

// ---- steps of a leaf --------------------------------------------------------------------------------------

template <class R>
inline Lane<R> magnitude(Lane<R> x)
{
    return kernels::Lanes<R, kernels::vector_bytes>::magnitude(x);
}

// The best row of each lane so far: the first of the largest.
template <class R>
class Search {
public:
    explicit Search(int64_t row) : none_(row)
    {
        best_ = Lane<R>{} - R(1);
        row_ = Whole<R>{};
    }

    // Rows from `row` on, where `chosen`.
    template <bool Complex, class Mask>
    void see(int64_t row, const Rows<R, Complex>& x, Lane<R> s, Mask chosen)
    {
        Lane<R> size = magnitude<R>(x.re);
        if constexpr (Complex) size = held(size + magnitude<R>(x.im));
        size *= s;
        const auto better = (size > best_) & chosen;
        best_ = better ? size : best_;
        row_ = better ? Whole<R>{} + static_cast<typename WholeOf<R>::type>(row) : row_;
    }

    // Without branches: which row it is, nobody can predict.
    int64_t first_of_largest(int64_t m) const
    {
        Lane<R> largest = best_;
#pragma GCC unroll 4
        for (int w = 1; w < lanes<R>; w *= 2) {
            const Lane<R> other = __builtin_shuffle(largest, apart(w));
            largest = other > largest ? other : largest;
        }
        // What no row has reached counts as the first row beyond all.
        Whole<R> row = (best_ == largest) & (best_ >= 0) ? row_ + lane_numbers<R>() : Whole<R>{} + beyond;
#pragma GCC unroll 4
        for (int w = 1; w < lanes<R>; w *= 2) {
            const Whole<R> other = __builtin_shuffle(row, apart(w));
            row = other < row ? other : row;
        }
        const int64_t found = row[0];
        return found < m ? found : none_;
    }

private:
    static constexpr auto beyond = static_cast<typename WholeOf<R>::type>(INT32_MAX);

    static Whole<R> apart(int w) { return lane_numbers<R>() ^ static_cast<typename WholeOf<R>::type>(w); }

    int64_t none_;
    Lane<R> best_;
    Whole<R> row_;
};

template <class R, bool Complex>
int64_t pivot(int64_t c, int64_t m, const R* x, const R* s, PanelShape shape)
{
    constexpr int L = lanes<R>;
    Search<R> search(c);
    int64_t row = c / L * L;
    search.template see<Complex>(row, Rows<R, Complex>::load(x + row, shape.half), at(s + row),
                                 below<R>(c - row - 1));
    for (row += L; row < m; row += L)
        search.template see<Complex>(row, Rows<R, Complex>::load(x + row, shape.half), at(s + row),
                                     below<R>(-1));
    return search.first_of_largest(m);
}

// t * x; the products are rounded before they are added, on every level.
template <class R, bool Complex>
inline Rows<R, Complex> times(const R* t, const Rows<R, Complex>& x)
{
    if constexpr (Complex)
        return {held(t[0] * x.re) - held(t[1] * x.im), held(t[0] * x.im) + held(t[1] * x.re)};
    else
        return {t[0] * x.re, Lane<R>{}};
}

template <class R, bool Complex>
int64_t step(int64_t c, int64_t m, int64_t n, const R* t, const R* s, R* p, PanelShape shape)
{
    using Here = Rows<R, Complex>;
    constexpr int L = lanes<R>;
    const int64_t others = n - c - 1;
    R* const own = p + c * shape.step;
    R* const next = own + shape.step;
    const R scale[2] = {t[0], Complex ? t[1] : R(0)};
    R u_re[small_order], u_im[small_order];
    for (int64_t j = 0; j < others; ++j) {
        u_re[j] = next[j * shape.step + c];
        u_im[j] = Complex ? next[j * shape.step + shape.half + c] : R(0);
    }
    Search<R> search(c + 1);
    // Rows of the first vector up to c stay as they are.
    const int64_t first = (c + 1) / L * L;
    {
        const Whole<R> rest = below<R>(c - first);
        const Here old = Here::load(own + first, shape.half), m_first = times<R, Complex>(scale, old);
        Here::choose(rest, m_first, old).store(own + first, shape.half);
        for (int64_t j = 0; j < others; ++j) {
            R* const column = next + j * shape.step + first;
            const Here before = Here::load(column, shape.half);
            Here sum = before;
            sum.add(m_first, u_re[j], u_im[j]);
            Here::choose(rest, sum, before).store(column, shape.half);
            if (j == 0) search.template see<Complex>(first, sum, at(s + first), rest);
        }
    }
    for (int64_t row = first + L; row < m; row += L) {
        Here mult = times<R, Complex>(scale, Here::load(own + row, shape.half));
        mult.re = held(mult.re);
        if constexpr (Complex) mult.im = held(mult.im);
        mult.store(own + row, shape.half);
        if (others == 0) continue;
        Here sum = Here::load(next + row, shape.half);
        sum.add(mult, u_re[0], u_im[0]);
        sum.store(next + row, shape.half);
        search.template see<Complex>(row, sum, at(s + row), below<R>(-1));
        for (int64_t j = 1; j < others; ++j) {
            R* const column = next + j * shape.step + row;
            Here other = Here::load(column, shape.half);
            other.add(mult, u_re[j], u_im[j]);
            other.store(column, shape.half);
        }
    }
    return search.first_of_largest(m);
}

// ---- scale factors ----------------------------------------------------------------------------------------

template <class R>
void raise_maxima(int64_t m, const R* x, R* maxima)
{
    for (int64_t i = 0; i < m; ++i) {
        const R size = x[i] < 0 ? -x[i] : x[i];
        maxima[i] = size > maxima[i] ? size : maxima[i];
    }
}

template <class R>
void raise_complex_maxima(int64_t m, const R* x, R* maxima)
{
    for (int64_t i = 0; i < m; ++i) {
        const R re = x[2 * i] < 0 ? -x[2 * i] : x[2 * i],
                im = x[2 * i + 1] < 0 ? -x[2 * i + 1] : x[2 * i + 1];
        maxima[i] = re + im > maxima[i] ? re + im : maxima[i];
    }
}

// ---- complex numbers as pairs -----------------------------------------------------------------------------

template <class R>
void split(int64_t m, const R* pairs, R* re, R* im)
{
    constexpr int L = lanes<R>;
    const Whole<R> even = 2 * lane_numbers<R>(), odd = even + 1;
    int64_t i = 0;
    for (; i + L <= m; i += L) {
        const Lane<R> low = at(pairs + 2 * i), high = at(pairs + 2 * i + L);
        at(re + i) = __builtin_shuffle(low, high, even);
        at(im + i) = __builtin_shuffle(low, high, odd);
    }
    for (; i < m; ++i) re[i] = pairs[2 * i], im[i] = pairs[2 * i + 1];
}

template <class R>
void join(int64_t m, const R* re, const R* im, R* pairs)
{
    constexpr int L = lanes<R>;
    const Whole<R> lane = lane_numbers<R>(), low = lane / 2 + (lane & 1) * L, high = low + L / 2;
    int64_t i = 0;
    for (; i + L <= m; i += L) {
        const Lane<R> a = at(re + i), b = at(im + i);
        at(pairs + 2 * i) = __builtin_shuffle(a, b, low);
        at(pairs + 2 * i + L) = __builtin_shuffle(a, b, high);
    }
    for (; i < m; ++i) pairs[2 * i] = re[i], pairs[2 * i + 1] = im[i];
}

// ---- the estimate of the condition ------------------------------------------------------------------------

// w * u on a vector of pairs; the factors are (re, re) and (-im, im).
template <class R, bool Complex>
inline Lane<R> product(Lane<R> same, Lane<R> cross, Lane<R> u)
{
    if constexpr (Complex)
        return same * u + cross * kernels::swapped<R, lanes<R>>(u);
    else
        return same * u;
}

template <class R, bool Complex>
void grow(int64_t n, const R* u, const R* wm, const R* wp, R* z, R* sums)
{
    constexpr int L = lanes<R>;
    const int64_t count = Complex ? 2 * n : n;
    const Lane<R> sign = Complex ? ((lane_numbers<R>() & 1) == 0 ? Lane<R>{} - 1 : Lane<R>{} + 1) : Lane<R>{};
    const Lane<R> minus = Lane<R>{} + wm[0], plus = Lane<R>{} + wp[0];
    const Lane<R> minus_cross = Complex ? sign * wm[1] : sign, plus_cross = Complex ? sign * wp[1] : sign;
    Lane<R> before = {}, after = {};
    for (int64_t i = 0; i < count; i += L) {
        const Lane<R> e = at(u + i), old = at(z + i);
        before += magnitude<R>(old + product<R, Complex>(minus, minus_cross, e));
        const Lane<R> now = old + product<R, Complex>(plus, plus_cross, e);
        after += magnitude<R>(now);
        at(z + i) = now;
    }
    for (int k = 0; k < L; ++k) sums[0] += before[k], sums[1] += after[k];
}

// ---- small matrices ---------------------------------------------------------------------------------------

// Columns of A, interleaved when complex, to the columns of a panel and back.
template <class R, bool Complex>
inline void load_column(int64_t n, const R* from, R* to, int64_t half)
{
    constexpr int L = lanes<R>;
    int64_t i = 0;
    if constexpr (!Complex)
        for (; i + L <= n; i += L) at(to + i) = at(from + i);
#pragma GCC unroll 1
    for (; i < n; ++i) {
        to[i] = from[Complex ? 2 * i : i];
        if constexpr (Complex) to[half + i] = from[2 * i + 1];
    }
}

template <class R, bool Complex>
inline void store_column(int64_t n, const R* from, R* to, int64_t half)
{
    constexpr int L = lanes<R>;
    int64_t i = 0;
    if constexpr (!Complex)
        for (; i + L <= n; i += L) at(to + i) = at(from + i);
#pragma GCC unroll 1
    for (; i < n; ++i) {
        to[Complex ? 2 * i : i] = from[i];
        if constexpr (Complex) to[2 * i + 1] = from[half + i];
    }
}

template <class R>
inline void swap_numbers(R& a, R& b)
{
    const R c = a;
    a = b;
    b = c;
}

// Scale factors: 1 / the largest magnitude of a row, 1 where it is below `small`.
template <class R, bool Complex>
inline void scale_factors(int64_t n, const R* p, PanelShape shape, R small, R* s)
{
    constexpr int L = lanes<R>;
    for (int64_t row = 0; row < n; row += L) {
        Lane<R> largest = {};
        for (int64_t j = 0; j < n; ++j) {
            const auto x = Rows<R, Complex>::load(p + j * shape.step + row, shape.half);
            Lane<R> size = magnitude<R>(x.re);
            if constexpr (Complex) size = held(size + magnitude<R>(x.im));
            largest = size > largest ? size : largest;
        }
        const Lane<R> one = Lane<R>{} + R(1);
        at(s + row) = largest >= small ? one / largest : one;
    }
    for (int64_t row = n; row % L != 0; ++row) s[row] = 0;
}

template <class R, bool Complex>
bool factor_small(int64_t n, const R* a, int64_t lda, R* fact, int64_t ldfac, R* s, int32_t* ipvt, R small,
                  void (*invert)(const R* x, R* t))
{
    constexpr int64_t L = lanes<R>, parts = Complex ? 2 : 1, room = small_order;
    const int64_t half = (n + L - 1) / L * L;
    const PanelShape shape{parts * half, half};
    alignas(64) R p[room * room * parts + 64];
    alignas(64) R scale[room + 64];
    for (int64_t j = 0; j < n; ++j) {
        R* const column = p + j * shape.step;
        if (half > n) {
            at(column + half - L) = Lane<R>{};
            if constexpr (Complex) at(column + 2 * half - L) = Lane<R>{};
        }
        load_column<R, Complex>(n, a + parts * j * lda, column, half);
    }
    scale_factors<R, Complex>(n, p, shape, small, scale);

    bool singular = false;
    int64_t best = pivot<R, Complex>(0, n, p, scale, shape);
    for (int64_t c = 0; c + 1 < n; ++c) {
        R* const column = p + c * shape.step;
        ipvt[c] = static_cast<int32_t>(best + 1);
        const R x[2] = {column[best], Complex ? column[half + best] : R(0)};
        R size = x[0] < 0 ? -x[0] : x[0];
        if constexpr (Complex) size += x[1] < 0 ? -x[1] : x[1];
        if (!(size > small)) {
            singular = true;
            best = pivot<R, Complex>(c + 1, n, column + shape.step, scale, shape);
            continue;
        }
        if (best != c) {
            swap_numbers(scale[c], scale[best]);
            for (int64_t j = c; j < n; ++j) {
                R* const other = p + j * shape.step;
                swap_numbers(other[c], other[best]);
                if constexpr (Complex) swap_numbers(other[half + c], other[half + best]);
            }
        }
        R t[2] = {R(-1) / x[0], R(0)};
        if constexpr (Complex) invert(x, t);
        best = step<R, Complex>(c, n, n, t, scale, p, shape);
    }
    ipvt[n - 1] = static_cast<int32_t>(n);
    for (int64_t j = 0; j < n; ++j)
        store_column<R, Complex>(n, p + j * shape.step, fact + parts * j * ldfac, half);
    load_column<R, false>(n, scale, s, half);
    const R* const last = p + (n - 1) * (shape.step + 1);
    R size = last[0] < 0 ? -last[0] : last[0];
    if constexpr (Complex) size += last[half] < 0 ? -last[half] : last[half];
    return singular || size <= small;
}

template <class R, bool Complex>
constexpr Elimination<R> elimination = {lanes<R> > 8 ? lanes<R> : 8,
                                        eliminate<R, Complex>,
                                        step<R, Complex>,
                                        pivot<R, Complex>,
                                        Complex ? raise_complex_maxima<R> : raise_maxima<R>,
                                        split<R>,
                                        join<R>,
                                        grow<R, Complex>,
                                        factor_small<R, Complex>};

}  // namespace

namespace ORVEL_ISA {

extern const Loops solver_loops;
const Loops solver_loops = {elimination<float, false>, elimination<float, true>, elimination<double, false>,
                            elimination<double, true>};

}  // namespace ORVEL_ISA

}  // namespace orvel::linsys
