// bench/interp.cpp - cubic splines against GSL
#include <benchmark/benchmark.h>
#include <gsl/gsl_spline.h>

#include <cmath>
#include <random>
#include <string>
#include <vector>

#include "orvel/orvel.h"

namespace {

struct Data {
    std::vector<double> x, f, brkpt, spcoef;

    explicit Data(int32_t n) : x(n), f(n), brkpt(n), spcoef(4 * n)
    {
        std::mt19937_64 random(3);
        double at = 0;
        for (double& v : x) v = at += 0.5 + static_cast<double>(random()) * 0x1p-64;
        for (double& v : f) v = static_cast<double>(random()) * 0x1p-64;
        f.back() = f.front();
    }
};

using Constructor = void (*)(const int32_t*, const double*, const double*, double*, double*);

void add_construction(const std::string& routine, int32_t n, Constructor ours, const gsl_interp_type* type)
{
    const std::string row = routine + "|" + std::to_string(n) + " points|";
    const auto add = [&](const char* who, auto work) {
        benchmark::RegisterBenchmark((row + who).c_str(), [=](benchmark::State& state) {
            Data d(n);
            work(state, d);
            state.SetItemsProcessed(state.iterations() * n);
        });
    };
    add("ours", [=](benchmark::State& state, Data& d) {
        for (auto _ : state) {
            ours(&n, d.x.data(), d.f.data(), d.brkpt.data(), d.spcoef.data());
            benchmark::ClobberMemory();
        }
    });
    add("GSL", [=](benchmark::State& state, Data& d) {
        gsl_interp* const interp = gsl_interp_alloc(type, static_cast<std::size_t>(n));
        for (auto _ : state) {
            gsl_interp_init(interp, d.x.data(), d.f.data(), static_cast<std::size_t>(n));
            benchmark::ClobberMemory();
        }
        gsl_interp_free(interp);
    });
}

void add_evaluation(const std::string& order, int32_t n)
{
    const auto arguments = [=](const Data& d) {
        std::mt19937_64 random(9);
        std::vector<double> at(16384);
        const double length = d.x.back() - d.x.front();
        for (std::size_t k = 0; k < at.size(); ++k)
            at[k] = d.x.front() + length * (order == "random" ? static_cast<double>(random()) * 0x1p-64
                                                              : static_cast<double>(k) / 16384.0);
        return at;
    };
    const std::string row = "DCSVAL|" + order + ", " + std::to_string(n - 1) + " pieces|";
    benchmark::RegisterBenchmark((row + "ours").c_str(), [=](benchmark::State& state) {
        Data d(n);
        const std::vector<double> at = arguments(d);
        const int32_t nintv = n - 1;
        DCSINT(&n, d.x.data(), d.f.data(), d.brkpt.data(), d.spcoef.data());
        for (auto _ : state) {
            double sum = 0;
            for (const double& x : at) sum += DCSVAL(&x, &nintv, d.brkpt.data(), d.spcoef.data());
            benchmark::DoNotOptimize(sum);
        }
        state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(at.size()));
    });
    const std::string many = "DCSVALS|" + row.substr(row.find('|') + 1);
    benchmark::RegisterBenchmark((many + "ours").c_str(), [=](benchmark::State& state) {
        Data d(n);
        const std::vector<double> at = arguments(d);
        std::vector<double> values(at.size());
        const int32_t nintv = n - 1, points = static_cast<int32_t>(at.size());
        DCSINT(&n, d.x.data(), d.f.data(), d.brkpt.data(), d.spcoef.data());
        for (auto _ : state) {
            DCSVALS(&points, at.data(), &nintv, d.brkpt.data(), d.spcoef.data(), values.data());
            benchmark::ClobberMemory();
        }
        state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(at.size()));
    });
    for (const std::string& calls : {row, many})
        benchmark::RegisterBenchmark((calls + "GSL").c_str(), [=](benchmark::State& state) {
            Data d(n);
            const std::vector<double> at = arguments(d);
            gsl_spline* const spline = gsl_spline_alloc(gsl_interp_cspline, static_cast<std::size_t>(n));
            gsl_interp_accel* const accelerator = gsl_interp_accel_alloc();
            gsl_spline_init(spline, d.x.data(), d.f.data(), static_cast<std::size_t>(n));
            for (auto _ : state) {
                double sum = 0;
                for (const double& x : at) sum += gsl_spline_eval(spline, x, accelerator);
                benchmark::DoNotOptimize(sum);
            }
            state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(at.size()));
            gsl_interp_accel_free(accelerator);
            gsl_spline_free(spline);
        });
}

const int registered = [] {
    for (const int32_t n : {1000, 1000000}) {
        add_construction("DCSINT", n, DCSINT, gsl_interp_cspline);
        add_construction("DCSPER", n, DCSPER, gsl_interp_cspline_periodic);
        add_construction("DCSAKM", n, DCSAKM, gsl_interp_akima);
    }
    for (const int32_t n : {4, 1001, 1000001}) {
        add_evaluation("ascending", n);
        add_evaluation("random", n);
    }
    return 0;
}();

}  // namespace
