/* include/orvel/quad.h - integrals of a function of one variable over a finite interval
 *
 * The interval with the largest error estimate is bisected until the sum of the estimates is at most
 * max(ERRABS, ERRREL |I|). F is called strictly between the ends of the pieces, or at the middle of the piece
 * that was bisected where no number lies between them: never at A or B, unless these are equal or neighbours.
 * Each routine in single and in double precision.
 *
 * Common arguments: F a function, in; A, B the limits, in, in any order; ERRABS, ERRREL the accuracy wanted,
 * in; RESULT the estimate of the integral, out; ESTERR the estimate of its error, out; MAXSUB the length of
 * the lists, in; NEVAL the number of calls of F, NSUB the number of pieces, out; the lists SUBLO(MAXSUB) and
 * SUBHI(MAXSUB), left and right ends of the pieces, SUBRES(MAXSUB) and SUBERR(MAXSUB), integral and error
 * estimate of each, out; SUBORD(MAXSUB), out: one-based indices of the pieces whose errors are largest, in
 * decreasing order, NSUB of them as long as NSUB <= MAXSUB/2 + 2, else MAXSUB + 3 - NSUB.
 *
 * A = B gives zeros and one piece. The number of calls of F is bounded whatever F and the arguments are.
 * Where F is infinite or NaN at a node, ESTERR is NaN: when no piece is free of such values with the FATAL
 * error 1 after MAXSUB pieces, or the WARNING 3 if they have become too narrow before, else with the WARNING
 * 2 after about ten; RESULT is infinite or NaN then, or a number if later pieces have no node there. A NaN
 * limit, or both infinite, gives NaN and the errors of the first kind, one infinite limit NaN and WARNING 3.
 * A NaN as ERRABS is never met, which ends with WARNING 2; as ERRREL it counts as 0.
 *
 * Source: R. Piessens, E. de Doncker-Kapenga, C. W. Ueberhuber, D. K. Kahaner, QUADPACK: A Subroutine Package
 * for Automatic Integration, Springer, 1983 (QAGS, QAG). The test of an interval that has become too small
 * uses 1000 times the machine precision.
 */
#ifndef ORVEL_QUAD_H
#define ORVEL_QUAD_H

#include "orvel/types.h"

ORVEL_BEGIN

/* Integral of a function that may have singularities at the ends of pieces: 21-point Gauss-Kronrod rule and
 * extrapolation of the partial results by the epsilon algorithm. At most 500 pieces. Posts the errors of
 * Q2AGS, passed up, and TERMINAL 6 (no storage for the lists). After a TERMINAL error RESULT and ESTERR are
 * as they were. */
void QDAGS(orvel_function f, const float* a, const float* b, const float* errabs, const float* errrel,
           float* result, float* esterr);
void DQDAGS(orvel_dfunction f, const double* a, const double* b, const double* errabs, const double* errrel,
            double* result, double* esterr);

/* QDAGS with lists of the caller's. NEVAL = 42 NSUB - 21. Posts TERMINAL 1 (MAXSUB < 1), 2 (ERRABS < 0),
 * 3 (ERRREL < 0), 4 (ERRABS and ERRREL both zero), 5 (ERRREL >= 1), each that applies; then nothing is
 * changed. With results in place: FATAL 1 (MAXSUB pieces were made, also when MAXSUB = 1 and the accuracy is
 * met), WARNING 2 (roundoff keeps the accuracy from being reached), WARNING 3 (F is bad in the piece that is
 * named), WARNING 4 (roundoff in the extrapolation), FATAL 5 (the integral probably diverges or converges
 * slowly). */
void Q2AGS(orvel_function f, const float* a, const float* b, const float* errabs, const float* errrel,
           float* result, float* esterr, const int32_t* maxsub, int32_t* neval, int32_t* nsub, float* sublo,
           float* subhi, float* subres, float* suberr, int32_t* subord);
void DQ2AGS(orvel_dfunction f, const double* a, const double* b, const double* errabs, const double* errrel,
            double* result, double* esterr, const int32_t* maxsub, int32_t* neval, int32_t* nsub,
            double* sublo, double* subhi, double* subres, double* suberr, int32_t* subord);

/* The computation of Q2AGS: posts nothing, checks nothing but MAXSUB. IER out: 0, the codes 1 to 5 that Q2AGS
 * posts, or 6 with zero results when MAXSUB < 1. */
void Q3AGS(orvel_function f, const float* a, const float* b, const float* errabs, const float* errrel,
           const int32_t* maxsub, float* result, float* esterr, int32_t* neval, int32_t* ier, float* sublo,
           float* subhi, float* subres, float* suberr, int32_t* subord, int32_t* nsub);
void DQ3AGS(orvel_dfunction f, const double* a, const double* b, const double* errabs, const double* errrel,
            const int32_t* maxsub, double* result, double* esterr, int32_t* neval, int32_t* ier,
            double* sublo, double* subhi, double* subres, double* suberr, int32_t* subord, int32_t* nsub);

/* Integral by a Gauss-Kronrod rule of the caller's choice, without extrapolation: IRULE in, 1 to 6 for rules
 * of 15, 21, 31, 41, 51 and 61 points; high ones suit oscillating functions. At most 500 pieces. Posts the
 * errors of Q2AG, passed up, and TERMINAL 7 (no storage for the lists). After a TERMINAL error RESULT and
 * ESTERR are as they were. */
void QDAG(orvel_function f, const float* a, const float* b, const float* errabs, const float* errrel,
          const int32_t* irule, float* result, float* esterr);
void DQDAG(orvel_dfunction f, const double* a, const double* b, const double* errabs, const double* errrel,
           const int32_t* irule, double* result, double* esterr);

/* QDAG with lists of the caller's. NEVAL = (points of the rule) (2 NSUB - 1). Posts TERMINAL 1 (MAXSUB < 1),
 * 2 (IRULE outside 1 to 6), 3 (ERRABS < 0), 4 (ERRREL < 0), 5 (both zero), 6 (ERRREL >= 1), each that
 * applies; then nothing is changed. With results in place: FATAL 1, WARNING 2 and 3 as Q2AGS. */
void Q2AG(orvel_function f, const float* a, const float* b, const float* errabs, const float* errrel,
          const int32_t* irule, float* result, float* esterr, const int32_t* maxsub, int32_t* neval,
          int32_t* nsub, float* sublo, float* subhi, float* subres, float* suberr, int32_t* subord);
void DQ2AG(orvel_dfunction f, const double* a, const double* b, const double* errabs, const double* errrel,
           const int32_t* irule, double* result, double* esterr, const int32_t* maxsub, int32_t* neval,
           int32_t* nsub, double* sublo, double* subhi, double* subres, double* suberr, int32_t* subord);

/* The computation of Q2AG, as Q3AGS; IRULE below 1 counts as 1, above 6 as 6. IER out: 0 to 3, or 6. */
void Q3AG(orvel_function f, const float* a, const float* b, const float* errabs, const float* errrel,
          const int32_t* irule, const int32_t* maxsub, float* result, float* esterr, int32_t* neval,
          int32_t* ier, float* sublo, float* subhi, float* subres, float* suberr, int32_t* subord,
          int32_t* nsub);
void DQ3AG(orvel_dfunction f, const double* a, const double* b, const double* errabs, const double* errrel,
           const int32_t* irule, const int32_t* maxsub, double* result, double* esterr, int32_t* neval,
           int32_t* ier, double* sublo, double* subhi, double* subres, double* suberr, int32_t* subord,
           int32_t* nsub);

/* One application of a Gauss-Kronrod rule (Gauss and Kronrod points: Q4AG 7 and 15, Q9AG 10 and 21, Q5AG 15
 * and 31, Q6AG 20 and 41, Q7AG 25 and 51, Q8AG 30 and 61). RESULT, ESTERR out, as above; ABSINT out: the
 * integral of |F|; DEVINT out: the integral of |F - mean of F|. Posts nothing. Nodes and weights computed by
 * tools/kronrod_tables.py. */
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

/* Keeps SUBORD in decreasing order of error after piece MAXERR has been bisected: its halves are the pieces
 * MAXERR and LAST, and that of MAXERR has the larger error. MAXSUB, LAST in; SUBERR(LAST) in; SUBORD inout;
 * NRMAX inout: the position in SUBORD of the piece to bisect next; MAXERR inout: that piece; ERMAX out: its
 * error. All indices one-based. Values that point outside the lists leave everything as it was. */
void Q10G(const int32_t* maxsub, const int32_t* last, int32_t* maxerr, float* ermax, const float* suberr,
          int32_t* subord, int32_t* nrmax);
void DQ10G(const int32_t* maxsub, const int32_t* last, int32_t* maxerr, double* ermax, const double* suberr,
           int32_t* subord, int32_t* nrmax);

/* Limit of a sequence by the epsilon algorithm. N inout: the entries of EPSTAB, 1 to 50, the newest element
 * of the sequence last (other N change nothing); EPSTAB(52) inout; RESULT, ESTERR out: the limit and its
 * error estimate, the largest number as long as there is none; RES3LA(3) inout: the last three results; NRES
 * inout: the calls, 0 before the first. Source: P. Wynn, On a device for computing the e_m(S_n)
 * transformation, 1956, in the form of QUADPACK. */
void Q4AWO(int32_t* n, float* epstab, float* result, float* esterr, float* res3la, int32_t* nres);
void DQ4AWO(int32_t* n, double* epstab, double* result, double* esterr, double* res3la, int32_t* nres);

/* AMACH(4), AMACH(1) and AMACH(2) (DMACH for DQ4NG): largest relative spacing, smallest positive and largest
 * number. All out. */
void Q4NG(float* epmach, float* uflow, float* oflow);
void DQ4NG(double* epmach, double* uflow, double* oflow);

ORVEL_END

#endif
