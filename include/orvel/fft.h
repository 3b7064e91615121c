/* include/orvel/fft.h - fast Fourier transforms of real and complex sequences of any length
 *
 * Nothing is divided by N: a forward and a backward transform after each other return N times the sequence.
 * Lengths of small factors are fast; a large prime factor is done by a convolution, which takes its scratch
 * from the heap (and is done by slow direct sums where there is none).
 *
 * Errors of random sequences, real and complex, in either precision, relative to the root mean square of
 * the exact results, are at most so many times eps sqrt(log2 N), eps being the distance from 1 to the next
 * number (tools/fft_accuracy.cpp; measured up to 2^18, and up to 2^22 in samples). A pair is a forward and
 * a backward transform after each other.
 *
 *                                               largest prime factor of a longer N
 *                                     N < 100       2   to 13  to 127  beyond
 *     transform, root mean square         1.1    0.45    0.55    0.75    0.80
 *     transform, largest                  4.0     2.0     2.6     4.0     3.4
 *     pair, root mean square              1.6    0.65    0.85    1.00    1.25
 *     pair, largest                       4.5     2.8     4.6     4.6     5.5
 *
 * The fronts FFTRF, FFTRB, FFTCF, FFTCB obtain a work vector and initialise it in each call; powers of two
 * up to 4096 and most products of 2, 3, 5 and 7 up to 250 need none. A program that transforms many
 * sequences of one length calls FFTRI or FFTCI once and then the workers F2TRF ... F2TCB. A work vector is of
 * one length and one precision, for both directions. Input and output may be the same array; else they must
 * not overlap.
 *
 *     N            in     the length of the sequence
 *     WFR(2*N+15)  inout  the work vector of real transforms
 *     WFC(4*N+15)  inout  the work vector of complex transforms
 *
 *     cause        N < 1
 *                  "The length of the sequence N = %(I1).  It must be at least 1."
 *     cause        no storage
 *                  "The required storage cannot be allocated.  The specified N may be too large, where N =
 *                  %(I1)."
 *                  -> use the worker with a work vector of your own
 *     cause        the factors in the work vector are not those of N
 *                  "The work vector does not hold the factors of the length N = %(I1).  It must be
 *                  initialized for this length."
 *                  -> initialise it for this length
 *
 * Work vectors:
 *
 *     elements                   real, WFR(2N+15)            complex, WFC(4N+15)
 *     scratch of the passes      1 .. N                      1 .. 2N
 *     roots of unity             N+1 .. 2N                   2N+1 .. 4N
 *     N, count, factors          2N+1 .. 2N+15               4N+1 .. 4N+15
 *
 * Factors: 4 as often as it divides N, then 2, 3, 5, 7, 9, 11 ...; a 2 behind others is moved to the front.
 * So N = 12 has 4, 3; 8 has 2, 4; 14 has 2, 7. Where they are more than 13, pairs 2, 4 and 4, 4 and 3, 3
 * and 5, 5 are stored as one. The parts of the roots are off by at most 0.31 eps; how they are ordered is
 * the library's.
 *
 * Storage of the transform of a real sequence, COEF(N), for N = 6 and N = 7 (c_k the sum of x_j cos(2 pi k
 * (j-1) / N), s_k that of x_j sin):
 *
 *     COEF      1     2     3     4     5     6     7
 *     N = 6    c_0   c_1  -s_1   c_2  -s_2   c_3
 *     N = 7    c_0   c_1  -s_1   c_2  -s_2   c_3  -s_3
 *
 * that is real and imaginary part of each coefficient of the complex transform in turn, without the parts
 * that are zero and the coefficients that are conjugates of these.
 *
 * After an error: nothing is computed and no output written.
 *
 * Time: of the order N log N for every N.
 *
 * Threads: share a work vector only as copies, because its first part is scratch.
 *
 * NaN: NaN or an infinity in the sequence makes coefficients NaN.
 *
 * Source: P. Swarztrauber, Vectorizing the FFTs, in: Parallel Computations, 1982.
 */
#ifndef ORVEL_FFT_H
#define ORVEL_FFT_H

#include "orvel/types.h"

ORVEL_BEGIN

/* Initialises the work vector of real transforms. With N = 1 nothing is written.
 *
 *     WFR(2*N+15)  out  the work vector
 *
 *     TERMINAL 1   N < 1
 */
void FFTRI(const int32_t* n, float* wfr);
void DFFTRI(const int32_t* n, double* wfr);

/* Transforms a real sequence.
 *
 *     XSEQ(N)     in   the sequence
 *     COEF(N)     out  the coefficients; may be XSEQ
 *
 *     TERMINAL 1  N < 1
 *     TERMINAL 2  no storage
 */
void FFTRF(const int32_t* n, const float* xseq, float* coef);
void DFFTRF(const int32_t* n, const double* xseq, double* coef);

/* Transforms real coefficients back: x_j = c_0 + 2 sum over k of (c_k cos - s_k sin with the stored sign)
 * (+ c_(N/2) (-1)^(j-1)).
 *
 *     COEF(N)     in   the coefficients
 *     XSEQ(N)     out  the sequence; may be COEF
 *
 *     TERMINAL 1  N < 1
 *     TERMINAL 2  no storage
 */
void FFTRB(const int32_t* n, const float* coef, float* xseq);
void DFFTRB(const int32_t* n, const double* coef, double* xseq);

/* FFTRF with the work vector of FFTRI. Its first N elements are scratch. Transforms of odd length take
 * further scratch from the heap; without it they are slow direct sums.
 *
 *     XSEQ(N)     in   the sequence
 *     COEF(N)     out  the coefficients; may be XSEQ
 *
 *     TERMINAL 1  N < 1
 *     TERMINAL 3  the factors in the work vector are not those of N
 */
void F2TRF(const int32_t* n, const float* xseq, float* coef, float* wfr);
void DF2TRF(const int32_t* n, const double* xseq, double* coef, double* wfr);

/* FFTRB with the work vector of FFTRI, as F2TRF.
 *
 *     COEF(N)     in   the coefficients
 *     XSEQ(N)     out  the sequence; may be COEF
 *
 *     TERMINAL 1  N < 1
 *     TERMINAL 3  the factors in the work vector are not those of N
 */
void F2TRB(const int32_t* n, const float* coef, float* xseq, float* wfr);
void DF2TRB(const int32_t* n, const double* coef, double* xseq, double* wfr);

/* The forward transform in place, with the sections of the work vector as arrays.
 *
 *     C(N)        inout    the sequence, then the coefficients
 *     CH(N)       scratch
 *     WA(N)       in       the roots as FFTRI stores them
 *     FAC(15)     in       the factors as FFTRI stores them
 *
 *     TERMINAL 1  N < 1
 *     TERMINAL 3  the factors in the work vector are not those of N
 */
void F3TRF(const int32_t* n, float* c, float* ch, const float* wa, const float* fac);
void DF3TRF(const int32_t* n, double* c, double* ch, const double* wa, const double* fac);

/* Initialises the work vector of complex transforms. With N = 1 nothing is written.
 *
 *     WFC(4*N+15)  out  the work vector
 *
 *     TERMINAL 1   N < 1
 */
void FFTCI(const int32_t* n, float* wfc);
void DFFTCI(const int32_t* n, double* wfc);

/* Transforms a complex sequence: COEF(k) = the sum of XSEQ(j) exp(-2 pi i (j-1) (k-1) / N).
 *
 *     XSEQ(N)     in   the sequence
 *     COEF(N)     out  the coefficients; may be XSEQ
 *
 *     TERMINAL 1  N < 1
 *     TERMINAL 2  no storage
 */
void FFTCF(const int32_t* n, const orvel_complex* xseq, orvel_complex* coef);
void DFFTCF(const int32_t* n, const orvel_dcomplex* xseq, orvel_dcomplex* coef);

/* Transforms complex coefficients back: XSEQ(j) = the sum of COEF(k) exp(+2 pi i (j-1) (k-1) / N).
 *
 *     COEF(N)     in   the coefficients
 *     XSEQ(N)     out  the sequence; may be COEF
 *
 *     TERMINAL 1  N < 1
 *     TERMINAL 2  no storage
 */
void FFTCB(const int32_t* n, const orvel_complex* coef, orvel_complex* xseq);
void DFFTCB(const int32_t* n, const orvel_dcomplex* coef, orvel_dcomplex* xseq);

/* FFTCF with the work vector of FFTCI. Its first 2N elements are scratch.
 *
 *     XSEQ(N)     in       the sequence
 *     COEF(N)     out      the coefficients; may be XSEQ
 *     CWORK(2*N)  scratch  2N reals, or N complex numbers: the first pass writes there when input and
 *                          output are one array
 *
 *     TERMINAL 1  N < 1
 *     TERMINAL 3  the factors in the work vector are not those of N
 */
void F2TCF(const int32_t* n, const orvel_complex* xseq, orvel_complex* coef, float* wfc, float* cwork);
void DF2TCF(const int32_t* n, const orvel_dcomplex* xseq, orvel_dcomplex* coef, double* wfc, double* cwork);

/* FFTCB with the work vector of FFTCI, as F2TCF.
 *
 *     COEF(N)     in       the coefficients
 *     XSEQ(N)     out      the sequence; may be COEF
 *     CWORK(2*N)  scratch  2N reals, or N complex numbers: the first pass writes there when input and
 *                          output are one array
 *
 *     TERMINAL 1  N < 1
 *     TERMINAL 3  the factors in the work vector are not those of N
 */
void F2TCB(const int32_t* n, const orvel_complex* coef, orvel_complex* xseq, float* wfc, float* cwork);
void DF2TCB(const int32_t* n, const orvel_dcomplex* coef, orvel_dcomplex* xseq, double* wfc, double* cwork);

ORVEL_END

#endif
