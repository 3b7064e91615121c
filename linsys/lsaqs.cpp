// linsys/lsaqs.cpp - positive definite band systems: LSAQS, LSLQS, LFCQS, LFTQS, LFSQS, LFIQS, LFDQS and
// workers
#include <algorithm>

#include "frame/export.h"
#include "frame/scratch.h"
#include "linsys/band.h"
#include "linsys/checks.h"
#include "linsys/definite.h"
#include "linsys/determinant.h"
#include "linsys/refine.h"

namespace orvel::linsys {

namespace {

// A as the caller gives it: the diagonals from the main one up.
template <class T>
struct Given {
    int32_t n;
    const T* a;
    int64_t lda;
    int32_t kd;

    Band<const T> band() const { return Band<const T>::in_array(n, 0, kd, a, lda); }
};

// ---- checks -----------------------------------------------------------------------------------------------

template <class Frame>
void check_kd(Frame& me, int32_t code, int32_t kd)
{
    if (kd < 0)
        me.post(terminal, code,
                "The number of diagonals above the main one must not be negative while KD = %(I1) is given.",
                {i(1, kd)});
}

template <class Frame>
void check_lda_of_kd(Frame& me, int32_t code, int64_t lda, int64_t kd)
{
    if (std::max<int64_t>(kd, 0) + 1 > lda)
        me.post(
            terminal, code,
            "The leading dimension of A must be at least KD+1 while KD = %(I1) and LDA = %(I2) are given.",
            {i(1, static_cast<int32_t>(kd)), i(2, static_cast<int32_t>(lda))});
}

template <class Frame>
void check_ldfac_of_kd(Frame& me, int32_t code, int64_t ldfac, int64_t kd)
{
    if (std::max<int64_t>(kd, 0) + 1 > ldfac)
        me.post(
            terminal, code,
            "The leading dimension of FACT must be at least KD+1 while KD = %(I1) and LDFAC = %(I2) are given.",
            {i(1, static_cast<int32_t>(kd)), i(2, static_cast<int32_t>(ldfac))});
}

// ---- factorization ----------------------------------------------------------------------------------------

template <class T>
void l2tqs(frame::State& state, const Given<T>& g, const Band<T>& f, int64_t ldfac, T* wk)
{
    Routine<T, name_of<T>("L2TQS", "L2TQH")> me(state);
    check_order(me, 1, g.n);
    check_lda_of_kd(me, 2, g.lda, g.kd);
    check_ldfac_of_kd(me, 3, ldfac, g.kd);
    check_kd(me, 4, g.kd);
    if (me.failed()) return;

    const auto a = g.band();
    Part<T>* const least = kernels::parts(wk);
    for (int64_t k = 0; k < a.n; ++k) least[k] = epsilon<T>() * std::real(a(k, k));
    const int64_t not_real = first_complex_diagonal(a.n, a.origin, a.step);
    for (int64_t j = 0; j < a.n; ++j) {
        const int64_t first = a.first_row(j);
        if (&f(first, j) != &a(first, j)) kernels::copy<T>(j - first + 1, &a(first, j), 1, &f(first, j), 1);
        f(j, j) = std::real(f(j, j));
    }
    const int64_t done = factor_definite_band<T>(f, least);
    say_what_is_wrong(me, a.n, done, not_real);
}

template <class T>
void l2cqs(frame::State& state, const Given<T>& g, const Band<T>& f, int64_t ldfac, Part<T>* rcond, T* wk)
{
    Routine<T, name_of<T>("L2CQS", "L2CQH")> me(state);
    check_order(me, 1, g.n);
    check_lda_of_kd(me, 2, g.lda, g.kd);
    check_ldfac_of_kd(me, 3, ldfac, g.kd);
    check_kd(me, 4, g.kd);
    if (me.failed()) return;

    const bool estimated = factor_and_estimate<T>(
        me, 5, rcond,
        [&](Part<T> scale) { return norm_of_hermitian<T>(g.band(), kernels::parts(wk), scale); },
        [&] { l2tqs<T>(state, g, f, ldfac, wk); },
        [&](const ScaledNorm<Part<T>>& norm) {
            return condition_of_band<T>(norm, f.constant(), nullptr, wk);
        });
    if (estimated && !(*rcond > epsilon<T>())) warn_of_singularity(me, *rcond);
}

// ---- solution ---------------------------------------------------------------------------------------------

template <class T>
void lfsqs(frame::State& state, const Band<const T>& f, int64_t ldfac, int32_t n, int32_t kd, const T* b,
           T* x)
{
    Routine<T, name_of<T>("LFSQS", "LFSQH")> me(state);
    check_number_of_equations(me, 1, n);
    check_ldfac_of_kd(me, 2, ldfac, kd);
    check_kd(me, 3, kd);
    if (me.failed()) return;
    if (first_small_diagonal<T>(n, f.origin, f.step) < n) return say_r_is_singular(me, 4);
    if (x != b) kernels::copy<T>(n, b, 1, x, 1);
    solve_definite_band<T>(f, x);
}

// A band with its factorization, for refinement. Rows are taken a strip at a time, with zeros beside the
// band.
template <class T>
struct DefiniteBand {
    Given<T> g;
    Band<const T> f;
    T* strip;
    static constexpr int64_t rows = 16;

    // Of a strip.
    static int64_t columns(int64_t n, int64_t kd)
    {
        return std::min(n, 2 * std::min<int64_t>(kd, n - 1) + rows);
    }

    int64_t order() const { return g.n; }
    T diagonal(int64_t k) const { return std::real(g.band()(k, k)); }
    void solve(frame::State& state, const T* b, T* x) const { lfsqs<T>(state, f, enough, g.n, g.kd, b, x); }
    void residual(const T* x, const T* b, T* r) const
    {
        for_strips([&](int64_t top, int64_t m, int64_t left, int64_t n) {
            of_type<T>(residual_loops())
                .by_columns(m, n, kernels::parts(strip), rows, kernels::parts(x + left),
                            kernels::parts(b + top), kernels::parts(r + top));
            return false;
        });
    }
    bool exceeds(const T* x, const T* b, double limit) const
    {
        return for_strips([&](int64_t top, int64_t m, int64_t left, int64_t n) {
            return of_type<T>(excess_loops())
                .by_columns(m, n, kernels::parts(strip), rows, kernels::parts(x + left),
                            kernels::parts(b + top), limit);
        });
    }

private:
    // Fills the strips one after the other, until VISIT is true of one.
    template <class Visit>
    bool for_strips(Visit visit) const
    {
        const auto a = g.band();
        for (int64_t top = 0; top < a.n; top += rows) {
            const int64_t m = std::min(rows, a.n - top), left = a.first_row(top);
            const int64_t n = a.columns_end(top + m - 1) - left;
            for (int64_t j = left; j < left + n; ++j)
                for (int64_t i = 0; i < rows; ++i)
                    strip[i + (j - left) * rows] = i < m ? element(a, top + i, j) : T(0);
            if (visit(top, m, left, n)) return true;
        }
        return false;
    }
    static T element(const Band<const T>& a, int64_t i, int64_t j)
    {
        if (i == j) return std::real(a(i, i));
        if (std::abs(i - j) > a.ku) return T(0);
        return i < j ? a(i, j) : conjugate(a(j, i));
    }
};

template <class T>
void lfiqs(frame::State& state, const Given<T>& g, const Band<const T>& f, int64_t ldfac, const T* b, T* x,
           T* res)
{
    Routine<T, name_of<T>("LFIQS", "LFIQH")> me(state);
    check_number_of_equations(me, 1, g.n);
    check_lda_of_kd(me, 2, g.lda, g.kd);
    check_ldfac_of_kd(me, 3, ldfac, g.kd);
    check_kd(me, 4, g.kd);
    if (me.failed()) return;
    SmallScratch<T, 512> strip;
    if (!strip.allocate(DefiniteBand<T>::rows, DefiniteBand<T>::columns(g.n, g.kd)))
        return no_workspace(me, 5, g.n);
    refine<T>(me, DefiniteBand<T>{g, f, strip}, b, x, res, 5);
}

// The part that LSAQS and LSLQS share.
template <Name name, class T, class Solve>
void solve_given(frame::State& state, const Given<T>& g, const Band<T>& f, T* wk, Solve solve)
{
    Routine<T, name> me(state);
    check_number_of_equations(me, 1, g.n);
    check_lda_of_kd(me, 2, g.lda, g.kd);
    check_kd(me, 3, g.kd);
    check_option_17(me, 4, options().condition_flag);
    if (me.failed()) return;
    Part<T> rcond = 1;
    l2cqs<T>(state, g, f, enough, &rcond, wk);
    if (is_severe(me.callee_type())) return;
    solve(f.constant());
    if (is_severe(me.callee_type())) return;
    if (me.callee_code() != 0 || !(rcond > epsilon<T>())) warn_of_solution(me, rcond);
}

template <class T>
void solve_refined(frame::State& state, const Given<T>& g, const Band<T>& f, const T* b, T* x, T* wk)
{
    solve_given<name_of<T>("L2AQS", "L2AQH")>(
        state, g, f, wk, [&](const Band<const T>& fact) { lfiqs<T>(state, g, fact, enough, b, x, wk); });
}

template <class T>
void solve_plainly(frame::State& state, const Given<T>& g, const Band<T>& f, const T* b, T* x, T* wk)
{
    solve_given<name_of<T>("L2LQS", "L2LQH")>(
        state, g, f, wk, [&](const Band<const T>& fact) { lfsqs<T>(state, fact, enough, g.n, g.kd, b, x); });
}

// ---- members ----------------------------------------------------------------------------------------------

// A front: FACT without the diagonals that lie outside.
template <Name name, class T, class Worker>
void band_front(const Given<T>& g, Worker worker)
{
    const int64_t kd = std::clamp<int64_t>(g.kd, 0, std::max(g.n, 1) - 1);
    solve_in_scratch<name, T>(g.n, kd + 1, [&](frame::State& state, T* fact, T* wk) {
        worker(state, Band<T>::in_array(g.n, 0, kd, fact, kd + 1), wk);
    });
}

template <class T>
void lsaqs(const int32_t* n, const T* a, const int32_t* lda, const int32_t* kd, const T* b, T* x)
{
    const Given<T> g{*n, a, *lda, *kd};
    band_front<name_of<T>("LSAQS", "LSAQH")>(
        g, [&](frame::State& state, const Band<T>& f, T* wk) { solve_refined<T>(state, g, f, b, x, wk); });
}

template <class T>
void lslqs(const int32_t* n, const T* a, const int32_t* lda, const int32_t* kd, const T* b, T* x)
{
    const Given<T> g{*n, a, *lda, *kd};
    band_front<name_of<T>("LSLQS", "LSLQH")>(
        g, [&](frame::State& state, const Band<T>& f, T* wk) { solve_plainly<T>(state, g, f, b, x, wk); });
}

template <class T>
void l2aqs_worker(frame::State& state, int32_t n, const T* a, int64_t lda, int32_t kd, const T* b, T* x,
                  T* fact, T* wk)
{
    solve_refined<T>(state, {n, a, lda, kd}, Band<T>::in_array(n, 0, kd, fact, std::max<int64_t>(kd, 0) + 1),
                     b, x, wk);
}

template <class T>
void l2lqs_worker(frame::State& state, int32_t n, const T* a, int64_t lda, int32_t kd, const T* b, T* x,
                  T* fact, T* wk)
{
    solve_plainly<T>(state, {n, a, lda, kd}, Band<T>::in_array(n, 0, kd, fact, std::max<int64_t>(kd, 0) + 1),
                     b, x, wk);
}

template <class T>
void l2cqs_worker(frame::State& state, int32_t n, const T* a, int64_t lda, int32_t kd, T* fact, int64_t ldfac,
                  Part<T>* rcond, T* wk)
{
    l2cqs<T>(state, {n, a, lda, kd}, Band<T>::in_array(n, 0, kd, fact, ldfac), ldfac, rcond, wk);
}

template <class T>
void l2tqs_worker(frame::State& state, int32_t n, const T* a, int64_t lda, int32_t kd, T* fact, int64_t ldfac,
                  T* wk)
{
    l2tqs<T>(state, {n, a, lda, kd}, Band<T>::in_array(n, 0, kd, fact, ldfac), ldfac, wk);
}

template <class T>
void lfcqs(const int32_t* n, const T* a, const int32_t* lda, const int32_t* kd, T* fact, const int32_t* ldfac,
           Part<T>* rcond)
{
    factor_in_scratch<name_of<T>("LFCQS", "LFCQH"), T>(*n, [&](frame::State& state, T* wk) {
        l2cqs_worker<T>(state, *n, a, *lda, *kd, fact, *ldfac, rcond, wk);
    });
}

template <class T>
void lftqs(const int32_t* n, const T* a, const int32_t* lda, const int32_t* kd, T* fact, const int32_t* ldfac)
{
    factor_in_scratch<name_of<T>("LFTQS", "LFTQH"), T>(
        *n, [&](frame::State& state, T* wk) { l2tqs_worker<T>(state, *n, a, *lda, *kd, fact, *ldfac, wk); });
}

template <class T>
void lfsqs_member(frame::State& state, int32_t n, const T* fact, int64_t ldfac, int32_t kd, const T* b, T* x)
{
    lfsqs<T>(state, Band<const T>::in_array(n, 0, kd, fact, ldfac), ldfac, n, kd, b, x);
}

template <class T>
void lfiqs_member(frame::State& state, int32_t n, const T* a, int64_t lda, int32_t kd, const T* fact,
                  int64_t ldfac, const T* b, T* x, T* res)
{
    lfiqs<T>(state, {n, a, lda, kd}, Band<const T>::in_array(n, 0, kd, fact, ldfac), ldfac, b, x, res);
}

// The square of the determinant of R.
template <class T>
void lfdqs(const int32_t* n, const T* fact, const int32_t* ldfac, const int32_t* kd, Part<T>* det1,
           Part<T>* det2)
{
    Routine<T, name_of<T>("LFDQS", "LFDQH")> me;
    check_order(me, 1, *n);
    check_ldfac_of_kd(me, 2, *ldfac, *kd);
    check_kd(me, 3, *kd);
    if (me.failed()) return;
    const auto f = Band<const T>::in_array(*n, 0, *kd, fact, *ldfac);
    const auto product = square_of_determinant<T>(*n, f.origin, f.step);
    *det1 = product.mantissa;
    *det2 = product.exponent;
}

}  // namespace

}  // namespace orvel::linsys

using namespace orvel::linsys;

ORVEL_EXPORT_ALL(LSAQS, lsaqs_, DLSAQS, dlsaqs_, LSAQH, lsaqh_, DLSAQH, dlsaqh_, 6, lsaqs);
ORVEL_EXPORT_ALL(LSLQS, lslqs_, DLSLQS, dlslqs_, LSLQH, lslqh_, DLSLQH, dlslqh_, 6, lslqs);
ORVEL_EXPORT_ALL(L2AQS, l2aqs_, DL2AQS, dl2aqs_, L2AQH, l2aqh_, DL2AQH, dl2aqh_, 8, l2aqs_worker);
ORVEL_EXPORT_ALL(L2LQS, l2lqs_, DL2LQS, dl2lqs_, L2LQH, l2lqh_, DL2LQH, dl2lqh_, 8, l2lqs_worker);
ORVEL_EXPORT_ALL(LFCQS, lfcqs_, DLFCQS, dlfcqs_, LFCQH, lfcqh_, DLFCQH, dlfcqh_, 7, lfcqs);
ORVEL_EXPORT_ALL(L2CQS, l2cqs_, DL2CQS, dl2cqs_, L2CQH, l2cqh_, DL2CQH, dl2cqh_, 8, l2cqs_worker);
ORVEL_EXPORT_ALL(LFTQS, lftqs_, DLFTQS, dlftqs_, LFTQH, lftqh_, DLFTQH, dlftqh_, 6, lftqs);
ORVEL_EXPORT_ALL(L2TQS, l2tqs_, DL2TQS, dl2tqs_, L2TQH, l2tqh_, DL2TQH, dl2tqh_, 7, l2tqs_worker);
ORVEL_EXPORT_ALL(LFSQS, lfsqs_, DLFSQS, dlfsqs_, LFSQH, lfsqh_, DLFSQH, dlfsqh_, 6, lfsqs_member);
ORVEL_EXPORT_ALL(LFIQS, lfiqs_, DLFIQS, dlfiqs_, LFIQH, lfiqh_, DLFIQH, dlfiqh_, 9, lfiqs_member);
ORVEL_EXPORT_ALL(LFDQS, lfdqs_, DLFDQS, dlfdqs_, LFDQH, lfdqh_, DLFDQH, dlfdqh_, 6, lfdqs);
