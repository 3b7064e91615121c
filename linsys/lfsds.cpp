// linsys/lfsds.cpp - LFSDS, LFIDS, LFDDS: solution, refined solution and determinant from a Cholesky
// factorization
#include <algorithm>

#include "frame/export.h"
#include "frame/scratch.h"
#include "kernels/level1.h"
#include "kernels/triangular.h"
#include "linsys/checks.h"
#include "linsys/definite.h"
#include "linsys/determinant.h"
#include "linsys/linsys.h"
#include "linsys/refine.h"

namespace orvel::linsys {

template <class T>
void lfsds(frame::State& state, int32_t n, const T* fact, int64_t ldfac, const T* b, T* x)
{
    Routine<T, name_of<T>("LFSDS", "LFSDH")> me(state);
    check_number_of_equations(me, 1, n);
    check_ldfac(me, 2, n, ldfac);
    if (me.failed()) return;
    if (first_small_diagonal(n, fact, ldfac) < n) return say_r_is_singular(me, 3);
    if (x != b) kernels::copy<T>(n, b, 1, x, 1);
    kernels::solve_triangle<T>(false, true, n, fact, ldfac, x);
    kernels::solve_triangle<T>(false, false, n, fact, ldfac, x);
}

namespace {

template <class T>
struct Definite {
    int32_t n;
    const T* a;
    int64_t lda;
    const T* fact;
    int64_t ldfac;

    int64_t order() const { return n; }
    T diagonal(int64_t k) const { return std::real(a[k * (lda + 1)]); }
    void solve(frame::State& state, const T* b, T* x) const { lfsds<T>(state, n, fact, ldfac, b, x); }
    void residual(const T* x, const T* b, T* r) const { residual(0, n, x, b, r); }

    bool exceeds(const T* x, const T* b, double limit) const
    {
        constexpr int64_t some = 32;
        kernels::OnStack<T, some> rows;
        for (int64_t first = 0; first < n; first += some) {
            const int64_t count = std::min(some, n - first);
            residual(first, count, x, b, rows);
            for (int64_t k = 0; k < count; ++k)
                if (static_cast<double>(magnitude(rows[k])) > limit * size(first + k, x, b)) return true;
        }
        return false;
    }

private:
    void residual(int64_t first, int64_t count, const T* x, const T* b, T* r) const
    {
        of_type<T>(residual_loops())
            .by_upper_triangle(n, first, count, kernels::parts(a), lda, kernels::parts(x),
                               kernels::parts(b + first), kernels::parts(r));
    }

    // |A| * (|x| + tiny) + |b| of a row; the smallest normal number stands for the spacing of x near zero.
    double size(int64_t row, const T* x, const T* b) const
    {
        const Part<T> tiny = machine<Part<T>>(1);
        double sum = static_cast<double>(magnitude(b[row]));
        for (int64_t j = 0; j < n; ++j) {
            const T e = j == row ? diagonal(row) : a[std::min(row, j) + std::max(row, j) * lda];
            sum += static_cast<double>(magnitude(e)) * static_cast<double>(magnitude(x[j]) + tiny);
        }
        return sum;
    }
};

}  // namespace

template <class T>
void lfids(frame::State& state, int32_t n, const T* a, int64_t lda, const T* fact, int64_t ldfac, const T* b,
           T* x, T* res)
{
    Routine<T, name_of<T>("LFIDS", "LFIDH")> me(state);
    check_number_of_equations(me, 1, n);
    check_lda(me, 2, n, lda);
    check_ldfac(me, 3, n, ldfac);
    if (me.failed()) return;
    refine(me, Definite<T>{n, a, lda, fact, ldfac}, b, x, res, 4);
}

namespace {

// The square of the determinant of R.
template <class T>
void lfdds(const int32_t* n, const T* fact, const int32_t* ldfac, Part<T>* det1, Part<T>* det2)
{
    Routine<T, name_of<T>("LFDDS", "LFDDH")> me;
    check_order(me, 1, *n);
    check_ldfac(me, 2, *n, *ldfac);
    if (me.failed()) return;
    const auto product = square_of_determinant<T>(*n, fact, *ldfac);
    *det1 = product.mantissa;
    *det2 = product.exponent;
}

}  // namespace

template void lfsds(frame::State&, int32_t, const float*, int64_t, const float*, float*);
template void lfids(frame::State&, int32_t, const float*, int64_t, const float*, int64_t, const float*,
                    float*, float*);
template void lfsds(frame::State&, int32_t, const double*, int64_t, const double*, double*);
template void lfids(frame::State&, int32_t, const double*, int64_t, const double*, int64_t, const double*,
                    double*, double*);
template void lfsds(frame::State&, int32_t, const orvel_complex*, int64_t, const orvel_complex*,
                    orvel_complex*);
template void lfids(frame::State&, int32_t, const orvel_complex*, int64_t, const orvel_complex*, int64_t,
                    const orvel_complex*, orvel_complex*, orvel_complex*);
template void lfsds(frame::State&, int32_t, const orvel_dcomplex*, int64_t, const orvel_dcomplex*,
                    orvel_dcomplex*);
template void lfids(frame::State&, int32_t, const orvel_dcomplex*, int64_t, const orvel_dcomplex*, int64_t,
                    const orvel_dcomplex*, orvel_dcomplex*, orvel_dcomplex*);

}  // namespace orvel::linsys

using namespace orvel::linsys;

ORVEL_EXPORT_ALL(LFSDS, lfsds_, DLFSDS, dlfsds_, LFSDH, lfsdh_, DLFSDH, dlfsdh_, 5, lfsds);
ORVEL_EXPORT_ALL(LFIDS, lfids_, DLFIDS, dlfids_, LFIDH, lfidh_, DLFIDH, dlfidh_, 8, lfids);
ORVEL_EXPORT_ALL(LFDDS, lfdds_, DLFDDS, dlfdds_, LFDDH, lfddh_, DLFDDH, dlfddh_, 5, lfdds);
