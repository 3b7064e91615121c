// fft/short.h - the way to the transforms of short powers of two
//
// They are one function for each length from 4 to 4096, in two or three steps through registers and rows of
// vectors on the stack, with roots that the compiler knows. Fronts take them without a work vector; the
// others where the stored factors are the usual ones of the length: every other work vector goes the general
// way and through its checks. As nothing can fail there, the frame is left as it is entered, with `visit`.
#pragma once

#include <bit>
#include <cstring>

#include "fft/isa/loops.h"

namespace orvel::fft {

// The beginning of the stored factors of 4, 8 ... 4096, as store_factors makes it.
inline constexpr int64_t shortest = 4, longest_short = 4096;
template <class R>
inline constexpr R usual_factors[short_lengths][8] = {{4, 1, 4},
                                                      {8, 2, 2, 4},
                                                      {16, 2, 4, 4},
                                                      {32, 3, 2, 4, 4},
                                                      {64, 3, 4, 4, 4},
                                                      {128, 4, 2, 4, 4, 4},
                                                      {256, 4, 4, 4, 4, 4},
                                                      {512, 5, 2, 4, 4, 4, 4},
                                                      {1024, 5, 4, 4, 4, 4, 4},
                                                      {2048, 6, 2, 4, 4, 4, 4, 4},
                                                      {4096, 6, 4, 4, 4, 4, 4, 4}};

// Compares as the frame compares names: without a branch for each number.
template <class R>
bool begins_with(const R* stored, const R (&list)[8])
{
    typedef uint64_t Pair __attribute__((vector_size(16)));
    constexpr int64_t step = sizeof(Pair) / sizeof(R);
    Pair difference = {};
    for (int64_t k = 0; k < 8; k += step) {
        Pair a, b;
        std::memcpy(&a, stored + k, sizeof a);
        std::memcpy(&b, list + k, sizeof b);
        difference |= a ^ b;
    }
    return (difference[0] | difference[1]) == 0;
}

// Whether a complex transform needs rows that are not on the stack.
template <class R>
bool needs_rows(int32_t n)
{
    return 2 * int64_t{n} * static_cast<int64_t>(sizeof(R)) > most_on_stack;
}

inline int place_of(int32_t n) { return std::countr_zero(static_cast<uint32_t>(n)) - 2; }

// The whole transform of a short power of two, or null. It can neither fail nor call out.
template <class R>
ShortLoop<R> short_loop(ShortKind kind, int32_t n)
{
    if (n < shortest || n > longest_short || (n & (n - 1)) != 0) return nullptr;
    return isa::of_type<R>(short_loops()).loop[kind][place_of(n)];
}

// The same where the usual factors of the length are stored behind `before` * n numbers of `work`. Null
// leaves everything to the general way, with its checks.
template <class R>
ShortLoop<R> short_loop(ShortKind kind, int32_t n, const R* work, int64_t before)
{
    const ShortLoop<R> loop = short_loop<R>(kind, n);
    if (loop == nullptr) return nullptr;
    return begins_with<R>(work + before * n, usual_factors<R>[place_of(n)]) ? loop : nullptr;
}

}  // namespace orvel::fft
