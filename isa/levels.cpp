// isa/levels.cpp - choice of the instruction-set level
#include "isa/levels.h"

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

// Each level has the instructions of those before it.
int best()
{
#ifdef __x86_64__
    __builtin_cpu_init();
    if (__builtin_cpu_supports("x86-64-v4")) return 2;
    if (__builtin_cpu_supports("x86-64-v3")) return 1;
#endif
    return 0;
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
