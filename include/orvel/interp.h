/* include/orvel/interp.h - cubic splines: interpolation, values, derivatives, integrals
 *
 * A spline is returned in two arrays. BRKPT(NDATA) has the abscissas in ascending order, between which lie
 * NINTV = NDATA - 1 pieces. SPCOEF(4,NDATA) has a column for each piece: the value and the first, second
 * and third derivative at its left end. With h = X - BRKPT(i) the spline is
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
 * NaN: a NaN or an infinity among the data makes the coefficients NaN, and so do spacings and differences
 * that overflow; a spacing so small that quotients by it overflow gives infinities. Nothing of it is
 * posted.
 *
 *     cause  no storage
 *            "The required storage cannot be allocated.  The specified NDATA may be too large, where NDATA
 *            = %(I1)."
 *            -> use the worker with scratch of your own
 */
#ifndef ORVEL_INTERP_H
#define ORVEL_INTERP_H

#include "orvel/types.h"

ORVEL_BEGIN

/* ---- construction --------------------------------------------------------------------------------------
 *
 *     NDATA            in       the number of data points
 *     XDATA(NDATA)     in       the abscissas, in any order, which costs a sort
 *     FDATA(NDATA)     in       the ordinates
 *     BRKPT(NDATA)     out      the break points
 *     SPCOEF(4,NDATA)  out      the coefficients
 *     IWK(NDATA)       scratch  of the workers C2INT, C2DEC, C2AKM, C2PER
 *
 *     cause            NDATA < 2
 *                      "The number of data points must be 2 or more while NDATA = %(I1) is given."
 *     cause            NDATA < 4
 *                      "The number of data points must be 4 or more while NDATA = %(I1) is given."
 *
 * Passes up the error of C1SOR, TERMINAL 2, from every routine: two abscissas are equal.
 *
 * After an error: BRKPT and SPCOEF are not complete.
 *
 * Time: of the order NDATA for ascending abscissas, else of a sort.
 */

/* Cubic spline with the not-a-knot condition. Third derivatives are continuous at the second and the last
 * but one break point; a straight line through two points, a parabola through three. Passes up the errors
 * of C1SOR.
 *
 *     TERMINAL 1  NDATA < 2
 *     TERMINAL 5  no storage
 *
 * Source: C. de Boor, A Practical Guide to Splines, Springer, 1978.
 */
void CSINT(const int32_t* ndata, const float* xdata, const float* fdata, float* brkpt, float* spcoef);
void DCSINT(const int32_t* ndata, const double* xdata, const double* fdata, double* brkpt, double* spcoef);
void C2INT(const int32_t* ndata, const float* xdata, const float* fdata, float* brkpt, float* spcoef,
           int32_t* iwk);
void DC2INT(const int32_t* ndata, const double* xdata, const double* fdata, double* brkpt, double* spcoef,
            int32_t* iwk);

/* Cubic spline with a condition at each end. Passes up the errors of C1SOR.
 *
 *     ILEFT       in  0: not-a-knot; 1: VLEFT is the first derivative; 2: VLEFT is the second derivative
 *     VLEFT       in  the derivative at the left end
 *     IRIGHT      in  0: not-a-knot; 1: VRIGHT is the first derivative; 2: VRIGHT is the second derivative
 *     VRIGHT      in  the derivative at the right end
 *
 *     TERMINAL 1  NDATA < 2
 *     TERMINAL 2  ILEFT is not 0, 1 or 2
 *                 "The argument ILEFT = %(I1).  It must be 0, 1 or 2."
 *     TERMINAL 3  IRIGHT is not 0, 1 or 2
 *                 "The argument IRIGHT = %(I1).  It must be 0, 1 or 2."
 *     TERMINAL 5  no storage
 *
 * Source: C. de Boor, A Practical Guide to Splines, Springer, 1978.
 */
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

/* Akima's spline, whose slopes depend on the four neighbouring pieces only. Its second derivative may jump.
 * Passes up the errors of C1SOR.
 *
 *     TERMINAL 1  NDATA < 4
 *     TERMINAL 5  no storage
 *
 * Source: H. Akima, A new method of interpolation and smooth curve fitting based on local procedures,
 * Journal of the ACM 17, 1970.
 */
void CSAKM(const int32_t* ndata, const float* xdata, const float* fdata, float* brkpt, float* spcoef);
void DCSAKM(const int32_t* ndata, const double* xdata, const double* fdata, double* brkpt, double* spcoef);
void C2AKM(const int32_t* ndata, const float* xdata, const float* fdata, float* brkpt, float* spcoef,
           int32_t* iwk);
void DC2AKM(const int32_t* ndata, const double* xdata, const double* fdata, double* brkpt, double* spcoef,
            int32_t* iwk);

/* Periodic cubic spline. Value, first and second derivative agree at both ends. The elimination is carried
 * in SPCOEF: in rows 2 to 4 of column i stand p, q, v with slope(i) = p - q slope(i+1) - v slope(NDATA-1),
 * then a, b for p, v with slope(i) = a - b slope(NDATA-1). Passes up the errors of C1SOR.
 *
 *     WK(6*NDATA)  scratch  not touched, and CSPER does not ask for it
 *
 *     TERMINAL 1   NDATA < 4
 *     TERMINAL 5   no storage
 *     WARNING 1    the ordinates of the smallest and the largest abscissa differ; the first is used for
 *                  both
 *                  "The function values at smallest and largest XDATA points, %(R1) and %(R2), are not
 *                  equal.  They are %(R3) and %(R4),  respectively.  %(R3) is used."
 *
 * Source: elimination of a cyclic diagonally dominant system, as in G. H. Golub, C. F. Van Loan, Matrix
 * Computations, Johns Hopkins University Press, 1996.
 */
void CSPER(const int32_t* ndata, const float* xdata, const float* fdata, float* brkpt, float* spcoef);
void DCSPER(const int32_t* ndata, const double* xdata, const double* fdata, double* brkpt, double* spcoef);
void C2PER(const int32_t* ndata, const float* xdata, const float* fdata, float* brkpt, float* spcoef,
           float* wk, int32_t* iwk);
void DC2PER(const int32_t* ndata, const double* xdata, const double* fdata, double* brkpt, double* spcoef,
            double* wk, int32_t* iwk);

/* Sorts and checks data. Does nothing when LDC is less than 1.
 *
 *     SPCOEF(1:LDC,NDATA)  out      the ordinates in its first row
 *     LDC                  in       the leading dimension of SPCOEF
 *     IWK(NDATA)           scratch  where the data were not ascending, their places in XDATA
 *
 *     TERMINAL 2           two abscissas are equal; the message has their places in XDATA
 *                          "Points in the data point abscissas array, XDATA, must be distinct, but
 *                          XDATA(%(I1)) = XDATA(%(I2)) = %(R1)."
 */
void C1SOR(const int32_t* ndata, const float* xdata, const float* fdata, float* brkpt, float* spcoef,
           const int32_t* ldc, int32_t* iwk);
void DC1SOR(const int32_t* ndata, const double* xdata, const double* fdata, double* brkpt, double* spcoef,
            const int32_t* ldc, int32_t* iwk);

/* ---- evaluation ----------------------------------------------------------------------------------------
 *
 *     X                    in  the argument
 *     KORDER               in  the order of the polynomials, the number of their coefficients
 *     NINTV                in  the number of pieces
 *     BRKPT(NINTV)         in  the break points, ascending
 *     SPCOEF(4,NINTV)      in  the coefficients of a cubic spline
 *     PCOEF(KORDER,NINTV)  in  the coefficients of a piecewise polynomial, row j the derivative of order j
 *                              - 1 at the left ends
 *     IDERIV               in  the order of the derivative, at least 0
 *     A                    in  one limit
 *     B                    in  the other limit, in any order
 *
 *     cause                NINTV < 1
 *                          "The number of intervals must be at least 1 while NINTV = %(I1) is given. "
 *     cause                IDERIV < 0
 *                          "The order of the derivative must be positive while IDERIV = %(I1) is given."
 *     cause                KORDER < 1
 *                          "The order of the interpolating polynomial must be positive while KORDER = %(I1)
 *                          is given."
 *
 * The PP members take piecewise polynomials of any order; the CS members have order 4 and pass up errors of
 * their PP members. The first piece serves every X below BRKPT(2), the last one every X from BRKPT(NINTV)
 * on, which is the last element that is read; a break point between belongs to the piece on its right.
 *
 * After an error: the value is 0.
 *
 * NaN: a NaN as argument gives NaN.
 *
 * Threads: each thread remembers the piece that it found last, and looks there, at the next one and nearby
 * first.
 *
 * Time: of the order log NINTV for a point, of 1 where it is near the one before; of the order of the
 * pieces between for an integral.
 *
 * Source: C. de Boor, A Practical Guide to Splines, Springer, 1978.
 */

/* The value of a spline at X. Passes up the errors of PPDER. */
float CSVAL(const float* x, const int32_t* nintv, const float* brkpt, const float* spcoef);
double DCSVAL(const double* x, const int32_t* nintv, const double* brkpt, const double* spcoef);
float PPVAL(const float* x, const int32_t* korder, const int32_t* nintv, const float* brkpt,
            const float* pcoef);
double DPPVAL(const double* x, const int32_t* korder, const int32_t* nintv, const double* brkpt,
              const double* pcoef);

/* The derivative of order IDERIV of a spline at X. It is 0 from the order of the polynomial on. PPDER posts
 * the errors, CSDER passes them up.
 *
 *     TERMINAL 1  NINTV < 1
 *     TERMINAL 2  IDERIV < 0
 *     TERMINAL 3  KORDER < 1
 */
float CSDER(const int32_t* ideriv, const float* x, const int32_t* nintv, const float* brkpt,
            const float* spcoef);
double DCSDER(const int32_t* ideriv, const double* x, const int32_t* nintv, const double* brkpt,
              const double* spcoef);
float PPDER(const int32_t* ideriv, const float* x, const int32_t* korder, const int32_t* nintv,
            const float* brkpt, const float* pcoef);
double DPPDER(const int32_t* ideriv, const double* x, const int32_t* korder, const int32_t* nintv,
              const double* brkpt, const double* pcoef);

/* The values of a spline at many points: each is that of CSVAL or CSDER, digit for digit. Points that ascend,
 * and points in any order among many pieces, take a small part of the time of as many calls.
 *
 *     NX          in   the number of points
 *     XVEC(NX)    in   the points, in any order
 *     VALUES(NX)  out  the values at the points; may be XVEC
 *
 *     TERMINAL 1  NX < 1
 *                 "The number of points must be at least 1 while NX = %(I1) is given."
 *     TERMINAL 2  NINTV < 1
 *     TERMINAL 3  IDERIV < 0
 *
 * After an error: VALUES is not written.
 *
 * NaN: a NaN among the points gives a NaN in its place.
 *
 * Threads: nothing is remembered from call to call.
 */
void CSVALS(const int32_t* nx, const float* xvec, const int32_t* nintv, const float* brkpt,
            const float* spcoef, float* values);
void DCSVALS(const int32_t* nx, const double* xvec, const int32_t* nintv, const double* brkpt,
             const double* spcoef, double* values);
void CSDERS(const int32_t* ideriv, const int32_t* nx, const float* xvec, const int32_t* nintv,
            const float* brkpt, const float* spcoef, float* values);
void DCSDERS(const int32_t* ideriv, const int32_t* nx, const double* xvec, const int32_t* nintv,
             const double* brkpt, const double* spcoef, double* values);

/* The integral of a spline from A to B. The limits may lie beyond the break points; the sum over the pieces
 * loses no digits by their number. PPITG posts the errors, CSITG passes them up.
 *
 *     TERMINAL 1  NINTV < 1
 *     TERMINAL 2  KORDER < 1
 */
float CSITG(const float* a, const float* b, const int32_t* nintv, const float* brkpt, const float* spcoef);
double DCSITG(const double* a, const double* b, const int32_t* nintv, const double* brkpt,
              const double* spcoef);
float PPITG(const float* a, const float* b, const int32_t* korder, const int32_t* nintv, const float* brkpt,
            const float* pcoef);
double DPPITG(const double* a, const double* b, const int32_t* korder, const int32_t* nintv,
              const double* brkpt, const double* pcoef);

/* The piece that an argument lies in. Posts nothing.
 *
 *     KORDER  in   not used
 *     LEFT    out  the index of the piece, 1 to NINTV; 1 also for NINTV < 1
 */
void P3DER(const int32_t* korder, const int32_t* nintv, const float* brkpt, const float* x, int32_t* left);
void DP3DER(const int32_t* korder, const int32_t* nintv, const double* brkpt, const double* x, int32_t* left);

ORVEL_END

#endif
