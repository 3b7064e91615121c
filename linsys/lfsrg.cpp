// linsys/lfsrg.cpp - LFSRG: solution from a factorization
#include <algorithm>

#include "frame/export.h"
#include "kernels/level1.h"
#include "kernels/triangular.h"
#include "linsys/checks.h"
#include "linsys/linsys.h"

namespace orvel::linsys {

template <class T>
void lfsrg(frame::State& state, int32_t n, const T* fact, int64_t ldfac, const int32_t* ipvt, const T* b,
           int32_t ipath, T* x)
{
    Routine<T, name_of<T>("LFSRG", "LFSCG")> me(state);
    check_number_of_equations(me, 1, n);
    check_ldfac(me, 2, n, ldfac);
    if (me.failed()) return;
    check_ipath(me, 5, ipath);
    if (me.failed()) return;
    check_pivots(me, 6, n, ipvt);
    if (me.failed()) return;
    if (x != b) kernels::copy<T>(n, b, 1, x, 1);

    if (ipath == 1) {
        for (int64_t k = 0; k + 1 < n; ++k) {
            std::swap(x[ipvt[k] - 1], x[k]);
            kernels::axpy<T>(n - k - 1, x[k], fact + k + 1 + k * ldfac, 1, x + k + 1, 1);
        }
        if (first_small_diagonal(n, fact, ldfac) < n) return say_u_is_singular(me, terminal, 3);
        kernels::solve_triangle<T>(false, false, n, fact, ldfac, x);
    } else {
        if (first_small_diagonal(n, fact, ldfac) < n) return say_u_is_singular(me, terminal, 4);
        kernels::solve_triangle<T>(false, true, n, fact, ldfac, x);
        for (int64_t k = n - 2; k >= 0; --k) {
            x[k] += kernels::dotc<T>(n - k - 1, fact + k + 1 + k * ldfac, 1, x + k + 1, 1);
            std::swap(x[ipvt[k] - 1], x[k]);
        }
    }
}

template void lfsrg(frame::State&, int32_t, const float*, int64_t, const int32_t*, const float*, int32_t,
                    float*);
template void lfsrg(frame::State&, int32_t, const double*, int64_t, const int32_t*, const double*, int32_t,
                    double*);
template void lfsrg(frame::State&, int32_t, const orvel_complex*, int64_t, const int32_t*,
                    const orvel_complex*, int32_t, orvel_complex*);
template void lfsrg(frame::State&, int32_t, const orvel_dcomplex*, int64_t, const int32_t*,
                    const orvel_dcomplex*, int32_t, orvel_dcomplex*);

}  // namespace orvel::linsys

using namespace orvel::linsys;

ORVEL_EXPORT_ALL(LFSRG, lfsrg_, DLFSRG, dlfsrg_, LFSCG, lfscg_, DLFSCG, dlfscg_, 7, lfsrg);
