// linsys/factor.cpp - LU factorization of a general matrix with row-scaled partial pivoting
//
// Columns are taken in panels, which are copied out, eliminated with their rows in the order of the pivots,
// and written back; then the columns to the right get the interchanges and products of the panel at once.
// Each element meets the steps in ascending order, so the result has the bits of `factor_plainly`. Source of
// the layout: J. Dongarra, C. Moler, J. Bunch and G. Stewart, LINPACK Users' Guide, 1979.
#include <algorithm>

#include "frame/scratch.h"
#include "kernels/level2.h"
#include "kernels/product.h"
#include "linsys/isa/loops.h"
#include "linsys/linsys.h"

namespace orvel::linsys {

namespace {

inline const Elimination<float>& elimination(float) { return loops().s; }
inline const Elimination<double>& elimination(double) { return loops().d; }
inline const Elimination<float>& elimination(std::complex<float>) { return loops().c; }
inline const Elimination<double>& elimination(std::complex<double>) { return loops().z; }

constexpr int64_t round_up(int64_t n, int64_t unit) { return (n + unit - 1) / unit * unit; }

// Columns of a panel: few while the whole matrix is in a near cache, more where the products with the
// columns to the right have to pay for the way to the memory.
template <class T>
int64_t panel_width(int64_t n)
{
    return n <= 256 ? n : n <= 800 ? 64 : 128;
}

template <class T>
struct Panel {
    using R = Part<T>;

    int64_t rows, columns;
    R* p;  // its columns, see PanelShape
    PanelShape shape;
    R* s;             // row scale factors
    int64_t* pivots;  // of each step, from 0 within the panel
    bool* skipped;    // steps without a pivot

    R* column(int64_t c) const { return p + c * shape.step; }
    void swap_rows(int64_t c, int64_t a, int64_t b) const
    {
        R* const own = column(c);
        std::swap(own[a], own[b]);
        if constexpr (is_complex<T>) std::swap(own[shape.half + a], own[shape.half + b]);
    }
    T element(int64_t r, int64_t c) const
    {
        if constexpr (is_complex<T>)
            return {column(c)[r], column(c)[shape.half + r]};
        else
            return column(c)[r];
    }
};

template <class R>
void split(int64_t n, const R* from, R* to, int64_t)
{
    std::copy_n(from, n, to);
}
template <class R>
void split(int64_t n, const std::complex<R>* from, R* to, int64_t half)
{
    const R* const parts = kernels::parts(from);
    for (int64_t i = 0; i < n; ++i) to[i] = parts[2 * i], to[half + i] = parts[2 * i + 1];
}
template <class R>
void join(int64_t n, const R* from, int64_t, R* to)
{
    std::copy_n(from, n, to);
}
template <class R>
void join(int64_t n, const R* from, int64_t half, std::complex<R>* to)
{
    R* const parts = kernels::parts(to);
    for (int64_t i = 0; i < n; ++i) parts[2 * i] = from[i], parts[2 * i + 1] = from[half + i];
}

// The columns first..last-1 of the panel, which have the products with the columns before. Other columns of
// the panel get their interchanges. Returns whether a step was skipped.
template <class T>
bool factor_leaf(const Panel<T>& panel, int64_t first, int64_t last, Part<T> small)
{
    using R = Part<T>;
    const auto& run = elimination(T());
    // The leaf as a panel of its own, whose first row is that of its first step.
    R* const corner = panel.column(first) + first;
    R* const s = panel.s + first;
    const int64_t m = panel.rows - first, n = last - first;
    bool skips = false;
    int64_t best = run.pivot(0, m, corner, s, panel.shape);
    for (int64_t c = 0; c < n; ++c) {
        panel.pivots[first + c] = first + best;
        const T pivot = panel.element(first + best, first + c);
        panel.skipped[first + c] = !(magnitude(pivot) > small);
        if (panel.skipped[first + c]) {
            skips = true;
            if (c + 1 < n) best = run.pivot(c + 1, m, corner + (c + 1) * panel.shape.step, s, panel.shape);
            continue;
        }
        if (best != c) {
            std::swap(s[c], s[best]);
            for (int64_t j = first; j < last; ++j) panel.swap_rows(j, first + c, first + best);
        }
        const T t = T(-1) / pivot;
        best = run.step(c, m, n, kernels::parts(&t), s, corner, panel.shape);
    }
    for (int64_t j = 0; j < panel.columns; ++j)
        if (j < first || j >= last)
            for (int64_t c = first; c < last; ++c)
                if (!panel.skipped[c] && panel.pivots[c] != c) panel.swap_rows(j, c, panel.pivots[c]);
    return skips;
}

// Eliminates the columns of the panel leaf by leaf, up to the first leaf with a skipped step. Returns the
// number of columns that are done.
template <class T>
int64_t factor_panel(const Panel<T>& panel, Part<T> small, bool& skips)
{
    const auto& run = elimination(T());
    skips = false;
    int64_t done = 0;
    while (done < panel.columns && !skips) {
        const int64_t last = std::min(done + run.leaf, panel.columns);
        if (done > 0) run.eliminate(done, panel.rows, last - done, panel.p, panel.column(done), panel.shape);
        skips = factor_leaf(panel, done, last, small);
        done = last;
    }
    return done;
}

// Interchanges of the steps of a panel, on a column of the matrix below its first row.
template <class T>
void interchange(const Panel<T>& panel, int64_t steps, T* column)
{
    for (int64_t c = 0; c < steps; ++c)
        if (!panel.skipped[c]) std::swap(column[c], column[panel.pivots[c]]);
}

// One column to the right of a panel with skipped steps.
template <class T>
void eliminate_plainly(const Panel<T>& panel, int64_t steps, const T* fact, int64_t ldfac, T* column)
{
    interchange(panel, steps, column);
    for (int64_t c = 0; c < steps; ++c)
        if (!panel.skipped[c])
            kernels::add_columns(panel.rows - c - 1, 1, fact + c + 1 + c * ldfac, 1, false, column + c,
                                 column + c + 1);
}

// The columns to the right get interchanges, and the rows of U; `block` holds eight columns of the panel's
// shape.
template <class T>
void eliminate_right(const Panel<T>& panel, int64_t steps, int64_t n, T* right, int64_t ldfac, Part<T>* block)
{
    constexpr int64_t group = 8;
    const auto& run = elimination(T());
    for (int64_t j = 0; j < n; j += group) {
        const int64_t columns = std::min(group, n - j);
        for (int64_t c = 0; c < columns; ++c) {
            T* const column = right + (j + c) * ldfac;
            interchange(panel, steps, column);
            split(steps, column, block + c * panel.shape.step, panel.shape.half);
        }
        run.eliminate(steps, steps, columns, panel.p, block, panel.shape);
        for (int64_t c = 0; c < columns; ++c)
            join(steps, block + c * panel.shape.step, panel.shape.half, right + (j + c) * ldfac);
    }
}

// Multipliers go back to the order of their own step.
template <class T>
void restore_order(const Panel<T>& panel, int64_t steps, T* corner, int64_t ldfac)
{
    for (int64_t c = 0; c + 1 < steps; ++c)
        for (int64_t step = steps - 1; step > c; --step)
            if (!panel.skipped[step])
                std::swap(corner[step + c * ldfac], corner[panel.pivots[step] + c * ldfac]);
}

}  // namespace

template <class T>
bool factor_plainly(int64_t n, T* fact, int64_t ldfac, int32_t* ipvt, Part<T>* s, Part<T> small)
{
    bool singular = false;
    for (int64_t k = 0; k + 1 < n; ++k) {
        T* const column = fact + k * ldfac;
        int64_t best = k;
        Part<T> largest = -1;
        for (int64_t i = k; i < n; ++i)
            if (magnitude(column[i]) * s[i] > largest) largest = magnitude(column[i]) * s[i], best = i;
        ipvt[k] = static_cast<int32_t>(best + 1);
        if (!(magnitude(column[best]) > small)) {
            singular = true;
            continue;
        }
        std::swap(s[k], s[best]);
        for (int64_t j = k; j < n; ++j) std::swap(fact[k + j * ldfac], fact[best + j * ldfac]);
        const T t = T(-1) / column[k];
        for (int64_t i = k + 1; i < n; ++i) column[i] = t * column[i];
        for (int64_t j = k + 1; j < n; ++j)
            kernels::add_columns(n - k - 1, 1, column + k + 1, 1, false, fact + k + j * ldfac,
                                 fact + k + 1 + j * ldfac);
    }
    ipvt[n - 1] = static_cast<int32_t>(n);
    return singular || magnitude(fact[(n - 1) * (ldfac + 1)]) <= small;
}

template <class T>
bool factor(int64_t n, T* fact, int64_t ldfac, int32_t* ipvt, Part<T>* s, Part<T> small)
{
    using R = Part<T>;
    constexpr int64_t group = 8, line = 64 / static_cast<int64_t>(sizeof(R)), few = 32;
    const int64_t width = std::min(n, panel_width<T>(n));
    // Columns of an odd number of cache lines do not get into each other's way. Behind a vector that starts
    // at any row of the panel there is room for it.
    const int64_t half = (round_up(n, line) / line | 1) * line + line;
    const PanelShape shape{is_complex<T> ? 2 * half : half, half};

    alignas(64) R small_storage[(few + 2 * line) * (few * kernels::Number<T>::parts + 1)];
    int64_t small_pivots[few];
    bool small_skipped[few];
    Scratch<R> storage;
    Scratch<int64_t> pivots;
    Scratch<bool> skipped;
    R* memory = small_storage;
    Panel<T> panel{n, width, nullptr, shape, nullptr, small_pivots, small_skipped};
    if (n > few) {
        if (!storage.allocate(width + group + 1, shape.step) || !pivots.allocate(width) ||
            !skipped.allocate(width))
            return factor_plainly(n, fact, ldfac, ipvt, s, small);
        memory = storage;
        panel.pivots = pivots;
        panel.skipped = skipped;
    }
    panel.s = memory;
    panel.p = memory + half;
    R* const block = panel.p + width * shape.step;
    std::copy_n(s, n, panel.s);
    std::fill(panel.s + n, panel.s + half, R(0));

    bool singular = false;
    for (int64_t k = 0; k < n;) {
        panel.rows = n - k;
        panel.columns = std::min(width, n - k);
        T* const corner = fact + k * (ldfac + 1);
        for (int64_t c = 0; c < panel.columns; ++c) {
            split(panel.rows, corner + c * ldfac, panel.column(c), half);
            std::fill_n(panel.column(c) + panel.rows, line, R(0));
            if (is_complex<T>) std::fill_n(panel.column(c) + half + panel.rows, line, R(0));
        }
        bool skips = false;
        const int64_t steps = factor_panel(panel, small, skips);
        for (int64_t c = 0; c < steps; ++c) join(panel.rows, panel.column(c), half, corner + c * ldfac);
        T* const right = corner + steps * ldfac;
        const int64_t others = n - k - steps;
        if (skips) {
            for (int64_t j = 0; j < others; ++j)
                eliminate_plainly(panel, steps, corner, ldfac, right + j * ldfac);
        } else if (others > 0) {
            eliminate_right(panel, steps, others, right, ldfac, block);
            kernels::add_product<T>(others, others, steps, T(1), {{corner + steps, 1, ldfac}},
                                    {{right, 1, ldfac}}, {right + steps, 1, ldfac});
        }
        restore_order(panel, steps, corner, ldfac);
        for (int64_t c = 0; c < steps; ++c) {
            ipvt[k + c] = static_cast<int32_t>(k + panel.pivots[c] + 1);
            singular |= panel.skipped[c] && k + c + 1 < n;
        }
        k += steps;
        panel.s += steps;
    }
    std::copy_n(memory, n, s);
    return singular || magnitude(fact[(n - 1) * (ldfac + 1)]) <= small;
}

template bool factor(int64_t, float*, int64_t, int32_t*, float*, float);
template bool factor_plainly(int64_t, float*, int64_t, int32_t*, float*, float);
template bool factor(int64_t, double*, int64_t, int32_t*, double*, double);
template bool factor_plainly(int64_t, double*, int64_t, int32_t*, double*, double);
template bool factor(int64_t, std::complex<float>*, int64_t, int32_t*, float*, float);
template bool factor_plainly(int64_t, std::complex<float>*, int64_t, int32_t*, float*, float);
template bool factor(int64_t, std::complex<double>*, int64_t, int32_t*, double*, double);
template bool factor_plainly(int64_t, std::complex<double>*, int64_t, int32_t*, double*, double);

}  // namespace orvel::linsys
