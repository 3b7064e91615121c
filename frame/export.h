// frame/export.h - the stamps that give a template its public names
#pragma once

#include <cstdint>
#include <tuple>
#include <type_traits>

#define ORVEL_VISIBLE __attribute__((visibility("default")))
#define ORVEL_ALIAS(UPPER) __attribute__((alias(#UPPER), visibility("default")))

namespace orvel {

template <class F>
struct Signature;

template <class R, class... A>
struct Signature<R(A...)> {
    using Result = R;
    template <std::size_t K>
    using Argument = std::tuple_element_t<K, std::tuple<A...>>;
};

namespace frame {

struct State;
State& state();

}  // namespace frame

// An argument of an exported routine as a parameter of the function behind it: what that takes by value is
// read, counts perhaps as 64 bits.
template <class P, class A>
[[gnu::always_inline]] inline P given(A argument)
{
    if constexpr (std::is_pointer_v<A> && !std::is_pointer_v<P>) {
        using V = std::remove_const_t<std::remove_pointer_t<A>>;
        static_assert(std::is_same_v<P, V> || (std::is_same_v<P, int64_t> && std::is_same_v<V, int32_t>));
        return *argument;
    } else {
        return argument;
    }
}

// Calls the function behind an exported routine with its arguments, and with the state of the thread in front
// where the function takes it.
template <auto function, class F = decltype(function)>
struct Stamp {
    template <class... A>
    [[gnu::always_inline]] static auto call(A... arguments)
    {
        return function(arguments...);
    }
};
template <auto function, class R, class... P>
struct Stamp<function, R (*)(P...)> {
    template <class... A>
    [[gnu::always_inline]] static R call(A... arguments)
    {
        return function(given<P>(arguments)...);
    }
};
template <auto function, class R, class... P>
struct Stamp<function, R (*)(frame::State&, P...)> {
    template <class... A>
    [[gnu::always_inline]] static R call(A... arguments)
    {
        return function(frame::state(), given<P>(arguments)...);
    }
};

// Where the function begins with a count in 64 bits, nothing else is read when that is below 1, and the
// result is zero.
template <auto function, class R, class... P>
struct Stamp<function, R (*)(int64_t, P...)> {
    template <class... A>
    [[gnu::always_inline]] static R call(const int32_t* n, A... arguments)
    {
        if (*n < 1) return R();
        return function(*n, given<P>(arguments)...);
    }
};

}  // namespace orvel

#define ORVEL_TYPE_(UPPER, k) orvel::Signature<decltype(UPPER)>::Argument<k> a##k
#define ORVEL_TYPES_0(U)
#define ORVEL_TYPES_1(U) ORVEL_TYPE_(U, 0)
#define ORVEL_TYPES_2(U) ORVEL_TYPES_1(U), ORVEL_TYPE_(U, 1)
#define ORVEL_TYPES_3(U) ORVEL_TYPES_2(U), ORVEL_TYPE_(U, 2)
#define ORVEL_TYPES_4(U) ORVEL_TYPES_3(U), ORVEL_TYPE_(U, 3)
#define ORVEL_TYPES_5(U) ORVEL_TYPES_4(U), ORVEL_TYPE_(U, 4)
#define ORVEL_TYPES_6(U) ORVEL_TYPES_5(U), ORVEL_TYPE_(U, 5)
#define ORVEL_TYPES_7(U) ORVEL_TYPES_6(U), ORVEL_TYPE_(U, 6)
#define ORVEL_TYPES_8(U) ORVEL_TYPES_7(U), ORVEL_TYPE_(U, 7)
#define ORVEL_TYPES_9(U) ORVEL_TYPES_8(U), ORVEL_TYPE_(U, 8)
#define ORVEL_TYPES_10(U) ORVEL_TYPES_9(U), ORVEL_TYPE_(U, 9)
#define ORVEL_TYPES_11(U) ORVEL_TYPES_10(U), ORVEL_TYPE_(U, 10)
#define ORVEL_TYPES_12(U) ORVEL_TYPES_11(U), ORVEL_TYPE_(U, 11)
#define ORVEL_TYPES_13(U) ORVEL_TYPES_12(U), ORVEL_TYPE_(U, 12)
#define ORVEL_TYPES_14(U) ORVEL_TYPES_13(U), ORVEL_TYPE_(U, 13)
#define ORVEL_TYPES_15(U) ORVEL_TYPES_14(U), ORVEL_TYPE_(U, 14)
#define ORVEL_TYPES_16(U) ORVEL_TYPES_15(U), ORVEL_TYPE_(U, 15)
#define ORVEL_TYPES_17(U) ORVEL_TYPES_16(U), ORVEL_TYPE_(U, 16)
#define ORVEL_NAMES_0
#define ORVEL_NAMES_1 a0
#define ORVEL_NAMES_2 ORVEL_NAMES_1, a1
#define ORVEL_NAMES_3 ORVEL_NAMES_2, a2
#define ORVEL_NAMES_4 ORVEL_NAMES_3, a3
#define ORVEL_NAMES_5 ORVEL_NAMES_4, a4
#define ORVEL_NAMES_6 ORVEL_NAMES_5, a5

#define ORVEL_NAMES_7 ORVEL_NAMES_6, a6
#define ORVEL_NAMES_8 ORVEL_NAMES_7, a7
#define ORVEL_NAMES_9 ORVEL_NAMES_8, a8
#define ORVEL_NAMES_10 ORVEL_NAMES_9, a9
#define ORVEL_NAMES_11 ORVEL_NAMES_10, a10
#define ORVEL_NAMES_12 ORVEL_NAMES_11, a11
#define ORVEL_NAMES_13 ORVEL_NAMES_12, a12
#define ORVEL_NAMES_14 ORVEL_NAMES_13, a13
#define ORVEL_NAMES_15 ORVEL_NAMES_14, a14
#define ORVEL_NAMES_16 ORVEL_NAMES_15, a15
#define ORVEL_NAMES_17 ORVEL_NAMES_16, a16

// Defines UPPER, whose types are those of its public declaration. A wrong count or type does not compile. The
// function behind it may take scalars by value, and the state of the thread as its first argument; see Stamp.
#define ORVEL_EXPORT_UPPER(UPPER, count, function)                                                       \
    extern "C" ORVEL_VISIBLE orvel::Signature<decltype(UPPER)>::Result UPPER(ORVEL_TYPES_##count(UPPER)) \
    {                                                                                                    \
        return orvel::Stamp<function>::call(ORVEL_NAMES_##count);                                        \
    }                                                                                                    \
    static_assert(true)

// The same, and the Unix Fortran spelling at the same address.
#define ORVEL_EXPORT(UPPER, lower, count, function) \
    ORVEL_EXPORT_UPPER(UPPER, count, function);     \
    extern "C" decltype(UPPER) lower ORVEL_ALIAS(UPPER)

// The members of a family, whose template takes the scalar type and perhaps more: single and double, and the
// complex ones.
#define ORVEL_EXPORT_UPPER_REALS(S, D, count, function, ...)                    \
    ORVEL_EXPORT_UPPER(S, count, (function<float __VA_OPT__(, ) __VA_ARGS__>)); \
    ORVEL_EXPORT_UPPER(D, count, (function<double __VA_OPT__(, ) __VA_ARGS__>))
#define ORVEL_EXPORT_UPPER_ALL(S, D, C, Z, count, function, ...)                        \
    ORVEL_EXPORT_UPPER_REALS(S, D, count, function __VA_OPT__(, ) __VA_ARGS__);         \
    ORVEL_EXPORT_UPPER(C, count, (function<orvel_complex __VA_OPT__(, ) __VA_ARGS__>)); \
    ORVEL_EXPORT_UPPER(Z, count, (function<orvel_dcomplex __VA_OPT__(, ) __VA_ARGS__>))
#define ORVEL_EXPORT_REALS(S, s, D, d, count, function, ...)                 \
    ORVEL_EXPORT(S, s, count, (function<float __VA_OPT__(, ) __VA_ARGS__>)); \
    ORVEL_EXPORT(D, d, count, (function<double __VA_OPT__(, ) __VA_ARGS__>))
#define ORVEL_EXPORT_ALL(S, s, D, d, C, c, Z, z, count, function, ...)               \
    ORVEL_EXPORT_REALS(S, s, D, d, count, function __VA_OPT__(, ) __VA_ARGS__);      \
    ORVEL_EXPORT(C, c, count, (function<orvel_complex __VA_OPT__(, ) __VA_ARGS__>)); \
    ORVEL_EXPORT(Z, z, count, (function<orvel_dcomplex __VA_OPT__(, ) __VA_ARGS__>))

// For liborvel_blas: the Fortran spelling of a standard kernel, which jumps to the upper-case one.
#define ORVEL_FORWARD(UPPER, lower, count)                                                               \
    extern "C" ORVEL_VISIBLE orvel::Signature<decltype(UPPER)>::Result lower(ORVEL_TYPES_##count(UPPER)) \
    {                                                                                                    \
        return UPPER(ORVEL_NAMES_##count);                                                               \
    }                                                                                                    \
    static_assert(true)
