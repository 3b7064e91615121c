/* include/orvel/zeros.h - zeros of a function of one variable
 *
 * Each routine in single and in double precision.
 */
#ifndef ORVEL_ZEROS_H
#define ORVEL_ZEROS_H

#include "orvel/types.h"

ORVEL_BEGIN

/* Real zeros of a function, one after the other, each from its own guess. Zeros that were found are divided
 * out of the values of F, and so are the last points of searches that failed.
 *
 *     F              function  the function
 *     ERRABS         in        a zero is accepted when |F(X)| and its quotient by the distances from the
 *                              zeros found before are both below ERRABS
 *     ERRREL         in        or when a step is shorter than ERRREL |X|
 *     EPS            in        a point closer than EPS to a zero found before is moved
 *     ETA            in        by ETA, and F is called again, which does not count as an iteration, until
 *                              it is that close to none; where that cannot be (ETA is 0 or NaN, too small
 *                              to move X, or would need more than a million moves for one zero) the point
 *                              is taken as it is
 *     NROOT          in        the number of zeros to find; below 1 finds nothing
 *     ITMAX          in        a zero gets at most ITMAX - 1 iterations; below 1 counts as 1
 *     XGUESS(NROOT)  in        the guesses
 *     X(NROOT)       out       the zeros; may be XGUESS
 *     INFO(NROOT)    out       the iterations for each zero, ITMAX + 1 (at least 2) for one that was not
 *                              found
 *     WARNING 1      at least one zero was not found
 *                    "Failure to converge within  ITMAX = %(I1) iterations for at least  one of the NROOT =
 *                    %(I2) roots. "
 *                    -> give a closer guess or a larger ITMAX
 *
 * After an error: X of a zero that was not found is the last point of the search.
 *
 * NaN: infinite or NaN guesses, tolerances and values of F end as zeros that were not found, or as the
 * nearest point accepted.
 *
 * Source: D. E. Muller, A method for solving algebraic equations using an automatic computer, 1956.
 */
void ZREAL(orvel_function f, const float* errabs, const float* errrel, const float* eps, const float* eta,
           const int32_t* nroot, const int32_t* itmax, const float* xguess, float* x, int32_t* info);
void DZREAL(orvel_dfunction f, const double* errabs, const double* errrel, const double* eps,
            const double* eta, const int32_t* nroot, const int32_t* itmax, const double* xguess, double* x,
            int32_t* info);

ORVEL_END

#endif
