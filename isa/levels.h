// isa/levels.h - the instruction-set levels, and tables of hot loops for each of them
//
// A family names each of its tables once, in the header of its loops,
//
//     ORVEL_LEVEL_TABLE(ForReals<Updates>, update_loops);
//
// the file of the loops, which is compiled for each level, defines the table of its level,
//
//     const ForReals<Updates> ORVEL_ISA::update_loops = {updates<float>, updates<double>};
//
// and other files call update_loops() for the table of the level in use. Another thread may change that level
// between two calls of it: what depends on sizes in a table takes them and its loops from one look.
#pragma once

// The levels, lowest first: visit(level, arguments...).
#ifdef __x86_64__
#define ORVEL_FOR_EACH_LEVEL(visit, ...)                                                 \
    visit(x86_64 __VA_OPT__(, ) __VA_ARGS__) visit(x86_64_v3 __VA_OPT__(, ) __VA_ARGS__) \
        visit(x86_64_v4 __VA_OPT__(, ) __VA_ARGS__)
#else
#define ORVEL_FOR_EACH_LEVEL(visit, ...) visit(native __VA_OPT__(, ) __VA_ARGS__)
#endif

// The same for loops that gain nothing from the middle level, which takes those of the lowest.
#ifdef __x86_64__
#define ORVEL_FOR_EACH_OUTER_LEVEL(visit, ...)                                        \
    visit(x86_64 __VA_OPT__(, ) __VA_ARGS__) visit(x86_64 __VA_OPT__(, ) __VA_ARGS__) \
        visit(x86_64_v4 __VA_OPT__(, ) __VA_ARGS__)
#else
#define ORVEL_FOR_EACH_OUTER_LEVEL ORVEL_FOR_EACH_LEVEL
#endif

#define ORVEL_DECLARE_TABLE(level, Type, name) \
    namespace level {                          \
    extern const Type name;                    \
    }

namespace orvel::isa {

// Loops for the scalar types that a family serves; see of_type.
template <template <class> class Loops>
struct ForReals {
    Loops<float> s;
    Loops<double> d;
};
template <template <class> class Loops>
struct ForComplex {
    Loops<float> c;
    Loops<double> z;
};
template <template <class> class Real, template <class> class Complex = Real>
struct ForAll {
    Real<float> s;
    Real<double> d;
    Complex<float> c;
    Complex<double> z;
};

}  // namespace orvel::isa

#ifdef ORVEL_ISA  // a file of hot loops: nothing in it may be merged with what another level has compiled

#define ORVEL_TABLE_OF(for_each, Type, name) ORVEL_DECLARE_TABLE(ORVEL_ISA, Type, name) static_assert(true)

#else

#include <atomic>
#include <complex>
#include <cstdint>
#include <type_traits>

#define ORVEL_TABLE_ADDRESS(level, name) &level::name,

#define ORVEL_TABLE_OF(for_each, Type, name)                                           \
    for_each(ORVEL_DECLARE_TABLE, Type, name);                                         \
    inline const Type& name()                                                          \
    {                                                                                  \
        static constexpr const Type* tables[] = {for_each(ORVEL_TABLE_ADDRESS, name)}; \
        return *::orvel::isa::at_level(tables);                                        \
    }                                                                                  \
    static_assert(true)

namespace orvel::isa {

extern constinit std::atomic<int> chosen_level;

// Position of the level in use: the best one of the machine, unless another has been asked for.
inline int level() { return chosen_level.load(std::memory_order_relaxed); }

#define ORVEL_COUNT_LEVEL(level) +1
inline constexpr int levels_built = 0 ORVEL_FOR_EACH_LEVEL(ORVEL_COUNT_LEVEL);

// The only place that indexes by level, so that the level in use is the one that runs in every family.
template <class Entry, int N>
inline const Entry& at_level(const Entry (&entries)[N])
{
    static_assert(N == levels_built);
    return entries[level()];
}

// The loops for a scalar type, out of a table for several.
template <class T, class Table>
inline const auto& of_type(const Table& table)
{
    if constexpr (std::is_same_v<T, float>)
        return table.s;
    else if constexpr (std::is_same_v<T, double>)
        return table.d;
    else if constexpr (std::is_same_v<T, std::complex<float>>)
        return table.c;
    else if constexpr (std::is_same_v<T, std::complex<double>>)
        return table.z;
    else
        return table.i;
}

// The levels that this machine has, lowest first. Names are those of compilers: x86-64-v3.
int level_count();
const char* level_name(int k);

// All threads use the level from their next look at a table on; a null name goes back to the best. False,
// and nothing changes, for a level that is unknown or that the machine does not have.
bool use_level(const char* name);

}  // namespace orvel::isa

#endif

#define ORVEL_LEVEL_TABLE(Type, name) ORVEL_TABLE_OF(ORVEL_FOR_EACH_LEVEL, Type, name)
#define ORVEL_OUTER_LEVEL_TABLE(Type, name) ORVEL_TABLE_OF(ORVEL_FOR_EACH_OUTER_LEVEL, Type, name)
