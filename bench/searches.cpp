// bench/searches.cpp - zeros and minima against Brent's methods of GSL and Boost: time of a call of a cheap
// function
#include <benchmark/benchmark.h>
#include <gsl/gsl_errno.h>
#include <gsl/gsl_min.h>
#include <gsl/gsl_roots.h>

#include <boost/math/tools/minima.hpp>
#include <boost/math/tools/toms748_solve.hpp>
#include <cstdint>
#include <string>

#include "orvel/orvel.h"

namespace {

int64_t calls = 0;

double cubic(double x)
{
    ++calls;
    return x * x * x - 2 * x - 5;
}
double quartic(double x)
{
    ++calls;
    return x * x * x * x - 3 * x;
}

// Items are calls of the function.
template <class Run>
void add(const std::string& name, Run run)
{
    benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) {
        calls = 0;
        for (auto _ : state) benchmark::DoNotOptimize(run());
        state.SetItemsProcessed(calls);
    });
}

double gsl_zero()
{
    gsl_function f{[](double x, void*) { return cubic(x); }, nullptr};
    static gsl_root_fsolver* const s = gsl_root_fsolver_alloc(gsl_root_fsolver_brent);
    gsl_root_fsolver_set(s, &f, 1, 3);
    do {
        gsl_root_fsolver_iterate(s);
    } while (gsl_root_test_interval(gsl_root_fsolver_x_lower(s), gsl_root_fsolver_x_upper(s), 0, 1e-12) ==
             GSL_CONTINUE);
    return gsl_root_fsolver_root(s);
}

double gsl_minimum()
{
    gsl_function f{[](double x, void*) { return quartic(x); }, nullptr};
    static gsl_min_fminimizer* const s = gsl_min_fminimizer_alloc(gsl_min_fminimizer_brent);
    gsl_min_fminimizer_set(s, &f, 0.5, 0, 3);
    do {
        gsl_min_fminimizer_iterate(s);
    } while (gsl_min_test_interval(gsl_min_fminimizer_x_lower(s), gsl_min_fminimizer_x_upper(s), 1e-7, 0) ==
             GSL_CONTINUE);
    return gsl_min_fminimizer_x_minimum(s);
}

double boost_zero()
{
    std::uintmax_t most = 100;
    return boost::math::tools::toms748_solve(cubic, 1.0, 3.0, boost::math::tools::eps_tolerance<double>(40),
                                             most)
        .first;
}

double boost_minimum() { return boost::math::tools::brent_find_minima(quartic, 0.0, 3.0, 24).first; }

double our_zero()
{
    const double errabs = 0, errrel = 1e-12, eps = 1e-5, eta = 1e-2, guess = 2;
    const int32_t one = 1, itmax = 100;
    double x;
    int32_t info;
    DZREAL([](const double* at) { return cubic(*at); }, &errabs, &errrel, &eps, &eta, &one, &itmax, &guess,
           &x, &info);
    return x;
}

double our_minimum()
{
    const double guess = 0.5, step = 0.1, bound = 3, accuracy = 1e-7;
    const int32_t most = 100;
    double x;
    DUVMIF([](const double* at) { return quartic(*at); }, &guess, &step, &bound, &accuracy, &most, &x);
    return x;
}

// The chain that a search is: every call needs the value of the last one.
template <double (*f)(double)>
double function_alone()
{
    double (*volatile function)(const double*) = [](const double* at) { return f(*at); };
    double x = 1e-3;
    for (int k = 0; k < 100; ++k) x = 1e-3 + 1e-9 * function(&x);
    return x;
}

const int registered = [] {
    add("F|a call, cubic alone|ours", function_alone<cubic>);
    add("F|a call, quartic alone|ours", function_alone<quartic>);
    gsl_set_error_handler_off();
    add("DZREAL|a call, cubic|ours", our_zero);
    add("DZREAL|a call, cubic|GSL", gsl_zero);
    add("DZREAL|a call, cubic|Boost", boost_zero);
    add("DUVMIF|a call, quartic|ours", our_minimum);
    add("DUVMIF|a call, quartic|GSL", gsl_minimum);
    add("DUVMIF|a call, quartic|Boost", boost_minimum);
    return 0;
}();

}  // namespace
