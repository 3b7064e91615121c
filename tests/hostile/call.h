// tests/hostile/call.h - one call of one routine, made from a seed
#pragma once

#include <cstdint>
#include <string>

#include "tests/hostile/description.h"

namespace hostile {

// What the arguments are like.
enum class Mood {
    ordinary,   // valid, data tame
    odd_data,   // valid, with NaN, infinities, denormal numbers, random bits
    odd_sizes,  // data tame, an integer or a letter or two are anything
    anything,
};

struct Fault {
    std::string what;  // empty for none
};

void set_up_process(const std::string& folder);  // once in each process that makes calls
int level_count();

// On which level the second run of a call is made.
enum class Levels {
    as_listed,  // that of the first, or another where results are the same on all
    others,     // another one
    many,       // on one after the other, as is the first: another thread changes it all the time
};
extern Levels levels;

// Makes the call twice, a routine whose results are the same everywhere on another level the second time. The
// mood, too, comes from the seed; the level of the first run is the rest of it by level_count().
Fault make_call(const Routine& routine, uint64_t seed, bool is_verbose = false);

// Calls all routines with each request for storage refused in turn; returns 0 where that is reported as
// documented.
int refuse_all(uint64_t first_seed);

// What a crash is, in words, for an address inside of make_call(); async-signal-safe.
void describe_crash(char* text, std::size_t room, int signal, const void* address);

// Leaves a call that has touched an array which is too large to exist; returns where it was not such an
// array.
void leave_if_unreal(const void* address);

}  // namespace hostile
