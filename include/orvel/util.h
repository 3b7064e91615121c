/* include/orvel/util.h - time of day, date, processor time, calendar arithmetic, sorting, permutation
 *
 * A date is three integers: IDAY 1..31, MONTH 1..12 and IYEAR, the year without a year 0: 1 B.C. is -1, 45
 * B.C. is -45. The calendar is the Julian one to 4 October 1582 and the Gregorian one from 15 October 1582;
 * the ten days between do not exist. Leap years are those that 4 divides, before and after year 1 (so -4
 * and 4, with seven years between them); from 1583 on a century is one only if 400 divides it. Before 45
 * B.C. dates are computed as if the Julian calendar had been in use.
 *
 * A day number counts days from 1 January 1900, which is day 0. It is a 32-bit integer: the first day is 3
 * March -5877591, the last 12 July 5881510.
 *
 *     int32_t day = 1, month = 1, year = 2000;
 *     int32_t n = NDAYS(&day, &month, &year) + 1000;   // a thousand days later
 *     NDYIN(&n, &day, &month, &year);
 *
 *     IDAY   in  the day of the month
 *     MONTH  in  the month
 *     IYEAR  in  the year, negative before year 1
 *
 * Time: of the order 1, where a section says nothing else.
 *
 * Source: counting from March, so that the leap day is the last of its year: C. Zeller, Kalender-Formeln,
 * Acta Mathematica 9, 1887; E. G. Richards, Mapping Time, Oxford University Press, 1998.
 */
#ifndef ORVEL_UTIL_H
#define ORVEL_UTIL_H

#include "orvel/types.h"

ORVEL_BEGIN

/* ---- calendar --------------------------------------------------------------------------------------- */

/* Day number of a date. Passes up the errors of C1DAT.
 *
 *     TERMINAL 6  a date before the first or after the last day number
 *                 "IDAY = %(I1), MONTH = %(I2) and IYEAR = %(I3).  The number of this day does not fit an
 *                 integer.  The first day that has a number is March 3, -5877591, the last one is July 12,
 *                 5881510."
 *
 * After an error: the value is 0, which is also the number of a day; N1RTY(1) tells.
 */
int32_t NDAYS(const int32_t* iday, const int32_t* month, const int32_t* iyear);

/* The date of a day number. Every number has a date; posts nothing.
 *
 *     NDAYS  in   the day number
 *     IDAY   out  the day of the month
 *     MONTH  out  the month
 *     IYEAR  out  the year
 */
void NDYIN(const int32_t* ndays, int32_t* iday, int32_t* month, int32_t* iyear);

/* Day of the week, 1 Sunday to 7 Saturday. Passes up the errors of NDAYS.
 *
 * After an error: the value is 0.
 */
int32_t IDYWK(const int32_t* iday, const int32_t* month, const int32_t* iyear);

/* Checks a date. It posts at the current level every check that fails, in the order of the codes; the error
 * recorded is the last one. Called at level 1 no pop follows, so the stop switch is obeyed at once.
 *
 *     ICODE       out  the code that the caller's next check may use, 6
 *     LEAP        out  1: a leap year; -1: none
 *
 *     NOTE 1      IYEAR < -45; the date is accepted; not posted after an error
 *                 "IYEAR = %(I1).  The Julian Calendar first went into use in 45 B.C. (-45).  No calendar
 *                 prior to that time was as universally used nor as accurate as the Julian.  Therefore, it
 *                 is assumed that the Julian Calendar was in use prior to 45 B.C."
 *     TERMINAL 1  MONTH is not 1 to 12
 *                 "%(L1) = %(I1).  %(L1) must be greater than or equal to %(I2) and less than or equal to
 *                 %(I3)."
 *     TERMINAL 2  IDAY < 1
 *                 "%(L1) = %(I1).  %(L1) must be greater than or equal to %(I2)."
 *     TERMINAL 3  IYEAR = 0
 *                 "IYEAR = 0.  IYEAR must not be equal to 0 since the year 0 does not exist."
 *     TERMINAL 4  5 to 14 October 1582
 *                 "IYEAR = 1582, MONTH = 10 and IDAY = %(I1).  Due to the conversion from the Julian
 *                 calendar to the Gregorian calendar, October 5, 1582 through October 14, 1582 do not
 *                 exist."
 *     TERMINAL 5  IDAY > 31 in a month of 31 days; not checked for a bad MONTH
 *                 "IDAY = %(I2).  Since MONTH = %(I1), IDAY must be less than or equal to  31."
 *     TERMINAL 5  IDAY > 30 in a month of 30 days
 *                 "IDAY = %(I2).  Since MONTH = %(I1), IDAY must be less than or equal to 30."
 *     TERMINAL 5  IDAY > 28 in February
 *                 "IDAY = %(I2).  Since MONTH = 2 and IYEAR = %(I1), IDAY must be less than or equal to
 *                 28."
 *     TERMINAL 5  IDAY > 29 in February of a leap year
 *                 "IDAY = %(I2).  Since MONTH = 2 and IYEAR = %(I1), IDAY must be less than or equal to
 *                 29."
 *
 * After an error: ICODE and LEAP are set all the same.
 */
void C1DAT(const int32_t* iday, const int32_t* month, const int32_t* iyear, int32_t* icode, int32_t* leap);

/* ---- clock ------------------------------------------------------------------------------------------ */

/* Today's date in the local time zone (TZ, or the setting of the system).
 *
 *     IDAY   out  the day of the month
 *     MONTH  out  the month
 *     IYEAR  out  the year
 */
void TDATE(int32_t* iday, int32_t* month, int32_t* iyear);

/* The time of day in the local time zone.
 *
 *     IHOUR   out  0 to 23
 *     MINUTE  out  0 to 59
 *     ISEC    out  0 to 60, the fraction dropped
 */
void TIMDY(int32_t* ihour, int32_t* minute, int32_t* isec);

/* Processor time in seconds that the calling thread has used since its own first call of CPSEC, which
 * returns 0.
 *
 *     TERMINAL 1  the system reports a negative time; the value is 0
 *                 "An error occurred in obtaining the runtime statistics."
 *
 * After an error: the value is 0.
 */
float CPSEC(void);

/* ---- sorting -------------------------------------------------------------------------------------------
 *
 * The input is copied to the output, which is then sorted in place into ascending order; both may be the
 * same array. The P members move labels with the elements: with 1..N in IPERM on input, RB(i) =
 * RA(IPERM(i)) on output. The sort does not set them. The second letter group tells the key:
 *
 *     G  the value         SVRGN, SVRGP, DSVRGN, DSVRGP (real), SVIGN, SVIGP (integer)
 *     B  the magnitude     SVRBN, SVRBP, DSVRBN, DSVRBP (real), SVIBN, SVIBP (integer); signs are kept
 *
 * Equal keys may leave in any order; 0 and -0 are equal. The magnitude of the most negative integer is the
 * largest of all. Nothing is allocated. Patterns such as two runs, a run with an element out of place,
 * pipes of organs, waves and saw teeth are divided as well as a vector in random order and cost no more;
 * inputs made to defeat the choice of the pivots are finished by heapsort, at several times the cost.
 * Vectors that are ascending or descending throughout are recognised and cost one pass.
 *
 *     N         in     the number of elements
 *     RA(N)     in     the elements
 *     RB(N)     out    the sorted elements; may be RA
 *     IA(N)     in     the elements
 *     IB(N)     out    the sorted elements; may be IA
 *     IPERM(N)  inout  the labels, moved with the elements
 *
 * After an error: the outputs are unchanged.
 *
 * NaN: comes last.
 *
 * Time: of the order N log N for every input.
 *
 * Source: R. C. Singleton, Algorithm 347: an efficient algorithm for sorting with minimal storage,
 * Communications of the ACM 12, 1969.
 */

/* Sorts real numbers.
 *
 *     TERMINAL 1  N < 1
 *                 "N = %(I1).  The length of RA and RB, N, must be greater than or equal to one."
 */
void SVRGN(const int32_t* n, const float* ra, float* rb);
void DSVRGN(const int32_t* n, const double* ra, double* rb);

/* Sorts real numbers and moves labels with them.
 *
 *     TERMINAL 1  N < 1
 *                 "The length of vectors RA, RB and IPERM must be greater than or equal to one.  On input
 *                 the length, N, is given as %(I1)."
 */
void SVRGP(const int32_t* n, const float* ra, float* rb, int32_t* iperm);
void DSVRGP(const int32_t* n, const double* ra, double* rb, int32_t* iperm);

/* Sorts integers.
 *
 *     TERMINAL 1  N < 1
 *                 "The length of vector IA must be greater than or equal to one.  On input the length, N,
 *                 is given as %(I1)."
 */
void SVIGN(const int32_t* n, const int32_t* ia, int32_t* ib);

/* Sorts integers and moves labels with them.
 *
 *     TERMINAL 1  N < 1
 *                 "The length of vectors IA, IB, and IPERM must be greater than or equal to one.  On input
 *                 the length, N, is given as %(I1)."
 */
void SVIGP(const int32_t* n, const int32_t* ia, int32_t* ib, int32_t* iperm);

/* Sorts real numbers by magnitude.
 *
 *     TERMINAL 1  N < 1
 *                 "N = %(I1).  The length of RA and RB, N, must be greater than or equal to one."
 */
void SVRBN(const int32_t* n, const float* ra, float* rb);
void DSVRBN(const int32_t* n, const double* ra, double* rb);

/* Sorts real numbers by magnitude and moves labels with them.
 *
 *     TERMINAL 1  N < 1
 *                 "The length of vectors RA, RB, and IPERM must be greater than or equal to one.  On input
 *                 the length, N, is given as %(I1)."
 */
void SVRBP(const int32_t* n, const float* ra, float* rb, int32_t* iperm);
void DSVRBP(const int32_t* n, const double* ra, double* rb, int32_t* iperm);

/* Sorts integers by magnitude.
 *
 *     TERMINAL 1  N < 1
 *                 "The length of vector IA must be greater than or equal to one.  On input the length, N,
 *                 is given as %(I1)."
 */
void SVIBN(const int32_t* n, const int32_t* ia, int32_t* ib);

/* Sorts integers by magnitude and moves labels with them.
 *
 *     TERMINAL 1  N < 1
 *                 "The length of vectors IA, IB, and IPERM must be greater than or equal to one.  On input
 *                 the length, N, is given as %(I1)."
 */
void SVIBP(const int32_t* n, const int32_t* ia, int32_t* ib, int32_t* iperm);

/* ---- permutation ------------------------------------------------------------------------------------ */

/* Permutes a vector. Entries of IPERMU that repeat are not detected; XPERMU then has some elements of X in
 * some order.
 *
 *     N            in   the number of elements
 *     X(N)         in   the vector
 *     IPERMU(N)    in   each of 1..N once
 *     IPATH        in   1: XPERMU(i) = X(IPERMU(i)); 2: XPERMU(IPERMU(i)) = X(i)
 *     XPERMU(N)    out  the permuted vector; may be X
 *
 *     TERMINAL 1   N < 1
 *                  "The length of the arrays X and XPERMU must be positive while N = %(I1) is given."
 *     TERMINAL 2   IPATH is neither 1 nor 2
 *                  "IPATH must be equal to 1 or 2 while a value of %(I1) is given."
 *     TERMINAL 3   an entry of IPERMU is not 1 to N; one error for each
 *                  "IPERMU(%(I1)) = %(I3) is not allowed.  It must be between 1 and N = %(I2)."
 *     TERMINAL 10  no storage for N integers
 *                  "The required storage cannot be allocated.  Workspace allocation was based on N =
 *                  %(I1)."
 *
 * After an error: XPERMU is a copy of X after 3 and 10, and unchanged after 1 and 2.
 */
void PERMU(const int32_t* n, const float* x, const int32_t* ipermu, const int32_t* ipath, float* xpermu);
void DPERMU(const int32_t* n, const double* x, const int32_t* ipermu, const int32_t* ipath, double* xpermu);

/* Permutes the rows or the columns of a matrix. PERMA passes up the errors of P2RMA, and posts its own two
 * under its own name.
 *
 *     NRA                   in       the number of rows
 *     NCA                   in       the number of columns
 *     A(NRA:LDA,NCA)        in       the matrix
 *     LDA                   in       its leading dimension
 *     IPERMU(NP)            in       the permutation
 *     NP                    =        NRA if IPATH = 1, else NCA
 *     IPATH                 in       1: rows, APER(i,.) = A(IPERMU(i),.); 2: columns, APER(.,j) =
 *                                    A(.,IPERMU(j))
 *     APER(NRA:LDAPER,NCA)  out      the permuted matrix; may be A where LDAPER = LDA
 *     LDAPER                in       its leading dimension
 *     WORK(NRA)             scratch  used only where APER is A
 *
 *     TERMINAL 1            NRA < 1; from P2RMA
 *                           "The number of rows of a matrix must be positive while NRA = %(I1) is given."
 *     TERMINAL 1            NCA < 1; from PERMA
 *                           "The number of columns of a matrix must be positive while NCA = %(I1) is given."
 *     TERMINAL 2            NCA < 1; from P2RMA
 *                           "The number of columns of a matrix must be positive while NCA = %(I1) is given."
 *     TERMINAL 3            LDA < 1
 *                           "The leading dimension of a matrix must be positive while LDA = %(I1) is given."
 *     TERMINAL 4            NRA > LDA
 *                           "The number of rows of A must be less than or equal to its leading dimension
 *                           while NRA = %(I1) and LDA = %(I2) are given."
 *     TERMINAL 5            NRA > LDAPER
 *                           "The number of rows of A must be less than or equal to the leading dimension of
 *                           APER, while NRA = %(I1) and LDAPER = %(I2) are given."
 *     TERMINAL 6            LDAPER < 1
 *                           "The leading dimension of a matrix must be positive while LDAPER = %(I1) is
 *                           given."
 *     TERMINAL 7            IPATH is neither 1 nor 2
 *                           "IPATH must be equal to 1 or 2 a value of %(I1) is given."
 *     TERMINAL 8            an entry of IPERMU is out of range; one error for each
 *                           "IPERMU(%(I1)) = %(I3) is not allowed.  It must be between 1 and N = %(I2)."
 *     TERMINAL 10           columns in place: no storage for NCA integers; from P2RMA
 *                           "The required storage cannot be allocated.  Workspace allocation was based on NCA
 *                           = %(i1)."
 *     TERMINAL 10           no storage for NRA numbers; from PERMA
 *                           "The required storage cannot be allocated.  Workspace allocation was based on NCA
 *                           = %(i1)."
 *
 * After an error: APER is unchanged.
 */
void PERMA(const int32_t* nra, const int32_t* nca, const float* a, const int32_t* lda, const int32_t* ipermu,
           const int32_t* ipath, float* aper, const int32_t* ldaper);
void DPERMA(const int32_t* nra, const int32_t* nca, const double* a, const int32_t* lda,
            const int32_t* ipermu, const int32_t* ipath, double* aper, const int32_t* ldaper);
void P2RMA(const int32_t* nra, const int32_t* nca, const float* a, const int32_t* lda, const int32_t* ipermu,
           const int32_t* ipath, float* aper, const int32_t* ldaper, float* work);
void DP2RMA(const int32_t* nra, const int32_t* nca, const double* a, const int32_t* lda,
            const int32_t* ipermu, const int32_t* ipath, double* aper, const int32_t* ldaper, double* work);

/* ---- helpers ---------------------------------------------------------------------------------------- */

/* Checks an integer argument. It posts at the current level; at level 1 no pop follows, so the stop switch
 * is obeyed at once.
 *
 *     IARG            in     the argument
 *     NMARG(*)        in     its name
 *     LO              in     the lower bound
 *     HI              in     the upper bound; none if it is below LO
 *     ICODE           inout  the code of the error if there is one, advanced by one in any case
 *
 *     TERMINAL ICODE  IARG < LO where HI < LO
 *                     "%(L1) = %(I1).  %(L1) must be greater than or equal to %(I2)."
 *     TERMINAL ICODE  IARG is not LO to HI
 *                     "%(L1) = %(I1).  %(L1) must be greater than or equal to %(I2) and less than or equal
 *                     to %(I3)."
 *
 * After an error: ICODE is advanced all the same.
 */
void C1IARG(const int32_t* iarg, const char* nmarg, const int32_t* lo, const int32_t* hi, int32_t* icode,
            size_t nmarg_len);

/* The whole number that a text spells: blanks around, a sign, digits. Posts nothing.
 *
 *     CHRSTR(*)  in   the text
 *     SLEN       in   how many of its characters count, no more than it has
 *     NUM        out  the number, 0 when there is none
 *     IER        out  0: a number; 1: no digits, or something else between them; 2: it does not fit an
 *                     integer
 */
void C1TCI(const char* chrstr, const int32_t* slen, int32_t* num, int32_t* ier, size_t chrstr_len);

ORVEL_END

#endif
