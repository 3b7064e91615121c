// tests/kernels/level1_rotations_test.cpp - set-up of plane rotations and modified rotations
#include <cmath>

#include "tests/kernels/level1_support.h"

namespace {

using namespace orvel_test;

template <class T>
class Rotations : public ::testing::Test {
protected:
    static constexpr T eps = std::numeric_limits<T>::epsilon();
    static bool near(long double a, long double b, int units)
    {
        return std::abs(a - b) <= units * eps * std::abs(b);
    }
};

using Precisions = ::testing::Types<float, double>;
TYPED_TEST_SUITE(Rotations, Precisions);

TYPED_TEST(Rotations, TakeTheSecondComponentToZero)
{
    using T = TypeParam;
    using Limits = std::numeric_limits<T>;
    const T big = Limits::max() / 2, tiny = Limits::denorm_min() * 4, m = Limits::min();
    const T rows[][2] = {{3, 4},   {4, 3},   {-4, 3},    {3, -4},         {-3, -4},         {5, 5},
                         {-5, 5},  {5, -5},  {big, big}, {-big, big / 3}, {tiny, 3 * tiny}, {m, m / 2},
                         {big, 1}, {1, big}, {tiny, 1},  {1, tiny},       {tiny, big}};
    for (const auto& row : rows) {
        T a = row[0], b = row[1], c, s;
        RealKernels<T>::rotg(&a, &b, &c, &s);
        const long double r = std::copysign(std::hypot(static_cast<long double>(row[0]), row[1]),
                                            std::abs(row[0]) > std::abs(row[1]) ? row[0] : row[1]);
        SCOPED_TRACE(::testing::Message() << row[0] << " " << row[1]);
        // Each of c and s is rounded, and so are the root and its argument; a tiny r has one unit more.
        const long double unit = Limits::denorm_min();
        EXPECT_LE(std::abs(a - r), 2 * this->eps * std::abs(r) + unit);
        EXPECT_LE(std::abs(c - row[0] / r), 3 * this->eps * std::abs(c) + unit);
        EXPECT_LE(std::abs(s - row[1] / r), 3 * this->eps * std::abs(s) + unit);
        EXPECT_EQ(b, std::abs(row[0]) > std::abs(row[1]) ? s : c != 0 ? 1 / c : 1);
    }
}

TYPED_TEST(Rotations, OfZeros)
{
    using T = TypeParam;
    // a, b; r, z, c, s
    const T rows[][6] = {{0, 0, 0, 0, 1, 0}, {0, -2, -2, 1, 0, 1}, {-2, 0, -2, 0, 1, 0}};
    for (const auto& row : rows) {
        T a = row[0], b = row[1], c = 9, s = 9;
        RealKernels<T>::rotg(&a, &b, &c, &s);
        EXPECT_TRUE(a == row[2] && b == row[3] && c == row[4] && s == row[5]) << row[0] << " " << row[1];
    }
    const T nan = std::numeric_limits<T>::quiet_NaN();
    for (const auto& pair : {std::pair<T, T>(nan, 1), {1, nan}, {nan, 0}, {0, nan}}) {
        T a = pair.first, b = pair.second, c = 9, s = 9;
        RealKernels<T>::rotg(&a, &b, &c, &s);
        EXPECT_TRUE(a != a && c != c && s != s) << pair.first << " " << pair.second;
    }
}

// H takes (x1, y1) to (x1', 0), and H' D' H = D: what a modified rotation is, whatever was rescaled. D1 and
// D2 are given as powers of two, some of which take three rounds.
TYPED_TEST(Rotations, ModifiedOnesKeepTheScaledNorm)
{
    using T = TypeParam;
    struct Row {
        int d1, d2;
        T x1, y1, flag;
    };
    const Row rows[] = {
        {0, 0, 5, 3, 0},       {0, 0, 3, 5, 1},       {0, 0, -3, 5, 1},     {1, -1, 2, -3, 0},
        {2, 0, -7, 2, 0},      {-30, 0, 3, 5, -1},    {-60, -60, 5, 3, -1}, {60, 60, 5, 3, -1},
        {60, 60, 3, 5, -1},    {-60, 30, 3, 5, -1},   {30, -60, 5, 3, -1},  {-25, 5, 1, 1, -1},
        {50, -50, 5, 0.5, -1}, {-50, 50, 0.5, 5, -1},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(::testing::Message() << row.d1 << " " << row.d2 << " " << row.x1 << " " << row.y1);
        const T before1 = std::ldexp(T(1.25), row.d1), before2 = std::ldexp(T(1.5), row.d2);
        T d1 = before1, d2 = before2, x1 = row.x1, p[5] = {9, 9, 9, 9, 9};
        RealKernels<T>::rotmg(&d1, &d2, &x1, &row.y1, p);
        ASSERT_EQ(p[0], row.flag);
        // What the flag implies is not stored.
        EXPECT_EQ(row.flag == 0, p[1] == 9 && p[4] == 9);
        EXPECT_EQ(row.flag == 1, p[2] == 9 && p[3] == 9);
        const long double h11 = row.flag == 0 ? 1 : p[1], h22 = row.flag == 0 ? 1 : p[4];
        const long double h21 = row.flag == 1 ? -1 : p[2], h12 = row.flag == 1 ? 1 : p[3];
        EXPECT_TRUE(this->near(h11 * row.x1 + h12 * row.y1, x1, 6));
        EXPECT_LE(std::abs(h21 * row.x1 + h22 * row.y1), 4 * this->eps * std::abs(h21 * row.x1));
        EXPECT_TRUE(this->near(h11 * h11 * d1 + h21 * h21 * d2, before1, 8));
        EXPECT_TRUE(this->near(h12 * h12 * d1 + h22 * h22 * d2, before2, 8));
        EXPECT_LE(std::abs(h11 * h12 * d1 + h21 * h22 * d2),
                  8 * this->eps * std::sqrt(static_cast<long double>(before1) * before2));
        for (const T d : {d1, d2}) EXPECT_TRUE(std::abs(d) > 0x1p-24 && std::abs(d) < 0x1p24) << d;
    }
}

TYPED_TEST(Rotations, ModifiedOnesThatDoNotExist)
{
    using T = TypeParam;
    const T inf = std::numeric_limits<T>::infinity(), nan = std::numeric_limits<T>::quiet_NaN();
    const auto run = [](T d1, T d2, T x1, T y1) {
        std::vector<T> v{d1, d2, x1, y1, 9, 9, 9, 9, 9};
        RealKernels<T>::rotmg(&v[0], &v[1], &v[2], &v[3], &v[4]);
        return v;
    };
    EXPECT_EQ(run(-1, 1, 1, 1), (std::vector<T>{0, 0, 0, 1, -1, 0, 0, 0, 0}));
    EXPECT_EQ(run(1, -1, 1, 2), (std::vector<T>{0, 0, 0, 2, -1, 0, 0, 0, 0}));
    EXPECT_EQ(run(1, 2, 3, 0), (std::vector<T>{1, 2, 3, 0, -2, 9, 9, 9, 9}));
    EXPECT_EQ(run(1, 0, 3, 4), (std::vector<T>{1, 0, 3, 4, -2, 9, 9, 9, 9}));
    for (const T bad : {inf, nan})
        for (int k = 0; k < 4; ++k) {
            T v[] = {1, 2, 3, 4};
            v[k] = bad;
            EXPECT_NE(run(v[0], v[1], v[2], v[3])[4], T(9));  // and it comes back
        }
}

}  // namespace
