// tests/frame/constants_test.cpp - machine constants bit for bit, unit numbers
#include <bit>

#include "tests/frame/calls.h"

using namespace orvel_test;

namespace {

constexpr uint32_t single_bits[] = {0x00800000, 0x7F7FFFFF, 0x33800000, 0x34000000,
                                    0x3E9A209B, 0x7FC00000, 0x7F800000, 0xFF800000};
constexpr uint64_t double_bits[] = {0x0010000000000000, 0x7FEFFFFFFFFFFFFF, 0x3CA0000000000000,
                                    0x3CB0000000000000, 0x3FD34413509F79FF, 0x7FF8000000000000,
                                    0x7FF0000000000000, 0xFFF0000000000000};

void unit(int32_t n, int32_t& number) { UMACH(&n, &number); }

template <class T>
T assigned(const int32_t* n)
{
    T x{};
    const orvel_floating_point value = AMACH_INT_mp_AMACH(n);
    member<T>(AMACH_INT_mp_REAL_EQ_FLOATING_POINT, AMACH_INT_mp_DOUBLE_EQ_FLOATING_POINT)(&x, &value);
    return x;
}

using Constants = Hosted;

TEST_F(Constants, AreExactAndReportABadIndex)
{
    Capture page;
    set_switches(5, -1, 0);
    for (int32_t n : {1, 2, 3, 4, 5, 6, 7, 8, 0, 9, INT32_MIN, INT32_MAX}) {
        const bool good = n >= 1 && n <= 8;
        const auto check = [&](auto call, auto bits, const char* name) {
            const auto x = call(&n);
            EXPECT_EQ(std::bit_cast<decltype(bits)>(x), bits) << n;
            const std::string text =
                "\n *** TERMINAL ERROR 5 from " + std::string(name) +
                ".  The argument must be between 1 and 8\n ***          inclusive. N = " + std::to_string(n) +
                "\n";
            EXPECT_EQ(page.take(), good ? "" : text);
            EXPECT_TRUE(good || outcome() == (Outcome{5, 5}));
        };
        const int32_t k = good ? n - 1 : 5;
        for (auto* call : {AMACH, SRMACH, AMACH_INT_mp_S_AMACH, assigned<float>})
            check(call, single_bits[k], "AMACH");
        for (auto* call : {DMACH, DRMACH, AMACH_INT_mp_D_AMACH, assigned<double>})
            check(call, double_bits[k], "DMACH");
    }
    constexpr int32_t integers[] = {32, 4, 2, 31, 2147483647, 2, 24, -125, 128, 53, -1021, 1024};
    for (int32_t n = 1; n <= 12; ++n) EXPECT_EQ(IMACH(&n), integers[n - 1]);
    for (int32_t n : {-1, 0, 7}) (IWKIN(&n), IWKCIN(&n));
    EXPECT_EQ(page.take(), "");
    EXPECT_EQ(ERCOM1.level, 1);
}

TEST_F(Constants, UnitsAreKeptAndBadIndexStopsAlways)
{
    set_switches(0, 0, 0);
    on_stop(throwing);
    Capture output(1002), error(1003);
    int32_t first[] = {5, 6};
    for (int32_t n : {1, 2, 3}) {
        int32_t number = -1, changed = 1000 + n;
        unit(n, number);
        EXPECT_EQ(number, n == 1 ? 5 : 6);
        unit(-n, changed);
        unit(n, number);
        EXPECT_EQ(number, 1000 + n);
    }
    for (const auto& [n, cell, of_unit] : {std::tuple{13, "    13", "    13"},
                                           {0, "     0", "     0"},
                                           {-99999, "-99999", " 99999"},
                                           {4, "", "     4"},
                                           {-4, "", "     4"},
                                           {INT32_MIN, "******", "******"}}) {
        int32_t given = n;
        if (*cell != '\0') {
            EXPECT_THROW(IMACH(&given), Outcome);
            EXPECT_EQ(error.take(), "");
            EXPECT_EQ(output.take(),
                      std::string("\n *** TERMINAL ERROR 5 from IMACH.  The argument\n"
                                  " ***          must be between 1 and 12 inclusive.\n ***          N = ") +
                          cell + ".\n\n");
        }
        EXPECT_THROW(UMACH(&given, &given), Outcome);
        EXPECT_EQ(output.take(), "");
        EXPECT_EQ(error.take(), std::string("\n *** TERMINAL ERROR 5 from UMACH.  The absolute\n"
                                            " ***          value of the index variable must be\n"
                                            " ***          1, 2, or 3.  IABS(N) = ") +
                                    of_unit + ".\n\n");
    }
    for (int32_t n : {1, 2}) unit(-n, first[n - 1]);
}

}  // namespace
