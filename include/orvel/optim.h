/* include/orvel/optim.h - minima of a function of one variable
 *
 * Each routine in single and in double precision.
 */
#ifndef ORVEL_OPTIM_H
#define ORVEL_OPTIM_H

#include "orvel/types.h"

ORVEL_BEGIN

/* A local minimum of a smooth function, from its values only.
 *
 *     F           function  the function
 *     XGUESS      in        the guess
 *     STEP        in        the order of the first step, with its sign the first direction; 0 is a
 *                           hundredth of BOUND, or BOUND where that rounds to 0
 *     BOUND       in        F is never called farther than this from XGUESS
 *     XACC        in        X shall be this close to the minimum; negative or NaN counts as 0
 *     MAXFN       in        the most calls of F, which is called once in any case
 *     X           out       the point of lowest value found
 *     TERMINAL 1  BOUND does not exceed XACC or the smallest step from XGUESS that the precision allows, or
 *                 XGUESS, STEP or BOUND is NaN, or XGUESS is infinite
 *                 "The input value for BOUND is too small.  No change in X can be made."
 *     FATAL 3     MAXFN calls were not enough
 *                 "The maximum number of function evaluations, MAXFN = %(I1), has been exceeded."
 *                 -> raise MAXFN, or start closer
 *     WARNING 1   X cannot be refined in this precision
 *                 "Computer rounding errors prevent further refinement of X."
 *                 -> XACC is smaller than rounding of F allows
 *     WARNING 2   X is at the bound
 *                 "The final value for X is at a bound.  The minimum is probably beyond the bound."
 *                 -> give another guess or a larger BOUND
 *
 * After an error: X is the best point; XGUESS after the TERMINAL error.
 *
 * NaN: a value of F that is NaN is not lower than any.
 *
 * Source: P. E. Gill, W. Murray, M. H. Wright, Practical Optimization, Academic Press, 1981 (safeguarded
 * quadratic interpolation, section 4.1).
 */
void UVMIF(orvel_function f, const float* xguess, const float* step, const float* bound, const float* xacc,
           const int32_t* maxfn, float* x);
void DUVMIF(orvel_dfunction f, const double* xguess, const double* step, const double* bound,
            const double* xacc, const int32_t* maxfn, double* x);

ORVEL_END

#endif
