// bench/machine.cpp - what the machine can do at most: operations per second, bytes per second from each
// cache
//
// Compiled for the machine it is built on. tools/bench_table.py compares the rows of the library with these.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <numeric>
#include <string>
#include <vector>

namespace {

#if defined(__AVX512F__)
constexpr int width = 64;
#elif defined(__AVX__)
constexpr int width = 32;
#else
constexpr int width = 16;
#endif

template <class R>
using Vector __attribute__((vector_size(width))) = R;

// Chains of products and sums that no addition waits for. An item is an operation.
template <class R>
void operations(benchmark::State& state)
{
    constexpr int chains = width == 64 ? 24 : 12, steps = 1000;
    Vector<R> sum[chains];
    for (auto& s : sum) s = Vector<R>{} + R(1);
    const Vector<R> half = Vector<R>{} + R(0.5), one = Vector<R>{} + R(1);
    for (auto _ : state)
        for (int k = 0; k < steps; ++k)
#pragma GCC unroll 24
            for (int c = 0; c < chains; ++c) {
                sum[c] = sum[c] * half + one;
                benchmark::DoNotOptimize(sum[c]);
            }
    state.SetItemsProcessed(state.iterations() * steps * chains * 2 * width / static_cast<int>(sizeof(R)));
}

// Reads an array again and again. An item is a byte.
void bytes(benchmark::State& state, int64_t size)
{
    using Words = Vector<uint64_t>;
    constexpr int64_t unrolled = 8;
    std::vector<uint64_t> data(static_cast<std::size_t>(size) / sizeof(uint64_t) + width);
    std::iota(data.begin(), data.end(), uint64_t{1});
    const std::size_t misplaced = reinterpret_cast<uintptr_t>(data.data()) % width;
    const char* const begin = reinterpret_cast<const char*>(data.data()) + (width - misplaced) % width;
    Words sum[unrolled] = {};
    for (auto _ : state) {
        for (int64_t k = 0; k + unrolled * width <= size; k += unrolled * width)
#pragma GCC unroll 8
            for (int64_t u = 0; u < unrolled; ++u)
                sum[u] ^= *reinterpret_cast<const Words*>(begin + k + u * width);
        benchmark::ClobberMemory();
    }
    for (const Words& s : sum) benchmark::DoNotOptimize(s);
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
