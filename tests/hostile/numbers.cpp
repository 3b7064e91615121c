// tests/hostile/numbers.cpp - numbers, tame and odd, in arrays and scalars
#include <cfloat>
#include <climits>
#include <cstring>

#include "tests/hostile/arguments.h"

namespace hostile {

namespace {

template <class T>
T odd_number(Draw& draw)
{
    using Bits = std::conditional_t<sizeof(T) == 4, uint32_t, uint64_t>;
    constexpr bool is_single = sizeof(T) == 4;
    constexpr T tiny = is_single ? T(FLT_MIN) : T(DBL_MIN), huge = is_single ? T(FLT_MAX) : T(DBL_MAX);
    constexpr T epsilon = is_single ? T(FLT_EPSILON) : T(DBL_EPSILON),
                infinity = is_single ? T(__builtin_inff()) : T(__builtin_inf());
    constexpr T numbers[] = {0,
                             -T(0),
                             1,
                             -1,
                             infinity,
                             -infinity,
                             T(__builtin_nan("")),
                             -T(__builtin_nan("7")),
                             tiny,
                             -tiny,
                             tiny / 2,
                             tiny * epsilon,
                             huge,
                             -huge,
                             huge / 2,
                             epsilon,
                             1 + epsilon,
                             T(0.5),
                             -2,
                             -3,
                             10,
                             200,
                             -200,
                             T(1e9),
                             -T(1e9),
                             T(2147483648.0),
                             T(1e-9)};
    if (!draw.one_in(3)) return draw.one_of(numbers);
    const auto bits = static_cast<Bits>(draw.bits());
    T x;
    std::memcpy(&x, &bits, sizeof x);
    return x;
}

template <class T>
T tame_number(Draw& draw)
{
    switch (draw.below(8)) {
        case 0:
            return static_cast<T>(draw.between(-3, 9));
        case 1:
            return static_cast<T>(std::pow(10.0, static_cast<double>(-draw.between(0, 6))));
        case 2:
            return static_cast<T>((draw.uniform() - 0.5) * 60);
        case 3:
        case 4:
            return static_cast<T>(draw.uniform());
        default:
            return static_cast<T>(4 * draw.uniform() - 2);
    }
}

template <class T>
void fill_reals(unsigned char* to, int64_t count, Draw& draw, Mood mood)
{
    const bool is_odd = mood == Mood::odd_data || (mood == Mood::anything && draw.one_in(2));
    const int64_t manner = count == 1 ? 9 : draw.below(10), rarity = is_odd ? (draw.one_in(2) ? 2 : 20) : 0;
    const T constant = is_odd ? odd_number<T>(draw) : tame_number<T>(draw);
    for (int64_t k = 0; k < count; ++k) {
        T x = constant;  // of all, now and then
        if (manner == 1)
            x = static_cast<T>(draw.between(-2, 2));
        else if (manner > 1)
            x = count == 1 ? tame_number<T>(draw) : static_cast<T>(2 * draw.uniform() - 1);
        if (is_odd && draw.one_in(rarity)) x = odd_number<T>(draw);
        std::memcpy(to + static_cast<std::size_t>(k) * sizeof(T), &x, sizeof x);
    }
}

// Of indices and permutations mostly.
template <class T>
void fill_integers(unsigned char* to, int64_t count, Draw& draw, Mood mood)
{
    const int64_t manner = draw.below(4);
    const bool is_odd = mood == Mood::odd_data || (mood == Mood::anything && draw.one_in(2));
    for (int64_t k = 0; k < count; ++k) {
        auto x = static_cast<T>(manner == 0   ? draw.between(1, count)
                                : manner == 1 ? std::min(k + draw.between(1, 2), count)
                                              : k + 1);
        if (is_odd && draw.one_in(4))
            x = static_cast<T>(draw.one_in(2) ? draw.between(-1, count + 1)
                                              : static_cast<int64_t>(draw.bits()));
        if (is_odd && draw.one_in(16)) x = draw.one_in(2) ? static_cast<T>(INT_MIN) : static_cast<T>(INT_MAX);
        std::memcpy(to + static_cast<std::size_t>(k) * sizeof(T), &x, sizeof x);
    }
    for (int64_t k = count - 1; manner == 3 && k > 0; --k) {  // a permutation
        const int64_t j = draw.below(k + 1);
        std::swap_ranges(to + static_cast<std::size_t>(k) * sizeof(T),
                         to + static_cast<std::size_t>(k + 1) * sizeof(T),
                         to + static_cast<std::size_t>(j) * sizeof(T));
        if (j == k) continue;
    }
}

template <class T>
void make_ascending(unsigned char* to, int64_t count)
{
    T x = 0;
    for (int64_t k = 0; k < count; ++k) {
        T step;
        std::memcpy(&step, to + static_cast<std::size_t>(k) * sizeof(T), sizeof step);
        x += std::fabs(step) + T(0.125);
        std::memcpy(to + static_cast<std::size_t>(k) * sizeof(T), &x, sizeof x);
    }
}

// Adds to one element of each column: that of the diagonal, or a row of a band.
template <class T>
void make_dominant(const Storage& s, int64_t row, int components)
{
    for (int64_t b = 0; b < s.blocks; ++b) {
        const int64_t at = b * s.length + (row < 0 ? b % s.length : std::min(row, s.length - 1));
        unsigned char* const place = s.image + static_cast<std::size_t>(at) * s.element;
        T x;
        std::memcpy(&x, place, sizeof x);
        x = std::fabs(x) + static_cast<T>(2 * components * s.length);
        std::memcpy(place, &x, sizeof x);
        if (components == 2) std::memset(place + sizeof x, 0, sizeof x);
    }
}

}  // namespace

void fill_numbers(unsigned char* to, char type, int64_t count, Draw& draw, Mood mood)
{
    switch (type) {
        case 'i':
            return fill_integers<int32_t>(to, count, draw, mood);
        case 'l':
            return fill_integers<int64_t>(to, count, draw, mood);
        case 's':
            return fill_reals<float>(to, count, draw, mood);
        case 'd':
            return fill_reals<double>(to, count, draw, mood);
        case 'c':
            return fill_reals<float>(to, 2 * count, draw, mood);
        case 'z':
            return fill_reals<double>(to, 2 * count, draw, mood);
        default:
            std::memset(to, 0, static_cast<std::size_t>(count) * size_of(type));
    }
}

bool shape_ascending(const Storage& s, const Argument& a, Draw& draw)
{
    if (draw.one_in(4)) return false;
    a.type == 's' ? make_ascending<float>(s.image, s.blocks * s.length)
                  : make_ascending<double>(s.image, s.blocks * s.length);
    return true;
}

void make_dominant(const Storage& s, const Argument& a, int64_t row)
{
    if (!a.is_array || s.blocks < 1 || s.stride < s.length || (s.length == 1 && s.blocks > 1)) return;
    if (a.type == 's' || a.type == 'c') make_dominant<float>(s, row, a.type == 'c' ? 2 : 1);
    if (a.type == 'd' || a.type == 'z') make_dominant<double>(s, row, a.type == 'z' ? 2 : 1);
}

}  // namespace hostile
