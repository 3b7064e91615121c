/* examples/pendulum/pendulum.c - period of a pendulum at any amplitude: an integral with a singular end
 *
 *     pendulum_c [plot.dat]
 *
 * Foucault's pendulum of 1851 in the Pantheon had a wire of 67 m; g = 9.809 m/s^2 in Paris. A pendulum
 * released at the angle A swings with the period T = 4 sqrt(l / (2 g)) * integral from 0 to A of dt /
 * sqrt(cos t - cos A), whose integrand is infinite at A. Gauss's arithmetic-geometric mean gives the same
 * without an integral.
 */
#include <math.h>
#include <orvel/orvel.h>
#include <stdio.h>

#include "../check.h"

enum { room = 100 };

static const double pi = 3.14159265358979323846, length = 67.0, gravity = 9.809;
static double amplitude;

/* cos t - cos A as a product, which keeps its digits close to A. */
static double integrand(const double* t)
{
    return 1.0 / sqrt(2.0 * sin(0.5 * (amplitude + *t)) * sin(0.5 * (amplitude - *t)));
}

static double mean_of(double a, double b)
{
    while (fabs(a - b) > 1e-15 * a) {
        const double next = 0.5 * (a + b);
        b = sqrt(a * b);
        a = next;
    }
    return a;
}

int main(int argc, char** argv)
{
    const double degrees[] = {1, 10, 30, 60, 90, 120, 150, 170, 179};
    const double zero = 0.0, errabs = 0.0, errrel = 1e-10;
    const int32_t maxsub = room;
    double lo[room], hi[room], part[room], error[room];
    int32_t order[room], calls, pieces;
    double widest = 0.0, by_integral = 0.0, by_mean = 0.0;
    FILE* plot = argc > 1 ? fopen(argv[1], "w") : NULL;
    printf(" amplitude  period, s    estimated   true      calls  pieces\n");
    printf("   degrees               error, s    error, s\n");
    for (int k = 0; k < 9; ++k) {
        double integral, estimate;
        amplitude = degrees[k] * pi / 180.0;
        DQ2AGS(integrand, &zero, &amplitude, &errabs, &errrel, &integral, &estimate, &maxsub, &calls, &pieces,
               lo, hi, part, error, order);
        const double factor = 4.0 * sqrt(length / (2.0 * gravity)), period = factor * integral;
        const double exact = 2.0 * pi * sqrt(length / gravity) / mean_of(1.0, cos(0.5 * amplitude));
        printf("%10.0f %11.6f  %10.1e  %10.1e %7d %7d\n", degrees[k], period, factor * estimate,
               period - exact, calls, pieces);
        if (fabs(period - exact) >= widest) {
            widest = fabs(period - exact);
            by_integral = period;
            by_mean = exact;
        }
        if (plot == NULL || degrees[k] != 90) continue;
        for (int j = 0; j < pieces; ++j)
            fprintf(plot, "%.17g %.17g %d\n", lo[order[j] - 1] * 180.0 / pi, hi[order[j] - 1] * 180.0 / pi,
                    j + 1);
        fprintf(plot, "\n\n");
        for (int j = 0; j < 400; ++j) {
            const double t = amplitude * j / 400.0;
            fprintf(plot, "%g %g\n", t * 180.0 / pi, integrand(&t));
        }
    }
    if (plot != NULL) fclose(plot);
    printf("\n");
    return check("period with the largest error", by_integral, by_mean, 1e-9 * by_mean, 10,
                 "Gauss's arithmetic-geometric mean");
}
