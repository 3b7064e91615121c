/* include/orvel/matrices.h - kernels on matrices: levels 2 and 3
 *
 * A matrix is stored by columns with a leading dimension. The first letter tells the precision: S single, D
 * double, C single complex, Z double complex. Options are single letters in upper or lower case, of which
 * only the first character is read. A vector is N elements INCX apart; a negative increment runs backwards
 * through it.
 *
 * A bad argument posts one TERMINAL error, the first in the order of the codes, under the kernel's own
 * name. All products of an element are added in a fixed order, so that the size of a matrix or its position
 * never changes a result; the result depends on the arguments and on the instruction set of the machine,
 * never on alignment, threads or time. An element of a matrix outside the part that is named is neither
 * read nor written. Vectors must not overlap the matrices and vectors that are written.
 *
 *     TRANS      in  N: op(A) = A; T: its transpose; C: its conjugate transpose
 *     TRANSA     in  N: op(A) = A; T: its transpose; C: its conjugate transpose
 *     TRANSB     in  N: op(B) = B; T: its transpose; C: its conjugate transpose
 *     UPLO       in  U: the upper triangle; L: the lower triangle
 *     DIAG       in  N: a general diagonal; U: one of ones, which is not read
 *     SIDE       in  L: A on the left; R: A on the right
 *     M          in  the number of rows
 *     N          in  the number of columns or the order
 *     K          in  the inner number, or the number of diagonals beside the main one
 *     KL         in  the number of diagonals below the main one
 *     KU         in  the number of diagonals above the main one
 *     ALPHA      in  the factor of the product
 *     BETA       in  the factor of the old values
 *     LDA        in  the leading dimension of A
 *     LDB        in  the leading dimension of B
 *     LDC        in  the leading dimension of C
 *     X(N:INCX)  in  a vector
 *     INCX       in  the increment of X, not 0
 *     Y(N:INCY)  in  a vector
 *     INCY       in  the increment of Y, not 0
 *
 *     cause      M < 0
 *                "M must be greater than or equal to zero while %(I1) is given."
 *     cause      N < 0
 *                "N must be greater than or equal to zero while %(I1) is given."
 *     cause      K < 0
 *                "K must be greater than or equal to zero while %(I1) is given."
 *     cause      KL < 0
 *                "KL must be greater than or equal to zero while %(I1) is given."
 *     cause      KU < 0
 *                "KU must be greater than or equal to zero while %(I1) is given."
 *     cause      LDA < max(1,M)
 *                "LDA must be greater than or equal to M and greater than zero while LDA = %(I1) and M =
 *                %(I2) are given."
 *     cause      LDA < max(1,N)
 *                "LDA must be greater than or equal to N and greater than zero while LDA = %(I1) and N =
 *                %(I2) are given."
 *     cause      LDA < K + 1
 *                "LDA must be greater than or equal to K + 1 while LDA = %(I1) and K = %(I2) are given."
 *     cause      LDA < KL + KU + 1
 *                "LDA must be greater than or equal to KL + KU + 1 while LDA = %(I1), KL = %(I2) and KU =
 *                %(I3) are given."
 *     cause      LDB < max(1,M)
 *                "LDB must be greater than or equal to M and greater than zero while LDB = %(I1) and M =
 *                %(I2) are given."
 *     cause      LDC < max(1,M)
 *                "LDC must be greater than or equal to M and greater than zero while LDC = %(I1) and M =
 *                %(I2) are given."
 *     cause      LDC < max(1,N)
 *                "LDC must be greater than or equal to N and greater than zero while LDC = %(I1) and N =
 *                %(I2) are given."
 *     cause      SIDE = L and LDA < max(1,M)
 *                "LDA must be greater than or equal to M and greater than zero when SIDE = L, but LDA =
 *                %(I1) and M = %(I2) are given."
 *     cause      SIDE = R and LDA < max(1,N)
 *                "LDA must be greater than or equal to N and greater than zero when SIDE = R, but LDA =
 *                %(I1) and N = %(I2) are given."
 *     cause      TRANS = N and LDA < max(1,N)
 *                "LDA must be greater than or equal to N and greater than zero when TRANS = N, but LDA =
 *                %(I1) and N = %(I2) are given."
 *     cause      TRANS = T or C and LDA < max(1,K)
 *                "LDA must be greater than or equal to K and greater than zero when TRANS = T or C, but LDA
 *                = %(I1) and K = %(I2) are given."
 *     cause      TRANS = C and LDA < max(1,K)
 *                "LDA must be greater than or equal to K and greater than zero when TRANS = T or C, but LDA
 *                = %(I1) and K = %(I2) are given."
 *     cause      TRANS = N and LDB < max(1,N)
 *                "LDB must be greater than or equal to N and greater than zero when TRANS = N, but LDB =
 *                %(I1) and N = %(I2) are given."
 *     cause      TRANS = T or C and LDB < max(1,K)
 *                "LDB must be greater than or equal to K and greater than zero when TRANS = T or C, but LDB
 *                = %(I1) and K = %(I2) are given."
 *     cause      TRANS = C and LDB < max(1,K)
 *                "LDB must be greater than or equal to K and greater than zero when TRANS = T or C, but LDB
 *                = %(I1) and K = %(I2) are given."
 *     cause      TRANSA = N and LDA < max(1,M)
 *                "LDA must be greater than or equal to M and greater than zero when TRANSA = N, but LDA =
 *                %(I1) and M = %(I2) are given."
 *     cause      TRANSA = T or C and LDA < max(1,K)
 *                "LDA must be greater than or equal to K and greater than zero when TRANSA = T or C, but
 *                LDA = %(I1) and K = %(I2) are given."
 *     cause      TRANSB = N and LDB < max(1,K)
 *                "LDB must be greater than or equal to K and greater than zero when TRANSB = N, but LDB =
 *                %(I1) and K = %(I2) are given."
 *     cause      TRANSB = T or C and LDB < max(1,N)
 *                "LDB must be greater than or equal to N and greater than zero when TRANSB = T or C, but
 *                LDB = %(I1) and N = %(I2) are given."
 *     cause      TRANS is not N, T or C
 *                "TRANS must be set equal to N or T or C while %(L1) is given."
 *     cause      TRANS is not N or T
 *                "TRANS must be set equal to N or T while %(L1) is given."
 *     cause      TRANS is not N or C
 *                "TRANS must be set equal to N or C while %(L1) is given."
 *     cause      TRANSA is not N, T or C
 *                "TRANSA must be set equal to N or T or C while %(L1) is given."
 *     cause      TRANSB is not N, T or C
 *                "TRANSB must be set equal to N or T or C while %(L1) is given."
 *     cause      UPLO is not U or L
 *                "UPLO must be set equal to U or L while %(L1) is given."
 *     cause      DIAG is not U or N
 *                "DIAG must be set equal to U or N while %(L1) is given."
 *     cause      SIDE is not L or R
 *                "SIDE must be set equal to L or R while %(L1) is given."
 *     cause      INCX = 0
 *                "INCX must not be equal to zero while %(I1) is given."
 *     cause      INCY = 0
 *                "INCY must not be equal to zero while %(I1) is given."
 *
 * After an error: nothing is computed.
 *
 * NaN: enters a result where the formula has it; with alpha = 0 the products, with beta = 0 the old values
 * are not formed at all.
 *
 * Source: J. Dongarra, J. Du Croz, S. Hammarling, R. Hanson, An extended set of Fortran basic linear
 * algebra subprograms, 1988; J. Dongarra, J. Du Croz, I. Duff, S. Hammarling, A set of level 3 basic linear
 * algebra subprograms, 1990.
 */
#ifndef ORVEL_MATRICES_H
#define ORVEL_MATRICES_H

#include "orvel/types.h"

ORVEL_BEGIN

/* ---- letters ---------------------------------------------------------------------------------------- */

/* LOGICAL: are two letters equal, whatever their case?
 *
 *     CA  in  a letter
 *     CB  in  a letter
 */
int32_t L1AME(const char* ca, const char* cb);

/* ---- level 2 -------------------------------------------------------------------------------------------
 *
 * The lower-case Fortran names of these are in liborvel_blas, so that loading liborvel never takes over
 * another library's kernels.
 *
 * Time: of the order of the elements of A that are read.
 */

/* y = alpha*op(A)*x + beta*y. y is not read when beta = 0.
 *
 *     A(M:LDA,N)  in     the matrix, of M rows
 *     X(NX:INCX)  in     a vector
 *     NX          =      N if TRANS = N, else M
 *     Y(NY:INCY)  inout  a vector
 *     NY          =      M if TRANS = N, else N
 *
 *     TERMINAL 1  M < 0
 *     TERMINAL 2  N < 0
 *     TERMINAL 3  LDA < max(1,M)
 *     TERMINAL 4  TRANS is not N, T or C
 *     TERMINAL 5  INCX = 0
 *     TERMINAL 6  INCY = 0
 */
void SGEMV(const char* trans, const int32_t* m, const int32_t* n, const float* alpha, const float* a,
           const int32_t* lda, const float* x, const int32_t* incx, const float* beta, float* y,
           const int32_t* incy);
void DGEMV(const char* trans, const int32_t* m, const int32_t* n, const double* alpha, const double* a,
           const int32_t* lda, const double* x, const int32_t* incx, const double* beta, double* y,
           const int32_t* incy);
void CGEMV(const char* trans, const int32_t* m, const int32_t* n, const orvel_complex* alpha,
           const orvel_complex* a, const int32_t* lda, const orvel_complex* x, const int32_t* incx,
           const orvel_complex* beta, orvel_complex* y, const int32_t* incy);
void ZGEMV(const char* trans, const int32_t* m, const int32_t* n, const orvel_dcomplex* alpha,
           const orvel_dcomplex* a, const int32_t* lda, const orvel_dcomplex* x, const int32_t* incx,
           const orvel_dcomplex* beta, orvel_dcomplex* y, const int32_t* incy);

/* y = alpha*op(A)*x + beta*y, A a band matrix. Element (i, j) is at row KU + 1 + i - j.
 *
 *     A(KL+KU+1:LDA,N)  in     the band of a matrix of M rows
 *     X(NX:INCX)        in     a vector
 *     NX                =      N if TRANS = N, else M
 *     Y(NY:INCY)        inout  a vector
 *     NY                =      M if TRANS = N, else N
 *
 *     TERMINAL 1        M < 0
 *     TERMINAL 2        N < 0
 *     TERMINAL 3        KL < 0
 *     TERMINAL 4        KU < 0
 *     TERMINAL 5        LDA < KL + KU + 1
 *     TERMINAL 6        TRANS is not N, T or C
 *     TERMINAL 7        INCX = 0
 *     TERMINAL 8        INCY = 0
 */
void SGBMV(const char* trans, const int32_t* m, const int32_t* n, const int32_t* kl, const int32_t* ku,
           const float* alpha, const float* a, const int32_t* lda, const float* x, const int32_t* incx,
           const float* beta, float* y, const int32_t* incy);
void DGBMV(const char* trans, const int32_t* m, const int32_t* n, const int32_t* kl, const int32_t* ku,
           const double* alpha, const double* a, const int32_t* lda, const double* x, const int32_t* incx,
           const double* beta, double* y, const int32_t* incy);
void CGBMV(const char* trans, const int32_t* m, const int32_t* n, const int32_t* kl, const int32_t* ku,
           const orvel_complex* alpha, const orvel_complex* a, const int32_t* lda, const orvel_complex* x,
           const int32_t* incx, const orvel_complex* beta, orvel_complex* y, const int32_t* incy);
void ZGBMV(const char* trans, const int32_t* m, const int32_t* n, const int32_t* kl, const int32_t* ku,
           const orvel_dcomplex* alpha, const orvel_dcomplex* a, const int32_t* lda, const orvel_dcomplex* x,
           const int32_t* incx, const orvel_dcomplex* beta, orvel_dcomplex* y, const int32_t* incy);

/* y = alpha*A*x + beta*y, A symmetric.
 *
 *     A(N:LDA,N)  in     the matrix, of which the triangle UPLO is read
 *     Y(N:INCY)   inout  a vector
 *
 *     TERMINAL 1  N < 0
 *     TERMINAL 2  LDA < max(1,N)
 *     TERMINAL 3  UPLO is not U or L
 *     TERMINAL 4  INCX = 0
 *     TERMINAL 5  INCY = 0
 */
void SSYMV(const char* uplo, const int32_t* n, const float* alpha, const float* a, const int32_t* lda,
           const float* x, const int32_t* incx, const float* beta, float* y, const int32_t* incy);
void DSYMV(const char* uplo, const int32_t* n, const double* alpha, const double* a, const int32_t* lda,
           const double* x, const int32_t* incx, const double* beta, double* y, const int32_t* incy);

/* y = alpha*A*x + beta*y, A Hermitian. Imaginary parts on the diagonal are taken as zero. The errors are
 * those of SSYMV.
 *
 *     A(N:LDA,N)  in     the matrix, of which the triangle UPLO is read
 *     Y(N:INCY)   inout  a vector
 */
void CHEMV(const char* uplo, const int32_t* n, const orvel_complex* alpha, const orvel_complex* a,
           const int32_t* lda, const orvel_complex* x, const int32_t* incx, const orvel_complex* beta,
           orvel_complex* y, const int32_t* incy);
void ZHEMV(const char* uplo, const int32_t* n, const orvel_dcomplex* alpha, const orvel_dcomplex* a,
           const int32_t* lda, const orvel_dcomplex* x, const int32_t* incx, const orvel_dcomplex* beta,
           orvel_dcomplex* y, const int32_t* incy);

/* y = alpha*A*x + beta*y, A a symmetric band matrix. Element (i, j) is at row 1 + i - j for UPLO = L, at
 * row K + 1 + i - j for UPLO = U.
 *
 *     A(K+1:LDA,N)  in     the band, K diagonals on either side
 *     Y(N:INCY)     inout  a vector
 *
 *     TERMINAL 1    N < 0
 *     TERMINAL 2    K < 0
 *     TERMINAL 3    LDA < K + 1
 *     TERMINAL 4    UPLO is not U or L
 *     TERMINAL 5    INCX = 0
 *     TERMINAL 6    INCY = 0
 */
void SSBMV(const char* uplo, const int32_t* n, const int32_t* k, const float* alpha, const float* a,
           const int32_t* lda, const float* x, const int32_t* incx, const float* beta, float* y,
           const int32_t* incy);
void DSBMV(const char* uplo, const int32_t* n, const int32_t* k, const double* alpha, const double* a,
           const int32_t* lda, const double* x, const int32_t* incx, const double* beta, double* y,
           const int32_t* incy);

/* y = alpha*A*x + beta*y, A a Hermitian band matrix, stored as in SSBMV. The errors are those of SSBMV.
 *
 *     A(K+1:LDA,N)  in     the band, K diagonals on either side
 *     Y(N:INCY)     inout  a vector
 */
void CHBMV(const char* uplo, const int32_t* n, const int32_t* k, const orvel_complex* alpha,
           const orvel_complex* a, const int32_t* lda, const orvel_complex* x, const int32_t* incx,
           const orvel_complex* beta, orvel_complex* y, const int32_t* incy);
void ZHBMV(const char* uplo, const int32_t* n, const int32_t* k, const orvel_dcomplex* alpha,
           const orvel_dcomplex* a, const int32_t* lda, const orvel_dcomplex* x, const int32_t* incx,
           const orvel_dcomplex* beta, orvel_dcomplex* y, const int32_t* incy);

/* x = op(A)*x, A triangular.
 *
 *     A(N:LDA,N)  in     the matrix, of which the triangle UPLO is read
 *     X(N:INCX)   inout  a vector
 *
 *     TERMINAL 1  N < 0
 *     TERMINAL 2  LDA < max(1,N)
 *     TERMINAL 3  UPLO is not U or L
 *     TERMINAL 4  TRANS is not N, T or C
 *     TERMINAL 5  DIAG is not U or N
 *     TERMINAL 6  INCX = 0
 */
void STRMV(const char* uplo, const char* trans, const char* diag, const int32_t* n, const float* a,
           const int32_t* lda, float* x, const int32_t* incx);
void DTRMV(const char* uplo, const char* trans, const char* diag, const int32_t* n, const double* a,
           const int32_t* lda, double* x, const int32_t* incx);
void CTRMV(const char* uplo, const char* trans, const char* diag, const int32_t* n, const orvel_complex* a,
           const int32_t* lda, orvel_complex* x, const int32_t* incx);
void ZTRMV(const char* uplo, const char* trans, const char* diag, const int32_t* n, const orvel_dcomplex* a,
           const int32_t* lda, orvel_dcomplex* x, const int32_t* incx);

/* Solves op(A)*x = b, A triangular; x takes the place of b. There is no test of singularity: a zero on the
 * diagonal divides. The errors are those of STRMV.
 *
 *     A(N:LDA,N)  in     the matrix, of which the triangle UPLO is read
 *     X(N:INCX)   inout  a vector
 */
void STRSV(const char* uplo, const char* trans, const char* diag, const int32_t* n, const float* a,
           const int32_t* lda, float* x, const int32_t* incx);
void DTRSV(const char* uplo, const char* trans, const char* diag, const int32_t* n, const double* a,
           const int32_t* lda, double* x, const int32_t* incx);
void CTRSV(const char* uplo, const char* trans, const char* diag, const int32_t* n, const orvel_complex* a,
           const int32_t* lda, orvel_complex* x, const int32_t* incx);
void ZTRSV(const char* uplo, const char* trans, const char* diag, const int32_t* n, const orvel_dcomplex* a,
           const int32_t* lda, orvel_dcomplex* x, const int32_t* incx);

/* x = op(A)*x, A a triangular band matrix of K diagonals beside the main one, stored as in SSBMV.
 *
 *     A(K+1:LDA,N)  in     the band
 *     X(N:INCX)     inout  a vector
 *
 *     TERMINAL 1    N < 0
 *     TERMINAL 2    K < 0
 *     TERMINAL 3    LDA < K + 1
 *     TERMINAL 4    UPLO is not U or L
 *     TERMINAL 5    TRANS is not N, T or C
 *     TERMINAL 6    DIAG is not U or N
 *     TERMINAL 7    INCX = 0
 */
void STBMV(const char* uplo, const char* trans, const char* diag, const int32_t* n, const int32_t* k,
           const float* a, const int32_t* lda, float* x, const int32_t* incx);
void DTBMV(const char* uplo, const char* trans, const char* diag, const int32_t* n, const int32_t* k,
           const double* a, const int32_t* lda, double* x, const int32_t* incx);
void CTBMV(const char* uplo, const char* trans, const char* diag, const int32_t* n, const int32_t* k,
           const orvel_complex* a, const int32_t* lda, orvel_complex* x, const int32_t* incx);
void ZTBMV(const char* uplo, const char* trans, const char* diag, const int32_t* n, const int32_t* k,
           const orvel_dcomplex* a, const int32_t* lda, orvel_dcomplex* x, const int32_t* incx);

/* Solves op(A)*x = b, A a triangular band matrix, stored as in SSBMV; x takes the place of b. The errors
 * are those of STBMV.
 *
 *     A(K+1:LDA,N)  in     the band
 *     X(N:INCX)     inout  a vector
 */
void STBSV(const char* uplo, const char* trans, const char* diag, const int32_t* n, const int32_t* k,
           const float* a, const int32_t* lda, float* x, const int32_t* incx);
void DTBSV(const char* uplo, const char* trans, const char* diag, const int32_t* n, const int32_t* k,
           const double* a, const int32_t* lda, double* x, const int32_t* incx);
void CTBSV(const char* uplo, const char* trans, const char* diag, const int32_t* n, const int32_t* k,
           const orvel_complex* a, const int32_t* lda, orvel_complex* x, const int32_t* incx);
void ZTBSV(const char* uplo, const char* trans, const char* diag, const int32_t* n, const int32_t* k,
           const orvel_dcomplex* a, const int32_t* lda, orvel_dcomplex* x, const int32_t* incx);

/* A = A + alpha*x*y^T.
 *
 *     A(M:LDA,N)  inout  the matrix, of M rows
 *     X(M:INCX)   in     a vector
 *
 *     TERMINAL 1  M < 0
 *     TERMINAL 2  N < 0
 *     TERMINAL 3  LDA < max(1,M)
 *     TERMINAL 4  INCX = 0
 *     TERMINAL 5  INCY = 0
 */
void SGER(const int32_t* m, const int32_t* n, const float* alpha, const float* x, const int32_t* incx,
          const float* y, const int32_t* incy, float* a, const int32_t* lda);
void DGER(const int32_t* m, const int32_t* n, const double* alpha, const double* x, const int32_t* incx,
          const double* y, const int32_t* incy, double* a, const int32_t* lda);

/* A = A + alpha*x*y^T, complex. The errors are those of SGER.
 *
 *     A(M:LDA,N)  inout  the matrix, of M rows
 *     X(M:INCX)   in     a vector
 */
void CGERU(const int32_t* m, const int32_t* n, const orvel_complex* alpha, const orvel_complex* x,
           const int32_t* incx, const orvel_complex* y, const int32_t* incy, orvel_complex* a,
           const int32_t* lda);
void ZGERU(const int32_t* m, const int32_t* n, const orvel_dcomplex* alpha, const orvel_dcomplex* x,
           const int32_t* incx, const orvel_dcomplex* y, const int32_t* incy, orvel_dcomplex* a,
           const int32_t* lda);

/* A = A + alpha*x*y^H. The errors are those of SGER.
 *
 *     A(M:LDA,N)  inout  the matrix, of M rows
 *     X(M:INCX)   in     a vector
 */
void CGERC(const int32_t* m, const int32_t* n, const orvel_complex* alpha, const orvel_complex* x,
           const int32_t* incx, const orvel_complex* y, const int32_t* incy, orvel_complex* a,
           const int32_t* lda);
void ZGERC(const int32_t* m, const int32_t* n, const orvel_dcomplex* alpha, const orvel_dcomplex* x,
           const int32_t* incx, const orvel_dcomplex* y, const int32_t* incy, orvel_dcomplex* a,
           const int32_t* lda);

/* A = A + alpha*x*x^T on a triangle.
 *
 *     A(N:LDA,N)  inout  the matrix, of which the triangle UPLO is changed
 *
 *     TERMINAL 1  N < 0
 *     TERMINAL 2  LDA < max(1,N)
 *     TERMINAL 3  UPLO is not U or L
 *     TERMINAL 4  INCX = 0
 */
void SSYR(const char* uplo, const int32_t* n, const float* alpha, const float* x, const int32_t* incx,
          float* a, const int32_t* lda);
void DSYR(const char* uplo, const int32_t* n, const double* alpha, const double* x, const int32_t* incx,
          double* a, const int32_t* lda);

/* A = A + alpha*x*x^H on a triangle, with a real alpha. The diagonal becomes real. The errors are those of
 * SSYR.
 *
 *     A(N:LDA,N)  inout  the matrix, of which the triangle UPLO is changed
 */
void CHER(const char* uplo, const int32_t* n, const float* alpha, const orvel_complex* x, const int32_t* incx,
          orvel_complex* a, const int32_t* lda);
void ZHER(const char* uplo, const int32_t* n, const double* alpha, const orvel_dcomplex* x,
          const int32_t* incx, orvel_dcomplex* a, const int32_t* lda);

/* A = A + alpha*x*y^T + alpha*y*x^T on a triangle.
 *
 *     A(N:LDA,N)  inout  the matrix, of which the triangle UPLO is changed
 *
 *     TERMINAL 1  N < 0
 *     TERMINAL 2  LDA < max(1,N)
 *     TERMINAL 3  UPLO is not U or L
 *     TERMINAL 4  INCX = 0
 *     TERMINAL 5  INCY = 0
 */
void SSYR2(const char* uplo, const int32_t* n, const float* alpha, const float* x, const int32_t* incx,
           const float* y, const int32_t* incy, float* a, const int32_t* lda);
void DSYR2(const char* uplo, const int32_t* n, const double* alpha, const double* x, const int32_t* incx,
           const double* y, const int32_t* incy, double* a, const int32_t* lda);

/* A = A + alpha*x*y^H + conj(alpha)*y*x^H on a triangle. The diagonal becomes real. The errors are those of
 * SSYR2.
 *
 *     A(N:LDA,N)  inout  the matrix, of which the triangle UPLO is changed
 */
void CHER2(const char* uplo, const int32_t* n, const orvel_complex* alpha, const orvel_complex* x,
           const int32_t* incx, const orvel_complex* y, const int32_t* incy, orvel_complex* a,
           const int32_t* lda);
void ZHER2(const char* uplo, const int32_t* n, const orvel_dcomplex* alpha, const orvel_dcomplex* x,
           const int32_t* incx, const orvel_dcomplex* y, const int32_t* incy, orvel_dcomplex* a,
           const int32_t* lda);

/* ---- level 3 -------------------------------------------------------------------------------------------
 *
 * The lower-case Fortran names of these are in liborvel_blas, so that loading liborvel never takes over
 * another library's kernels.
 *
 * Time: of the order of the number of multiplications.
 */

/* C = alpha*op(A)*op(B) + beta*C. beta*C is formed first; C is not read when beta = 0.
 *
 *     A(RA:LDA,KA)  in     the matrix, op(A) of M rows and K columns
 *     RA            =      M if TRANSA = N, else K
 *     KA            =      K if TRANSA = N, else M
 *     B(RB:LDB,KB)  in     the matrix, op(B) of K rows and N columns
 *     RB            =      K if TRANSB = N, else N
 *     KB            =      N if TRANSB = N, else K
 *     C(M:LDC,N)    inout  the matrix, of M rows
 *
 *     TERMINAL 1    M < 0
 *     TERMINAL 2    N < 0
 *     TERMINAL 3    K < 0
 *     TERMINAL 4    LDC < max(1,M)
 *     TERMINAL 5    TRANSA = N and LDA < max(1,M)
 *     TERMINAL 6    TRANSA = T or C and LDA < max(1,K)
 *     TERMINAL 7    TRANSA is not N, T or C
 *     TERMINAL 8    TRANSB = N and LDB < max(1,K)
 *     TERMINAL 9    TRANSB = T or C and LDB < max(1,N)
 *     TERMINAL 10   TRANSB is not N, T or C
 */
void SGEMM(const char* transa, const char* transb, const int32_t* m, const int32_t* n, const int32_t* k,
           const float* alpha, const float* a, const int32_t* lda, const float* b, const int32_t* ldb,
           const float* beta, float* c, const int32_t* ldc);
void DGEMM(const char* transa, const char* transb, const int32_t* m, const int32_t* n, const int32_t* k,
           const double* alpha, const double* a, const int32_t* lda, const double* b, const int32_t* ldb,
           const double* beta, double* c, const int32_t* ldc);
void CGEMM(const char* transa, const char* transb, const int32_t* m, const int32_t* n, const int32_t* k,
           const orvel_complex* alpha, const orvel_complex* a, const int32_t* lda, const orvel_complex* b,
           const int32_t* ldb, const orvel_complex* beta, orvel_complex* c, const int32_t* ldc);
void ZGEMM(const char* transa, const char* transb, const int32_t* m, const int32_t* n, const int32_t* k,
           const orvel_dcomplex* alpha, const orvel_dcomplex* a, const int32_t* lda, const orvel_dcomplex* b,
           const int32_t* ldb, const orvel_dcomplex* beta, orvel_dcomplex* c, const int32_t* ldc);

/* C = alpha*A*B + beta*C or alpha*B*A + beta*C, A symmetric.
 *
 *     A(KA:LDA,KA)  in     the matrix, of which the triangle UPLO is read
 *     KA            =      M if SIDE = L, else N
 *     B(M:LDB,N)    in     the matrix, of M rows
 *     C(M:LDC,N)    inout  the matrix, of M rows
 *
 *     TERMINAL 1    M < 0
 *     TERMINAL 2    N < 0
 *     TERMINAL 3    LDC < max(1,M)
 *     TERMINAL 4    SIDE = L and LDA < max(1,M)
 *     TERMINAL 5    SIDE = R and LDA < max(1,N)
 *     TERMINAL 6    SIDE is not L or R
 *     TERMINAL 7    LDB < max(1,M)
 *     TERMINAL 8    UPLO is not U or L
 */
void SSYMM(const char* side, const char* uplo, const int32_t* m, const int32_t* n, const float* alpha,
           const float* a, const int32_t* lda, const float* b, const int32_t* ldb, const float* beta,
           float* c, const int32_t* ldc);
void DSYMM(const char* side, const char* uplo, const int32_t* m, const int32_t* n, const double* alpha,
           const double* a, const int32_t* lda, const double* b, const int32_t* ldb, const double* beta,
           double* c, const int32_t* ldc);
void CSYMM(const char* side, const char* uplo, const int32_t* m, const int32_t* n, const orvel_complex* alpha,
           const orvel_complex* a, const int32_t* lda, const orvel_complex* b, const int32_t* ldb,
           const orvel_complex* beta, orvel_complex* c, const int32_t* ldc);
void ZSYMM(const char* side, const char* uplo, const int32_t* m, const int32_t* n,
           const orvel_dcomplex* alpha, const orvel_dcomplex* a, const int32_t* lda, const orvel_dcomplex* b,
           const int32_t* ldb, const orvel_dcomplex* beta, orvel_dcomplex* c, const int32_t* ldc);

/* C = alpha*A*B + beta*C or alpha*B*A + beta*C, A Hermitian. Imaginary parts on the diagonal are taken as
 * zero. The errors are those of SSYMM.
 *
 *     A(KA:LDA,KA)  in     the matrix, of which the triangle UPLO is read
 *     KA            =      M if SIDE = L, else N
 *     B(M:LDB,N)    in     the matrix, of M rows
 *     C(M:LDC,N)    inout  the matrix, of M rows
 */
void CHEMM(const char* side, const char* uplo, const int32_t* m, const int32_t* n, const orvel_complex* alpha,
           const orvel_complex* a, const int32_t* lda, const orvel_complex* b, const int32_t* ldb,
           const orvel_complex* beta, orvel_complex* c, const int32_t* ldc);
void ZHEMM(const char* side, const char* uplo, const int32_t* m, const int32_t* n,
           const orvel_dcomplex* alpha, const orvel_dcomplex* a, const int32_t* lda, const orvel_dcomplex* b,
           const int32_t* ldb, const orvel_dcomplex* beta, orvel_dcomplex* c, const int32_t* ldc);

/* C = alpha*op(A)*op(A)^T + beta*C on a triangle, real.
 *
 *     A(RA:LDA,KA)  in     the matrix, op(A) of N rows and K columns
 *     RA            =      N if TRANS = N, else K
 *     KA            =      K if TRANS = N, else N
 *     C(N:LDC,N)    inout  the matrix, of which the triangle UPLO is changed
 *
 *     TERMINAL 1    N < 0
 *     TERMINAL 2    K < 0
 *     TERMINAL 3    LDC < max(1,N)
 *     TERMINAL 4    TRANS = N and LDA < max(1,N)
 *     TERMINAL 5    TRANS = T or C and LDA < max(1,K)
 *     TERMINAL 6    TRANS is not N, T or C
 *     TERMINAL 7    UPLO is not U or L
 */
void SSYRK(const char* uplo, const char* trans, const int32_t* n, const int32_t* k, const float* alpha,
           const float* a, const int32_t* lda, const float* beta, float* c, const int32_t* ldc);
void DSYRK(const char* uplo, const char* trans, const int32_t* n, const int32_t* k, const double* alpha,
           const double* a, const int32_t* lda, const double* beta, double* c, const int32_t* ldc);

/* C = alpha*op(A)*op(A)^T + beta*C on a triangle, complex.
 *
 *     TRANS         in     N: op(A) = A; T: its transpose
 *     A(RA:LDA,KA)  in     the matrix, op(A) of N rows and K columns
 *     RA            =      N if TRANS = N, else K
 *     KA            =      K if TRANS = N, else N
 *     C(N:LDC,N)    inout  the matrix, of which the triangle UPLO is changed
 *
 *     TERMINAL 1    N < 0
 *     TERMINAL 2    K < 0
 *     TERMINAL 3    LDC < max(1,N)
 *     TERMINAL 4    TRANS = N and LDA < max(1,N)
 *     TERMINAL 5    TRANS = T or C and LDA < max(1,K)
 *     TERMINAL 6    TRANS is not N or T
 *     TERMINAL 7    UPLO is not U or L
 */
void CSYRK(const char* uplo, const char* trans, const int32_t* n, const int32_t* k,
           const orvel_complex* alpha, const orvel_complex* a, const int32_t* lda, const orvel_complex* beta,
           orvel_complex* c, const int32_t* ldc);
void ZSYRK(const char* uplo, const char* trans, const int32_t* n, const int32_t* k,
           const orvel_dcomplex* alpha, const orvel_dcomplex* a, const int32_t* lda,
           const orvel_dcomplex* beta, orvel_dcomplex* c, const int32_t* ldc);

/* C = alpha*op(A)*op(A)^H + beta*C on a triangle, with real alpha and beta. The diagonal becomes real.
 *
 *     TRANS         in     N: op(A) = A; C: its conjugate transpose
 *     A(RA:LDA,KA)  in     the matrix, op(A) of N rows and K columns
 *     RA            =      N if TRANS = N, else K
 *     KA            =      K if TRANS = N, else N
 *     C(N:LDC,N)    inout  the matrix, of which the triangle UPLO is changed
 *
 *     TERMINAL 1    N < 0
 *     TERMINAL 2    K < 0
 *     TERMINAL 3    LDC < max(1,N)
 *     TERMINAL 4    TRANS = N and LDA < max(1,N)
 *     TERMINAL 5    TRANS = C and LDA < max(1,K)
 *     TERMINAL 6    TRANS is not N or C
 *     TERMINAL 7    UPLO is not U or L
 */
void CHERK(const char* uplo, const char* trans, const int32_t* n, const int32_t* k, const float* alpha,
           const orvel_complex* a, const int32_t* lda, const float* beta, orvel_complex* c,
           const int32_t* ldc);
void ZHERK(const char* uplo, const char* trans, const int32_t* n, const int32_t* k, const double* alpha,
           const orvel_dcomplex* a, const int32_t* lda, const double* beta, orvel_dcomplex* c,
           const int32_t* ldc);

/* C = alpha*op(A)*op(B)^T + alpha*op(B)*op(A)^T + beta*C on a triangle, real. Every element gets all its
 * products of the first kind before those of the second.
 *
 *     A(RA:LDA,KA)  in     the matrix, op(A) of N rows and K columns
 *     RA            =      N if TRANS = N, else K
 *     KA            =      K if TRANS = N, else N
 *     B(RA:LDB,KA)  in     the matrix, op(B) of N rows and K columns
 *     C(N:LDC,N)    inout  the matrix, of which the triangle UPLO is changed
 *
 *     TERMINAL 1    N < 0
 *     TERMINAL 2    K < 0
 *     TERMINAL 3    LDC < max(1,N)
 *     TERMINAL 4    TRANS = N and LDA < max(1,N)
 *     TERMINAL 5    TRANS = T or C and LDA < max(1,K)
 *     TERMINAL 6    TRANS is not N, T or C
 *     TERMINAL 7    TRANS = N and LDB < max(1,N)
 *     TERMINAL 8    TRANS = T or C and LDB < max(1,K)
 *     TERMINAL 9    UPLO is not U or L
 */
void SSYR2K(const char* uplo, const char* trans, const int32_t* n, const int32_t* k, const float* alpha,
            const float* a, const int32_t* lda, const float* b, const int32_t* ldb, const float* beta,
            float* c, const int32_t* ldc);
void DSYR2K(const char* uplo, const char* trans, const int32_t* n, const int32_t* k, const double* alpha,
            const double* a, const int32_t* lda, const double* b, const int32_t* ldb, const double* beta,
            double* c, const int32_t* ldc);

/* C = alpha*op(A)*op(B)^T + alpha*op(B)*op(A)^T + beta*C on a triangle, complex. Every element gets all its
 * products of the first kind before those of the second.
 *
 *     TRANS         in     N: op(A) = A; T: its transpose
 *     A(RA:LDA,KA)  in     the matrix, op(A) of N rows and K columns
 *     RA            =      N if TRANS = N, else K
 *     KA            =      K if TRANS = N, else N
 *     B(RA:LDB,KA)  in     the matrix, op(B) of N rows and K columns
 *     C(N:LDC,N)    inout  the matrix, of which the triangle UPLO is changed
 *
 *     TERMINAL 1    N < 0
 *     TERMINAL 2    K < 0
 *     TERMINAL 3    LDC < max(1,N)
 *     TERMINAL 4    TRANS = N and LDA < max(1,N)
 *     TERMINAL 5    TRANS = T or C and LDA < max(1,K)
 *     TERMINAL 6    TRANS is not N or T
 *     TERMINAL 7    TRANS = N and LDB < max(1,N)
 *     TERMINAL 8    TRANS = T or C and LDB < max(1,K)
 *     TERMINAL 9    UPLO is not U or L
 */
void CSYR2K(const char* uplo, const char* trans, const int32_t* n, const int32_t* k,
            const orvel_complex* alpha, const orvel_complex* a, const int32_t* lda, const orvel_complex* b,
            const int32_t* ldb, const orvel_complex* beta, orvel_complex* c, const int32_t* ldc);
void ZSYR2K(const char* uplo, const char* trans, const int32_t* n, const int32_t* k,
            const orvel_dcomplex* alpha, const orvel_dcomplex* a, const int32_t* lda, const orvel_dcomplex* b,
            const int32_t* ldb, const orvel_dcomplex* beta, orvel_dcomplex* c, const int32_t* ldc);

/* C = alpha*op(A)*op(B)^H + conj(alpha)*op(B)*op(A)^H + beta*C on a triangle, with a real beta. The
 * diagonal becomes real.
 *
 *     TRANS         in     N: op(A) = A; C: its conjugate transpose
 *     A(RA:LDA,KA)  in     the matrix, op(A) of N rows and K columns
 *     RA            =      N if TRANS = N, else K
 *     KA            =      K if TRANS = N, else N
 *     B(RA:LDB,KA)  in     the matrix, op(B) of N rows and K columns
 *     C(N:LDC,N)    inout  the matrix, of which the triangle UPLO is changed
 *
 *     TERMINAL 1    N < 0
 *     TERMINAL 2    K < 0
 *     TERMINAL 3    LDC < max(1,N)
 *     TERMINAL 4    TRANS = N and LDA < max(1,N)
 *     TERMINAL 5    TRANS = C and LDA < max(1,K)
 *     TERMINAL 6    TRANS is not N or C
 *     TERMINAL 7    TRANS = N and LDB < max(1,N)
 *     TERMINAL 8    TRANS = C and LDB < max(1,K)
 *     TERMINAL 9    UPLO is not U or L
 */
void CHER2K(const char* uplo, const char* trans, const int32_t* n, const int32_t* k,
            const orvel_complex* alpha, const orvel_complex* a, const int32_t* lda, const orvel_complex* b,
            const int32_t* ldb, const float* beta, orvel_complex* c, const int32_t* ldc);
void ZHER2K(const char* uplo, const char* trans, const int32_t* n, const int32_t* k,
            const orvel_dcomplex* alpha, const orvel_dcomplex* a, const int32_t* lda, const orvel_dcomplex* b,
            const int32_t* ldb, const double* beta, orvel_dcomplex* c, const int32_t* ldc);

/* B = alpha*op(A)*B or alpha*B*op(A), A triangular. B is not read when alpha = 0.
 *
 *     A(KA:LDA,KA)  in     the matrix, of which the triangle UPLO is read
 *     KA            =      M if SIDE = L, else N
 *     B(M:LDB,N)    inout  the matrix, of M rows
 *
 *     TERMINAL 1    M < 0
 *     TERMINAL 2    N < 0
 *     TERMINAL 3    LDB < max(1,M)
 *     TERMINAL 4    SIDE = L and LDA < max(1,M)
 *     TERMINAL 5    SIDE = R and LDA < max(1,N)
 *     TERMINAL 6    SIDE is not L or R
 *     TERMINAL 7    UPLO is not U or L
 *     TERMINAL 8    TRANSA is not N, T or C
 *     TERMINAL 9    DIAG is not U or N
 */
void STRMM(const char* side, const char* uplo, const char* transa, const char* diag, const int32_t* m,
           const int32_t* n, const float* alpha, const float* a, const int32_t* lda, float* b,
           const int32_t* ldb);
void DTRMM(const char* side, const char* uplo, const char* transa, const char* diag, const int32_t* m,
           const int32_t* n, const double* alpha, const double* a, const int32_t* lda, double* b,
           const int32_t* ldb);
void CTRMM(const char* side, const char* uplo, const char* transa, const char* diag, const int32_t* m,
           const int32_t* n, const orvel_complex* alpha, const orvel_complex* a, const int32_t* lda,
           orvel_complex* b, const int32_t* ldb);
void ZTRMM(const char* side, const char* uplo, const char* transa, const char* diag, const int32_t* m,
           const int32_t* n, const orvel_dcomplex* alpha, const orvel_dcomplex* a, const int32_t* lda,
           orvel_dcomplex* b, const int32_t* ldb);

/* Solves op(A)*X = alpha*B or X*op(A) = alpha*B; X takes the place of B. There is no test of singularity: a
 * zero on the diagonal divides. The errors are those of STRMM.
 *
 *     A(KA:LDA,KA)  in     the matrix, of which the triangle UPLO is read
 *     KA            =      M if SIDE = L, else N
 *     B(M:LDB,N)    inout  the matrix, of M rows
 */
void STRSM(const char* side, const char* uplo, const char* transa, const char* diag, const int32_t* m,
           const int32_t* n, const float* alpha, const float* a, const int32_t* lda, float* b,
           const int32_t* ldb);
void DTRSM(const char* side, const char* uplo, const char* transa, const char* diag, const int32_t* m,
           const int32_t* n, const double* alpha, const double* a, const int32_t* lda, double* b,
           const int32_t* ldb);
void CTRSM(const char* side, const char* uplo, const char* transa, const char* diag, const int32_t* m,
           const int32_t* n, const orvel_complex* alpha, const orvel_complex* a, const int32_t* lda,
           orvel_complex* b, const int32_t* ldb);
void ZTRSM(const char* side, const char* uplo, const char* transa, const char* diag, const int32_t* m,
           const int32_t* n, const orvel_dcomplex* alpha, const orvel_dcomplex* a, const int32_t* lda,
           orvel_dcomplex* b, const int32_t* ldb);

ORVEL_END

#endif
