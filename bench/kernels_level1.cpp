// bench/kernels_level1.cpp - vector kernels against OpenBLAS and BLIS; long vectors against the memory
//
// "memory" is a plain loop that moves the same bytes and does next to no arithmetic: the ratio of its line is
// the share of the memory bandwidth that a kernel reaches.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cctype>
#include <complex>
#include <cstdlib>
#include <random>
#include <string>

#include "bench/peers.h"
#include "orvel/orvel.h"

namespace {

constexpr int32_t in_memory = 10'000'000;
const int32_t one = 1;

// Two vectors of the longest case in each precision, page aligned, but not at the same place within a page.
template <class R>
R* vector(int k)
{
    static R* data[2];
    if (data[k] == nullptr) {
        const std::size_t count = 2 * static_cast<std::size_t>(in_memory) + 4096;
        data[k] = static_cast<R*>(std::aligned_alloc(4096, (count * sizeof(R) + 4095) / 4096 * 4096));
        std::mt19937_64 random(5);
        std::uniform_real_distribution<R> uniform(-1, 1);
        for (std::size_t i = 0; i < count; ++i) data[k][i] = uniform(random);
    }
    return data[k] + 576 / sizeof(R) * static_cast<std::size_t>(k);
}

template <class T>
auto part(T a)
{
    return std::real(a);
}
template <class T>
T* x()
{
    return reinterpret_cast<T*>(vector<decltype(part(T()))>(0));
}
template <class T>
T* y()
{
    return reinterpret_cast<T*>(vector<decltype(part(T()))>(1));
}

// What a kernel moves: how often it reads and writes.
enum class Traffic { read, read_two, update, update_two, copy, read_and_update };

typedef uint64_t Word __attribute__((may_alias));

void move(Traffic traffic, int64_t n, Word* u, Word* v)
{
    uint64_t sum = 0;
    switch (traffic) {
        case Traffic::read:
            for (int64_t i = 0; i < n; ++i) sum += u[i];
            break;
        case Traffic::read_two:
            for (int64_t i = 0; i < n; ++i) sum += u[i] ^ v[i];
            break;
        case Traffic::update:
            for (int64_t i = 0; i < n; ++i) u[i] ^= 1;
            break;
        case Traffic::update_two:
            for (int64_t i = 0; i < n; ++i) {
                const Word kept = u[i];
                u[i] = v[i];
                v[i] = kept;
            }
            break;
        case Traffic::copy:
            for (int64_t i = 0; i < n; ++i) v[i] = u[i] ^ 1;
            break;
        case Traffic::read_and_update:
            for (int64_t i = 0; i < n; ++i) v[i] ^= u[i] & 1;
            break;
    }
    benchmark::DoNotOptimize(sum);
}

template <class F>
void measure(const std::string& name, F work)
{
    benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) {
        work();  // other cases have run in between: the caches as they are from the second call on
        for (auto _ : state) {
            work();
            benchmark::ClobberMemory();
        }
        state.SetItemsProcessed(state.iterations());
    });
}

// call(routine, n) is timed for ours and for the peers that have the routine.
template <class T, class F, class Call>
void add(const std::string& name, Traffic traffic, F* ours, Call call)
{
    std::string fortran = name + "_";
    std::transform(fortran.begin(), fortran.end(), fortran.begin(),
                   [](unsigned char c) { return std::tolower(c); });
    for (const int32_t n : {1000, 100'000, in_memory}) {
        const std::string row = name + "|n = " + std::to_string(n) + "|";
        measure(row + "ours", [=] { call(ours, &n); });
        for (const bench::Peer& peer : bench::peers())
            if (F* theirs = peer.find<F>(fortran)) measure(row + peer.name, [=] { call(theirs, &n); });
        if (n == in_memory) {
            const int64_t words = static_cast<int64_t>(n) * static_cast<int64_t>(sizeof(T)) / 8;
            measure(row + "memory", [=] {
                move(traffic, words, reinterpret_cast<Word*>(x<T>()), reinterpret_cast<Word*>(y<T>()));
            });
        }
    }
}

template <class T>
auto dot_call = [](auto f, const int32_t* n) { benchmark::DoNotOptimize(f(n, x<T>(), &one, y<T>(), &one)); };
template <class T>
auto norm_call = [](auto f, const int32_t* n) { benchmark::DoNotOptimize(f(n, x<T>(), &one)); };
template <class T>
auto copy_call = [](auto f, const int32_t* n) { f(n, x<T>(), &one, y<T>(), &one); };

// Factors that change no magnitude, so that a thousand calls leave good numbers.
template <class T>
auto scal_call = [](auto f, const int32_t* n) {
    const T a = -1;
    f(n, &a, x<T>(), &one);
};
template <class T>
auto axpy_call = [](auto f, const int32_t* n) {
    static T a = T(1e-3f);
    a = -a;
    f(n, &a, x<T>(), &one, y<T>(), &one);
};

void accumulate(const char* name, auto step)
{
    benchmark::RegisterBenchmark((std::string(name) + "|a term|ours").c_str(), [=](benchmark::State& state) {
        double acc[2] = {0, 0};
        for (auto _ : state)
            for (int k = 0; k < 1000; ++k) step(k, acc);
        benchmark::DoNotOptimize(acc);
        state.SetItemsProcessed(1000 * state.iterations());
    });
}

template <class T>
void add_common(const char* letter, auto axpy, auto scal, auto copy, auto swap)
{
    const std::string p = letter;
    add<T>(p + "AXPY", Traffic::read_and_update, axpy, axpy_call<T>);
    add<T>(p + "SCAL", Traffic::update, scal, scal_call<T>);
    add<T>(p + "COPY", Traffic::copy, copy, copy_call<T>);
    add<T>(p + "SWAP", Traffic::update_two, swap, copy_call<T>);
}

const int registered = [] {
    using C = orvel_complex;
    using Z = orvel_dcomplex;
    add<float>("SDOT", Traffic::read_two, SDOT, dot_call<float>);
    add<double>("DDOT", Traffic::read_two, DDOT, dot_call<double>);
    add<C>("CDOTU", Traffic::read_two, CDOTU, dot_call<C>);
    add<Z>("ZDOTC", Traffic::read_two, ZDOTC, dot_call<Z>);
    add<float>("SDSDOT", Traffic::read_two, SDSDOT, [](auto f, const int32_t* n) {
        const float b = 1;
        benchmark::DoNotOptimize(f(n, &b, x<float>(), &one, y<float>(), &one));
    });
    add_common<float>("S", SAXPY, SSCAL, SCOPY, SSWAP);
    add_common<double>("D", DAXPY, DSCAL, DCOPY, DSWAP);
    add_common<C>("C", CAXPY, CSCAL, CCOPY, CSWAP);
    add_common<Z>("Z", ZAXPY, ZSCAL, ZCOPY, ZSWAP);
    add<float>("SASUM", Traffic::read, SASUM, norm_call<float>);
    add<double>("DASUM", Traffic::read, DASUM, norm_call<double>);
    add<Z>("DZASUM", Traffic::read, DZASUM, norm_call<Z>);
    add<float>("SNRM2", Traffic::read, SNRM2, norm_call<float>);
    add<double>("DNRM2", Traffic::read, DNRM2, norm_call<double>);
    add<Z>("DZNRM2", Traffic::read, DZNRM2, norm_call<Z>);
    add<float>("ISAMAX", Traffic::read, ISAMAX, norm_call<float>);
    add<double>("IDAMAX", Traffic::read, IDAMAX, norm_call<double>);
    add<C>("ICAMAX", Traffic::read, ICAMAX, norm_call<C>);
    add<Z>("IZAMAX", Traffic::read, IZAMAX, norm_call<Z>);
    accumulate("DQADD", [](int k, double* acc) { DQADD(x<double>() + k, acc); });
    accumulate("DQMUL", [](int k, double* acc) { DQMUL(x<double>() + k, y<double>() + k, acc); });
    return 0;
}();

}  // namespace
