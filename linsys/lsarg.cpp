// linsys/lsarg.cpp - LSARG, L2ARG: solution of a linear system with iterative refinement
#include "frame/export.h"
#include "frame/scratch.h"
#include "linsys/linsys.h"

namespace orvel::linsys {

namespace {

template <class T>
void l2arg(frame::State& state, int32_t n, const T* a, int64_t lda, const T* b, int32_t ipath, T* x, T* fact,
           int32_t* ipvt, T* wk)
{
    Routine<T, general<T>("L2ARG", "L2ACG")> me(state);
    if (n < 1)
        me.post(terminal, 1, "The number of equations must be positive while N = %(I1) is given.", {i(1, n)});
    if (n > lda)
        me.post(
            terminal, 2,
            "The order of the matrix must be less than or equal to its leading dimension while N = %(I1) and LDA = %(I2) are given.",
            {i(1, n), i(2, static_cast<int32_t>(lda))});
    if (ipath != 1 && ipath != 2)
        me.post(terminal, 3, "IPATH must be either 1 or 2 while a value of %(I1) is given.", {i(1, ipath)});
    if (me.failed()) return;

    Part<T> rcond = 1;
    l2crg<T>(state, n, a, lda, fact, n, ipvt, &rcond, wk);
    if (is_severe(me.callee_type())) return;
    lfirg<T>(state, n, a, lda, fact, n, ipvt, b, ipath, x, wk);
    if (me.callee_code() != 0 || epsilon<T>() >= rcond)
        me.post(
            warning, 1,
            "The matrix is too ill-conditioned. An estimate of the reciprocal of its L1 condition number is RCOND = %(R1).  The solution might not be accurate.",
            {r(1, rcond)});
}

template <class T>
void l2arg_entry(const int32_t* n, const T* a, const int32_t* lda, const T* b, const int32_t* ipath, T* x,
                 T* fact, int32_t* ipvt, T* wk)
{
    l2arg<T>(frame::state(), *n, a, *lda, b, *ipath, x, fact, ipvt, wk);
}

template <class T>
void lsarg(const int32_t* n, const T* a, const int32_t* lda, const T* b, const int32_t* ipath, T* x)
{
    Routine<T, general<T>("LSARG", "LSACG")> me;
    if (*n < 1)
        return me.post(terminal, 1, "The number of equations must be positive while N = %(i1) is given.",
                       {i(1, *n)});
    SmallScratch<T, 256> fact;
    SmallScratch<int32_t> ipvt;
    SmallScratch<T> wk;
    if (fact.allocate(*n, *n) && ipvt.allocate(*n) && wk.allocate(*n))
        l2arg<T>(me.state(), *n, a, *lda, b, *ipath, x, fact, ipvt, wk);
    else
        me.no_storage(
            2, "The required storage cannot be allocated.  The workspace is based on N, where N = %(i1).",
            {i(1, *n)});
}

}  // namespace

}  // namespace orvel::linsys

using namespace orvel::linsys;

ORVEL_EXPORT(L2ARG, l2arg_, 9, l2arg_entry<float>);
ORVEL_EXPORT(DL2ARG, dl2arg_, 9, l2arg_entry<double>);
ORVEL_EXPORT(L2ACG, l2acg_, 9, l2arg_entry<orvel_complex>);
ORVEL_EXPORT(DL2ACG, dl2acg_, 9, l2arg_entry<orvel_dcomplex>);
ORVEL_EXPORT(LSARG, lsarg_, 6, lsarg<float>);
ORVEL_EXPORT(DLSARG, dlsarg_, 6, lsarg<double>);
ORVEL_EXPORT(LSACG, lsacg_, 6, lsarg<orvel_complex>);
ORVEL_EXPORT(DLSACG, dlsacg_, 6, lsarg<orvel_dcomplex>);
