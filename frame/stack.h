// frame/stack.h - push and pop of the routine stack
#pragma once

#include <cstring>

#include "frame/state.h"

namespace orvel::frame {

// A routine name as the stack holds it: 32 characters, blank-padded.
struct alignas(16) PaddedName {
    char text[name_room];

    constexpr explicit PaddedName(std::string_view name)
    {
        std::fill_n(text, name_room, ' ');
        std::copy_n(name.data(), std::min(name.size(), sizeof text), text);
    }
};

// Names are stored and compared at every call, as two vectors.
typedef uint64_t Half __attribute__((vector_size(name_room / 2)));

inline bool same_name(const char* a, const char* b)
{
    const auto load = [](const char* from) {
        Half half;
        std::memcpy(&half, from, sizeof half);
        return half;
    };
    const Half difference = (load(a) ^ load(b)) | (load(a + sizeof(Half)) ^ load(b + sizeof(Half)));
    return (difference[0] | difference[1]) == 0;
}

[[noreturn, gnu::cold]] void stack_overflow(State& s);

// The pop with everything that can happen: misuse, an error to pass up, to print, to stop on.
[[gnu::cold]] void judge_and_pop(State& s, const PaddedName& name);

inline void discard_record_above(State& s, int32_t level)
{
    if (level < s.errors->maxlev) s.errors->ertype[level] = s.errors->ercode[level] = -1;
}

// Returns the level of the name.
inline int32_t push(State& s, const PaddedName& name)
{
    const int32_t level = s.errors->level;
    if (level >= s.errors->maxlev || level < 1 || level >= deepest_level) [[unlikely]]
        stack_overflow(s);
    std::memcpy(s.text->rname[level], name.text, sizeof name.text);
    s.errors->ertype[level] = s.errors->ercode[level] = 0;
    return s.errors->level = level + 1;
}

// Push and pop in one, for work that can neither fail nor call out: nobody could see the stack in between.
inline void push_and_pop(State& s, const PaddedName& name)
{
    orvel_ercom1& e = *s.errors;
    const int32_t level = e.level, last = e.maxlev;
    if (level >= last || level < 1 || level >= deepest_level) [[unlikely]]
        stack_overflow(s);
    std::memcpy(s.text->rname[level], name.text, sizeof name.text);
    e.ertype[level] = e.ercode[level] = 0;
    if (level + 1 < last) e.ertype[level + 1] = e.ercode[level + 1] = -1;
}

// Pops a name that matches `level` without an error; anything else is left to judge_and_pop.
inline bool pop_quickly(State& s, const PaddedName& name, int32_t level)
{
    if (s.errors->level != level || type_at(s, level) != 0 || !same_name(name.text, s.text->rname[level - 1]))
        [[unlikely]]
        return false;
    discard_record_above(s, level);
    s.errors->level = level - 1;
    return true;
}

inline void pop(State& s, const PaddedName& name)
{
    const int32_t level = s.errors->level;
    if (level < 2 || level > deepest_level || !pop_quickly(s, name, level)) [[unlikely]]
        judge_and_pop(s, name);
}

}  // namespace orvel::frame
