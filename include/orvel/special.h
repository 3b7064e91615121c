/* include/orvel/special.h - gamma family and Chebyshev series
 *
 * Each routine in single and in double precision. X is a scalar, in. After a TERMINAL error the value is the
 * quiet NaN, AMACH(6); after an underflow (ALERT) it is 0. A NaN as X gives NaN without a message; an
 * infinite X falls under the overflow or underflow row of the table. WARNING 2 means that less than half of
 * the digits are right, because X is that close to a negative integer: |(X - AINT(X - 0.5)) / X| <
 * sqrt(AMACH(4)). Accuracy of every region: docs/accuracy.md.
 *
 * Source of the method: W. Fullerton, Portable special function routines, in: Portability of Numerical
 * Software, Lecture Notes in Computer Science 57, Springer, 1977; series computed anew by
 * tools/gamma_tables.py.
 */
#ifndef ORVEL_SPECIAL_H
#define ORVEL_SPECIAL_H

#include "orvel/types.h"

ORVEL_BEGIN

/* Gamma(X). Posts ALERT 1 (X below the XMIN of R9GAML: underflow, also where X is so close to an integer that
 * Gamma would still be a normal number; DGAMR has its reciprocal there), WARNING 2 (X close to a negative
 * integer), TERMINAL 4 (overflow: X above XMAX, or 0 < |X| < 1.01 AMACH(1)), 5 (X = 0), 6 (X a negative
 * integer, |X| <= 10), 7 (X a negative integer, |X| > 10). */
float GAMMA(const float* x);
double DGAMMA(const double* x);

/* ln |Gamma(X)|. Posts WARNING 2 (the result suffers from X close to a negative integer), TERMINAL 4
 * (overflow: |X| above AMACH(2) / ln AMACH(2)), 5 (X a negative integer below -10). For |X| <= 10 the errors
 * are those of GAMMA, posted by it and passed up. The relative accuracy holds beside the zeros, too. */
float ALNGAM(const float* x);
double DLNGAM(const double* x);

/* ALGM = ln |Gamma(X)|, S = sign of Gamma(X), +1 or -1; both out. Errors of ALNGAM, passed up. Where Gamma
 * has no sign, S is -1 for X = 0 and for negative integers with even |X|, else +1. */
void ALGAMS(const float* x, float* algm, float* s);
void DLGAMS(const double* x, double* algm, double* s);

/* 1 / Gamma(X); 0 without a message for X = 0 and negative integers. TERMINAL errors of GAMMA (|X| <= 10) and
 * of ALGAMS, passed up; a WARNING is cleared, because 1 / Gamma is accurate there. The result is right
 * wherever it is finite, which beside integers it is down to -37 (DGAMR: -176); beyond its range it is 0 or
 * infinite, without a message. */
float GAMR(const float* x);
double DGAMR(const double* x);

/* ln Gamma(X) - ((X - 0.5) ln X - X + ln(2 pi) / 2) for X >= 10. Posts ALERT 1 (underflow), TERMINAL 5
 * (X < 10). */
float R9LGMC(const float* x);
double D9LGMC(const double* x);

/* Smallest (XMIN) and largest (XMAX) argument for which Gamma neither underflows nor overflows; both out.
 * Posts TERMINAL 5 or 6 when Newton's iteration for XMIN or XMAX does not converge in 10 steps. */
void R9GAML(float* xmin, float* xmax);
void D9GAML(double* xmin, double* xmax);

/* Number of terms of the series OS(NOS) that leaves a tail of at most ETA. Posts TERMINAL 5 (NOS < 1) and
 * TERMINAL 6 (the last term alone exceeds ETA, or NOS = 1), and then returns 0. INITDS takes a double series
 * and a single ETA. A NaN in ETA gives 1. All in. */
int32_t INITS(const float* os, const int32_t* nos, const float* eta);
int32_t INITDS(const double* os, const int32_t* nos, const float* eta);

/* Sum at X of the Chebyshev series CS(N), whose first coefficient enters with half weight. 1 <= N <= 1000.
 * Posts TERMINAL 5 (N < 1), TERMINAL 6 (N > 1000) and returns the quiet NaN; WARNING 7 (X outside
 * [-1.1, 1.1]) with the sum. The single member sums in double. All in.
 * Source: C. W. Clenshaw, A note on the summation of Chebyshev series, 1955. */
float CSEVL(const float* x, const float* cs, const int32_t* n);
double DCSEVL(const double* x, const double* cs, const int32_t* n);

ORVEL_END

#endif
