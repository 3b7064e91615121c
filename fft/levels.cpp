// fft/levels.cpp - the tables of hot loops of each instruction-set level
#include "frame/levels.h"
#include "fft/short.h"
#include "fft/transform.h"

namespace orvel::fft {

#define ORVEL_FFT_LOOPS(isa)                  \
    namespace isa {                           \
    extern const PassLoop power_pass;         \
    extern const PassLoop small_odd_pass;     \
    extern const PassLoop general_odd_pass;   \
    extern const PassLoop block_pass;         \
    extern const RootLoop root_loop;          \
    extern const HalvesLoops halves_loops;    \
    extern const OddRealLoops odd_real_loops; \
    extern const ShortTables short_tables;    \
    }
#define ORVEL_POWER_PASS(isa) &isa::power_pass,
#define ORVEL_SMALL_ODD_PASS(isa) &isa::small_odd_pass,
#define ORVEL_GENERAL_ODD_PASS(isa) &isa::general_odd_pass,
#define ORVEL_BLOCK_PASS(isa) &isa::block_pass,
#define ORVEL_ROOT_LOOP(isa) &isa::root_loop,
#define ORVEL_HALVES_LOOPS(isa) &isa::halves_loops,
#define ORVEL_ODD_REAL_LOOPS(isa) &isa::odd_real_loops,
#define ORVEL_SHORT_TABLES(isa) &isa::short_tables,

ORVEL_FOR_EACH_LEVEL(ORVEL_FFT_LOOPS)

void run_pass(const PassLoop& loop, const Pass<float>& pass) { loop.s(pass); }
void run_pass(const PassLoop& loop, const Pass<double>& pass) { loop.d(pass); }

const PassLoop& pass_loop(int64_t factor)
{
    static constexpr const PassLoop* powers[] = {ORVEL_FOR_EACH_LEVEL(ORVEL_POWER_PASS)};
    static constexpr const PassLoop* small_odd[] = {ORVEL_FOR_EACH_LEVEL(ORVEL_SMALL_ODD_PASS)};
    static constexpr const PassLoop* general_odd[] = {ORVEL_FOR_EACH_LEVEL(ORVEL_GENERAL_ODD_PASS)};
    const auto& passes = factor % 2 == 0 ? powers : is_small_odd(factor) ? small_odd : general_odd;
    return *frame::at_level(passes);
}

const PassLoop& block_loop()
{
    static constexpr const PassLoop* passes[] = {ORVEL_FOR_EACH_LEVEL(ORVEL_BLOCK_PASS)};
    return *frame::at_level(passes);
}

const RootLoop& root_loop()
{
    static constexpr const RootLoop* tables[] = {ORVEL_FOR_EACH_LEVEL(ORVEL_ROOT_LOOP)};
    return *frame::at_level(tables);
}

const HalvesLoops& halves_loops()
{
    static constexpr const HalvesLoops* tables[] = {ORVEL_FOR_EACH_LEVEL(ORVEL_HALVES_LOOPS)};
    return *frame::at_level(tables);
}

const OddRealLoops& odd_real_loops()
{
    static constexpr const OddRealLoops* tables[] = {ORVEL_FOR_EACH_LEVEL(ORVEL_ODD_REAL_LOOPS)};
    return *frame::at_level(tables);
}

const ShortTables* const short_tables[] = {ORVEL_FOR_EACH_LEVEL(ORVEL_SHORT_TABLES)};

}  // namespace orvel::fft
