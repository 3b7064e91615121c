// linsys/lslrg.cpp - LSLRG, L2LRG: solution of a linear system without refinement
#include "frame/export.h"
#include "linsys/checks.h"
#include "linsys/linsys.h"

namespace orvel::linsys {

namespace {

// Leading dimension of the factor array: N, or N + P where the modulus M divides N.
int64_t padded(int32_t n)
{
    const auto [p, m] = options().padding;
    return p > 0 && m > 0 && n % m == 0 ? int64_t{n} + p : n;
}

template <class T>
void l2lrg(frame::State& state, int32_t n, const T* a, int64_t lda, const T* b, int32_t ipath, T* x, T* fact,
           int32_t* ipvt, T* wk)
{
    Routine<T, name_of<T>("L2LRG", "L2LCG")> me(state);
    check_number_of_equations(me, 1, n);
    check_lda(me, 2, n, lda);
    check_ipath(me, 3, ipath);
    const auto [p, m] = options().padding;
    if (p < 0 || m <= 0)
        me.post(
            terminal, 4,
            "The option values 3,4 must be respectively not less than zero, and non-negative while %(I1) and %(I2) are given.",
            {i(1, p), i(2, m)});
    if (me.failed()) return;

    const int64_t ldfac = padded(n);
    Part<T> rcond = 1;
    l2crg<T>(state, n, a, lda, fact, ldfac, ipvt, &rcond, wk);
    if (is_severe(me.callee_type())) return;
    lfsrg<T>(state, n, fact, ldfac, ipvt, b, ipath, x);
    if (epsilon<T>() >= rcond) warn_of_solution(me, rcond);
}

template <class T>
void lslrg(const int32_t* n, const T* a, const int32_t* lda, const T* b, const int32_t* ipath, T* x)
{
    solve_in_scratch<name_of<T>("LSLRG", "LSLCG"), T>(
        *n, padded(*n), [&](frame::State& state, T* fact, int32_t* ipvt, T* wk) {
            l2lrg<T>(state, *n, a, *lda, b, *ipath, x, fact, ipvt, wk);
        });
}

}  // namespace

}  // namespace orvel::linsys

using namespace orvel::linsys;

ORVEL_EXPORT_ALL(L2LRG, l2lrg_, DL2LRG, dl2lrg_, L2LCG, l2lcg_, DL2LCG, dl2lcg_, 9, l2lrg);
ORVEL_EXPORT_ALL(LSLRG, lslrg_, DLSLRG, dlslrg_, LSLCG, lslcg_, DLSLCG, dlslcg_, 6, lslrg);
