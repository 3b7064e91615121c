// frame/outcome.h - the plain text of messages: kept in the outcome of quiet calls, and for stop handlers
#pragma once

#include "frame/state.h"

namespace orvel::frame {

// The last message of the thread since an error was posted, as a stop handler receives it.
struct LastMessage {
    char routine[name_room + 1];
    char text[message_room + 1];
};
const LastMessage& last_message();
void keep_last_message(const State& s);
void forget_last_message();

// Empties the message buffer into the outcome, unless it is the message of a call inside a user's function.
[[gnu::cold]] void keep_message(State& s, orvel_outcome& outcome);

inline void record(orvel_outcome& outcome, int32_t type, int32_t code)
{
    outcome.severity = type;
    outcome.code = code;
}

}  // namespace orvel::frame
