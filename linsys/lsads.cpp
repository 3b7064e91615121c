// linsys/lsads.cpp - LSADS, L2ADS, LSLDS, L2LDS: solution of a positive definite system, with and without
// refinement
#include "frame/export.h"
#include "frame/scratch.h"
#include "linsys/checks.h"
#include "linsys/definite.h"
#include "linsys/linsys.h"

namespace orvel::linsys {

namespace {

// Checks, factors and estimates; `finish` solves from the factorization, which is in FACT(N,N).
template <class T, class Frame, class Finish>
void factor_and_solve(Frame& me, int32_t n, const T* a, int64_t lda, T* fact, T* wk, Finish finish)
{
    check_number_of_equations(me, 1, n);
    check_lda(me, 2, n, lda);
    check_option_17(me, 3, options().condition_flag);
    if (me.failed()) return;

    Part<T> rcond = 1;
    l2cds<T>(me.state(), n, a, lda, fact, n, &rcond, wk);
    if (is_severe(me.callee_type())) return;
    finish(me.state());
    if (is_severe(me.callee_type())) return;
    if (me.callee_code() != 0 || epsilon<T>() >= rcond) warn_of_solution(me, rcond);
}

template <class T>
void l2ads(frame::State& state, int32_t n, const T* a, int64_t lda, const T* b, T* x, T* fact, T* wk)
{
    Routine<T, name_of<T>("L2ADS", "L2ADH")> me(state);
    factor_and_solve(me, n, a, lda, fact, wk,
                     [=](frame::State& s) { lfids<T>(s, n, a, lda, fact, n, b, x, wk); });
}

template <class T>
void l2lds(frame::State& state, int32_t n, const T* a, int64_t lda, const T* b, T* x, T* fact, T* wk)
{
    Routine<T, name_of<T>("L2LDS", "L2LDH")> me(state);
    factor_and_solve(me, n, a, lda, fact, wk, [=](frame::State& s) { lfsds<T>(s, n, fact, n, b, x); });
}

template <class T>
void lsads(const int32_t* n, const T* a, const int32_t* lda, const T* b, T* x)
{
    solve_in_scratch<name_of<T>("LSADS", "LSADH"), T>(
        *n, *n, [&](frame::State& state, T* fact, T* wk) { l2ads<T>(state, *n, a, *lda, b, x, fact, wk); });
}

template <class T>
void lslds(const int32_t* n, const T* a, const int32_t* lda, const T* b, T* x)
{
    solve_in_scratch<name_of<T>("LSLDS", "LSLDH"), T>(
        *n, *n, [&](frame::State& state, T* fact, T* wk) { l2lds<T>(state, *n, a, *lda, b, x, fact, wk); });
}

}  // namespace

}  // namespace orvel::linsys

using namespace orvel::linsys;

ORVEL_EXPORT_ALL(L2ADS, l2ads_, DL2ADS, dl2ads_, L2ADH, l2adh_, DL2ADH, dl2adh_, 7, l2ads);
ORVEL_EXPORT_ALL(LSADS, lsads_, DLSADS, dlsads_, LSADH, lsadh_, DLSADH, dlsadh_, 5, lsads);
ORVEL_EXPORT_ALL(L2LDS, l2lds_, DL2LDS, dl2lds_, L2LDH, l2ldh_, DL2LDH, dl2ldh_, 7, l2lds);
ORVEL_EXPORT_ALL(LSLDS, lslds_, DLSLDS, dlslds_, LSLDH, lsldh_, DLSLDH, dlsldh_, 5, lslds);
