// linsys/lfirg.cpp - LFIRG: solution from a factorization with iterative refinement
#include "frame/export.h"
#include "linsys/checks.h"
#include "linsys/linsys.h"
#include "linsys/refine.h"

namespace orvel::linsys {

namespace {

template <class T>
struct General {
    int32_t n;
    const T* a;
    int64_t lda;
    const T* fact;
    int64_t ldfac;
    const int32_t* ipvt;
    int32_t ipath;

    int64_t order() const { return n; }
    T diagonal(int64_t k) const { return a[k * (lda + 1)]; }
    void solve(frame::State& state, const T* b, T* x) const
    {
        lfsrg<T>(state, n, fact, ldfac, ipvt, b, ipath, x);
    }
    void residual(const T* x, const T* b, T* r) const
    {
        const auto& run = of_type<T>(residual_loops());
        (ipath == 1 ? run.by_columns : run.by_rows)(n, n, kernels::parts(a), lda, kernels::parts(x),
                                                    kernels::parts(b), kernels::parts(r));
    }
    bool exceeds(const T* x, const T* b, double limit) const
    {
        const auto& run = of_type<T>(excess_loops());
        return (ipath == 1 ? run.by_columns : run.by_rows)(n, n, kernels::parts(a), lda, kernels::parts(x),
                                                           kernels::parts(b), limit);
    }
};

}  // namespace

template <class T>
void lfirg(frame::State& state, int32_t n, const T* a, int64_t lda, const T* fact, int64_t ldfac,
           const int32_t* ipvt, const T* b, int32_t ipath, T* x, T* res)
{
    Routine<T, name_of<T>("LFIRG", "LFICG")> me(state);
    check_number_of_equations(me, 1, n);
    check_lda(me, 2, n, lda);
    check_ldfac(me, 3, n, ldfac);
    check_ipath(me, 4, ipath);
    if (me.failed()) return;
    check_pivots(me, 6, n, ipvt);
    if (me.failed()) return;

    refine(me, General<T>{n, a, lda, fact, ldfac, ipvt, ipath}, b, x, res, 5);
}

template void lfirg(frame::State&, int32_t, const float*, int64_t, const float*, int64_t, const int32_t*,
                    const float*, int32_t, float*, float*);
template void lfirg(frame::State&, int32_t, const double*, int64_t, const double*, int64_t, const int32_t*,
                    const double*, int32_t, double*, double*);
template void lfirg(frame::State&, int32_t, const orvel_complex*, int64_t, const orvel_complex*, int64_t,
                    const int32_t*, const orvel_complex*, int32_t, orvel_complex*, orvel_complex*);
template void lfirg(frame::State&, int32_t, const orvel_dcomplex*, int64_t, const orvel_dcomplex*, int64_t,
                    const int32_t*, const orvel_dcomplex*, int32_t, orvel_dcomplex*, orvel_dcomplex*);

}  // namespace orvel::linsys

using namespace orvel::linsys;

ORVEL_EXPORT_ALL(LFIRG, lfirg_, DLFIRG, dlfirg_, LFICG, lficg_, DLFICG, dlficg_, 10, lfirg);
