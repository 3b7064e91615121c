// linsys/lsarb.cpp - general band systems: LSARB, LSLRB, LFCRB, LFTRB, LFSRB, LFIRB, LFDRB and their workers
#include <algorithm>
#include <limits>

#include "frame/export.h"
#include "frame/scratch.h"
#include "linsys/band.h"
#include "linsys/checks.h"
#include "linsys/determinant.h"
#include "linsys/refine.h"

namespace orvel::linsys {

namespace {

// A as the caller gives it.
template <class T>
struct Given {
    int32_t n;
    const T* a;
    int64_t lda;
    int32_t kl, ku;

    Band<const T> band() const { return Band<const T>::in_array(n, kl, ku, a, lda); }
};

// ---- checks -----------------------------------------------------------------------------------------------

template <class Frame>
void check_diagonals(Frame& me, int32_t code, int32_t kl, int32_t ku)
{
    if (kl < 0)
        me.post(terminal, code,
                "The number of diagonals below the main one must not be negative while KL = %(I1) is given.",
                {i(1, kl)});
    if (ku < 0)
        me.post(terminal, code + 1,
                "The number of diagonals above the main one must not be negative while KU = %(I1) is given.",
                {i(1, ku)});
}

template <class Frame>
void check_lda_of_band(Frame& me, int32_t code, int64_t lda, int64_t kl, int64_t ku)
{
    if (std::max<int64_t>(kl, 0) + std::max<int64_t>(ku, 0) + 1 > lda)
        me.post(
            terminal, code,
            "The leading dimension of A must be at least KL+KU+1 while KL = %(I1), KU = %(I2) and LDA = %(I3) are given.",
            {i(1, static_cast<int32_t>(kl)), i(2, static_cast<int32_t>(ku)),
             i(3, static_cast<int32_t>(lda))});
}

template <class Frame>
void check_ldfac_of_band(Frame& me, int32_t code, int64_t ldfac, int64_t kl, int64_t ku)
{
    if (2 * std::max<int64_t>(kl, 0) + std::max<int64_t>(ku, 0) + 1 > ldfac)
        me.post(
            terminal, code,
            "The leading dimension of FACT must be at least 2KL+KU+1 while KL = %(I1), KU = %(I2) and LDFAC = %(I3) are given.",
            {i(1, static_cast<int32_t>(kl)), i(2, static_cast<int32_t>(ku)),
             i(3, static_cast<int32_t>(ldfac))});
}

// ---- factorization ----------------------------------------------------------------------------------------

template <class T>
void l2trb(frame::State& state, const Given<T>& g, const Band<T>& f, int64_t ldfac, int32_t* ipvt, T* wk)
{
    Routine<T, name_of<T>("L2TRB", "L2TCB")> me(state);
    check_order(me, 1, g.n);
    check_lda_of_band(me, 2, g.lda, g.kl, g.ku);
    check_ldfac_of_band(me, 3, ldfac, g.kl, g.ku);
    check_diagonals(me, 4, g.kl, g.ku);
    if (me.failed()) return;
    if (factor_band<T>(g.band(), f, ipvt, reinterpret_cast<Part<T>*>(wk))) say_u_is_singular(me, fatal, 2);
}

template <class T>
Part<T> norm_of_band(const Band<const T>& a, Part<T> scale)
{
    return largest_sum<Part<T>>(a.n, [&](int64_t j) {
        const int64_t first = a.first_row(j);
        return sum_of_magnitudes(a.rows_end(j) - first, &a(first, j), scale);
    });
}

template <class T>
void l2crb(frame::State& state, const Given<T>& g, const Band<T>& f, int64_t ldfac, int32_t* ipvt,
           Part<T>* rcond, T* wk)
{
    Routine<T, name_of<T>("L2CRB", "L2CCB")> me(state);
    check_order(me, 1, g.n);
    check_lda_of_band(me, 2, g.lda, g.kl, g.ku);
    check_ldfac_of_band(me, 3, ldfac, g.kl, g.ku);
    check_diagonals(me, 4, g.kl, g.ku);
    if (me.failed()) return;

    const bool estimated = factor_and_estimate<T>(
        me, 6, rcond, [&](Part<T> scale) { return norm_of_band<T>(g.band(), scale); },
        [&] { l2trb<T>(state, g, f, ldfac, ipvt, wk); },
        [&](const ScaledNorm<Part<T>>& norm) { return condition_of_band<T>(norm, f.constant(), ipvt, wk); });
    if (estimated && !(*rcond > epsilon<T>())) warn_of_singularity(me, *rcond);
}

// ---- solution ---------------------------------------------------------------------------------------------

template <class T>
void lfsrb(frame::State& state, const Band<const T>& f, int64_t ldfac, int32_t n, int32_t kl, int32_t ku,
           const int32_t* ipvt, const T* b, int32_t ipath, T* x)
{
    Routine<T, name_of<T>("LFSRB", "LFSCB")> me(state);
    check_number_of_equations(me, 1, n);
    check_ldfac_of_band(me, 2, ldfac, kl, ku);
    check_diagonals(me, 3, kl, ku);
    check_ipath(me, 5, ipath);
    if (me.failed()) return;
    check_pivots_of_band(me, 7, n, kl, ipvt);
    if (me.failed()) return;
    if (first_small_diagonal<T>(n, f.origin, f.step) < n) return say_u_is_singular(me, terminal, 6);
    if (x != b) kernels::copy<T>(n, b, 1, x, 1);
    solve_band<T>(f, ipvt, ipath == 2, x);
}

// A band with its factorization, for refinement. Rows are taken a strip at a time, with zeros beside the
// band.
template <class T>
struct BandKind {
    Given<T> g;
    Band<const T> f;
    const int32_t* ipvt;
    int32_t ipath;
    T* strip;
    static constexpr int64_t rows = 16;

    // Of a strip.
    static int64_t columns(int64_t n, int64_t kl, int64_t ku)
    {
        return std::min(n, std::min<int64_t>(kl, n - 1) + std::min<int64_t>(ku, n - 1) + rows);
    }

    int64_t order() const { return g.n; }
    T diagonal(int64_t k) const { return g.band()(k, k); }
    void solve(frame::State& state, const T* b, T* x) const
    {
        lfsrb<T>(state, f, enough, g.n, g.kl, g.ku, ipvt, b, ipath, x);
    }
    void residual(const T* x, const T* b, T* r) const
    {
        const auto& run = of_type<T>(residual_loops());
        for_parts(run.by_columns, run.by_rows,
                  [&](auto part, int64_t m, int64_t n, const T* a, int64_t lda, int64_t of_x, int64_t of_b) {
                      part(m, n, kernels::parts(a), lda, kernels::parts(x + of_x), kernels::parts(b + of_b),
                           kernels::parts(r + of_b));
                      return false;
                  });
    }
    bool exceeds(const T* x, const T* b, double limit) const
    {
        const auto& run = of_type<T>(excess_loops());
        return for_parts(
            run.by_columns, run.by_rows,
            [&](auto part, int64_t m, int64_t n, const T* a, int64_t lda, int64_t of_x, int64_t of_b) {
                return part(m, n, kernels::parts(a), lda, kernels::parts(x + of_x), kernels::parts(b + of_b),
                            limit);
            });
    }

private:
    // Parts of the product with x, until one is true: strips of rows of A, or columns of it for A^H.
    template <class Columns, class Rows, class Visit>
    bool for_parts(Columns by_columns, Rows by_rows, Visit visit) const
    {
        const auto a = g.band();
        if (ipath != 1) {
            for (int64_t j = 0; j < a.n; ++j) {
                const int64_t first = a.first_row(j), m = a.rows_end(j) - first;
                if (visit(by_rows, m, 1, &a(first, j), m, first, j)) return true;
            }
            return false;
        }
        for (int64_t top = 0; top < a.n; top += rows) {
            const int64_t m = std::min(rows, a.n - top), left = a.first_column(top);
            const int64_t n = a.columns_end(top + m - 1) - left;
            std::fill_n(strip, n * rows, T(0));
            for (int64_t j = left; j < left + n; ++j) {
                const int64_t first = std::max(top, a.first_row(j)), last = std::min(top + m, a.rows_end(j));
                if (first < last)
                    std::copy(&a(first, j), &a(first, j) + (last - first),
                              strip + first - top + (j - left) * rows);
            }
            if (visit(by_columns, m, n, strip, rows, left, top)) return true;
        }
        return false;
    }
};

template <class T>
void lfirb(frame::State& state, const Given<T>& g, const Band<const T>& f, int64_t ldfac, const int32_t* ipvt,
           const T* b, int32_t ipath, T* x, T* res)
{
    Routine<T, name_of<T>("LFIRB", "LFICB")> me(state);
    check_number_of_equations(me, 1, g.n);
    check_lda_of_band(me, 2, g.lda, g.kl, g.ku);
    check_ldfac_of_band(me, 3, ldfac, g.kl, g.ku);
    check_diagonals(me, 4, g.kl, g.ku);
    check_ipath(me, 6, ipath);
    if (me.failed()) return;
    check_pivots_of_band(me, 7, g.n, g.kl, ipvt);
    if (me.failed()) return;
    SmallScratch<T, 512> strip;
    if (!strip.allocate(BandKind<T>::rows, BandKind<T>::columns(g.n, g.kl, g.ku)))
        return no_workspace(me, 8, g.n);
    refine<T>(me, BandKind<T>{g, f, ipvt, ipath, strip}, b, x, res, 8);
}

// The part that LSARB and LSLRB share.
template <Name name, class T, class Solve>
void solve_given(frame::State& state, const Given<T>& g, const Band<T>& f, int32_t* ipvt, T* wk,
                 int32_t ipath, Solve solve)
{
    Routine<T, name> me(state);
    check_number_of_equations(me, 1, g.n);
    check_lda_of_band(me, 2, g.lda, g.kl, g.ku);
    check_diagonals(me, 3, g.kl, g.ku);
    check_ipath(me, 5, ipath);
    if (me.failed()) return;
    Part<T> rcond = 1;
    l2crb<T>(state, g, f, enough, ipvt, &rcond, wk);
    if (is_severe(me.callee_type())) return;
    solve(f.constant());
    if (is_severe(me.callee_type())) return;
    if (me.callee_code() != 0 || !(rcond > epsilon<T>())) warn_of_solution(me, rcond);
}

template <class T>
void solve_refined(frame::State& state, const Given<T>& g, const Band<T>& f, const T* b, int32_t ipath, T* x,
                   int32_t* ipvt, T* wk)
{
    solve_given<name_of<T>("L2ARB", "L2ACB")>(state, g, f, ipvt, wk, ipath, [&](const Band<const T>& fact) {
        lfirb<T>(state, g, fact, enough, ipvt, b, ipath, x, wk);
    });
}

template <class T>
void solve_plainly(frame::State& state, const Given<T>& g, const Band<T>& f, const T* b, int32_t ipath, T* x,
                   int32_t* ipvt, T* wk)
{
    solve_given<name_of<T>("L2LRB", "L2LCB")>(state, g, f, ipvt, wk, ipath, [&](const Band<const T>& fact) {
        lfsrb<T>(state, fact, enough, g.n, g.kl, g.ku, ipvt, b, ipath, x);
    });
}

// A front: FACT without the diagonals that lie outside.
template <Name name, class T, class Worker>
void band_front(const Given<T>& g, Worker worker)
{
    const int64_t most = std::max(g.n, 1) - 1;
    const int64_t kl = std::clamp<int64_t>(g.kl, 0, most), ku = std::clamp<int64_t>(g.ku, 0, most);
    const int64_t ldfac = 2 * kl + ku + 1;
    solve_in_scratch<name, T>(g.n, ldfac, [&](frame::State& state, T* fact, int32_t* ipvt, T* wk) {
        worker(state, band_factor<T>(g.n, kl, ku, fact, ldfac), ipvt, wk);
    });
}

// ---- members ----------------------------------------------------------------------------------------------

template <class T>
void lsarb(const int32_t* n, const T* a, const int32_t* lda, const int32_t* kl, const int32_t* ku, const T* b,
           const int32_t* ipath, T* x)
{
    const Given<T> g{*n, a, *lda, *kl, *ku};
    band_front<name_of<T>("LSARB", "LSACB")>(
        g, [&](frame::State& state, const Band<T>& f, int32_t* ipvt, T* wk) {
            solve_refined<T>(state, g, f, b, *ipath, x, ipvt, wk);
        });
}

template <class T>
void lslrb(const int32_t* n, const T* a, const int32_t* lda, const int32_t* kl, const int32_t* ku, const T* b,
           const int32_t* ipath, T* x)
{
    const Given<T> g{*n, a, *lda, *kl, *ku};
    band_front<name_of<T>("LSLRB", "LSLCB")>(
        g, [&](frame::State& state, const Band<T>& f, int32_t* ipvt, T* wk) {
            solve_plainly<T>(state, g, f, b, *ipath, x, ipvt, wk);
        });
}

template <class T>
void l2arb_worker(frame::State& state, int32_t n, const T* a, int64_t lda, int32_t kl, int32_t ku, const T* b,
                  int32_t ipath, T* x, T* fact, int32_t* ipvt, T* wk)
{
    const int64_t ldfac = 2 * std::max<int64_t>(kl, 0) + std::max<int64_t>(ku, 0) + 1;
    solve_refined<T>(state, {n, a, lda, kl, ku}, band_factor<T>(n, kl, ku, fact, ldfac), b, ipath, x, ipvt,
                     wk);
}

template <class T>
void l2lrb_worker(frame::State& state, int32_t n, const T* a, int64_t lda, int32_t kl, int32_t ku, const T* b,
                  int32_t ipath, T* x, T* fact, int32_t* ipvt, T* wk)
{
    const int64_t ldfac = 2 * std::max<int64_t>(kl, 0) + std::max<int64_t>(ku, 0) + 1;
    solve_plainly<T>(state, {n, a, lda, kl, ku}, band_factor<T>(n, kl, ku, fact, ldfac), b, ipath, x, ipvt,
                     wk);
}

template <class T>
void l2crb_worker(frame::State& state, int32_t n, const T* a, int64_t lda, int32_t kl, int32_t ku, T* fact,
                  int64_t ldfac, int32_t* ipvt, Part<T>* rcond, T* wk)
{
    l2crb<T>(state, {n, a, lda, kl, ku}, band_factor<T>(n, kl, ku, fact, ldfac), ldfac, ipvt, rcond, wk);
}

template <class T>
void l2trb_worker(frame::State& state, int32_t n, const T* a, int64_t lda, int32_t kl, int32_t ku, T* fact,
                  int64_t ldfac, int32_t* ipvt, T* wk)
{
    l2trb<T>(state, {n, a, lda, kl, ku}, band_factor<T>(n, kl, ku, fact, ldfac), ldfac, ipvt, wk);
}

template <class T>
void lfcrb(const int32_t* n, const T* a, const int32_t* lda, const int32_t* kl, const int32_t* ku, T* fact,
           const int32_t* ldfac, int32_t* ipvt, Part<T>* rcond)
{
    factor_in_scratch<name_of<T>("LFCRB", "LFCCB"), T>(*n, [&](frame::State& state, T* wk) {
        l2crb_worker<T>(state, *n, a, *lda, *kl, *ku, fact, *ldfac, ipvt, rcond, wk);
    });
}

template <class T>
void lftrb(const int32_t* n, const T* a, const int32_t* lda, const int32_t* kl, const int32_t* ku, T* fact,
           const int32_t* ldfac, int32_t* ipvt)
{
    factor_in_scratch<name_of<T>("LFTRB", "LFTCB"), T>(*n, [&](frame::State& state, T* wk) {
        l2trb_worker<T>(state, *n, a, *lda, *kl, *ku, fact, *ldfac, ipvt, wk);
    });
}

template <class T>
void lfsrb_member(frame::State& state, int32_t n, const T* fact, int64_t ldfac, int32_t kl, int32_t ku,
                  const int32_t* ipvt, const T* b, int32_t ipath, T* x)
{
    lfsrb<T>(state, band_factor<const T>(n, kl, ku, fact, ldfac), ldfac, n, kl, ku, ipvt, b, ipath, x);
}

template <class T>
void lfirb_member(frame::State& state, int32_t n, const T* a, int64_t lda, int32_t kl, int32_t ku,
                  const T* fact, int64_t ldfac, const int32_t* ipvt, const T* b, int32_t ipath, T* x, T* res)
{
    lfirb<T>(state, {n, a, lda, kl, ku}, band_factor<const T>(n, kl, ku, fact, ldfac), ldfac, ipvt, b, ipath,
             x, res);
}

template <class T>
void lfdrb(const int32_t* n, const T* fact, const int32_t* ldfac, const int32_t* kl, const int32_t* ku,
           const int32_t* ipvt, T* det1, Part<T>* det2)
{
    Routine<T, name_of<T>("LFDRB", "LFDCB")> me;
    check_order(me, 1, *n);
    check_ldfac_of_band(me, 2, *ldfac, *kl, *ku);
    check_diagonals(me, 3, *kl, *ku);
    if (me.failed()) return;
    check_pivots_of_band(me, 5, *n, *kl, ipvt);
    if (me.failed()) return;
    const auto f = band_factor<const T>(*n, *kl, *ku, fact, *ldfac);
    Determinant<T> product;
    for (int64_t k = 0; k < *n; ++k) {
        if (ipvt[k] != k + 1) product.mantissa = -product.mantissa;
        if (!product.multiply(f(k, k))) break;
    }
    *det1 = product.mantissa;
    *det2 = product.exponent;
}

}  // namespace

}  // namespace orvel::linsys

using namespace orvel::linsys;

ORVEL_EXPORT_ALL(LSARB, lsarb_, DLSARB, dlsarb_, LSACB, lsacb_, DLSACB, dlsacb_, 8, lsarb);
ORVEL_EXPORT_ALL(LSLRB, lslrb_, DLSLRB, dlslrb_, LSLCB, lslcb_, DLSLCB, dlslcb_, 8, lslrb);
ORVEL_EXPORT_ALL(L2ARB, l2arb_, DL2ARB, dl2arb_, L2ACB, l2acb_, DL2ACB, dl2acb_, 11, l2arb_worker);
ORVEL_EXPORT_ALL(L2LRB, l2lrb_, DL2LRB, dl2lrb_, L2LCB, l2lcb_, DL2LCB, dl2lcb_, 11, l2lrb_worker);
ORVEL_EXPORT_ALL(LFCRB, lfcrb_, DLFCRB, dlfcrb_, LFCCB, lfccb_, DLFCCB, dlfccb_, 9, lfcrb);
ORVEL_EXPORT_ALL(L2CRB, l2crb_, DL2CRB, dl2crb_, L2CCB, l2ccb_, DL2CCB, dl2ccb_, 10, l2crb_worker);
ORVEL_EXPORT_ALL(LFTRB, lftrb_, DLFTRB, dlftrb_, LFTCB, lftcb_, DLFTCB, dlftcb_, 8, lftrb);
ORVEL_EXPORT_ALL(L2TRB, l2trb_, DL2TRB, dl2trb_, L2TCB, l2tcb_, DL2TCB, dl2tcb_, 9, l2trb_worker);
ORVEL_EXPORT_ALL(LFSRB, lfsrb_, DLFSRB, dlfsrb_, LFSCB, lfscb_, DLFSCB, dlfscb_, 9, lfsrb_member);
ORVEL_EXPORT_ALL(LFIRB, lfirb_, DLFIRB, dlfirb_, LFICB, lficb_, DLFICB, dlficb_, 12, lfirb_member);
ORVEL_EXPORT_ALL(LFDRB, lfdrb_, DLFDRB, dlfdrb_, LFDCB, lfdcb_, DLFDCB, dlfdcb_, 8, lfdrb);
