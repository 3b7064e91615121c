// bench/cxx.cpp - what the C++ interface costs over the plain call
#include <benchmark/benchmark.h>

#include <cmath>

#include "orvel/orvel.hpp"

namespace {

constexpr int batch = 1000;

void repeat(benchmark::State& state, auto call)
{
    for (auto _ : state)
        for (int k = 0; k < batch; ++k) benchmark::DoNotOptimize(call(k));
    state.SetItemsProcessed(state.iterations() * batch);
}

// Arguments change, so that no two calls are one.
double argument(int k) { return 4.5 + 0x1p-20 * k; }

double parabola(const double* x) { return *x * *x; }

const int registered = [] {
    using benchmark::RegisterBenchmark;
    RegisterBenchmark("C++|gamma|ours",
                      [](auto& s) { repeat(s, [](int k) { return orvel::gamma(argument(k)).value(); }); });
    RegisterBenchmark("C++|gamma|plain call", [](auto& s) {
        repeat(s, [](int k) {
            const double x = argument(k);
            return DGAMMA(&x);
        });
    });
    RegisterBenchmark("C++|ndays|ours", [](auto& s) {
        repeat(s, [](int k) { return orvel::ndays(1 + k % 28, 3, 2000).value(); });
    });
    RegisterBenchmark("C++|ndays|plain call", [](auto& s) {
        repeat(s, [](int k) {
            const int32_t day = 1 + k % 28, month = 3, year = 2000;
            return NDAYS(&day, &month, &year);
        });
    });
    RegisterBenchmark("C++|qdags of x^2, 21 calls of it|ours", [](auto& s) {
        repeat(s, [](int k) {
            return orvel::qdags([](double x) { return x * x; }, 0, argument(k), 0, 1e-3).value().result;
        });
    });
    RegisterBenchmark("C++|qdags of x^2, 21 calls of it|plain call", [](auto& s) {
        repeat(s, [](int k) {
            const double a = 0, b = argument(k), relative = 1e-3;
            double result, error;
            DQDAGS(parabola, &a, &b, &a, &relative, &result, &error);
            return result;
        });
    });
    return 0;
}();

}  // namespace
