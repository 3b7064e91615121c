// random/state.cpp - RNOPT, RNOPG, RNSET, RNGET: option and seed; the blocks of state and their first values
#include "frame/export.h"
#include "frame/routine.h"
#include "random/random.h"
#include "util/util.h"

extern "C" {
constinit __thread orvel_r2ncom R2NCOM ORVEL_VISIBLE = {};
constinit __thread orvel_mt_state1 MT32_STATE1 ORVEL_VISIBLE = {0, 626};
constinit __thread orvel_mt32_state2 MT32_STATE2 ORVEL_VISIBLE = {};
constinit __thread orvel_mt_state1 MT64_STATE1 ORVEL_VISIBLE = {0, 314};
constinit __thread orvel_mt64_state2 MT64_STATE2 ORVEL_VISIBLE = {};
extern __thread orvel_r2ncom r2ncom_ ORVEL_ALIAS(R2NCOM);
extern __thread orvel_mt_state1 mt32_state1_ ORVEL_ALIAS(MT32_STATE1);
extern __thread orvel_mt32_state2 mt32_state2_ ORVEL_ALIAS(MT32_STATE2);
extern __thread orvel_mt_state1 mt64_state1_ ORVEL_ALIAS(MT64_STATE1);
extern __thread orvel_mt64_state2 mt64_state2_ ORVEL_ALIAS(MT64_STATE2);
}

namespace orvel::random {

constinit thread_local Stream thread_stream{};

// 2^-31 (1 - AMACH(3)), the largest single number that gives less than 1 for 2^31.
static_assert(static_cast<double>(single_scale) == 0x1p-31 - 0x1p-55);

void initialise(Stream& g)
{
    R2NCOM.modulus = modulus;
    R2NCOM.reciprocal = reciprocal;
    R2NCOM.scale = single_scale;
    R2NCOM.option = 1;
    R2NCOM.double_ready = R2NCOM.single_ready = R2NCOM.words_ready = 0;
    MT32_STATE1.ready = MT64_STATE1.ready = 0;
    g = {true, false, &R2NCOM, &MT32_STATE1, &MT32_STATE2, &MT64_STATE1, &MT64_STATE2};
}

int32_t clock_seed()
{
    const util::TimeOfDay t = util::time_of_day();
    const int32_t seed = t.hour * 10000 + t.minute * 100 + t.second + 1;
    return seed < 2 ? 123457 : seed;
}

void seed_from_clock(Stream& g)
{
    keep_state(*g.common, static_cast<uint32_t>(clock_seed()));
    g.seeded = true;
}

int32_t state_by_hand(double state)
{
    if (!(state >= 1.0 && state < static_cast<double>(modulus))) return 1;
    const auto whole = static_cast<int32_t>(state);
    return static_cast<double>(whole) == state ? whole : 1;
}

namespace {

void r1int(const int32_t* iarg)
{
    Stream& g = stream();
    if (*iarg == -1)
        g.seeded = true;
    else if (*iarg > 0)
        g.common->option = *iarg;
    else if (*iarg == 0 && !g.seeded)
        seed_from_clock(g);
}

void r1clk(int32_t* iseed) { *iseed = clock_seed(); }

void rnopt(const int32_t* iopt)
{
    Routine<float, "RNOPT"> me;
    int32_t code = 1;
    util::c1iarg(me.state(), *iopt, "IOPT", 1, 9, code);
    if (me.failed()) return;
    stream().common->option = *iopt;
}

void rnopg(int32_t* iopt)
{
    Routine<float, "RNOPG">::visit(frame::state());
    *iopt = stream().common->option;
}

void rnset(const int32_t* iseed)
{
    Routine<float, "RNSET">::visit(frame::state());
    const int32_t seed = *iseed;
    if (seed == 0) {
        keep_state(*stream().common, static_cast<uint32_t>(clock_seed()));
    } else if (seed < 0 || seed >= static_cast<int32_t>(modulus)) {
        seeded_stream();
    } else {
        Stream& g = stream();
        g.seeded = true;
        keep_state(*g.common, static_cast<uint32_t>(seed));
    }
}

void rnget(int32_t* iseed)
{
    Routine<float, "RNGET">::visit(frame::state());
    *iseed = seeded_stream().common->seed;
}

}  // namespace

}  // namespace orvel::random

ORVEL_EXPORT(R1INT, r1int_, 1, orvel::random::r1int);
ORVEL_EXPORT(R1CLK, r1clk_, 1, orvel::random::r1clk);
ORVEL_EXPORT(RNOPT, rnopt_, 1, orvel::random::rnopt);
ORVEL_EXPORT(RNOPG, rnopg_, 1, orvel::random::rnopg);
ORVEL_EXPORT(RNSET, rnset_, 1, orvel::random::rnset);
ORVEL_EXPORT(RNGET, rnget_, 1, orvel::random::rnget);
