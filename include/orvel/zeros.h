/* include/orvel/zeros.h - zeros of a function of one variable
 *
 * Each routine in single and in double precision.
 */
#ifndef ORVEL_ZEROS_H
#define ORVEL_ZEROS_H

#include "orvel/types.h"

ORVEL_BEGIN

/* NROOT real zeros of F, one after the other, each from its own guess. Zeros that were found are divided out
 * of the values of F, and so are the last points of searches that failed. F a function, in; XGUESS(NROOT) the
 * guesses, in; X(NROOT) the zeros, out, may be XGUESS; INFO(NROOT) the iterations for each, out, ITMAX + 1
 * (at least 2) for a zero that was not found.
 *
 * A zero is accepted when |F(X)| and its quotient by the distances from the zeros found before are both below
 * ERRABS, or when a step is shorter than ERRREL |X|. A point closer than EPS to a zero found before is moved
 * by ETA and F is called again, which does not count as an iteration, until it is that close to none; where
 * that cannot be (ETA is 0 or NaN, too small to move X, or would need more than a million moves for one zero)
 * the point is taken as it is. ITMAX: a zero gets at most ITMAX - 1 iterations; below 1 counts as 1. All
 * these in. NROOT < 1 finds nothing.
 *
 * Posts WARNING 1 when at least one zero was not found; its X is the last point of the search. Infinite or
 * NaN guesses, tolerances and values of F end as zeros that were not found, or as the nearest point accepted.
 *
 * Source: D. E. Muller, A method for solving algebraic equations using an automatic computer, 1956. */
void ZREAL(orvel_function f, const float* errabs, const float* errrel, const float* eps, const float* eta,
           const int32_t* nroot, const int32_t* itmax, const float* xguess, float* x, int32_t* info);
void DZREAL(orvel_dfunction f, const double* errabs, const double* errrel, const double* eps,
            const double* eta, const int32_t* nroot, const int32_t* itmax, const double* xguess, double* x,
            int32_t* info);

ORVEL_END

#endif
