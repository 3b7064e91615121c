// util/days.cpp - NDAYS, NDYIN, IDYWK, C1DAT: day numbers, dates, days of the week
#include "frame/export.h"
#include "frame/routine.h"
#include "frame/stop.h"
#include "orvel/util.h"
#include "util/calendar.h"
#include "util/util.h"

namespace orvel::util {

namespace {

constexpr int32_t introduction = -45;  // of the Julian calendar

static_assert(day_number(15, 10, 1582) == first_gregorian && day_number(4, 10, 1582) == first_gregorian - 1);
static_assert(day_number(3, 3, -5877591) == INT32_MIN && day_number(12, 7, 5881510) == INT32_MAX);

constexpr bool is_month(int32_t month) { return month >= 1 && month <= 12; }

constexpr bool is_skipped(const Date& d)
{
    return d.year == 1582 && d.month == 10 && d.day >= 5 && d.day <= 14;
}

// IDAY above the length of the month. The month is known to be good.
void post_long_day(frame::State& s, const Date& d, bool leap, int32_t code)
{
    const auto post = [&](std::string_view text, int32_t first) {
        frame::post(s, 'R', terminal, code, text, {i(1, first), i(2, d.day)});
    };
    if (d.month != 2 && month_length(d.month, leap) == 31)
        post("IDAY = %(I2).  Since MONTH = %(I1), IDAY must be less than or equal to  31.", d.month);
    else if (d.month != 2)
        post("IDAY = %(I2).  Since MONTH = %(I1), IDAY must be less than or equal to 30.", d.month);
    else if (!leap)
        post("IDAY = %(I2).  Since MONTH = 2 and IYEAR = %(I1), IDAY must be less than or equal to 28.",
             d.year);
    else
        post("IDAY = %(I2).  Since MONTH = 2 and IYEAR = %(I1), IDAY must be less than or equal to 29.",
             d.year);
}

// Every failing check posts. The NOTE stays behind an error that is pending.
void check_date(frame::State& s, const Date& d, int32_t& code)
{
    code = 1;
    c1iarg(s, d.month, "MONTH", 1, 12, code);
    c1iarg(s, d.day, "IDAY", 1, 0, code);
    if (d.year == 0)
        frame::post(s, 'R', terminal, code,
                    "IYEAR = 0.  IYEAR must not be equal to 0 since the year 0 does not exist.");
    ++code;
    if (is_skipped(d))
        frame::post(
            s, 'R', terminal, code,
            "IYEAR = 1582, MONTH = 10 and IDAY = %(I1).  Due to the conversion from the Julian calendar to the Gregorian calendar, October 5, 1582 through October 14, 1582 do not exist.",
            {i(1, d.day)});
    ++code;
    if (d.year < introduction && frame::type_at(s, frame::current_level(s)) <= note)
        frame::post(
            s, 'R', note, 1,
            "IYEAR = %(I1).  The Julian Calendar first went into use in 45 B.C. (-45).  No calendar prior to that time was as universally used nor as accurate as the Julian.  Therefore, it is assumed that the Julian Calendar was in use prior to 45 B.C.",
            {i(1, d.year)});
    if (is_month(d.month) && d.day > month_length(d.month, is_leap(d.year)))
        post_long_day(s, d, is_leap(d.year), code);
    ++code;
}

// A date that draws no message and whose number needs no check of its range.
constexpr bool is_plain(const Date& d)
{
    return is_month(d.month) && d.day >= 1 && d.day <= month_length(d.month, is_leap(d.year)) &&
           d.year >= introduction && d.year < 5881510 && d.year != 0 && !is_skipped(d);
}

// The number of any date in the frame of the routine, or nothing when it has none.
template <class Routine>
[[gnu::noinline]] bool number_of_any(frame::State& s, const Date& d, int64_t& number)
{
    Routine me(s);
    int32_t code;
    check_date(s, d, code);
    if (me.error_type() > note) return false;
    number = day_number(d.day, d.month, d.year);
    if (fits_integer(number)) return true;
    me.post(
        terminal, code,
        "IDAY = %(I1), MONTH = %(I2) and IYEAR = %(I3).  The number of this day does not fit an integer.  The first day that has a number is March 3, -5877591, the last one is July 12, 5881510.",
        {i(1, d.day), i(2, d.month), i(3, d.year)});
    return false;
}

template <class Routine>
bool number_of(const Date& d, int64_t& number)
{
    frame::State& s = frame::state();
    if (!is_plain(d)) [[unlikely]]
        return number_of_any<Routine>(s, d, number);
    Routine::visit(s);
    number = day_number(d.day, d.month, d.year);
    return true;
}

int32_t ndays(const int32_t* iday, const int32_t* month, const int32_t* iyear)
{
    int64_t number;
    return number_of<Routine<float, "NDAYS">>({*iday, *month, *iyear}, number) ? static_cast<int32_t>(number)
                                                                               : 0;
}

int32_t idywk(const int32_t* iday, const int32_t* month, const int32_t* iyear)
{
    int64_t number;
    return number_of<Routine<float, "IDYWK">>({*iday, *month, *iyear}, number) ? weekday(number) : 0;
}

void ndyin(const int32_t* ndays, int32_t* iday, int32_t* month, int32_t* iyear)
{
    Routine<float, "NDYIN">::visit(frame::state());
    const Date d = date_of(*ndays);
    *iday = d.day;
    *month = d.month;
    *iyear = d.year;
}

// No name of its own: errors belong to the routine that has its arguments checked.
void c1dat(const int32_t* iday, const int32_t* month, const int32_t* iyear, int32_t* icode, int32_t* leap)
{
    frame::State& s = frame::state();
    const Date d{*iday, *month, *iyear};
    check_date(s, d, *icode);
    *leap = is_leap(d.year) ? 1 : -1;
    const int32_t level = frame::current_level(s);
    if (frame::type_at(s, level) > note) frame::stop_without_pop(s, terminal, frame::code_at(s, level));
}

}  // namespace

}  // namespace orvel::util

ORVEL_EXPORT(NDAYS, ndays_, 3, orvel::util::ndays);
ORVEL_EXPORT(NDYIN, ndyin_, 4, orvel::util::ndyin);
ORVEL_EXPORT(IDYWK, idywk_, 3, orvel::util::idywk);
ORVEL_EXPORT(C1DAT, c1dat_, 5, orvel::util::c1dat);
