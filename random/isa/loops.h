// random/isa/loops.h - the hot loops of the generators, compiled once for each instruction-set level
//
// Every level gives the same bits. Objects compiled from here include no header with inline functions.
#pragma once

#include <cstdint>

#include "isa/levels.h"

namespace orvel::random {

inline constexpr int register_length = 1563;

// Multipliers of options 1 and 2, 3 and 4, 5 and 6: a loop is told which by its index.
inline constexpr uint32_t multipliers[3] = {16807, 397204094, 950706376};
inline constexpr uint32_t modulus = 2147483647;
inline constexpr double reciprocal = 1.0 / 2147483647.0;
inline constexpr float single_scale = 0x1.fffffep-32f;

template <class T>
struct NumberLoops {
    // n >= 0 numbers after the state; returns the last state.
    uint32_t (*congruential)(int which, uint32_t state, int64_t n, T* out);
    // n >= 1 numbers of the shift register at the zero-based indices p and q, which move on; returns the last
    // word.
    int32_t (*shift_register)(int32_t* words, int32_t* p, int32_t* q, int64_t n, T* out);
    // Numbers from words of a block of a twister.
    void (*from_words32)(const uint32_t* word, int64_t n, T* out);
    void (*from_words64)(const uint64_t* word, int64_t n, T* out);
};

struct StateLoops {
    // n >= 0 states of a congruential generator after the state; returns the last one.
    uint32_t (*congruential)(int which, uint32_t state, int64_t n, uint32_t* out);
    // The next block of a twister.
    void (*refill32)(uint32_t* word);
    void (*refill64)(uint64_t* word);
};

ORVEL_LEVEL_TABLE(isa::ForReals<NumberLoops>, number_loops);
ORVEL_LEVEL_TABLE(StateLoops, state_loops);

}  // namespace orvel::random
