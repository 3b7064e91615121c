// bench/special.cpp - gamma family against the C library and Boost.Math (each in its own precision)
#include <benchmark/benchmark.h>

#include <boost/math/special_functions/gamma.hpp>
#include <cmath>
#include <random>
#include <string>
#include <vector>

#include "orvel/orvel.h"

namespace {

using Plain = boost::math::policies::policy<boost::math::policies::promote_float<false>,
                                            boost::math::policies::promote_double<false>>;

struct Region {
    const char* name;
    double low, high;
};

// Arguments close to a negative integer are left out: they would measure the printing of warnings.
template <class T>
std::vector<T> arguments(const Region& region)
{
    std::mt19937_64 random(7);
    std::uniform_real_distribution<double> uniform(region.low, region.high);
    std::vector<T> x;
    while (x.size() < 4096) {
        const double value = uniform(random);
        if (value > 0 || std::abs(value - std::round(value)) > 0.02) x.push_back(static_cast<T>(value));
    }
    return x;
}

template <class T>
void add(const std::string& routine, const Region& region, const char* who, T (*function)(T))
{
    benchmark::RegisterBenchmark(
        (routine + "|" + region.name + "|" + who).c_str(), [=](benchmark::State& state) {
            const std::vector<T> x = arguments<T>(region);
            for (auto _ : state) {
                T sum = 0;
                for (const T value : x) sum += function(value);
                benchmark::DoNotOptimize(sum);
            }
            state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(x.size()));
        });
}

template <class T>
T boost_gamma(T x)
{
    return boost::math::tgamma(x, Plain());
}

const int registered = [] {
    const Region near[] = {{"0.1 to 2", 0.1, 2},
                           {"2 to 10", 2, 10},
                           {"10 to 33", 10, 33},
                           {"-9.9 to -0.1", -9.9, -0.1},
                           {"-30 to -10", -30, -10}};
    const Region far[] = {{"33 to 170", 33, 170}};
    const Region log_far[] = {{"33 to 1000", 33, 1000}};
    const auto each = [](const auto& regions, auto add_one) {
        for (const Region& region : regions) add_one(region);
    };
    const auto add_double_gamma = [](const Region& r) {
        add<double>("DGAMMA", r, "ours", [](double x) { return DGAMMA(&x); });
        add<double>("DGAMMA", r, "Boost.Math", boost_gamma<double>);
        add<double>("DGAMMA", r, "C library", [](double x) { return std::tgamma(x); });
    };
    const auto add_log_gammas = [](const Region& r) {
        add<double>("DLNGAM", r, "ours", [](double x) { return DLNGAM(&x); });
        add<double>("DLNGAM", r, "C library", [](double x) { return std::lgamma(x); });
        add<float>("ALNGAM", r, "ours", [](float x) { return ALNGAM(&x); });
        add<float>("ALNGAM", r, "C library", [](float x) { return std::lgamma(x); });
    };
    each(near, add_double_gamma);
    each(far, add_double_gamma);
    each(near, [](const Region& r) {
        add<float>("GAMMA", r, "ours", [](float x) { return GAMMA(&x); });
        add<float>("GAMMA", r, "Boost.Math", boost_gamma<float>);
        add<float>("GAMMA", r, "C library", [](float x) { return std::tgamma(x); });
    });
    each(near, add_log_gammas);
    each(log_far, add_log_gammas);
    return 0;
}();

}  // namespace
