// frame/stop.h - ending the program after a message
#pragma once

#include "frame/state.h"

namespace orvel::frame {

// Calls the host's stop handler, which may leave by an exception or a jump, and ends the process.
[[noreturn, gnu::cold]] void stop(int32_t type, int32_t code);

// For errors posted at level 1 by a routine without a frame of its own: no pop will judge them.
inline void stop_without_pop(State& s, int32_t type, int32_t code)
{
    if (current_level(s) == 1 && s.quiet == nullptr && is_on(s.errors->stptab, type)) stop(type, code);
}

}  // namespace orvel::frame
