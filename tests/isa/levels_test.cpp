// tests/isa/levels_test.cpp - the level in use, and that every family runs on it
#include "isa/levels.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <random>
#include <thread>
#include <vector>

#include "fft/isa/loops.h"
#include "interp/isa/akima.h"
#include "kernels/isa/loops.h"
#include "linsys/isa/loops.h"
#include "orvel/orvel.h"
#include "random/isa/loops.h"
#include "tests/levels.h"
#include "util/isa/sorts.h"

using namespace orvel_test;

namespace {

#define ORVEL_ADDRESS_AT(level, family, table) &orvel::family::level::table,
#define ORVEL_EXPECT_TABLE(for_each, family, table)                                       \
    {                                                                                     \
        const void* const tables[] = {for_each(ORVEL_ADDRESS_AT, family, table)};         \
        EXPECT_EQ(static_cast<const void*>(&orvel::family::table()), tables[k]) << level; \
    }

TEST(Levels, EveryFamilyTakesTheTablesOfTheLevelInUse)
{
    int k = 0;
    on_every_level([&](const std::string& level) {
        EXPECT_EQ(orvel_level(), level);
        ORVEL_EXPECT_TABLE(ORVEL_FOR_EACH_LEVEL, kernels, update_loops);
        ORVEL_EXPECT_TABLE(ORVEL_FOR_EACH_LEVEL, kernels, sum_loops);
        ORVEL_EXPECT_TABLE(ORVEL_FOR_EACH_LEVEL, kernels, wide_sum_loops);
        ORVEL_EXPECT_TABLE(ORVEL_FOR_EACH_LEVEL, kernels, search_loops);
        ORVEL_EXPECT_TABLE(ORVEL_FOR_EACH_LEVEL, kernels, level2_loops);
        ORVEL_EXPECT_TABLE(ORVEL_FOR_EACH_LEVEL, kernels, real_product_loops);
        ORVEL_EXPECT_TABLE(ORVEL_FOR_EACH_LEVEL, kernels, complex_product_loops);
        ORVEL_EXPECT_TABLE(ORVEL_FOR_EACH_LEVEL, kernels, triangle_loops);
        ORVEL_EXPECT_TABLE(ORVEL_FOR_EACH_LEVEL, linsys, elimination_loops);
        ORVEL_EXPECT_TABLE(ORVEL_FOR_EACH_LEVEL, linsys, vector_loops);
        ORVEL_EXPECT_TABLE(ORVEL_FOR_EACH_LEVEL, linsys, small_matrix_loops);
        ORVEL_EXPECT_TABLE(ORVEL_FOR_EACH_LEVEL, linsys, small_cholesky_loops);
        ORVEL_EXPECT_TABLE(ORVEL_FOR_EACH_LEVEL, linsys, residual_loops);
        ORVEL_EXPECT_TABLE(ORVEL_FOR_EACH_LEVEL, linsys, excess_loops);
        ORVEL_EXPECT_TABLE(ORVEL_FOR_EACH_LEVEL, random, number_loops);
        ORVEL_EXPECT_TABLE(ORVEL_FOR_EACH_LEVEL, random, state_loops);
        ORVEL_EXPECT_TABLE(ORVEL_FOR_EACH_OUTER_LEVEL, util, sort_table);
        ORVEL_EXPECT_TABLE(ORVEL_FOR_EACH_LEVEL, interp, akima_loops);
        ORVEL_EXPECT_TABLE(ORVEL_FOR_EACH_LEVEL, fft, even_passes);
        ORVEL_EXPECT_TABLE(ORVEL_FOR_EACH_LEVEL, fft, small_odd_passes);
        ORVEL_EXPECT_TABLE(ORVEL_FOR_EACH_LEVEL, fft, general_odd_passes);
        ORVEL_EXPECT_TABLE(ORVEL_FOR_EACH_LEVEL, fft, block_passes);
        ORVEL_EXPECT_TABLE(ORVEL_FOR_EACH_LEVEL, fft, chirp_loops);
        ORVEL_EXPECT_TABLE(ORVEL_FOR_EACH_LEVEL, fft, root_loops);
        ORVEL_EXPECT_TABLE(ORVEL_FOR_EACH_LEVEL, fft, join_split_loops);
        ORVEL_EXPECT_TABLE(ORVEL_FOR_EACH_LEVEL, fft, odd_part_loops);
        ORVEL_EXPECT_TABLE(ORVEL_FOR_EACH_LEVEL, fft, short_loops);
        ORVEL_EXPECT_TABLE(ORVEL_FOR_EACH_LEVEL, fft, composite_loops);
        ++k;
    });
    EXPECT_EQ(orvel_level(),
              std::string(orvel::isa::level_name(k - 1)));  // the best of the machine is among them
}

// One rounding for a product and a sum where the level has the instruction, two where it has not.
TEST(Levels, AHostChoosesOne)
{
    const int32_t n = 40, one = 1;
    const double a = 1 + 0x1p-30;
    const auto fused = [&] {
        std::vector<double> x(40, a), y(40, -1);
        DAXPY(&n, &a, x.data(), &one, y.data(), &one);
        return y[17] != 0x1p-29;
    };
    const std::string best = orvel_level();
    for (const char* const level : {"x86-64-v4", "x86-64-v3", "x86-64", "native"}) {
        const bool known = orvel_use_level(level) == 1;
        EXPECT_EQ(orvel_level(), known ? std::string(level) : best);
        if (known) {
            EXPECT_EQ(fused(), level != std::string("x86-64"));
        }
        for (const char* const unknown : {"", "x86_64", "x86-64-v", "x86-64-v5"})
            EXPECT_EQ(orvel_use_level(unknown), 0) << unknown;
        EXPECT_EQ(orvel_level(), known ? std::string(level) : best);
        EXPECT_EQ(orvel_use_level(nullptr), 1);
        EXPECT_EQ(orvel_level(), best);
    }
}

// Work vectors and blocks that one level has laid out are safe with the loops of another.
TEST(Levels, MayChangeWhileCallsRun)
{
    std::atomic<bool> done = false;
    std::thread changing([&] {
        for (int k = 0; !done; ++k) orvel_use_level(orvel::isa::level_name(k % orvel::isa::level_count()));
    });
    std::mt19937 random(7);
    const auto numbers = [&random](int32_t n) {
        std::vector<double> x(static_cast<std::size_t>(n));
        for (double& e : x) e = static_cast<double>(random()) * 0x1p-32 - 0.5;
        return x;
    };
    // Panels are made and gone through with the loops of one level. One entry of the product says whether.
    for (const int32_t m : {170, 201, 260, 333, 170, 201, 260, 333}) {
        const double one = 1, none = 0;
        const std::vector<double> a = numbers(m * m), b = numbers(m * m);
        std::vector<double> c(a.size());
        for (int repeat = 0; repeat < 25; ++repeat) {
            DGEMM("N", "T", &m, &m, &m, &one, a.data(), &m, b.data(), &m, &none, c.data(), &m);
            const int32_t i = m - 1 - repeat, j = 7 * repeat;
            double sum = 0;
            for (int32_t k = 0; k < m; ++k) sum += a[i + k * m] * b[j + k * m];
            ASSERT_NEAR(c[i + j * m], sum, 1e-11) << m;
        }
    }
    const int32_t ipath = 1;
    for (const int32_t n : {7, 30, 100, 300, 2048, 8192, 3375, 16384}) {
        if (n <= 300) {
            std::vector<double> a = numbers(n * n), x(static_cast<std::size_t>(n)), b = numbers(n), r = b;
            DLSARG(&n, a.data(), &n, b.data(), &ipath, x.data());
            for (int32_t j = 0; j < n; ++j)
                for (int32_t i = 0; i < n; ++i) r[i] -= a[i + j * n] * x[j];
            for (const double e : r) EXPECT_LT(std::abs(e), 1e-10) << n;
        }
        const std::vector<double> seq = numbers(n);
        std::vector<double> coef(seq), back(seq);
        DFFTRF(&n, seq.data(), coef.data());
        DFFTRB(&n, coef.data(), back.data());
        for (int32_t k = 0; k < n; ++k) EXPECT_NEAR(back[k], n * seq[k], n * 1e-14) << n;
        std::vector<double> sorted(seq);
        DSVRGN(&n, seq.data(), sorted.data());
        EXPECT_TRUE(std::is_sorted(sorted.begin(), sorted.end()));
        DRNUN(&n, back.data());
        EXPECT_TRUE(std::all_of(back.begin(), back.end(), [](double u) { return u > 0 && u < 1; }));
    }
    done = true;
    changing.join();
    orvel_use_level(nullptr);
}

}  // namespace
