// bench/counts.cpp - prints docs/evaluations.md: calls that zeros and minima of published problems take
//
//     build/release/bench/orvel_counts > docs/evaluations.md
#include <gsl/gsl_errno.h>
#include <gsl/gsl_min.h>
#include <gsl/gsl_roots.h>

#include <boost/math/tools/minima.hpp>
#include <boost/math/tools/toms748_solve.hpp>
#include <cmath>
#include <cstdint>
#include <cstdio>

#include "orvel/orvel.h"

namespace {

constexpr double pi = 3.14159265358979323846;

struct Problem {
    const char* text;
    double (*f)(double);
    double a, b;
};

const Problem* current;
int calls;
double counted(double x)
{
    ++calls;
    return current->f(x);
}
double by_reference(const double* x) { return counted(*x); }
gsl_function for_gsl{[](double x, void*) { return counted(x); }, nullptr};

template <int n>
double power(double x)
{
    return std::pow(x, n);
}

const Problem zeros[] = {
    {"sin x - x/2", [](double x) { return std::sin(x) - x / 2; }, pi / 2, pi},
    {"-40 x exp(-x)", [](double x) { return -40 * x * std::exp(-x); }, -9, 31},
    {"x^4 - 0.2", [](double x) { return power<4>(x) - 0.2; }, 0, 5},
    {"x^12 - 1", [](double x) { return power<12>(x) - 1; }, -0.95, 4.05},
    {"sin x - 1/2", [](double x) { return std::sin(x) - 0.5; }, 0, 1.5},
    {"2x exp(-5) - 2 exp(-5x) + 1", [](double x) { return 2 * x * std::exp(-5) - 2 * std::exp(-5 * x) + 1; },
     0, 1},
    {"2x exp(-20) - 2 exp(-20x) + 1",
     [](double x) { return 2 * x * std::exp(-20) - 2 * std::exp(-20 * x) + 1; }, 0, 1},
    {"17x - (1 - 5x)^2", [](double x) { return 17 * x - power<2>(1 - 5 * x); }, 0, 1},
    {"362x - (1 - 20x)^2", [](double x) { return 362 * x - power<2>(1 - 20 * x); }, 0, 1},
    {"x^2 - (1 - x)^5", [](double x) { return x * x - power<5>(1 - x); }, 0, 1},
    {"x^2 - (1 - x)^20", [](double x) { return x * x - power<20>(1 - x); }, 0, 1},
    {"82x - (1 - 4x)^4", [](double x) { return 82 * x - power<4>(1 - 4 * x); }, 0, 1},
    {"exp(-5x) (x - 1) + x^5", [](double x) { return std::exp(-5 * x) * (x - 1) + power<5>(x); }, 0, 1},
    {"(5x - 1) / 4x", [](double x) { return (5 * x - 1) / (4 * x); }, 0.01, 1},
    {"x^(1/5) - 5^(1/5)", [](double x) { return std::pow(x, 0.2) - std::pow(5, 0.2); }, 1, 100},
};

const Problem minima[] = {
    {"sin x + sin(10x/3)", [](double x) { return std::sin(x) + std::sin(10 * x / 3); }, 4.6, 5.7},
    {"-(16x^2 - 24x + 5) exp(-x)", [](double x) { return -((16 * x - 24) * x + 5) * std::exp(-x); }, 1.9,
     3.9},
    {"-(1.4 - 3x) sin 18x", [](double x) { return -(1.4 - 3 * x) * std::sin(18 * x); }, 0.85, 1.1},
    {"-(x + sin x) exp(-x^2)", [](double x) { return -(x + std::sin(x)) * std::exp(-x * x); }, -0.5, 2},
    {"sin x + sin(10x/3) + ln x - 0.84x + 3",
     [](double x) { return std::sin(x) + std::sin(10 * x / 3) + std::log(x) - 0.84 * x + 3; }, 4.6, 5.7},
    {"-x sin x", [](double x) { return -x * std::sin(x); }, 6, 10},
    {"2 cos x + cos 2x", [](double x) { return 2 * std::cos(x) + std::cos(2 * x); }, 1, 3},
    {"sin^3 x + cos^3 x", [](double x) { return power<3>(std::sin(x)) + power<3>(std::cos(x)); }, 2.5, 4},
    {"-exp(-x) sin(2 pi x)", [](double x) { return -std::exp(-x) * std::sin(2 * pi * x); }, 0, 0.7},
    {"(x^2 - 5x + 6) / (x^2 + 1)", [](double x) { return (x * x - 5 * x + 6) / (x * x + 1); }, 0, 5},
};

// Every method stops at 1e-12 (zeros) or 1e-7 (minima); its calls, or 0 where it fails.
int our_zero(const Problem& p)
{
    const double errabs = 0, errrel = 1e-12, eps = 1e-5, eta = 1e-2, guess = (p.a + p.b) / 2;
    const int32_t one = 1, itmax = 100;
    double x;
    int32_t info;
    DZREAL(by_reference, &errabs, &errrel, &eps, &eta, &one, &itmax, &guess, &x, &info);
    return info <= itmax && x >= p.a && x <= p.b ? calls : 0;
}

int gsl_zero(const Problem& p)
{
    gsl_root_fsolver* const s = gsl_root_fsolver_alloc(gsl_root_fsolver_brent);
    gsl_root_fsolver_set(s, &for_gsl, p.a, p.b);
    int status = GSL_CONTINUE;
    for (int k = 0; k < 200 && status == GSL_CONTINUE; ++k) {
        gsl_root_fsolver_iterate(s);
        status = gsl_root_test_interval(gsl_root_fsolver_x_lower(s), gsl_root_fsolver_x_upper(s), 0, 1e-12);
    }
    gsl_root_fsolver_free(s);
    return status == GSL_SUCCESS ? calls : 0;
}

int boost_zero(const Problem& p)
{
    std::uintmax_t most = 200;
    boost::math::tools::toms748_solve(counted, p.a, p.b, boost::math::tools::eps_tolerance<double>(40), most);
    return calls;
}

int our_minimum(const Problem& p)
{
    const double guess = (p.a + p.b) / 2, step = (p.b - p.a) / 20, bound = (p.b - p.a) / 2, accuracy = 1e-7;
    const int32_t most = 200, above = 1;
    double x;
    DUVMIF(by_reference, &guess, &step, &bound, &accuracy, &most, &x);
    return N1RTY(&above) == 0 ? calls : 0;
}

int gsl_minimum(const Problem& p)
{
    gsl_min_fminimizer* const s = gsl_min_fminimizer_alloc(gsl_min_fminimizer_brent);
    const bool started = gsl_min_fminimizer_set(s, &for_gsl, (p.a + p.b) / 2, p.a, p.b) == GSL_SUCCESS;
    int status = started ? GSL_CONTINUE : GSL_SUCCESS;
    for (int k = 0; k < 200 && status == GSL_CONTINUE; ++k) {
        gsl_min_fminimizer_iterate(s);
        status = gsl_min_test_interval(gsl_min_fminimizer_x_lower(s), gsl_min_fminimizer_x_upper(s), 1e-7, 0);
    }
    gsl_min_fminimizer_free(s);
    return started && status == GSL_SUCCESS ? calls : 0;
}

int boost_minimum(const Problem& p)
{
    boost::math::tools::brent_find_minima(counted, p.a, p.b, 24);
    return calls;
}

template <std::size_t n>
void print(const Problem (&problems)[n], int (*const (&methods)[3])(const Problem&))
{
    int total[3] = {};
    for (const Problem& p : problems) {
        std::printf("| `%s` | %g to %g |", p.text, p.a, p.b);
        current = &p;
        int counts[3];
        bool all = true;
        for (int k = 0; k < 3; ++k) {
            calls = 0;
            counts[k] = methods[k](p);
            all = all && counts[k] > 0;
            counts[k] > 0 ? std::printf(" %d |", counts[k]) : std::printf(" - |");
        }
        for (int k = 0; k < 3; ++k) total[k] += all ? counts[k] : 0;
        std::printf("\n");
    }
    std::printf("| sum without dashes | | %d | %d | %d |\n", total[0], total[1], total[2]);
}

}  // namespace

int main()
{
    const int32_t all = 0, off = 0;
    ERSET(&all, &off, &off);
    gsl_set_error_handler_off();
    std::printf(
        "# Calls of the function\n\nPrinted by bench/counts.cpp. A dash means that a method did not end, or "
        "not inside "
        "the interval.\n\n"
        "## Zeros, relative accuracy 1e-12\n\nProblems of G. E. Alefeld, F. A. Potra, Y. Shi, Algorithm 748, "
        "ACM "
        "Transactions on Mathematical Software 21, 1995.\n`DZREAL` starts from the midpoint and is not told "
        "the "
        "interval; the others enclose the zero.\n\n| function | interval | `DZREAL` | Brent (GSL) | "
        "Algorithm 748 "
        "(Boost) |\n|---|---|---:|---:|---:|\n");
    print(zeros, {our_zero, gsl_zero, boost_zero});
    std::printf(
        "\n## Minima, accuracy 1e-7\n\nProblems of P. Hansen, B. Jaumard, S.-H. Lu, Global optimization of "
        "univariate "
        "Lipschitz functions II, Mathematical\nProgramming 55, 1992, each on an interval around one minimum. "
        "`DUVMIF` "
        "starts from the midpoint with a step of a\ntwentieth of the interval.\n\n| function | interval | "
        "`DUVMIF` | "
        "Brent (GSL) | Brent (Boost) |\n|---|---|---:|---:|---:|\n");
    print(minima, {our_minimum, gsl_minimum, boost_minimum});
}
