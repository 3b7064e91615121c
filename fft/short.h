// fft/short.h - the way to the transforms of short lengths
//
// They are one function for each power of two from 4 to 4096, in two or three steps through registers and
// rows of vectors on the stack, and for each length of composites.h, with roots that the compiler knows.
// Fronts take them without a work vector; the others where the stored factors are the usual ones of the
// length: every other work vector goes the general way and through its checks. As nothing can fail there, the
// frame is left as it is entered, with `visit`.
#pragma once

#include <array>
#include <bit>
#include <cstring>

#include "fft/factors.h"
#include "fft/isa/loops.h"

namespace orvel::fft {

inline constexpr int64_t shortest = 4, longest_short = 4096;

// The beginning of the stored factors of a length.
template <class R>
using ListOfFactors = std::array<R, 8>;
template <class R>
constexpr ListOfFactors<R> usual_list(int64_t n)
{
    const Factors f = factorize(n);
    ListOfFactors<R> list = {static_cast<R>(n), static_cast<R>(f.count)};
    for (std::size_t k = 0; k < 6 && k < static_cast<std::size_t>(f.count); ++k)
        list[2 + k] = static_cast<R>(f.factor[k]);
    return list;
}

// The places of short lengths: those of 4, 8 ... 4096, of composites.h, and of twice these.
inline constexpr int first_composite = short_lengths, first_doubled = first_composite + composite_count,
                     short_places = first_doubled + composite_count;

template <class R>
struct UsualFactors {
    ListOfFactors<R> of[short_places];

    constexpr UsualFactors() : of()
    {
        for (int k = 0; k < short_lengths; ++k) of[k] = usual_list<R>(shortest << k);
        for (int k = 0; k < composite_count; ++k) {
            of[first_composite + k] = usual_list<R>(composites[k].length());
            of[first_doubled + k] = usual_list<R>(2 * composites[k].length());
        }
    }
};
template <class R>
inline constexpr UsualFactors<R> usual_factors;

// The places of lengths up to a limit, of complex and of real sequences; -1 for others.
struct ShortPlaces {
    int16_t of_complex[2 * longest_composite + 1], of_real[2 * longest_composite + 1];

    constexpr ShortPlaces() : of_complex(), of_real()
    {
        for (int n = 0; n <= 2 * longest_composite; ++n) of_complex[n] = of_real[n] = -1;
        for (int k = 0; k < composite_count; ++k) {
            const int n = composites[k].length();
            of_complex[n] = static_cast<int16_t>(first_composite + k);
            if (n % 2 == 1) of_real[n] = of_complex[n];
            of_real[2 * n] = static_cast<int16_t>(first_doubled + k);
        }
        for (int k = 0; shortest << k <= 2 * longest_composite; ++k)
            of_complex[shortest << k] = of_real[shortest << k] = static_cast<int16_t>(k);
    }
};
inline constexpr ShortPlaces short_places_of;

template <class R>
struct CompositePlaces {
    CompositePlace<R> of[composite_count];
};
extern const isa::ForReals<CompositePlaces> composite_places;

// Compares as the frame compares names: without a branch for each number.
template <class R>
bool begins_with(const R* stored, const ListOfFactors<R>& list)
{
    typedef uint64_t Pair __attribute__((vector_size(16)));
    constexpr int64_t step = sizeof(Pair) / sizeof(R);
    Pair difference = {};
    for (int64_t k = 0; k < 8; k += step) {
        Pair a, b;
        std::memcpy(&a, stored + k, sizeof a);
        std::memcpy(&b, list.data() + k, sizeof b);
        difference |= a ^ b;
    }
    return (difference[0] | difference[1]) == 0;
}

// The place of a short length; negative for others.
template <bool is_real>
int place_of(int32_t n)
{
    const auto unsigned_n = static_cast<uint32_t>(n);
    if (unsigned_n <= 2 * longest_composite)
        return is_real ? short_places_of.of_real[n] : short_places_of.of_complex[n];
    return unsigned_n <= longest_short && std::has_single_bit(unsigned_n) ? std::countr_zero(unsigned_n) - 2
                                                                          : -1;
}

// The same where the usual factors of the length are stored behind `before` * n numbers of `work`. Every
// other work vector is left to the general way, with its checks.
template <bool is_real, class R>
int place_of(int32_t n, const R* work, int64_t before)
{
    const int place = place_of<is_real>(n);
    return place >= 0 && begins_with<R>(work + before * n, usual_factors<R>.of[place]) ? place : -1;
}

// Whether a complex transform needs rows that are not on the stack.
template <class R>
bool needs_rows(int32_t n)
{
    return 2 * int64_t{n} * static_cast<int64_t>(sizeof(R)) > most_on_stack;
}

// The whole transform of a length that has a place. It can neither fail nor call out.
template <ShortKind kind, class R>
void transform_short(int place, const R* from, R* to, R* rows)
{
    if (place < first_composite) return isa::of_type<R>(short_loops()).loop[kind][place](from, to, rows);
    const int k = place - first_composite;
    isa::of_type<R>(composite_loops())
        .loop[kind][k](from, to, isa::of_type<R>(composite_places).of[k % composite_count]);
}

}  // namespace orvel::fft
