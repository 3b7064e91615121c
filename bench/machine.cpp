// bench/machine.cpp - what the machine can do at most: operations per second, bytes per second from each
// cache
//
// Compiled for the machine it is built on. tools/bench_table.py compares the rows of the library with these.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <numeric>
#include <string>
#include <vector>

#include "isa/vector.h"

namespace {

namespace isa = orvel::isa;
using isa::Wide, isa::width;

// The compiler has to have the vector, in a register, and does not know what becomes of it.
#if defined(__x86_64__)
#define KEEP(v) asm volatile("" : "+v"(v))
#else
#define KEEP(v) asm volatile("" : "+w"(v))
#endif

// Chains of products and sums that no addition waits for.
template <class R, int count>
struct Chains {
    Wide<R> sum;
    Chains<R, count - 1> others;

    void begin()
    {
        sum = Wide<R>{} + R(1);
        others.begin();
    }
    inline __attribute__((always_inline)) void go_on(Wide<R> factor, Wide<R> more)
    {
        sum = sum * factor + more;
        KEEP(sum);
        others.go_on(factor, more);
    }
};
template <class R>
struct Chains<R, 0> {
    void begin() {}
    void go_on(Wide<R>, Wide<R>) {}
};

// An item is an operation.
template <class R>
void operations(benchmark::State& state)
{
    constexpr int count = width == 64 ? 24 : 12, steps = 1000;
    const Wide<R> half = Wide<R>{} + R(0.5), one = Wide<R>{} + R(1);
    for (auto _ : state) {
        Chains<R, count> chains;
        chains.begin();
        for (int k = 0; k < steps; ++k) chains.go_on(half, one);
    }
    state.SetItemsProcessed(state.iterations() * steps * count * 2 * isa::lanes<R>);
}

// Reads an array again and again. An item is a byte.
void bytes(benchmark::State& state, int64_t size)
{
    using Words = Wide<uint64_t>;
    constexpr int64_t unrolled = 8;
    std::vector<uint64_t> data(static_cast<std::size_t>(size) / sizeof(uint64_t) + width);
    std::iota(data.begin(), data.end(), uint64_t{1});
    const std::size_t misplaced = reinterpret_cast<uintptr_t>(data.data()) % width;
    const char* const begin = reinterpret_cast<const char*>(data.data()) + (width - misplaced) % width;
    Words sum[unrolled];
#pragma GCC unroll 8
    for (int64_t u = 0; u < unrolled; ++u) sum[u] = Words{};
    for (auto _ : state) {
        for (int64_t k = 0; k + unrolled * width <= size; k += unrolled * width)
#pragma GCC unroll 8
            for (int64_t u = 0; u < unrolled; ++u)
                sum[u] ^= *reinterpret_cast<const Words*>(begin + k + u * width);
        benchmark::ClobberMemory();
    }
#pragma GCC unroll 8
    for (int64_t u = 0; u < unrolled; ++u) KEEP(sum[u]);
    state.SetItemsProcessed(state.iterations() * size);
}

const int registered = [] {
    benchmark::RegisterBenchmark("machine|operation in single|ours", operations<float>);
    benchmark::RegisterBenchmark("machine|operation in double|ours", operations<double>);
    for (const int64_t kib : {16, 256, 4096, 262144})
        benchmark::RegisterBenchmark(("machine|byte of " + std::to_string(kib) + " KB|ours").c_str(),
                                     [kib](benchmark::State& state) { bytes(state, 1024 * kib); });
    return 0;
}();

}  // namespace
