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
        fill_twister32(g, n, r, g.place32->ready == 1 ? 21641 : c.seed);
    else if (option == twister64)
        fill_twister64(g, n, r, g.place64->ready == 1 ? 19650218 : c.seed);
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
T rnunf()
{
    T r;
    fill(seeded_stream(), 1, &r);
    return r;
}

}  // namespace

}  // namespace orvel::random

ORVEL_EXPORT(RNUN, rnun_, 2, orvel::random::rnun<float>);
ORVEL_EXPORT(DRNUN, drnun_, 2, orvel::random::rnun<double>);
ORVEL_EXPORT(RNUNF, rnunf_, 0, orvel::random::rnunf<float>);
ORVEL_EXPORT(DRNUNF, drnunf_, 0, orvel::random::rnunf<double>);
