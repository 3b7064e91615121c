/* examples/check.h - the lines by which a chapter compares a number of its own with what is known otherwise
 *
 * Included by one source of a program in C or C++; checks.f90 prints the same from Fortran.
 */
#ifndef ORVEL_EXAMPLES_CHECK_H
#define ORVEL_EXAMPLES_CHECK_H

#include <math.h>
#include <stdio.h>

/* 0 if the numbers agree, else 1; both are shown with so many digits behind the point. */
static inline int check(const char* what, double ours, double known, double within, int digits,
                        const char* source)
{
    const int agrees = fabs(ours - known) <= within;
    printf(" check: %s:\n     %.*f, known %.*f within %.*f (%s): %s\n", what, digits, ours, digits, known,
           digits, within, source, agrees ? "agrees" : "DIFFERS");
    return agrees ? 0 : 1;
}

#endif
