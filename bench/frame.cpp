// bench/frame.cpp - cost of the frame: entering and leaving a routine, the exported pair, constants by index
//
// Names are "routine|case|who": the table that tools/bench_table.py prints has a line for each routine and
// case.
#include <benchmark/benchmark.h>

#include "orvel/orvel.h"

extern "C" int32_t bench_in_frame(const int32_t*);
extern "C" int32_t bench_without_frame(const int32_t*);

namespace {

constexpr int batch = 1000;

void repeat(benchmark::State& state, auto call)
{
    for (auto _ : state)
        for (int k = 0; k < batch; ++k) benchmark::DoNotOptimize(call());
    state.SetItemsProcessed(state.iterations() * batch);
}

const int registered = [] {
    using benchmark::RegisterBenchmark;
    static const int32_t n = 4;
    RegisterBenchmark("frame|push and pop in a routine|ours",
                      [](auto& s) { repeat(s, [] { return bench_in_frame(&n); }); });
    RegisterBenchmark("frame|push and pop in a routine|empty call",
                      [](auto& s) { repeat(s, [] { return bench_without_frame(&n); }); });
    RegisterBenchmark("frame|E1PSH and E1POP|ours", [](auto& s) {
        repeat(s, [] {
            E1PSH("NOTHNG ", 7);
            E1POP("NOTHNG ", 7);
            return 0;
        });
    });
    RegisterBenchmark("frame|AMACH by index|ours", [](auto& s) { repeat(s, [] { return AMACH(&n); }); });
    RegisterBenchmark("frame|N1RTY|ours", [](auto& s) {
        repeat(s, [] {
            static const int32_t above = 1;
            return N1RTY(&above);
        });
    });
    return 0;
}();

}  // namespace
