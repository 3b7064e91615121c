// linsys/band_factor.cpp - LU factorization of a band matrix, and solution with it
//
// Source: the elimination in blocks inside a band of J. Du Croz, P. Mayes and G. Radicati, Factorization of
// band matrices using level 3 BLAS, 1990, with the row scales of the general matrices.
#include <algorithm>
#include <cstring>

#include "kernels/columns.h"
#include "kernels/level1.h"
#include "kernels/product.h"
#include "kernels/triangular.h"
#include "linsys/band.h"

namespace orvel::linsys {

namespace {

using kernels::View;

// Elements of a column for which a call would take longer than the work.
constexpr int64_t few = 6;

// Rows of a panel, whose columns lie in the band or, below it, in a square of their own.
template <class T>
struct Row {
    T* p;
    int64_t step;
};

template <class T>
void swap_rows(int64_t n, Row<T> a, Row<T> b)
{
    for (int64_t j = 0; j < n; ++j) std::swap(a.p[j * a.step], b.p[j * b.step]);
}

// C(m, n) -= x(m) * y(n)
template <class T>
void subtract_products(int64_t m, int64_t n, const T* x, Row<T> y, T* c, int64_t ldc)
{
    if (m < 1) return;
    if constexpr (is_complex<T>) {
        for (int64_t j = 0; j < n; ++j) kernels::axpy<T>(m, -y.p[j * y.step], x, 1, c + j * ldc, 1);
    } else {
        constexpr int64_t piece = 64;
        T factors[piece];
        for (int64_t j = 0; j < n; j += piece) {
            const int64_t columns = std::min(piece, n - j);
            for (int64_t k = 0; k < columns; ++k) factors[k] = -y.p[(j + k) * y.step];
            of_type<T>(kernels::level2_loops()).add_rank_1(m, columns, x, factors, c + j * ldc, ldc);
        }
    }
}

// The same for a few rows, where a call would take longer than the work.
template <class T>
void subtract_few(int64_t m, int64_t n, const T* x, Row<T> y, T* c, int64_t ldc)
{
    for (int64_t j = 0; j < n; ++j) {
        const T factor = y.p[j * y.step];
        for (int64_t i = 0; i < m; ++i) c[i + j * ldc] -= x[i] * factor;
    }
}

// FACT = A with zeros on the diagonals that fill, s = the scale factors of the rows. Columns are moved down
// inside of themselves where FACT is A.
template <class T>
void copy_and_scale(const Band<const T>& a, const Band<T>& fact, Part<T>* s)
{
    const auto raise_maxima = of_type<T>(vector_loops()).raise_maxima;
    std::fill_n(s, a.n, Part<T>(0));
    for (int64_t j = 0; j < a.n; ++j) {
        const int64_t first = a.first_row(j), rows = a.rows_end(j) - first;
        const T* const from = &a(first, j);
        T* const to = &fact(first, j);
        if (rows > few) {
            std::memmove(static_cast<void*>(to), static_cast<const void*>(from),
                         static_cast<std::size_t>(rows) * sizeof(T));
            raise_maxima(rows, kernels::parts(to), s + first);
        } else {
            for (int64_t i = rows - 1; i >= 0; --i) {
                to[i] = from[i];
                s[first + i] = std::max(s[first + i], magnitude(to[i]));
            }
        }
        for (T* fill = &fact(fact.first_row(j), j); fill < to; ++fill) *fill = T(0);
    }
    const Part<T> small = smallest_pivot<T>();
    for (int64_t k = 0; k < a.n; ++k)
        s[k] = s[k] >= small ? 1 / std::min(s[k], machine<Part<T>>(2)) : Part<T>(1);
}

template <class T>
class BandElimination {
public:
    BandElimination(const Band<T>& f, int64_t above, int32_t* ipvt, Part<T>* s)
        : f_(f), above_(above), ipvt_(ipvt), s_(s)
    {}

    // Returns whether a pivot was close to zero.
    bool run()
    {
        if (f_.kl < blocked_from)
            by_columns();
        else
            for (int64_t j = 0; j < f_.n; j += block) panel(j, std::min(block, f_.n - j));
        return singular_;
    }

private:
    static constexpr int64_t block = 32;  // two squares of it fit on the stack
    static constexpr int64_t leaf = 8, blocked_from = 48;
    static_assert(blocked_from >= block);

    // Notes the pivot row of step k. False where the pivot is close to zero: column k stays as it is then.
    bool choose(int64_t k, int64_t pivot, T value)
    {
        const bool good = magnitude(value) > small_;
        if (!good) singular_ = true, pivot = k;
        ipvt_[k] = static_cast<int32_t>(pivot + 1);
        std::swap(s_[k], s_[pivot]);
        reach_ = std::max(reach_, std::min(pivot + above_, f_.n - 1));
        return good;
    }

    void by_columns()
    {
        for (int64_t k = 0; k < f_.n; ++k) {
            T* const column = &f_(k, k);
            const int64_t rows = f_.rows_end(k) - k - 1;
            const int64_t offset = first_of_largest(rows + 1, column, s_ + k);
            if (!choose(k, k + offset, column[offset])) continue;
            const int64_t width = reach_ - k;
            if (offset != 0) swap_rows<T>(width + 1, {column, f_.step}, {column + offset, f_.step});
            const T t = kernels::quotient(T(1), *column);
            for (int64_t i = 1; i <= rows; ++i) column[i] *= t;
            const Row<T> row{column + f_.step, f_.step};
            if (rows <= few)
                subtract_few<T>(rows, width, column + 1, row, column + 1 + f_.step, f_.step);
            else
                subtract_products<T>(rows, width, column + 1, row, column + 1 + f_.step, f_.step);
        }
    }

    // Columns j to j + nb - 1, and their products with the columns to the right. Rows of the panel from
    // j + kl on, which the band has in its last columns only, are in `below_` meanwhile.
    void panel(int64_t j, int64_t nb)
    {
        const int64_t bottom = j + f_.kl;
        extra_ = std::clamp<int64_t>(f_.n - bottom, 0, nb);
        std::fill_n(below(0, 0), block * block, T(0));
        for (int64_t c = 0; c < nb; ++c)
            for (int64_t i = 0; i < std::min(extra_, c + 1); ++i) *below(i, c) = f_(bottom + i, j + c);
        const auto row = [&](int64_t i) -> Row<T> {
            return i < bottom ? Row<T>{&f_(i, j), f_.step} : Row<T>{below(i - bottom, 0), block};
        };
        for (int64_t first = 0; first < nb; first += leaf) {
            const int64_t last = std::min(first + leaf, nb);
            for (int64_t c = first; c < last; ++c) eliminate(j, nb, c, last, row);
            if (last < nb)
                finish(j, j + first, last - first, nb - last, {&f_(j + first, j + last), 1, f_.step},
                       &f_(j + last, j + last), {below(0, last), 1, block});
        }
        const int64_t end = reach_ + 1;
        if (end > j + nb) to_the_right(j, nb, end);
        // Multipliers go back to the rows that they had at their step.
        for (int64_t c = nb - 1; c >= 0; --c) {
            const int64_t pivot = ipvt_[j + c] - 1;
            if (pivot != j + c) swap_rows<T>(c, row(j + c), row(pivot));
        }
        for (int64_t c = 0; c < nb; ++c)
            for (int64_t i = 0; i < std::min(extra_, c + 1); ++i) f_(bottom + i, j + c) = *below(i, c);
    }

    // Step c of a panel of nb columns, for the columns before `last`.
    template <class RowOf>
    void eliminate(int64_t j, int64_t nb, int64_t c, int64_t last, RowOf row)
    {
        const int64_t bottom = j + f_.kl;
        const int64_t k = j + c, rows = std::min(bottom, f_.n) - k, more = std::min(extra_, c + 1);
        T *const column = &f_(k, k), *const rest = below(0, c);
        const int64_t first = first_of_largest(rows, column, s_ + k);
        int64_t pivot = k + first;
        T value = column[first];
        if (more > 0) {
            const int64_t other = first_of_largest(more, static_cast<const T*>(rest), s_ + bottom);
            if (magnitude(rest[other]) * s_[bottom + other] > magnitude(value) * s_[pivot])
                pivot = bottom + other, value = rest[other];
        }
        if (!choose(k, pivot, value)) return;
        if (pivot != k) swap_rows<T>(nb, row(k), row(pivot));
        const T t = kernels::quotient(T(1), *column);
        for (int64_t i = 1; i < rows; ++i) column[i] *= t;
        for (int64_t i = 0; i < more; ++i) rest[i] *= t;
        const Row<T> u{column + f_.step, f_.step};
        const int64_t width = last - c - 1;
        subtract_products<T>(rows - 1, width, column + 1, u, column + 1 + f_.step, f_.step);
        subtract_products<T>(more, width, rest, u, rest + block, block);
    }

    // The columns from j + nb to `end`: interchanges, the rows of U, products. The corner above the band is
    // in a square meanwhile.
    void to_the_right(int64_t j, int64_t nb, int64_t end)
    {
        const int64_t whole = std::min(end, j + f_.ku + 1);  // columns whose rows from j on are in the band
        for (int64_t c = j + nb; c < end; ++c)
            for (int64_t k = std::max(j, c - f_.ku); k < j + nb; ++k)
                if (ipvt_[k] != k + 1) std::swap(f_(k, c), f_(ipvt_[k] - 1, c));
        if (whole > j + nb)
            finish(j, j, nb, whole - j - nb, {&f_(j, j + nb), 1, f_.step}, &f_(j + nb, j + nb),
                   {&f_(j + f_.kl, j + nb), 1, f_.step});
        const int64_t cut = std::max(whole, j + nb);
        if (end <= cut) return;
        OnStackSquare corner;
        std::fill_n(corner.p(), block * block, T(0));
        for (int64_t c = cut; c < end; ++c)
            for (int64_t k = c - f_.ku; k < j + nb; ++k) corner.p()[k - j + (c - cut) * block] = f_(k, c);
        finish(j, j, nb, end - cut, {corner.p(), 1, block}, &f_(j + nb, cut),
               {&f_(j + f_.kl, cut), 1, f_.step});
        for (int64_t c = cut; c < end; ++c)
            for (int64_t k = c - f_.ku; k < j + nb; ++k) f_(k, c) = corner.p()[k - j + (c - cut) * block];
    }

    // Steps `first` to first + count - 1 of the panel that begins at j, for other columns: U(count, columns)
    // = L^-1 * U, and the rows below, in the band and beyond the panel's, less their multipliers times that.
    void finish(int64_t j, int64_t first, int64_t count, int64_t columns, View<T> u, T* rows, View<T> beyond)
    {
        kernels::solve_with_triangle<T>(count, columns, {true, true}, &f_(first, first), f_.step, u.p,
                                        u.columns);
        const int64_t next = first + count, middle = std::min(j + f_.kl, f_.n) - next;
        if (middle > 0)
            kernels::add_product<T>(middle, columns, count, T(-1), {{&f_(next, first), 1, f_.step}},
                                    {u.constant()}, {rows, 1, f_.step});
        if (extra_ > 0)
            kernels::add_product<T>(extra_, columns, count, T(-1), {{below(0, first - j), 1, block}},
                                    {u.constant()}, beyond);
    }

    struct OnStackSquare {
        kernels::OnStack<T, block * block> elements;
        T* p() { return elements; }
    };
    T* below(int64_t i, int64_t c) { return below_.p() + i + c * block; }

    const Band<T> f_;
    const int64_t above_;  // diagonals of A above the main one
    int32_t* const ipvt_;
    Part<T>* const s_;
    const Part<T> small_ = smallest_pivot<T>();
    int64_t reach_ = 0;  // the last column that the rows chosen so far have reached
    int64_t extra_ = 0;  // rows of the panel that are in `below_`
    bool singular_ = false;
    OnStackSquare below_;
};

}  // namespace

template <class T>
bool factor_band(const Band<const T>& a, const Band<T>& fact, int32_t* ipvt, Part<T>* s)
{
    copy_and_scale<T>(a, fact, s);
    return BandElimination<T>(fact, a.ku, ipvt, s).run();
}

template <class T>
void solve_band(const Band<const T>& f, const int32_t* ipvt, bool turned, T* x)
{
    const auto multipliers = [&](int64_t k) { return f.rows_end(k) - k - 1; };
    const auto above = [&](int64_t k) { return k - f.first_row(k); };
    if (!turned) {
        for (int64_t k = 0; k + 1 < f.n; ++k) {
            std::swap(x[ipvt[k] - 1], x[k]);
            subtract_short<T>(multipliers(k), x[k], &f(k, k) + 1, x + k + 1);
        }
        for (int64_t k = f.n - 1; k >= 0; --k) {
            x[k] = kernels::quotient(x[k], f(k, k));
            subtract_short<T>(above(k), x[k], &f(f.first_row(k), k), x + f.first_row(k));
        }
    } else {
        for (int64_t k = 0; k < f.n; ++k) {
            x[k] -= short_product<T>(above(k), &f(f.first_row(k), k), x + f.first_row(k));
            x[k] = kernels::quotient(x[k], conjugate(f(k, k)));
        }
        for (int64_t k = f.n - 2; k >= 0; --k) {
            x[k] -= short_product<T>(multipliers(k), &f(k, k) + 1, x + k + 1);
            std::swap(x[ipvt[k] - 1], x[k]);
        }
    }
}

template bool factor_band(const Band<const float>&, const Band<float>&, int32_t*, float*);
template bool factor_band(const Band<const double>&, const Band<double>&, int32_t*, double*);
template bool factor_band(const Band<const orvel_complex>&, const Band<orvel_complex>&, int32_t*, float*);
template bool factor_band(const Band<const orvel_dcomplex>&, const Band<orvel_dcomplex>&, int32_t*, double*);
template void solve_band(const Band<const float>&, const int32_t*, bool, float*);
template void solve_band(const Band<const double>&, const int32_t*, bool, double*);
template void solve_band(const Band<const orvel_complex>&, const int32_t*, bool, orvel_complex*);
template void solve_band(const Band<const orvel_dcomplex>&, const int32_t*, bool, orvel_dcomplex*);

}  // namespace orvel::linsys
