/* include/orvel/linsys.h - dense linear systems
 *
 * Matrices are by columns with a leading dimension, arrays contiguous, indices one-based. Real members have
 * RG in their names, complex ones CG; a leading D means double precision. The second character 2 marks the
 * workers, which take the scratch of their fronts as arguments; complex members take a complex WK of the
 * same length. Every routine frees its scratch before it returns. Sizes are formed in 64 bits; storage that
 * cannot be had posts TERMINAL 2 of the front.
 *
 *     N                 in       the order of A
 *     A(N:LDA,N)        in       the matrix
 *     LDA               in       the leading dimension of A, at least N
 *     B(N)              in       the right-hand side
 *     IPATH             in       1: A*X = B; 2: A^H*X = B
 *     X(N)              out      the solution; may be B
 *     FACT(N:LDFAC,N)   in       the factorization of LFTRG or LFCRG
 *     LDFAC             in       the leading dimension of FACT, at least N
 *     IPVT(N)           in       the interchanges
 *     AINV(N:LDAINV,N)  out      the inverse; may be A where LDAINV = LDA
 *     LDAINV            in       the leading dimension of AINV, at least N
 *     RCOND             out      an estimate of the reciprocal of the L1 condition number
 *     WK(N)             scratch
 *
 *     cause             N < 1
 *                       "The number of equations must be positive while N = %(I1) is given."
 *     cause             N < 1: the order
 *                       "The order of the matrix must be positive while N = %(I1) is given."
 *     cause             N > LDA
 *                       "The order of the matrix must be less than or equal to its leading dimension while N
 *                       = %(I1) and LDA = %(I2) are given."
 *     cause             N > LDFAC
 *                       "The order of the matrix must be less than or equal to its leading dimension while N
 *                       = %(I1) and LDFAC = %(I2) are given."
 *     cause             N > LDAINV
 *                       "The order of the matrix must be less than or equal to its leading dimension while N
 *                       = %(I1) and LDAINV = %(I2) are given."
 *     cause             IPATH is neither 1 nor 2
 *                       "IPATH must be either 1 or 2 while a value of %(I1) is given."
 *     cause             an element of IPVT is not a row, 1 to N
 *                       "The elements of IPVT must be rows of the matrix, from 1 to N = %(I1), while
 *                       IPVT(%(I2)) = %(I3) is given."
 *                       -> pass FACT and IPVT of one factorization
 *     cause             no storage
 *                       "The required storage cannot be allocated.  The workspace is based on N, where N =
 *                       %(I1)."
 *                       -> use the worker with scratch of your own
 *     cause             no storage for a copy of B
 *                       "The required storage cannot be allocated.  The workspace is based on N, where N =
 *                       %(I1)."
 *                       -> give X an array of its own
 *     cause             option 17 is neither 1 nor 2
 *                       "The flag value for computing the matrix condition number must be 1 or 2 while %(I1)
 *                       is given."
 *                       -> set it with IUMAG
 *     cause             A is singular
 *                       "The input matrix is singular.  Some of the diagonal elements of the upper triangular
 *                       matrix U of the LU factorization are close to zero."
 *                       -> leave out the row or column that depends on others
 *     cause             RCOND is not above eps
 *                       "The matrix is too ill-conditioned. An estimate of the reciprocal of its L1 condition
 *                       number is RCOND = %(R1).  The solution might not be accurate."
 *                       -> scale rows and columns, or use the double member
 *
 * NaN: a NaN in A gives a singular matrix or NaN in the results, a NaN in B NaN in X.
 *
 * Time: solving and factoring take 2/3 N^3 operations, an inverse 2 N^3, a solve from a factorization and a
 * step of refinement 2 N^2 (complex: four times as many).
 *
 * Source: J. Dongarra, C. Moler, J. Bunch and G. Stewart, LINPACK Users' Guide, 1979; G. H. Golub, C. F.
 * Van Loan, Matrix Computations, Johns Hopkins University Press, 1996.
 */
#ifndef ORVEL_LINSYS_H
#define ORVEL_LINSYS_H

#include "orvel/types.h"

ORVEL_BEGIN

/* Solves A*X = B or A^H*X = B with iterative refinement. The result is as accurate as the working precision
 * allows while RCOND is above 100 eps. The workers make all their checks even when one has failed.
 *
 *     FACT(N,N)   out  the factorization afterwards, see LFTRG
 *     IPVT(N)     out  the interchanges
 *
 *     TERMINAL 1  N < 1
 *     TERMINAL 2  N > LDA
 *     TERMINAL 2  no storage
 *     TERMINAL 3  IPATH is neither 1 nor 2
 *     TERMINAL 4  option 17 is neither 1 nor 2
 *     TERMINAL 5  no storage for a copy of B
 *     FATAL 2     A is singular
 *     WARNING 1   RCOND is not above eps, or the refinement makes no progress
 *                 "The matrix is too ill-conditioned. An estimate of the reciprocal of its L1 condition
 *                 number is RCOND = %(R1).  The solution might not be accurate."
 *                 -> scale rows and columns, or use the double member
 *
 * After an error: X is untouched after TERMINAL and FATAL errors, and the last iterate after a WARNING.
 */
void LSARG(const int32_t* n, const float* a, const int32_t* lda, const float* b, const int32_t* ipath,
           float* x);
void DLSARG(const int32_t* n, const double* a, const int32_t* lda, const double* b, const int32_t* ipath,
            double* x);
void LSACG(const int32_t* n, const orvel_complex* a, const int32_t* lda, const orvel_complex* b,
           const int32_t* ipath, orvel_complex* x);
void DLSACG(const int32_t* n, const orvel_dcomplex* a, const int32_t* lda, const orvel_dcomplex* b,
            const int32_t* ipath, orvel_dcomplex* x);
void L2ARG(const int32_t* n, const float* a, const int32_t* lda, const float* b, const int32_t* ipath,
           float* x, float* fact, int32_t* ipvt, float* wk);
void DL2ARG(const int32_t* n, const double* a, const int32_t* lda, const double* b, const int32_t* ipath,
            double* x, double* fact, int32_t* ipvt, double* wk);
void L2ACG(const int32_t* n, const orvel_complex* a, const int32_t* lda, const orvel_complex* b,
           const int32_t* ipath, orvel_complex* x, orvel_complex* fact, int32_t* ipvt, orvel_complex* wk);
void DL2ACG(const int32_t* n, const orvel_dcomplex* a, const int32_t* lda, const orvel_dcomplex* b,
            const int32_t* ipath, orvel_dcomplex* x, orvel_dcomplex* fact, int32_t* ipvt, orvel_dcomplex* wk);

/* Solves A*X = B or A^H*X = B without refinement. The worker uses FACT with a leading dimension of N + P
 * where M divides N, else of N, P and M being the values of option 16; the initial P is 0, and a program
 * that sets another calls the worker with FACT(N + P, N).
 *
 *     FACT(N,N)   out  the factorization afterwards, see LFTRG
 *     IPVT(N)     out  the interchanges
 *
 *     TERMINAL 1  N < 1
 *     TERMINAL 2  N > LDA
 *     TERMINAL 2  no storage
 *     TERMINAL 3  IPATH is neither 1 nor 2
 *     TERMINAL 4  option 17 is neither 1 nor 2
 *     TERMINAL 4  option 16 has P < 0 or M < 1
 *                 "The option values 3,4 must be respectively not less than zero, and non-negative while
 *                 %(I1) and %(I2) are given."
 *                 -> set it with IUMAG
 *     FATAL 2     A is singular
 *     WARNING 1   RCOND is not above eps
 *
 * After an error: X is untouched after TERMINAL and FATAL errors.
 */
void LSLRG(const int32_t* n, const float* a, const int32_t* lda, const float* b, const int32_t* ipath,
           float* x);
void DLSLRG(const int32_t* n, const double* a, const int32_t* lda, const double* b, const int32_t* ipath,
            double* x);
void LSLCG(const int32_t* n, const orvel_complex* a, const int32_t* lda, const orvel_complex* b,
           const int32_t* ipath, orvel_complex* x);
void DLSLCG(const int32_t* n, const orvel_dcomplex* a, const int32_t* lda, const orvel_dcomplex* b,
            const int32_t* ipath, orvel_dcomplex* x);
void L2LRG(const int32_t* n, const float* a, const int32_t* lda, const float* b, const int32_t* ipath,
           float* x, float* fact, int32_t* ipvt, float* wk);
void DL2LRG(const int32_t* n, const double* a, const int32_t* lda, const double* b, const int32_t* ipath,
            double* x, double* fact, int32_t* ipvt, double* wk);
void L2LCG(const int32_t* n, const orvel_complex* a, const int32_t* lda, const orvel_complex* b,
           const int32_t* ipath, orvel_complex* x, orvel_complex* fact, int32_t* ipvt, orvel_complex* wk);
void DL2LCG(const int32_t* n, const orvel_dcomplex* a, const int32_t* lda, const orvel_dcomplex* b,
            const int32_t* ipath, orvel_dcomplex* x, orvel_dcomplex* fact, int32_t* ipvt, orvel_dcomplex* wk);

/* Factors a matrix, as LFTRG, and estimates its condition number. RCOND = 1 where it is not estimated
 * (option 17 is 1, or A is singular). The estimate is seldom below the true value, and may be above it by a
 * factor of 10.
 *
 *     FACT(N:LDFAC,N)  out  the factorization; may be A where LDFAC = LDA
 *     IPVT(N)          out  the interchanges
 *
 *     TERMINAL 1       N < 1: the order
 *     TERMINAL 2       N > LDA
 *     TERMINAL 2       no storage
 *     TERMINAL 3       N > LDFAC
 *     TERMINAL 4       option 17 is neither 1 nor 2
 *     FATAL 2          A is singular
 *     WARNING 1        RCOND is not above eps: the matrix
 *                      "The matrix is algorithmically singular.  An estimate of the reciprocal of its L1
 *                      condition number is RCOND = %(R1)."
 *
 * After an error: FACT and IPVT are untouched after a TERMINAL error, and hold what was reached after FATAL
 * 2.
 *
 * Source: A. Cline, C. Moler, G. Stewart and J. Wilkinson, An estimate for the condition number of a
 * matrix, 1979.
 */
void LFCRG(const int32_t* n, const float* a, const int32_t* lda, float* fact, const int32_t* ldfac,
           int32_t* ipvt, float* rcond);
void DLFCRG(const int32_t* n, const double* a, const int32_t* lda, double* fact, const int32_t* ldfac,
            int32_t* ipvt, double* rcond);
void LFCCG(const int32_t* n, const orvel_complex* a, const int32_t* lda, orvel_complex* fact,
           const int32_t* ldfac, int32_t* ipvt, float* rcond);
void DLFCCG(const int32_t* n, const orvel_dcomplex* a, const int32_t* lda, orvel_dcomplex* fact,
            const int32_t* ldfac, int32_t* ipvt, double* rcond);
void L2CRG(const int32_t* n, const float* a, const int32_t* lda, float* fact, const int32_t* ldfac,
           int32_t* ipvt, float* rcond, float* wk);
void DL2CRG(const int32_t* n, const double* a, const int32_t* lda, double* fact, const int32_t* ldfac,
            int32_t* ipvt, double* rcond, double* wk);
void L2CCG(const int32_t* n, const orvel_complex* a, const int32_t* lda, orvel_complex* fact,
           const int32_t* ldfac, int32_t* ipvt, float* rcond, orvel_complex* wk);
void DL2CCG(const int32_t* n, const orvel_dcomplex* a, const int32_t* lda, orvel_dcomplex* fact,
            const int32_t* ldfac, int32_t* ipvt, double* rcond, orvel_dcomplex* wk);

/* Factors a matrix by elimination with row-scaled partial pivoting.
 *
 *     FACT  upper triangle with diagonal: U
 *           below it, column k: the negated multipliers of step k, in the row order of step k
 *     IPVT  row that was interchanged with row k at step k, one-based; IPVT(N) = N
 *
 * The pivot of a step is the row with the largest |FACT(i,k)| * S(i), S(i) = 1 / max |A(i,j)| (1 where the
 * row is below the smallest number with a reciprocal); the lowest row of equal ones. Magnitudes of complex
 * numbers are |Re| + |Im|. A step whose pivot is no larger than that smallest number leaves its column as
 * it is, and the elimination goes on. An element gets its products in ascending order of the steps, so that
 * the result has the same bits whatever the size.
 *
 *     FACT(N:LDFAC,N)  out      the factorization; may be A where LDFAC = LDA
 *     IPVT(N)          out      the interchanges
 *     WK(N)            scratch  holds S, interchanged with the rows (in the storage of its first N reals in
 *                               complex members)
 *
 *     TERMINAL 1       N < 1: the order
 *     TERMINAL 2       N > LDA
 *     TERMINAL 2       no storage
 *     TERMINAL 3       N > LDFAC
 *     FATAL 2          A is singular
 *
 * After an error: only the first TERMINAL error is posted, and FACT and IPVT are untouched; after FATAL 2
 * they hold what was reached.
 *
 * Source: J. Dongarra, C. Moler, J. Bunch and G. Stewart, LINPACK Users' Guide, 1979.
 */
void LFTRG(const int32_t* n, const float* a, const int32_t* lda, float* fact, const int32_t* ldfac,
           int32_t* ipvt);
void DLFTRG(const int32_t* n, const double* a, const int32_t* lda, double* fact, const int32_t* ldfac,
            int32_t* ipvt);
void LFTCG(const int32_t* n, const orvel_complex* a, const int32_t* lda, orvel_complex* fact,
           const int32_t* ldfac, int32_t* ipvt);
void DLFTCG(const int32_t* n, const orvel_dcomplex* a, const int32_t* lda, orvel_dcomplex* fact,
            const int32_t* ldfac, int32_t* ipvt);
void L2TRG(const int32_t* n, const float* a, const int32_t* lda, float* fact, const int32_t* ldfac,
           int32_t* ipvt, float* wk);
void DL2TRG(const int32_t* n, const double* a, const int32_t* lda, double* fact, const int32_t* ldfac,
            int32_t* ipvt, double* wk);
void L2TCG(const int32_t* n, const orvel_complex* a, const int32_t* lda, orvel_complex* fact,
           const int32_t* ldfac, int32_t* ipvt, orvel_complex* wk);
void DL2TCG(const int32_t* n, const orvel_dcomplex* a, const int32_t* lda, orvel_dcomplex* fact,
            const int32_t* ldfac, int32_t* ipvt, orvel_dcomplex* wk);

/* Solves A*X = B or A^H*X = B from the factorization of LFTRG or LFCRG.
 *
 *     TERMINAL 1  N < 1
 *     TERMINAL 2  N > LDFAC
 *     TERMINAL 3  IPATH = 1, and the diagonal of U has an element close to zero
 *                 "The input matrix is singular.  Some of the diagonal elements of the upper triangular
 *                 matrix U of the LU factorization are close to zero."
 *     TERMINAL 4  IPATH = 2, and the diagonal of U has an element close to zero
 *                 "The input matrix is singular.  Some of the diagonal elements of the upper triangular
 *                 matrix U of the LU factorization are close to zero."
 *     TERMINAL 5  IPATH is neither 1 nor 2
 *     TERMINAL 6  an element of IPVT is not a row, 1 to N
 *
 * After an error: X is untouched after 1, 2, 5 and 6.
 */
void LFSRG(const int32_t* n, const float* fact, const int32_t* ldfac, const int32_t* ipvt, const float* b,
           const int32_t* ipath, float* x);
void DLFSRG(const int32_t* n, const double* fact, const int32_t* ldfac, const int32_t* ipvt, const double* b,
            const int32_t* ipath, double* x);
void LFSCG(const int32_t* n, const orvel_complex* fact, const int32_t* ldfac, const int32_t* ipvt,
           const orvel_complex* b, const int32_t* ipath, orvel_complex* x);
void DLFSCG(const int32_t* n, const orvel_dcomplex* fact, const int32_t* ldfac, const int32_t* ipvt,
            const orvel_dcomplex* b, const int32_t* ipath, orvel_dcomplex* x);

/* Solves as LFSRG and refines the solution, with residuals of A in twice the working precision, until a
 * correction is below eps or does not shrink. A WARNING also stands for an element of the residual that is
 * larger than 4(N+1) eps (|A| |X| + |B|) afterwards, as when growth in the elimination has spoiled FACT;
 * this may take one more pass over A. Passes up the errors 3 and 4 of LFSRG, which end it.
 *
 *     RES(N)      out  the last correction
 *
 *     TERMINAL 1  N < 1
 *     TERMINAL 2  N > LDA
 *     TERMINAL 3  N > LDFAC
 *     TERMINAL 4  IPATH is neither 1 nor 2
 *     TERMINAL 5  no storage for a copy of B
 *     TERMINAL 6  an element of IPVT is not a row, 1 to N
 *     WARNING 2   the refinement makes no progress
 *                 "The matrix is too ill-conditioned for iterative refinement to be effective."
 *                 -> scale rows and columns, or use the double member
 *
 * After an error: X is untouched after a TERMINAL error of this routine, and the last iterate after the
 * WARNING.
 *
 * Source: R. Skeel, Iterative refinement implies numerical stability for Gaussian elimination, 1980.
 */
void LFIRG(const int32_t* n, const float* a, const int32_t* lda, const float* fact, const int32_t* ldfac,
           const int32_t* ipvt, const float* b, const int32_t* ipath, float* x, float* res);
void DLFIRG(const int32_t* n, const double* a, const int32_t* lda, const double* fact, const int32_t* ldfac,
            const int32_t* ipvt, const double* b, const int32_t* ipath, double* x, double* res);
void LFICG(const int32_t* n, const orvel_complex* a, const int32_t* lda, const orvel_complex* fact,
           const int32_t* ldfac, const int32_t* ipvt, const orvel_complex* b, const int32_t* ipath,
           orvel_complex* x, orvel_complex* res);
void DLFICG(const int32_t* n, const orvel_dcomplex* a, const int32_t* lda, const orvel_dcomplex* fact,
            const int32_t* ldfac, const int32_t* ipvt, const orvel_dcomplex* b, const int32_t* ipath,
            orvel_dcomplex* x, orvel_dcomplex* res);

/* Determinant DET1 * 10^DET2 from a factorization.
 *
 *     DET1        out  the mantissa, 1 <= |DET1| < 10, complex magnitudes being |Re| + |Im|; 0 when a
 *                      diagonal element of U is zero; an infinite one stays as it is
 *     DET2        out  the exponent; that reached before a zero
 *
 *     TERMINAL 1  N < 1: the order
 *     TERMINAL 2  N > LDFAC
 *     TERMINAL 3  an element of IPVT is not a row, 1 to N
 *
 * After an error: DET1 and DET2 are unchanged; only the first error is posted.
 *
 * Time: of the order N.
 */
void LFDRG(const int32_t* n, const float* fact, const int32_t* ldfac, const int32_t* ipvt, float* det1,
           float* det2);
void DLFDRG(const int32_t* n, const double* fact, const int32_t* ldfac, const int32_t* ipvt, double* det1,
            double* det2);
void LFDCG(const int32_t* n, const orvel_complex* fact, const int32_t* ldfac, const int32_t* ipvt,
           orvel_complex* det1, float* det2);
void DLFDCG(const int32_t* n, const orvel_dcomplex* fact, const int32_t* ldfac, const int32_t* ipvt,
            orvel_dcomplex* det1, double* det2);

/* Inverse of a matrix.
 *
 *     WK(N+N*(N-1)/2)  scratch
 *     IWK(N)           scratch
 *
 *     TERMINAL 1       N < 1: the order
 *     TERMINAL 2       N > LDA
 *     TERMINAL 2       no storage: the scratch
 *                      "The required storage cannot be allocated."
 *                      -> use the worker with scratch of your own
 *     TERMINAL 3       N > LDAINV
 *     TERMINAL 4       option 17 is neither 1 nor 2
 *     FATAL 2          A is singular
 *     WARNING 1        RCOND is not above eps: the inverse
 *                      "The matrix is too ill-conditioned. An estimate of the reciprocal of its L1
 *                      condition number is RCOND = %(R1).  The inverse might not be accurate."
 *                      -> scale rows and columns, or use the double member
 *
 * After an error: AINV is untouched after a TERMINAL error, and holds the factorization reached after FATAL
 * 2.
 */
void LINRG(const int32_t* n, const float* a, const int32_t* lda, float* ainv, const int32_t* ldainv);
void DLINRG(const int32_t* n, const double* a, const int32_t* lda, double* ainv, const int32_t* ldainv);
void LINCG(const int32_t* n, const orvel_complex* a, const int32_t* lda, orvel_complex* ainv,
           const int32_t* ldainv);
void DLINCG(const int32_t* n, const orvel_dcomplex* a, const int32_t* lda, orvel_dcomplex* ainv,
            const int32_t* ldainv);
void L2NRG(const int32_t* n, const float* a, const int32_t* lda, float* ainv, const int32_t* ldainv,
           float* wk, int32_t* iwk);
void DL2NRG(const int32_t* n, const double* a, const int32_t* lda, double* ainv, const int32_t* ldainv,
            double* wk, int32_t* iwk);
void L2NCG(const int32_t* n, const orvel_complex* a, const int32_t* lda, orvel_complex* ainv,
           const int32_t* ldainv, orvel_complex* wk, int32_t* iwk);
void DL2NCG(const int32_t* n, const orvel_dcomplex* a, const int32_t* lda, orvel_dcomplex* ainv,
            const int32_t* ldainv, orvel_dcomplex* wk, int32_t* iwk);

/* ---- triangular matrices -----------------------------------------------------------------------------
 *
 * Real members have RT in their names, complex ones CT. The other triangle is not read.
 *
 *     A(N:LDA,N)  in  the matrix, of which one triangle is read
 *     IPATH       in  1: the lower triangle; 2: the upper triangle
 */

/* Solves a triangular system.
 *
 *     IPATH       in  1: A*X = B, A lower; 2: A*X = B, A upper; 3: A^H*X = B, A lower; 4: A^H*X = B, A upper
 *
 *     TERMINAL 1  N < 1
 *     TERMINAL 2  N > LDA
 *     TERMINAL 3  IPATH is not 1 to 4
 *                 "IPATH must be 1, 2, 3 or 4 while a value of %(I1) is given."
 *     TERMINAL 4  a diagonal element is close to zero
 *                 "The input matrix is singular.  The index of the first diagonal element of A that is close
 *                 to zero is %(I1)."
 *                 -> leave out the row or column that depends on others
 *
 * After an error: X is untouched.
 *
 * Time: N^2 operations.
 */
void LSLRT(const int32_t* n, const float* a, const int32_t* lda, const float* b, const int32_t* ipath,
           float* x);
void DLSLRT(const int32_t* n, const double* a, const int32_t* lda, const double* b, const int32_t* ipath,
            double* x);
void LSLCT(const int32_t* n, const orvel_complex* a, const int32_t* lda, const orvel_complex* b,
           const int32_t* ipath, orvel_complex* x);
void DLSLCT(const int32_t* n, const orvel_dcomplex* a, const int32_t* lda, const orvel_dcomplex* b,
            const int32_t* ipath, orvel_dcomplex* x);

/* Estimates the condition number of a triangle. The estimate is seldom below the true value, and may be above
 * it by a factor of 10. RCOND = 0 where a diagonal element is close to zero. Option 17 does not matter.
 *
 *     TERMINAL 1  N < 1: the order
 *     TERMINAL 2  N > LDA
 *     TERMINAL 2  no storage
 *     TERMINAL 3  IPATH is neither 1 nor 2
 *     WARNING 1   RCOND is not above eps: the matrix
 *                 "The matrix is algorithmically singular.  An estimate of the reciprocal of its L1
 *                 condition number is RCOND = %(R1)."
 *                 -> scale rows and columns, or use the double member
 *
 * After an error: RCOND is untouched after a TERMINAL error.
 *
 * Time: of the order N^2.
 *
 * Source: A. Cline, C. Moler, G. Stewart and J. Wilkinson, An estimate for the condition number of a
 * matrix, 1979.
 */
void LFCRT(const int32_t* n, const float* a, const int32_t* lda, const int32_t* ipath, float* rcond);
void DLFCRT(const int32_t* n, const double* a, const int32_t* lda, const int32_t* ipath, double* rcond);
void LFCCT(const int32_t* n, const orvel_complex* a, const int32_t* lda, const int32_t* ipath, float* rcond);
void DLFCCT(const int32_t* n, const orvel_dcomplex* a, const int32_t* lda, const int32_t* ipath,
            double* rcond);
void L2CRT(const int32_t* n, const float* a, const int32_t* lda, const int32_t* ipath, float* rcond,
           float* wk);
void DL2CRT(const int32_t* n, const double* a, const int32_t* lda, const int32_t* ipath, double* rcond,
            double* wk);
void L2CCT(const int32_t* n, const orvel_complex* a, const int32_t* lda, const int32_t* ipath, float* rcond,
           orvel_complex* wk);
void DL2CCT(const int32_t* n, const orvel_dcomplex* a, const int32_t* lda, const int32_t* ipath,
            double* rcond, orvel_dcomplex* wk);

/* Determinant DET1 * 10^DET2 of a triangle.
 *
 *     A(N:LDA,N)  in   the matrix, of which the diagonal is read
 *     DET1        out  the mantissa, 1 <= |DET1| < 10, complex magnitudes being |Re| + |Im|; 0 when a
 *                      diagonal element is zero; an infinite one stays as it is
 *     DET2        out  the exponent; that reached before a zero
 *
 *     TERMINAL 1  N < 1: the order
 *     TERMINAL 2  N > LDA
 *
 * After an error: DET1 and DET2 are unchanged.
 *
 * Time: of the order N.
 */
void LFDRT(const int32_t* n, const float* a, const int32_t* lda, float* det1, float* det2);
void DLFDRT(const int32_t* n, const double* a, const int32_t* lda, double* det1, double* det2);
void LFDCT(const int32_t* n, const orvel_complex* a, const int32_t* lda, orvel_complex* det1, float* det2);
void DLFDCT(const int32_t* n, const orvel_dcomplex* a, const int32_t* lda, orvel_dcomplex* det1,
            double* det2);

/* Inverse of a triangle, into the same triangle of AINV. The other triangles are neither read nor written.
 *
 *     IPATH       in  1: the lower triangle; 2: the upper triangle
 *
 *     TERMINAL 1  N < 1: the order
 *     TERMINAL 2  N > LDA
 *     TERMINAL 3  N > LDAINV
 *     TERMINAL 4  IPATH is neither 1 nor 2
 *     TERMINAL 5  a diagonal element is close to zero
 *                 "The matrix to be inverted is singular.  The index of the first zero diagonal element of
 *                 A is %(I1)."
 *
 * After an error: AINV is untouched.
 *
 * Time: N^3 / 3 operations.
 */
void LINRT(const int32_t* n, const float* a, const int32_t* lda, const int32_t* ipath, float* ainv,
           const int32_t* ldainv);
void DLINRT(const int32_t* n, const double* a, const int32_t* lda, const int32_t* ipath, double* ainv,
            const int32_t* ldainv);
void LINCT(const int32_t* n, const orvel_complex* a, const int32_t* lda, const int32_t* ipath,
           orvel_complex* ainv, const int32_t* ldainv);
void DLINCT(const int32_t* n, const orvel_dcomplex* a, const int32_t* lda, const int32_t* ipath,
            orvel_dcomplex* ainv, const int32_t* ldainv);

/* ---- positive definite matrices ----------------------------------------------------------------------
 *
 * Real symmetric members have DS in their names, complex Hermitian ones DH. Only the upper triangle of A is
 * read, and only that of FACT written; no member pivots. The imaginary parts of the diagonal of a Hermitian
 * matrix count as zero; where one is not negligible, the factorization warns of it.
 *
 *     A(N:LDA,N)       in   the matrix, of which the upper triangle is read
 *     FACT(N:LDFAC,N)  in   the factorization of LFTDS or LFCDS
 *
 *     cause            A is not positive definite
 *                      "The input matrix is not positive definite.  The first of its leading submatrices
 *                      that is not has the order %(I1)."
 *                      -> look at that row and column, or take the member for general matrices
 *     cause            Hermitian members: a diagonal element is not real
 *                      "The diagonal of a Hermitian matrix is real, but the element %(I1) has an imaginary
 *                      part that is not negligible.  Zero is taken in its place."
 *                      -> set the imaginary parts of the diagonal to zero
 *
 * Time: solving and factoring take N^3 / 3 operations, an inverse N^3, a solve from a factorization and a
 * step of refinement 2 N^2 (complex: four times as many).
 *
 * Source: G. H. Golub, C. F. Van Loan, Matrix Computations, Johns Hopkins University Press, 1996.
 */

/* Solves A*X = B, A positive definite, with iterative refinement. The result is as accurate as the working
 * precision allows while RCOND is above 100 eps. The worker makes all its checks even when one has failed.
 *
 *     FACT(N,N)   out  the factorization afterwards, see LFTDS
 *
 *     TERMINAL 1  N < 1
 *     TERMINAL 2  N > LDA
 *     TERMINAL 2  no storage
 *     TERMINAL 3  option 17 is neither 1 nor 2
 *     TERMINAL 4  no storage for a copy of B
 *     FATAL 2     A is not positive definite
 *     WARNING 1   RCOND is not above eps, or the refinement makes no progress
 *                 "The matrix is too ill-conditioned. An estimate of the reciprocal of its L1 condition
 *                 number is RCOND = %(R1).  The solution might not be accurate."
 *                 -> scale rows and columns, or use the double member
 *     WARNING 3   Hermitian members: a diagonal element is not real
 *
 * After an error: X is untouched after TERMINAL and FATAL errors, and the last iterate after WARNING 1.
 */
void LSADS(const int32_t* n, const float* a, const int32_t* lda, const float* b, float* x);
void DLSADS(const int32_t* n, const double* a, const int32_t* lda, const double* b, double* x);
void LSADH(const int32_t* n, const orvel_complex* a, const int32_t* lda, const orvel_complex* b,
           orvel_complex* x);
void DLSADH(const int32_t* n, const orvel_dcomplex* a, const int32_t* lda, const orvel_dcomplex* b,
            orvel_dcomplex* x);
void L2ADS(const int32_t* n, const float* a, const int32_t* lda, const float* b, float* x, float* fact,
           float* wk);
void DL2ADS(const int32_t* n, const double* a, const int32_t* lda, const double* b, double* x, double* fact,
            double* wk);
void L2ADH(const int32_t* n, const orvel_complex* a, const int32_t* lda, const orvel_complex* b,
           orvel_complex* x, orvel_complex* fact, orvel_complex* wk);
void DL2ADH(const int32_t* n, const orvel_dcomplex* a, const int32_t* lda, const orvel_dcomplex* b,
            orvel_dcomplex* x, orvel_dcomplex* fact, orvel_dcomplex* wk);

/* Solves A*X = B, A positive definite, without refinement.
 *
 *     FACT(N,N)   out  the factorization afterwards, see LFTDS
 *
 *     TERMINAL 1  N < 1
 *     TERMINAL 2  N > LDA
 *     TERMINAL 2  no storage
 *     TERMINAL 3  option 17 is neither 1 nor 2
 *     FATAL 2     A is not positive definite
 *     WARNING 1   RCOND is not above eps
 *     WARNING 3   Hermitian members: a diagonal element is not real
 *
 * After an error: X is untouched after TERMINAL and FATAL errors.
 */
void LSLDS(const int32_t* n, const float* a, const int32_t* lda, const float* b, float* x);
void DLSLDS(const int32_t* n, const double* a, const int32_t* lda, const double* b, double* x);
void LSLDH(const int32_t* n, const orvel_complex* a, const int32_t* lda, const orvel_complex* b,
           orvel_complex* x);
void DLSLDH(const int32_t* n, const orvel_dcomplex* a, const int32_t* lda, const orvel_dcomplex* b,
            orvel_dcomplex* x);
void L2LDS(const int32_t* n, const float* a, const int32_t* lda, const float* b, float* x, float* fact,
           float* wk);
void DL2LDS(const int32_t* n, const double* a, const int32_t* lda, const double* b, double* x, double* fact,
            double* wk);
void L2LDH(const int32_t* n, const orvel_complex* a, const int32_t* lda, const orvel_complex* b,
           orvel_complex* x, orvel_complex* fact, orvel_complex* wk);
void DL2LDH(const int32_t* n, const orvel_dcomplex* a, const int32_t* lda, const orvel_dcomplex* b,
            orvel_dcomplex* x, orvel_dcomplex* fact, orvel_dcomplex* wk);

/* Factors a positive definite matrix, as LFTDS, and estimates its condition number. RCOND = 1 where it is not
 * estimated (option 17 is 1, or A is not positive definite). The estimate is seldom below the true value, and
 * may be above it by a factor of 10.
 *
 *     FACT(N:LDFAC,N)  out  the factorization; may be A where LDFAC = LDA
 *
 *     TERMINAL 1       N < 1: the order
 *     TERMINAL 2       N > LDA
 *     TERMINAL 2       no storage
 *     TERMINAL 3       N > LDFAC
 *     TERMINAL 4       option 17 is neither 1 nor 2
 *     FATAL 2          A is not positive definite
 *     WARNING 1        RCOND is not above eps: the matrix
 *                      "The matrix is algorithmically singular.  An estimate of the reciprocal of its L1
 *                      condition number is RCOND = %(R1)."
 *                      -> scale rows and columns, or use the double member
 *     WARNING 3        Hermitian members: a diagonal element is not real
 *
 * After an error: FACT is untouched after a TERMINAL error, and holds the columns of R that were reached
 * after FATAL 2.
 *
 * Source: A. Cline, C. Moler, G. Stewart and J. Wilkinson, An estimate for the condition number of a
 * matrix, 1979.
 */
void LFCDS(const int32_t* n, const float* a, const int32_t* lda, float* fact, const int32_t* ldfac,
           float* rcond);
void DLFCDS(const int32_t* n, const double* a, const int32_t* lda, double* fact, const int32_t* ldfac,
            double* rcond);
void LFCDH(const int32_t* n, const orvel_complex* a, const int32_t* lda, orvel_complex* fact,
           const int32_t* ldfac, float* rcond);
void DLFCDH(const int32_t* n, const orvel_dcomplex* a, const int32_t* lda, orvel_dcomplex* fact,
            const int32_t* ldfac, double* rcond);
void L2CDS(const int32_t* n, const float* a, const int32_t* lda, float* fact, const int32_t* ldfac,
           float* rcond, float* wk);
void DL2CDS(const int32_t* n, const double* a, const int32_t* lda, double* fact, const int32_t* ldfac,
            double* rcond, double* wk);
void L2CDH(const int32_t* n, const orvel_complex* a, const int32_t* lda, orvel_complex* fact,
           const int32_t* ldfac, float* rcond, orvel_complex* wk);
void DL2CDH(const int32_t* n, const orvel_dcomplex* a, const int32_t* lda, orvel_dcomplex* fact,
            const int32_t* ldfac, double* rcond, orvel_dcomplex* wk);

/* Factors a positive definite matrix: A = R^H * R.
 *
 *     FACT  upper triangle with diagonal: R, whose diagonal is positive; the rest is untouched
 *
 * A is positive definite when each pivot, which is the square of an element of the diagonal of R, is above
 * eps times the element of the diagonal of A. An element gets its products in ascending order of the steps,
 * so that the result has the same bits whatever the size.
 *
 *     FACT(N:LDFAC,N)  out      the factorization; may be A where LDFAC = LDA
 *     WK(N)            scratch  holds what the pivots must exceed (in the storage of its first N reals in
 *                               complex members)
 *
 *     TERMINAL 1       N < 1: the order
 *     TERMINAL 2       N > LDA
 *     TERMINAL 2       no storage
 *     TERMINAL 3       N > LDFAC
 *     FATAL 2          A is not positive definite
 *     WARNING 3        Hermitian members: a diagonal element is not real
 *
 * After an error: only the first TERMINAL error is posted, and FACT is untouched; after FATAL 2 it holds the
 * columns of R before the order that the text names, the later columns are undefined.
 */
void LFTDS(const int32_t* n, const float* a, const int32_t* lda, float* fact, const int32_t* ldfac);
void DLFTDS(const int32_t* n, const double* a, const int32_t* lda, double* fact, const int32_t* ldfac);
void LFTDH(const int32_t* n, const orvel_complex* a, const int32_t* lda, orvel_complex* fact,
           const int32_t* ldfac);
void DLFTDH(const int32_t* n, const orvel_dcomplex* a, const int32_t* lda, orvel_dcomplex* fact,
            const int32_t* ldfac);
void L2TDS(const int32_t* n, const float* a, const int32_t* lda, float* fact, const int32_t* ldfac,
           float* wk);
void DL2TDS(const int32_t* n, const double* a, const int32_t* lda, double* fact, const int32_t* ldfac,
            double* wk);
void L2TDH(const int32_t* n, const orvel_complex* a, const int32_t* lda, orvel_complex* fact,
           const int32_t* ldfac, orvel_complex* wk);
void DL2TDH(const int32_t* n, const orvel_dcomplex* a, const int32_t* lda, orvel_dcomplex* fact,
            const int32_t* ldfac, orvel_dcomplex* wk);

/* Solves A*X = B from the factorization of LFTDS or LFCDS.
 *
 *     TERMINAL 1  N < 1
 *     TERMINAL 2  N > LDFAC
 *     TERMINAL 3  the diagonal of R has an element close to zero
 *                 "The input matrix is singular.  Some of the diagonal elements of the upper triangular
 *                 matrix R of the R**H*R factorization are close to zero."
 *                 -> pass FACT of a factorization that has succeeded
 *
 * After an error: X is untouched.
 */
void LFSDS(const int32_t* n, const float* fact, const int32_t* ldfac, const float* b, float* x);
void DLFSDS(const int32_t* n, const double* fact, const int32_t* ldfac, const double* b, double* x);
void LFSDH(const int32_t* n, const orvel_complex* fact, const int32_t* ldfac, const orvel_complex* b,
           orvel_complex* x);
void DLFSDH(const int32_t* n, const orvel_dcomplex* fact, const int32_t* ldfac, const orvel_dcomplex* b,
            orvel_dcomplex* x);

/* Solves as LFSDS and refines the solution, with residuals of A in twice the working precision, until a
 * correction is below eps or does not shrink. A WARNING also stands for an element of the residual that is
 * larger than 4(N+1) eps (|A| |X| + |B|) afterwards; this may take one more pass over A. Passes up the error
 * 3 of LFSDS, which ends it.
 *
 *     RES(N)      out  the last correction
 *
 *     TERMINAL 1  N < 1
 *     TERMINAL 2  N > LDA
 *     TERMINAL 3  N > LDFAC
 *     TERMINAL 4  no storage for a copy of B
 *     WARNING 2   the refinement makes no progress
 *                 "The matrix is too ill-conditioned for iterative refinement to be effective."
 *                 -> scale rows and columns, or use the double member
 *
 * After an error: X is untouched after a TERMINAL error of this routine, and the last iterate after the
 * WARNING.
 *
 * Source: R. Skeel, Iterative refinement implies numerical stability for Gaussian elimination, 1980.
 */
void LFIDS(const int32_t* n, const float* a, const int32_t* lda, const float* fact, const int32_t* ldfac,
           const float* b, float* x, float* res);
void DLFIDS(const int32_t* n, const double* a, const int32_t* lda, const double* fact, const int32_t* ldfac,
            const double* b, double* x, double* res);
void LFIDH(const int32_t* n, const orvel_complex* a, const int32_t* lda, const orvel_complex* fact,
           const int32_t* ldfac, const orvel_complex* b, orvel_complex* x, orvel_complex* res);
void DLFIDH(const int32_t* n, const orvel_dcomplex* a, const int32_t* lda, const orvel_dcomplex* fact,
            const int32_t* ldfac, const orvel_dcomplex* b, orvel_dcomplex* x, orvel_dcomplex* res);

/* Determinant DET1 * 10^DET2 of a positive definite matrix from its factorization.
 *
 *     DET1        out  the mantissa, 1 <= DET1 < 10, real in all members; 0 when a diagonal element of R is
 *                      zero; an infinite one stays as it is
 *     DET2        out  the exponent; that reached before a zero
 *
 *     TERMINAL 1  N < 1: the order
 *     TERMINAL 2  N > LDFAC
 *
 * After an error: DET1 and DET2 are unchanged.
 *
 * Time: of the order N.
 */
void LFDDS(const int32_t* n, const float* fact, const int32_t* ldfac, float* det1, float* det2);
void DLFDDS(const int32_t* n, const double* fact, const int32_t* ldfac, double* det1, double* det2);
void LFDDH(const int32_t* n, const orvel_complex* fact, const int32_t* ldfac, float* det1, float* det2);
void DLFDDH(const int32_t* n, const orvel_dcomplex* fact, const int32_t* ldfac, double* det1, double* det2);

/* Inverse of a positive definite matrix, both triangles of it.
 *
 *     TERMINAL 1  N < 1: the order
 *     TERMINAL 2  N > LDA
 *     TERMINAL 2  no storage
 *     TERMINAL 3  N > LDAINV
 *     TERMINAL 4  option 17 is neither 1 nor 2
 *     FATAL 2     A is not positive definite
 *     WARNING 1   RCOND is not above eps: the inverse
 *                 "The matrix is too ill-conditioned. An estimate of the reciprocal of its L1 condition
 *                 number is RCOND = %(R1).  The inverse might not be accurate."
 *                 -> scale rows and columns, or use the double member
 *
 * After an error: AINV is untouched after a TERMINAL error, and its upper triangle holds the factorization
 * reached after FATAL 2.
 */
void LINDS(const int32_t* n, const float* a, const int32_t* lda, float* ainv, const int32_t* ldainv);
void DLINDS(const int32_t* n, const double* a, const int32_t* lda, double* ainv, const int32_t* ldainv);
void L2NDS(const int32_t* n, const float* a, const int32_t* lda, float* ainv, const int32_t* ldainv,
           float* wk);
void DL2NDS(const int32_t* n, const double* a, const int32_t* lda, double* ainv, const int32_t* ldainv,
            double* wk);

/* ---- general band matrices ---------------------------------------------------------------------------
 *
 * Real members have RB in their names, complex ones CB. A has KL diagonals below the main one and KU above
 * it; element (i, j) is in row KU+1+i-j of column j, as in the band kernels. KL and KU may be N or more: what
 * lies outside of the matrix is not read. Elimination with row-scaled partial pivoting, inside the band; for
 * wide bands in blocks.
 *
 *     A(KL+KU+1:LDA,N)         in       the band
 *     LDA                      in       the leading dimension of A, at least KL+KU+1
 *     KL                       in       the number of diagonals below the main one
 *     KU                       in       the number of diagonals above it
 *     FACT(2*KL+KU+1:LDFAC,N)  in       the factorization of LFTRB or LFCRB
 *     LDFAC                    in       the leading dimension of FACT, at least 2KL+KU+1
 *
 *     cause                    LDA < KL + KU + 1
 *                              "The leading dimension of A must be at least KL+KU+1 while KL = %(I1), KU =
 *                              %(I2) and LDA = %(I3) are given."
 *     cause                    LDFAC < 2*KL + KU + 1
 *                              "The leading dimension of FACT must be at least 2KL+KU+1 while KL = %(I1),
 *                              KU = %(I2) and LDFAC = %(I3) are given."
 *     cause                    KL < 0
 *                              "The number of diagonals below the main one must not be negative while KL =
 *                              %(I1) is given."
 *     cause                    KU < 0
 *                              "The number of diagonals above the main one must not be negative while KU =
 *                              %(I1) is given."
 *     cause                    an element of IPVT is no row that its step can take, k to k + KL
 *                              "The elements of IPVT must be rows that their step can take, while
 *                              IPVT(%(I1)) = %(I2) is given."
 *                              -> pass FACT and IPVT of one factorization
 *
 * NaN: a NaN in A gives a singular matrix or NaN in the results, a NaN in B NaN in X.
 *
 * Source: J. Dongarra, J. Bunch, C. Moler and G. Stewart, LINPACK Users' Guide, SIAM, 1979; J. Du Croz, P.
 * Mayes and G. Radicati, Factorization of band matrices using level 3 BLAS, 1990.
 */

/* Solves a band system with iterative refinement, as LSARG.
 *
 *     FACT(2*KL+KU+1,N)  out  the factorization afterwards, see LFTRB
 *     IPVT(N)            out  the interchanges
 *
 *     TERMINAL 1         N < 1
 *     TERMINAL 2         LDA < KL + KU + 1
 *     TERMINAL 2         no storage
 *     TERMINAL 3         KL < 0
 *     TERMINAL 4         KU < 0
 *     TERMINAL 5         IPATH is neither 1 nor 2
 *     WARNING 1          RCOND is not above eps
 *
 * Passes up the errors of LFCRB and LFIRB, whose codes tell of the option, of singular matrices and of
 * storage for a copy of B.
 *
 * Time: that of LFTRB, and of a few solutions.
 */
void LSARB(const int32_t* n, const float* a, const int32_t* lda, const int32_t* kl, const int32_t* ku,
           const float* b, const int32_t* ipath, float* x);
void DLSARB(const int32_t* n, const double* a, const int32_t* lda, const int32_t* kl, const int32_t* ku,
            const double* b, const int32_t* ipath, double* x);
void LSACB(const int32_t* n, const orvel_complex* a, const int32_t* lda, const int32_t* kl, const int32_t* ku,
           const orvel_complex* b, const int32_t* ipath, orvel_complex* x);
void DLSACB(const int32_t* n, const orvel_dcomplex* a, const int32_t* lda, const int32_t* kl,
            const int32_t* ku, const orvel_dcomplex* b, const int32_t* ipath, orvel_dcomplex* x);
void L2ARB(const int32_t* n, const float* a, const int32_t* lda, const int32_t* kl, const int32_t* ku,
           const float* b, const int32_t* ipath, float* x, float* fact, int32_t* ipvt, float* wk);
void DL2ARB(const int32_t* n, const double* a, const int32_t* lda, const int32_t* kl, const int32_t* ku,
            const double* b, const int32_t* ipath, double* x, double* fact, int32_t* ipvt, double* wk);
void L2ACB(const int32_t* n, const orvel_complex* a, const int32_t* lda, const int32_t* kl, const int32_t* ku,
           const orvel_complex* b, const int32_t* ipath, orvel_complex* x, orvel_complex* fact, int32_t* ipvt,
           orvel_complex* wk);
void DL2ACB(const int32_t* n, const orvel_dcomplex* a, const int32_t* lda, const int32_t* kl,
            const int32_t* ku, const orvel_dcomplex* b, const int32_t* ipath, orvel_dcomplex* x,
            orvel_dcomplex* fact, int32_t* ipvt, orvel_dcomplex* wk);

/* Solves a band system without refinement, as LSLRG.
 *
 *     FACT(2*KL+KU+1,N)  out  the factorization afterwards, see LFTRB
 *     IPVT(N)            out  the interchanges
 *
 *     TERMINAL 1         N < 1
 *     TERMINAL 2         LDA < KL + KU + 1
 *     TERMINAL 2         no storage
 *     TERMINAL 3         KL < 0
 *     TERMINAL 4         KU < 0
 *     TERMINAL 5         IPATH is neither 1 nor 2
 *     WARNING 1          RCOND is not above eps
 *
 * Passes up the errors of LFCRB and LFSRB.
 *
 * Time: that of LFTRB.
 */
void LSLRB(const int32_t* n, const float* a, const int32_t* lda, const int32_t* kl, const int32_t* ku,
           const float* b, const int32_t* ipath, float* x);
void DLSLRB(const int32_t* n, const double* a, const int32_t* lda, const int32_t* kl, const int32_t* ku,
            const double* b, const int32_t* ipath, double* x);
void LSLCB(const int32_t* n, const orvel_complex* a, const int32_t* lda, const int32_t* kl, const int32_t* ku,
           const orvel_complex* b, const int32_t* ipath, orvel_complex* x);
void DLSLCB(const int32_t* n, const orvel_dcomplex* a, const int32_t* lda, const int32_t* kl,
            const int32_t* ku, const orvel_dcomplex* b, const int32_t* ipath, orvel_dcomplex* x);
void L2LRB(const int32_t* n, const float* a, const int32_t* lda, const int32_t* kl, const int32_t* ku,
           const float* b, const int32_t* ipath, float* x, float* fact, int32_t* ipvt, float* wk);
void DL2LRB(const int32_t* n, const double* a, const int32_t* lda, const int32_t* kl, const int32_t* ku,
            const double* b, const int32_t* ipath, double* x, double* fact, int32_t* ipvt, double* wk);
void L2LCB(const int32_t* n, const orvel_complex* a, const int32_t* lda, const int32_t* kl, const int32_t* ku,
           const orvel_complex* b, const int32_t* ipath, orvel_complex* x, orvel_complex* fact, int32_t* ipvt,
           orvel_complex* wk);
void DL2LCB(const int32_t* n, const orvel_dcomplex* a, const int32_t* lda, const int32_t* kl,
            const int32_t* ku, const orvel_dcomplex* b, const int32_t* ipath, orvel_dcomplex* x,
            orvel_dcomplex* fact, int32_t* ipvt, orvel_dcomplex* wk);

/* Factors a band matrix, as LFTRB, and estimates its condition number. RCOND = 1 where it is not estimated
 * (option 17 is 1, or A is singular). The estimate is seldom below the true value, and may be above it by a
 * factor of 10. Passes up the errors of LFTRB.
 *
 *     FACT(2*KL+KU+1:LDFAC,N)  out  the factorization; may be A where LDFAC = LDA
 *     IPVT(N)                  out  the interchanges
 *
 *     TERMINAL 1               N < 1: the order
 *     TERMINAL 2               LDA < KL + KU + 1
 *     TERMINAL 2               no storage
 *     TERMINAL 3               LDFAC < 2*KL + KU + 1
 *     TERMINAL 4               KL < 0
 *     TERMINAL 5               KU < 0
 *     TERMINAL 6               option 17 is neither 1 nor 2
 *     WARNING 1                RCOND is not above eps: the matrix
 *                              "The matrix is algorithmically singular.  An estimate of the reciprocal of its
 *                              L1 condition number is RCOND = %(R1)."
 *                              -> scale rows and columns, or use the double member
 *
 * Time: that of LFTRB, and of seven solutions.
 */
void LFCRB(const int32_t* n, const float* a, const int32_t* lda, const int32_t* kl, const int32_t* ku,
           float* fact, const int32_t* ldfac, int32_t* ipvt, float* rcond);
void DLFCRB(const int32_t* n, const double* a, const int32_t* lda, const int32_t* kl, const int32_t* ku,
            double* fact, const int32_t* ldfac, int32_t* ipvt, double* rcond);
void LFCCB(const int32_t* n, const orvel_complex* a, const int32_t* lda, const int32_t* kl, const int32_t* ku,
           orvel_complex* fact, const int32_t* ldfac, int32_t* ipvt, float* rcond);
void DLFCCB(const int32_t* n, const orvel_dcomplex* a, const int32_t* lda, const int32_t* kl,
            const int32_t* ku, orvel_dcomplex* fact, const int32_t* ldfac, int32_t* ipvt, double* rcond);
void L2CRB(const int32_t* n, const float* a, const int32_t* lda, const int32_t* kl, const int32_t* ku,
           float* fact, const int32_t* ldfac, int32_t* ipvt, float* rcond, float* wk);
void DL2CRB(const int32_t* n, const double* a, const int32_t* lda, const int32_t* kl, const int32_t* ku,
            double* fact, const int32_t* ldfac, int32_t* ipvt, double* rcond, double* wk);
void L2CCB(const int32_t* n, const orvel_complex* a, const int32_t* lda, const int32_t* kl, const int32_t* ku,
           orvel_complex* fact, const int32_t* ldfac, int32_t* ipvt, float* rcond, orvel_complex* wk);
void DL2CCB(const int32_t* n, const orvel_dcomplex* a, const int32_t* lda, const int32_t* kl,
            const int32_t* ku, orvel_dcomplex* fact, const int32_t* ldfac, int32_t* ipvt, double* rcond,
            orvel_dcomplex* wk);

/* Factors a band matrix by elimination with row-scaled partial pivoting.
 *
 *     FACT(2*KL+KU+1:LDFAC,N)  out  the factorization; may be A where LDFAC = LDA
 *     IPVT(N)                  out  the row that was interchanged with row k at step k, k to k + KL
 *
 *     TERMINAL 1               N < 1: the order
 *     TERMINAL 2               LDA < KL + KU + 1
 *     TERMINAL 2               no storage
 *     TERMINAL 3               LDFAC < 2*KL + KU + 1
 *     TERMINAL 4               KL < 0
 *     TERMINAL 5               KU < 0
 *     FATAL 2                  A is singular
 *
 * Element (i, j) of FACT is in row KL+KU+1+i-j of column j: above and on the diagonal U, which has KL+KU
 * diagonals above the main one, below it in column k the multipliers of step k, in the row order of step k.
 * An element gets its products in ascending order of the steps. Where FACT is A, A is in its usual rows, the
 * first ones.
 *
 * Time: 2 N KL (KL + KU) operations at most, 2 N KL KU without interchanges.
 */
void LFTRB(const int32_t* n, const float* a, const int32_t* lda, const int32_t* kl, const int32_t* ku,
           float* fact, const int32_t* ldfac, int32_t* ipvt);
void DLFTRB(const int32_t* n, const double* a, const int32_t* lda, const int32_t* kl, const int32_t* ku,
            double* fact, const int32_t* ldfac, int32_t* ipvt);
void LFTCB(const int32_t* n, const orvel_complex* a, const int32_t* lda, const int32_t* kl, const int32_t* ku,
           orvel_complex* fact, const int32_t* ldfac, int32_t* ipvt);
void DLFTCB(const int32_t* n, const orvel_dcomplex* a, const int32_t* lda, const int32_t* kl,
            const int32_t* ku, orvel_dcomplex* fact, const int32_t* ldfac, int32_t* ipvt);
void L2TRB(const int32_t* n, const float* a, const int32_t* lda, const int32_t* kl, const int32_t* ku,
           float* fact, const int32_t* ldfac, int32_t* ipvt, float* wk);
void DL2TRB(const int32_t* n, const double* a, const int32_t* lda, const int32_t* kl, const int32_t* ku,
            double* fact, const int32_t* ldfac, int32_t* ipvt, double* wk);
void L2TCB(const int32_t* n, const orvel_complex* a, const int32_t* lda, const int32_t* kl, const int32_t* ku,
           orvel_complex* fact, const int32_t* ldfac, int32_t* ipvt, orvel_complex* wk);
void DL2TCB(const int32_t* n, const orvel_dcomplex* a, const int32_t* lda, const int32_t* kl,
            const int32_t* ku, orvel_dcomplex* fact, const int32_t* ldfac, int32_t* ipvt, orvel_dcomplex* wk);

/* Solves A*X = B or A^H*X = B from the factorization of a band matrix.
 *
 *     TERMINAL 1  N < 1
 *     TERMINAL 2  LDFAC < 2*KL + KU + 1
 *     TERMINAL 3  KL < 0
 *     TERMINAL 4  KU < 0
 *     TERMINAL 5  IPATH is neither 1 nor 2
 *     TERMINAL 6  A is singular
 *     TERMINAL 7  an element of IPVT is no row that its step can take, k to k + KL
 *
 * After an error: X is untouched.
 *
 * Time: 2 N (2KL + KU) operations.
 */
void LFSRB(const int32_t* n, const float* fact, const int32_t* ldfac, const int32_t* kl, const int32_t* ku,
           const int32_t* ipvt, const float* b, const int32_t* ipath, float* x);
void DLFSRB(const int32_t* n, const double* fact, const int32_t* ldfac, const int32_t* kl, const int32_t* ku,
            const int32_t* ipvt, const double* b, const int32_t* ipath, double* x);
void LFSCB(const int32_t* n, const orvel_complex* fact, const int32_t* ldfac, const int32_t* kl,
           const int32_t* ku, const int32_t* ipvt, const orvel_complex* b, const int32_t* ipath,
           orvel_complex* x);
void DLFSCB(const int32_t* n, const orvel_dcomplex* fact, const int32_t* ldfac, const int32_t* kl,
            const int32_t* ku, const int32_t* ipvt, const orvel_dcomplex* b, const int32_t* ipath,
            orvel_dcomplex* x);

/* Solves as LFSRB and refines the solution, as LFIRG. Takes storage for 16 rows of the band from the heap.
 *
 *     RES(N)      out  the last correction
 *
 *     TERMINAL 1  N < 1
 *     TERMINAL 2  LDA < KL + KU + 1
 *     TERMINAL 3  LDFAC < 2*KL + KU + 1
 *     TERMINAL 4  KL < 0
 *     TERMINAL 5  KU < 0
 *     TERMINAL 6  IPATH is neither 1 nor 2
 *     TERMINAL 7  an element of IPVT is no row that its step can take, k to k + KL
 *     TERMINAL 8  no storage for a copy of B
 *     WARNING 2   the refinement makes no progress, or leaves a residual that is too large
 *                 "The matrix is too ill-conditioned for iterative refinement to be effective."
 *                 -> use the double member
 *
 * Passes up the error TERMINAL 6 of LFSRB.
 *
 * Time: a few times that of LFSRB.
 */
void LFIRB(const int32_t* n, const float* a, const int32_t* lda, const int32_t* kl, const int32_t* ku,
           const float* fact, const int32_t* ldfac, const int32_t* ipvt, const float* b, const int32_t* ipath,
           float* x, float* res);
void DLFIRB(const int32_t* n, const double* a, const int32_t* lda, const int32_t* kl, const int32_t* ku,
            const double* fact, const int32_t* ldfac, const int32_t* ipvt, const double* b,
            const int32_t* ipath, double* x, double* res);
void LFICB(const int32_t* n, const orvel_complex* a, const int32_t* lda, const int32_t* kl, const int32_t* ku,
           const orvel_complex* fact, const int32_t* ldfac, const int32_t* ipvt, const orvel_complex* b,
           const int32_t* ipath, orvel_complex* x, orvel_complex* res);
void DLFICB(const int32_t* n, const orvel_dcomplex* a, const int32_t* lda, const int32_t* kl,
            const int32_t* ku, const orvel_dcomplex* fact, const int32_t* ldfac, const int32_t* ipvt,
            const orvel_dcomplex* b, const int32_t* ipath, orvel_dcomplex* x, orvel_dcomplex* res);

/* Determinant DET1 * 10^DET2 from the factorization of a band matrix.
 *
 *     DET1        out  the mantissa, 1 <= |DET1| < 10, complex magnitudes being |Re| + |Im|; 0 when a
 *                      diagonal element is zero; an infinite one stays as it is
 *     DET2        out  the exponent; that reached before a zero
 *
 *     TERMINAL 1  N < 1: the order
 *     TERMINAL 2  LDFAC < 2*KL + KU + 1
 *     TERMINAL 3  KL < 0
 *     TERMINAL 4  KU < 0
 *     TERMINAL 5  an element of IPVT is no row that its step can take, k to k + KL
 *
 * After an error: DET1 and DET2 are unchanged.
 *
 * Time: of the order N.
 */
void LFDRB(const int32_t* n, const float* fact, const int32_t* ldfac, const int32_t* kl, const int32_t* ku,
           const int32_t* ipvt, float* det1, float* det2);
void DLFDRB(const int32_t* n, const double* fact, const int32_t* ldfac, const int32_t* kl, const int32_t* ku,
            const int32_t* ipvt, double* det1, double* det2);
void LFDCB(const int32_t* n, const orvel_complex* fact, const int32_t* ldfac, const int32_t* kl,
           const int32_t* ku, const int32_t* ipvt, orvel_complex* det1, float* det2);
void DLFDCB(const int32_t* n, const orvel_dcomplex* fact, const int32_t* ldfac, const int32_t* kl,
            const int32_t* ku, const int32_t* ipvt, orvel_dcomplex* det1, double* det2);

/* ---- symmetric and Hermitian positive definite band matrices -------------------------------------------
 *
 * Real members have QS in their names, complex ones QH. Of A the main diagonal and the KD diagonals above it
 * are stored: element (i, j) is in row KD+1+i-j of column j, as in the band kernels. KD may be N or more:
 * what lies outside of the matrix is not read. A = R^H * R without interchanges, inside the band; for wide
 * bands in blocks. The imaginary parts of the diagonal count as zero.
 *
 *     A(KD+1:LDA,N)       in       the band
 *     LDA                 in       the leading dimension of A, at least KD+1
 *     KD                  in       the number of diagonals above the main one
 *     FACT(KD+1:LDFAC,N)  in       the factorization of LFTQS or LFCQS
 *     LDFAC               in       the leading dimension of FACT, at least KD+1
 *
 *     cause               LDA < KD + 1
 *                         "The leading dimension of A must be at least KD+1 while KD = %(I1) and LDA = %(I2)
 *                         are given."
 *     cause               LDFAC < KD + 1
 *                         "The leading dimension of FACT must be at least KD+1 while KD = %(I1) and LDFAC =
 *                         %(I2) are given."
 *     cause               KD < 0
 *                         "The number of diagonals above the main one must not be negative while KD = %(I1)
 *                         is given."
 *
 * NaN: a NaN in A is not positive definite or gives NaN in the results, a NaN in B NaN in X.
 *
 * Source: J. Dongarra, J. Bunch, C. Moler and G. Stewart, LINPACK Users' Guide, SIAM, 1979; J. Du Croz, P.
 * Mayes and G. Radicati, Factorization of band matrices using level 3 BLAS, 1990.
 */

/* Solves a positive definite band system with iterative refinement, as LSARG.
 *
 *     FACT(KD+1,N)  out  the factorization afterwards, see LFTQS
 *
 *     TERMINAL 1    N < 1
 *     TERMINAL 2    LDA < KD + 1
 *     TERMINAL 2    no storage
 *     TERMINAL 3    KD < 0
 *     TERMINAL 4    option 17 is neither 1 nor 2
 *     WARNING 1     RCOND is not above eps
 *
 * Passes up the errors of LFCQS and LFIQS, whose codes tell of matrices that are not positive definite and of
 * storage for a copy of B.
 *
 * Time: that of LFTQS, and of a few solutions.
 */
void LSAQS(const int32_t* n, const float* a, const int32_t* lda, const int32_t* kd, const float* b, float* x);
void DLSAQS(const int32_t* n, const double* a, const int32_t* lda, const int32_t* kd, const double* b,
            double* x);
void LSAQH(const int32_t* n, const orvel_complex* a, const int32_t* lda, const int32_t* kd,
           const orvel_complex* b, orvel_complex* x);
void DLSAQH(const int32_t* n, const orvel_dcomplex* a, const int32_t* lda, const int32_t* kd,
            const orvel_dcomplex* b, orvel_dcomplex* x);
void L2AQS(const int32_t* n, const float* a, const int32_t* lda, const int32_t* kd, const float* b, float* x,
           float* fact, float* wk);
void DL2AQS(const int32_t* n, const double* a, const int32_t* lda, const int32_t* kd, const double* b,
            double* x, double* fact, double* wk);
void L2AQH(const int32_t* n, const orvel_complex* a, const int32_t* lda, const int32_t* kd,
           const orvel_complex* b, orvel_complex* x, orvel_complex* fact, orvel_complex* wk);
void DL2AQH(const int32_t* n, const orvel_dcomplex* a, const int32_t* lda, const int32_t* kd,
            const orvel_dcomplex* b, orvel_dcomplex* x, orvel_dcomplex* fact, orvel_dcomplex* wk);

/* Solves a positive definite band system without refinement, as LSLRG.
 *
 *     FACT(KD+1,N)  out  the factorization afterwards, see LFTQS
 *
 *     TERMINAL 1    N < 1
 *     TERMINAL 2    LDA < KD + 1
 *     TERMINAL 2    no storage
 *     TERMINAL 3    KD < 0
 *     TERMINAL 4    option 17 is neither 1 nor 2
 *     WARNING 1     RCOND is not above eps
 *
 * Passes up the errors of LFCQS and LFSQS.
 *
 * Time: that of LFTQS.
 */
void LSLQS(const int32_t* n, const float* a, const int32_t* lda, const int32_t* kd, const float* b, float* x);
void DLSLQS(const int32_t* n, const double* a, const int32_t* lda, const int32_t* kd, const double* b,
            double* x);
void LSLQH(const int32_t* n, const orvel_complex* a, const int32_t* lda, const int32_t* kd,
           const orvel_complex* b, orvel_complex* x);
void DLSLQH(const int32_t* n, const orvel_dcomplex* a, const int32_t* lda, const int32_t* kd,
            const orvel_dcomplex* b, orvel_dcomplex* x);
void L2LQS(const int32_t* n, const float* a, const int32_t* lda, const int32_t* kd, const float* b, float* x,
           float* fact, float* wk);
void DL2LQS(const int32_t* n, const double* a, const int32_t* lda, const int32_t* kd, const double* b,
            double* x, double* fact, double* wk);
void L2LQH(const int32_t* n, const orvel_complex* a, const int32_t* lda, const int32_t* kd,
           const orvel_complex* b, orvel_complex* x, orvel_complex* fact, orvel_complex* wk);
void DL2LQH(const int32_t* n, const orvel_dcomplex* a, const int32_t* lda, const int32_t* kd,
            const orvel_dcomplex* b, orvel_dcomplex* x, orvel_dcomplex* fact, orvel_dcomplex* wk);

/* Factors a positive definite band matrix, as LFTQS, and estimates its condition number. RCOND = 1 where it
 * is not estimated (option 17 is 1, or A is not positive definite). The estimate is seldom below the true
 * value, and may be above it by a factor of 10. Passes up the errors of LFTQS; a WARNING 1 wins.
 *
 *     FACT(KD+1:LDFAC,N)  out  the factorization; may be A where LDFAC = LDA
 *
 *     TERMINAL 1          N < 1: the order
 *     TERMINAL 2          LDA < KD + 1
 *     TERMINAL 2          no storage
 *     TERMINAL 3          LDFAC < KD + 1
 *     TERMINAL 4          KD < 0
 *     TERMINAL 5          option 17 is neither 1 nor 2
 *     WARNING 1           RCOND is not above eps: the matrix
 *                         "The matrix is algorithmically singular.  An estimate of the reciprocal of its L1
 *                         condition number is RCOND = %(R1)."
 *                         -> scale rows and columns, or use the double member
 *
 * Time: that of LFTQS, and of seven solutions.
 */
void LFCQS(const int32_t* n, const float* a, const int32_t* lda, const int32_t* kd, float* fact,
           const int32_t* ldfac, float* rcond);
void DLFCQS(const int32_t* n, const double* a, const int32_t* lda, const int32_t* kd, double* fact,
            const int32_t* ldfac, double* rcond);
void LFCQH(const int32_t* n, const orvel_complex* a, const int32_t* lda, const int32_t* kd,
           orvel_complex* fact, const int32_t* ldfac, float* rcond);
void DLFCQH(const int32_t* n, const orvel_dcomplex* a, const int32_t* lda, const int32_t* kd,
            orvel_dcomplex* fact, const int32_t* ldfac, double* rcond);
void L2CQS(const int32_t* n, const float* a, const int32_t* lda, const int32_t* kd, float* fact,
           const int32_t* ldfac, float* rcond, float* wk);
void DL2CQS(const int32_t* n, const double* a, const int32_t* lda, const int32_t* kd, double* fact,
            const int32_t* ldfac, double* rcond, double* wk);
void L2CQH(const int32_t* n, const orvel_complex* a, const int32_t* lda, const int32_t* kd,
           orvel_complex* fact, const int32_t* ldfac, float* rcond, orvel_complex* wk);
void DL2CQH(const int32_t* n, const orvel_dcomplex* a, const int32_t* lda, const int32_t* kd,
            orvel_dcomplex* fact, const int32_t* ldfac, double* rcond, orvel_dcomplex* wk);

/* Factors a positive definite band matrix: A = R^H * R. A pivot must be above eps times its own diagonal
 * element of A.
 *
 *     FACT(KD+1:LDFAC,N)  out  R, as A is stored; may be A where LDFAC = LDA
 *
 *     TERMINAL 1          N < 1: the order
 *     TERMINAL 2          LDA < KD + 1
 *     TERMINAL 2          no storage
 *     TERMINAL 3          LDFAC < KD + 1
 *     TERMINAL 4          KD < 0
 *     FATAL 2             A is not positive definite
 *                         "The input matrix is not positive definite.  The first of its leading submatrices
 *                         that is not has the order %(I1)."
 *                         -> solve it as a general band matrix
 *     WARNING 3           an element of the diagonal has |Im| > eps |Re|
 *                         "The diagonal of a Hermitian matrix is real, but the element %(I1) has an imaginary
 *                         part that is not negligible.  Zero is taken in its place."
 *
 * After an error: FACT has the columns of R before the order that is named.
 *
 * Time: N KD^2 operations.
 */
void LFTQS(const int32_t* n, const float* a, const int32_t* lda, const int32_t* kd, float* fact,
           const int32_t* ldfac);
void DLFTQS(const int32_t* n, const double* a, const int32_t* lda, const int32_t* kd, double* fact,
            const int32_t* ldfac);
void LFTQH(const int32_t* n, const orvel_complex* a, const int32_t* lda, const int32_t* kd,
           orvel_complex* fact, const int32_t* ldfac);
void DLFTQH(const int32_t* n, const orvel_dcomplex* a, const int32_t* lda, const int32_t* kd,
            orvel_dcomplex* fact, const int32_t* ldfac);
void L2TQS(const int32_t* n, const float* a, const int32_t* lda, const int32_t* kd, float* fact,
           const int32_t* ldfac, float* wk);
void DL2TQS(const int32_t* n, const double* a, const int32_t* lda, const int32_t* kd, double* fact,
            const int32_t* ldfac, double* wk);
void L2TQH(const int32_t* n, const orvel_complex* a, const int32_t* lda, const int32_t* kd,
           orvel_complex* fact, const int32_t* ldfac, orvel_complex* wk);
void DL2TQH(const int32_t* n, const orvel_dcomplex* a, const int32_t* lda, const int32_t* kd,
            orvel_dcomplex* fact, const int32_t* ldfac, orvel_dcomplex* wk);

/* Solves A*X = B from the factorization of a positive definite band matrix.
 *
 *     TERMINAL 1  N < 1
 *     TERMINAL 2  LDFAC < KD + 1
 *     TERMINAL 3  KD < 0
 *     TERMINAL 4  an element of the diagonal of FACT is close to zero
 *                 "The input matrix is singular.  Some of the diagonal elements of the upper triangular
 *                 matrix R of the R**H*R factorization are close to zero."
 *
 * After an error: X is untouched.
 *
 * Time: 4 N KD operations.
 */
void LFSQS(const int32_t* n, const float* fact, const int32_t* ldfac, const int32_t* kd, const float* b,
           float* x);
void DLFSQS(const int32_t* n, const double* fact, const int32_t* ldfac, const int32_t* kd, const double* b,
            double* x);
void LFSQH(const int32_t* n, const orvel_complex* fact, const int32_t* ldfac, const int32_t* kd,
           const orvel_complex* b, orvel_complex* x);
void DLFSQH(const int32_t* n, const orvel_dcomplex* fact, const int32_t* ldfac, const int32_t* kd,
            const orvel_dcomplex* b, orvel_dcomplex* x);

/* Solves as LFSQS and refines the solution, as LFIRG. Takes storage for 16 rows of the band from the heap.
 *
 *     RES(N)      out  the last correction
 *
 *     TERMINAL 1  N < 1
 *     TERMINAL 2  LDA < KD + 1
 *     TERMINAL 3  LDFAC < KD + 1
 *     TERMINAL 4  KD < 0
 *     TERMINAL 5  no storage for a copy of B
 *     WARNING 2   the refinement makes no progress, or leaves a residual that is too large
 *                 "The matrix is too ill-conditioned for iterative refinement to be effective."
 *                 -> use the double member
 *
 * Passes up the error TERMINAL 4 of LFSQS.
 *
 * Time: a few times that of LFSQS.
 */
void LFIQS(const int32_t* n, const float* a, const int32_t* lda, const int32_t* kd, const float* fact,
           const int32_t* ldfac, const float* b, float* x, float* res);
void DLFIQS(const int32_t* n, const double* a, const int32_t* lda, const int32_t* kd, const double* fact,
            const int32_t* ldfac, const double* b, double* x, double* res);
void LFIQH(const int32_t* n, const orvel_complex* a, const int32_t* lda, const int32_t* kd,
           const orvel_complex* fact, const int32_t* ldfac, const orvel_complex* b, orvel_complex* x,
           orvel_complex* res);
void DLFIQH(const int32_t* n, const orvel_dcomplex* a, const int32_t* lda, const int32_t* kd,
            const orvel_dcomplex* fact, const int32_t* ldfac, const orvel_dcomplex* b, orvel_dcomplex* x,
            orvel_dcomplex* res);

/* Determinant DET1 * 10^DET2 from the factorization of a positive definite band matrix.
 *
 *     DET1        out  the mantissa, 1 <= DET1 < 10; 0 when a diagonal element is zero
 *     DET2        out  the exponent; that reached before a zero
 *
 *     TERMINAL 1  N < 1: the order
 *     TERMINAL 2  LDFAC < KD + 1
 *     TERMINAL 3  KD < 0
 *
 * After an error: DET1 and DET2 are unchanged.
 *
 * Time: of the order N.
 */
void LFDQS(const int32_t* n, const float* fact, const int32_t* ldfac, const int32_t* kd, float* det1,
           float* det2);
void DLFDQS(const int32_t* n, const double* fact, const int32_t* ldfac, const int32_t* kd, double* det1,
            double* det2);
void LFDQH(const int32_t* n, const orvel_complex* fact, const int32_t* ldfac, const int32_t* kd, float* det1,
           float* det2);
void DLFDQH(const int32_t* n, const orvel_dcomplex* fact, const int32_t* ldfac, const int32_t* kd,
            double* det1, double* det2);

/* ---- helpers, which post nothing -------------------------------------------------------------------- */

/* Copies a matrix to B. Does nothing when a leading dimension is less than N.
 *
 *     B(N:LDB,N)  out  the copy
 *     LDB         in   its leading dimension
 */
void CRGRG(const int32_t* n, const float* a, const int32_t* lda, float* b, const int32_t* ldb);
void DCRGRG(const int32_t* n, const double* a, const int32_t* lda, double* b, const int32_t* ldb);
void CCGCG(const int32_t* n, const orvel_complex* a, const int32_t* lda, orvel_complex* b,
           const int32_t* ldb);
void DCCGCG(const int32_t* n, const orvel_dcomplex* a, const int32_t* lda, orvel_dcomplex* b,
            const int32_t* ldb);

/* Largest column sum of magnitudes of A; 0 when LDA is less than NRA.
 *
 *     NRA             in   the number of rows
 *     NCA             in   the number of columns
 *     A(NRA:LDA,NCA)  in   the matrix
 *     ANORM           out  the norm
 */
void NR1RR(const int32_t* nra, const int32_t* nca, const float* a, const int32_t* lda, float* anorm);
void DNR1RR(const int32_t* nra, const int32_t* nca, const double* a, const int32_t* lda, double* anorm);
void NR1CR(const int32_t* nra, const int32_t* nca, const orvel_complex* a, const int32_t* lda, float* anorm);
void DNR1CR(const int32_t* nra, const int32_t* nca, const orvel_dcomplex* a, const int32_t* lda,
            double* anorm);

/* The first element of largest |X(i)| * S(i).
 *
 *     N     in   the number of elements
 *     X(N)  in   the elements
 *     S(N)  in   their weights
 *     L     out  the index, one-based; 0 for N < 1
 */
void L4TRG(const int32_t* n, const float* x, const float* s, int32_t* l);
void DL4TRG(const int32_t* n, const double* x, const double* s, int32_t* l);
void L4TCG(const int32_t* n, const orvel_complex* x, const float* s, int32_t* l);
void DL4TCG(const int32_t* n, const orvel_dcomplex* x, const double* s, int32_t* l);

/* ---- options ---------------------------------------------------------------------------------------- */

/* Reads or sets the calling thread's option values.
 *
 *     16  padding count P and modulus M of L2LRG's factor array; initially 0 and 1
 *     17  1 no estimate of the condition number, 2 estimate (initially)
 *
 *     CHAPTER(*)    in      MATH
 *     IACT          in      1: reads; 2: sets
 *     IOPT          in      the option, 16 or 17
 *     NVALS         in      the number of its values, 2 for option 16, 1 for option 17
 *     IVALS(NVALS)  in/out  the values
 *
 *     TERMINAL 1    CHAPTER is not MATH
 *                   "The name of the chapter must be MATH while %(L1) is given."
 *     TERMINAL 2    IACT is neither 1 nor 2
 *                   "The action IACT must be 1 to read or 2 to set while %(I1) is given."
 *     TERMINAL 3    IOPT is neither 16 nor 17
 *                   "The option IOPT must be 16 or 17 while %(I1) is given."
 *     TERMINAL 4    NVALS is not the number of values of the option
 *                   "Option IOPT = %(I1) has %(I2) values while NVALS = %(I3) is given."
 *
 * After an error: nothing is changed.
 */
void IUMAG(const char* chapter, const int32_t* iact, const int32_t* iopt, const int32_t* nvals,
           int32_t* ivals, size_t chapter_len);

ORVEL_END

#endif
