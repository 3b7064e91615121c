// bench/scaling.cpp - how time grows with the size, and what threads that have problems of their own get
// done; with
// --machine only the caches and the blocks that the library takes from them
//
// The library starts no threads; the second table shows whether anything shared slows those of the caller.
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <functional>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "isa/caches.h"
#include "kernels/product.h"
#include "orvel/orvel.h"

namespace {

using Clock = std::chrono::steady_clock;
using Problem = std::function<void()>;

double seconds_since(Clock::time_point start)
{
    return std::chrono::duration<double>(Clock::now() - start).count();
}

// A kind of problem: what is made for a size can be run again and again.
struct Kind {
    const char* name;
    int32_t first, last;
    Problem (*make)(int32_t n);
};

std::vector<double> numbers(int64_t count)
{
    std::mt19937_64 random(5);
    std::uniform_real_distribution<double> uniform(-1, 1);
    std::vector<double> x(static_cast<std::size_t>(count));
    for (double& number : x) number = uniform(random);
    return x;
}

Problem product(int32_t n)
{
    const int64_t size = int64_t{n} * n;
    return [n, a = numbers(size), b = numbers(size), c = numbers(size)]() mutable {
        const double one = 1, zero = 0;
        DGEMM("N", "N", &n, &n, &n, &one, a.data(), &n, b.data(), &n, &zero, c.data(), &n);
    };
}

Problem factorization(int32_t n)
{
    const int64_t size = int64_t{n} * n;
    return [n, a = numbers(size), fact = numbers(size),
            ipvt = std::vector<int32_t>(static_cast<std::size_t>(n))]() mutable {
        DLFTRG(&n, a.data(), &n, fact.data(), &n, ipvt.data());
    };
}

Problem transform(int32_t n)
{
    std::vector<double> work(4 * static_cast<std::size_t>(n) + 15);
    DFFTRI(&n, work.data());
    return
        [n, work, x = numbers(n), y = numbers(n)]() mutable { DF2TRF(&n, x.data(), y.data(), work.data()); };
}

Problem sort(int32_t n)
{
    return [n, x = numbers(n), y = numbers(n)]() mutable { DSVRGN(&n, x.data(), y.data()); };
}

Problem spline(int32_t n)
{
    std::vector<double> x(static_cast<std::size_t>(n));
    for (std::size_t k = 0; k < x.size(); ++k) x[k] = static_cast<double>(k);
    return [n, x, f = numbers(n), b = numbers(n), c = numbers(4 * int64_t{n})]() mutable {
        DCSINT(&n, x.data(), f.data(), b.data(), c.data());
    };
}

// All of MAXSUB pieces are used up, so that keeping them in order is what grows.
Problem quadrature(int32_t maxsub)
{
    const auto pieces = static_cast<std::size_t>(maxsub);
    return [maxsub, lo = numbers(maxsub), hi = numbers(maxsub), results = numbers(maxsub),
            errors = numbers(maxsub), order = std::vector<int32_t>(pieces)]() mutable {
        const double a = 0, b = 1, errabs = 0, errrel = 1e-15;
        const int32_t rule = 1;
        double result, error;
        int32_t evaluations, used, code;
        const auto wave = [](const double* x) { return std::fmod(*x * 1e7, 1.0); };
        DQ3AG(wave, &a, &b, &errabs, &errrel, &rule, &maxsub, &result, &error, &evaluations, &code, lo.data(),
              hi.data(), results.data(), errors.data(), order.data(), &used);
    };
}

constexpr Kind kinds[] = {
    {"DGEMM", 128, 2048, product},        {"DLFTRG", 128, 2048, factorization},
    {"DF2TRF", 1024, 1 << 22, transform}, {"DSVRGN", 1024, 1 << 22, sort},
    {"DCSINT", 1024, 1 << 21, spline},    {"DQ3AG, MAXSUB", 64, 8192, quadrature},
};

// The least of some runs, of which each takes long enough to be measured.
double time_of(const Problem& problem)
{
    constexpr double enough = 0.02;
    problem();
    double least = INFINITY;
    for (int k = 0; k < 5; ++k) {
        const auto start = Clock::now();
        int runs = 0;
        do {
            problem();
            ++runs;
        } while (seconds_since(start) < enough);
        least = std::min(least, seconds_since(start) / runs);
    }
    return least;
}

// The slope of log t over log n by least squares.
double exponent(const std::vector<double>& n, const std::vector<double>& t)
{
    double sx = 0, sy = 0, sxx = 0, sxy = 0;
    const auto count = static_cast<double>(n.size());
    for (std::size_t k = 0; k < n.size(); ++k) {
        const double x = std::log(n[k]), y = std::log(t[k]);
        sx += x, sy += y, sxx += x * x, sxy += x * y;
    }
    return (count * sxy - sx * sy) / (count * sxx - sx * sx);
}

void print_growth(const Kind& kind)
{
    std::vector<double> sizes, times;
    std::printf("%s\n", kind.name);
    for (int64_t n = kind.first; n <= kind.last; n *= 2) {
        sizes.push_back(static_cast<double>(n));
        times.push_back(time_of(kind.make(static_cast<int32_t>(n))));
        std::printf("    n = %8lld  %12.3f us", static_cast<long long>(n), 1e6 * times.back());
        if (times.size() > 1) std::printf("  times %5.2f", times.back() / times[times.size() - 2]);
        std::printf("\n");
        std::fflush(stdout);
    }
    std::printf("    time grows with n to the power %.2f\n", exponent(sizes, times));
}

// Runs of all threads in a second, each with its own problem.
double throughput(const Kind& kind, int32_t n, int threads)
{
    constexpr double duration = 0.5;
    std::atomic<int> ready = 0;
    std::atomic<int64_t> runs = 0;
    const auto work = [&] {
        const Problem problem = kind.make(n);
        problem();
        ++ready;
        while (ready < threads) std::this_thread::yield();
        const auto start = Clock::now();
        int64_t mine = 0;
        for (; seconds_since(start) < duration; ++mine) problem();
        runs += mine;
    };
    std::vector<std::thread> all;
    for (int k = 0; k < threads; ++k) all.emplace_back(work);
    for (std::thread& thread : all) thread.join();
    return static_cast<double>(runs) / duration;
}

void print_threads(const Kind& kind, int32_t n)
{
    const int processors = static_cast<int>(std::max(1U, std::thread::hardware_concurrency()));
    const double alone = throughput(kind, n, 1);
    std::printf("%-14s n = %6d  1 thread: %10.0f a second", kind.name, n, alone);
    for (const int threads : {2, 4}) {
        const double share = throughput(kind, n, threads) / (alone * std::min(threads, processors));
        std::printf("  %d: %3.0f %%", threads, 100 * share);
    }
    std::printf("\n");
    std::fflush(stdout);
}

template <class T>
void print_blocks(const char* name)
{
    const orvel::kernels::Blocks blocks = orvel::kernels::product_blocks<T>(100000, 100000, 100000);
    std::printf("%s: %lld rows, %lld columns, depth %lld\n", name, static_cast<long long>(blocks.rows),
                static_cast<long long>(blocks.columns), static_cast<long long>(blocks.depth));
}

void print_machine()
{
    const auto& caches = orvel::isa::caches();
    std::printf("caches of %lld KB, %lld KB and %lld KB; blocks of large products:\n",
                static_cast<long long>(caches.first / 1024), static_cast<long long>(caches.second / 1024),
                static_cast<long long>(caches.last / 1024));
    print_blocks<float>("SGEMM");
    print_blocks<double>("DGEMM");
    print_blocks<std::complex<float>>("CGEMM");
    print_blocks<std::complex<double>>("ZGEMM");
    std::printf("\n");
}

}  // namespace

int main(int argc, char** argv)
{
    print_machine();
    if (argc > 1 && std::strcmp(argv[1], "--machine") == 0) return 0;
    for (const Kind& kind : kinds) print_growth(kind);
    std::printf(
        "\nThreads with a problem each: share of as many times the throughput of one, on at most %u processors\n",
        std::thread::hardware_concurrency());
    constexpr int32_t sizes[] = {200, 200, 4096, 4096, 4096, 500};
    for (std::size_t k = 0; k < std::size(kinds); ++k) print_threads(kinds[k], sizes[k]);
}
