/* include/orvel/optim.h - minima of a function of one variable
 *
 * Each routine in single and in double precision.
 */
#ifndef ORVEL_OPTIM_H
#define ORVEL_OPTIM_H

#include "orvel/types.h"

ORVEL_BEGIN

/* A local minimum of the smooth function F, from its values only. F a function, in; XGUESS the guess, in;
 * STEP the order of the first step, with its sign the first direction, in (0: a hundredth of BOUND, or BOUND
 * where that rounds to 0); BOUND: F is never called farther than this from XGUESS, in; XACC: X shall be this
 * close to the minimum, in (negative or NaN: 0); MAXFN the most calls of F, in (it is called once in any
 * case); X the point of lowest value found, out.
 *
 * Posts TERMINAL 1 (BOUND does not exceed XACC or the smallest step from XGUESS that the precision allows, or
 * XGUESS, STEP or BOUND is NaN, or XGUESS is infinite; X is XGUESS); WARNING 1 (X cannot be refined in this
 * precision); WARNING 2 (X is at the bound); FATAL 3 (MAXFN calls were not enough). After all of them X is
 * the best point. A value of F that is NaN is not lower than any.
 *
 * Source: P. E. Gill, W. Murray, M. H. Wright, Practical Optimization, Academic Press, 1981 (safeguarded
 * quadratic interpolation, section 4.1). */
void UVMIF(orvel_function f, const float* xguess, const float* step, const float* bound, const float* xacc,
           const int32_t* maxfn, float* x);
void DUVMIF(orvel_dfunction f, const double* xguess, const double* step, const double* bound,
            const double* xacc, const int32_t* maxfn, double* x);

ORVEL_END

#endif
