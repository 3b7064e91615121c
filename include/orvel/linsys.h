/* include/orvel/linsys.h - dense linear systems
 *
 * Matrices are by columns with a leading dimension, arrays contiguous, indices one-based. Real members have
 * RG in their names, complex ones CG; a leading D means double precision. Every routine frees its scratch
 * before it returns. Sizes are formed in 64 bits; what cannot be had posts TERMINAL 2 (after code -1, which
 * marks the level).
 */
#ifndef ORVEL_LINSYS_H
#define ORVEL_LINSYS_H

#include <stddef.h>

#include "orvel/types.h"

ORVEL_BEGIN

/* Solves A*X = B (IPATH = 1) or A^H*X = B (IPATH = 2) with iterative refinement. A(LDA,N) in, B(N) in, X(N)
 * out; X may be B. The result is as accurate as the working precision allows while RCOND is above 100 eps.
 *
 * Posts TERMINAL 1 (N < 1), 2 (N > LDA, or no storage), 3 (IPATH), 4 (option 17), 5 (no storage for a copy
 * of B where X is B); FATAL 2: A is singular; X is untouched after these. WARNING 1: RCOND, an estimate of
 * the reciprocal of the L1 condition number, is not above eps, or the refinement made no progress; X holds
 * the last iterate.
 *
 * The worker takes its scratch as arguments: FACT(N,N) and IPVT(N), which hold the factorization afterwards
 * (see LFTRG), and WK(N). It makes all its checks even when one has failed, and so do L2LRG, L2CRG, LFIRG,
 * L2NRG and LFSRG. Complex members take a complex WK of the same length, as everywhere below. */
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

/* Solves as LSARG, without refinement. Posts as LSARG, and TERMINAL 4: option 16 has a padding count P < 0 or
 * a modulus M < 1.
 *
 * The worker uses FACT with a leading dimension of N + P where M divides N, else of N. The initial P is 0;
 * who sets another calls it with FACT(N + P, N). */
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

/* Factors A(LDA,N) into FACT(LDFAC,N) and IPVT(N), as LFTRG, and estimates the reciprocal RCOND of its L1
 * condition number; RCOND = 1 where it is not estimated (option 17 is 1, or A is singular). The estimate is
 * seldom below the true value, and may be above it by a factor of 10. FACT may be A when LDFAC = LDA.
 *
 * Posts TERMINAL 1 (N < 1), 2 (N > LDA, or no storage), 3 (N > LDFAC), 4 (option 17 is not 1 or 2); FATAL 2:
 * A is singular, FACT and IPVT hold what was reached; WARNING 1: RCOND is not above eps.
 *
 * Worker: WK(N). Source: A. Cline, C. Moler, G. Stewart and J. Wilkinson, An estimate for the condition
 * number of a matrix, 1979. */
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

/* Factors A(LDA,N) into FACT(LDFAC,N) and IPVT(N) by elimination with row-scaled partial pivoting. FACT may
 * be A when LDFAC = LDA.
 *
 *     FACT  upper triangle with diagonal: U
 *           below it, column k: the negated multipliers of step k, in the row order of step k
 *     IPVT  row that was interchanged with row k at step k, one-based; IPVT(N) = N
 *
 * The pivot of a step is the row with the largest |FACT(i,k)| * S(i), S(i) = 1 / max |A(i,j)| (1 where the
 * row is below the smallest number with a reciprocal); the lowest row of equal ones. Magnitudes of complex
 * numbers are |Re| + |Im|. A step whose pivot is no larger than that smallest number leaves its column as it
 * is, and the elimination goes on. An element gets its products in ascending order of the steps, so that the
 * result has the same bits whatever the size.
 *
 * Posts TERMINAL 1 (N < 1), 2 (N > LDA, or no storage), 3 (N > LDFAC), the first only; FATAL 2: A is
 * singular. NaN in A gives a singular matrix or NaN in FACT.
 *
 * Worker: WK(N) holds S, interchanged with the rows (in the storage of its first N reals in complex members).
 * Source: J. Dongarra, C. Moler, J. Bunch and G. Stewart, LINPACK Users' Guide, 1979. */
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

/* Solves A*X = B (IPATH = 1) or A^H*X = B (IPATH = 2) from the factorization of LFTRG or LFCRG. FACT(LDFAC,N)
 * in, IPVT(N) in; B(N) in, X(N) out; X may be B. Posts TERMINAL 1 (N < 1), 2 (N > LDFAC), 3 (IPATH = 1: the
 * diagonal of U has an element close to zero), 4 (the same, IPATH = 2), 5 (IPATH), 6 (an element of IPVT is
 * not a row, 1 to N; X is untouched). */
void LFSRG(const int32_t* n, const float* fact, const int32_t* ldfac, const int32_t* ipvt, const float* b,
           const int32_t* ipath, float* x);
void DLFSRG(const int32_t* n, const double* fact, const int32_t* ldfac, const int32_t* ipvt, const double* b,
            const int32_t* ipath, double* x);
void LFSCG(const int32_t* n, const orvel_complex* fact, const int32_t* ldfac, const int32_t* ipvt,
           const orvel_complex* b, const int32_t* ipath, orvel_complex* x);
void DLFSCG(const int32_t* n, const orvel_dcomplex* fact, const int32_t* ldfac, const int32_t* ipvt,
            const orvel_dcomplex* b, const int32_t* ipath, orvel_dcomplex* x);

/* Solves as LFSRG and refines the solution with residuals of A(LDA,N) in twice the working precision, until a
 * correction is below eps or does not shrink. RES(N) out: the last correction. X may be B. Posts TERMINAL 1
 * (N < 1), 2 (N > LDA), 3 (N > LDFAC), 4 (IPATH), 5 (no storage for a copy of B where X is B), 6 (an element
 * of IPVT is not a row, 1 to N; X is untouched); WARNING 2: no convergence, or an element of the residual
 * that is larger than 4(N+1) eps (|A| |X| + |B|) after it, as when growth in the elimination has spoiled
 * FACT; X holds the last iterate. The second may take one more pass over A. What LFSRG posts ends it. Source:
 * R. Skeel, Iterative refinement implies numerical stability for Gaussian elimination, 1980. */
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

/* Determinant DET1 * 10^DET2 from a factorization; 1 <= |DET1| < 10, complex magnitudes being |Re| + |Im|.
 * When a diagonal element of U is zero DET1 is 0, and DET2 the exponent reached before it. An infinite DET1
 * stays as it is. Posts TERMINAL 1 (N < 1), 2 (N > LDFAC), 3 (an element of IPVT is not a row, 1 to N), the
 * first only, and leaves DET1 and DET2 then. */
void LFDRG(const int32_t* n, const float* fact, const int32_t* ldfac, const int32_t* ipvt, float* det1,
           float* det2);
void DLFDRG(const int32_t* n, const double* fact, const int32_t* ldfac, const int32_t* ipvt, double* det1,
            double* det2);
void LFDCG(const int32_t* n, const orvel_complex* fact, const int32_t* ldfac, const int32_t* ipvt,
           orvel_complex* det1, float* det2);
void DLFDCG(const int32_t* n, const orvel_dcomplex* fact, const int32_t* ldfac, const int32_t* ipvt,
            orvel_dcomplex* det1, double* det2);

/* Inverse AINV(LDAINV,N) of A(LDA,N); AINV may be A when LDAINV = LDA. Posts TERMINAL 1 (N < 1), 2 (N > LDA,
 * or no storage), 3 (N > LDAINV), 4 (option 17); FATAL 2: A is singular, AINV holds the factorization
 * reached; WARNING 1: RCOND is not above eps. Worker: WK(N + N*(N-1)/2), IWK(N). */
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

/* Inverse of a triangle of A(LDA,N), lower for IPATH = 1, upper for IPATH = 2, into the same triangle of
 * AINV(LDAINV,N); the other triangles are neither read nor written. AINV may be A when LDAINV = LDA. Posts
 * TERMINAL 1 (N < 1), 2 (N > LDA), 3 (N > LDAINV), 4 (IPATH), 5 (a diagonal element is close to zero; AINV is
 * untouched). */
void LINRT(const int32_t* n, const float* a, const int32_t* lda, const int32_t* ipath, float* ainv,
           const int32_t* ldainv);
void DLINRT(const int32_t* n, const double* a, const int32_t* lda, const int32_t* ipath, double* ainv,
            const int32_t* ldainv);
void LINCT(const int32_t* n, const orvel_complex* a, const int32_t* lda, const int32_t* ipath,
           orvel_complex* ainv, const int32_t* ldainv);
void DLINCT(const int32_t* n, const orvel_dcomplex* a, const int32_t* lda, const int32_t* ipath,
            orvel_dcomplex* ainv, const int32_t* ldainv);

/* Helpers, which check nothing: copy of A(LDA,N) to B(LDB,N); ANORM = largest column sum of magnitudes of
 * A(LDA,NCA), NRA rows; L = the first i, one-based, with the largest |X(i)| * S(i), i = 1..N, or 0. */
void CRGRG(const int32_t* n, const float* a, const int32_t* lda, float* b, const int32_t* ldb);
void DCRGRG(const int32_t* n, const double* a, const int32_t* lda, double* b, const int32_t* ldb);
void CCGCG(const int32_t* n, const orvel_complex* a, const int32_t* lda, orvel_complex* b,
           const int32_t* ldb);
void DCCGCG(const int32_t* n, const orvel_dcomplex* a, const int32_t* lda, orvel_dcomplex* b,
            const int32_t* ldb);
void NR1RR(const int32_t* nra, const int32_t* nca, const float* a, const int32_t* lda, float* anorm);
void DNR1RR(const int32_t* nra, const int32_t* nca, const double* a, const int32_t* lda, double* anorm);
void NR1CR(const int32_t* nra, const int32_t* nca, const orvel_complex* a, const int32_t* lda, float* anorm);
void DNR1CR(const int32_t* nra, const int32_t* nca, const orvel_dcomplex* a, const int32_t* lda,
            double* anorm);
void L4TRG(const int32_t* n, const float* x, const float* s, int32_t* l);
void DL4TRG(const int32_t* n, const double* x, const double* s, int32_t* l);
void L4TCG(const int32_t* n, const orvel_complex* x, const float* s, int32_t* l);
void DL4TCG(const int32_t* n, const orvel_dcomplex* x, const double* s, int32_t* l);
/* The calling thread's option values. CHAPTER: MATH, LEN characters, which follow by value; IACT = 1 reads, 2
 * sets; IOPT the option; IVALS(NVALS) its values. Unknown names, actions, options or counts post TERMINAL 1
 * to 4 and change nothing.
 *
 *     16  padding count P and modulus M of L2LRG's factor array; initially 0 and 1
 *     17  1 no estimate of the condition number, 2 estimate (initially) */
void IUMAG(const char* chapter, const int32_t* iact, const int32_t* iopt, const int32_t* nvals,
           int32_t* ivals, size_t chapter_len);

ORVEL_END

#endif
