// random/generate.cpp - RNUN, RNUNF: uniform numbers of the generator that the thread has chosen
#include "frame/export.h"
#include "frame/routine.h"
#include "random/random.h"
#include "util/util.h"

namespace orvel::random {

namespace {

template <class T>
void fill(Stream& g, int64_t n, T* r)
{
    orvel_r2ncom& c = *g.common;
    const int32_t option = c.option;
    if (is_shuffled(option))
        fill_shuffled(c, n, r);
    else if (option == shift_register)
        fill_register(c, n, r);
    else if (option == twister32)
        fill_twister<uint32_t>(g, n, r, g.place32->ready == 1 ? Twister<uint32_t>::default_seed : c.seed);
    else if (option == twister64)
        fill_twister<uint64_t>(g, n, r, g.place64->ready == 1 ? Twister<uint64_t>::default_seed : c.seed);
    else
        fill_congruential(c, n, r);
}

// Puts its name on the stack for the error only.
template <class T>
[[gnu::cold, gnu::noinline]] void refuse(int32_t nr)
{
    Routine<T, "RNUN"> me;
    int32_t code = 1;
    util::c1iarg(me.state(), nr, "NR", 1, 0, code);
}

template <class T>
void rnun(const int32_t* nr, T* r)
{
    if (*nr < 1) [[unlikely]]
        return refuse<T>(*nr);
    fill(seeded_stream(), *nr, r);
}

template <class T>
[[gnu::noinline]] T one_of_fill()
{
    T r;
    fill(seeded_stream(), 1, &r);
    return r;
}

// True when a word can be taken as it is: the twister is ready and its position within the block.
bool is_at_hand(const orvel_mt_state1& place, int32_t length)
{
    return place.ready == 1 && place.position >= 1 && place.position <= length;
}

bool is_in_register(int32_t index) { return index >= 1 && index <= register_length; }

// The common cases without a loop, and without a call that would need registers saved.
template <class T>
T rnunf()
{
    Stream& g = thread_stream_as_is();
    if (!g.seeded) [[unlikely]]
        return one_of_fill<T>();
    orvel_r2ncom& c = *g.common;
    switch (c.option) {
        case 2:
        case 4:
        case 6:
            if (is_true(shuffle_ready<T>(c)) && is_in_step(c)) return next_shuffled<T>(c);
            break;
        case shift_register:
            if (is_true(c.words_ready) && is_in_register(c.first) && is_in_register(c.second))
                return next_of_register<T>(c);
            break;
        case twister32:
            if (is_at_hand(*g.place32, Twister<uint32_t>::length))
                return static_cast<T>(deviate(g.words32->word[g.place32->position++ - 1]));
            break;
        case twister64:
            if (is_at_hand(*g.place64, Twister<uint64_t>::length))
                return static_cast<T>(deviate(g.words64->word[g.place64->position++ - 1]));
            break;
        default:
            if (is_in_step(c)) return next_congruential<T>(c);
    }
    return one_of_fill<T>();
}

}  // namespace

}  // namespace orvel::random

ORVEL_EXPORT_REALS(RNUN, rnun_, DRNUN, drnun_, 2, orvel::random::rnun);
ORVEL_EXPORT_REALS(RNUNF, rnunf_, DRNUNF, drnunf_, 0, orvel::random::rnunf);
