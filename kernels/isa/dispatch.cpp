// kernels/isa/dispatch.cpp - choice of the instruction-set level
#include <atomic>
#include <cstring>

#include "kernels/isa/loops.h"

namespace orvel::kernels {

#define ORVEL_ISA_LEVEL(name, number)                       \
    namespace name {                                        \
    extern const Level1Updates level1_updates;              \
    extern const Level1Sums level1_sums;                    \
    extern const Level1Searches level1_searches;            \
    extern const Level2Loops level2;                        \
    extern const RealLevel3<float> gemm_s;                  \
    extern const RealLevel3<double> gemm_d;                 \
    extern const ComplexLevel3<float> gemm_c;               \
    extern const ComplexLevel3<double> gemm_z;              \
    extern const Triangles<float> triangles_s;              \
    extern const Triangles<double> triangles_d;             \
    }                                                       \
    constexpr Loops name##_loops = {#name,                  \
                                    number,                 \
                                    &name::level1_updates,  \
                                    &name::level1_sums,     \
                                    &name::level1_searches, \
                                    &name::level2,          \
                                    &name::gemm_s,          \
                                    &name::gemm_d,          \
                                    &name::gemm_c,          \
                                    &name::gemm_z,          \
                                    &name::triangles_s,     \
                                    &name::triangles_d};

#ifdef __x86_64__
ORVEL_ISA_LEVEL(x86_64, 0)
ORVEL_ISA_LEVEL(x86_64_v3, 1)
ORVEL_ISA_LEVEL(x86_64_v4, 2)
#else
ORVEL_ISA_LEVEL(native, 0)
#endif

namespace {

struct Level {
    Loops loops;
    bool (*present)();
};

// Lowest first.
const Level levels[] = {
#ifdef __x86_64__
    {x86_64_loops, [] { return true; }},
    {x86_64_v3_loops, [] { return __builtin_cpu_supports("x86-64-v3") != 0; }},
    {x86_64_v4_loops, [] { return __builtin_cpu_supports("x86-64-v4") != 0; }},
#else
    {native_loops, [] { return true; }},
#endif
};

std::atomic<const Loops*> active{nullptr};

const Loops* best()
{
    const Loops* found = nullptr;
    for (const Level& level : levels)
        if (level.present()) found = &level.loops;
    return found;
}

}  // namespace

const Loops& loops()
{
    const Loops* chosen = active.load(std::memory_order_relaxed);
    if (chosen == nullptr) [[unlikely]] {
        chosen = best();
        active.store(chosen, std::memory_order_relaxed);
    }
    return *chosen;
}

int level_count()
{
    int count = 0;
    for (const Level& level : levels) count += level.present() ? 1 : 0;
    return count;
}

const char* level_name(int k) { return levels[k].loops.level; }

bool force_level(const char* name)
{
    const Loops* forced = name == nullptr ? best() : nullptr;
    for (const Level& level : levels)
        if (name != nullptr && level.present() && std::strcmp(level.loops.level, name) == 0)
            forced = &level.loops;
    if (forced == nullptr) return false;
    active.store(forced, std::memory_order_relaxed);
    return true;
}

}  // namespace orvel::kernels
