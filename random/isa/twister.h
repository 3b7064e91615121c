// random/isa/twister.h - published constants of the Mersenne twisters of 32 and 64 bits, and their tempering
// tempering
//
// Hot loops include it: everything is a constant or always inline, and leaves no symbol.
#pragma once

#include <cstdint>

namespace orvel::random {

template <class Word>
struct Twister;

template <>
struct Twister<uint32_t> {
    static constexpr int32_t length = 624, middle = 397, default_seed = 21641;
    static constexpr uint32_t matrix = 0x9908B0DF;
    static constexpr uint32_t seeding = 1812433253, first_key = 1664525, second_key = 1566083941;
};

template <>
struct Twister<uint64_t> {
    static constexpr int32_t length = 312, middle = 156, default_seed = 19650218;
    static constexpr uint64_t matrix = 0xB5026F5AA96619E9;
    static constexpr uint64_t seeding = 6364136223846793005, first_key = 3935559000370003845,
                              second_key = 2862933555777941757;
};

// The seed under a key, of both.
inline constexpr int32_t seed_of_keys = 19650218;

[[gnu::always_inline]] inline uint32_t tempered(uint32_t y)
{
    y ^= y >> 11;
    y ^= (y << 7) & 0x9D2C5680u;
    y ^= (y << 15) & 0xEFC60000u;
    return y ^ (y >> 18);
}

[[gnu::always_inline]] inline uint64_t tempered(uint64_t x)
{
    x ^= (x >> 29) & 0x5555555555555555u;
    x ^= (x << 17) & 0x71D67FFFEDA60000u;
    x ^= (x << 37) & 0xFFF7EEE000000000u;
    return x ^ (x >> 43);
}

}  // namespace orvel::random
