// kernels/trmv.cpp - TRMV and TRSV: product and solution with a triangular matrix and one vector
#include "frame/export.h"
#include "kernels/level2.h"
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

// x = op(A) * x or its solution, column by column within rows first..last of the diagonal.
template <class T>
void apply_columns(Action action, const Triangle<T>& t, int64_t first, int64_t last, T* x)
{
    if constexpr (!is_complex<T>) {
        const RealLevel2<T>& run = isa::of_type<T>(level2_loops());
        return (action == Action::solve ? run.solve_small : run.multiply_small)(
            last - first, {t.lower, t.transposed, t.unit}, t.a + first * (t.lda + 1), t.lda, x + first);
    }
    const bool up = ascending(action, t);
    for (int64_t step = 0; step < last - first; ++step) {
        const int64_t j = up ? first + step : last - 1 - step;
        const int64_t from = t.lower ? j + 1 : first, to = t.lower ? last : j;
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

// Strips of columns: the triangle on the diagonal by columns, the rectangle beside it at once.
template <class T>
void apply(Action action, const Triangle<T>& t, int64_t n, T* x)
{
    constexpr int64_t strip = is_complex<T> ? 32 : small_square;
    const int64_t strips = (n + strip - 1) / strip;
    const bool up = ascending(action, t);
    OnStack<T, strip> sums;
    for (int64_t step = 0; step < strips; ++step) {
        const int64_t j = (up ? step : strips - 1 - step) * strip, width = std::min(strip, n - j);
        const int64_t first = t.lower ? j + width : 0, rows = t.lower ? n - j - width : j;
        const T* rectangle = t.a + first + j * t.lda;
        if (t.transposed) {
            std::fill_n(static_cast<T*>(sums), width, T(0));
            if (action == Action::multiply) apply_columns(action, t, j, j + width, x);
            if (rows > 0) dot_columns(rows, width, rectangle, t.lda, t.conjugated, x + first, sums);
            for (int64_t k = 0; k < width; ++k) x[j + k] += action == Action::solve ? -sums[k] : sums[k];
            if (action == Action::solve) apply_columns(action, t, j, j + width, x);
        } else {
            if (action == Action::solve) apply_columns(action, t, j, j + width, x);
            for (int64_t k = 0; k < width; ++k) sums[k] = action == Action::solve ? -x[j + k] : x[j + k];
            if (rows > 0) add_columns(rows, width, rectangle, t.lda, t.conjugated, sums, x + first);
            if (action == Action::multiply) apply_columns(action, t, j, j + width, x);
        }
    }
}

// The definition, for a vector that cannot be made contiguous.
template <class T>
void apply_plainly(Action action, const Triangle<T>& t, int64_t n, T* x, int64_t inc)
{
    x = start(x, n, inc);
    const bool lower = t.lower != t.transposed;
    const auto element = [&t](int64_t r, int64_t c) {
        const T value = t.transposed ? t.a[c + r * t.lda] : t.a[r + c * t.lda];
        return t.conjugated ? conjugate(value) : value;
    };
    const bool up = (action == Action::solve) == lower;
    for (int64_t step = 0; step < n; ++step) {
        const int64_t r = up ? step : n - 1 - step;
        T sum{};
        for (int64_t c = lower ? 0 : r + 1; c < (lower ? r : n); ++c) sum += element(r, c) * x[c * inc];
        T& own = x[r * inc];
        if (action == Action::multiply)
            own = (t.unit ? own : element(r, r) * own) + sum;
        else
            own = t.unit ? own - sum : quotient(own - sum, element(r, r));
    }
}

template <class T, Action action>
void triangular(const char* uplo, const char* trans, const char* diag, const int32_t* n, const T* a,
                const int32_t* lda, T* x, const int32_t* incx)
{
    const auto bad = [](int32_t code, std::string_view text,
                        std::initializer_list<frame::Parameter> parameters) {
        complain<T>(action == Action::solve ? "TRSV" : "TRMV", code, text, parameters);
    };
    if (*n < 0) return bad(1, "N must be greater than or equal to zero while %(I1) is given.", {i(1, *n)});
    if (*lda < *n || *lda <= 0)
        return bad(
            2,
            "LDA must be greater than or equal to N and greater than zero while LDA = %(I1) and N = %(I2) are given.",
            {i(1, *lda), i(2, *n)});
    if (!is_one_of(uplo, "UL"))
        return bad(3, "UPLO must be set equal to U or L while %(L1) is given.", {l(1, {uplo, 1})});
    if (!is_one_of(trans, "NTC"))
        return bad(4, "TRANS must be set equal to N or T or C while %(L1) is given.", {l(1, {trans, 1})});
    if (!is_one_of(diag, "UN"))
        return bad(5, "DIAG must be set equal to U or N while %(L1) is given.", {l(1, {diag, 1})});
    if (*incx == 0) return bad(6, "INCX must not be equal to zero while %(I1) is given.", {i(1, *incx)});

    if (*n == 0) return;
    const Triangle<T> t{
        a, *lda, is_letter(uplo, 'L'), !is_letter(trans, 'N'), is_letter(trans, 'C'), is_letter(diag, 'U')};
    const Contiguous<T> whole(x, *n, *incx);
    if (whole)
        apply<T>(action, t, *n, whole);
    else
        apply_plainly<T>(action, t, *n, x, *incx);
}

using enum Action;

}  // namespace

template <class T>
void solve_triangle(bool lower, bool turned, int64_t n, const T* a, int64_t lda, T* x)
{
    apply<T>(Action::solve, {a, lda, lower, turned, turned, false}, n, x);
}

template void solve_triangle(bool, bool, int64_t, const float*, int64_t, float*);
template void solve_triangle(bool, bool, int64_t, const double*, int64_t, double*);
template void solve_triangle(bool, bool, int64_t, const orvel_complex*, int64_t, orvel_complex*);
template void solve_triangle(bool, bool, int64_t, const orvel_dcomplex*, int64_t, orvel_dcomplex*);

}  // namespace orvel::kernels

ORVEL_EXPORT_UPPER(STRMV, 8, (orvel::kernels::triangular<float, orvel::kernels::multiply>));
ORVEL_EXPORT_UPPER(DTRMV, 8, (orvel::kernels::triangular<double, orvel::kernels::multiply>));
ORVEL_EXPORT_UPPER(CTRMV, 8, (orvel::kernels::triangular<orvel_complex, orvel::kernels::multiply>));
ORVEL_EXPORT_UPPER(ZTRMV, 8, (orvel::kernels::triangular<orvel_dcomplex, orvel::kernels::multiply>));
ORVEL_EXPORT_UPPER(STRSV, 8, (orvel::kernels::triangular<float, orvel::kernels::solve>));
ORVEL_EXPORT_UPPER(DTRSV, 8, (orvel::kernels::triangular<double, orvel::kernels::solve>));
ORVEL_EXPORT_UPPER(CTRSV, 8, (orvel::kernels::triangular<orvel_complex, orvel::kernels::solve>));
ORVEL_EXPORT_UPPER(ZTRSV, 8, (orvel::kernels::triangular<orvel_dcomplex, orvel::kernels::solve>));
