// frame/context.h - functions of the user's that have a context
#pragma once

#include "frame/state.h"

namespace orvel::frame {

// A stop in quiet calls, from inside a user's function with a context, ends the call that it is known to
// instead of the program. Returns where there is none.
void end_user_context(int32_t type, int32_t code);

}  // namespace orvel::frame
