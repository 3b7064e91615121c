// temporary
#pragma once
#ifdef ORVEL_ISA
#define ORVEL_LEVEL_TABLE(Type, name) \
    namespace ORVEL_ISA {             \
    extern const Type name;           \
    }                                 \
    static_assert(true)
#else
#include <type_traits>
#include "frame/levels.h"
#define ORVEL_DECLARE_TABLE(level, Type, name) \
    namespace level {                          \
    extern const Type name;                    \
    }
#ifdef __x86_64__
#define ORVEL_FOR_EACH_LEVEL2(visit, ...)                                                \
    visit(x86_64 __VA_OPT__(, ) __VA_ARGS__) visit(x86_64_v3 __VA_OPT__(, ) __VA_ARGS__) \
        visit(x86_64_v4 __VA_OPT__(, ) __VA_ARGS__)
#else
#define ORVEL_FOR_EACH_LEVEL2(visit, ...) visit(native __VA_OPT__(, ) __VA_ARGS__)
#endif
#define ORVEL_TABLE_ADDRESS(level, name) &level::name,
#define ORVEL_LEVEL_TABLE(Type, name)                                                               \
    ORVEL_FOR_EACH_LEVEL2(ORVEL_DECLARE_TABLE, Type, name)                                          \
    inline const Type& name()                                                                       \
    {                                                                                               \
        static constexpr const Type* tables[] = {ORVEL_FOR_EACH_LEVEL2(ORVEL_TABLE_ADDRESS, name)}; \
        return *::orvel::frame::at_level(tables);                                                   \
    }                                                                                               \
    static_assert(true)
#endif
namespace orvel::isa {
template <template <class> class Loops>
struct ForReals {
    Loops<float> s;
    Loops<double> d;
};
#ifndef ORVEL_ISA
template <class T, class Table>
inline const auto& of_type(const Table& table)
{
    if constexpr (std::is_same_v<T, float>)
        return table.s;
    else
        return table.d;
}
#endif
}  // namespace orvel::isa
