/* include/orvel/util.h - time of day, date, processor time, calendar arithmetic, sorting, permutation
 *
 * A date is three integers: IDAY 1..31, MONTH 1..12 and IYEAR, the year without a year 0: 1 B.C. is -1,
 * 45 B.C. is -45. The calendar is the Julian one to 4 October 1582 and the Gregorian one from 15 October
 * 1582; the ten days between do not exist. Leap years are those that 4 divides, before and after year 1 (so
 * -4 and 4, with seven years between them); from 1583 on a century is one only if 400 divides it. Before
 * 45 B.C. dates are computed as if the Julian calendar had been in use.
 *
 * A day number counts days from 1 January 1900, which is day 0. It is a 32-bit integer: the first day is
 * 3 March -5877591, the last 12 July 5881510.
 *
 *     int32_t day = 1, month = 1, year = 2000;
 *     int32_t n = NDAYS(&day, &month, &year) + 1000;   // a thousand days later
 *     NDYIN(&n, &day, &month, &year);
 *
 * Source of the method: counting from March, so that the leap day is the last of its year: C. Zeller,
 * Kalender-Formeln, Acta Mathematica 9, 1887; E. G. Richards, Mapping Time, Oxford University Press, 1998.
 */
#ifndef ORVEL_UTIL_H
#define ORVEL_UTIL_H

#include "orvel/types.h"

ORVEL_BEGIN

/* ---- calendar ----------------------------------------------------------------------------------- */

/* Day number of a date. All in. Posts the errors of C1DAT and TERMINAL 6 (a date before the first or after
 * the last day number), and then returns 0, which is also the number of a day: look at N1RTY(1). */
int32_t NDAYS(const int32_t* iday, const int32_t* month, const int32_t* iyear);

/* The date of a day number. NDAYS in; IDAY, MONTH, IYEAR out. Every number has a date; posts nothing. */
void NDYIN(const int32_t* ndays, int32_t* iday, int32_t* month, int32_t* iyear);

/* Day of the week, 1 Sunday to 7 Saturday. All in. Posts what NDAYS posts, and then returns 0. */
int32_t IDYWK(const int32_t* iday, const int32_t* month, const int32_t* iyear);

/* Check a date. IDAY, MONTH, IYEAR in; ICODE out, the code that the caller's next check may use, 6; LEAP
 * out, 1 for a leap year and -1 otherwise. Posts at the current level, every check that fails:
 *
 *     TERMINAL 1 (MONTH outside 1..12), 2 (IDAY below 1), 3 (IYEAR = 0), 4 (5 to 14 October 1582),
 *     NOTE 1 (IYEAR below -45; the date is accepted; not posted after an error),
 *     TERMINAL 5 (IDAY above the length of the month; not checked for a bad MONTH).
 *
 * The error recorded is the last one. Called at level 1 no pop follows, so the stop switch is obeyed at
 * once. */
void C1DAT(const int32_t* iday, const int32_t* month, const int32_t* iyear, int32_t* icode, int32_t* leap);

/* ---- clock -------------------------------------------------------------------------------------- */

/* Today's date and the time of day, both of the local time zone (TZ, or the setting of the system). Out.
 * Hours 0..23, minutes 0..59, seconds 0..60 with the fraction dropped. */
void TDATE(int32_t* iday, int32_t* month, int32_t* iyear);
void TIMDY(int32_t* ihour, int32_t* minute, int32_t* isec);

/* Processor time in seconds that the calling thread has used since its own first call of CPSEC, which
 * returns 0. Posts TERMINAL 1 (the system reports a negative time) and then returns 0. */
float CPSEC(void);

/* ---- sorting ------------------------------------------------------------------------------------
 *
 * The input RA(N) (IA) is copied to RB (IB), which is then sorted in place into ascending order; both may be
 * the same array. In the P members the labels IPERM(N), in and out, are moved as the elements: with 1..N on
 * input, RB(i) = RA(IPERM(i)) on output. The sort does not set them. The second letter group tells the key:
 *
 *     G  the value         SVRGN, SVRGP, DSVRGN, DSVRGP (real), SVIGN, SVIGP (integer)
 *     B  the magnitude     SVRBN, SVRBP, DSVRBN, DSVRBP (real), SVIBN, SVIBP (integer); signs are kept
 *
 * Equal keys may leave in any order; 0 and -0 are equal. What is not a number comes last. The magnitude of
 * the most negative integer is the largest of all. Nothing is allocated.
 *
 * Post TERMINAL 1 (N below 1), and then leave RB and IPERM as they were.
 *
 * The time is of the order N log N for every input. Patterns such as two runs, a run with an element out of
 * place, pipes of organs, waves and saw teeth are divided as well as a vector in random order and cost no
 * more; inputs made to defeat the choice of the pivots are finished by heapsort, at several times the cost.
 * Vectors that are ascending or descending throughout are recognised and cost one pass.
 *
 * Source of the method: R. C. Singleton, Algorithm 347: an efficient algorithm for sorting with minimal
 * storage, Communications of the ACM 12, 1969. */

void SVRGN(const int32_t* n, const float* ra, float* rb);
void DSVRGN(const int32_t* n, const double* ra, double* rb);
void SVRGP(const int32_t* n, const float* ra, float* rb, int32_t* iperm);
void DSVRGP(const int32_t* n, const double* ra, double* rb, int32_t* iperm);
void SVIGN(const int32_t* n, const int32_t* ia, int32_t* ib);
void SVIGP(const int32_t* n, const int32_t* ia, int32_t* ib, int32_t* iperm);
void SVRBN(const int32_t* n, const float* ra, float* rb);
void DSVRBN(const int32_t* n, const double* ra, double* rb);
void SVRBP(const int32_t* n, const float* ra, float* rb, int32_t* iperm);
void DSVRBP(const int32_t* n, const double* ra, double* rb, int32_t* iperm);
void SVIBN(const int32_t* n, const int32_t* ia, int32_t* ib);
void SVIBP(const int32_t* n, const int32_t* ia, int32_t* ib, int32_t* iperm);

/* ---- permutation --------------------------------------------------------------------------------- */

/* Permute a vector. X(N) in; IPERMU(N) in, each of 1..N once; IPATH in, 1: XPERMU(i) = X(IPERMU(i)),
 * 2: XPERMU(IPERMU(i)) = X(i); XPERMU(N) out, may be X. Posts
 *
 *     TERMINAL 1 (N below 1), 2 (IPATH), 3 (an entry of IPERMU outside 1..N; one error for each),
 *     10 (no storage for N integers).
 *
 * After 3 and 10 XPERMU is a copy of X. Entries that repeat are not detected; XPERMU then has some elements
 * of X in some order. */
void PERMU(const int32_t* n, const float* x, const int32_t* ipermu, const int32_t* ipath, float* xpermu);
void DPERMU(const int32_t* n, const double* x, const int32_t* ipermu, const int32_t* ipath, double* xpermu);

/* Permute the rows or the columns of a matrix. A(LDA,NCA) in; IPATH in, 1: rows, APER(i,.) = A(IPERMU(i),.),
 * 2: columns, APER(.,j) = A(.,IPERMU(j)); IPERMU in, of NRA or NCA entries; APER(LDAPER,NCA) out, may be A if
 * LDAPER = LDA. P2RMA takes WORK(NRA) scratch, which is used only where APER is A. Posts from P2RMA
 *
 *     TERMINAL 1 (NRA below 1), 2 (NCA below 1), 3 (LDA below 1), 4 (NRA above LDA), 5 (NRA above LDAPER),
 *     6 (LDAPER below 1), 7 (IPATH), 8 (an entry of IPERMU out of range; one error for each),
 *     10 (columns in place: no storage for NCA integers),
 *
 * and from PERMA TERMINAL 1 (NCA below 1), 10 (no storage for NRA numbers). APER is then as it was. */
void PERMA(const int32_t* nra, const int32_t* nca, const float* a, const int32_t* lda, const int32_t* ipermu,
           const int32_t* ipath, float* aper, const int32_t* ldaper);
void DPERMA(const int32_t* nra, const int32_t* nca, const double* a, const int32_t* lda,
            const int32_t* ipermu, const int32_t* ipath, double* aper, const int32_t* ldaper);
void P2RMA(const int32_t* nra, const int32_t* nca, const float* a, const int32_t* lda, const int32_t* ipermu,
           const int32_t* ipath, float* aper, const int32_t* ldaper, float* work);
void DP2RMA(const int32_t* nra, const int32_t* nca, const double* a, const int32_t* lda,
            const int32_t* ipermu, const int32_t* ipath, double* aper, const int32_t* ldaper, double* work);

/* ---- helpers ------------------------------------------------------------------------------------ */

/* Check an integer argument. IARG in; NMARG in, its name; LO, HI in, the bounds, where LO > HI means that
 * there is no upper one; ICODE in and out, the code of the error if there is one, advanced by one in any
 * case. Posts TERMINAL ICODE at the current level; at level 1 no pop follows, so the stop switch is obeyed
 * at once. */
void C1IARG(const int32_t* iarg, const char* nmarg, const int32_t* lo, const int32_t* hi, int32_t* icode,
            size_t nmarg_len);

/* The whole number that the first SLEN characters of CHRSTR spell: blanks around, a sign, digits. SLEN in,
 * no more than the text has; NUM out, 0 when there is none; IER out: 0, 1 (no digits, or something else
 * between them) or 2 (does not fit an integer). Posts nothing. */
void C1TCI(const char* chrstr, const int32_t* slen, int32_t* num, int32_t* ier, size_t chrstr_len);

ORVEL_END

#endif
