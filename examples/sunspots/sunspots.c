/* examples/sunspots/sunspots.c - the cycle of the sunspots and what remains without it, from C
 *
 *     sunspots_c sunspots.txt [plot.dat]
 *
 * The spectrum of 280 yearly numbers, made finer by zeros behind them, has its peak at the period of the
 * cycle. Then the numbers are smoothed over one cycle: a convolution, done by multiplying transforms and
 * compared with the sum that defines it.
 */
#include <math.h>
#include <orvel/orvel.h>
#include <stdio.h>

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

/* Power of each frequency; a spectral window takes the edges of the record away. */
static void spectrum(const double* number, int years, FILE* plot)
{
    static double x[fine], c[fine];
    const int32_t n = fine;
    const double mean = mean_of(number, years), pi = acos(-1.0);
    double best = 0.0;
    int k, peak = 0;
    for (k = 0; k < years; ++k) {
        const double window = sin(pi * (k + 0.5) / years);
        x[k] = (number[k] - mean) * window * window;
    }
    DFFTRF(&n, x, c); /* c: the mean, then real and imaginary part of each frequency */
    for (k = 1; k < fine / 2; ++k) {
        const double power = (c[2 * k - 1] * c[2 * k - 1] + c[2 * k] * c[2 * k]) / years;
        if (power > best) {
            best = power;
            peak = k;
        }
        if (plot != NULL && k >= fine / 150 && k <= fine / 4)
            fprintf(plot, "%g %g\n", (double)fine / k, power);
    }
    printf(" %d years from %d, %.2f sunspots in the mean\n", years, first_year, mean);
    printf(" the spectrum has its peak at a period of %.2f years\n", (double)fine / peak);
    if (plot != NULL) fprintf(plot, "\n\n");
}

/* A mean over the eleven years around each; the zeros behind the record keep its end and its
 * beginning apart. One work vector serves three transforms. */
static void smooth(const double* number, int years, FILE* plot)
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
    printf(" differences from the sums: %s\n", largest < 1e-12 ? "below 1E-12" : "too large");
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
    spectrum(number, years, plot);
    printf("\n  year  number  mean over a cycle\n");
    smooth(number, years, plot);
    if (plot != NULL) fclose(plot);
    return 0;
}
