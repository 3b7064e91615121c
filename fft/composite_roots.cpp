// fft/composite_roots.cpp - the roots of short lengths with factors beside 2
#include <utility>

#include "fft/isa/exact_roots.h"
#include "fft/short.h"

namespace orvel::fft {

namespace {

template <class R, int count>
struct Table {
    alignas(64) R at[count];
};

template <class R, int place>
constexpr auto make_rows()
{
    constexpr int a = composites[place].first, b = composites[place].second;
    Table<R, 2 * a* b> table = {};
    for (int row = 1; row < b; ++row)
        for (int k = 0; k < a; ++k) {
            R* const to = table.at + 2 * a * (row - 1) + k;
            to[0] = static_cast<R>(exact_cosine(row * k, a * b));
            to[a] = static_cast<R>(exact_sine(row * k, a * b));
        }
    return table;
}
template <class R, int place>
constexpr auto make_halves()
{
    constexpr int n = composites[place].length(), count = (n + 1) / 2;
    Table<R, 2 * count> table = {};
    for (int k = 0; k < count; ++k) {
        table.at[k] = static_cast<R>(exact_cosine(k, 2 * n));
        table.at[count + k] = static_cast<R>(exact_sine(k, 2 * n));
    }
    return table;
}

template <class R, int place>
constexpr auto rows = make_rows<R, place>();
template <class R, int place>
constexpr auto halves = make_halves<R, place>();

template <class R, int... place>
constexpr CompositePlaces<R> all_places(std::integer_sequence<int, place...>)
{
    return {{{place, composites[place].length(), rows<R, place>.at, halves<R, place>.at}...}};
}
using Places = std::make_integer_sequence<int, composite_count>;

}  // namespace

constinit const isa::ForReals<CompositePlaces> composite_places = {all_places<float>(Places()),
                                                                   all_places<double>(Places())};

}  // namespace orvel::fft
