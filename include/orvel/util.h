/* include/orvel/util.h - time of day, date, processor time, calendar arithmetic
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
