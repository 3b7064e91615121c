// linsys/refine.h - iterative refinement over the kinds of matrices
//
// A kind is a matrix with its factorization:
//
//     order()                     its order
//     diagonal(k)                 an element of its diagonal
//     solve(state, b, x)          x = the solution from the factorization, which may post an error
//     residual(x, b, r)           r = A * x - b with twice the working precision
//     exceeds(x, b, limit)        whether an element of A * x - b is above limit * (|A| |x| + |b|)
#pragma once

#include <algorithm>

#include "linsys/linsys.h"

namespace orvel::linsys {

template <class T>
inline Part<T> largest(int64_t n, const T* x)
{
    return magnitude(x[kernels::iamax<T>(n, x, 1) - 1]);
}

// What rounding may leave of a residual, as a multiple of |A| |x| + |b|: twice the bound for a solution that
// a stable factorization and one correction have given. Source: N. Higham, Accuracy and Stability of
// Numerical Algorithms, 2nd edition, 2002, chapter 12.
template <class T>
inline Part<T> residual_limit(int64_t n)
{
    return 4 * static_cast<Part<T>>(n + 1) * epsilon<T>();
}

// Whether a look at the diagonal cannot tell that all elements of the residual are small.
template <class T, class Kind>
bool is_doubtful(const Kind& kind, const T* x, const T* b, const T* residual)
{
    const Part<T> limit = residual_limit<T>(kind.order());
    for (int64_t k = 0; k < kind.order(); ++k)
        if (!(magnitude(residual[k]) <=
              limit * (magnitude(b[k]) + magnitude(kind.diagonal(k)) * magnitude(x[k]))))
            return true;
    return false;
}

// x = the refined solution, res = the last correction. X may be B, of which a copy is made then; without
// storage for it the TERMINAL error `no_copy` is posted.
template <class T, class Frame, class Kind>
void refine(Frame& me, const Kind& kind, const T* b, T* x, T* res, int32_t no_copy)
{
    const int64_t n = kind.order();
    SmallScratch<T> copy_of_b;
    if (x == b) {
        if (!copy_of_b.allocate(n)) return no_workspace(me, no_copy, static_cast<int32_t>(n));
        std::copy_n(b, n, static_cast<T*>(copy_of_b));
        b = copy_of_b;
    }
    kind.solve(me.state(), b, x);
    if (is_severe(me.callee_type()) || largest(n, x) == 0) return;

    Part<T> previous = machine<Part<T>>(2);
    bool converged = false, doubtful = false;
    // Near zero the spacing of numbers does not shrink with x, and each operation of a solve rounds to it.
    const Part<T> least = 4 * static_cast<Part<T>>(n + 1) * machine<Part<T>>(1);
    for (int iteration = 0; iteration < 50 && !converged; ++iteration) {
        kind.residual(x, b, res);
        doubtful = is_doubtful(kind, x, b, res);
        kind.solve(me.state(), res, res);
        if (is_severe(me.callee_type())) return;
        for (int64_t k = 0; k < n; ++k) x[k] -= res[k];
        const Part<T> ratio = largest(n, res) / std::max(largest(n, x), least);
        if (ratio >= previous) break;
        previous = ratio;
        converged = ratio <= epsilon<T>();
    }
    // With a factorization that growth has spoiled, corrections are small while the residual is not.
    if (!converged || (doubtful && kind.exceeds(x, b, static_cast<double>(residual_limit<T>(n)))))
        me.post(warning, 2, "The matrix is too ill-conditioned for iterative refinement to be effective.");
}

}  // namespace orvel::linsys
