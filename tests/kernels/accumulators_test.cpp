// tests/kernels/accumulators_test.cpp - sums of double length against quadruple arithmetic
#include <cmath>

#include "tests/kernels/level1_support.h"

namespace {

using namespace orvel_test;
#ifdef __SIZEOF_FLOAT128__
__extension__ typedef __float128 Quadruple;
#else
typedef long double Quadruple;
#endif
static_assert(sizeof(Quadruple) == 16);

// The definition.
void add_product(double a, double b, double* acc)
{
    const Quadruple sum = static_cast<Quadruple>(acc[0]) + static_cast<Quadruple>(acc[1]) +
                          static_cast<Quadruple>(a) * static_cast<Quadruple>(b);
    acc[0] = static_cast<double>(sum);
    acc[1] = static_cast<double>(sum - static_cast<Quadruple>(acc[0]));
}

bool same(const double* a, const double* b)
{
    for (int k = 0; k < 2; ++k)
        if (std::memcmp(&a[k], &b[k], sizeof a[k]) != 0 && (a[k] == a[k] || b[k] == b[k])) return false;
    return true;
}

// Up to 53 random bits at an exponent within the range, so that sums have bits beyond the 113th, ties and
// cancellations.
double random_number(int range, int bits)
{
    auto& random = generator();
    const auto digits = static_cast<double>((random() >> (64 - bits)) | 1);
    const double value = std::ldexp(digits, static_cast<int>(random() % (2 * range + 1)) - range - bits);
    return random() % 2 == 0 ? value : -value;
}

TEST(Accumulators, AreQuadruplePrecisionSplit)
{
    using Row = std::pair<int, int>;
    for (const auto& [range, bits] :
         {Row{1, 53}, {20, 53}, {60, 53}, {120, 53}, {110, 6}, {60, 1}, {500, 53}})
        for (int run = 0; run < 2000; ++run) {
            double acc[2], model[2] = {random_number(range, bits), 0};
            DQINI(model, acc);
            ASSERT_TRUE(same(acc, model));
            for (int k = 0; k < 30; ++k) {
                double a = random_number(range, bits), b = random_number(range, bits);
                if (k % 7 == 6) a = -acc[k % 2];
                if (k % 3 == 0) {
                    b = 1;
                    DQADD(&a, acc);
                } else {
                    DQMUL(&a, &b, acc);
                }
                add_product(a, b, model);
                ASSERT_TRUE(same(acc, model)) << range << " " << bits << ": " << a << " " << b;
            }
            double value;
            DQSTO(acc, &value);
            EXPECT_TRUE(value == model[0] + model[1] || !std::isfinite(model[0]));
        }
}

// Ends of the range, infinities and NaN, pairs that no accumulator would leave.
TEST(Accumulators, FollowTheDefinitionWhereDoubleEnds)
{
    const double inf = std::numeric_limits<double>::infinity(), huge = std::numeric_limits<double>::max();
    const double values[] = {0.0,       -0.0,       1.0, -1.0,     huge,         -huge,
                             0x1p-1074, -0x1p-1022, inf, -inf,     std::nan(""), 0x1p-600,
                             -0x1p600,  0x1p970,    3.0, 0x1p-113, -0x1.8p-54};
    for (const double head : values)
        for (const double tail : values)
            for (const double a : values)
                for (const double b : values) {
                    double acc[2] = {head, tail}, model[2] = {head, tail};
                    DQMUL(&a, &b, acc);
                    add_product(a, b, model);
                    ASSERT_TRUE(same(acc, model)) << head << " " << tail << " " << a << " " << b;
                    double sum[2] = {head, tail}, sum_model[2] = {head, tail};
                    DQADD(&a, sum);
                    add_product(a, 1, sum_model);
                    ASSERT_TRUE(same(sum, sum_model)) << head << " " << tail << " " << a;
                }
}

TEST(Accumulators, OfComplexNumbersAreThoseOfTheirParts)
{
    const auto number = [] { return orvel_dcomplex(random_number(9, 53), random_number(9, 53)); };
    const orvel_dcomplex first = number();
    orvel_dcomplex acc[2];
    ZQINI(&first, acc);
    double re[2] = {first.real(), 0}, im[2] = {first.imag(), 0};
    for (int k = 0; k < 1000; ++k) {
        const orvel_dcomplex a = number(), b = k % 3 == 0 ? 1 : number();
        if (k % 3 == 0)
            ZQADD(&a, acc);
        else
            ZQMUL(&a, &b, acc);
        add_product(a.real(), b.real(), re);
        add_product(-a.imag(), b.imag(), re);
        add_product(a.real(), b.imag(), im);
        add_product(a.imag(), b.real(), im);
        ASSERT_EQ(acc[0], orvel_dcomplex(re[0], im[0]));
        ASSERT_EQ(acc[1], orvel_dcomplex(re[1], im[1]));
    }
    orvel_dcomplex value;
    acc[1] = {0.25, -0.5};
    acc[0] = {8, 16};
    ZQSTO(acc, &value);
    EXPECT_EQ(value, orvel_dcomplex(8.25, 15.5));
}

}  // namespace
