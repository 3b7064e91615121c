/* examples/alpha/alpha.c - a Poisson law fitted to counts of alpha particles, from C
 *
 *     alpha_c counts.txt [plot.dat]
 *
 * Prints observed and expected numbers of intervals and chi-square, with classes of fewer than ten expected
 * intervals taken together, and shows how a program looks at an error instead of being stopped by it.
 */
#include <math.h>
#include <orvel/orvel.h>
#include <stdio.h>

#include "../check.h"

enum { most_classes = 100 };

static int read_counts(const char* path, double* observed)
{
    FILE* file = fopen(path, "r");
    char line[200];
    int classes = 0;
    if (file == NULL) return 0;
    while (fgets(line, sizeof line, file) != NULL) {
        int particles, intervals;
        if (line[0] == '#' || sscanf(line, "%d %d", &particles, &intervals) != 2) continue;
        if (particles < 0 || particles >= most_classes) break;
        observed[particles] = intervals;
        if (particles + 1 > classes) classes = particles + 1;
    }
    fclose(file);
    return classes;
}

/* P(k) = exp(-m) m^k / k!, through the logarithm of the gamma function. */
static double poisson(double mean, int k)
{
    const float x = (float)k + 1.0f;
    return exp(k * log(mean) - mean - ALNGAM(&x));
}

static int fit(const double* observed, int classes, FILE* plot)
{
    double intervals = 0.0, particles = 0.0, chi_square = 0.0, tail = 1.0;
    int k, used = 0;
    for (k = 0; k < classes; ++k) {
        intervals += observed[k];
        particles += k * observed[k];
    }
    const double mean = particles / intervals;
    printf(" %.0f particles in %.0f intervals, %.4f in the mean\n\n", particles, intervals, mean);
    printf(" particles  observed  expected\n");
    double seen = 0.0;
    for (k = 0; k < classes; ++k) {
        const double p = poisson(mean, k), expected = intervals * p;
        printf("%10d%10.0f%10.1f\n", k, observed[k], expected);
        if (plot != NULL) fprintf(plot, "%d %g %g\n", k, observed[k], expected);
        if (expected >= 10.0) {
            chi_square += (observed[k] - expected) * (observed[k] - expected) / expected;
            seen += observed[k];
            tail -= p;
            ++used;
        }
    }
    const double rest = intervals - seen;
    chi_square += (rest - intervals * tail) * (rest - intervals * tail) / (intervals * tail);
    printf("\n chi-square%7.2f with %d degrees of freedom\n", chi_square, used + 1 - 2);
    return check("particles in an interval", mean, 3.87, 0.005, 4, "the authors' mean, 1910");
}

static void catch_errors(void)
{
    const int32_t all = 0, keep = -1, off = 0, above = 1;
    const float arguments[2] = {-2.0005f, -3.0f};
    int k;
    ERSET(&all, &off, &off); /* print nothing, stop at nothing */
    printf("\n");
    for (k = 0; k < 2; ++k) {
        const float value = GAMMA(&arguments[k]);
        const int32_t type = N1RTY(&above), code = N1RCD(&above);
        printf(" GAMMA(%8.4f): type %d, code %d, ", arguments[k], (int)type, (int)code);
        if (type < 4)
            printf("value %.3f\n", value);
        else
            printf("no value\n");
    }
    ERSET(&all, &keep, &keep);
}

int main(int argc, char** argv)
{
    double observed[most_classes] = {0.0};
    const int classes = argc > 1 ? read_counts(argv[1], observed) : 0;
    if (classes == 0) {
        fprintf(stderr, "usage: alpha_c counts.txt [plot.dat]\n");
        return 2;
    }
    FILE* plot = argc > 2 ? fopen(argv[2], "w") : NULL;
    const int differs = fit(observed, classes, plot);
    if (plot != NULL) fclose(plot);
    catch_errors();
    return differs;
}
