// tests/util/clock_test.cpp - time of day, date and processor time; the integer check and the digit converter
#include <chrono>
#include <cstring>
#include <ctime>
#include <thread>

#include "tests/support.h"
#include "util/util.h"

using namespace orvel_test;

namespace {

class Clock : public Quiet {
protected:
    Clock() { set_switches(0, 1, 0); }
    Capture printed;
};

// Local time in a zone that differs from UTC by hours and minutes, read before and after.
TEST_F(Clock, DateAndTimeAreLocal)
{
    setenv("TZ", "XYZ-9:17", 1);
    tzset();
    const auto now = [] {
        const std::time_t t = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
        char out[32];
        std::strftime(out, sizeof out, "%Y %m %d %H %M %S", std::localtime(&t));
        return std::string(out);
    };
    std::string before, after, seen;
    do {  // until both readings fall into one second, so that the date belongs to the time
        before = now();
        int32_t day, month, year, hour, minute, second;
        TDATE(&day, &month, &year);
        TIMDY(&hour, &minute, &second);
        char out[80];
        std::snprintf(out, sizeof out, "%04d %02d %02d %02d %02d %02d", year, month, day, hour, minute,
                      second);
        seen = out;
        after = now();
    } while (before != after);
    EXPECT_EQ(seen, before);
    unsetenv("TZ");
    tzset();
}

float burn(double seconds)
{
    const float start = CPSEC();
    float now = start;
    while (static_cast<double>(now - start) < seconds) now = CPSEC();
    return now;
}

TEST_F(Clock, ProcessorTimeIsThatOfTheThread)
{
    std::thread([] {
        EXPECT_EQ(CPSEC(), 0.0f);
        const float mine = burn(0.02);
        std::thread([] {
            EXPECT_EQ(CPSEC(), 0.0f);
            burn(0.05);
        }).join();
        // The time of the other thread, and of waiting for it, does not count.
        EXPECT_LT(CPSEC() - mine, 0.04f);
    }).join();
    EXPECT_EQ(orvel::util::processor_seconds(-0.5), 0.0f);
    expect_terminal(printed, "CPSEC", 1, "An error occurred in obtaining the runtime statistics.");
    std::thread([] {
        EXPECT_EQ(orvel::util::processor_seconds(2.5), 0.0f);
        EXPECT_EQ(orvel::util::processor_seconds(4.0), 1.5f);
    }).join();
}

TEST_F(Clock, IntegerArgumentsAreChecked)
{
    const int32_t here = 0;
    const int32_t rows[][5] = {{3, 3, 5, 1, 0}, {5, 3, 5, 2, 0}, {3, 3, 2, 1, 0},
                               {9, 3, 2, 1, 0}, {4, 4, 4, 9, 0}, {2, 3, 5, 4, 5},
                               {6, 3, 5, 8, 5}, {5, 4, 4, 9, 5}, {2, 3, 2, INT32_MAX, 5}};
    for (const auto& [value, low, high, code, type] : rows) {
        int32_t next = code;
        E1PSH("CALLER ", 7);
        C1IARG(&value, "NR", &low, &high, &next, 2);
        EXPECT_EQ((Outcome{N1RTY(&here), N1RCD(&here)}), (Outcome{type, type == 0 ? 0 : code})) << value;
        E1POP("CALLER ", 7);
        EXPECT_EQ(next, code == INT32_MAX ? INT32_MIN : code + 1);
    }
    EXPECT_NE(printed.take().find("CALLER.  NR = 2.  NR must"), std::string::npos);
}

using ClockDeathTest = Quiet;

TEST_F(ClockDeathTest, ChecksCalledByTheUserStopAtOnce)
{
    orvel_set_stop_status(9);
    const int32_t zero = 0, one = 1;
    int32_t code = 1, leap;
    EXPECT_EXIT(C1IARG(&zero, "N", &one, &zero, &code, 1), ::testing::ExitedWithCode(9), "");
    EXPECT_EXIT(C1DAT(&one, &zero, &one, &code, &leap), ::testing::ExitedWithCode(9), "");
    orvel_set_stop_status(0);
}

TEST_F(Clock, TextsBecomeIntegers)
{
    struct Row {
        const char* text;
        int32_t length, number, error;
    };
    const Row rows[] = {{"20261121", 8, 20261121, 0},
                        {"20261121", 4, 2026, 0},
                        {"  07 ", 5, 7, 0},
                        {"-2147483648", 11, INT32_MIN, 0},
                        {"+2147483647", 11, INT32_MAX, 0},
                        {"12", 99, 12, 0},
                        {"2147483648", 10, 0, 2},
                        {"-2147483649", 11, 0, 2},
                        {"99999999999999999999", 20, 0, 2},
                        {"", 0, 0, 1},
                        {"-", 1, 0, 1},
                        {"12:", 3, 0, 1},
                        {"/1", 2, 0, 1},
                        {"12", -1, 0, 1}};
    for (const Row& row : rows) {
        int32_t number = 77, error = 77;
        C1TCI(row.text, &row.length, &number, &error, std::strlen(row.text));
        EXPECT_EQ(number, row.number) << row.text;
        EXPECT_EQ(error, row.error) << row.text;
    }
}

}  // namespace
