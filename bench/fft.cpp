// bench/fft.cpp - Fourier transforms against FFTW (measured plans) and GSL, all initialised before
//
// Debian's FFTW knows SSE2 and AVX, not AVX2 or AVX-512.
#include <benchmark/benchmark.h>
#include <fftw3.h>
#include <gsl/gsl_errno.h>
#include <gsl/gsl_fft_complex.h>
#include <gsl/gsl_fft_complex_float.h>
#include <gsl/gsl_fft_real.h>
#include <gsl/gsl_fft_real_float.h>

#include <complex>
#include <cstdlib>
#include <functional>
#include <memory>
#include <random>
#include <string>

#include "orvel/orvel.h"

namespace {

struct Free {
    void operator()(void* p) const { std::free(p); }
};
template <class R>
using Array = std::unique_ptr<R[], Free>;

// Aligned as FFTW wants it.
template <class R>
Array<R> random_array(int64_t count)
{
    const std::size_t bytes = (static_cast<std::size_t>(count) * sizeof(R) + 4095) / 4096 * 4096;
    Array<R> x(static_cast<R*>(std::aligned_alloc(4096, bytes)));
    std::mt19937_64 random(7);
    std::uniform_real_distribution<R> uniform(-1, 1);
    for (int64_t k = 0; k < count; ++k) x[k] = uniform(random);
    return x;
}

template <class R>
struct Library;

template <>
struct Library<double> {
    static constexpr auto init_complex = DFFTCI;
    static constexpr auto forward_complex = DF2TCF;
    static constexpr auto front_complex = DFFTCF;
    static constexpr auto init_real = DFFTRI;
    static constexpr auto forward_real = DF2TRF;
    static constexpr auto backward_real = DF2TRB;
    using Plan = fftw_plan;
    using Pair = fftw_complex;
    static constexpr auto plan_complex = fftw_plan_dft_1d;
    static constexpr auto plan_forward = fftw_plan_dft_r2c_1d;
    static constexpr auto plan_backward = fftw_plan_dft_c2r_1d;
    static constexpr auto execute = fftw_execute;
    static constexpr auto destroy = fftw_destroy_plan;
    using Wavetable = gsl_fft_complex_wavetable;
    using RealWavetable = gsl_fft_real_wavetable;
    static constexpr auto gsl_table = gsl_fft_complex_wavetable_alloc;
    static constexpr auto gsl_space = gsl_fft_complex_workspace_alloc;
    static constexpr auto gsl_forward = gsl_fft_complex_forward;
    static constexpr auto gsl_real_table = gsl_fft_real_wavetable_alloc;
    static constexpr auto gsl_real_space = gsl_fft_real_workspace_alloc;
    static constexpr auto gsl_real = gsl_fft_real_transform;
};

template <>
struct Library<float> {
    static constexpr auto init_complex = FFTCI;
    static constexpr auto forward_complex = F2TCF;
    static constexpr auto front_complex = FFTCF;
    static constexpr auto init_real = FFTRI;
    static constexpr auto forward_real = F2TRF;
    static constexpr auto backward_real = F2TRB;
    using Plan = fftwf_plan;
    using Pair = fftwf_complex;
    static constexpr auto plan_complex = fftwf_plan_dft_1d;
    static constexpr auto plan_forward = fftwf_plan_dft_r2c_1d;
    static constexpr auto plan_backward = fftwf_plan_dft_c2r_1d;
    static constexpr auto execute = fftwf_execute;
    static constexpr auto destroy = fftwf_destroy_plan;
    static constexpr auto gsl_table = gsl_fft_complex_wavetable_float_alloc;
    static constexpr auto gsl_space = gsl_fft_complex_workspace_float_alloc;
    static constexpr auto gsl_forward = gsl_fft_complex_float_forward;
    static constexpr auto gsl_real_table = gsl_fft_real_wavetable_float_alloc;
    static constexpr auto gsl_real_space = gsl_fft_real_workspace_float_alloc;
    static constexpr auto gsl_real = gsl_fft_real_float_transform;
};

void add(const std::string& name, const std::function<void(benchmark::State&)>& body)
{
    benchmark::RegisterBenchmark(name.c_str(), body);
}

template <class F>
void repeat(benchmark::State& state, F f)
{
    f();
    for (auto _ : state) {
        f();
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations());
}

template <class R>
void add_complex(const std::string& routine, int32_t n)
{
    using L = Library<R>;
    using C = std::complex<R>;
    const std::string row = routine + "|N = " + std::to_string(n) + "|";
    add(row + "ours", [n](benchmark::State& state) {
        const auto x = random_array<R>(2 * n), y = random_array<R>(2 * n);
        const auto work = random_array<R>(4 * int64_t{n} + 15), second = random_array<R>(2 * n);
        L::init_complex(&n, work.get());
        repeat(state, [&] {
            L::forward_complex(&n, reinterpret_cast<C*>(x.get()), reinterpret_cast<C*>(y.get()), work.get(),
                               second.get());
        });
    });
    add(row + "FFTW", [n](benchmark::State& state) {
        const auto x = random_array<R>(2 * n), y = random_array<R>(2 * n);
        const auto plan =
            L::plan_complex(n, reinterpret_cast<typename L::Pair*>(x.get()),
                            reinterpret_cast<typename L::Pair*>(y.get()), FFTW_FORWARD, FFTW_MEASURE);
        for (int32_t k = 0; k < 2 * n; ++k) x[k] = R(k % 7) - 3;
        repeat(state, [&] { L::execute(plan); });
        L::destroy(plan);
    });
    if (n < 1000000 && n != 10007)
        add(row + "GSL", [n](benchmark::State& state) {
            const auto x = random_array<R>(2 * n);
            auto* const table = L::gsl_table(n);
            auto* const space = L::gsl_space(n);
            // In place: each transform is followed by a division that keeps the numbers in range.
            repeat(state, [&] {
                x[0] = 1;
                for (int32_t k = 1; k < 2 * n; k += 1 + n / 16) x[k] = R(0.5);
                L::gsl_forward(x.get(), 1, n, table, space);
            });
        });
}

template <class R>
void add_real(const std::string& forward, const std::string& backward, int32_t n)
{
    using L = Library<R>;
    const std::string size = "|N = " + std::to_string(n) + "|";
    for (const bool is_forward : {true, false}) {
        const std::string row = (is_forward ? forward : backward) + size;
        add(row + "ours", [n, is_forward](benchmark::State& state) {
            const auto x = random_array<R>(n), y = random_array<R>(n),
                       work = random_array<R>(2 * int64_t{n} + 15);
            L::init_real(&n, work.get());
            const auto worker = is_forward ? L::forward_real : L::backward_real;
            repeat(state, [&] { worker(&n, x.get(), y.get(), work.get()); });
        });
        add(row + "FFTW", [n, is_forward](benchmark::State& state) {
            const auto x = random_array<R>(n + 2), y = random_array<R>(n + 2);
            auto* const pairs = reinterpret_cast<typename L::Pair*>(y.get());
            const auto plan = is_forward
                                  ? L::plan_forward(n, x.get(), pairs, FFTW_MEASURE)
                                  : L::plan_backward(n, pairs, x.get(), FFTW_MEASURE | FFTW_PRESERVE_INPUT);
            for (int32_t k = 0; k < n; ++k) x[k] = y[k] = R(k % 7) - 3;
            repeat(state, [&] { L::execute(plan); });
            L::destroy(plan);
        });
    }
    if (n < 1000000)
        add(forward + size + "GSL", [n](benchmark::State& state) {
            const auto x = random_array<R>(n);
            auto* const table = L::gsl_real_table(n);
            auto* const space = L::gsl_real_space(n);
            repeat(state, [&] {
                for (int32_t k = 0; k < n; k += 1 + n / 16) x[k] = R(0.5);
                L::gsl_real(x.get(), 1, n, table, space);
            });
        });
}

// A front initialises in every call, and so is measured against the worker alone.
template <class R>
void add_front(const std::string& routine, int32_t n)
{
    using L = Library<R>;
    using C = std::complex<R>;
    const std::string row = routine + "|initialised in each call " + std::to_string(n) + "|";
    for (const bool front : {true, false})
        add(row + (front ? "ours" : "worker"), [n, front](benchmark::State& state) {
            const auto x = random_array<R>(2 * n), y = random_array<R>(2 * n);
            const auto work = random_array<R>(4 * int64_t{n} + 15), second = random_array<R>(2 * n);
            L::init_complex(&n, work.get());
            C *const in = reinterpret_cast<C*>(x.get()), *const out = reinterpret_cast<C*>(y.get());
            repeat(state, [&] {
                if (front)
                    L::front_complex(&n, in, out);
                else
                    L::forward_complex(&n, in, out, work.get(), second.get());
            });
        });
}

const int registered = [] {
    const int32_t sizes[] = {6,     15,    16,    32,     60,      64,    100,    128,  256,
                             360,   512,   1000,  1024,   1200,    2048,  4096,   5040, 8192,
                             16384, 32768, 65536, 262144, 1048576, 10007, 1000003};
    for (const int32_t n : sizes) {
        add_complex<double>("DF2TCF", n);
        add_complex<float>("F2TCF", n);
        add_real<double>("DF2TRF", "DF2TRB", n);
        add_real<float>("F2TRF", "F2TRB", n);
    }
    for (const int32_t n : {64, 1024, 5040, 65536, 1048576}) {
        add_front<double>("DFFTCF", n);
        add_front<float>("FFTCF", n);
    }
    return 0;
}();

}  // namespace
