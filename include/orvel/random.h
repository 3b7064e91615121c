/* include/orvel/random.h - uniform random numbers: nine generators, seeds, states, independent streams
 *
 *     int32_t option = 8, seed = 123457, n = 1000;
 *     double r[1000];
 *     RNOPT(&option);
 *     RNSET(&seed);
 *     DRNUN(&n, r);
 *
 * Each thread has a stream of its own, set up at its first call, with option 1 and no seed. A thread that
 * draws without having set a seed takes one from the local time of day; threads that start in the same
 * second then draw the same numbers. How a stream is cut into calls never changes it, and single and double
 * members draw from the same stream, but for the shuffled options, where each has its own table.
 *
 *     option  generator                                           single values    double values
 *     1, 2    s = 16807 s mod (2^31 - 1); 2 shuffled              0 < r < 1 (a)    0 < r < 1
 *     3, 4    the same with 397204094; 4 shuffled                 0 < r < 1 (a)    0 < r < 1
 *     5, 6    the same with 950706376; 6 shuffled                 0 < r < 1 (a)    0 < r < 1
 *     7       shift register, X(t) = X(t-1563) xor X(t-96)        0 <= r < 1       0 <= r <= 1
 *     8       32-bit Mersenne twister MT19937                     0 < r <= 1       0 < r <= 1 + 1.2e-10
 *     9       64-bit Mersenne twister MT19937-64                  0 <= r <= 1      0 <= r < 1
 *
 * (a) Filling the single table of a shuffled option rounds the 64 largest states to 1, once in 3e7 entries.
 * The single 1 of options 8 and 9 comes once in 3e7 numbers; the 0 of option 7, its double 1, the double
 * above 1 of option 8 and the 0 of option 9 once in 2e9 or more. A program that divides by r or 1 - r, or
 * takes a logarithm, looks for them.
 *
 * A single value is the double product (state or word times the scale 2^-31 - 2^-55, or the quotient of the
 * twisters) rounded once more.
 *
 *     NR     in   the number of values
 *     R(NR)  out  the values
 *     ISEED  in   a seed, 1 to 2147483646
 *
 * Source: P. A. W. Lewis, A. S. Goodman, J. M. Miller, A pseudo-random number generator for the System/360,
 * 1969 (16807); G. S. Fishman, L. R. Moore, An exhaustive analysis of multiplicative congruential random
 * number generators with modulus 2^31 - 1, 1986 (the large multipliers); T. G. Lewis, W. H. Payne,
 * Generalized feedback shift register pseudorandom number algorithm, 1973, and M. Fushimi, Random number
 * generation with the recursion X(t) = X(t-3p) xor X(t-3q), 1990 (shift register); C. Bays, S. D. Durham,
 * Improving a poor random number generator, 1976 (shuffling); M. Matsumoto, T. Nishimura, Mersenne twister,
 * 1998, with the key initialisation of 2002, and T. Nishimura, Tables of 64-bit Mersenne twisters, 2000.
 */
#ifndef ORVEL_RANDOM_H
#define ORVEL_RANDOM_H

#include "orvel/types.h"

ORVEL_BEGIN

/* ---- blocks of state, one copy per thread --------------------------------------------------------------
 *
 */

/* A program may read and write these. What leads nowhere is taken so:
 *
 *     - a state that is no whole number in 1..2147483646 counts as 1 (it can only get there by hand, or, once
 *       in 2^30 words, by leaving option 7);
 *     - an option outside 1..9 generates like 1;
 *     - an index of the shift register, or a twister position, below its range counts as 1, an index above
 *       1563 as 1563; negative words of the shift register count without their sign bit;
 *     - a seed of 0, -2^31 or -2^30 counts as 1 for the shift register, which would be all zeros;
 *     - a twister position above 625 (32 bits) or 313 (64 bits) says "never filled", whatever the flag says:
 *       the next draw seeds the twister from 21641 or 19650218.
 *
 * Where SEED and STATE differ, congruential options go on from STATE. MODULUS, RECIPROCAL and SCALE are
 * written for the program to read, as are the masks below.
 */
struct orvel_r2ncom {
    double modulus;           /* 2147483647 */
    double state;             /* of the congruential generator; last word of option 7 */
    double reciprocal;        /* 1 / 2147483647, the scale of double members */
    double double_table[128]; /* shuffle table of double members */
    int32_t double_ready;     /* LOGICAL */
    int32_t option;           /* 1..9 */
    int32_t single_ready;     /* LOGICAL */
    float single_table[128];  /* shuffle table of single members */
    int32_t seed;             /* STATE as an integer */
    int32_t first;            /* index of the next word of the shift register, 1..1563 */
    int32_t words_ready;      /* LOGICAL */
    int32_t second;           /* index of the word that it is combined with */
    float scale;              /* 2^-31 - 2^-55, the scale of single members */
    int32_t words[1563];      /* shift register, 31 bits each */
};
struct orvel_mt_state1 {
    int32_t ready; /* 1 once initialised */
    int32_t
        position; /* of the next word, from 1; one more than there are: exhausted, two more: never filled */
};
struct orvel_mt32_state2 {
    uint32_t word[624];
};
struct orvel_mt64_state2 {
    uint64_t word[312];
};
extern ORVEL_PER_THREAD struct orvel_r2ncom R2NCOM;
extern ORVEL_PER_THREAD struct orvel_mt_state1 MT32_STATE1;
extern ORVEL_PER_THREAD struct orvel_mt32_state2 MT32_STATE2;
extern ORVEL_PER_THREAD struct orvel_mt_state1 MT64_STATE1;
extern ORVEL_PER_THREAD struct orvel_mt64_state2 MT64_STATE2;

/* Upper (0x80000000) and lower (0x7FFFFFFF) mask of the 32-bit twister, and both of the 64-bit twister;
 * written when a twister is initialised.
 */
extern ORVEL_PER_THREAD uint32_t MT_MASK1;
extern ORVEL_PER_THREAD uint32_t MT_MASK2;
extern ORVEL_PER_THREAD uint64_t MT_MASK3[2];

/* ---- numbers -------------------------------------------------------------------------------------------
 *
 */

/* Fills a vector with uniform numbers. Without an error no name is put on the routine stack, and N1RTY(1)
 * still tells of the routine before.
 *
 *     TERMINAL 1  NR < 1
 *                 "%(L1) = %(I1).  %(L1) must be greater than or equal to %(I2)."
 *
 * After an error: nothing is changed.
 */
void RNUN(const int32_t* nr, float* r);
void DRNUN(const int32_t* nr, double* r);

/* One number of the same stream. */
float RNUNF(void);
double DRNUNF(void);

/* ---- option and seed -----------------------------------------------------------------------------------
 *
 */

/* Selects the generator of this thread. State and tables of all generators are kept.
 *
 *     IOPT        in  the option, 1 to 9
 *     TERMINAL 1  IOPT is not 1 to 9
 *                 "%(L1) = %(I1).  %(L1) must be greater than or equal to %(I2) and less than or equal to
 *                 %(I3)."
 */
void RNOPT(const int32_t* iopt);

/* The generator of this thread.
 *
 *     IOPT  out  the option, 1 to 9
 */
void RNOPG(int32_t* iopt);

/* Sets the seed. 0 takes one from the local time of day, 10000 hour + 100 minute + second + 1 (123457 where
 * that is 1); a thread that has neither a seed nor drawn yet replaces it by a fresh one at its first draw.
 * Other values are ignored. Posts nothing. Tables and twisters that are in use stay as they are: a seed
 * reaches a shuffled option, the shift register or a twister only where that has not been used on this
 * thread, or is set back with RNSES, RNSEF or the flags of the blocks.
 *
 *     ISEED  in  the seed, 1 to 2147483646, or 0
 */
void RNSET(const int32_t* iseed);

/* The current state as an integer. After draws with options 1 to 6 it is the seed that continues the stream
 * (unshuffled options), with option 7 the last word; options 8 and 9 leave it alone. A thread without a
 * seed takes one from the clock first.
 *
 *     ISEED  out  the state
 */
void RNGET(int32_t* iseed);

/* The seed whose stream starts 100000 numbers after that of another seed. For options 1, 3 and 5; options 8
 * and 9 return ISEED1. An ISEED1 outside 1..2147483646 is taken modulo 2147483647 and may give 0.
 *
 *     ISEED1      in   the seed
 *     ISEED2      out  the seed of the later stream; may be ISEED1
 *     TERMINAL 1  option 2, 4 or 6 is selected
 *                 "The specified uniform multiplicative congruential pseudorandom number generator is
 *                 shuffled.  RNISD does not work when shuffling is used.  RNOPT allows you to select the
 *                 type of generator."
 *     TERMINAL 2  option 7 is selected
 *                 "The specified uniform pseudorandom number generator uses generalized feedback shift
 *                 register (GFSR) method.  RNISD does not work when this method is used.  RNOPT allows you
 *                 to select the type of generator."
 *
 * After an error: ISEED2 is unchanged.
 */
void RNISD(const int32_t* iseed1, int32_t* iseed2);

/* ---- saving and restoring ------------------------------------------------------------------------------
 *
 */

/* The shuffle table of single (DRNGES: double) members. A table that has not been used is 0.
 *
 *     TABLE(128)  out  the table
 */
void RNGES(float* table);
void DRNGES(double* table);

/* Sets the shuffle table of single (DRNSES: double) members. Elements are copied as long as they lie in (0,
 * 1); when all do, the table is ready. TABLE(1) <= 0 posts nothing: the table is filled anew from the
 * current state at the next draw.
 *
 *     TABLE(128)  in  the table
 *     TERMINAL 1  an element, the first that is named, is not in (0, 1)
 *                 "TABLE(%(I1)) = %(R1).  All elements of TABLE must be positive and strictly less than
 *                 1.0."
 */
void RNSES(const float* table);
void DRNSES(const double* table);

/* State of the shift register.
 *
 *     IARRAY(1565)  out  the words, the index of the next one and the second index
 */
void RNGEF(int32_t* iarray);

/* Sets the state of the shift register. IARRAY(1) < 1 posts nothing: the register is filled anew from the
 * current seed at the next draw; that is also what a saved register suffers whose first word happens to be
 * 0. Indices above 1563: see R2NCOM.
 *
 *     IARRAY(1565)  in  the words, the index of the next one and the second index
 *     TERMINAL 2    IARRAY(1564) < 1
 *                   "IARRAY(1564) = %(I1).  All elements of IARRAY must be positive."
 *     TERMINAL 3    IARRAY(1565) < 1
 *                   "IARRAY(1565) = %(I1).  All elements of IARRAY must be positive."
 *
 * After an error: nothing is changed.
 */
void RNSEF(const int32_t* iarray);

/* State of the 32-bit twister. A twister saved before its first use says "never filled", 626; restored, it
 * starts from the current seed at its next draw.
 *
 *     MTABLE(625)  out  position and words
 */
void RNGE32(int32_t* mtable);

/* Sets the state of the 32-bit twister. A position above 626 does nothing, without a message; for others
 * see R2NCOM.
 *
 *     MTABLE(625)  in  position and words
 */
void RNSE32(const int32_t* mtable);

/* State of the 64-bit twister. A twister saved before its first use says "never filled", 314; restored, it
 * starts from the current seed at its next draw.
 *
 *     MTABLE(313)  out  position and words
 */
void RNGE64(int64_t* mtable);

/* Sets the state of the 64-bit twister. A position above 314 does nothing, without a message; for others
 * see R2NCOM.
 *
 *     MTABLE(313)  in  position and words
 */
void RNSE64(const int64_t* mtable);

/* Initialises a twister from a key. LEN = 1 does nothing.
 *
 *     KEY(LEN)    in  the key
 *     LEN         in  its length
 *     TERMINAL 1  LEN < 1
 *                 "%(L1) = %(I1).  %(L1) must be greater than or equal to %(I2)."
 *
 * After an error: nothing is changed.
 */
void RNIN32(const int32_t* key, const int32_t* len);
void RNIN64(const int64_t* key, const int32_t* len);

/* ---- workers, which post nothing -----------------------------------------------------------------------
 *
 */

/* Sets this thread's stream up if need be.
 *
 *     IARG  in  0: then takes a seed from the clock where none is set; -1: then takes a seed as set; a
 *               positive value becomes the option, unchecked
 */
void R1INT(const int32_t* iarg);

/* A seed from the clock, which is not stored.
 *
 *     ISEED  out  the seed
 */
void R1CLK(int32_t* iseed);

/* Fills the shuffle table from the state by the multiplier of the option, 16807 for options 7 to 9. */
void R1INS(void);
void DR1INS(void);

/* Fills the shift register from the integer seed. */
void R1INF(void);

/* Fills a twister from an integer seed.
 *
 *     ISEED  in  the seed
 */
void R1IN32(const int32_t* iseed);
void R1IN64(const int32_t* iseed);

/* Numbers from a twister, whatever the option. One that is not ready is seeded from 21641 or 19650218; NR <
 * 1 does nothing.
 */
void R1T32(const int32_t* nr, float* r);
void R1T64(const int32_t* nr, float* r);
void DR1T32(const int32_t* nr, double* r);
void DR1T64(const int32_t* nr, double* r);

ORVEL_END

#endif
