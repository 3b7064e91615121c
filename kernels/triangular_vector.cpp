// kernels/triangular_vector.cpp - TRMV and TRSV: product and solution with a triangular matrix and one vector
#include "frame/export.h"
#include "kernels/checks.h"
#include "kernels/columns.h"
#include "kernels/triangular.h"
#include "orvel/kernels.h"

namespace orvel::kernels {

namespace {

enum class Action { multiply, solve };

template <class T>
struct Triangle {
    const T* a;
    int64_t lda;
    bool lower, transposed, conjugated, unit;

    T diagonal(int64_t j) const { return conjugated ? conjugate(a[j + j * lda]) : a[j + j * lda]; }
};

// Whether strips of columns are taken from the first to the last. A strip must be used while the part of x
// that it meets still holds (multiply) or already holds (solve) what it needs.
template <class T>
bool ascending(Action action, const Triangle<T>& t)
{
    return (action == Action::solve) == (t.lower != t.transposed);
}

// x = op(A) * x or its solution with a small triangle, column by column.
template <class T>
void apply_columns(Action action, const Triangle<T>& t, int64_t n, T* x)
{
    if constexpr (!is_complex<T>) {
        const RealLevel2<T>& run = isa::of_type<T>(level2_loops());
        return (action == Action::solve ? run.solve_small : run.multiply_small)(
            n, {t.lower, t.transposed, t.unit}, t.a, t.lda, x);
    }
    const bool up = ascending(action, t);
    for (int64_t step = 0; step < n; ++step) {
        const int64_t j = up ? step : n - 1 - step;
        const int64_t from = t.lower ? j + 1 : 0, to = t.lower ? n : j;
        const T* column = t.a + j * t.lda;
        if (action == Action::multiply) {
            if (!t.transposed && to > from)
                add_columns(to - from, 1, column + from, 1, t.conjugated, x + j, x + from);
            const T own = t.unit ? x[j] : t.diagonal(j) * x[j];
            x[j] = t.transposed ? own + dot_column(to - from, column + from, t.conjugated, x + from) : own;
        } else {
            if (t.transposed) x[j] -= dot_column(to - from, column + from, t.conjugated, x + from);
            if (!t.unit) x[j] = quotient(x[j], t.diagonal(j));
            const T factor = -x[j];
            if (!t.transposed && to > from)
                add_columns(to - from, 1, column + from, 1, t.conjugated, &factor, x + from);
        }
    }
}

template <class T>
constexpr int64_t strip_width = is_complex<T> ? 32 : small_square;

// The rectangle beside a strip of columns: its products with x are taken from it with the strip's numbers as
// factors, or form what the strip gets.
template <class T>
void apply_rectangle(const Triangle<T>& t, int64_t rows, int64_t width, const T* a, T* x, int64_t inc,
                     T* strip)
{
    const int64_t span = inc == 1 ? rows : longest_piece;
    OnStack<T, strip_width<T>> sums;
    for (int64_t r = 0; r < rows; r += span) {
        const int64_t here = std::min(span, rows - r);
        if (t.transposed) {
            Piece<const T, longest_piece> from(x + r * inc, here, inc);
            dot_columns(here, width, a + r, t.lda, t.conjugated, static_cast<const T*>(from), sums);
            for (int64_t k = 0; k < width; ++k) strip[k] += sums[k];
        } else {
            Piece<T, longest_piece> to(x + r * inc, here, inc);
            add_columns(here, width, a + r, t.lda, t.conjugated, strip, static_cast<T*>(to));
        }
    }
}

// Strips of columns: the triangle on the diagonal by columns, the rectangle beside it at once.
template <class T>
void apply(Action action, const Triangle<T>& t, int64_t n, T* x, int64_t inc)
{
    constexpr int64_t strip = strip_width<T>;
    const int64_t strips = (n + strip - 1) / strip;
    const bool up = ascending(action, t), solves = action == Action::solve;
    OnStack<T, strip> part;
    for (int64_t step = 0; step < strips; ++step) {
        const int64_t j = (up ? step : strips - 1 - step) * strip, width = std::min(strip, n - j);
        const int64_t first = t.lower ? j + width : 0, rows = t.lower ? n - j - width : j;
        const T* const rectangle = t.a + first + j * t.lda;
        Triangle<T> square = t;
        square.a += j + j * t.lda;
        Piece<T, strip> own(x + j * inc, width, inc);
        T* const mine = own;
        if (t.transposed) {
            std::fill_n(static_cast<T*>(part), width, T(0));
            if (!solves) apply_columns(action, square, width, mine);
            apply_rectangle<T>(t, rows, width, rectangle, x + first * inc, inc, part);
            for (int64_t k = 0; k < width; ++k) mine[k] += solves ? -part[k] : part[k];
            if (solves) apply_columns(action, square, width, mine);
        } else {
            if (solves) apply_columns(action, square, width, mine);
            for (int64_t k = 0; k < width; ++k) part[k] = solves ? -mine[k] : mine[k];
            apply_rectangle<T>(t, rows, width, rectangle, x + first * inc, inc, part);
            if (!solves) apply_columns(action, square, width, mine);
        }
    }
}

template <class T, Action action>
void triangular_vector(const char* uplo, const char* trans, const char* diag, const int32_t* n, const T* a,
                       const int32_t* lda, T* x, const int32_t* incx)
{
    constexpr Checks check = checks_of<T>(action == Action::solve ? "TRSV" : "TRMV");
    if (check.n(1, *n) || check.lda_of_n(2, *lda, *n) || check.uplo(3, uplo) || check.trans(4, trans) ||
        check.diag(5, diag) || check.incx(6, *incx))
        return;

    if (*n == 0) return;
    const Triangle<T> t{
        a, *lda, is_letter(uplo, 'L'), !is_letter(trans, 'N'), is_letter(trans, 'C'), is_letter(diag, 'U')};
    apply<T>(action, t, *n, start(x, *n, *incx), *incx);
}

using enum Action;

}  // namespace

template <class T>
void solve_triangle(bool lower, bool turned, int64_t n, const T* a, int64_t lda, T* x)
{
    apply<T>(Action::solve, {a, lda, lower, turned, turned, false}, n, x, 1);
}

template void solve_triangle(bool, bool, int64_t, const float*, int64_t, float*);
template void solve_triangle(bool, bool, int64_t, const double*, int64_t, double*);
template void solve_triangle(bool, bool, int64_t, const orvel_complex*, int64_t, orvel_complex*);
template void solve_triangle(bool, bool, int64_t, const orvel_dcomplex*, int64_t, orvel_dcomplex*);

}  // namespace orvel::kernels

ORVEL_EXPORT_UPPER_ALL(STRMV, DTRMV, CTRMV, ZTRMV, 8, orvel::kernels::triangular_vector,
                       orvel::kernels::multiply);
ORVEL_EXPORT_UPPER_ALL(STRSV, DTRSV, CTRSV, ZTRSV, 8, orvel::kernels::triangular_vector,
                       orvel::kernels::solve);
