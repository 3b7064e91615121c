// util/arguments.cpp - C1IARG: check of an integer argument; C1TCI: text to integer
#include <algorithm>
#include <cstdint>
#include <limits>

#include "frame/export.h"
#include "frame/routine.h"
#include "frame/stop.h"
#include "orvel/util.h"
#include "util/util.h"

namespace orvel::util {

void c1iarg(frame::State& s, int32_t value, std::string_view name, int32_t low, int32_t high, int32_t& code)
{
    if (low > high) {
        if (value < low)
            frame::post(s, 'R', terminal, code,
                        "%(L1) = %(I1).  %(L1) must be greater than or equal to %(I2).",
                        {l(1, name), i(1, value), i(2, low)});
    } else if (value < low || value > high) {
        frame::post(
            s, 'R', terminal, code,
            "%(L1) = %(I1).  %(L1) must be greater than or equal to %(I2) and less than or equal to %(I3).",
            {l(1, name), i(1, value), i(2, low), i(3, high)});
    }
    code = static_cast<int32_t>(static_cast<uint32_t>(code) + 1);
}

Converted whole_number(std::string_view text)
{
    text = frame::without_trailing_blanks(text);
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+')) text.remove_prefix(1);
    if (text.empty()) return {0, 1};
    constexpr int64_t most = std::numeric_limits<int32_t>::max();
    int64_t number = 0;
    for (const char c : text) {
        if (c < '0' || c > '9') return {0, 1};
        number = std::min(10 * number + (c - '0'), 10 * most);  // stays too large
    }
    if (number > most + negative) return {0, 2};
    return {static_cast<int32_t>(negative ? -number : number), 0};
}

namespace {

// The exported routine has no name on the stack, so no pop follows that could stop.
void stopping_c1iarg(frame::State& s, int32_t iarg, const char* nmarg, int32_t lo, int32_t hi, int32_t* icode,
                     std::size_t length)
{
    const int32_t code = *icode;
    const bool bad = iarg < lo || (lo <= hi && iarg > hi);
    c1iarg(s, iarg, frame::text_argument(nmarg, length), lo, hi, *icode);
    if (bad) frame::stop_without_pop(s, terminal, code);
}

void c1tci(const char* chrstr, int32_t slen, int32_t* num, int32_t* ier, std::size_t length)
{
    const std::size_t used = static_cast<std::size_t>(std::max(slen, 0));
    const Converted value = whole_number(frame::text_argument(chrstr, length).substr(0, used));
    *num = value.number;
    *ier = value.error;
}

}  // namespace

}  // namespace orvel::util

ORVEL_EXPORT(C1IARG, c1iarg_, 6, orvel::util::stopping_c1iarg);
ORVEL_EXPORT(C1TCI, c1tci_, 5, orvel::util::c1tci);
