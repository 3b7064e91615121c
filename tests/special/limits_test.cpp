// tests/special/limits_test.cpp - the constants of the gamma family equal what their definitions give
#include <gtest/gtest.h>

#include <cmath>

#include "special/gamma.h"
#include "tests/support.h"

namespace {

using orvel::machine;
using orvel::special::GammaLimits;

template <class T>
class Limits : public orvel_test::Quiet {};

using Precisions = ::testing::Types<float, double>;
TYPED_TEST_SUITE(Limits, Precisions);

TYPED_TEST(Limits, EqualTheirDefinitions)
{
    using L = GammaLimits<TypeParam>;
    TypeParam xmin, xmax;
    orvel::special::gamma_range(&xmin, &xmax);
    // The iteration runs in double with the logarithm of the C library, whose last bit may differ.
    const auto same = [](TypeParam a, double b) {
        return std::abs(static_cast<double>(a) - b) <=
               2 * static_cast<double>(machine<TypeParam>(4)) * std::abs(b);
    };
    EXPECT_TRUE(same(L::xmin, static_cast<double>(xmin))) << xmin;
    EXPECT_TRUE(same(L::xmax, static_cast<double>(xmax))) << xmax;
    const double tiny = static_cast<double>(machine<TypeParam>(1)),
                 huge = static_cast<double>(machine<TypeParam>(2));
    // The exponentials of numbers near 700 carry the rounding of their arguments.
    EXPECT_NEAR(std::log(static_cast<double>(L::xsml)), std::max(std::log(tiny), -std::log(huge)) + 0.01,
                2e-7);
    EXPECT_TRUE(same(L::log_xmax, huge / std::log(huge)));
    EXPECT_NEAR(std::log(static_cast<double>(L::correction_xmax)),
                std::min(std::log(huge / 12), -std::log(12 * tiny)), 2e-7);
    EXPECT_EQ(L::dxrel, std::sqrt(machine<TypeParam>(4)));
    EXPECT_EQ(static_cast<TypeParam>(orvel::special::stirling_tail<TypeParam>),
              static_cast<TypeParam>(1 / std::sqrt(machine<TypeParam>(3))));
}

// The series lengths that the routine for them returns: 42 and 15 coefficients in double, 23 and 6 in single.
TEST(SeriesLengths, AreThoseOfTheRoutine)
{
    using namespace orvel::special;
    const auto length = [](const auto& series, int terms, double eta) {
        const int32_t nos = terms;
        const auto tolerance = static_cast<float>(eta);
        return INITDS(series.data(), &nos, &tolerance);
    };
    EXPECT_EQ(length(gamma_series, 42, 0.1 * machine<double>(3)), 23);
    EXPECT_EQ(length(gamma_series, 23, 0.1 * static_cast<double>(machine<float>(3))), 12);
    EXPECT_EQ(length(stirling_series, 15, machine<double>(3)), 6);
    EXPECT_EQ(length(stirling_series, 6, static_cast<double>(machine<float>(3))), 2);
    // Two more terms are in the factor t (t - 1).
    EXPECT_GE(gamma_deviation.size() + 2, 23u);
    EXPECT_GE(gamma_deviation_single.size() + 2, 12u);
}

// With the constants of the machine the iteration always converges; with fewer steps allowed it cannot.
TYPED_TEST(Limits, IterationThatDoesNotConvergeIsReported)
{
    orvel_test::set_switches(0, 1, 0);
    orvel_test::Capture printed;
    const std::string name = sizeof(TypeParam) == 4 ? "R9GAML" : "D9GAML";
    for (const int end : {5, 6}) {
        TypeParam xmin = 0, xmax = 0;
        orvel::special::gamma_range(&xmin, &xmax, end == 5 ? 3 : 10, end == 6 ? 3 : 10);
        EXPECT_TRUE(std::isnan(xmin) && std::isnan(xmax));
        orvel_test::expect_terminal(
            printed, name, end,
            std::string("Unable to determine the value of ") + (end == 5 ? "XMIN." : "XMAX."));
    }
}

}  // namespace
