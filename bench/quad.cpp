// bench/quad.cpp - adaptive quadrature against GSL, whose workspace is made once; cheap integrands, so that
// the integrators are what is measured
#include <benchmark/benchmark.h>
#include <gsl/gsl_errno.h>
#include <gsl/gsl_integration.h>

#include <cmath>
#include <string>

#include "orvel/orvel.h"

namespace {

template <class T, T (*f)(T)>
T by_reference(const T* x)
{
    return f(*x);
}

template <double (*f)(double)>
double with_parameters(double x, void*)
{
    return f(x);
}

// The same calls of the function alone, whose time is inside both integrators.
template <double (*f)(double)>
void calls_alone(benchmark::State& state)
{
    double (*volatile function)(const double*) = by_reference<double, f>;
    double x = 0.3;
    for (auto _ : state) benchmark::DoNotOptimize(function(&x));
    state.SetItemsProcessed(state.iterations());
}

template <class Run>
void add(const std::string& name, Run run)
{
    benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) {
        for (auto _ : state) benchmark::DoNotOptimize(run());
        state.SetItemsProcessed(state.iterations());
    });
}

gsl_integration_workspace* workspace()
{
    static gsl_integration_workspace* const kept = gsl_integration_workspace_alloc(500);
    return kept;
}

// Rule 0 is the extrapolating integrator.
template <double (*f)(double)>
void add_integral(const std::string& what, int32_t rule, double errrel)
{
    constexpr double a = 0, b = 1, errabs = 0;
    const std::string name =
        (rule == 0 ? "DQDAGS|" : "DQDAG|") + what + (rule == 0 ? "" : ", rule " + std::to_string(rule)) + "|";
    add(name + "ours", [=] {
        double result, error;
        if (rule == 0)
            DQDAGS(by_reference<double, f>, &a, &b, &errabs, &errrel, &result, &error);
        else
            DQDAG(by_reference<double, f>, &a, &b, &errabs, &errrel, &rule, &result, &error);
        return result;
    });
    add(name + "GSL", [=] {
        gsl_function g{with_parameters<f>, nullptr};
        double result, error;
        if (rule == 0)
            gsl_integration_qags(&g, a, b, errabs, errrel, 500, workspace(), &result, &error);
        else
            gsl_integration_qag(&g, a, b, errabs, errrel, 500, rule, workspace(), &result, &error);
        return result;
    });
}

double cubic(double x) { return ((x - 1) * x + 2) * x; }
double root(double x) { return std::sqrt(x); }
double singular(double x) { return 1 / std::sqrt(x); }
double step(double x) { return x < 0.3183 ? 0 : 1; }
double peak(double x) { return 1 / ((x - 0.7854) * (x - 0.7854) + 1e-6); }

const int registered = [] {
    gsl_set_error_handler_off();
    add_integral<cubic>("one piece", 0, 1e-6);
    add_integral<root>("square root", 0, 1e-10);
    add_integral<singular>("end-point singularity", 0, 1e-10);
    add_integral<step>("step", 0, 1e-12);
    for (const int32_t rule : {1, 2, 3, 6}) add_integral<cubic>("one piece", rule, 1e-6);
    add_integral<peak>("peak", 1, 1e-10);
    add_integral<peak>("peak", 6, 1e-10);
    add_integral<singular>("end-point singularity", 2, 1e-10);
    benchmark::RegisterBenchmark("F|call of the cubic alone|ours", calls_alone<cubic>);
    benchmark::RegisterBenchmark("F|call of the singular alone|ours", calls_alone<singular>);
    return 0;
}();

}  // namespace
