// frame/print.h - the printed form of the current message
#pragma once

#include "frame/state.h"

namespace orvel::frame {

// Prints the current message on the error unit, with a traceback where one is due, and empties the buffer.
[[gnu::cold]] void print_message(State& s);

}  // namespace orvel::frame
