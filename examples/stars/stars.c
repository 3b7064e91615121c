/* examples/stars/stars.c - a table of stars sorted by brightness and by nearness to the celestial equator
 *
 *     stars_c stars.txt [plot.dat]
 *
 * A line of the file is magnitude, declination and name. The sort carries the line numbers along; they then
 * put the rows of the table into order, and their inverse gives each star its rank.
 */
#include <orvel/orvel.h>
#include <stdio.h>
#include <stdlib.h>

#include "../check.h"

enum { room = 64 };

static int ascending(const void* a, const void* b)
{
    const double x = *(const double*)a, y = *(const double*)b;
    return (x > y) - (x < y);
}

/* How many numbers are not where the sort of the C library puts them. */
static int misplaced(const double* sorted, int n)
{
    double by_c[room];
    int k, count = 0;
    for (k = 0; k < n; ++k) by_c[k] = sorted[k];
    qsort(by_c, (size_t)n, sizeof *by_c, ascending);
    for (k = 0; k < n; ++k) count += by_c[k] != sorted[k];
    return count;
}

int main(int argc, char** argv)
{
    const int32_t forward = 1, backward = 2, rows = 1, two = 2, lda = room;
    double table[2 * room], sorted[2 * room], key[room], number[room], rank[room];
    int32_t order[room], nearness[room], n = 0;
    char name[room][40], line[200];
    FILE* file = argc > 1 ? fopen(argv[1], "r") : NULL;
    if (file == NULL) {
        fprintf(stderr, "usage: stars_c stars.txt [plot.dat]\n");
        return 2;
    }
    while (n < room && fgets(line, sizeof line, file) != NULL)
        if (sscanf(line, "%lf %lf %39[^\n]", &table[n], &table[room + n], name[n]) == 3) {
            order[n] = nearness[n] = n + 1;
            number[n] = n + 1;
            ++n;
        }
    fclose(file);
    DSVRGP(&n, table, key, order);           /* by magnitude: the brightest first */
    DSVRBP(&n, table + room, key, nearness); /* by distance from the equator, north or south */
    DPERMA(&n, &two, table, &lda, order, &rows, sorted, &lda);
    DPERMU(&n, number, nearness, &backward, rank); /* the rank of line nearness(i) is i */
    DPERMU(&n, rank, order, &forward, rank);
    printf("      magnitude  declination  rank by nearness to the equator\n");
    for (int32_t k = 0; k < n; ++k)
        printf("%4d %10.1f %12.1f %6.0f   %s\n", (int)k + 1, sorted[k], sorted[room + k], rank[k],
               name[order[k] - 1]);
    printf(" nearest to the equator: %s, farthest: %s\n", name[nearness[0] - 1], name[nearness[n - 1] - 1]);
    FILE* plot = argc > 2 ? fopen(argv[2], "w") : NULL;
    for (int32_t k = 0; plot != NULL && k < n; ++k)
        fprintf(plot, "%d %g %g %g \"%s\"\n", (int)k + 1, sorted[k], sorted[room + k], rank[k],
                name[order[k] - 1]);
    if (plot != NULL) fclose(plot);
    printf("\n");
    return check("stars out of order by magnitude", misplaced(sorted, n), 0, 0, 0,
                 "the sort of the C library") +
           check("magnitude of the first", sorted[0], -1.5, 0, 1, "Sirius, the brightest star");
}
