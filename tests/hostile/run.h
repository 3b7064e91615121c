// tests/hostile/run.h - one run of a call
#pragma once

#include <string>

#include "tests/hostile/arguments.h"
#include "tests/hostile/surroundings.h"

namespace hostile {

// What a run leaves behind beside its outputs.
struct Outcome {
    enum Ending { returned, left, unreal } ending;
    alignas(16) unsigned char result[16];
    std::string text;
    int32_t stack_level, severity, code;
    int requests, flags;
};

// Runs the call as the first (0) or second (1) of two, and says what is wrong with the run by itself, if
// anything.
std::string fault_of_run(const Routine& routine, Arguments& arguments, int run, const Surroundings& around,
                         Outcome& o);

}  // namespace hostile
