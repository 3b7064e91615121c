// bench/util.cpp - sorting against pattern-defeating quicksort and the sort of the C++ library
#include <benchmark/benchmark.h>

#include <algorithm>
#include <boost/sort/pdqsort/pdqsort.hpp>
#include <cmath>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "orvel/orvel.h"

namespace {

// As many vectors as make a million elements: a short one must be new every time, or its branches are learnt.
constexpr std::size_t total = 1000000;

template <class T>
std::vector<T> input(const std::string& kind, std::size_t n)
{
    std::mt19937_64 random(11);
    std::vector<T> x(total);
    for (std::size_t k = 0; k < total; ++k) {
        const auto place = static_cast<double>(k % n);
        const uint64_t any = random();
        x[k] = kind == "sorted"     ? static_cast<T>(place)
               : kind == "reversed" ? static_cast<T>(-place)
               : kind == "pipe"     ? static_cast<T>(std::min(place, static_cast<double>(n) - place))
               : kind == "two runs"
                   ? static_cast<T>(2 * (k % n) < n ? 2 * place : 2 * place - static_cast<double>(n) + 1)
               : kind == "wave"
                   ? static_cast<T>(1e9 * std::sin(6.2831853071795865 * place / static_cast<double>(n)))
               : kind == "16 values"   ? static_cast<T>(any % 16)
               : std::is_integral_v<T> ? static_cast<T>(any)
                                       : static_cast<T>(static_cast<double>(any) * 0x1p-64);
    }
    return x;
}

template <class T>
struct Pair {
    T key;
    int32_t label;
    bool operator<(const Pair& other) const { return key < other.key; }
};

// Sorts the vectors one after another; restoring the input is not timed.
template <class E, class F>
void add(const std::string& name, std::vector<E> (*make)(const std::string&, std::size_t),
         const std::string& kind, std::size_t n, F sort)
{
    benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) {
        const std::vector<E> original = make(kind, n);
        std::vector<E> x(total);
        for (auto _ : state) {
            state.PauseTiming();
            x = original;
            state.ResumeTiming();
            for (std::size_t k = 0; k + n <= total; k += n) sort(x.data() + k, static_cast<int32_t>(n));
            benchmark::ClobberMemory();
        }
        state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(total));
    });
}

template <class T>
std::vector<Pair<T>> pairs(const std::string& kind, std::size_t n)
{
    const std::vector<T> x = input<T>(kind, n);
    std::vector<Pair<T>> result(total);
    for (std::size_t k = 0; k < total; ++k) result[k] = {x[k], static_cast<int32_t>(k % n)};
    return result;
}

std::string case_name(const std::string& kind, std::size_t n) { return kind + " " + std::to_string(n); }

template <class T>
void add_plain(const char* routine, const std::string& kind, std::size_t n,
               void (*ours)(const int32_t*, const T*, T*))
{
    const std::string row = routine + ("|" + case_name(kind, n)) + "|";
    add(row + "ours", input<T>, kind, n, [=](T* x, int32_t count) { ours(&count, x, x); });
    add(row + "pdqsort", input<T>, kind, n, [](T* x, int32_t count) { boost::sort::pdqsort(x, x + count); });
    add(row + "std::sort", input<T>, kind, n, [](T* x, int32_t count) { std::sort(x, x + count); });
}

template <class T>
void add_labelled(const char* routine, std::size_t n, void (*ours)(const int32_t*, const T*, T*, int32_t*))
{
    const std::string row = routine + ("|" + case_name("random", n)) + "|";
    add(row + "ours", input<T>, "random", n, [=](T* x, int32_t count) {
        static std::vector<int32_t> labels(total);
        for (int32_t k = 0; k < count; ++k) labels[static_cast<std::size_t>(k)] = k;
        ours(&count, x, x, labels.data());
    });
    add(row + "pdqsort", pairs<T>, "random", n, [](Pair<T>* x, int32_t count) {
        boost::sort::pdqsort_branchless(x, x + count, [](const auto& a, const auto& b) { return a < b; });
    });
}

const int registered = [] {
    for (const std::size_t n : {std::size_t{1000}, total}) {
        add_plain<double>("DSVRGN", "random", n, DSVRGN);
        add_plain<float>("SVRGN", "random", n, SVRGN);
        add_plain<int32_t>("SVIGN", "random", n, SVIGN);
        for (const char* kind : {"sorted", "reversed", "pipe", "two runs", "wave", "16 values"})
            add_plain<double>("DSVRGN", kind, n, DSVRGN);
        add_labelled<double>("DSVRGP", n, DSVRGP);
        add_labelled<float>("SVRGP", n, SVRGP);
    }
    return 0;
}();

}  // namespace
