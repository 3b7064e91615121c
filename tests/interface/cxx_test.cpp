// tests/interface/cxx_test.cpp - the overloads of the C++ interface
#include <gtest/gtest.h>

#include <cmath>
#include <numeric>
#include <thread>

#include "orvel/orvel.hpp"

namespace {

using Matrix = orvel::matrix<double>;
using Complex = std::complex<double>;

template <class T>
constexpr bool is_double_result = std::is_same_v<T, orvel::result<double>>;

// By columns.
const Matrix a(3, 3, {4, 1, 2, 1, 5, 3, 0, 2, 6});
const std::vector<double> x_of_a = {1, -2, 3};

std::vector<double> product(const Matrix& m, const std::vector<double>& x)
{
    std::vector<double> b(m.rows());
    for (std::size_t i = 0; i < m.rows(); ++i)
        for (std::size_t j = 0; j < m.columns(); ++j) b[i] += m(i, j) * x[j];
    return b;
}

void expect_near(const std::vector<double>& got, const std::vector<double>& wanted)
{
    ASSERT_EQ(got.size(), wanted.size());
    for (std::size_t k = 0; k < got.size(); ++k) EXPECT_NEAR(got[k], wanted[k], 1e-13);
}

TEST(Cxx, ArgumentsChooseThePrecision)
{
    static_assert(std::is_same_v<decltype(orvel::gamma(4.5f)), orvel::result<float>>);
    static_assert(is_double_result<decltype(orvel::gamma(4.5))> &&
                  is_double_result<decltype(orvel::gamma(4))>);
    const auto f = [](double x) { return x; };
    static_assert(
        std::is_same_v<decltype(orvel::qdags(f, 0, 1)), orvel::result<orvel::outputs::qdags<double>>>);
    static_assert(
        std::is_same_v<decltype(orvel::qdags(f, 0.0f, 1.0f)), orvel::result<orvel::outputs::qdags<float>>>);
    static_assert(
        std::is_same_v<decltype(orvel::qdags(f, 0.0f, 1.0)), orvel::result<orvel::outputs::qdags<double>>>);
    EXPECT_EQ(orvel::gamma(5).value(), 24);
    EXPECT_EQ(orvel::gamma(5.0f).value(), 24.0f);

    std::vector<std::complex<float>> z(4, {1, 2});
    orvel::scal(2.0f, z).value();  // by a real number, and by a complex one
    orvel::scal(std::complex<float>(0, 1), z).value();
    EXPECT_EQ(z[3], (std::complex<float>(-4, 2)));
    const std::vector<Complex> sequence = {1, 2, 3};
    EXPECT_EQ(orvel::fftcf(sequence).value()[0], Complex(6));
    const std::vector<float> real = {1, 2, 3};
    EXPECT_EQ(orvel::fftrf(real).value()[0], 6.0f);
    EXPECT_EQ(orvel::drnun(5).value().size(), 5u);  // nothing tells the precision
    const auto [day, month, year] = orvel::ndyin(orvel::ndays(22, 11, 2026).value()).value();
    EXPECT_EQ(day * 10000 + month * 100 + year % 100, 221126);
}

TEST(Cxx, ArraysTellLengthsAndDistances)
{
    const std::vector<double> b = product(a, x_of_a);
    expect_near(orvel::lsarg(a, b).value(), x_of_a);
    std::vector<double> room(50, 99);  // a block of a larger matrix
    const orvel::matrix_view block = orvel::matrix_view(room, 5, 10).block(1, 4, 3, 3);
    for (std::size_t j = 0; j < 3; ++j)
        for (std::size_t i = 0; i < 3; ++i) block(i, j) = a(i, j);
    expect_near(orvel::lsarg(block, b).value(), x_of_a);
    const std::array<double, 3> transposed = {x_of_a[0] * 4 + x_of_a[1] * 1 + x_of_a[2] * 2, 0, 15};
    EXPECT_NEAR(orvel::dot(block.column(0), x_of_a).value(), transposed[0], 1e-13);

    const auto factored = orvel::lfcrg(block).value();
    EXPECT_EQ(factored.fact.rows(), 3u);
    EXPECT_EQ(factored.ipvt[2], 3);
    EXPECT_GT(factored.rcond, 0.05);
    expect_near(orvel::lfsrg(factored.fact, factored.ipvt, b).value(), x_of_a);

    Matrix c(3, 3);  // the inverse times the matrix, and the transposed of a block of other shape
    orvel::gemm('N', 'N', 1, orvel::linrg(a).value(), a, 0, c).value();
    EXPECT_NEAR(c(1, 1), 1, 1e-14);
    EXPECT_NEAR(c(2, 1), 0, 1e-14);
    Matrix d(2, 4);
    const Matrix wide(3, 2, {1, 2, 3, 4, 5, 6});
    orvel::gemm('T', 'N', 1, wide, orvel::matrix_view(room, 3, 4, 5), 0, d).value();
    EXPECT_EQ(d(1, 0), 15 * 99);

    std::vector<double> up(6), y(3);
    std::iota(up.begin(), up.end(), 1.0);
    const orvel::vector_view<const double> all(up);
    orvel::copy(all.every(2), orvel::vector_view(y)).value();
    EXPECT_EQ(y, (std::vector<double>{1, 3, 5}));
    orvel::copy(all.every(2).reversed(), y).value();
    EXPECT_EQ(y, (std::vector<double>{5, 3, 1}));
    orvel::copy(orvel::vector_view(up).every(2).reversed(), y).value();  // not const, before
    EXPECT_EQ(y, (std::vector<double>{5, 3, 1}));
    const std::vector<double> abscissas = {0, 1, 2, 3, 4};
    const auto spline = orvel::csint(abscissas, std::vector<double>{0, 1, 8, 27, 64}).value();
    EXPECT_NEAR(orvel::csval(2.5, spline.brkpt, spline.spcoef).value(), 15.625, 1e-13);
    EXPECT_NEAR(orvel::csitg(0, 4, spline.brkpt, spline.spcoef).value(), 64, 1e-12);
}

double integral_of_power(double exponent)
{
    return orvel::qdags([&](double x) { return std::pow(x, exponent); }, 0, 1, 0, 1e-12).value().result;
}

TEST(Cxx, FunctionsCaptureNestAndThrow)
{
    std::thread other([] { EXPECT_NEAR(integral_of_power(3), 0.25, 1e-14); });
    EXPECT_NEAR(integral_of_power(-0.5), 2, 1e-11);
    other.join();
    const auto nested = orvel::qdag([](double y) { return integral_of_power(y); }, 1, 3, 0, 1e-12, 6).value();
    EXPECT_NEAR(nested.result, std::log(2), 1e-14);

    struct Endless {
        double operator()(double x) const { return orvel::qdags(*this, 0, x).value().result; }
    };
    const auto endless = [] { return orvel::qdags(Endless(), 0, 1).value(); };
    EXPECT_THROW(endless(), orvel::error);  // the stack of routines is full
    EXPECT_EQ(ERCOM1.level, 1);

    int calls = 0;
    const auto throwing = [&](double x) {
        if (++calls == 5) throw std::string("mine");
        return x;
    };
    EXPECT_THROW((void)orvel::qdags(throwing, 0, 1), std::string);
    EXPECT_EQ(calls, 5);
    EXPECT_EQ(ERCOM1.level, 1);
    const std::vector<double> guesses = {1, 4};
    const auto zeros =
        orvel::zreal([](double x) { return std::sin(x); }, 1e-12, 1e-12, 1e-4, 0.1, 100, guesses).value();
    EXPECT_NEAR(std::abs(std::sin(zeros.x[0])) + std::abs(std::sin(zeros.x[1])), 0, 1e-12);
    struct Mutable {
        int calls = 0;
        double operator()(double x) { return ++calls, (x - 2) * (x - 2); }
    } parabola;
    EXPECT_NEAR(orvel::uvmif(parabola, 0, 0.1, 100, 1e-6).value(), 2, 1e-6);
    EXPECT_GT(parabola.calls, 3);
}

TEST(Cxx, ErrorsAreValues)
{
    testing::internal::CaptureStdout();
    const auto switches = [] { return std::accumulate(ERCOM1.prttab, ERCOM1.prttab + 14, 0); };
    const int before = switches();
    const auto pole = orvel::gamma(-3.0);
    EXPECT_FALSE(pole.ok());
    EXPECT_EQ(pole.severity(), orvel::severity::terminal);
    EXPECT_EQ(pole.code(), 6);
    EXPECT_EQ(pole.routine(), "DGAMMA");
    EXPECT_NE(pole.text().find("negative integer"), std::string_view::npos);
    EXPECT_TRUE(std::isnan(pole.outputs()));
    try {
        pole.value();
        ADD_FAILURE();
    } catch (const orvel::error& e) {
        EXPECT_EQ(e.code(), 6);
        EXPECT_STREQ(e.what(), ("DGAMMA, error 6: " + std::string(pole.text())).c_str());
    }
    const Matrix singular(2, 2, {1, 2, 2, 4}), nearly(2, 2, {1, 1, 1, 1 + 2.3e-16});
    const std::vector<double> b = {1, 2};
    EXPECT_EQ(orvel::lsarg(singular, b).severity(), orvel::severity::fatal);
    const auto doubtful = orvel::lslrg(nearly, b);
    EXPECT_EQ(doubtful.severity(), orvel::severity::warning);
    EXPECT_TRUE(doubtful);
    EXPECT_EQ(doubtful.value().size(), 2u);
    const auto bad = orvel::qdags([](double x) { return 1 / x; }, 0, 1);
    EXPECT_EQ(bad.severity(), orvel::severity::fatal);
    EXPECT_GT(bad.outputs().esterr, 0);
    EXPECT_EQ(switches(), before);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST(Cxx, WhatDoesNotFitIsRefused)
{
    const std::vector<double> two = {1, 2}, three = {1, 2, 3}, eight(8);
    std::vector<double> y(2);
    const auto complaint = [](const auto& result) {
        EXPECT_EQ(result.severity(), orvel::severity::terminal);
        EXPECT_EQ(result.code(), 0);
        return std::string(result.text());
    };
    EXPECT_EQ(complaint(orvel::lsarg(a, two)), "b has 2 elements, needed are 3");
    EXPECT_EQ(complaint(orvel::lsarg(orvel::matrix_view(two, 1, 2), two)), "a is 1 by 2, needed is 2 by 2");
    EXPECT_EQ(complaint(orvel::lsarg(orvel::matrix_view(eight, 3, 3), three)),
              "a has fewer elements than its rows, columns and leading dimension need");
    EXPECT_EQ(complaint(orvel::axpy(1, three, y)), "y has 2 elements, needed are 3");
    EXPECT_EQ(complaint(orvel::fftrf(orvel::vector_view(eight).every(2))),
              "xseq has elements that do not lie side by side");
    EXPECT_EQ(complaint(orvel::f2trf(two, y)), "wfr has 2 elements, needed are at least 19");
    Matrix c(2, 3);
    EXPECT_EQ(complaint(orvel::gemm('N', 'T', 1, a, a, 0, c)), "a is 3 by 3, needed is 2 by 3");
    EXPECT_EQ(complaint(orvel::csval(1, three, Matrix(4, 1))), "spcoef is 4 by 1, needed is 4 by 2");
    EXPECT_EQ(orvel::rnun(-5).code(), 1);  // the routine's own
    EXPECT_EQ(orvel::lsarg(Matrix(), std::vector<double>()).code(), 1);
    EXPECT_EQ(orvel::version(), ORVEL_VERSION);
    EXPECT_FALSE(orvel::use_level("none"));
}

}  // namespace
