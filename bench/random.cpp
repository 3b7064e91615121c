// bench/random.cpp - uniform numbers against the C++ library, Boost.Random and GSL scaled in the same way;
// round trip of the calendar
#include <benchmark/benchmark.h>
#include <gsl/gsl_rng.h>

#include <boost/random/mersenne_twister.hpp>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "orvel/orvel.h"

namespace {

std::string number_of_calls(int32_t n) { return " in calls of " + std::to_string(n); }

template <class F>
void add(const std::string& name, int64_t items, F body)
{
    benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) {
        auto work = body();
        for (auto _ : state) work();
        state.SetItemsProcessed(state.iterations() * items);
    });
}

void select(int32_t option)
{
    const int32_t seed = 123457;
    RNOPT(&option);
    RNSET(&seed);
}

// Fills of n numbers, and a million of them as many fills as that takes.
template <class T>
void add_ours(int32_t option, int32_t n, const std::string& name)
{
    add(name + "|ours", n, [=] {
        select(option);
        return [n, r = std::make_shared<std::vector<T>>(n)] {
            if constexpr (sizeof(T) == 4)
                RNUN(&n, r->data());
            else
                DRNUN(&n, r->data());
            benchmark::ClobberMemory();
        };
    });
}

// A peer's words, scaled to the unit interval; 53 bits of those with 64.
template <class T, class Engine, int shift = 0>
void add_engine(int32_t n, const std::string& name, double scale)
{
    add(name, n, [=] {
        return [n, scale, engine = std::make_shared<Engine>(), r = std::make_shared<std::vector<T>>(n)] {
            Engine& next = *engine;
            for (T& x : *r)
                x = static_cast<T>(static_cast<double>(static_cast<int64_t>(next() >> shift)) * scale);
            benchmark::ClobberMemory();
        };
    });
}

template <class T>
void add_gfsr4(int32_t n, const std::string& name)
{
    add(name, n, [=] {
        const std::shared_ptr<gsl_rng> rng(gsl_rng_alloc(gsl_rng_gfsr4), gsl_rng_free);
        return [n, rng, r = std::make_shared<std::vector<T>>(n)] {
            for (T& x : *r) x = static_cast<T>(gsl_rng_uniform(rng.get()));
            benchmark::ClobberMemory();
        };
    });
}

using Shuffled = std::shuffle_order_engine<std::minstd_rand0, 128>;

template <class T>
void add_fills(const std::string& routine)
{
    const double congruential = 1 / 2147483647.0;
    for (const int32_t n : {1000, 1000000})
        for (int32_t option = 1; option <= 9; ++option) {
            const std::string name = routine + "|" + std::to_string(option) + number_of_calls(n);
            add_ours<T>(option, n, name);
            if (option == 7) {
                add_gfsr4<T>(n, name + "|gfsr4");
            } else if (option == 8) {
                add_engine<T, std::mt19937>(n, name + "|C++ mt", 0x1p-32);
                add_engine<T, boost::random::mt19937>(n, name + "|Boost mt", 0x1p-32);
            } else if (option == 9) {
                add_engine<T, std::mt19937_64, 11>(n, name + "|C++ mt", 0x1p-53);
                add_engine<T, boost::random::mt19937_64, 11>(n, name + "|Boost mt", 0x1p-53);
            } else if (option % 2 == 1) {
                add_engine<T, std::minstd_rand0>(n, name + "|minstd", congruential);
            } else {
                add_engine<T, Shuffled>(n, name + "|shuffle", congruential);
            }
        }
    // What writing alone costs.
    for (const int32_t n : {1000, 1000000})
        add(routine + "|write" + number_of_calls(n) + "|ours", n, [=] {
            return [r = std::make_shared<std::vector<T>>(n), value = T(0)]() mutable {
                std::fill(r->begin(), r->end(), value += T(0.5));
                benchmark::ClobberMemory();
            };
        });
}

template <class F>
void add_single_calls(const std::string& name, F call)
{
    for (int32_t option = 1; option <= 9; ++option)
        add(name + "|one number, option " + std::to_string(option) + "|ours", 1000, [=] {
            select(option);
            return [=] {
                auto sum = call();
                for (int k = 1; k < 1000; ++k) sum += call();
                benchmark::DoNotOptimize(sum);
            };
        });
}

const int registered = [] {
    add_fills<double>("DRNUN");
    add_fills<float>("RNUN");
    add_single_calls("DRNUNF", [] { return DRNUNF(); });
    add_single_calls("RNUNF", [] { return RNUNF(); });
    add("NDAYS|and NDYIN, there and back|ours", 1000, [] {
        return [] {
            int32_t day, month, year, n = -400000;
            for (int k = 0; k < 1000; ++k) {
                NDYIN(&n, &day, &month, &year);
                n = NDAYS(&day, &month, &year) + 791;
            }
            benchmark::DoNotOptimize(n);
        };
    });
    return 0;
}();

}  // namespace
