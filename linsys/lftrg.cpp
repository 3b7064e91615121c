// linsys/lftrg.cpp - LFTRG, L2TRG: LU factorization; L4TRG, CRGRG: its helpers
#include <algorithm>

#include "frame/export.h"
#include "frame/scratch.h"
#include "kernels/level1.h"
#include "linsys/linsys.h"

namespace orvel::linsys {

namespace {

template <class T>
void crgrg(const int32_t* n, const T* a, const int32_t* lda, T* b, const int32_t* ldb)
{
    if (*lda < *n || *ldb < *n) return;
    for (int64_t j = 0; j < *n; ++j) kernels::copy<T>(*n, a + j * *lda, 1, b + j * *ldb, 1);
}

template <class T>
void l4trg(const int32_t* n, const T* x, const Part<T>* s, int32_t* l)
{
    *l = *n < 1 ? 0 : static_cast<int32_t>(first_of_largest(*n, x, s) + 1);
}

// t = -1 / x
template <class T>
void invert(const Part<T>* x, Part<T>* t)
{
    *reinterpret_cast<T*>(t) = kernels::quotient(T(-1), *reinterpret_cast<const T*>(x));
}

// FACT = A, scaled and factored. Returns whether it is singular.
template <class T>
bool scale_and_factor(int64_t n, const T* a, int64_t lda, T* fact, int64_t ldfac, int32_t* ipvt, Part<T>* s)
{
    const Part<T> small = smallest_pivot<T>();
    if (n <= small_order)
        return of_type<T>(small_matrix_loops())(n, kernels::parts(a), lda, kernels::parts(fact), ldfac, s,
                                                ipvt, small, invert<T>);
    // Copied and measured column by column, while the column is near.
    const auto raise_maxima = of_type<T>(vector_loops()).raise_maxima;
    std::fill_n(s, n, Part<T>(0));
    for (int64_t j = 0; j < n; ++j) {
        if (fact != a || ldfac != lda) kernels::copy<T>(n, a + j * lda, 1, fact + j * ldfac, 1);
        raise_maxima(n, kernels::parts(fact + j * ldfac), s);
    }
    for (int64_t k = 0; k < n; ++k)
        s[k] = s[k] >= small ? 1 / std::min(s[k], machine<Part<T>>(2)) : Part<T>(1);
    return factor<T>(n, panel_width<T>(n), fact, ldfac, ipvt, s, small);
}

}  // namespace

template <class T>
void l2trg(frame::State& state, int32_t n, const T* a, int64_t lda, T* fact, int64_t ldfac, int32_t* ipvt,
           T* wk)
{
    Routine<T, name_of<T>("L2TRG", "L2TCG")> me(state);
    // Only the first error counts.
    check_order(me, 1, n);
    if (!me.failed()) check_lda(me, 2, n, lda);
    if (!me.failed()) check_ldfac(me, 3, n, ldfac);
    if (me.failed()) return;

    if (scale_and_factor<T>(n, a, lda, fact, ldfac, ipvt, reinterpret_cast<Part<T>*>(wk)))
        say_u_is_singular(me, fatal, 2);
}

namespace {

template <class T>
void lftrg(const int32_t* n, const T* a, const int32_t* lda, T* fact, const int32_t* ldfac, int32_t* ipvt)
{
    factor_in_scratch<name_of<T>("LFTRG", "LFTCG"), T>(
        *n, [&](frame::State& state, T* wk) { l2trg<T>(state, *n, a, *lda, fact, *ldfac, ipvt, wk); });
}

}  // namespace

template void l2trg(frame::State&, int32_t, const float*, int64_t, float*, int64_t, int32_t*, float*);
template void l2trg(frame::State&, int32_t, const double*, int64_t, double*, int64_t, int32_t*, double*);
template void l2trg(frame::State&, int32_t, const orvel_complex*, int64_t, orvel_complex*, int64_t, int32_t*,
                    orvel_complex*);
template void l2trg(frame::State&, int32_t, const orvel_dcomplex*, int64_t, orvel_dcomplex*, int64_t,
                    int32_t*, orvel_dcomplex*);

}  // namespace orvel::linsys

using namespace orvel::linsys;

ORVEL_EXPORT_ALL(CRGRG, crgrg_, DCRGRG, dcrgrg_, CCGCG, ccgcg_, DCCGCG, dccgcg_, 5, crgrg);
ORVEL_EXPORT_ALL(L4TRG, l4trg_, DL4TRG, dl4trg_, L4TCG, l4tcg_, DL4TCG, dl4tcg_, 4, l4trg);
ORVEL_EXPORT_ALL(L2TRG, l2trg_, DL2TRG, dl2trg_, L2TCG, l2tcg_, DL2TCG, dl2tcg_, 7, l2trg);
ORVEL_EXPORT_ALL(LFTRG, lftrg_, DLFTRG, dlftrg_, LFTCG, lftcg_, DLFTCG, dlftcg_, 6, lftrg);
