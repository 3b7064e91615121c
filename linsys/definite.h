// linsys/definite.h - symmetric and Hermitian positive definite matrices: A = R^H * R, with A and R by their
// upper triangles
#pragma once

#include "linsys/linsys.h"

namespace orvel::linsys {

// ---- without a frame --------------------------------------------------------------------------------------

// Factors the upper triangle R(n, n) in place; a pivot must be above least(k). Triangles up to `width` are
// factored at once, of larger ones the half; the bits do not depend on it. Returns the number of columns that
// are done, n when A is positive definite.
inline constexpr int64_t definite_width = small_order;
template <class T>
int64_t factor_definite(int64_t n, int64_t width, T* r, int64_t ldr, const Part<T>* least);

// The first diagonal element, from 0, whose imaginary part is not negligible; n without one.
template <class T>
inline int64_t first_complex_diagonal(int64_t n, const T* a, int64_t lda)
{
    if constexpr (is_complex<T>)
        for (int64_t k = 0; k < n; ++k) {
            const T e = a[k * (lda + 1)];
            if (!(std::abs(e.imag()) <= epsilon<T>() * std::abs(e.real()))) return k;
        }
    return n;
}

// After a factorization of order n: where it ended, and the first element of the diagonal that is not real.
template <class Frame>
void say_what_is_wrong(Frame& me, int64_t n, int64_t done, int64_t not_real)
{
    if (done < n)
        me.post(
            fatal, 2,
            "The input matrix is not positive definite.  The first of its leading submatrices that is not has the order %(I1).",
            {i(1, static_cast<int32_t>(done + 1))});
    else if (not_real < n)
        me.post(
            warning, 3,
            "The diagonal of a Hermitian matrix is real, but the element %(I1) has an imaginary part that is not negligible.  Zero is taken in its place.",
            {i(1, static_cast<int32_t>(not_real + 1))});
}

// A = R * R^H in place, upper triangles.
template <class T>
void multiply_by_own_adjoint(int64_t n, T* r, int64_t ldr);

// ---- workers, which check their arguments and post errors under their own names ---------------------------

template <class T>
void l2tds(frame::State& state, int32_t n, const T* a, int64_t lda, T* fact, int64_t ldfac, T* wk);
template <class T>
void l2cds(frame::State& state, int32_t n, const T* a, int64_t lda, T* fact, int64_t ldfac, Part<T>* rcond,
           T* wk);
template <class T>
void lfsds(frame::State& state, int32_t n, const T* fact, int64_t ldfac, const T* b, T* x);
template <class T>
void lfids(frame::State& state, int32_t n, const T* a, int64_t lda, const T* fact, int64_t ldfac, const T* b,
           T* x, T* res);

}  // namespace orvel::linsys
