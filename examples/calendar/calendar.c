/* examples/calendar/calendar.c - weekdays and intervals of dated events
 *
 *     calendar_c events.txt [plot.dat]
 *
 * A line of the file is day, month, year and what happened. A date that does not exist is refused by the
 * library and skipped; the message is kept back and its code shown.
 */
#include <orvel/orvel.h>
#include <stdio.h>

#include "../check.h"

static const char* const weekdays[] = {"none",      "Sunday",   "Monday", "Tuesday",
                                       "Wednesday", "Thursday", "Friday", "Saturday"};

int main(int argc, char** argv)
{
    const int32_t all = 0, keep = -1, off = 0, above = 1;
    char line[200], what[120];
    int32_t day, month, year, before = 0, events = 0;
    int32_t counts[8] = {0};
    FILE* file = argc > 1 ? fopen(argv[1], "r") : NULL;
    FILE* plot = argc > 2 ? fopen(argv[2], "w") : NULL;
    if (file == NULL) {
        fprintf(stderr, "usage: calendar_c events.txt [plot.dat]\n");
        return 2;
    }
    ERSET(&all, &off, &off);
    printf("       date  weekday       number  days since  a thousand weeks later\n");
    while (fgets(line, sizeof line, file) != NULL) {
        if (sscanf(line, "%d %d %d %119[^\n]", &day, &month, &year, what) != 4) continue;
        const int32_t number = NDAYS(&day, &month, &year);
        if (N1RTY(&above) > 1) {
            printf("%3d %2d %5d  refused by NDAYS: type %d, code %d, %s\n", day, month, year,
                   (int)N1RTY(&above), (int)N1RCD(&above), what);
            continue;
        }
        const int32_t weekday = IDYWK(&day, &month, &year), later = number + 7000;
        int32_t d, m, y;
        NDYIN(&later, &d, &m, &y);
        printf("%3d %2d %5d  %-9s %10d  ", day, month, year, weekdays[weekday], number);
        if (events++ == 0)
            printf("%10s", "");
        else
            printf("%10d", number - before);
        printf("  %2d %2d %5d  %s\n", d, m, y, what);
        before = number;
        ++counts[weekday];
        if (plot != NULL)
            fprintf(plot, "%.2f %d \"%s\"\n", 1900.0 + number / 365.2425, weekday,
                    what[0] == ' ' ? what + 1 : what);
    }
    fclose(file);
    if (plot != NULL) fclose(plot);
    printf("\n");
    for (int k = 1; k <= 7; ++k) printf(" %s %d", weekdays[k], counts[k]);
    printf("\n");
    ERSET(&all, &keep, &keep);

    /* Astronomers count days from a day whose number here is -2415021. */
    const int32_t first = 1, fifteenth = 15, january = 1, october = 10, reform = 1582, epoch = 2000;
    const int32_t gregorian = NDAYS(&fifteenth, &october, &reform),
                  standard = NDAYS(&first, &january, &epoch);
    printf("\n");
    return check("Julian day of 15 October 1582", gregorian + 2415021, 2299161, 0, 0, "astronomers' count") +
           check("Julian day of 1 January 2000", standard + 2415021, 2451545, 0, 0,
                 "the standard epoch J2000");
}
