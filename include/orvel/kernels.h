/* include/orvel/kernels.h - vector and matrix kernels
 *
 * A vector is given as (N, X, INCX): N elements INCX apart. In routines with two or three vectors a negative
 * increment runs backwards through the vector: its first element is X(1 + (1 - N)*INCX). A matrix is stored
 * by columns with a leading dimension. The first letter tells the precision: S single, D double, C single
 * complex, Z double complex.
 *
 * The upper-case names are in liborvel. The lower-case Fortran names of the standard kernels (dgemm_ and so
 * on) are in liborvel_blas, so that loading liborvel never takes over another library's kernels.
 *
 * Sums are formed from several partial sums; the result depends on the arguments and on the instruction set
 * of the machine, never on alignment, threads or time. No kernel keeps state.
 *
 * Source of the standard kernels: C. Lawson, R. Hanson, D. Kincaid, F. Krogh, Basic linear algebra
 * subprograms for Fortran usage, 1979; J. Dongarra, J. Du Croz, S. Hammarling, R. Hanson, An extended set,
 * 1988; J. Dongarra, J. Du Croz, I. Duff, S. Hammarling, A set of level 3 basic linear algebra subprograms,
 * 1990.
 */
#ifndef ORVEL_KERNELS_H
#define ORVEL_KERNELS_H

#include "orvel/types.h"

ORVEL_BEGIN

/* ---- level 1: vectors --------------------------------------------------------------------------- */

/* ---- vector utilities and accumulators of the library ------------------------------------------- */

/* ---- levels 2 and 3: matrices ------------------------------------------------------------------- */

/* Options are single letters in upper or lower case: TRANS N (op(A) = A), T (its transpose), C (its conjugate
 * transpose); UPLO U or L; DIAG U (unit) or N; SIDE L or R. A bad argument posts one TERMINAL error, the
 * first in the order of the codes given below, under the kernel's own name, and nothing is computed. All
 * products of an element are added in a fixed order, so that the size of a matrix or its position never
 * changes a result. An element of a matrix outside the part that is named is neither read nor written.
 * Vectors must not overlap the matrices and vectors that are written. A NaN enters a result where the formula
 * has it; with alpha = 0 the products, with beta = 0 the old values are not formed at all. */

/* LOGICAL: are the two letters equal, whatever their case? */
int32_t L1AME(const char* ca, const char* cb);

/* y = alpha*op(A)*x + beta*y. A(LDA,N) in, M rows; x has N elements for TRANS = N, else M; y the other
 * number. y is not read when beta = 0. Posts 1 (M), 2 (N), 3 (LDA), 4 (TRANS), 5 (INCX), 6 (INCY). */
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

/* The same for a band: A(LDA,N) in, element (i, j) at row KU + 1 + i - j, KL diagonals below and KU above the
 * main one. Posts 1 (M), 2 (N), 3 (KL), 4 (KU), 5 (LDA < KL + KU + 1), 6 (TRANS), 7 (INCX), 8 (INCY). */
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

/* y = alpha*A*x + beta*y, A symmetric: A(LDA,N) in, the triangle UPLO of it is read. Posts 1 (N), 2 (LDA), 3
 * (UPLO), 4 (INCX), 5 (INCY). */
void SSYMV(const char* uplo, const int32_t* n, const float* alpha, const float* a, const int32_t* lda,
           const float* x, const int32_t* incx, const float* beta, float* y, const int32_t* incy);
void DSYMV(const char* uplo, const int32_t* n, const double* alpha, const double* a, const int32_t* lda,
           const double* x, const int32_t* incx, const double* beta, double* y, const int32_t* incy);

/* The same, A Hermitian; imaginary parts on the diagonal are taken as zero. */
void CHEMV(const char* uplo, const int32_t* n, const orvel_complex* alpha, const orvel_complex* a,
           const int32_t* lda, const orvel_complex* x, const int32_t* incx, const orvel_complex* beta,
           orvel_complex* y, const int32_t* incy);
void ZHEMV(const char* uplo, const int32_t* n, const orvel_dcomplex* alpha, const orvel_dcomplex* a,
           const int32_t* lda, const orvel_dcomplex* x, const int32_t* incx, const orvel_dcomplex* beta,
           orvel_dcomplex* y, const int32_t* incy);

/* The same for a symmetric band of K diagonals on either side: A(LDA,N) in, for UPLO = L element (i, j) at
 * row 1 + i - j, for UPLO = U at row K + 1 + i - j. Posts 1 (N), 2 (K), 3 (LDA < K + 1), 4 (UPLO), 5 (INCX),
 * 6 (INCY). */
void SSBMV(const char* uplo, const int32_t* n, const int32_t* k, const float* alpha, const float* a,
           const int32_t* lda, const float* x, const int32_t* incx, const float* beta, float* y,
           const int32_t* incy);
void DSBMV(const char* uplo, const int32_t* n, const int32_t* k, const double* alpha, const double* a,
           const int32_t* lda, const double* x, const int32_t* incx, const double* beta, double* y,
           const int32_t* incy);

/* The same, the band Hermitian. */
void CHBMV(const char* uplo, const int32_t* n, const int32_t* k, const orvel_complex* alpha,
           const orvel_complex* a, const int32_t* lda, const orvel_complex* x, const int32_t* incx,
           const orvel_complex* beta, orvel_complex* y, const int32_t* incy);
void ZHBMV(const char* uplo, const int32_t* n, const int32_t* k, const orvel_dcomplex* alpha,
           const orvel_dcomplex* a, const int32_t* lda, const orvel_dcomplex* x, const int32_t* incx,
           const orvel_dcomplex* beta, orvel_dcomplex* y, const int32_t* incy);

/* x = op(A)*x, A triangular: A(LDA,N) in, the triangle UPLO of it is read, its diagonal not when DIAG = U.
 * Posts 1 (N), 2 (LDA), 3 (UPLO), 4 (TRANS), 5 (DIAG), 6 (INCX). */
void STRMV(const char* uplo, const char* trans, const char* diag, const int32_t* n, const float* a,
           const int32_t* lda, float* x, const int32_t* incx);
void DTRMV(const char* uplo, const char* trans, const char* diag, const int32_t* n, const double* a,
           const int32_t* lda, double* x, const int32_t* incx);
void CTRMV(const char* uplo, const char* trans, const char* diag, const int32_t* n, const orvel_complex* a,
           const int32_t* lda, orvel_complex* x, const int32_t* incx);
void ZTRMV(const char* uplo, const char* trans, const char* diag, const int32_t* n, const orvel_dcomplex* a,
           const int32_t* lda, orvel_dcomplex* x, const int32_t* incx);

/* Solves op(A)*x = b; x holds b on entry. No test of singularity: a zero on the diagonal divides. Posts as
 * TRMV. */
void STRSV(const char* uplo, const char* trans, const char* diag, const int32_t* n, const float* a,
           const int32_t* lda, float* x, const int32_t* incx);
void DTRSV(const char* uplo, const char* trans, const char* diag, const int32_t* n, const double* a,
           const int32_t* lda, double* x, const int32_t* incx);
void CTRSV(const char* uplo, const char* trans, const char* diag, const int32_t* n, const orvel_complex* a,
           const int32_t* lda, orvel_complex* x, const int32_t* incx);
void ZTRSV(const char* uplo, const char* trans, const char* diag, const int32_t* n, const orvel_dcomplex* a,
           const int32_t* lda, orvel_dcomplex* x, const int32_t* incx);

/* The same for a triangular band of K diagonals besides the main one, stored as in SBMV. Posts 1 (N), 2 (K),
 * 3 (LDA < K + 1), 4 (UPLO), 5 (TRANS), 6 (DIAG), 7 (INCX). */
void STBMV(const char* uplo, const char* trans, const char* diag, const int32_t* n, const int32_t* k,
           const float* a, const int32_t* lda, float* x, const int32_t* incx);
void DTBMV(const char* uplo, const char* trans, const char* diag, const int32_t* n, const int32_t* k,
           const double* a, const int32_t* lda, double* x, const int32_t* incx);
void CTBMV(const char* uplo, const char* trans, const char* diag, const int32_t* n, const int32_t* k,
           const orvel_complex* a, const int32_t* lda, orvel_complex* x, const int32_t* incx);
void ZTBMV(const char* uplo, const char* trans, const char* diag, const int32_t* n, const int32_t* k,
           const orvel_dcomplex* a, const int32_t* lda, orvel_dcomplex* x, const int32_t* incx);

/* Solves with a triangular band. Posts as TBMV. */
void STBSV(const char* uplo, const char* trans, const char* diag, const int32_t* n, const int32_t* k,
           const float* a, const int32_t* lda, float* x, const int32_t* incx);
void DTBSV(const char* uplo, const char* trans, const char* diag, const int32_t* n, const int32_t* k,
           const double* a, const int32_t* lda, double* x, const int32_t* incx);
void CTBSV(const char* uplo, const char* trans, const char* diag, const int32_t* n, const int32_t* k,
           const orvel_complex* a, const int32_t* lda, orvel_complex* x, const int32_t* incx);
void ZTBSV(const char* uplo, const char* trans, const char* diag, const int32_t* n, const int32_t* k,
           const orvel_dcomplex* a, const int32_t* lda, orvel_dcomplex* x, const int32_t* incx);

/* A = A + alpha*x*y^T. A(LDA,N) in and out, M rows. Posts 1 (M), 2 (N), 3 (LDA), 4 (INCX), 5 (INCY). */
void SGER(const int32_t* m, const int32_t* n, const float* alpha, const float* x, const int32_t* incx,
          const float* y, const int32_t* incy, float* a, const int32_t* lda);
void DGER(const int32_t* m, const int32_t* n, const double* alpha, const double* x, const int32_t* incx,
          const double* y, const int32_t* incy, double* a, const int32_t* lda);

/* The same for complex matrices. */
void CGERU(const int32_t* m, const int32_t* n, const orvel_complex* alpha, const orvel_complex* x,
           const int32_t* incx, const orvel_complex* y, const int32_t* incy, orvel_complex* a,
           const int32_t* lda);
void ZGERU(const int32_t* m, const int32_t* n, const orvel_dcomplex* alpha, const orvel_dcomplex* x,
           const int32_t* incx, const orvel_dcomplex* y, const int32_t* incy, orvel_dcomplex* a,
           const int32_t* lda);

/* A = A + alpha*x*y^H. */
void CGERC(const int32_t* m, const int32_t* n, const orvel_complex* alpha, const orvel_complex* x,
           const int32_t* incx, const orvel_complex* y, const int32_t* incy, orvel_complex* a,
           const int32_t* lda);
void ZGERC(const int32_t* m, const int32_t* n, const orvel_dcomplex* alpha, const orvel_dcomplex* x,
           const int32_t* incx, const orvel_dcomplex* y, const int32_t* incy, orvel_dcomplex* a,
           const int32_t* lda);

/* A = A + alpha*x*x^T, on the triangle UPLO of A(LDA,N). Posts 1 (N), 2 (LDA), 3 (UPLO), 4 (INCX). */
void SSYR(const char* uplo, const int32_t* n, const float* alpha, const float* x, const int32_t* incx,
          float* a, const int32_t* lda);
void DSYR(const char* uplo, const int32_t* n, const double* alpha, const double* x, const int32_t* incx,
          double* a, const int32_t* lda);

/* A = A + alpha*x*x^H with a real alpha; the diagonal becomes real. */
void CHER(const char* uplo, const int32_t* n, const float* alpha, const orvel_complex* x, const int32_t* incx,
          orvel_complex* a, const int32_t* lda);
void ZHER(const char* uplo, const int32_t* n, const double* alpha, const orvel_dcomplex* x,
          const int32_t* incx, orvel_dcomplex* a, const int32_t* lda);

/* A = A + alpha*x*y^T + alpha*y*x^T, on the triangle UPLO. Posts 1 (N), 2 (LDA), 3 (UPLO), 4 (INCX), 5
 * (INCY). */
void SSYR2(const char* uplo, const int32_t* n, const float* alpha, const float* x, const int32_t* incx,
           const float* y, const int32_t* incy, float* a, const int32_t* lda);
void DSYR2(const char* uplo, const int32_t* n, const double* alpha, const double* x, const int32_t* incx,
           const double* y, const int32_t* incy, double* a, const int32_t* lda);

/* A = A + alpha*x*y^H + conj(alpha)*y*x^H; the diagonal becomes real. */
void CHER2(const char* uplo, const int32_t* n, const orvel_complex* alpha, const orvel_complex* x,
           const int32_t* incx, const orvel_complex* y, const int32_t* incy, orvel_complex* a,
           const int32_t* lda);
void ZHER2(const char* uplo, const int32_t* n, const orvel_dcomplex* alpha, const orvel_dcomplex* x,
           const int32_t* incx, const orvel_dcomplex* y, const int32_t* incy, orvel_dcomplex* a,
           const int32_t* lda);

/* C = alpha*op(A)*op(B) + beta*C. C(LDC,N) in and out, M rows; op(A) has M rows and K columns, op(B) K rows
 * and N columns. beta*C is formed first; C is not read when beta = 0. Posts 1 (M), 2 (N), 3 (K), 4 (LDC), 5
 * (LDA, TRANSA = N), 6 (LDA, TRANSA = T or C), 7 (TRANSA), 8 (LDB, TRANSB = N), 9 (LDB, TRANSB = T or C), 10
 * (TRANSB). */
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

/* C = alpha*A*B + beta*C (SIDE = L) or alpha*B*A + beta*C (SIDE = R), A symmetric, its triangle UPLO is read;
 * B and C have M rows and N columns. Posts 1 (M), 2 (N), 3 (LDC), 4 (LDA, SIDE = L), 5 (LDA, SIDE = R), 6
 * (SIDE), 7 (LDB), 8 (UPLO). */
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

/* The same, A Hermitian; imaginary parts on the diagonal are taken as zero. */
void CHEMM(const char* side, const char* uplo, const int32_t* m, const int32_t* n, const orvel_complex* alpha,
           const orvel_complex* a, const int32_t* lda, const orvel_complex* b, const int32_t* ldb,
           const orvel_complex* beta, orvel_complex* c, const int32_t* ldc);
void ZHEMM(const char* side, const char* uplo, const int32_t* m, const int32_t* n,
           const orvel_dcomplex* alpha, const orvel_dcomplex* a, const int32_t* lda, const orvel_dcomplex* b,
           const int32_t* ldb, const orvel_dcomplex* beta, orvel_dcomplex* c, const int32_t* ldc);

/* C = alpha*op(A)*op(A)^T + beta*C on the triangle UPLO of C(LDC,N); op(A) has N rows and K columns. TRANS:
 * N, T or C for real, N or T for complex matrices. Posts 1 (N), 2 (K), 3 (LDC), 4 (LDA, TRANS = N), 5 (LDA,
 * TRANS = T or C), 6 (TRANS), 7 (UPLO). */
void SSYRK(const char* uplo, const char* trans, const int32_t* n, const int32_t* k, const float* alpha,
           const float* a, const int32_t* lda, const float* beta, float* c, const int32_t* ldc);
void DSYRK(const char* uplo, const char* trans, const int32_t* n, const int32_t* k, const double* alpha,
           const double* a, const int32_t* lda, const double* beta, double* c, const int32_t* ldc);
void CSYRK(const char* uplo, const char* trans, const int32_t* n, const int32_t* k,
           const orvel_complex* alpha, const orvel_complex* a, const int32_t* lda, const orvel_complex* beta,
           orvel_complex* c, const int32_t* ldc);
void ZSYRK(const char* uplo, const char* trans, const int32_t* n, const int32_t* k,
           const orvel_dcomplex* alpha, const orvel_dcomplex* a, const int32_t* lda,
           const orvel_dcomplex* beta, orvel_dcomplex* c, const int32_t* ldc);

/* C = alpha*op(A)*op(A)^H + beta*C with real alpha and beta; TRANS: N or C. The diagonal becomes real. Posts
 * as SYRK. */
void CHERK(const char* uplo, const char* trans, const int32_t* n, const int32_t* k, const float* alpha,
           const orvel_complex* a, const int32_t* lda, const float* beta, orvel_complex* c,
           const int32_t* ldc);
void ZHERK(const char* uplo, const char* trans, const int32_t* n, const int32_t* k, const double* alpha,
           const orvel_dcomplex* a, const int32_t* lda, const double* beta, orvel_dcomplex* c,
           const int32_t* ldc);

/* C = alpha*op(A)*op(B)^T + alpha*op(B)*op(A)^T + beta*C on the triangle UPLO. Every element gets all its
 * products of the first kind before those of the second. Posts 1 to 6 as SYRK, 7 (LDB, TRANS = N), 8 (LDB,
 * TRANS = T or C), 9 (UPLO). */
void SSYR2K(const char* uplo, const char* trans, const int32_t* n, const int32_t* k, const float* alpha,
            const float* a, const int32_t* lda, const float* b, const int32_t* ldb, const float* beta,
            float* c, const int32_t* ldc);
void DSYR2K(const char* uplo, const char* trans, const int32_t* n, const int32_t* k, const double* alpha,
            const double* a, const int32_t* lda, const double* b, const int32_t* ldb, const double* beta,
            double* c, const int32_t* ldc);
void CSYR2K(const char* uplo, const char* trans, const int32_t* n, const int32_t* k,
            const orvel_complex* alpha, const orvel_complex* a, const int32_t* lda, const orvel_complex* b,
            const int32_t* ldb, const orvel_complex* beta, orvel_complex* c, const int32_t* ldc);
void ZSYR2K(const char* uplo, const char* trans, const int32_t* n, const int32_t* k,
            const orvel_dcomplex* alpha, const orvel_dcomplex* a, const int32_t* lda, const orvel_dcomplex* b,
            const int32_t* ldb, const orvel_dcomplex* beta, orvel_dcomplex* c, const int32_t* ldc);

/* C = alpha*op(A)*op(B)^H + conj(alpha)*op(B)*op(A)^H + beta*C with a real beta; TRANS: N or C. The diagonal
 * becomes real. Posts as SYR2K. */
void CHER2K(const char* uplo, const char* trans, const int32_t* n, const int32_t* k,
            const orvel_complex* alpha, const orvel_complex* a, const int32_t* lda, const orvel_complex* b,
            const int32_t* ldb, const float* beta, orvel_complex* c, const int32_t* ldc);
void ZHER2K(const char* uplo, const char* trans, const int32_t* n, const int32_t* k,
            const orvel_dcomplex* alpha, const orvel_dcomplex* a, const int32_t* lda, const orvel_dcomplex* b,
            const int32_t* ldb, const double* beta, orvel_dcomplex* c, const int32_t* ldc);

/* B = alpha*op(A)*B (SIDE = L) or alpha*B*op(A) (SIDE = R), A triangular, its triangle UPLO is read, its
 * diagonal not when DIAG = U. B(LDB,N) in and out, M rows; not read when alpha = 0. Posts 1 (M), 2 (N), 3
 * (LDB), 4 (LDA, SIDE = L), 5 (LDA, SIDE = R), 6 (SIDE), 7 (UPLO), 8 (TRANSA), 9 (DIAG). */
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

/* Solves op(A)*X = alpha*B (SIDE = L) or X*op(A) = alpha*B (SIDE = R); X takes the place of B. No test of
 * singularity: a zero on the diagonal divides. Posts as TRMM. */
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
