// util/util.h - what other folders use of the utilities
#pragma once

#include <cstdint>
#include <string_view>

#include "frame/state.h"

namespace orvel::util {

// Checks an integer argument and posts TERMINAL `code` at the current level; a lower bound above the upper
// one means that there is no upper one. The code goes up by one in any case.
void c1iarg(frame::State& s, int32_t value, std::string_view name, int32_t low, int32_t high, int32_t& code);

struct TimeOfDay {
    int32_t hour, minute, second;
};

// The local time of day.
TimeOfDay time_of_day();

// The number that a text spells, for c1tci; error 1 no number, 2 does not fit.
struct Converted {
    int32_t number, error;
};
Converted whole_number(std::string_view text);

// The work behind CPSEC, for a processor time read by the caller.
float processor_seconds(double now);

}  // namespace orvel::util
