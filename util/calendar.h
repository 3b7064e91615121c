// util/calendar.h - arithmetic of the calendar, for dates that have been checked
//
// Days are counted in years that begin in March, so that the leap day is the last of its year and the months
// before it have lengths 31 30 31 30 31 | 31 30 31 30 31 | 31 that a linear function counts. Years before 1
// keep their number, and a year 0 of 366 days that the formula would pass through is left out.
#pragma once

#include <cstdint>
#include <limits>

namespace orvel::util {

struct Date {
    int32_t day, month, year;
    bool operator==(const Date&) const = default;
};

// Divisible by four also for negative years, as the low two bits tell.
constexpr bool is_leap(int32_t year)
{
    return (year & 3) == 0 && (year < 1583 || year % 100 != 0 || year % 400 == 0);
}

// Months are 1 to 12.
constexpr int32_t month_length(int32_t month, bool leap)
{
    return month == 2 ? (leap ? 29 : 28) : 30 + ((month + (month >> 3)) & 1);
}

// The first day of the Gregorian calendar, 15 October 1582, and the day numbers of 1 March of the year 0 in
// each of the two calendars.
inline constexpr int64_t first_gregorian = -115860;
inline constexpr int64_t gregorian_start = -693901;
inline constexpr int64_t julian_start = -693903;
inline constexpr int64_t january_of_year_1 = julian_start + 306;
inline constexpr int64_t days_of_400_years = 146097;

// A multiple of 400 years that makes every year of an int32_t nonnegative.
inline constexpr int64_t bias = 400LL * 5500000;

// The day number of a date that exists. No overflow, whatever the year.
constexpr int64_t day_number(int32_t day, int32_t month, int32_t year)
{
    const bool before_march = month <= 2;
    const auto y = static_cast<uint64_t>(year - int64_t{before_march} + bias);
    const int64_t in_year = (153 * (before_march ? month + 9 : month - 3) + 2) / 5 + day - 1;
    const bool gregorian = year > 1582 || (year == 1582 && (month > 10 || (month == 10 && day > 4)));
    if (gregorian)
        return static_cast<int64_t>(365 * y + y / 4 - y / 100 + y / 400) - bias / 400 * days_of_400_years +
               in_year + gregorian_start;
    const int64_t n = static_cast<int64_t>(365 * y + y / 4) - bias / 4 * 1461 + in_year + julian_start;
    return year < 0 ? n + 366 : n;
}

constexpr bool fits_integer(int64_t n)
{
    return n >= std::numeric_limits<int32_t>::min() && n <= std::numeric_limits<int32_t>::max();
}

// The date of any 32-bit day number.
constexpr Date date_of(int32_t number)
{
    constexpr int64_t cycles = 1600000;  // of four years, that lift the first day number above 0
    uint64_t rest;                       // days since 1 March of `year`
    int64_t year;
    if (number >= first_gregorian) {
        const auto n = static_cast<uint64_t>(number - gregorian_start);
        const uint64_t cycle = n / 146097, in_cycle = n % 146097;
        const uint64_t century = (4 * in_cycle + 3) / 146097;
        const uint64_t in_century = in_cycle - century * 146097 / 4;
        const uint64_t y = (4 * in_century + 3) / 1461;
        rest = in_century - 1461 * y / 4;
        year = static_cast<int64_t>(400 * cycle + 100 * century + y);
    } else {
        const int64_t straight = number < january_of_year_1 ? int64_t{number} - 366 : number;
        const auto n = static_cast<uint64_t>(straight - julian_start + cycles * 1461);
        const uint64_t y = (4 * n + 3) / 1461;
        rest = n - 1461 * y / 4;
        year = static_cast<int64_t>(y) - 4 * cycles;
    }
    const uint64_t m = (5 * rest + 2) / 153;
    const auto day = static_cast<int32_t>(rest - (153 * m + 2) / 5 + 1);
    const bool before_march = m >= 10;
    return {day, static_cast<int32_t>(before_march ? m - 9 : m + 3),
            static_cast<int32_t>(year + int64_t{before_march})};
}

// 1 Sunday to 7 Saturday; 1 January 1900 was a Monday.
constexpr int32_t weekday(int64_t number)
{
    const int64_t r = (number + 2) % 7;
    return static_cast<int32_t>(r <= 0 ? r + 7 : r);
}

}  // namespace orvel::util
