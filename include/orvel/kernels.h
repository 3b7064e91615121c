/* include/orvel/kernels.h - kernels on vectors: level 1, vector utilities, accumulators
 *
 * The first letter tells the precision: S single, D double, C single complex, Z double complex. A vector is
 * given as (N, X, INCX): N elements INCX apart. In routines with two or three vectors a negative increment
 * runs backwards through the vector: its first element is X(1 + (1 - N)*INCX). N < 1 means no elements:
 * nothing is read or written, a function returns zero, an index function 0. INCX = 0 uses X(1) N times. A
 * routine with one vector takes it as empty when INCX < 0. The routines check nothing else and post
 * nothing.
 *
 * Index arithmetic is done in 64 bits, so that every N and INCX that an array can have are good. Vectors
 * may be the same or overlap: the result is that of the loop that treats one element after the other, from
 * the first to the last.
 *
 * Sums are formed from several partial sums; the result depends on the arguments and on the instruction set
 * of the machine, never on alignment, threads or time. No kernel keeps state. Complex products are formed
 * by the plain rule, without care for infinities.
 *
 *     N          in  the number of elements
 *     A          in  a factor or an addend
 *     X(N:INCX)  in  a vector
 *     INCX       in  the increment of X
 *     Y(N:INCY)  in  a vector
 *     INCY       in  the increment of Y
 *     Z(N:INCZ)  in  a vector
 *     INCZ       in  the increment of Z
 *
 * NaN: goes through all arithmetic as IEEE 754 has it, where a routine says nothing else.
 *
 * Time: of the order N.
 *
 * Source: C. Lawson, R. Hanson, D. Kincaid, F. Krogh, Basic linear algebra subprograms for Fortran usage,
 * 1979.
 */
#ifndef ORVEL_KERNELS_H
#define ORVEL_KERNELS_H

#include "orvel/matrices.h"
#include "orvel/types.h"

ORVEL_BEGIN

/* ---- level 1 -------------------------------------------------------------------------------------------
 *
 * The lower-case Fortran names of these are in liborvel_blas, so that loading liborvel never takes over
 * another library's kernels.
 */

/* Y = A*X + Y. With A = 0 nothing is read or written, whatever X holds.
 *
 *     Y(N:INCY)  inout  a vector
 */
void SAXPY(const int32_t* n, const float* a, const float* x, const int32_t* incx, float* y,
           const int32_t* incy);
void DAXPY(const int32_t* n, const double* a, const double* x, const int32_t* incx, double* y,
           const int32_t* incy);
void CAXPY(const int32_t* n, const orvel_complex* a, const orvel_complex* x, const int32_t* incx,
           orvel_complex* y, const int32_t* incy);
void ZAXPY(const int32_t* n, const orvel_dcomplex* a, const orvel_dcomplex* x, const int32_t* incx,
           orvel_dcomplex* y, const int32_t* incy);

/* Y = X. INCX = 0 fills Y with X(1).
 *
 *     Y(N:INCY)  out  the copy
 */
void SCOPY(const int32_t* n, const float* x, const int32_t* incx, float* y, const int32_t* incy);
void DCOPY(const int32_t* n, const double* x, const int32_t* incx, double* y, const int32_t* incy);
void CCOPY(const int32_t* n, const orvel_complex* x, const int32_t* incx, orvel_complex* y,
           const int32_t* incy);
void ZCOPY(const int32_t* n, const orvel_dcomplex* x, const int32_t* incx, orvel_dcomplex* y,
           const int32_t* incy);

/* X = A*X. A real A is in CSSCAL and ZDSCAL. A = 0 multiplies like any other, so that a NaN stays.
 *
 *     X(N:INCX)  inout  a vector
 */
void SSCAL(const int32_t* n, const float* a, float* x, const int32_t* incx);
void DSCAL(const int32_t* n, const double* a, double* x, const int32_t* incx);
void CSCAL(const int32_t* n, const orvel_complex* a, orvel_complex* x, const int32_t* incx);
void ZSCAL(const int32_t* n, const orvel_dcomplex* a, orvel_dcomplex* x, const int32_t* incx);
void CSSCAL(const int32_t* n, const float* a, orvel_complex* x, const int32_t* incx);
void ZDSCAL(const int32_t* n, const double* a, orvel_dcomplex* x, const int32_t* incx);

/* Exchanges X and Y.
 *
 *     X(N:INCX)  inout  a vector
 *     Y(N:INCY)  inout  a vector
 */
void SSWAP(const int32_t* n, float* x, const int32_t* incx, float* y, const int32_t* incy);
void DSWAP(const int32_t* n, double* x, const int32_t* incx, double* y, const int32_t* incy);
void CSWAP(const int32_t* n, orvel_complex* x, const int32_t* incx, orvel_complex* y, const int32_t* incy);
void ZSWAP(const int32_t* n, orvel_dcomplex* x, const int32_t* incx, orvel_dcomplex* y, const int32_t* incy);

/* Sum of X(i)*Y(i), in the precision of the arguments. DOTC: of conj(X(i))*Y(i). */
float SDOT(const int32_t* n, const float* x, const int32_t* incx, const float* y, const int32_t* incy);
double DDOT(const int32_t* n, const double* x, const int32_t* incx, const double* y, const int32_t* incy);
orvel_complex CDOTU(const int32_t* n, const orvel_complex* x, const int32_t* incx, const orvel_complex* y,
                    const int32_t* incy);
orvel_dcomplex ZDOTU(const int32_t* n, const orvel_dcomplex* x, const int32_t* incx, const orvel_dcomplex* y,
                     const int32_t* incy);
orvel_complex CDOTC(const int32_t* n, const orvel_complex* x, const int32_t* incx, const orvel_complex* y,
                    const int32_t* incy);
orvel_dcomplex ZDOTC(const int32_t* n, const orvel_dcomplex* x, const int32_t* incx, const orvel_dcomplex* y,
                     const int32_t* incy);

/* Sum of X(i)*Y(i) of single-precision vectors, products and sum in double. SDSDOT adds the start value SB
 * and rounds once at the end; for N < 1 it returns SB.
 *
 *     SB  in  the start value
 */
double DSDOT(const int32_t* n, const float* x, const int32_t* incx, const float* y, const int32_t* incy);
float SDSDOT(const int32_t* n, const float* sb, const float* x, const int32_t* incx, const float* y,
             const int32_t* incy);

/* Euclidean norm without harmful overflow or underflow. INCX = 0 gives |X(1)|*sqrt(N).
 *
 * With TINY = AMACH(1), HUGE = AMACH(2), EPS = AMACH(4) of the precision, CUTLO = sqrt(TINY/EPS), CUTHI =
 * sqrt(HUGE*EPS) and S the sum of the magnitudes of the N elements (of the 2N parts, with 2N for N, of
 * complex ones): S above CUTHI scales all elements by CUTLO/CUTHI, S below N*CUTLO scales them by
 * 1/(CUTLO*EPS), else the plain squares are summed.
 *
 * NaN: a NaN gives NaN, an infinity infinity.
 *
 * Source: J. Blue, A portable Fortran program to find the Euclidean norm of a vector, 1978.
 */
float SNRM2(const int32_t* n, const float* x, const int32_t* incx);
double DNRM2(const int32_t* n, const double* x, const int32_t* incx);
float SCNRM2(const int32_t* n, const orvel_complex* x, const int32_t* incx);
double DZNRM2(const int32_t* n, const orvel_dcomplex* x, const int32_t* incx);

/* Sum of |X(i)|, of |Re X(i)| + |Im X(i)| for complex vectors. */
float SASUM(const int32_t* n, const float* x, const int32_t* incx);
double DASUM(const int32_t* n, const double* x, const int32_t* incx);
float SCASUM(const int32_t* n, const orvel_complex* x, const int32_t* incx);
double DZASUM(const int32_t* n, const orvel_dcomplex* x, const int32_t* incx);

/* One-based index of the first element of largest magnitude, |Re| + |Im| for complex vectors. For N = 1 the
 * value is 1 and neither X nor INCX is read; for N > 1, INCX = 0 gives 1 and INCX < 0 gives 0.
 *
 * NaN: a NaN is passed over, but where X(1) is one the value is 1.
 */
int32_t ISAMAX(const int32_t* n, const float* x, const int32_t* incx);
int32_t IDAMAX(const int32_t* n, const double* x, const int32_t* incx);
int32_t ICAMAX(const int32_t* n, const orvel_complex* x, const int32_t* incx);
int32_t IZAMAX(const int32_t* n, const orvel_dcomplex* x, const int32_t* incx);

/* Plane rotation: (X, Y) = (C*X + S*Y, C*Y - S*X).
 *
 *     X(N:INCX)  inout  a vector
 *     Y(N:INCY)  inout  a vector
 *     C          in     the cosine, real
 *     S          in     the sine, real
 */
void SROT(const int32_t* n, float* x, const int32_t* incx, float* y, const int32_t* incy, const float* c,
          const float* s);
void DROT(const int32_t* n, double* x, const int32_t* incx, double* y, const int32_t* incy, const double* c,
          const double* s);
void CSROT(const int32_t* n, orvel_complex* x, const int32_t* incx, orvel_complex* y, const int32_t* incy,
           const float* c, const float* s);
void ZDROT(const int32_t* n, orvel_dcomplex* x, const int32_t* incx, orvel_dcomplex* y, const int32_t* incy,
           const double* c, const double* s);

/* Sets up the rotation that takes (A, B) to (R, 0). A = B = 0 gives C = 1, S = R = Z = 0. Nothing overflows
 * but R itself, and Z where 1/C does.
 *
 *     A  inout  A, then R, which has the sign of the larger of A and B (of B when they are equal)
 *     B  inout  B, then Z: S when |A| > |B|, else 1/C, or 1 when C = 0, from which C and S can be had again
 *     C  out    the cosine
 *     S  out    the sine
 */
void SROTG(float* a, float* b, float* c, float* s);
void DROTG(double* a, double* b, double* c, double* s);

/* Modified rotation: (X, Y) = (H11*X + H12*Y, H21*X + H22*Y), of complex vectors too. FLAG < 0 takes the
 * whole matrix; 0 takes H21 and H12, with H11 = H22 = 1; above 0 H11 and H22, with H21 = -1, H12 = 1; -2
 * changes nothing.
 *
 *     X(N:INCX)  inout  a vector
 *     Y(N:INCY)  inout  a vector
 *     PARAM(5)   in     FLAG, H11, H21, H12, H22
 */
void SROTM(const int32_t* n, float* x, const int32_t* incx, float* y, const int32_t* incy,
           const float* param);
void DROTM(const int32_t* n, double* x, const int32_t* incx, double* y, const int32_t* incy,
           const double* param);
void CSROTM(const int32_t* n, orvel_complex* x, const int32_t* incx, orvel_complex* y, const int32_t* incy,
            const float* param);
void ZDROTM(const int32_t* n, orvel_dcomplex* x, const int32_t* incx, orvel_dcomplex* y, const int32_t* incy,
            const double* param);

/* Sets up the modified rotation that makes the second component of (sqrt(D1)*X1, sqrt(D2)*Y1) zero. D1 and
 * D2 are brought back between 2**(-24) and 2**24 as often as it takes, and then the whole matrix is set
 * (FLAG = -1). D1 < 0, or a rotation that does not exist, sets matrix, D1, D2 and X1 to zero.
 *
 *     D1        inout  the first weight
 *     D2        inout  the second weight
 *     X1        inout  the first component
 *     Y1        in     the second component
 *     PARAM(5)  out    FLAG, H11, H21, H12, H22, of which only what the flag takes is set
 */
void SROTMG(float* d1, float* d2, float* x1, const float* y1, float* param);
void DROTMG(double* d1, double* d2, double* x1, const double* y1, double* param);

/* ---- vector utilities ----------------------------------------------------------------------------------
 *
 */

/* X = A.
 *
 *     X(N:INCX)  out  a vector
 */
void SSET(const int32_t* n, const float* a, float* x, const int32_t* incx);
void DSET(const int32_t* n, const double* a, double* x, const int32_t* incx);
void CSET(const int32_t* n, const orvel_complex* a, orvel_complex* x, const int32_t* incx);
void ZSET(const int32_t* n, const orvel_dcomplex* a, orvel_dcomplex* x, const int32_t* incx);

/* Y = A*X. A real A is in CSVCAL and ZDVCAL.
 *
 *     Y(N:INCY)  out  a vector
 */
void SVCAL(const int32_t* n, const float* a, const float* x, const int32_t* incx, float* y,
           const int32_t* incy);
void DVCAL(const int32_t* n, const double* a, const double* x, const int32_t* incx, double* y,
           const int32_t* incy);
void CVCAL(const int32_t* n, const orvel_complex* a, const orvel_complex* x, const int32_t* incx,
           orvel_complex* y, const int32_t* incy);
void ZVCAL(const int32_t* n, const orvel_dcomplex* a, const orvel_dcomplex* x, const int32_t* incx,
           orvel_dcomplex* y, const int32_t* incy);
void CSVCAL(const int32_t* n, const float* a, const orvel_complex* x, const int32_t* incx, orvel_complex* y,
            const int32_t* incy);
void ZDVCAL(const int32_t* n, const double* a, const orvel_dcomplex* x, const int32_t* incx,
            orvel_dcomplex* y, const int32_t* incy);

/* X = X + A.
 *
 *     X(N:INCX)  inout  a vector
 */
void SADD(const int32_t* n, const float* a, float* x, const int32_t* incx);
void DADD(const int32_t* n, const double* a, double* x, const int32_t* incx);
void CADD(const int32_t* n, const orvel_complex* a, orvel_complex* x, const int32_t* incx);
void ZADD(const int32_t* n, const orvel_dcomplex* a, orvel_dcomplex* x, const int32_t* incx);

/* X = A - X, the constant minus the element.
 *
 *     X(N:INCX)  inout  a vector
 */
void SSUB(const int32_t* n, const float* a, float* x, const int32_t* incx);
void DSUB(const int32_t* n, const double* a, double* x, const int32_t* incx);
void CSUB(const int32_t* n, const orvel_complex* a, orvel_complex* x, const int32_t* incx);
void ZSUB(const int32_t* n, const orvel_dcomplex* a, orvel_dcomplex* x, const int32_t* incx);

/* Sum of X(i), with its signs. */
float SSUM(const int32_t* n, const float* x, const int32_t* incx);
double DSUM(const int32_t* n, const double* x, const int32_t* incx);

/* Sum of X(i)*Y(i)*Z(i). */
float SXYZ(const int32_t* n, const float* x, const int32_t* incx, const float* y, const int32_t* incy,
           const float* z, const int32_t* incz);
double DXYZ(const int32_t* n, const double* x, const int32_t* incx, const double* y, const int32_t* incy,
            const double* z, const int32_t* incz);

/* Z(i) = X(i)*Y(i).
 *
 *     Z(N:INCZ)  out  a vector
 */
void SHPROD(const int32_t* n, const float* x, const int32_t* incx, const float* y, const int32_t* incy,
            float* z, const int32_t* incz);
void DHPROD(const int32_t* n, const double* x, const int32_t* incx, const double* y, const int32_t* incy,
            double* z, const int32_t* incz);

/* One-based index of the first element of smallest magnitude (AMIN), of largest (MAX) and smallest (MIN)
 * signed value. N and INCX as in ISAMAX.
 *
 * NaN: a NaN is passed over, but where X(1) is one the value is 1.
 */
int32_t ISAMIN(const int32_t* n, const float* x, const int32_t* incx);
int32_t IDAMIN(const int32_t* n, const double* x, const int32_t* incx);
int32_t ICAMIN(const int32_t* n, const orvel_complex* x, const int32_t* incx);
int32_t IZAMIN(const int32_t* n, const orvel_dcomplex* x, const int32_t* incx);
int32_t ISMAX(const int32_t* n, const float* x, const int32_t* incx);
int32_t IDMAX(const int32_t* n, const double* x, const int32_t* incx);
int32_t ISMIN(const int32_t* n, const float* x, const int32_t* incx);
int32_t IDMIN(const int32_t* n, const double* x, const int32_t* incx);

/* Dot products of single complex vectors, carried in double complex and rounded once. CZDOTU gives C + the
 * sum of X(i)*Y(i), CZDOTC C + the sum of conj(X(i))*Y(i), CZCDOT the latter without a start value. For N <
 * 1 the value is C, or 0 of CZCDOT.
 *
 *     C  in  the start value
 */
orvel_complex CZDOTU(const int32_t* n, const orvel_complex* c, const orvel_complex* x, const int32_t* incx,
                     const orvel_complex* y, const int32_t* incy);
orvel_complex CZDOTC(const int32_t* n, const orvel_complex* c, const orvel_complex* x, const int32_t* incx,
                     const orvel_complex* y, const int32_t* incy);
orvel_complex CZCDOT(const int32_t* n, const orvel_complex* x, const int32_t* incx, const orvel_complex* y,
                     const int32_t* incy);

/* ---- accumulators of double length ---------------------------------------------------------------------
 *
 *     A  in  the number
 *     B  in  another number
 *
 * Source: T. Dekker, A floating-point technique for extending the available precision, 1971; D. Knuth, The
 * Art of Computer Programming, volume 2, 1969.
 */

/* ACC = (A, 0). The sum of the two parts of ACC is the value of the accumulator, head and tail.
 *
 *     ACC(2)  out  the accumulator
 */
void DQINI(const double* a, double* acc);

/* DQADD adds A to an accumulator, DQMUL adds A*B. The sum is the one of quadruple precision (113 bits),
 * split again: the head is the sum rounded to double, the tail what is left, rounded to double. A sum
 * beyond the range of double therefore leaves an infinite head and the opposite infinity as tail, of which
 * DQSTO makes a NaN.
 *
 *     ACC(2)  inout  the accumulator
 */
void DQADD(const double* a, double* acc);
void DQMUL(const double* a, const double* b, double* acc);

/* Stores head + tail.
 *
 *     ACC(2)  in   the accumulator
 *     A       out  the number
 */
void DQSTO(const double* acc, double* a);

/* ACC = (A, 0), complex: ACC(1) the heads, ACC(2) the tails.
 *
 *     ACC(2)  out  the accumulator
 */
void ZQINI(const orvel_dcomplex* a, orvel_dcomplex* acc);

/* ZQADD adds A to a complex accumulator, ZQMUL adds A*B. Each part is accumulated as by DQADD and DQMUL;
 * ZQMUL adds two products to each, one after the other.
 *
 *     ACC(2)  inout  the accumulator
 */
void ZQADD(const orvel_dcomplex* a, orvel_dcomplex* acc);
void ZQMUL(const orvel_dcomplex* a, const orvel_dcomplex* b, orvel_dcomplex* acc);

/* Stores heads + tails.
 *
 *     ACC(2)  in   the accumulator
 *     A       out  the number
 */
void ZQSTO(const orvel_dcomplex* acc, orvel_dcomplex* a);

ORVEL_END

#endif
