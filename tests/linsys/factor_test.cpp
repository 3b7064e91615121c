// tests/linsys/factor_test.cpp - the elimination in panels against the elimination column by column
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

#include "linsys/linsys.h"
#include "tests/levels.h"
#include "tests/numbers.h"
#include "tests/support.h"

using namespace orvel::linsys;

namespace {

template <class T>
class Factor : public orvel_test::Quiet {
protected:
    Factor() { orvel_test::set_switches(0, 0, 0); }
};
using Types = testing::Types<float, double, std::complex<float>, std::complex<double>>;
TYPED_TEST_SUITE(Factor, Types);

enum Kind { dense, badly_scaled, ties, zero_columns, low_rank };

template <class T>
std::vector<T> matrix(Kind kind, int64_t n, int64_t ld)
{
    std::mt19937 random(static_cast<unsigned>(n + kind));
    std::vector<T> a(static_cast<std::size_t>(n * ld), T(77));
    const auto number = [&]() -> T {
        if (kind == ties || kind == low_rank) return T(static_cast<float>(random() % 3) - 1);
        return orvel_test::random_value<T>(random);
    };
    for (int64_t j = 0; j < n; ++j)
        for (int64_t i = 0; i < n; ++i) {
            T& e = a[static_cast<std::size_t>(i + j * ld)];
            e = number();
            if (kind == badly_scaled) e *= std::pow(Part<T>(10), static_cast<Part<T>>(i % 13 - 6));
            if (kind == badly_scaled && i == n - 1 && j == n - 1) e = T(NAN);  // no pivot is less
            if (kind == zero_columns && (j % 23 == 7 || j == n - 1 || i == n - 1)) e = T(0);
            if (kind == zero_columns && i == n - 1 && j == n - 1) e = T(smallest_pivot<T>());  // is none yet
            if (kind == low_rank && j >= n / 2) e = a[static_cast<std::size_t>(i + (j - n / 2) * ld)];
        }
    return a;
}

// Bits agree, save that of a NaN.
template <class T>
void expect_same(const std::vector<T>& a, const std::vector<T>& b, const char* what)
{
    const auto* x = orvel::kernels::parts(a.data());
    const auto* y = orvel::kernels::parts(b.data());
    const auto count = static_cast<int64_t>(a.size()) * orvel::kernels::Number<T>::parts;
    for (int64_t k = 0; k < count; ++k)
        ASSERT_TRUE(std::memcmp(x + k, y + k, sizeof *x) == 0 || (std::isnan(x[k]) && std::isnan(y[k])))
            << what << " " << k << ": " << x[k] << ", " << y[k];
}

}  // namespace

// Scale factors as the definition has them.
template <class T>
std::vector<Part<T>> scale_factors(const std::vector<T>& a, int64_t n, int64_t ld)
{
    std::vector<Part<T>> s(static_cast<std::size_t>(n));
    for (int64_t i = 0; i < n; ++i) {
        Part<T> largest = 0;
        for (int64_t j = 0; j < n; ++j)
            largest = std::max(largest, magnitude(a[static_cast<std::size_t>(i + j * ld)]));
        s[static_cast<std::size_t>(i)] = largest >= smallest_pivot<T>() ? 1 / largest : Part<T>(1);
    }
    return s;
}

template <class T>
struct Factored {
    std::vector<T> fact;
    std::vector<int32_t> ipvt;
    std::vector<Part<T>> s;
    bool singular;
};
template <class T>
Factored<T> expect_bits_of_columns(const std::vector<T>& a, int64_t n, int64_t ld, int64_t width)
{
    const Part<T> small = smallest_pivot<T>();
    Factored<T> columns{a, std::vector<int32_t>(static_cast<std::size_t>(n)), scale_factors(a, n, ld), false};
    Factored<T> panels = columns;
    panels.singular = factor(n, width, panels.fact.data(), ld, panels.ipvt.data(), panels.s.data(), small);
    columns.singular =
        factor_plainly(n, columns.fact.data(), ld, columns.ipvt.data(), columns.s.data(), small);
    EXPECT_EQ(panels.singular, columns.singular);
    EXPECT_EQ(panels.ipvt, columns.ipvt);
    expect_same(panels.s, columns.s, "scale");
    expect_same(panels.fact, columns.fact, "element");
    return columns;
}

TYPED_TEST(Factor, PanelsGiveTheBitsOfColumns)
{
    using T = TypeParam;
    orvel_test::on_every_level([](const std::string& level) {
        for (const Kind kind : {dense, badly_scaled, ties, zero_columns, low_rank}) {
            for (const int64_t n :
                 {1, 2, 3, 7, 8, 9, 16, 17, 31, 32, 33, 63, 64, 65, 100, 131, 257, 300, 421}) {
                if (n > 131 && kind != dense && kind != zero_columns) continue;
                SCOPED_TRACE(level + " kind " + std::to_string(kind) + " n " + std::to_string(n));
                const int64_t ld = n + n % 3;
                const std::vector<T> a = matrix<T>(kind, n, ld);
                const Factored<T> columns = expect_bits_of_columns(a, n, ld, panel_width<T>(n));
                ASSERT_TRUE(columns.singular || kind != zero_columns);
                // The whole routine, which takes small matrices another way.
                std::vector<T> whole(a), wk(columns.s.size());
                std::vector<int32_t> ipvt(wk.size());
                l2trg<T>(orvel::frame::state(), static_cast<int32_t>(n), a.data(), ld, whole.data(), ld,
                         ipvt.data(), wk.data());
                ASSERT_EQ(columns.singular, (orvel_test::outcome() == orvel_test::Outcome{4, 2}));
                ASSERT_EQ(ipvt, columns.ipvt);
                expect_same(whole, columns.fact, "element of the whole");
                ASSERT_EQ(std::memcmp(wk.data(), columns.s.data(), wk.size() * sizeof columns.s[0]), 0);
            }
            for (const int64_t width : {128, 256}) {  // those of large matrices
                SCOPED_TRACE(level + " kind " + std::to_string(kind) + " width " + std::to_string(width));
                const int64_t n = width + 45;
                expect_bits_of_columns(matrix<T>(kind, n, n), n, n, width);
            }
        }
    });
}
