// random/random.h - the stream of the calling thread, and the steps of the generators
#pragma once

#include <cstdint>

#include "orvel/random.h"
#include "random/isa/loops.h"
#include "random/isa/twister.h"

namespace orvel::random {

enum Option : int32_t { shift_register = 7, twister32 = 8, twister64 = 9 };

// The blocks are separate thread-local objects, because they are exported by name; the stream points to them
// from the thread's first call on, so that one look-up finds all.
struct Stream {
    bool initialised;
    bool seeded;
    orvel_r2ncom* common;
    orvel_mt_state1* place32;
    orvel_mt32_state2* words32;
    orvel_mt_state1* place64;
    orvel_mt64_state2* words64;
};

[[gnu::visibility("hidden")]] extern constinit thread_local Stream thread_stream;

[[gnu::cold]] void initialise(Stream& g);

// The stream of the thread, which may not have been set up.
inline Stream& thread_stream_as_is()
{
    Stream* g = &thread_stream;
    asm("" : "+r"(g));  // keep the address; the compiler would look it up again at the next use
    return *g;
}

// The same, set up.
inline Stream& stream()
{
    Stream& g = thread_stream_as_is();
    if (!g.initialised) [[unlikely]]
        initialise(g);
    return g;
}

int32_t clock_seed();
[[gnu::cold]] void seed_from_clock(Stream& g);

// The same, ready to draw. A stream that is seeded has been set up.
inline Stream& seeded_stream()
{
    Stream& g = thread_stream_as_is();
    if (!g.seeded) [[unlikely]]
        seed_from_clock(stream());
    return g;
}

inline bool is_true(int32_t logical) { return (logical & 1) != 0; }

// ---- congruential generators ------------------------------------------------------------------------------

// The state of a block into which a program may have written.
[[gnu::cold]] int32_t state_by_hand(double state);

// Whether integer seed and state agree on a state of the generator, as every call leaves them.
inline bool is_in_step(const orvel_r2ncom& c)
{
    return c.seed >= 1 && c.seed < static_cast<int32_t>(modulus) && static_cast<double>(c.seed) == c.state;
}

inline uint32_t state_of(const orvel_r2ncom& c)
{
    if (!is_in_step(c)) [[unlikely]]
        return static_cast<uint32_t>(state_by_hand(c.state));
    return static_cast<uint32_t>(c.seed);
}

inline void keep_state(orvel_r2ncom& c, uint32_t s)
{
    c.seed = static_cast<int32_t>(s);
    c.state = static_cast<double>(s);
}

// a s mod 2^31 - 1, for a state of 1..2^31 - 2; the residue is never 0.
constexpr uint32_t advanced(uint32_t s, uint32_t a)
{
    const uint64_t p = uint64_t{s} * a;
    const uint64_t once = (p & modulus) + (p >> 31);
    return static_cast<uint32_t>((once & modulus) + (once >> 31));
}

// Index of the multiplier.
constexpr int which_multiplier(int32_t option) { return option >= 1 && option <= 6 ? (option - 1) / 2 : 0; }

constexpr bool is_shuffled(int32_t option) { return option == 2 || option == 4 || option == 6; }

template <class T>
inline constexpr double scale = sizeof(T) == sizeof(float) ? static_cast<double>(single_scale) : reciprocal;

template <class T>
T* shuffle_table(orvel_r2ncom& c)
{
    if constexpr (sizeof(T) == sizeof(float))
        return c.single_table;
    else
        return c.double_table;
}

template <class T>
int32_t& shuffle_ready(orvel_r2ncom& c)
{
    return sizeof(T) == sizeof(float) ? c.single_ready : c.double_ready;
}

template <class T>
T next_congruential(orvel_r2ncom& c)
{
    const uint32_t s = advanced(state_of(c), multipliers[which_multiplier(c.option)]);
    keep_state(c, s);
    return static_cast<T>(static_cast<double>(s) * scale<T>);
}

inline constexpr int table_length = 128;

// The entry that the new state points to; the state's own number takes its place.
template <class T>
T exchange(T* table, uint32_t s)
{
    T& entry = table[s % table_length];
    const T r = entry;
    entry = static_cast<T>(static_cast<double>(s) * scale<T>);
    return r;
}

template <class T>
T next_shuffled(orvel_r2ncom& c)
{
    const uint32_t s = advanced(state_of(c), multipliers[which_multiplier(c.option)]);
    keep_state(c, s);
    return exchange(shuffle_table<T>(c), s);
}

template <class T>
void fill_congruential(orvel_r2ncom& c, int64_t n, T* r);
template <class T>
void fill_shuffled(orvel_r2ncom& c, int64_t n, T* r);

// ---- shift register and twisters --------------------------------------------------------------------------

// A step at indices that are in range.
template <class T>
T next_of_register(orvel_r2ncom& c)
{
    int32_t& word = c.words[c.first - 1];
    const int32_t value = word & 0x7FFFFFFF;
    word ^= c.words[c.second - 1];
    c.first = c.first == register_length ? 1 : c.first + 1;
    c.second = c.second == register_length ? 1 : c.second + 1;
    keep_state(c, static_cast<uint32_t>(value));
    return static_cast<T>(static_cast<double>(value) * scale<T>);
}

template <class T>
void fill_register(orvel_r2ncom& c, int64_t n, T* r);

inline double deviate(uint32_t word) { return (static_cast<double>(tempered(word)) + 0.5) / 4294967295.0; }
inline double deviate(uint64_t word)
{
    return static_cast<double>(static_cast<int64_t>(tempered(word) >> 11)) * 0x1p-53;
}

// Numbers of the twister of words of this kind; one that is not ready is seeded from `seed`.
template <class Word, class T>
void fill_twister(Stream& g, int64_t n, T* r, int32_t seed);

}  // namespace orvel::random
