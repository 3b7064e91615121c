// tests/hostile/surroundings.h - what a call finds beside its arguments: the state of the thread
#pragma once

#include <cstdint>
#include <string>

#include "tests/hostile/call.h"
#include "tests/hostile/draw.h"

namespace hostile {

// What is not an argument: how the thread is when the call begins. From the seed.
struct Surroundings {
    int level[2];  // of the two runs
    unsigned char garbage[2];
    bool is_quiet, is_flagged, is_corrupted, has_traps, has_context;
    int rounding, switches, refused;
    bool lasting;
    int32_t condition_flag;
    uint64_t corruption;
};
Surroundings surroundings(const Routine& routine, uint64_t seed, Draw& draw, Mood mood);

class Arguments;
void print_call(const Routine& routine, const Arguments& arguments, const Surroundings& around);

void use_level(int level, bool may_have_changed);

// The blocks as they were at first; then settings that have no block; then the blocks as the surroundings
// want them.
void restore_blocks();
void restore_settings(const Surroundings& around);
void restore_state(const Surroundings& around);
void forget_piece();

// Keeps the blocks as a run has left them, and compares those that the other one leaves.
void keep_blocks();
bool blocks_are_as_kept();

}  // namespace hostile
