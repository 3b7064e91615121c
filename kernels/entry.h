// kernels/entry.h - what the files of the vector kernels share: arguments by reference, choice of the loops
#pragma once

#include <cstdint>
#include <type_traits>

#include "kernels/isa/loops.h"
#include "kernels/vectors.h"

namespace orvel::kernels {

// Turns a template that takes scalars by value into an exported routine, which gets everything by reference.
// The count is the first argument; nothing else is read when it is below 1.
template <auto function>
struct Entry;

template <class R, class... P, R (*function)(int64_t, P...)>
struct Entry<function> {
    template <class... Q>
    R operator()(const int32_t* n, Q*... arguments) const
    {
        static_assert(sizeof...(P) == sizeof...(Q));
        if (*n < 1) return R();
        return function(*n, value<P>(arguments)...);
    }

private:
    template <class V, class Q>
    static V value(Q* argument)
    {
        if constexpr (std::is_pointer_v<V>) {
            return argument;
        } else {
            static_assert(std::is_same_v<V, std::remove_const_t<Q>> ||
                          (std::is_same_v<V, int64_t> && std::is_same_v<Q, const int32_t>));
            return *argument;
        }
    }
};

template <auto function>
constexpr Entry<function> entry{};

using isa::of_type;

// Whether the loops, which load a block before they store one, give what the plain loop gives: not where
// `written` begins inside `read`, a vector of n elements, and within a block of its begin. Vectors that only
// stand side by side do not count, so that no result depends on where a vector lies.
template <class T>
inline bool in_step(int64_t n, const T* read, const T* written)
{
    const uintptr_t behind = reinterpret_cast<uintptr_t>(written) - reinterpret_cast<uintptr_t>(read);
    return behind == 0 || behind >= static_cast<uintptr_t>(block) ||
           behind >= static_cast<uintptr_t>(n) * sizeof(T);
}

template <class T>
inline T conjugate(T x)
{
    if constexpr (is_complex<T>)
        return {x.real(), -x.imag()};
    else
        return x;
}

// Real and imaginary part of a scalar as the loops over parts take it: a real one stands for both.
template <class T>
inline Part<T> first_part(T a)
{
    if constexpr (is_complex<T>)
        return a.real();
    else
        return a;
}
template <class T>
inline Part<T> second_part(T a)
{
    if constexpr (is_complex<T>)
        return a.imag();
    else
        return a;
}

}  // namespace orvel::kernels
