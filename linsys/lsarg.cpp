// linsys/lsarg.cpp - LSARG, L2ARG: solution of a linear system with iterative refinement
#include "frame/export.h"
#include "linsys/checks.h"
#include "linsys/linsys.h"

namespace orvel::linsys {

namespace {

template <class T>
void l2arg(frame::State& state, int32_t n, const T* a, int64_t lda, const T* b, int32_t ipath, T* x, T* fact,
           int32_t* ipvt, T* wk)
{
    Routine<T, name_of<T>("L2ARG", "L2ACG")> me(state);
    check_number_of_equations(me, 1, n);
    check_lda(me, 2, n, lda);
    check_ipath(me, 3, ipath);
    if (me.failed()) return;

    Part<T> rcond = 1;
    l2crg<T>(state, n, a, lda, fact, n, ipvt, &rcond, wk);
    if (is_severe(me.callee_type())) return;
    lfirg<T>(state, n, a, lda, fact, n, ipvt, b, ipath, x, wk);
    if (is_severe(me.callee_type())) return;
    if (me.callee_code() != 0 || epsilon<T>() >= rcond) warn_of_solution(me, rcond);
}

template <class T>
void lsarg(const int32_t* n, const T* a, const int32_t* lda, const T* b, const int32_t* ipath, T* x)
{
    solve_in_scratch<name_of<T>("LSARG", "LSACG"), T>(
        *n, *n, [&](frame::State& state, T* fact, int32_t* ipvt, T* wk) {
            l2arg<T>(state, *n, a, *lda, b, *ipath, x, fact, ipvt, wk);
        });
}

}  // namespace

}  // namespace orvel::linsys

using namespace orvel::linsys;

ORVEL_EXPORT_ALL(L2ARG, l2arg_, DL2ARG, dl2arg_, L2ACG, l2acg_, DL2ACG, dl2acg_, 9, l2arg);
ORVEL_EXPORT_ALL(LSARG, lsarg_, DLSARG, dlsarg_, LSACG, lsacg_, DLSACG, dlsacg_, 6, lsarg);
