// tests/special/series_test.cpp - length and sum of Chebyshev series, and their errors
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "tests/support.h"

namespace {

using namespace orvel_test;

class Series : public Quiet {
protected:
    Series() { set_switches(0, 1, 0); }
    Capture printed;
};

TEST_F(Series, LengthIsWhereTheTailFirstExceedsTheTolerance)
{
    const float single[] = {1, -0.5f, 0.25f, -0.125f, 0.0625f};
    const double wide[] = {1, -0.5, 0.25, -0.125, 0.0625};
    struct Row {
        int32_t terms;
        float eta;
        int32_t length, code;
    };
    const Row rows[] = {
        {5, 0.0625f, 4, 0},       {5, 0.1875f, 3, 0}, {5, 0.18f, 4, 0},
        {5, 0.9f, 2, 0},          {5, 100.0f, 1, 0},  {5, 0.0624f, 0, 6},
        {1, 10.0f, 0, 6},         {0, 0.1f, 0, 5},    {-2147483647 - 1, 0.1f, 0, 5},
        {5, std::nanf(""), 1, 0},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(INITS(single, &row.terms, &row.eta), row.length) << row.terms << " " << row.eta;
        EXPECT_EQ(outcome(), (Outcome{row.code ? 5 : 0, row.code}));
        EXPECT_EQ(INITDS(wide, &row.terms, &row.eta), row.length) << row.terms << " " << row.eta;
        EXPECT_EQ(outcome(), (Outcome{row.code ? 5 : 0, row.code}));
    }
    const std::string text = one_line(printed.take());
    EXPECT_NE(text.find("ERROR 6 from INITDS.  Too much accuracy may be requested. ETA should"),
              std::string::npos);
    EXPECT_NE(text.find("ERROR 5 from INITS.  The number of coefficients is less than 1. NOS ="),
              std::string::npos);
}

TEST_F(Series, SumIsThatOfThePolynomials)
{
    const double c[] = {0.7, -1.3, 0.4, 0.21, -0.057};
    const std::vector<float> single(c, c + 5);
    for (const double x : {-1.0, -0.83, -0.1, 0.0, 0.37, 0.99, 1.0}) {
        const int32_t n = 5;
        double exact = c[0] / 2;
        for (int k = 1; k < n; ++k) exact += c[k] * std::cos(k * std::acos(x));
        EXPECT_NEAR(DCSEVL(&x, c, &n), exact, 8e-16) << x;
        const auto xs = static_cast<float>(x);
        EXPECT_NEAR(CSEVL(&xs, single.data(), &n), exact, 4e-7) << x;
    }
    EXPECT_EQ(printed.take(), "");
}

TEST_F(Series, CountAndIntervalAreChecked)
{
    const std::vector<double> c(1000, 0.001);
    const std::vector<float> single(1000, 0.001f);
    struct Row {
        double x;
        int32_t n;
        Outcome outcome;
        const char* text;
    };
    const Row rows[] = {
        {0.5, 1000, {0, 0}, ""},
        {0.5, 1001, {5, 6}, "The number of terms in the series is greater than 1000. N ="},
        {0.5, 0, {5, 5}, "The number of terms in the series is not positive. N ="},
        {1.2, 3, {3, 7}, "The argument X = 1.20000"},
        {-1.2, 3, {3, 7}, "is outside the interval"},
        {1.09, 3, {0, 0}, ""},
    };
    for (const Row& row : rows) {
        const auto xs = static_cast<float>(row.x);
        const float value = CSEVL(&xs, single.data(), &row.n);
        EXPECT_EQ(outcome(), row.outcome) << row.x << " " << row.n;
        const double wide = DCSEVL(&row.x, c.data(), &row.n);
        EXPECT_EQ(outcome(), row.outcome) << row.x << " " << row.n;
        EXPECT_EQ(std::isnan(value), row.outcome.type == 5);
        EXPECT_EQ(std::isnan(wide), row.outcome.type == 5);
        if (row.n == 3) {
            EXPECT_NEAR(wide, 0.001 * (0.5 + row.x + 2 * row.x * row.x - 1), 1e-17);
        }
        EXPECT_NE(one_line(printed.take()).find(row.text), std::string::npos) << row.text;
    }
}

}  // namespace
