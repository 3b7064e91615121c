// tests/util/permute_test.cpp - permutations of vectors, rows and columns, and their errors
#include <algorithm>
#include <chrono>
#include <numeric>
#include <random>
#include <vector>

#include "tests/support.h"

namespace {

using namespace orvel_test;

template <class T>
struct Members {
    using Real = T;
    static constexpr auto permu = member<T>(PERMU, DPERMU);
    static constexpr auto perma = member<T>(PERMA, DPERMA);
    static constexpr auto p2rma = member<T>(P2RMA, DP2RMA);
    static constexpr const char* prefix = sizeof(T) == 4 ? "" : "D";
};

template <class P>
class Permutation : public Quiet {
protected:
    using Real = typename P::Real;
    Permutation() { set_switches(0, 1, 0); }
    std::string from(const std::string& routine, int code, const std::string& text)
    {
        return "\n *** TERMINAL ERROR " + std::to_string(code) + " from " + P::prefix + routine + ".  " +
               text + "\n";
    }
    std::string taken() { return one_line(printed.take()); }

    Capture printed;
};

using Precisions = ::testing::Types<Members<float>, Members<double>>;
TYPED_TEST_SUITE(Permutation, Precisions);

TYPED_TEST(Permutation, VectorsBothWaysAndInPlace)
{
    using Real = typename TypeParam::Real;
    std::mt19937 random(3);
    for (int32_t n = 1; n < 40; ++n) {
        std::vector<int32_t> index(static_cast<std::size_t>(n));
        std::iota(index.begin(), index.end(), 1);
        std::shuffle(index.begin(), index.end(), random);
        std::vector<Real> x(index.size()), y(index.size());
        std::iota(x.begin(), x.end(), Real(100));
        const int32_t forward = 1, backward = 2;
        const auto kept = index;
        TypeParam::permu(&n, x.data(), index.data(), &forward, y.data());
        for (std::size_t k = 0; k < x.size(); ++k) ASSERT_EQ(y[k], x[static_cast<std::size_t>(index[k] - 1)]);
        TypeParam::permu(&n, y.data(), index.data(), &backward, y.data());
        EXPECT_EQ(y, x);
        EXPECT_EQ(index, kept);
        std::fill(index.begin() + n / 2, index.end(), n);  // entries that repeat
        TypeParam::permu(&n, x.data(), index.data(), &forward, y.data());
        TypeParam::permu(&n, x.data(), index.data(), &backward, y.data());
    }
}

TYPED_TEST(Permutation, RowsAndColumnsOfMatrices)
{
    using Real = typename TypeParam::Real;
    std::mt19937 random(4);
    for (int32_t rows = 1; rows < 8; ++rows)
        for (int32_t columns = 1; columns < 8; ++columns)
            for (const int32_t path : {1, 2})
                for (const bool in_place : {false, true}) {
                    const int32_t lda = rows + 2, ldaper = in_place ? lda : rows + 1;
                    std::vector<Real> a(static_cast<std::size_t>(lda * columns));
                    std::iota(a.begin(), a.end(), Real(1));
                    std::vector<int32_t> index(static_cast<std::size_t>(path == 1 ? rows : columns));
                    std::iota(index.begin(), index.end(), 1);
                    std::shuffle(index.begin(), index.end(), random);
                    std::vector<Real> b = in_place ? a : std::vector<Real>(a.size());
                    TypeParam::perma(&rows, &columns, in_place ? b.data() : a.data(), &lda, index.data(),
                                     &path, b.data(), &ldaper);
                    for (int32_t i = 0; i < rows; ++i)
                        for (int32_t j = 0; j < columns; ++j) {
                            const int32_t p = path == 1 ? index[static_cast<std::size_t>(i)] - 1 : i;
                            const int32_t q = path == 2 ? index[static_cast<std::size_t>(j)] - 1 : j;
                            ASSERT_EQ(b[static_cast<std::size_t>(i + j * ldaper)],
                                      a[static_cast<std::size_t>(p + q * lda)]);
                        }
                    if (in_place && path == 2) {  // entries that repeat end too, and columns stay whole
                        index.back() = 1;
                        const std::vector<Real> before = b;
                        TypeParam::perma(&rows, &columns, b.data(), &lda, index.data(), &path, b.data(),
                                         &lda);
                        for (int32_t j = 0; j < columns; ++j) {
                            const auto at = [&](int32_t k) { return before.begin() + k * lda; };
                            int32_t found = 0;
                            for (int32_t k = 0; k < columns; ++k)
                                found += std::equal(at(k), at(k) + rows, b.begin() + j * lda);
                            ASSERT_EQ(found, 1);
                        }
                    }
                }
}

// Half a million columns in one cycle: steps by the square of their number would take minutes.
TYPED_TEST(Permutation, ColumnsInPlaceCostTheirNumber)
{
    using Real = typename TypeParam::Real;
    const int32_t one = 1, columns = 1 << 19, path = 2;
    std::vector<int32_t> index(columns);
    std::vector<Real> a(columns);
    std::iota(index.begin(), index.end(), 2);
    index.back() = 1;
    std::iota(a.begin(), a.end(), Real(1));
    const auto start = std::chrono::steady_clock::now();
    TypeParam::perma(&one, &columns, a.data(), &one, index.data(), &path, a.data(), &one);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
    for (std::size_t k = 0; k < a.size(); ++k) ASSERT_EQ(a[k], static_cast<Real>(index[k]));
}

// Each entry out of range is said; nothing is permuted, and vectors are copied.
TYPED_TEST(Permutation, EntriesOutOfRange)
{
    using Real = typename TypeParam::Real;
    const int32_t two = 2, three = 3, one = 1, index[] = {4, 2, 0};
    const Real x[] = {7, 8, 9, 6};
    Real y[4] = {}, work[2];
    const auto entry = [&](const char* routine, int code, const char* place, int n) {
        return this->from(routine, code,
                          std::string("IPERMU") + place +
                              " is not allowed.  It must be between 1 and N = " + std::to_string(n) + ".");
    };
    TypeParam::permu(&three, x, index, &one, y);
    EXPECT_EQ(outcome(), (Outcome{5, 3}));
    EXPECT_EQ(this->taken(), entry("PERMU", 3, "(1) = 4", 3) + entry("PERMU", 3, "(3) = 0", 3));
    EXPECT_EQ(std::vector<Real>(y, y + 3), (std::vector<Real>{7, 8, 9}));
    std::fill_n(y, 4, Real(0));
    const int32_t columns[] = {2, 3};
    TypeParam::p2rma(&two, &two, x, &two, columns, &two, y, &two, work);
    EXPECT_EQ(this->taken(), entry("P2RMA", 8, "(2) = 3", 2));
    EXPECT_EQ(std::count(y, y + 4, Real(0)), 4);
}

}  // namespace
