// tests/hostile/description.h - what tools/drivers.py writes about each routine, from the public headers
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <utility>
#include <vector>

namespace hostile {

enum class Role { in, out, inout, in_out, scratch, function };
enum class Kind { size, leading, increment, choice, other };

// Elements of an array that a routine may touch: blocks of so many elements, their beginnings so many apart.
struct Shape {
    double blocks, length, stride;
};

struct Argument {
    const char* name;
    // i, l: integers; s, d, c, z: numbers; t: text; p, q: packets; f, g: functions; a: of the host
    char type;
    Role role;
    Kind kind;
    const char* choices;
    int may_be;         // another argument that may be the same array, or -1
    int equal[2];       // then the first of these arguments has to equal the second
    bool is_ascending;  // by its meaning
    bool is_array;
    Shape (*shape)(const double* values);  // null for a scalar, and for a text, whose length follows
};

// An error that says that storage cannot be had.
struct Refusal {
    int code;
    const char* text;
};

struct Routine {
    const char *name, *header;
    void (*call)(void* const* arguments, void* result);
    char result;  // its type, v for none
    int count, texts;
    const Argument* arguments;
    bool is_front;               // has a worker, which takes scratch as arguments
    bool is_same_on_all_levels;  // by tests/same_on_all_levels.txt
    int refusal_count;
    const Refusal* refusals;
};

const std::vector<Routine>& routines();

// The exported blocks of state of the calling thread.
struct Block {
    void* address;
    std::size_t size;
};
std::vector<Block> blocks();

// ---- calls by addresses ------------------------------------------------------------------------------
// What is passed by value is read there; lengths of texts are the address itself.

template <class T>
T passed(void* argument)
{
    if constexpr (std::is_same_v<T, std::size_t>)
        return reinterpret_cast<std::size_t>(argument);
    else if constexpr (std::is_pointer_v<T>)
        return reinterpret_cast<T>(argument);
    else
        return *static_cast<T*>(argument);
}

template <class R, class... A, std::size_t... k>
void apply(R (*routine)(A...), [[maybe_unused]] void* const* a, void* result, std::index_sequence<k...>)
{
    if constexpr (std::is_void_v<R>)
        routine(passed<A>(a[k])...);
    else
        *static_cast<R*>(result) = routine(passed<A>(a[k])...);
}
template <class R, class... A>
void apply(R (*routine)(A...), void* const* a, void* result)
{
    apply(routine, a, result, std::index_sequence_for<A...>());
}

template <auto routine>
void call(void* const* arguments, void* result)
{
    apply(routine, arguments, result);
}

}  // namespace hostile
