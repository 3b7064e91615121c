/* include/orvel/special.h - gamma family and Chebyshev series
 *
 * Each routine in single and in double precision. Accuracy of every region: docs/accuracy.md. X is too
 * close to a negative integer where |(X - AINT(X - 0.5)) / X| < sqrt(AMACH(4)).
 *
 *     X      in  the argument
 *     cause  X is so close to a negative integer that half of the digits are lost
 *            "The result is accurate to less than one half precision because X = %(R1) is too close to a
 *            negative integer."
 *            -> form X less the integer before it is rounded; the digits are lost in X, not here
 *     cause  X is a negative integer
 *            "The argument for the function can not be a negative integer. Argument X = %(R1)."
 *
 * After an error: the value is the quiet NaN, AMACH(6), after a TERMINAL error, and 0 after an underflow
 * (ALERT).
 *
 * NaN: a NaN as X gives NaN without a message; an infinite X falls under the overflow or underflow row.
 *
 * Source: W. Fullerton, Portable special function routines, in: Portability of Numerical Software, Lecture
 * Notes in Computer Science 57, Springer, 1977; series computed anew by tools/gamma_tables.py.
 */
#ifndef ORVEL_SPECIAL_H
#define ORVEL_SPECIAL_H

#include "orvel/types.h"

ORVEL_BEGIN

/* Gamma(X).
 *
 *     ALERT 1     X < XMIN of R9GAML: the result underflows; also where X is so close to an integer that
 *                 Gamma is still a normal number
 *                 "The function underflows because X = %(R1) is less than %(R2). The result is set to
 *                 zero."
 *                 -> DGAMR has the reciprocal there
 *     WARNING 2   X is so close to a negative integer that half of the digits are lost
 *     TERMINAL 4  X > XMAX of R9GAML: the result overflows
 *                 "The function overflows because X = %(R1) is greater than %(R2)."
 *                 -> use ALNGAM
 *     TERMINAL 4  0 < |X| < 1.01 AMACH(1): the result overflows
 *                 "The function overflows because X = %(R1) is too close to zero."
 *     TERMINAL 5  X = 0
 *                 "The argument for the function can not be zero."
 *     TERMINAL 6  X is a negative integer, |X| <= 10
 *                 "The argument for the function can not be a negative integer. Argument X = %(R1)."
 *     TERMINAL 7  X is a negative integer, |X| > 10
 *                 "The argument for the function can not be a negative integer. Argument X = %(R1)."
 */
float GAMMA(const float* x);
double DGAMMA(const double* x);

/* ln |Gamma(X)|. The relative accuracy holds beside the zeros, too. Passes up the errors of GAMMA for |X|
 * <= 10.
 *
 *     WARNING 2   X is so close to a negative integer that half of the digits are lost
 *     TERMINAL 4  |X| > AMACH(2) / ln AMACH(2): the result overflows
 *                 "The function overflows because ABS(%(R1)) is greater than %(R2)."
 *     TERMINAL 5  X is a negative integer, |X| > 10
 *                 "The argument for the function can not be a negative integer. Argument X = %(R1)."
 */
float ALNGAM(const float* x);
double DLNGAM(const double* x);

/* ln |Gamma(X)| and the sign of Gamma(X). Passes up the errors of ALNGAM.
 *
 *     ALGM  out  ln |Gamma(X)|
 *     S     out  the sign of Gamma(X), 1 or -1; where Gamma has no sign, -1 for X = 0 and for negative
 *                integers with even |X|, else 1
 */
void ALGAMS(const float* x, float* algm, float* s);
void DLGAMS(const double* x, double* algm, double* s);

/* 1 / Gamma(X). The result is right wherever it is finite, which beside integers it is down to -37 (DGAMR:
 * -176); beyond its range it is 0 or infinite, without a message, and it is 0 for X = 0 and negative
 * integers. Passes up the errors of GAMMA for |X| <= 10 and of ALGAMS beyond that are TERMINAL. A WARNING
 * is cleared, because 1 / Gamma is accurate there.
 */
float GAMR(const float* x);
double DGAMR(const double* x);

/* ln Gamma(X) - ((X - 0.5) ln X - X + ln(2 pi) / 2), the correction of Stirling's formula.
 *
 *     X           in  the argument, at least 10
 *     ALERT 1     X is so large that the result underflows
 *                 "The function underflows because X = %(R1) is greater than %(R2). The result is set to
 *                 zero."
 *     TERMINAL 5  X < 10
 *                 "The argument X = %(R1) must be greater than or equal to 10.0."
 */
float R9LGMC(const float* x);
double D9LGMC(const double* x);

/* Limits of the argument between which Gamma neither underflows nor overflows.
 *
 *     XMIN        out  the smallest argument
 *     XMAX        out  the largest argument
 *     TERMINAL 5  Newton's iteration for XMIN does not converge in 10 steps, which it does in IEEE 754
 *                 arithmetic
 *                 "Unable to determine the value of XMIN."
 *     TERMINAL 6  Newton's iteration for XMAX does not converge in 10 steps
 *                 "Unable to determine the value of XMAX."
 *
 * After an error: XMIN and XMAX are unchanged.
 */
void R9GAML(float* xmin, float* xmax);
void D9GAML(double* xmin, double* xmax);

/* Number of terms of a Chebyshev series that are needed for an accuracy. INITDS takes a double series and a
 * single ETA.
 *
 *     OS(NOS)     in  the coefficients
 *     NOS         in  their number
 *     ETA         in  the largest sum of the magnitudes that are left out; a NaN gives 1
 *     TERMINAL 5  NOS < 1
 *                 "The number of coefficients is less than 1. NOS = %(I1)."
 *     TERMINAL 6  the last coefficient alone exceeds ETA, or NOS = 1
 *                 "Too much accuracy may be requested. ETA should be increased."
 *                 -> give more coefficients or a larger ETA
 *
 * After an error: the value is 0.
 */
int32_t INITS(const float* os, const int32_t* nos, const float* eta);
int32_t INITDS(const double* os, const int32_t* nos, const float* eta);

/* Sum of a Chebyshev series. The first coefficient enters with half its weight, and the single member sums
 * in double.
 *
 *     X           in  the argument, from -1 to 1
 *     CS(N)       in  the coefficients
 *     N           in  their number, 1 to 1000
 *     WARNING 7   X outside [-1.1, 1.1]; the value is the sum
 *                 "The argument X = %(R1) is outside the interval (-1.1,+1.1)."
 *     TERMINAL 5  N < 1
 *                 "The number of terms in the series is not positive. N = %(I1)."
 *     TERMINAL 6  N > 1000
 *                 "The number of terms in the series is greater than 1000. N = %(I1)."
 *
 * After an error: the value is the quiet NaN after a TERMINAL error.
 *
 * Source: C. W. Clenshaw, A note on the summation of Chebyshev series, 1955.
 */
float CSEVL(const float* x, const float* cs, const int32_t* n);
double DCSEVL(const double* x, const double* cs, const int32_t* n);

ORVEL_END

#endif
