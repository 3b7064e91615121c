// kernels/isa/searches.cpp - index of the best element of a contiguous vector
//
// Every lane keeps its best key and the group of vectors in which it first met it. The earliest group among
// the lanes that hold the best key of all contains the first best element. Comparisons are false for what is
// no number, so that a lane never takes it up.
#include "kernels/isa/lanes.h"
#include "kernels/isa/loops.h"

namespace orvel::kernels {

namespace {

using isa::held;

// Keys of real elements. The order of a search is that of `better`.
template <class R, bool absolute, bool least>
struct RealKey {
    static constexpr int parts = 1;
    static auto better(auto a, auto b)
    {
        if constexpr (least)
            return a < b;
        else
            return a > b;
    }
    static R one(const R* x) { return absolute ? Lanes<R, 1>::magnitude(*x) : *x; }
    template <class L>
    static typename L::Vector some(L, const R* x)
    {
        return held(absolute ? L::magnitude(L::load(x)) : L::load(x));
    }
};

// Keys of complex elements: both lanes of one hold the sum of its magnitudes.
template <class R, bool least>
struct ComplexKey : RealKey<R, true, least> {
    static constexpr int parts = 2;
    static R one(const R* x) { return Lanes<R, 1>::magnitude(x[0]) + Lanes<R, 1>::magnitude(x[1]); }
    template <class L>
    static typename L::Vector some(L, const R* x)
    {
        const auto v = held(L::magnitude(L::load(x)));
        return held(v + L::exchanged(v));
    }
};

// Elements first to last - 1, one by one; `at` holds the best so far.
template <class R, class Key>
inline int64_t search_plain(const R* x, int64_t first, int64_t last, int64_t at)
{
    R best = Key::one(x + Key::parts * at);
    for (int64_t k = first; k < last; ++k) {
        const R key = Key::one(x + Key::parts * k);
        if (Key::better(key, best)) {
            best = key;
            at = k;
        }
    }
    return at;
}

// The best of the lanes by choose(a, b), which takes vectors and numbers. Vectors of 8 bytes are not
// compared: what the rest of their register holds might be no number and raise a trap.
template <class E, int N, class F>
inline __attribute__((always_inline)) E fold_lanes(isa::Vector<E, N> v, F choose)
{
    if constexpr (N == 2) {
        return choose(v[0], v[1]);
    } else if constexpr (N * sizeof(E) == 16) {
        return choose(choose(v[0], v[1]), choose(v[2], v[3]));
    } else {
        const isa::Halves<E, N> parts = {v};
        return fold_lanes<E, N / 2>(choose(parts.half[0], parts.half[1]), choose);
    }
}

// The same for all n parts, in groups of `size` vectors. The last group reaches back into the one before
// it: what both contain is found in the earlier one.
template <class R, class Key, int N, int size>
inline int64_t search_groups(int64_t n, const R* x)
{
    typedef Lanes<R, N> L;
    typedef typename L::Vector Vector;
    typedef typename L::Integers Integers;
    typedef isa::Integer<R> Int;
    constexpr int64_t length = size * N;
    const auto choose = [](auto a, auto b) __attribute__((always_inline))
    {
        return Key::better(b, a) ? b : a;
    };
    const auto least = [](auto a, auto b) __attribute__((always_inline)) { return b < a ? b : a; };
    const R front = Key::one(x);
    if (front != front) return 0;
    const Vector base = L::all(front);
    Vector best = base;
    Integers where{}, group{};
    const auto visit = [&](const R* p) __attribute__((always_inline))
    {
        constexpr int chains = size < 4 ? size : 4;
        Vector high[chains];
#pragma GCC unroll 4
        for (int k = 0; k < chains; ++k) high[k] = choose(base, Key::some(L(), p + k * L::count));
#pragma GCC unroll 4
        for (int k = chains; k < size; ++k)
            high[k % chains] = choose(high[k % chains], Key::some(L(), p + k * L::count));
        if constexpr (chains == 4) high[0] = choose(choose(high[0], high[1]), choose(high[2], high[3]));
        where = Key::better(high[0], best) ? group : where;
        best = choose(best, high[0]);
    };
    int64_t i = 0;
    for (; n - i >= length; i += length) {
        visit(x + i);
        group += 1;
    }
    if (i < n) visit(x + n - length);

    const R found = fold_lanes<R, N>(best, choose);
    if (found == front) return 0;
    const Integers none = Integers{} + static_cast<Int>(INT32_MAX);
    const int64_t first = fold_lanes<Int, N>(best == L::all(found) ? where : none, least);
    const int64_t from = n - first * length >= length ? first * length : n - length;
    Integers place = isa::numbered<R, N>(), earliest = none;
#pragma GCC unroll 8
    for (int k = 0; k < size; ++k) {
        earliest = least(earliest, Key::some(L(), x + from + k * L::count) == L::all(found) ? place : none);
        place += static_cast<Int>(L::count);
    }
    return (from + fold_lanes<Int, N>(earliest, least)) / Key::parts;
}

template <class R, class Key>
int64_t search(int64_t n, const R* x)
{
    constexpr int L = isa::lanes<R>;
    const int64_t parts = n * Key::parts;
    if (parts >= far<R>) return search_groups<R, Key, narrow<R>, 8>(parts, x);
    if (parts >= 8 * L) return search_groups<R, Key, L, 8>(parts, x);
    if (parts >= L) return search_groups<R, Key, L, 1>(parts, x);
    return search_plain<R, Key>(x, 1, n, 0);
}

template <class R>
constexpr Searches<R> searches = {search<R, RealKey<R, true, false>>,  search<R, RealKey<R, true, true>>,
                                  search<R, RealKey<R, false, false>>, search<R, RealKey<R, false, true>>,
                                  search<R, ComplexKey<R, false>>,     search<R, ComplexKey<R, true>>};

}  // namespace

const isa::ForReals<Searches> ORVEL_ISA::search_loops = {searches<float>, searches<double>};

}  // namespace orvel::kernels
