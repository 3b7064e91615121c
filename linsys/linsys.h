// linsys/linsys.h - what the files of the dense solvers share
#pragma once

#include <cmath>
#include <complex>
#include <cstdint>
#include <type_traits>

#include "frame/constants.h"
#include "frame/routine.h"
#include "frame/scratch.h"
#include "kernels/level1.h"
#include "kernels/matrix.h"
#include "kernels/vectors.h"
#include "linsys/checks.h"
#include "linsys/isa/loops.h"
#include "orvel/linsys.h"

namespace orvel::linsys {

using isa::of_type;
using kernels::conjugate;
using kernels::is_complex;
using kernels::Part;

// The name of a routine by its numbers: as RG and CG, RT and CT, DS and DH.
template <class T>
consteval Name<6> name_of(const char (&real)[6], const char (&complex)[6])
{
    return is_complex<T> ? Name<6>(complex) : Name<6>(real);
}

// The magnitude by which pivots are chosen and tested: |x|, or |Re| + |Im|.
template <class T>
inline Part<T> magnitude(T x)
{
    return std::abs(std::real(x)) + std::abs(std::imag(x));
}
template <>
inline float magnitude(float x)
{
    return std::abs(x);
}
template <>
inline double magnitude(double x)
{
    return std::abs(x);
}

// |a| with the direction of b; a where b is zero.
template <class T>
inline T with_sign(T a, T b)
{
    if constexpr (is_complex<T>) {
        const Part<T> size = magnitude(b);
        return size == 0 ? a : magnitude(a) * (b / size);
    } else {
        return std::copysign(a, b);
    }
}

// The first of n rows, from 0, whose |x| * s is largest: a later one has to be strictly larger.
template <class T>
inline int64_t first_of_largest(int64_t n, const T* x, const Part<T>* s)
{
    int64_t best = 0;
    Part<T> largest = -1;
    for (int64_t k = 0; k < n; ++k) {
        const Part<T> size = magnitude(x[k]) * s[k];
        if (size > largest) largest = size, best = k;
    }
    return best;
}

// A pivot is close to zero when its magnitude is not above this; its reciprocal does not overflow.
template <class T>
inline Part<T> smallest_pivot()
{
    const Part<T> tiny = machine<Part<T>>(1), huge = machine<Part<T>>(2);
    return tiny * huge < 1 ? 1 / huge : tiny;
}

// The first of n diagonal elements that is close to zero, from 0; n without one.
template <class T>
inline int64_t first_small_diagonal(int64_t n, const T* a, int64_t lda)
{
    const Part<T> small = smallest_pivot<T>();
    for (int64_t k = 0; k < n; ++k)
        if (magnitude(a[k * (lda + 1)]) <= small) return k;
    return n;
}

template <class T>
inline Part<T> epsilon()
{
    return machine<Part<T>>(4);
}

// Whether an error of this type ends a computation: FATAL and TERMINAL do, WARNING does not.
inline bool is_severe(int32_t type) { return type == fatal || type == terminal; }

// ---- without a frame --------------------------------------------------------------------------------------

// Columns of a panel of the factorization: few while the whole matrix is in a near cache, more where the
// products with the columns to the right have to pay for the way to the memory.
template <class T>
int64_t panel_width(int64_t n);

// LU factorization of FACT(n, n) in place, in panels of `width` <= n columns. S holds the n row scale factors
// and is interchanged with the rows. Returns whether a pivot was close to zero.
template <class T>
bool factor(int64_t n, int64_t width, T* fact, int64_t ldfac, int32_t* ipvt, Part<T>* s, Part<T> small);

// The same column by column, which needs no memory; the definition of `factor`.
template <class T>
bool factor_plainly(int64_t n, T* fact, int64_t ldfac, int32_t* ipvt, Part<T>* s, Part<T> small);

// An estimate of 1 / norm of the inverse, from the factorization; z(n) is scratch. With the norm of A it
// gives the reciprocal of the condition number.
template <class T>
Part<T> reciprocal_of_inverse_norm(int64_t n, const T* fact, int64_t ldfac, const int32_t* ipvt, T* z);

// A triangle of a matrix by columns.
template <class T>
struct Triangle {
    bool lower;
    int64_t n;
    const T* a;
    int64_t lda;
};

// The same for a triangle, and for R^H * R.
template <class T>
Part<T> reciprocal_of_inverse_norm(const Triangle<T>& triangle, T* z);
template <class T>
Part<T> reciprocal_of_inverse_norm(int64_t n, const T* r, int64_t ldr, T* z);

// The sum of magnitudes of `scale` * x.
template <class T>
Part<T> sum_of_magnitudes(int64_t n, const T* x, Part<T> scale)
{
    if (scale == 1) return kernels::asum<T>(n, x, 1);
    Part<T> sum = 0;
    for (int64_t k = 0; k < n; ++k) sum += magnitude(scale * x[k]);
    return sum;
}

// A norm, times a power of two where it would overflow.
template <class R>
struct ScaledNorm {
    R value = 0, scale = 1;

    // The reciprocal of the condition number with that of the norm of the inverse.
    R condition(R of_inverse) const { return value == 0 ? 1 : scale * of_inverse / value; }
};

// What norm(scale) gives for the largest scale that does not make it infinite.
template <class R, class Norm>
ScaledNorm<R> scaled_norm(Norm norm)
{
    const R value = norm(R(1));
    if (!std::isinf(value)) return {value, 1};
    const R scale = R(0x1p-40);  // for more elements than a column can have
    return {norm(scale), scale};
}

// The largest of the sums of columns; NaN when a column has one.
template <class R, class Sum>
R largest_sum(int64_t columns, Sum sum_of)
{
    R largest = 0;
    for (int64_t j = 0; j < columns; ++j) {
        const R sum = sum_of(j);
        if (std::isnan(sum)) return sum;
        largest = std::max(largest, sum);
    }
    return largest;
}

// The largest column sum of magnitudes of `scale` * A; NaN when a column has one.
template <class T>
Part<T> norm_1(int64_t rows, int64_t columns, const T* a, int64_t lda, Part<T> scale = 1);

// Inverse of a triangle in place; the other triangle is not touched.
template <class T>
void invert_triangle(bool lower, int64_t n, T* a, int64_t lda);

// ---- workers, which check their arguments and post errors under their own names ---------------------------

template <class T>
void l2trg(frame::State& state, int32_t n, const T* a, int64_t lda, T* fact, int64_t ldfac, int32_t* ipvt,
           T* wk);
template <class T>
void l2crg(frame::State& state, int32_t n, const T* a, int64_t lda, T* fact, int64_t ldfac, int32_t* ipvt,
           Part<T>* rcond, T* wk);
template <class T>
void lfsrg(frame::State& state, int32_t n, const T* fact, int64_t ldfac, const int32_t* ipvt, const T* b,
           int32_t ipath, T* x);
template <class T>
void lfirg(frame::State& state, int32_t n, const T* a, int64_t lda, const T* fact, int64_t ldfac,
           const int32_t* ipvt, const T* b, int32_t ipath, T* x, T* res);

// Option values of chapter MATH of the calling thread's store.
struct Options {
    int32_t padding[2];      // 16: padding count and modulus of leading dimensions
    int32_t condition_flag;  // 17: 1 no estimate of the condition number, 2 estimate
};
const Options& options();

// Factors, and estimates the condition number where option 17 asks for it, whose error has the code `option`;
// else RCOND is 1. The norm is that of A, which the factors may overwrite. Tells whether there is an
// estimate.
template <class T, class Frame, class Norm, class Factor, class Estimate>
bool factor_and_estimate(Frame& me, int32_t option, Part<T>* rcond, Norm norm_of, Factor factor,
                         Estimate estimate)
{
    *rcond = 1;
    check_option_17(me, option, options().condition_flag);
    if (me.failed()) return false;
    const bool estimates = options().condition_flag == 2;
    ScaledNorm<Part<T>> norm;
    if (estimates) norm = scaled_norm<Part<T>>(norm_of);
    factor();
    if (is_severe(me.callee_type()) || !estimates) return false;
    *rcond = estimate(norm);
    return true;
}

// A front of a factorization, which has WK(N) for its worker.
template <Name name, class T, class Worker>
void factor_in_scratch(int32_t n, Worker worker)
{
    Routine<T, name> me;
    check_order(me, 1, n);
    if (me.failed()) return;
    SmallScratch<T> wk;
    if (wk.allocate(n))
        worker(me.state(), static_cast<T*>(wk));
    else
        no_workspace(me, 2, n);
}

// A front of a solver, which has scratch for its worker: FACT(N) by columns ldfac apart, IPVT where the
// worker takes it, WK.
template <Name name, class T, class Worker>
void solve_in_scratch(int32_t n, int64_t ldfac, Worker worker)
{
    constexpr bool interchanges = std::is_invocable_v<Worker, frame::State&, T*, int32_t*, T*>;
    Routine<T, name> me;
    check_number_of_equations(me, 1, n);
    if (me.failed()) return;
    SmallScratch<T, 256> fact;
    SmallScratch<int32_t> ipvt;
    SmallScratch<T> wk;
    if (!fact.allocate(ldfac, n) || (interchanges && !ipvt.allocate(n)) || !wk.allocate(n))
        return no_workspace(me, 2, n);
    if constexpr (interchanges)
        worker(me.state(), static_cast<T*>(fact), static_cast<int32_t*>(ipvt), static_cast<T*>(wk));
    else
        worker(me.state(), static_cast<T*>(fact), static_cast<T*>(wk));
}

}  // namespace orvel::linsys
