// bench/systems.h - a linear system and everything that a routine may write, shared by the rows of one order
#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstring>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "tests/numbers.h"

namespace bench {

template <class T>
struct System {
    int32_t n;
    std::vector<T> a, fact, b, x, wk;
    std::vector<orvel_test::Real<T>> rwork;
    std::vector<int32_t> ipvt, iwork;

    System(int32_t order, void (*fill)(System&)) : n(order)
    {
        const auto count = static_cast<std::size_t>(n);
        a.resize(count * count), fact.resize(count * count);
        b.resize(count), x.resize(count), wk.resize(std::max<std::size_t>(64, count) * 64);
        rwork.resize(8 * count), ipvt.resize(count), iwork.resize(count);
        fill(*this);
    }
    void copy() { std::memcpy(static_cast<void*>(fact.data()), a.data(), a.size() * sizeof(T)); }
};

// A general matrix, or one that is Hermitian and dominant.
template <class T>
void fill_general(System<T>& s)
{
    std::mt19937 random(7);
    for (T& e : s.a) e = orvel_test::random_value<T>(random);
    for (T& e : s.b) e = orvel_test::random_value<T>(random);
}
template <class T>
void fill_definite(System<T>& s)
{
    const auto count = static_cast<std::size_t>(s.n);
    std::mt19937 random(7);
    for (std::size_t j = 0; j < count; ++j)
        for (std::size_t i = 0; i <= j; ++i) {
            const T e = orvel_test::random_value<T>(random);
            s.a[i + j * count] = i == j ? T(static_cast<orvel_test::Real<T>>(s.n)) : e;
            s.a[j + i * count] = i == j ? s.a[i + j * count] : orvel_test::conjugated(e);
        }
    for (T& e : s.b) e = orvel_test::random_value<T>(random);
}

template <class T, void (*fill)(System<T>&)>
System<T>& system_of(int32_t n)
{
    static System<T> latest(1, fill);
    if (latest.n != n) latest = System<T>(n, fill);
    return latest;
}

template <class T, void (*fill)(System<T>&)>
void add_system(const std::string& name, int32_t n, const std::string& who,
                std::function<void(System<T>&)> run)
{
    benchmark::RegisterBenchmark((name + "|n = " + std::to_string(n) + "|" + who).c_str(),
                                 [=](benchmark::State& state) {
                                     System<T>& s = system_of<T, fill>(n);
                                     for (auto _ : state) run(s);
                                     state.SetItemsProcessed(state.iterations());
                                 });
}

}  // namespace bench
