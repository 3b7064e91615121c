/* examples/sunspots/sunspots.c - the cycle of the sunspots and what remains without it, from C
 *
 *     sunspots_c sunspots.txt [plot.dat]
 *
 * The spectrum of 280 yearly numbers, made finer by zeros behind them, has its peak at the period of the
 * cycle; with a window, which hears the middle of the record more than its ends, at that of the slow cycles
 * about 1800. Then the numbers are smoothed over one cycle: a convolution, done by multiplying transforms and
 * compared with the sum that defines it.
 */
#include <math.h>
#include <orvel/orvel.h>
#include <stdio.h>

#include "../check.h"

enum { most_years = 300, first_year = 1700, fine = 4096, padded = 320, cycle = 11 };

static int read_numbers(const char* path, double* number)
{
    FILE* file = fopen(path, "r");
    char line[200];
    int years = 0, year, k;
    if (file == NULL) return 0;
    while (fgets(line, sizeof line, file) != NULL) {
        double v[10];
        if (sscanf(line, "%d%lf%lf%lf%lf%lf%lf%lf%lf%lf%lf", &year, v, v + 1, v + 2, v + 3, v + 4, v + 5,
                   v + 6, v + 7, v + 8, v + 9) != 11)
            continue;
        for (k = 0; k < 10 && years < most_years; ++k) number[years++] = v[k];
    }
    fclose(file);
    return years;
}

static double mean_of(const double* x, int n)
{
    double sum = 0.0;
    int k;
    for (k = 0; k < n; ++k) sum += x[k];
    return sum / n;
}

/* Power of each frequency, of the whole record or through a window that takes its edges away, scaled to the
 * same noise; returns the period of the largest. */
static double spectrum(const double* number, int years, int windowed, double* power)
{
    static double x[fine], c[fine];
    const int32_t n = fine;
    const double mean = mean_of(number, years), pi = acos(-1.0);
    double squares = 0.0;
    int k, peak = 1;
    for (k = 0; k < years; ++k) {
        const double sine = sin(pi * (k + 0.5) / years), window = windowed ? sine * sine : 1.0;
        x[k] = (number[k] - mean) * window;
        squares += window * window;
    }
    DFFTRF(&n, x, c); /* c: the mean, then real and imaginary part of each frequency */
    for (k = 1; k < fine / 2; ++k) {
        power[k] = (c[2 * k - 1] * c[2 * k - 1] + c[2 * k] * c[2 * k]) / squares;
        if (power[k] > power[peak]) peak = k;
    }
    return (double)fine / peak;
}

static int find_cycle(const double* number, int years, FILE* plot)
{
    static double whole[fine / 2], windowed[fine / 2];
    const double period = spectrum(number, years, 0, whole), middle = spectrum(number, years, 1, windowed);
    int k;
    printf(" %d years from %d, %.2f sunspots in the mean\n", years, first_year, mean_of(number, years));
    printf(" the spectrum has its peak at a period of %.2f years,\n", period);
    printf(" with a window on the middle of the record at %.2f years\n", middle);
    for (k = fine / 150; plot != NULL && k <= fine / 4; ++k)
        fprintf(plot, "%g %g %g\n", (double)fine / k, whole[k], windowed[k]);
    if (plot != NULL) fprintf(plot, "\n\n");
    return check("years in a cycle", period, (1976.5 - 1755.2) / 20, 0.1, 2,
                 "20 cycles from the minimum of 1755.2 to that of 1976.5");
}

/* A mean over the eleven years around each; the zeros behind the record keep its end and its
 * beginning apart. One work vector serves three transforms. */
static int smooth(const double* number, int years, FILE* plot)
{
    static double x[padded], w[padded], work[2 * padded + 15];
    const int32_t n = padded;
    double largest = 0.0;
    int k, j;
    for (k = 0; k < years; ++k) x[k] = number[k];
    for (k = -cycle / 2; k <= cycle / 2; ++k) w[(k + padded) % padded] = 1.0 / cycle;

    DFFTRI(&n, work);
    DF2TRF(&n, x, x, work);
    DF2TRF(&n, w, w, work);
    x[0] *= w[0];
    for (k = 1; k < padded / 2; ++k) {
        const double re = x[2 * k - 1] * w[2 * k - 1] - x[2 * k] * w[2 * k];
        x[2 * k] = x[2 * k - 1] * w[2 * k] + x[2 * k] * w[2 * k - 1];
        x[2 * k - 1] = re;
    }
    x[padded - 1] *= w[padded - 1];
    DF2TRB(&n, x, x, work);

    for (k = 0; k < years; ++k) {
        const int whole = k >= cycle / 2 && k + cycle / 2 < years;
        double sum = 0.0;
        if (!whole) continue;
        for (j = -cycle / 2; j <= cycle / 2; ++j) sum += number[k + j] / cycle;
        x[k] /= padded;
        if (fabs(x[k] - sum) > largest) largest = fabs(x[k] - sum);
        if (plot != NULL) fprintf(plot, "%d %g %g\n", first_year + k, number[k], x[k]);
        if ((first_year + k) % 25 == 10) printf("%6d%8.1f%8.1f\n", first_year + k, number[k], x[k]);
    }
    printf("\n");
    return check("largest difference of the means", largest, 0.0, 1e-12, 12, "the sums that define them");
}

int main(int argc, char** argv)
{
    double number[most_years] = {0.0};
    const int years = argc > 1 ? read_numbers(argv[1], number) : 0;
    if (years == 0) {
        fprintf(stderr, "usage: sunspots_c sunspots.txt [plot.dat]\n");
        return 2;
    }
    FILE* plot = argc > 2 ? fopen(argv[2], "w") : NULL;
    int differs = find_cycle(number, years, plot);
    printf("\n  year  number  mean over a cycle\n");
    differs += smooth(number, years, plot);
    if (plot != NULL) fclose(plot);
    return differs;
}
