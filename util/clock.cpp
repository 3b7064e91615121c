// util/clock.cpp - TDATE, TIMDY, CPSEC: date and time of day, processor time of the thread
//
// The system's date and time pass through texts, "ccyymmdd" and "hhmmss.sss", whose digits are converted.
#include <ctime>
#include <string_view>

#include "frame/export.h"
#include "frame/routine.h"
#include "orvel/util.h"
#include "util/util.h"

namespace orvel::util {

namespace {

// The local date and time as "ccyymmddhhmmss".
class Now {
public:
    Now()
    {
        timespec now{};
        clock_gettime(CLOCK_REALTIME, &now);
        std::tm local{};
        local.tm_mday = 1;
        localtime_r(&now.tv_sec, &local);
        if (std::strftime(text_, sizeof text_, "%Y%m%d%H%M%S", &local) != 14) text_[0] = '\0';
    }
    int32_t number(std::size_t at, std::size_t length) const
    {
        return whole_number(std::string_view(text_).substr(text_[0] != '\0' ? at : 0, length)).number;
    }

private:
    char text_[24];
};

// Negative until the first call on the thread.
constinit thread_local double base = -1.0;

void tdate(int32_t* iday, int32_t* month, int32_t* iyear)
{
    const Now now;
    *iyear = now.number(0, 4);
    *month = now.number(4, 2);
    *iday = now.number(6, 2);
}

void timdy(int32_t* ihour, int32_t* minute, int32_t* isec)
{
    const TimeOfDay t = time_of_day();
    *ihour = t.hour;
    *minute = t.minute;
    *isec = t.second;
}

float cpsec()
{
    timespec t{};
    if (clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t) != 0) return processor_seconds(-1.0);
    return processor_seconds(static_cast<double>(t.tv_sec) + 1e-9 * static_cast<double>(t.tv_nsec));
}

}  // namespace

TimeOfDay time_of_day()
{
    const Now now;
    return {now.number(8, 2), now.number(10, 2), now.number(12, 2)};
}

float processor_seconds(double now)
{
    if (now < 0.0) {
        Routine<float, "CPSEC"> me;
        me.post(terminal, 1, "An error occurred in obtaining the runtime statistics.");
        return 0.0f;
    }
    if (base < 0.0) base = now;
    return static_cast<float>(now - base);
}

}  // namespace orvel::util

ORVEL_EXPORT(TDATE, tdate_, 3, orvel::util::tdate);
ORVEL_EXPORT(TIMDY, timdy_, 3, orvel::util::timdy);
ORVEL_EXPORT(CPSEC, cpsec_, 0, orvel::util::cpsec);
