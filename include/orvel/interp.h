/* include/orvel/interp.h - cubic splines: interpolation, values, derivatives, integrals
 *
 * A spline is returned in two arrays. BRKPT(NDATA) has the abscissas in ascending order, between which lie
 * NINTV = NDATA - 1 pieces. SPCOEF(4,NDATA) has a column for each piece: the value and the first, second and
 * third derivative at its left end. With h = X - BRKPT(i) the spline is
 *
 *     SPCOEF(1,i) + SPCOEF(2,i) h + SPCOEF(3,i) h^2 / 2 + SPCOEF(4,i) h^3 / 6.
 *
 * The last column has the last ordinate and the slope there; its other two rows are never read.
 *
 *     double x[5] = {0, 1, 2, 3, 4}, f[5] = {0, 1, 4, 9, 16}, brkpt[5], spcoef[20], at = 2.5;
 *     int32_t ndata = 5, nintv = 4;
 *     DCSINT(&ndata, x, f, brkpt, spcoef);
 *     DCSVAL(&at, &nintv, brkpt, spcoef);   // 6.25
 *
 * Data and results may lie anywhere in the range of their precision: data multiplied by powers of two give
 * the same digits, as far as coefficients and their sums are normal numbers.
 *
 * Data may be in any order, which costs a sort. What is not a number among them gives coefficients that are
 * none, and so do spacings and differences that overflow; a spacing so small that quotients by it overflow
 * gives infinities. Nothing of it is posted.
 */
#ifndef ORVEL_INTERP_H
#define ORVEL_INTERP_H

#include "orvel/types.h"

ORVEL_BEGIN

/* ---- construction --------------------------------------------------------------------------------
 *
 * NDATA, XDATA(NDATA), FDATA(NDATA) in; BRKPT(NDATA), SPCOEF(4,NDATA) out, not complete after an error. The
 * workers C2INT, C2DEC, C2AKM, C2PER take IWK(NDATA) scratch besides, C2PER also WK(6*NDATA) scratch, before
 * it. All post
 *
 *     TERMINAL 1 (NDATA below 2, for CSAKM and CSPER below 4), 5 (no storage; not the workers),
 *     TERMINAL 2 from C1SOR (two abscissas are equal; the message has their places in XDATA). */

/* With third derivatives continuous at the second and the last but one break point (not-a-knot); a straight
 * line through two points, a parabola through three. Source: C. de Boor, A Practical Guide to Splines,
 * Springer, 1978. */
void CSINT(const int32_t* ndata, const float* xdata, const float* fdata, float* brkpt, float* spcoef);
void DCSINT(const int32_t* ndata, const double* xdata, const double* fdata, double* brkpt, double* spcoef);
void C2INT(const int32_t* ndata, const float* xdata, const float* fdata, float* brkpt, float* spcoef,
           int32_t* iwk);
void DC2INT(const int32_t* ndata, const double* xdata, const double* fdata, double* brkpt, double* spcoef,
            int32_t* iwk);

/* With a condition at each end: ILEFT, IRIGHT in, 0 not-a-knot, 1 the first derivative is VLEFT (VRIGHT), 2
 * the second one is; VLEFT, VRIGHT in. Posts also TERMINAL 2 (ILEFT), 3 (IRIGHT). Source: as CSINT. */
void CSDEC(const int32_t* ndata, const float* xdata, const float* fdata, const int32_t* ileft,
           const float* vleft, const int32_t* iright, const float* vright, float* brkpt, float* spcoef);
void DCSDEC(const int32_t* ndata, const double* xdata, const double* fdata, const int32_t* ileft,
            const double* vleft, const int32_t* iright, const double* vright, double* brkpt, double* spcoef);
void C2DEC(const int32_t* ndata, const float* xdata, const float* fdata, const int32_t* ileft,
           const float* vleft, const int32_t* iright, const float* vright, float* brkpt, float* spcoef,
           int32_t* iwk);
void DC2DEC(const int32_t* ndata, const double* xdata, const double* fdata, const int32_t* ileft,
            const double* vleft, const int32_t* iright, const double* vright, double* brkpt, double* spcoef,
            int32_t* iwk);

/* Akima's spline, whose slopes depend on the four neighbouring pieces only; its second derivative may jump.
 * Source: H. Akima, A new method of interpolation and smooth curve fitting based on local procedures, Journal
 * of the ACM 17, 1970. */
void CSAKM(const int32_t* ndata, const float* xdata, const float* fdata, float* brkpt, float* spcoef);
void DCSAKM(const int32_t* ndata, const double* xdata, const double* fdata, double* brkpt, double* spcoef);
void C2AKM(const int32_t* ndata, const float* xdata, const float* fdata, float* brkpt, float* spcoef,
           int32_t* iwk);
void DC2AKM(const int32_t* ndata, const double* xdata, const double* fdata, double* brkpt, double* spcoef,
            int32_t* iwk);

/* Periodic spline: value, first and second derivative agree at both ends. Posts WARNING 1 where the ordinates
 * of the smallest and the largest abscissa differ (what is not a number differs), and then uses the first for
 * both. The elimination is carried in SPCOEF: in rows 2 to 4 of column i stand p, q, v with slope(i) =
 * p - q slope(i+1) - v slope(NDATA-1), then a, b for p, v with slope(i) = a - b slope(NDATA-1). WK is not
 * touched, and CSPER does not ask for it. Source: elimination of a cyclic diagonally dominant system, as in
 * G. H. Golub, C. F. Van Loan, Matrix Computations, Johns Hopkins University Press, 1996. */
void CSPER(const int32_t* ndata, const float* xdata, const float* fdata, float* brkpt, float* spcoef);
void DCSPER(const int32_t* ndata, const double* xdata, const double* fdata, double* brkpt, double* spcoef);
void C2PER(const int32_t* ndata, const float* xdata, const float* fdata, float* brkpt, float* spcoef,
           float* wk, int32_t* iwk);
void DC2PER(const int32_t* ndata, const double* xdata, const double* fdata, double* brkpt, double* spcoef,
            double* wk, int32_t* iwk);

/* Sort and check data: BRKPT(NDATA) out, the abscissas; SPCOEF(LDC,NDATA) out, the ordinates in its first
 * row; IWK(NDATA) scratch, where the data were not ascending their places in XDATA. Posts TERMINAL 2 (two
 * abscissas are equal). */
void C1SOR(const int32_t* ndata, const float* xdata, const float* fdata, float* brkpt, float* spcoef,
           const int32_t* ldc, int32_t* iwk);
void DC1SOR(const int32_t* ndata, const double* xdata, const double* fdata, double* brkpt, double* spcoef,
            const int32_t* ldc, int32_t* iwk);

/* ---- evaluation ----------------------------------------------------------------------------------
 *
 * All in. The PP members take piecewise polynomials of any order: PCOEF(KORDER,NINTV), row j the derivative
 * of order j - 1 at the left ends; the CS members have order 4. The first piece serves every X below
 * BRKPT(2), the last one every X from BRKPT(NINTV) on, which is the last element that is read; a break point
 * between belongs to the piece on its right. What is not a number gives such. Post from PPDER
 *
 *     TERMINAL 1 (NINTV below 1), 2 (IDERIV below 0), 3 (KORDER below 1),
 *
 * or from PPITG TERMINAL 1 (NINTV), 2 (KORDER), and then return 0.
 *
 * Each thread remembers the piece that it found last, and looks there, at the next one and nearby first. */

/* The value at X. */
float CSVAL(const float* x, const int32_t* nintv, const float* brkpt, const float* spcoef);
double DCSVAL(const double* x, const int32_t* nintv, const double* brkpt, const double* spcoef);
float PPVAL(const float* x, const int32_t* korder, const int32_t* nintv, const float* brkpt,
            const float* pcoef);
double DPPVAL(const double* x, const int32_t* korder, const int32_t* nintv, const double* brkpt,
              const double* pcoef);

/* The derivative of order IDERIV at X; 0 from the order of the polynomial on. */
float CSDER(const int32_t* ideriv, const float* x, const int32_t* nintv, const float* brkpt,
            const float* spcoef);
double DCSDER(const int32_t* ideriv, const double* x, const int32_t* nintv, const double* brkpt,
              const double* spcoef);
float PPDER(const int32_t* ideriv, const float* x, const int32_t* korder, const int32_t* nintv,
            const float* brkpt, const float* pcoef);
double DPPDER(const int32_t* ideriv, const double* x, const int32_t* korder, const int32_t* nintv,
              const double* brkpt, const double* pcoef);

/* The integral from A to B, in either direction and beyond the break points; the sum over the pieces loses no
 * digits by their number. */
float CSITG(const float* a, const float* b, const int32_t* nintv, const float* brkpt, const float* spcoef);
double DCSITG(const double* a, const double* b, const int32_t* nintv, const double* brkpt,
              const double* spcoef);
float PPITG(const float* a, const float* b, const int32_t* korder, const int32_t* nintv, const float* brkpt,
            const float* pcoef);
double DPPITG(const double* a, const double* b, const int32_t* korder, const int32_t* nintv,
              const double* brkpt, const double* pcoef);

/* The piece of X: LEFT out, 1..NINTV, 1 also for NINTV below 1. KORDER is not used. Posts nothing. */
void P3DER(const int32_t* korder, const int32_t* nintv, const float* brkpt, const float* x, int32_t* left);
void DP3DER(const int32_t* korder, const int32_t* nintv, const double* brkpt, const double* x, int32_t* left);

ORVEL_END

#endif
