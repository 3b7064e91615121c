// kernels/product.cpp - paths of the matrix product: direct tiles, packed panels, blocks on the stack
#include "kernels/product.h"

#include <algorithm>

#include "frame/scratch.h"
#include "isa/caches.h"
#include "kernels/vectors.h"

namespace orvel::kernels {

namespace {

template <class T>
inline const auto& product_loops()
{
    if constexpr (is_complex<T>)
        return isa::of_type<T>(complex_product_loops());
    else
        return isa::of_type<T>(real_product_loops());
}

template <class R>
Product<R> task(int64_t m, int64_t n, int64_t k, R alpha, const Factor<R>& a, const Factor<R>& b,
                const View<R>& c, Target target)
{
    Product<R> p;
    p.m = m, p.n = n, p.k = k, p.alpha = alpha;
    p.a = a.view.p, p.a_rows = a.view.rows, p.a_columns = a.view.columns;
    p.b = b.view.p, p.b_rows = b.view.rows, p.b_columns = b.view.columns;
    p.c = c.p, p.c_columns = c.columns;
    p.from_zero = target.from_zero, p.triangle = target.triangle;
    return p;
}

template <class R>
ComplexProduct<R> task(int64_t m, int64_t n, int64_t k, std::complex<R> alpha,
                       const Factor<std::complex<R>>& a, const Factor<std::complex<R>>& b,
                       const View<std::complex<R>>& c, Target target)
{
    ComplexProduct<R> p;
    p.m = m, p.n = n, p.k = k, p.alpha[0] = alpha.real(), p.alpha[1] = alpha.imag();
    p.a = parts(a.view.p), p.a_rows = a.view.rows, p.a_columns = a.view.columns, p.a_conjugate = a.conjugated;
    p.b = parts(b.view.p), p.b_rows = b.view.rows, p.b_columns = b.view.columns, p.b_conjugate = b.conjugated;
    p.c = parts(c.p), p.c_columns = c.columns;
    p.from_zero = target.from_zero, p.triangle = target.triangle;
    return p;
}

// Up to here the direct tiles are as fast as packed panels: A stays close to the core.
template <class T>
constexpr int64_t direct_limit = is_complex<T> ? 48 : 160;

// Blocks on the stack: for small matrices whose A is not by columns, for a factor alpha, and for large ones
// when there is no memory for panels.
template <class T>
constexpr int64_t stack_block = is_complex<T> ? 32 : 64;
// Their inner dimension: a block takes at most 16 KB.
template <class T>
constexpr int64_t stack_depth = std::min<int64_t>(stack_block<T>, 16384 / sizeof(T) / stack_block<T>);

// to(rows, columns) by columns = the block of a factor.
template <class T>
void copy_block(int64_t rows, int64_t columns, const Factor<T>& from, T* to)
{
    if constexpr (!is_complex<T>)
        if (from.view.columns == 1)
            return product_loops<T>().transpose(columns, rows, from.view.p, from.view.rows, to, rows);
    for (int64_t s = 0; s < rows; ++s)
        for (int64_t t = 0; t < columns; ++t) to[t * rows + s] = from(s, t);
}

// By blocks on the stack. Like all that make room there it is a function of its own: compilers differ in what
// they put into one frame, and what calls it goes on to others.
template <class T>
[[gnu::noinline]] void by_blocks(int64_t m, int64_t n, int64_t k, T alpha, const Factor<T>& a,
                                 const Factor<T>& b, const View<T>& c, bool from_zero)
{
    constexpr int64_t size = stack_block<T>, most_depth = stack_depth<T>;
    const auto& run = product_loops<T>();
    OnStack<T, size * most_depth> block_of_a, block_of_b;
    for (int64_t j = 0; j < n; j += size)
        for (int64_t q = 0; q < k; q += most_depth) {
            const int64_t columns = std::min(size, n - j), depth = std::min(most_depth, k - q);
            Factor<T> second = b.from(q, j);
            if (alpha != T(1)) {
                for (int64_t s = 0; s < columns; ++s)
                    for (int64_t t = 0; t < depth; ++t) block_of_b[s * depth + t] = alpha * second(t, s);
                second = {{block_of_b, 1, depth}};
            }
            for (int64_t r = 0; r < m; r += size) {
                const int64_t rows = std::min(size, m - r);
                Factor<T> first = a.from(r, q);
                if (first.view.rows != 1 || first.conjugated) {
                    copy_block<T>(rows, depth, first, block_of_a);
                    first = {{block_of_a, 1, rows}};
                }
                const Target here{from_zero && q == 0};
                const auto p = task(rows, columns, depth, T(1), first, second, c.from(r, j), here);
                run.direct(&p);
            }
        }
}

// The same for complex matrices with a factor alpha, whose products with B are formed as those of large
// panels are.
template <class R>
[[gnu::noinline]] void by_small_panels(int64_t m, int64_t n, int64_t k, std::complex<R> alpha,
                                       const Factor<std::complex<R>>& a, const Factor<std::complex<R>>& b,
                                       const View<std::complex<R>>& c, bool from_zero)
{
    constexpr int64_t size = stack_block<std::complex<R>>, depth = sizeof(R) == 4 ? size : size / 2;
    alignas(64) R panels[4 * size * depth];  // of A, then of B
    const auto& run = product_loops<std::complex<R>>();
    for (int64_t j = 0; j < n; j += size)
        for (int64_t q = 0; q < k; q += depth)
            for (int64_t r = 0; r < m; r += size) {
                const Target here{from_zero && q == 0};
                const auto p = task(std::min(size, m - r), std::min(size, n - j), std::min(depth, k - q),
                                    alpha, a.from(r, q), b.from(q, j), c.from(r, j), here);
                run.packed(&p, {depth, size, size}, panels, panels + 2 * size * depth);
            }
}

constexpr int64_t round_up(int64_t n, int64_t unit) { return (n + unit - 1) / unit * unit; }

// The size of equal parts of n, none above `most`, in whole units.
constexpr int64_t equal_parts(int64_t n, int64_t most, int64_t unit)
{
    const int64_t parts = (n + most - 1) / most;
    return round_up((n + parts - 1) / parts, unit);
}

// What stays in the caches: of B a panel in the first level, beside C and what streams past of A; a block of
// A in the second; a block of B in the last, beside the part of C that it is multiplied into. They are made
// for the loops that go through them: another level in use meanwhile has other tiles.
template <class T, class Loops>
Blocks blocks_of(const Loops& run, int64_t m, int64_t n, int64_t k)
{
    constexpr int64_t bytes = sizeof(T);
    const int64_t tile_rows = run.tile_rows, tile_columns = run.tile_columns;
    constexpr int64_t unit = 8, least_depth = 64, most_depth = 1024, least_columns = 512, most_columns = 4096;
    const isa::Caches& cache = isa::caches();
    const int64_t of_second = cache.second * 2 / 5;
    const int64_t deep =
        std::min(cache.first * 3 / 4 / (tile_columns * bytes), of_second / (4 * tile_rows * bytes));
    const int64_t depth = equal_parts(k, std::clamp(deep / unit * unit, least_depth, most_depth), unit);
    const int64_t high = std::max<int64_t>(1, of_second / (depth * bytes) / tile_rows) * tile_rows;
    const int64_t wide = std::clamp(cache.last / 10 / (depth * bytes), least_columns, most_columns);
    return {depth, equal_parts(m, high, tile_rows),
            equal_parts(n, wide / tile_columns * tile_columns, tile_columns)};
}

}  // namespace

template <class T>
Blocks product_blocks(int64_t m, int64_t n, int64_t k)
{
    return blocks_of<T>(product_loops<T>(), m, n, k);
}

template Blocks product_blocks<float>(int64_t, int64_t, int64_t);
template Blocks product_blocks<double>(int64_t, int64_t, int64_t);
template Blocks product_blocks<std::complex<float>>(int64_t, int64_t, int64_t);
template Blocks product_blocks<std::complex<double>>(int64_t, int64_t, int64_t);

namespace {

template <class T, class Task>
bool by_panels(const Task& p)
{
    const auto& run = product_loops<T>();
    const Blocks blocks = blocks_of<T>(run, p.m, p.n, p.k);
    Scratch<Part<T>> panels;
    constexpr int64_t parts = sizeof(T) / sizeof(Part<T>);
    if (!panels.allocate(parts * blocks.depth, blocks.rows + blocks.columns)) return false;
    run.packed(&p, blocks, panels, panels + parts * blocks.depth * blocks.rows);
    return true;
}

}  // namespace

namespace {

// A by rows, in either direction, is turned on the stack.
template <class R>
[[gnu::noinline]] bool add_small_turned_product(Product<R> p)
{
    constexpr int64_t room = 32768 / sizeof(R);
    const bool forward = p.a_columns == 1;
    if ((!forward && p.a_columns != -1) || p.m * p.k > room) return false;
    alignas(64) R turned[room];
    const auto& run = product_loops<R>();
    run.transpose(p.k, p.m, forward ? p.a : p.a - (p.k - 1), p.a_rows,
                  forward ? turned : turned + (p.k - 1) * p.m, forward ? p.m : -p.m);
    p.a = turned, p.a_rows = 1, p.a_columns = p.m;
    run.direct(&p);
    return true;
}

}  // namespace

template <class T>
bool add_small_product(int64_t m, int64_t n, int64_t k, const T* a, int64_t a_rows, int64_t a_columns,
                       const T* b, int64_t b_rows, int64_t b_columns, bool b_conjugated, T* c, int64_t ldc,
                       bool from_zero)
{
    if (m > direct_limit<T> || k > direct_limit<T>) return false;
    const auto& run = product_loops<T>();
    if constexpr (is_complex<T>) {
        if (a_rows != 1) return false;
        const ComplexProduct<Part<T>> p{m,         n,      k,         parts(a),     1,      a_columns, false,
                                        parts(b),  b_rows, b_columns, b_conjugated, {1, 0}, parts(c),  ldc,
                                        from_zero, 'A'};
        run.direct(&p);
    } else {
        const Product<T> p{m, n, k, a, a_rows, a_columns, b, b_rows, b_columns, T(1), c, ldc, from_zero, 'A'};
        if (a_rows != 1) return add_small_turned_product(p);
        run.direct(&p);
    }
    return true;
}

namespace {

// C by columns with contiguous rows, all of it.
template <class T>
void add_to_columns(int64_t m, int64_t n, int64_t k, T alpha, const Factor<T>& a, const Factor<T>& b,
                    const View<T>& c, bool from_zero)
{
    if (!a.conjugated && alpha == T(1) &&
        add_small_product(m, n, k, a.view.p, a.view.rows, a.view.columns, b.view.p, b.view.rows,
                          b.view.columns, b.conjugated, c.p, c.columns, from_zero))
        return;
    constexpr int64_t small = stack_block<T>;
    if ((m > small || n > small || k > small) && by_panels<T>(task(m, n, k, alpha, a, b, c, {from_zero})))
        return;
    if constexpr (is_complex<T>)
        if (alpha != T(1)) return by_small_panels(m, n, k, alpha, a, b, c, from_zero);
    by_blocks(m, n, k, alpha, a, b, c, from_zero);
}

// A triangle of C of an order up to which it is formed whole on the stack: then the triangle of it goes back.
template <class T>
constexpr int64_t whole_order = sizeof(T) == 16 ? 32 : 48;

template <class T>
[[gnu::noinline]] void add_to_whole(int64_t n, int64_t k, T alpha, const Factor<T>& a, const Factor<T>& b,
                                    const View<T>& c, Target target)
{
    const bool lower = target.triangle == 'L';
    OnStack<T, whole_order<T> * whole_order<T>> buffer;
    const View<T> square{buffer, 1, n};
    for (int64_t j = 0; j < n && !target.from_zero; ++j)
        for (int64_t r = 0; r < n; ++r) square(r, j) = (lower ? r >= j : r <= j) ? c(r, j) : T(0);
    add_to_columns(n, n, k, alpha, a, b, square, target.from_zero);
    for (int64_t j = 0; j < n; ++j)
        for (int64_t r = lower ? j : 0; r < (lower ? n : j + 1); ++r) c(r, j) = square(r, j);
}

// A triangle of C: by panels, or in halves until a square fits the stack. Where direct tiles do it, squares
// of a few tiles waste less, and tiles stay whole.
template <class T>
void add_to_triangle(int64_t n, int64_t k, T alpha, const Factor<T>& a, const Factor<T>& b, const View<T>& c,
                     Target target)
{
    constexpr int64_t unit = 16;
    const bool is_direct = std::max(n, k) <= direct_limit<T>;
    if (n <= (is_direct ? unit : whole_order<T>)) return add_to_whole(n, k, alpha, a, b, c, target);
    if (!is_direct && by_panels<T>(task(n, n, k, alpha, a, b, c, target))) return;
    const int64_t half = round_up(n / 2, unit), rest = n - half;
    add_to_triangle(half, k, alpha, a, b, c, target);
    if (target.triangle == 'L')
        add_to_columns(rest, half, k, alpha, a.from(half, 0), b, c.from(half, 0), target.from_zero);
    else
        add_to_columns(half, rest, k, alpha, a, b.from(0, half), c.from(0, half), target.from_zero);
    add_to_triangle(rest, k, alpha, a.from(half, 0), b.from(0, half), c.from(half, half), target);
}

}  // namespace

template <class T>
void add_product(int64_t m, int64_t n, int64_t k, T alpha, Factor<T> a, Factor<T> b, View<T> c, Target target)
{
    if (m < 1 || n < 1 || k < 1) return;
    if (target.triangle != 'A') return add_to_triangle(n, k, alpha, a, b, c, target);
    if (c.rows != 1 && c.rows != -1)
        return add_product(n, m, k, alpha, b.transposed(), a.transposed(), c.transposed(), target);
    if (c.rows == -1) {
        a = a.rows_reversed(m);
        c = c.rows_reversed(m);
    }
    add_to_columns(m, n, k, alpha, a, b, c, target.from_zero);
}

template void add_product(int64_t, int64_t, int64_t, float, Factor<float>, Factor<float>, View<float>,
                          Target);
template void add_product(int64_t, int64_t, int64_t, double, Factor<double>, Factor<double>, View<double>,
                          Target);
template void add_product(int64_t, int64_t, int64_t, std::complex<float>, Factor<std::complex<float>>,
                          Factor<std::complex<float>>, View<std::complex<float>>, Target);
template void add_product(int64_t, int64_t, int64_t, std::complex<double>, Factor<std::complex<double>>,
                          Factor<std::complex<double>>, View<std::complex<double>>, Target);

template bool add_small_product(int64_t, int64_t, int64_t, const float*, int64_t, int64_t, const float*,
                                int64_t, int64_t, bool, float*, int64_t, bool);
template bool add_small_product(int64_t, int64_t, int64_t, const double*, int64_t, int64_t, const double*,
                                int64_t, int64_t, bool, double*, int64_t, bool);
template bool add_small_product(int64_t, int64_t, int64_t, const std::complex<float>*, int64_t, int64_t,
                                const std::complex<float>*, int64_t, int64_t, bool, std::complex<float>*,
                                int64_t, bool);
template bool add_small_product(int64_t, int64_t, int64_t, const std::complex<double>*, int64_t, int64_t,
                                const std::complex<double>*, int64_t, int64_t, bool, std::complex<double>*,
                                int64_t, bool);

template <class T>
bool add_symmetric_product(int64_t m, int64_t n, T alpha, SymmetricSide how, View<const T> a, View<const T> b,
                           View<T> c, bool from_zero)
{
    auto p = task(m, n, how.left ? m : n, alpha, Factor<T>{a}, Factor<T>{b}, c, {from_zero});
    (how.left ? p.a_stored : p.b_stored) = how.stored;
    if constexpr (is_complex<T>) p.hermitian = how.hermitian;
    return by_panels<T>(p);
}

template bool add_symmetric_product(int64_t, int64_t, float, SymmetricSide, View<const float>,
                                    View<const float>, View<float>, bool);
template bool add_symmetric_product(int64_t, int64_t, double, SymmetricSide, View<const double>,
                                    View<const double>, View<double>, bool);
template bool add_symmetric_product(int64_t, int64_t, std::complex<float>, SymmetricSide,
                                    View<const std::complex<float>>, View<const std::complex<float>>,
                                    View<std::complex<float>>, bool);
template bool add_symmetric_product(int64_t, int64_t, std::complex<double>, SymmetricSide,
                                    View<const std::complex<double>>, View<const std::complex<double>>,
                                    View<std::complex<double>>, bool);

template <class T, class S>
void scale(int64_t m, int64_t n, S beta, View<T> c, char uplo)
{
    if (beta == S(1)) return;
    for (int64_t j = 0; j < n; ++j) {
        const int64_t first = uplo == 'L' ? std::min(j, m) : 0, last = uplo == 'U' ? std::min(j + 1, m) : m;
        T* column = &c(0, j);
        if (beta == S(0))
            for (int64_t r = first; r < last; ++r) column[r] = T(0);
        else if (beta == S(-1))
            for (int64_t r = first; r < last; ++r) column[r] = -column[r];
        else
            for (int64_t r = first; r < last; ++r) column[r] *= beta;
    }
}

template void scale(int64_t, int64_t, float, View<float>, char);
template void scale(int64_t, int64_t, double, View<double>, char);
template void scale(int64_t, int64_t, std::complex<float>, View<std::complex<float>>, char);
template void scale(int64_t, int64_t, std::complex<double>, View<std::complex<double>>, char);
template void scale(int64_t, int64_t, float, View<std::complex<float>>, char);
template void scale(int64_t, int64_t, double, View<std::complex<double>>, char);

}  // namespace orvel::kernels
