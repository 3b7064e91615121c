/* include/orvel/quad.h - integrals of a function of one variable over a finite interval
 *
 * The interval with the largest error estimate is bisected until the sum of the estimates is at most
 * max(ERRABS, ERRREL |I|). F is called strictly between the ends of the pieces, or at the middle of the
 * piece that was bisected where no number lies between them: never at A or B, unless these are equal or
 * neighbours. Each routine in single and in double precision.
 *
 *     F               function  the integrand
 *     A               in        one limit
 *     B               in        the other limit, in any order
 *     ERRABS          in        the absolute error wanted, at least 0
 *     ERRREL          in        the relative error wanted, at least 0 and below 1
 *     RESULT          out       the estimate of the integral
 *     ESTERR          out       the estimate of its error
 *     IRULE           in        1: 15 points; 2: 21 points; 3: 31 points; 4: 41 points; 5: 51 points; 6: 61
 *                               points
 *     MAXSUB          in        the length of the lists
 *     NEVAL           out       the number of calls of F
 *     NSUB            out       the number of pieces
 *     SUBLO(MAXSUB)   out       left ends of the pieces
 *     SUBHI(MAXSUB)   out       right ends of the pieces
 *     SUBRES(MAXSUB)  out       integrals of the pieces
 *     SUBERR(MAXSUB)  out       error estimates of the pieces
 *     SUBORD(MAXSUB)  out       one-based indices of the pieces whose errors are largest, in decreasing
 *                               order; NSUB of them as long as NSUB <= MAXSUB/2 + 2, else MAXSUB + 3 - NSUB
 *     cause           MAXSUB < 1
 *                     "The maximum number of subintervals MAXSUB = %(I1).  It must be at least 1."
 *     cause           ERRABS < 0
 *                     "The absolute error desired ERRABS = %(R1).  It must be at least zero."
 *     cause           ERRREL < 0
 *                     "The relative error desired ERRREL = %(R1).  It must be at least zero."
 *     cause           ERRABS and ERRREL are both 0
 *                     "The error tolerance arguments ERRABS and ERRREL are both equal to zero.  At least
 *                     one of them must be greater than zero."
 *     cause           ERRREL >= 1
 *                     "The relative error desired ERRREL = %(R1).  When ERRREL is greater than or equal to
 *                     one, zero can always be returned as an answer."
 *     cause           F is bad in the piece that is named
 *                     "Precision is degraded due to too fine a subdivision relative to the requested
 *                     tolerance.  This may be due to bad integrand behavior in the interval
 *                     (%(R1),%(R2)).  Higher precision may alleviate this problem."
 *                     -> split the interval at a singularity that is known, or use the double member
 *     cause           no storage for the lists
 *                     "The required storage cannot be allocated.  The workspace is based on MAXSUB, where
 *                     MAXSUB = %(I1)."
 *
 * A = B gives zeros and one piece. The number of calls of F is bounded whatever F and the arguments are.
 *
 * NaN: where F is infinite or NaN at a node, ESTERR is NaN, when no piece is free of such values with the
 * FATAL error 1 after MAXSUB pieces, or the WARNING 3 if they have become too narrow before, else with the
 * WARNING 2 after about ten; RESULT is infinite or NaN then, or a number if later pieces have no node
 * there. A NaN limit, or both infinite, gives NaN and the errors of the first kind, one infinite limit NaN
 * and WARNING 3. A NaN as ERRABS is never met, which ends with WARNING 2; as ERRREL it counts as 0.
 *
 * After an error: RESULT and ESTERR are as they were after a TERMINAL error, and the best estimates after
 * the others.
 *
 * Source: R. Piessens, E. de Doncker-Kapenga, C. W. Ueberhuber, D. K. Kahaner, QUADPACK: A Subroutine
 * Package for Automatic Integration, Springer, 1983 (QAGS, QAG). The test of an interval that has become
 * too small uses 1000 times the machine precision.
 */
#ifndef ORVEL_QUAD_H
#define ORVEL_QUAD_H

#include "orvel/types.h"

ORVEL_BEGIN

/* Integral of a function that may have singularities at the ends of pieces. A 21-point Gauss-Kronrod rule
 * and extrapolation of the partial results by the epsilon algorithm; at most 500 pieces. Passes up the
 * errors of Q2AGS.
 *
 *     TERMINAL 6  no storage for the lists
 */
void QDAGS(orvel_function f, const float* a, const float* b, const float* errabs, const float* errrel,
           float* result, float* esterr);
void DQDAGS(orvel_dfunction f, const double* a, const double* b, const double* errabs, const double* errrel,
            double* result, double* esterr);

/* QDAGS with lists of the caller. NEVAL = 42 NSUB - 21. Each TERMINAL error that applies is posted, and
 * then nothing is changed.
 *
 *     TERMINAL 1  MAXSUB < 1
 *     TERMINAL 2  ERRABS < 0
 *     TERMINAL 3  ERRREL < 0
 *     TERMINAL 4  ERRABS and ERRREL are both 0
 *     TERMINAL 5  ERRREL >= 1
 *     FATAL 1     MAXSUB pieces were made; also when MAXSUB = 1 and the accuracy is met
 *                 "The maximum number of subintervals allowed MAXSUB = %(I1) has been reached.  Use Q2AGS
 *                 and increase MAXSUB.  Dimension adjustments may be necessary."
 *                 -> give longer lists, or split the interval at a singularity that is known
 *     WARNING 2   roundoff keeps the accuracy from being reached
 *                 "Roundoff error has been detected.  The requested tolerances, ERRABS = %(R1) and ERRREL =
 *                 %(R2), cannot be reached."
 *                 -> ask for less, or use the double member
 *     WARNING 3   F is bad in the piece that is named
 *     WARNING 4   roundoff in the extrapolation
 *                 "Roundoff error has been detected in the extrapolation table.  The requested tolerances,
 *                 ERRABS = %(R1) and ERRREL = %(R2) cannot be reached."
 *                 -> ask for less, or use the double member
 *     FATAL 5     the integral probably diverges or converges slowly
 *                 "Integral is probably divergent or slowly convergent."
 *
 * Time: 21 calls of F for the first piece and 42 for each bisection; about 0.1 us beside them for each
 * piece.
 */
void Q2AGS(orvel_function f, const float* a, const float* b, const float* errabs, const float* errrel,
           float* result, float* esterr, const int32_t* maxsub, int32_t* neval, int32_t* nsub, float* sublo,
           float* subhi, float* subres, float* suberr, int32_t* subord);
void DQ2AGS(orvel_dfunction f, const double* a, const double* b, const double* errabs, const double* errrel,
            double* result, double* esterr, const int32_t* maxsub, int32_t* neval, int32_t* nsub,
            double* sublo, double* subhi, double* subres, double* suberr, int32_t* subord);

/* The computation of Q2AGS. It posts nothing and checks nothing but MAXSUB.
 *
 *     IER  out  0 or the code 1 to 5 of the error that Q2AGS posts; 6, with zero results, when MAXSUB < 1
 */
void Q3AGS(orvel_function f, const float* a, const float* b, const float* errabs, const float* errrel,
           const int32_t* maxsub, float* result, float* esterr, int32_t* neval, int32_t* ier, float* sublo,
           float* subhi, float* subres, float* suberr, int32_t* subord, int32_t* nsub);
void DQ3AGS(orvel_dfunction f, const double* a, const double* b, const double* errabs, const double* errrel,
            const int32_t* maxsub, double* result, double* esterr, int32_t* neval, int32_t* ier,
            double* sublo, double* subhi, double* subres, double* suberr, int32_t* subord, int32_t* nsub);

/* Integral by a Gauss-Kronrod rule of the caller's choice, without extrapolation. Rules of many points suit
 * oscillating functions; at most 500 pieces. Passes up the errors of Q2AG.
 *
 *     TERMINAL 7  no storage for the lists
 */
void QDAG(orvel_function f, const float* a, const float* b, const float* errabs, const float* errrel,
          const int32_t* irule, float* result, float* esterr);
void DQDAG(orvel_dfunction f, const double* a, const double* b, const double* errabs, const double* errrel,
           const int32_t* irule, double* result, double* esterr);

/* QDAG with lists of the caller. NEVAL = (points of the rule) (2 NSUB - 1). Each TERMINAL error that
 * applies is posted, and then nothing is changed.
 *
 *     TERMINAL 1  MAXSUB < 1
 *     TERMINAL 2  IRULE is not 1 to 6
 *                 "The quadrature rule IRULE = %(I1).  It must be in the range 1 to 6."
 *     TERMINAL 3  ERRABS < 0
 *     TERMINAL 4  ERRREL < 0
 *     TERMINAL 5  ERRABS and ERRREL are both 0
 *     TERMINAL 6  ERRREL >= 1
 *     FATAL 1     MAXSUB pieces were made; also when MAXSUB = 1 and the accuracy is met
 *                 "The maximum number of subintervals allowed MAXSUB = %(I1) has been reached.  Use Q2AG
 *                 and increase MAXSUB.  Dimension adjustments may be necessary."
 *                 -> give longer lists, or split the interval at a singularity that is known
 *     WARNING 2   roundoff keeps the accuracy from being reached
 *                 "Roundoff error has been detected.  The requested tolerances, ERRABS = %(R1) and ERRREL =
 *                 %(R2) cannot be reached."
 *                 -> ask for less, or use the double member
 *     WARNING 3   F is bad in the piece that is named
 */
void Q2AG(orvel_function f, const float* a, const float* b, const float* errabs, const float* errrel,
          const int32_t* irule, float* result, float* esterr, const int32_t* maxsub, int32_t* neval,
          int32_t* nsub, float* sublo, float* subhi, float* subres, float* suberr, int32_t* subord);
void DQ2AG(orvel_dfunction f, const double* a, const double* b, const double* errabs, const double* errrel,
           const int32_t* irule, double* result, double* esterr, const int32_t* maxsub, int32_t* neval,
           int32_t* nsub, double* sublo, double* subhi, double* subres, double* suberr, int32_t* subord);

/* The computation of Q2AG, as Q3AGS. IRULE below 1 counts as 1, above 6 as 6.
 *
 *     IER  out  0 or the code 1 to 3 of the error that Q2AG posts; 6, with zero results, when MAXSUB < 1
 */
void Q3AG(orvel_function f, const float* a, const float* b, const float* errabs, const float* errrel,
          const int32_t* irule, const int32_t* maxsub, float* result, float* esterr, int32_t* neval,
          int32_t* ier, float* sublo, float* subhi, float* subres, float* suberr, int32_t* subord,
          int32_t* nsub);
void DQ3AG(orvel_dfunction f, const double* a, const double* b, const double* errabs, const double* errrel,
           const int32_t* irule, const int32_t* maxsub, double* result, double* esterr, int32_t* neval,
           int32_t* ier, double* sublo, double* subhi, double* subres, double* suberr, int32_t* subord,
           int32_t* nsub);

/* One application of a Gauss-Kronrod rule. Gauss and Kronrod points: Q4AG 7 and 15, Q9AG 10 and 21, Q5AG 15
 * and 31, Q6AG 20 and 41, Q7AG 25 and 51, Q8AG 30 and 61. Posts nothing. Nodes and weights are computed by
 * tools/kronrod_tables.py.
 *
 *     ABSINT  out  the integral of |F|
 *     DEVINT  out  the integral of |F - mean of F|
 */
void Q4AG(orvel_function f, const float* a, const float* b, float* result, float* esterr, float* absint,
          float* devint);
void DQ4AG(orvel_dfunction f, const double* a, const double* b, double* result, double* esterr,
           double* absint, double* devint);
void Q5AG(orvel_function f, const float* a, const float* b, float* result, float* esterr, float* absint,
          float* devint);
void DQ5AG(orvel_dfunction f, const double* a, const double* b, double* result, double* esterr,
           double* absint, double* devint);
void Q6AG(orvel_function f, const float* a, const float* b, float* result, float* esterr, float* absint,
          float* devint);
void DQ6AG(orvel_dfunction f, const double* a, const double* b, double* result, double* esterr,
           double* absint, double* devint);
void Q7AG(orvel_function f, const float* a, const float* b, float* result, float* esterr, float* absint,
          float* devint);
void DQ7AG(orvel_dfunction f, const double* a, const double* b, double* result, double* esterr,
           double* absint, double* devint);
void Q8AG(orvel_function f, const float* a, const float* b, float* result, float* esterr, float* absint,
          float* devint);
void DQ8AG(orvel_dfunction f, const double* a, const double* b, double* result, double* esterr,
           double* absint, double* devint);
void Q9AG(orvel_function f, const float* a, const float* b, float* result, float* esterr, float* absint,
          float* devint);
void DQ9AG(orvel_dfunction f, const double* a, const double* b, double* result, double* esterr,
           double* absint, double* devint);

/* Keeps SUBORD in decreasing order of error after piece MAXERR has been bisected. Its halves are the pieces
 * MAXERR and LAST, and that of MAXERR has the larger error. All indices are one-based. Values that point
 * outside the lists leave everything as it was.
 *
 *     LAST            in     the number of pieces
 *     MAXERR          inout  the piece that was bisected; the one to bisect next
 *     ERMAX           out    its error
 *     SUBERR(LAST)    in     error estimates of the pieces
 *     SUBORD(MAXSUB)  inout  the order
 *     NRMAX           inout  the position in SUBORD of the piece to bisect next
 */
void Q10G(const int32_t* maxsub, const int32_t* last, int32_t* maxerr, float* ermax, const float* suberr,
          int32_t* subord, int32_t* nrmax);
void DQ10G(const int32_t* maxsub, const int32_t* last, int32_t* maxerr, double* ermax, const double* suberr,
           int32_t* subord, int32_t* nrmax);

/* Limit of a sequence by the epsilon algorithm.
 *
 *     N           inout  the entries of EPSTAB, 1 to 50; other values change nothing
 *     EPSTAB(52)  inout  the table, the newest element of the sequence last
 *     RESULT      out    the limit
 *     ESTERR      out    its error estimate, the largest number as long as there is none
 *     RES3LA(3)   inout  the last three results
 *     NRES        inout  the number of calls, 0 before the first
 *
 * Source: P. Wynn, On a device for computing the e_m(S_n) transformation, 1956, in the form of QUADPACK.
 */
void Q4AWO(int32_t* n, float* epstab, float* result, float* esterr, float* res3la, int32_t* nres);
void DQ4AWO(int32_t* n, double* epstab, double* result, double* esterr, double* res3la, int32_t* nres);

/* The machine constants that quadrature uses: AMACH(4), AMACH(1) and AMACH(2), in double members DMACH.
 *
 *     EPMACH  out  the largest relative spacing
 *     UFLOW   out  the smallest positive number
 *     OFLOW   out  the largest number
 */
void Q4NG(float* epmach, float* uflow, float* oflow);
void DQ4NG(double* epmach, double* uflow, double* oflow);

ORVEL_END

#endif
