// linsys/lfirg.cpp - LFIRG: solution from a factorization with iterative refinement
#include <algorithm>
#include <type_traits>

#include "frame/export.h"
#include "frame/scratch.h"
#include "kernels/level1.h"
#include "linsys/checks.h"
#include "linsys/linsys.h"

namespace orvel::linsys {

namespace {

template <class T>
Part<T> largest(int64_t n, const T* x)
{
    return magnitude(x[kernels::iamax<T>(n, x, 1) - 1]);
}

// What rounding may leave of a residual, as a multiple of |A| |x| + |b|: twice the bound for a solution that
// a stable factorization and one correction have given. Source: N. Higham, Accuracy and Stability of
// Numerical Algorithms, 2nd edition, 2002, chapter 12.
template <class T>
Part<T> residual_limit(int64_t n)
{
    return 4 * static_cast<Part<T>>(n + 1) * epsilon<T>();
}

// Whether a look at the diagonal cannot tell that all elements of the residual are small.
template <class T>
bool is_doubtful(int64_t n, const T* a, int64_t lda, const T* x, const T* b, const T* residual)
{
    const Part<T> limit = residual_limit<T>(n);
    for (int64_t k = 0; k < n; ++k)
        if (!(magnitude(residual[k]) <=
              limit * (magnitude(b[k]) + magnitude(a[k * (lda + 1)]) * magnitude(x[k]))))
            return true;
    return false;
}

}  // namespace

template <class T>
void lfirg(frame::State& state, int32_t n, const T* a, int64_t lda, const T* fact, int64_t ldfac,
           const int32_t* ipvt, const T* b, int32_t ipath, T* x, T* res)
{
    Routine<T, general<T>("LFIRG", "LFICG")> me(state);
    check_number_of_equations(me, 1, n);
    check_lda(me, 2, n, lda);
    check_ldfac(me, 3, n, ldfac);
    check_ipath(me, 4, ipath);
    if (me.failed()) return;
    check_pivots(me, 6, n, ipvt);
    if (me.failed()) return;

    SmallScratch<T> copy_of_b;
    if (x == b) {
        if (!copy_of_b.allocate(n)) return no_workspace(me, 5, n);
        std::copy_n(b, n, static_cast<T*>(copy_of_b));
        b = copy_of_b;
    }
    lfsrg<T>(state, n, fact, ldfac, ipvt, b, ipath, x);
    if (is_severe(me.callee_type()) || largest(n, x) == 0) return;

    const auto& run = of_type<T>(residual_loops());
    const auto& check = of_type<T>(excess_loops());
    const auto residual = ipath == 1 ? run.by_columns : run.by_rows;
    const auto exceeds = ipath == 1 ? check.by_columns : check.by_rows;
    Part<T> previous = machine<Part<T>>(2);
    bool converged = false, doubtful = false;
    // Near zero the spacing of numbers does not shrink with x, and each operation of a solve rounds to it.
    const Part<T> least = 4 * static_cast<Part<T>>(n + 1) * machine<Part<T>>(1);
    for (int iteration = 0; iteration < 50 && !converged; ++iteration) {
        residual(n, n, kernels::parts(a), lda, kernels::parts(x), kernels::parts(b), kernels::parts(res));
        doubtful = is_doubtful(n, a, lda, x, b, res);
        lfsrg<T>(state, n, fact, ldfac, ipvt, res, ipath, res);
        if (is_severe(me.callee_type())) return;
        for (int64_t k = 0; k < n; ++k) x[k] -= res[k];
        const Part<T> ratio = largest(n, res) / std::max(largest(n, x), least);
        if (ratio >= previous) break;
        previous = ratio;
        converged = ratio <= epsilon<T>();
    }
    // With a factorization that growth has spoiled, corrections are small while the residual is not.
    if (!converged || (doubtful && exceeds(n, n, kernels::parts(a), lda, kernels::parts(x), kernels::parts(b),
                                           static_cast<double>(residual_limit<T>(n)))))
        me.post(warning, 2, "The matrix is too ill-conditioned for iterative refinement to be effective.");
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
