// examples/mpi/parts.h - a problem in parts that may be computed anywhere: by ranks of MPI or by threads
//
// Every part has a stream of random numbers, an integral of a family and a linear system of its own. What a
// part gives depends on its number alone, and the parts are added in their order; so the total has the same
// bits however many workers there are.
#pragma once

#include <orvel/orvel.h>

#include <cmath>
#include <cstdio>
#include <vector>

constexpr int parts = 48, numbers = 100000, order = 40, results = 3;

// Points of a stream in the quarter of the unit circle. Seeds of option 5 that RNISD makes are 100000 numbers
// apart.
inline double points_in_circle(int part)
{
    const int32_t option = 5, n = numbers;
    int32_t seed = 123457;
    RNOPT(&option);
    for (int k = 0; k < part; ++k) RNISD(&seed, &seed);
    RNSET(&seed);
    std::vector<double> r(numbers);
    DRNUN(&n, r.data());
    int inside = 0;
    for (int k = 0; k < numbers; k += 2) inside += r[k] * r[k] + r[k + 1] * r[k + 1] < 1;
    return inside;
}

// The modified Bessel function I0(x) = 1/pi integral of exp(x cos t) over 0..pi. The argument is a variable
// of the thread, because the integrand has none of its own.
inline thread_local double bessel_argument;
inline double bessel_integral(int part)
{
    bessel_argument = 0.125 * (part + 1);
    const double pi = 3.14159265358979323846, zero = 0, errrel = 1e-12;
    double result, estimate;
    DQDAGS([](const double* t) { return std::exp(bessel_argument * std::cos(*t)); }, &zero, &pi, &zero,
           &errrel, &result, &estimate);
    return result / pi;
}

// The sum of the solution of a system whose matrix is 1 / (1 + |i - j|), with the diagonal made larger part
// by part.
inline double solution_sum(int part)
{
    std::vector<double> a(order * order), b(order, 1.0), x(order);
    for (int j = 0; j < order; ++j)
        for (int i = 0; i < order; ++i)
            a[order * j + i] = 1.0 / (1 + std::abs(i - j)) + (i == j) * 0.0625 * part;
    const int32_t n = order, path = 1;
    DLSARG(&n, a.data(), &n, b.data(), &path, x.data());
    double sum = 0;
    for (const double entry : x) sum += entry;
    return sum;
}

inline void compute(int part, double* result)
{
    result[0] = points_in_circle(part);
    result[1] = bessel_integral(part);
    result[2] = solution_sum(part);
}

// The results of all parts, one after the other.
inline void print_totals(const std::vector<double>& all)
{
    double total[results] = {};
    for (int part = 0; part < parts; ++part)
        for (int k = 0; k < results; ++k) total[k] += all[results * part + k];
    std::printf(" %d parts at level %s\n", parts, orvel_level());
    std::printf(" streams    %.0f of %d points in the circle: pi is about %.5f\n", total[0],
                parts * numbers / 2, 8 * total[0] / (static_cast<double>(parts) * numbers));
    std::printf(" integrals  sum of I0(k / 8)       %.17g\n", total[1]);
    std::printf(" systems    sum of all solutions   %.17g\n", total[2]);
}
