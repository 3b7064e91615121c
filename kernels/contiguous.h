// kernels/contiguous.h - what the vector kernels share: which vectors go to the loops over contiguous ones
#pragma once

#include <cstdint>
#include <type_traits>

#include "frame/export.h"
#include "kernels/isa/loops.h"
#include "kernels/vectors.h"

namespace orvel::kernels {

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
