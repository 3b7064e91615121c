// tests/fft/thread_test.cpp - transforms of one length in several threads
#include <complex>
#include <thread>
#include <vector>

#include "tests/support.h"

namespace {

// Each has a copy of one work vector, used for both directions in turn: all get the same bits.
TEST(FftThreads, CopiesOfOneWorkVector)
{
    using C = std::complex<double>;
    const int32_t n = 1680;
    std::vector<double> work(4 * n + 15), real_work(2 * n + 15);
    std::vector<C> x(n);
    for (int32_t k = 0; k < n; ++k) x[k] = {k % 11 - 5.0, k % 7 - 3.0};
    DFFTCI(&n, work.data());
    DFFTRI(&n, real_work.data());
    struct Result {
        std::vector<C> y;
        std::vector<double> c;
        bool operator==(const Result&) const = default;
    };
    const auto run = [&](Result& result, int repeats) {
        std::vector<double> own = work, own_real = real_work, second(2 * n);
        for (int k = 0; k < repeats; ++k) {
            result = {x, std::vector<double>(n)};
            DF2TCB(&n, x.data(), result.y.data(), own.data(), second.data());
            DF2TRB(&n, reinterpret_cast<const double*>(x.data()), result.c.data(), own_real.data());
            DF2TCF(&n, x.data(), result.y.data(), own.data(), second.data());
            DF2TRF(&n, reinterpret_cast<const double*>(x.data()), result.c.data(), own_real.data());
        }
    };
    Result alone, results[4];
    run(alone, 1);
    std::vector<std::thread> threads;
    for (Result& result : results) threads.emplace_back([&] { run(result, 20); });
    for (std::thread& t : threads) t.join();
    for (const Result& result : results) EXPECT_TRUE(result == alone);
}

}  // namespace
