// tests/util/calendar_test.cpp - the calendar day by day, its ends, and every message of the date check
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "tests/support.h"

using namespace orvel_test;

namespace {

struct Day {
    int32_t day, month, year;
    bool operator==(const Day&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Day& d)
{
    return out << d.day << "." << d.month << "." << d.year;
}

int32_t number(const Day& d) { return NDAYS(&d.day, &d.month, &d.year); }
int32_t weekday(const Day& d) { return IDYWK(&d.day, &d.month, &d.year); }

Day date(int32_t n)
{
    Day d{};
    NDYIN(&n, &d.day, &d.month, &d.year);
    return d;
}

// The day after, by the rules as a calendar maker would say them.
Day next(Day d)
{
    if (d == Day{4, 10, 1582}) return {15, 10, 1582};
    constexpr int32_t lengths[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool century = d.year >= 1583 && d.year % 100 == 0;
    const bool leap = century ? d.year % 400 == 0 : d.year % 4 == 0;
    if (d.day < lengths[d.month - 1] + (d.month == 2 && leap)) return {d.day + 1, d.month, d.year};
    if (d.month < 12) return {1, d.month + 1, d.year};
    return {1, 1, d.year == -1 ? 1 : d.year + 1};
}

class Calendar : public Quiet {
protected:
    Calendar() { set_switches(0, 1, 0); }
    Capture printed;
};

// 900 B.C. to A.D. 2401: a whole cycle of 400 years and more on each side of 1582 and of 1900, and year 1.
TEST_F(Calendar, EveryDayFollowsTheDayBefore)
{
    set_switches(1, 0, 0);
    Day d{1, 1, -900};
    int32_t n = number(d), day_of_week = weekday(d);
    while (d.year < 2402) {
        ASSERT_EQ(number(d), n) << d;
        ASSERT_EQ(date(n), d) << n;
        ASSERT_EQ(weekday(d), day_of_week) << d;
        if (d == Day{1, 1, 1900}) {
            ASSERT_EQ(n, 0);
            ASSERT_EQ(day_of_week, 2);
        }
        d = next(d);
        ++n;
        day_of_week = day_of_week % 7 + 1;
    }
    EXPECT_EQ(printed.take(), "");
}

// To the ends of 32 bits.
TEST_F(Calendar, EveryNumberHasItsDate)
{
    std::mt19937 random(5);
    set_switches(1, 0, 0);
    for (int k = 0; k < 20000; ++k) {
        const auto any = static_cast<int32_t>(random());
        ASSERT_EQ(number(date(any)), any);
    }
    for (const auto& [n, d] : {std::pair{INT32_MIN, Day{3, 3, -5877591}}, {INT32_MAX, {12, 7, 5881510}}}) {
        EXPECT_EQ(date(n), d);
        EXPECT_EQ(number(d), n);
        EXPECT_EQ(outcome().type, n < 0 ? 1 : 0);
        EXPECT_EQ(weekday(d), ((n % 7 + 7) % 7 + 1) % 7 + 1);
    }
}

struct Row {
    Day date;
    Outcome outcome;
    std::string text;
};

std::vector<Row> failures()
{
    const std::string month = ".  MONTH must be greater than or equal to 1 and less than or equal to 12.";
    const std::string day = ".  IDAY must be greater than or equal to 1.";
    const std::string gap = "IYEAR = 1582, MONTH = 10 and IDAY = ";
    const std::string skipped =
        ".  Due to the conversion from the Julian calendar to the Gregorian calendar, October 5, 1582 "
        "through "
        "October 14, 1582 do not exist.";
    const std::string early =
        "IYEAR = -46.  The Julian Calendar first went into use in 45 B.C. (-45).  No calendar prior to that "
        "time was as universally used nor as accurate as the Julian.  Therefore, it is assumed that the "
        "Julian "
        "Calendar was in use prior to 45 B.C.";
    const std::string most = ", IDAY must be less than or equal to ";
    const std::string range =
        ".  The number of this day does not fit an integer.  The first day that has a number is March 3, "
        "-5877591, the last one is July 12, 5881510.";
    const std::string least = "-2147483648", greatest = "2147483647";
    return {{{1, 0, 1999}, {5, 1}, "MONTH = 0" + month},
            {{1, 13, -50}, {5, 1}, "MONTH = 13" + month},
            {{99, INT32_MAX, 4}, {5, 1}, "MONTH = " + greatest + month},
            {{0, 1, 1999}, {5, 2}, "IDAY = 0" + day},
            {{INT32_MIN, 2, -60}, {5, 2}, "IDAY = " + least + day},
            {{1, 1, 0}, {5, 3}, "IYEAR = 0.  IYEAR must not be equal to 0 since the year 0 does not exist."},
            {{5, 10, 1582}, {5, 4}, gap + "5" + skipped},
            {{14, 10, 1582}, {5, 4}, gap + "14" + skipped},
            {{1, 1, -46}, {1, 1}, early},
            {{32, 7, 1999}, {5, 5}, "IDAY = 32.  Since MONTH = 7" + most + " 31."},
            {{32, 8, -50}, {5, 5}, "IDAY = 32.  Since MONTH = 8" + most + " 31."},
            {{INT32_MAX, 11, 1999}, {5, 5}, "IDAY = " + greatest + ".  Since MONTH = 11" + most + "30."},
            {{29, 2, 1700}, {5, 5}, "IDAY = 29.  Since MONTH = 2 and IYEAR = 1700" + most + "28."},
            {{30, 2, 1500}, {5, 5}, "IDAY = 30.  Since MONTH = 2 and IYEAR = 1500" + most + "29."},
            {{2, 3, -5877591}, {5, 6}, "IDAY = 2, MONTH = 3 and IYEAR = -5877591" + range},
            {{13, 7, 5881510}, {5, 6}, "IDAY = 13, MONTH = 7 and IYEAR = 5881510" + range},
            {{31, 12, INT32_MAX}, {5, 6}, "IDAY = 31, MONTH = 12 and IYEAR = " + greatest + range},
            {{1, 1, INT32_MIN}, {5, 6}, "IDAY = 1, MONTH = 1 and IYEAR = " + least + range}};
}

TEST_F(Calendar, EveryFailureOfTheDateCheck)
{
    const int32_t here = 0;
    for (const Row& row : failures()) {
        SCOPED_TRACE(row.text);
        for (const auto& [name, function] : {std::pair{"NDAYS", &number}, {"IDYWK", &weekday}}) {
            EXPECT_EQ(function(row.date) == 0, row.outcome.type == 5);
            EXPECT_EQ(outcome(), row.outcome);
            const std::string kind = row.outcome.type == 5 ? "TERMINAL" : "NOTE    ";
            EXPECT_EQ(one_line(printed.take()), "\n *** " + kind + " ERROR " +
                                                    std::to_string(row.outcome.code) + " from " + name +
                                                    ".  " + row.text + "\n");
        }
        int32_t code = 77, leap = 0;
        E1PSH("CALLER ", 7);
        C1DAT(&row.date.day, &row.date.month, &row.date.year, &code, &leap);
        const Outcome recorded{N1RTY(&here), N1RCD(&here)};
        EXPECT_TRUE(recorded == row.outcome || row.outcome.code == 6) << recorded;
        E1POP("CALLER ", 7);
        EXPECT_EQ(code, 6);
        EXPECT_EQ(leap, row.date.year % 4 == 0 && row.date.year != 1700 ? 1 : -1);
        printed.take();
    }
    // Each check posts; the last one is what is recorded.
    EXPECT_EQ(number({0, 13, 0}), 0);
    EXPECT_EQ(outcome(), (Outcome{5, 3}));
    const std::string text = printed.take();
    for (const char* part : {"MONTH = 13.", "IDAY = 0.", "IYEAR = 0."})
        EXPECT_NE(text.find(part), std::string::npos) << part;
}

}  // namespace
