// frame/levels.h - the instruction-set level of the hot loops, one choice for all families
//
// A family has a table of its loops for each level, lowest first, and takes the one `at_level`:
//
//     #define DECLARE(isa) namespace isa { extern const Loops table; }
//     #define ADDRESS(isa) &isa::table,
//     ORVEL_FOR_EACH_LEVEL(DECLARE)
//     const Loops* const tables[] = {ORVEL_FOR_EACH_LEVEL(ADDRESS)};
//     const Loops& loops() { return *frame::at_level(tables); }
#pragma once

#include <atomic>

#ifdef __x86_64__
#define ORVEL_FOR_EACH_LEVEL(visit) visit(x86_64) visit(x86_64_v3) visit(x86_64_v4)
#else
#define ORVEL_FOR_EACH_LEVEL(visit) visit(native)
#endif

namespace orvel::frame {

extern constinit std::atomic<int> chosen_level;
[[gnu::cold]] int choose_level();

// Position of the best level of the machine, or of the forced one; chosen at the first call.
inline int level()
{
    const int chosen = chosen_level.load(std::memory_order_relaxed);
    return chosen >= 0 ? chosen : choose_level();
}

#define ORVEL_COUNT_LEVEL(isa) +1
inline constexpr int levels_built = 0 ORVEL_FOR_EACH_LEVEL(ORVEL_COUNT_LEVEL);

// The only place that indexes by level, so that a forced level is the one that runs in every family.
template <class Entry, int N>
inline const Entry& at_level(const Entry (&entries)[N])
{
    static_assert(N == levels_built);
    return entries[level()];
}

// For tests: the levels that this machine has, lowest first, and a way to force one. A null name goes back to
// the best. Returns whether the level exists here.
int level_count();
const char* level_name(int k);
bool force_level(const char* name);

}  // namespace orvel::frame
