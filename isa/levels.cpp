// isa/levels.cpp - choice of the instruction-set level
#include "isa/levels.h"

#ifdef __x86_64__
#include <cpuid.h>
#endif

#include <cstring>

namespace orvel::isa {

constinit std::atomic<int> chosen_level{0};

namespace {

struct Name {
    char text[16] = {};
};

// A dash is no letter of the identifiers that stand for the levels.
consteval Name name_of(const char* identifier)
{
    Name name;
    for (int k = 0; identifier[k] != 0; ++k) name.text[k] = identifier[k] == '_' ? '-' : identifier[k];
    return name;
}

#define ORVEL_LEVEL_NAME(level) name_of(#level),
constexpr Name names[] = {ORVEL_FOR_EACH_LEVEL(ORVEL_LEVEL_NAME)};

#ifdef __x86_64__

// What a compiler cannot be asked for under a name that all of them know.
bool has_small_extensions()
{
    constexpr unsigned movbe = 1u << 22, f16c = 1u << 29, lzcnt = 1u << 5;
    unsigned a, b, c = 0, d, extended_c = 0;
    return __get_cpuid(1, &a, &b, &c, &d) != 0 && __get_cpuid(0x80000001, &a, &b, &extended_c, &d) != 0 &&
           (c & movbe) != 0 && (c & f16c) != 0 && (extended_c & lzcnt) != 0;
}

// Each level has the instructions of those before it. What the built-in function affirms, the system
// supports, too.
int found_best()
{
    __builtin_cpu_init();
    const bool v3 = __builtin_cpu_supports("avx2") && __builtin_cpu_supports("bmi") &&
                    __builtin_cpu_supports("bmi2") && __builtin_cpu_supports("fma") && has_small_extensions();
    const bool v4 = v3 && __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw") &&
                    __builtin_cpu_supports("avx512cd") && __builtin_cpu_supports("avx512dq") &&
                    __builtin_cpu_supports("avx512vl");
    return v4 ? 2 : v3 ? 1 : 0;
}

#else

int found_best() { return 0; }

#endif

// The processor is asked once: in a virtual machine that takes tens of microseconds.
int best()
{
    static const int level = found_best();
    return level;
}

// Before the constructors of the program, so that no call meets another level than the next one.
[[gnu::constructor(101)]] void choose() { chosen_level.store(best()); }

}  // namespace

int level_count() { return best() + 1; }

const char* level_name(int k) { return names[k].text; }

bool use_level(const char* name)
{
    if (name == nullptr) {
        chosen_level.store(best());
        return true;
    }
    for (int k = 0; k < level_count(); ++k)
        if (std::strcmp(names[k].text, name) == 0) {
            chosen_level.store(k);
            return true;
        }
    return false;
}

}  // namespace orvel::isa
