// tests/fft/thread_test.cpp - transforms of one length in several threads
#include <complex>
#include <thread>
#include <vector>

#include "tests/support.h"

namespace {

// Each has a copy of one work vector, used for both directions in turn: all get the same bits.
TEST(FftThreads, CopiesOfOneWorkVector)
{
    const int32_t n = 1680;
    std::vector<double> work(4 * n + 15), real_work(2 * n + 15), x(2 * n);
    for (int32_t k = 0; k < n; ++k) x[2 * k] = k % 11 - 5, x[2 * k + 1] = k % 7 - 3;
    DFFTCI(&n, work.data());
    DFFTRI(&n, real_work.data());
    const auto run = [&](std::vector<double>& result) {
        std::vector<double> own = work, own_real = real_work, second(2 * n);
        result.resize(3 * n);
        auto* const y = reinterpret_cast<orvel_dcomplex*>(result.data());
        for (int k = 0; k < 20; ++k) {
            const auto* const z = reinterpret_cast<const orvel_dcomplex*>(x.data());
            DF2TCB(&n, z, y, own.data(), second.data());
            DF2TRB(&n, x.data(), result.data() + 2 * n, own_real.data());
            DF2TCF(&n, z, y, own.data(), second.data());
            DF2TRF(&n, x.data(), result.data() + 2 * n, own_real.data());
        }
    };
    std::vector<double> alone, results[4];
    run(alone);
    std::vector<std::thread> threads;
    for (auto& result : results) threads.emplace_back(run, std::ref(result));
    for (std::thread& t : threads) t.join();
    for (const auto& result : results) EXPECT_EQ(result, alone);
}

}  // namespace
