// frame/export.h - the stamps that give a template its public names
#pragma once

#include <tuple>

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

}  // namespace orvel

#define ORVEL_TYPE_(UPPER, k) orvel::Signature<decltype(UPPER)>::Argument<k> a##k
#define ORVEL_TYPES_0(U)
#define ORVEL_TYPES_1(U) ORVEL_TYPE_(U, 0)
#define ORVEL_TYPES_2(U) ORVEL_TYPES_1(U), ORVEL_TYPE_(U, 1)
#define ORVEL_TYPES_3(U) ORVEL_TYPES_2(U), ORVEL_TYPE_(U, 2)
#define ORVEL_TYPES_4(U) ORVEL_TYPES_3(U), ORVEL_TYPE_(U, 3)
#define ORVEL_TYPES_5(U) ORVEL_TYPES_4(U), ORVEL_TYPE_(U, 4)
#define ORVEL_TYPES_6(U) ORVEL_TYPES_5(U), ORVEL_TYPE_(U, 5)
#define ORVEL_NAMES_0
#define ORVEL_NAMES_1 a0
#define ORVEL_NAMES_2 ORVEL_NAMES_1, a1
#define ORVEL_NAMES_3 ORVEL_NAMES_2, a2
#define ORVEL_NAMES_4 ORVEL_NAMES_3, a3
#define ORVEL_NAMES_5 ORVEL_NAMES_4, a4
#define ORVEL_NAMES_6 ORVEL_NAMES_5, a5

// Defines UPPER, whose types are those of its public declaration, and the Unix Fortran spelling at the same
// address. A wrong count or type does not compile.
#define ORVEL_EXPORT(UPPER, lower, count, function)                                                      \
    extern "C" ORVEL_VISIBLE orvel::Signature<decltype(UPPER)>::Result UPPER(ORVEL_TYPES_##count(UPPER)) \
    {                                                                                                    \
        return function(ORVEL_NAMES_##count);                                                            \
    }                                                                                                    \
    extern "C" decltype(UPPER) lower ORVEL_ALIAS(UPPER)
