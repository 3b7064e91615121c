// linsys/factor.cpp - LU factorization of a general matrix with row-scaled partial pivoting
//
// Columns are taken in panels, which are copied out, eliminated with their rows in the order of the pivots,
// and written back; then the columns to the right get the interchanges and products of the panel at once.
// Each element meets the steps in ascending order, so the result has the bits of `factor_plainly`. Source of
// the layout: J. Dongarra, C. Moler, J. Bunch and G. Stewart, LINPACK Users' Guide, 1979.
#include <algorithm>

#include "frame/scratch.h"
#include "kernels/columns.h"
#include "kernels/product.h"
#include "linsys/linsys.h"

namespace orvel::linsys {

namespace {

constexpr int64_t group = 8;  // columns to the right of a panel that are eliminated side by side

template <class T>
struct Panel {
    using R = Part<T>;

    int64_t rows, columns;
    R* p;  // its columns, see PanelShape
    PanelShape shape;
    R* s;  // row scale factors

    R* column(int64_t c) const { return p + c * shape.step; }
    T element(int64_t r, int64_t c) const
    {
        if constexpr (is_complex<T>)
            return {column(c)[r], column(c)[shape.half + r]};
        else
            return column(c)[r];
    }
};

// An interchange of rows of the panel, of the step whose row is `row`.
struct Interchange {
    int64_t row, pivot;
};

// What a panel has done to its rows. Steps without a pivot interchange nothing and are not in `swaps`.
struct Record {
    Interchange* swaps;
    int64_t count;
    bool* skipped;
};

template <class R>
void swap_rows(const Interchange* swaps, int64_t count, R* column)
{
    for (int64_t k = 0; k < count; ++k) std::swap(column[swaps[k].row], column[swaps[k].pivot]);
}
template <class T>
void swap_rows(const Panel<T>& panel, const Interchange* swaps, int64_t count, int64_t column)
{
    swap_rows(swaps, count, panel.column(column));
    if constexpr (is_complex<T>) swap_rows(swaps, count, panel.column(column) + panel.shape.half);
}

template <class R>
void split(int64_t n, const R* from, R* to, int64_t)
{
    std::copy_n(from, n, to);
}
template <class R>
void split(int64_t n, const std::complex<R>* from, R* to, int64_t half)
{
    of_type<std::complex<R>>(vector_loops()).split(n, kernels::parts(from), to, to + half);
}
template <class R>
void join(int64_t n, const R* from, int64_t, R* to)
{
    std::copy_n(from, n, to);
}
template <class R>
void join(int64_t n, const R* from, int64_t half, std::complex<R>* to)
{
    of_type<std::complex<R>>(vector_loops()).join(n, from, from + half, kernels::parts(to));
}

// The columns first..last-1 of the panel, which have the products with the columns before: they are
// eliminated, and their pivots stored, one-based from the panel's first row on. The loops are those that the
// leaf's width is of.
template <class T, class Loops>
void factor_leaf(const Loops& run, const Panel<T>& panel, int64_t first, int64_t last, Part<T> small,
                 int32_t* ipvt, Record& record)
{
    // The leaf as a panel of its own, whose first row is that of its first step.
    Part<T>* const corner = panel.column(first) + first;
    Part<T>* const s = panel.s + first;
    const int64_t m = panel.rows - first, n = last - first;
    int64_t best = run.pivot(0, m, corner, s, panel.shape);
    for (int64_t c = 0; c < n; ++c) {
        ipvt[first + c] = static_cast<int32_t>(first + best + 1);
        const T pivot = panel.element(first + best, first + c);
        record.skipped[first + c] = !(magnitude(pivot) > small);
        if (record.skipped[first + c]) {
            if (c + 1 < n) best = run.pivot(c + 1, m, corner + (c + 1) * panel.shape.step, s, panel.shape);
            continue;
        }
        if (best != c) {
            const Interchange swap{first + c, first + best};
            record.swaps[record.count++] = swap;
            std::swap(s[c], s[best]);
            for (int64_t j = first; j < last; ++j) swap_rows(panel, &swap, 1, j);
        }
        const T t = kernels::quotient(T(-1), pivot);
        best = run.step(c, m, n, kernels::parts(&t), s, corner, panel.shape);
    }
}

// Writes the columns of a leaf back, each column's multipliers in the order of its own step.
template <class T>
void write_leaf(const Panel<T>& panel, int64_t first, int64_t last, const Interchange* swaps, int64_t count,
                T* fact, int64_t ldfac)
{
    for (int64_t c = first; c < last; ++c) {
        T* const column = fact + c * ldfac;
        join(panel.rows, panel.column(c), panel.shape.half, column);
        for (int64_t k = count - 1; k >= 0 && swaps[k].row > c; --k)
            std::swap(column[swaps[k].row], column[swaps[k].pivot]);
    }
}

// Eliminates the columns of the panel leaf by leaf, up to the first leaf with a skipped step, and writes them
// back. Returns the number of columns that are done.
template <class T>
int64_t factor_panel(const Panel<T>& panel, Part<T> small, T* fact, int64_t ldfac, int32_t* ipvt,
                     Record& record, bool& skips)
{
    const auto& run = of_type<T>(elimination_loops());
    skips = false;
    record.count = 0;
    int64_t done = 0;
    while (done < panel.columns && !skips) {
        const int64_t last = std::min(done + run.leaf, panel.columns), before = record.count;
        if (done > 0) run.eliminate(done, panel.rows, last - done, panel.p, panel.column(done), panel.shape);
        factor_leaf(run, panel, done, last, small, ipvt, record);
        const Interchange* const swaps = record.swaps + before;
        const int64_t count = record.count - before;
        for (int64_t j = 0; j < panel.columns; ++j)
            if (j < done || j >= last) swap_rows(panel, swaps, count, j);
        write_leaf(panel, done, last, swaps, count, fact, ldfac);
        skips =
            std::any_of(record.skipped + done, record.skipped + last, [](bool skipped) { return skipped; });
        done = last;
    }
    return done;
}

// The columns to the right of a panel with skipped steps, step by step. The multipliers are in the order of
// the panel's last step; so is a column once all interchanges are done.
template <class T>
void eliminate_plainly(const Panel<T>& panel, int64_t steps, const Record& record, int64_t n, T* right,
                       int64_t ldfac)
{
    constexpr int64_t piece = 64;
    kernels::OnStack<T, piece> multipliers;
    for (int64_t j = 0; j < n; ++j) {
        T* const column = right + j * ldfac;
        swap_rows(record.swaps, record.count, column);
        for (int64_t c = 0; c < steps; ++c) {
            if (record.skipped[c]) continue;
            for (int64_t r = c + 1; r < panel.rows; r += piece) {
                const int64_t rows = std::min(piece, panel.rows - r);
                join(rows, panel.column(c) + r, panel.shape.half, static_cast<T*>(multipliers));
                kernels::add_columns<T>(rows, 1, multipliers, 1, false, column + c, column + r);
            }
        }
    }
}

// The net effect of a panel's interchanges: where each of its first rows comes from, and which rows below
// them get one of theirs.
struct Gather {
    int64_t* from;
    Interchange* moves;  // row gets the old row `pivot`
    int64_t count;

    void build(int64_t steps, const Record& record)
    {
        for (int64_t r = 0; r < steps; ++r) from[r] = r;
        count = 0;
        for (int64_t k = 0; k < record.count; ++k) {
            const auto [row, pivot] = record.swaps[k];
            int64_t& other = pivot < steps ? from[pivot] : source_of(pivot);
            std::swap(from[row], other);
        }
    }

private:
    int64_t& source_of(int64_t row)
    {
        for (int64_t k = 0; k < count; ++k)
            if (moves[k].row == row) return moves[k].pivot;
        moves[count] = {row, row};
        return moves[count++].pivot;
    }
};

// The columns to the right get the interchanges, and the rows of U.
template <class T>
void eliminate_right(const Panel<T>& panel, int64_t steps, const Gather& gather, int64_t n, T* right,
                     int64_t ldfac, Part<T>* block, T* row)
{
    const auto& run = of_type<T>(elimination_loops());
    for (int64_t j = 0; j < n; j += group) {
        const int64_t columns = std::min(group, n - j);
        for (int64_t c = 0; c < columns; ++c) {
            T* const column = right + (j + c) * ldfac;
            for (int64_t r = 0; r < steps; ++r) row[r] = column[gather.from[r]];
            for (int64_t k = 0; k < gather.count; ++k)
                column[gather.moves[k].row] = column[gather.moves[k].pivot];
            split(steps, row, block + c * panel.shape.step, panel.shape.half);
        }
        run.eliminate(steps, steps, columns, panel.p, block, panel.shape);
        for (int64_t c = 0; c < columns; ++c)
            join(steps, block + c * panel.shape.step, panel.shape.half, right + (j + c) * ldfac);
    }
}

}  // namespace

template <class T>
bool factor_plainly(int64_t n, T* fact, int64_t ldfac, int32_t* ipvt, Part<T>* s, Part<T> small)
{
    bool singular = false;
    for (int64_t k = 0; k + 1 < n; ++k) {
        T* const column = fact + k * ldfac;
        const int64_t best = k + first_of_largest(n - k, column + k, s + k);
        ipvt[k] = static_cast<int32_t>(best + 1);
        if (!(magnitude(column[best]) > small)) {
            singular = true;
            continue;
        }
        std::swap(s[k], s[best]);
        for (int64_t j = k; j < n; ++j) std::swap(fact[k + j * ldfac], fact[best + j * ldfac]);
        const T t = kernels::quotient(T(-1), column[k]);
        for (int64_t i = k + 1; i < n; ++i) column[i] = t * column[i];
        for (int64_t j = k + 1; j < n; ++j)
            kernels::add_columns(n - k - 1, 1, column + k + 1, 1, false, fact + k + j * ldfac,
                                 fact + k + 1 + j * ldfac);
    }
    ipvt[n - 1] = static_cast<int32_t>(n);
    return singular || magnitude(fact[(n - 1) * (ldfac + 1)]) <= small;
}

namespace {

// Storage of a factorization: row scale factors, a panel, a group of columns beside it, and what it does to
// rows.
template <class T>
class Workspace {
public:
    using R = Part<T>;

    bool allocate(int64_t n, int64_t width)
    {
        constexpr int64_t line = 64 / static_cast<int64_t>(sizeof(R));
        // Columns of an odd number of cache lines do not get into each other's way. Behind a vector that
        // starts at any row of the panel there is room for it.
        const int64_t half = (((n + line - 1) / line) | 1) * line + line;
        shape = {is_complex<T> ? 2 * half : half, half};
        // Complex multipliers are joined again for the products with the columns to the right.
        const int64_t joined = is_complex<T> && n > width ? width : 0;
        if (!numbers_.allocate(width + group + joined + 2, shape.step) || !rows_.allocate(width, 5) ||
            !skipped_.allocate(width))
            return false;
        s = numbers_;
        p = s + shape.step;
        block = p + width * shape.step;
        row = reinterpret_cast<T*>(block + group * shape.step);
        multipliers = row + shape.step / kernels::Number<T>::parts;
        int64_t* const rows = rows_;
        gather = {rows, reinterpret_cast<Interchange*>(rows + width), 0};
        record = {reinterpret_cast<Interchange*>(rows + 3 * width), 0, skipped_};
        std::fill_n(s, half, R(0));
        return true;
    }

    PanelShape shape;
    R *s, *p, *block;
    T *row, *multipliers;
    Gather gather;
    Record record;

private:
    Scratch<R> numbers_;
    Scratch<int64_t> rows_;
    Scratch<bool> skipped_;
};

// The panel's first columns as a factor of products: the rows below the first `steps`.
template <class T>
kernels::Factor<T> multipliers_below(const Panel<T>& panel, int64_t steps, T* joined)
{
    if constexpr (is_complex<T>) {
        const int64_t rows = panel.rows - steps;
        for (int64_t c = 0; c < steps; ++c)
            join(rows, panel.column(c) + steps, panel.shape.half, joined + c * rows);
        return {{joined, 1, rows}};
    } else {
        return {{panel.p + steps, 1, panel.shape.step}};
    }
}

template <class T>
void load(const Panel<T>& panel, const T* corner, int64_t ldfac)
{
    constexpr int64_t line = 64 / static_cast<int64_t>(sizeof(Part<T>));
    for (int64_t c = 0; c < panel.columns; ++c) {
        Part<T>* const column = panel.column(c);
        split(panel.rows, corner + c * ldfac, column, panel.shape.half);
        std::fill_n(column + panel.rows, line, Part<T>(0));
        if constexpr (is_complex<T>) std::fill_n(column + panel.shape.half + panel.rows, line, Part<T>(0));
    }
}

}  // namespace

template <class T>
int64_t panel_width(int64_t n)
{
    if (n <= 256) return n;
    return n <= 800 ? 64 : n <= 1500 || is_complex<T> ? 128 : 256;
}

template <class T>
bool factor(int64_t n, int64_t width, T* fact, int64_t ldfac, int32_t* ipvt, Part<T>* s, Part<T> small)
{
    Workspace<T> w;
    if (!w.allocate(n, width)) return factor_plainly(n, fact, ldfac, ipvt, s, small);
    std::copy_n(s, n, w.s);
    bool singular = false;
    for (int64_t k = 0; k < n;) {
        const Panel<T> panel{n - k, std::min(width, n - k), w.p, w.shape, w.s + k};
        T* const corner = fact + k * (ldfac + 1);
        load(panel, corner, ldfac);
        bool skips = false;
        const int64_t steps = factor_panel(panel, small, corner, ldfac, ipvt + k, w.record, skips);
        const int64_t others = panel.rows - steps;
        T* const right = corner + steps * ldfac;
        if (skips) {
            eliminate_plainly(panel, steps, w.record, others, right, ldfac);
        } else if (others > 0) {
            w.gather.build(steps, w.record);
            eliminate_right(panel, steps, w.gather, others, right, ldfac, w.block, w.row);
            kernels::add_product<T>(others, others, steps, T(1),
                                    multipliers_below(panel, steps, w.multipliers), {{right, 1, ldfac}},
                                    {right + steps, 1, ldfac});
        }
        for (int64_t c = 0; c < steps; ++c) {
            ipvt[k + c] += static_cast<int32_t>(k);
            singular |= w.record.skipped[c] && k + c + 1 < n;
        }
        k += steps;
    }
    std::copy_n(w.s, n, s);
    return singular || magnitude(fact[(n - 1) * (ldfac + 1)]) <= small;
}

template int64_t panel_width<float>(int64_t);
template bool factor(int64_t, int64_t, float*, int64_t, int32_t*, float*, float);
template bool factor_plainly(int64_t, float*, int64_t, int32_t*, float*, float);
template int64_t panel_width<double>(int64_t);
template bool factor(int64_t, int64_t, double*, int64_t, int32_t*, double*, double);
template bool factor_plainly(int64_t, double*, int64_t, int32_t*, double*, double);
template int64_t panel_width<std::complex<float>>(int64_t);
template bool factor(int64_t, int64_t, std::complex<float>*, int64_t, int32_t*, float*, float);
template bool factor_plainly(int64_t, std::complex<float>*, int64_t, int32_t*, float*, float);
template int64_t panel_width<std::complex<double>>(int64_t);
template bool factor(int64_t, int64_t, std::complex<double>*, int64_t, int32_t*, double*, double);
template bool factor_plainly(int64_t, std::complex<double>*, int64_t, int32_t*, double*, double);

}  // namespace orvel::linsys
