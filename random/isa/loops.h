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

struct Loops {
    // n >= 0 numbers, or states, after `state`; returns the last state.
    uint32_t (*single_congruential)(int which, uint32_t state, int64_t n, float* out);
    uint32_t (*double_congruential)(int which, uint32_t state, int64_t n, double* out);
    uint32_t (*states)(int which, uint32_t state, int64_t n, uint32_t* out);

    // n >= 1 numbers of the shift register at the zero-based indices p and q, which move on; returns the last
    // word.
    int32_t (*single_register)(int32_t* words, int32_t* p, int32_t* q, int64_t n, float* out);
    int32_t (*double_register)(int32_t* words, int32_t* p, int32_t* q, int64_t n, double* out);

    // The next block of a twister, and numbers from words of a block.
    void (*refill32)(uint32_t* word);
    void (*refill64)(uint64_t* word);
    void (*single_temper32)(const uint32_t* word, int64_t n, float* out);
    void (*double_temper32)(const uint32_t* word, int64_t n, double* out);
    void (*single_temper64)(const uint64_t* word, int64_t n, float* out);
    void (*double_temper64)(const uint64_t* word, int64_t n, double* out);
};

ORVEL_LEVEL_TABLE(Loops, loops);

}  // namespace orvel::random
