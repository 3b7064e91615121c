// random/levels.cpp - the choice among the hot loops
#include <atomic>

#include "random/isa/loops.h"

namespace orvel::random {

namespace {

const Loops* table_of(int level)
{
#ifdef __x86_64__
    __builtin_cpu_init();
    if (level == 4 && __builtin_cpu_supports("x86-64-v4")) return &loops_x86_64_v4;
    if (level == 3 && __builtin_cpu_supports("x86-64-v3")) return &loops_x86_64_v3;
    return level == 1 ? &loops_x86_64 : nullptr;
#else
    return level == 1 ? &loops_native : nullptr;
#endif
}

// Threads that meet here at the first call choose the same.
constinit std::atomic<const Loops*> chosen = nullptr;

[[gnu::cold]] const Loops& choose()
{
    const Loops* best = nullptr;
    for (int level = 4; best == nullptr; --level) best = table_of(level);
    const Loops* none = nullptr;
    chosen.compare_exchange_strong(none, best);
    return *chosen.load();
}

}  // namespace

const Loops& loops()
{
    const Loops* table = chosen.load(std::memory_order_relaxed);
    return table != nullptr ? *table : choose();
}

bool force_level(int level)
{
    const Loops* table = table_of(level);
    if (table != nullptr) chosen.store(table);
    return table != nullptr;
}

}  // namespace orvel::random
