// tests/hostile/functions.h - what the functions that the library calls back do to a call
#pragma once

#include <cstddef>

#include "tests/hostile/description.h"

namespace hostile {

// Thrown by a stop, by a writer, and by functions that have enough.
struct Left {};

void set_up_host();  // writers and a stop handler of the engine, initial settings otherwise
// The routine's call, inside orvel_with_context: the function ends the routine where it throws otherwise.
// Returns what orvel_with_context does.
int call_with_context(const Routine& routine, void* const* addresses, void* result);

void note_text(const char* text, std::size_t length);  // printed text, which both runs have alike

}  // namespace hostile
