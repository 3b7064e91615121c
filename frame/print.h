// frame/print.h - the printed form of the current message
#pragma once

#include "frame/state.h"

namespace orvel::frame {

// A routine's name as it is printed: "dLSARG" as "DLSARG".
struct PrintedName {
    char text[name_room];

    std::string_view word() const
    {
        const std::string_view name{text, name_room};
        return name.substr(0, name.find(' '));
    }
};
PrintedName printed_name(const State& s, int32_t level);

// A message that is due goes to the outcome of quiet calls, else onto paper if the switch of its type is on.
[[gnu::cold]] void deliver(State& s, int32_t type);

// Prints the current message on the error unit, with a traceback where one is due, and empties the buffer.
[[gnu::cold]] void print_message(State& s);

}  // namespace orvel::frame
