// kernels/isa/searches.cpp - index of the best element of a contiguous vector
//
// Every lane keeps its best key and the group of vectors in which it first met it. The earliest group among
// the lanes that hold the best key of all contains the first best element. Comparisons are false for what is
// no number, so that a lane never takes it up.
#include "kernels/isa/lanes.h"
#include "kernels/isa/loops.h"

namespace orvel::kernels {

namespace {

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
    static R one(const R* x) { return absolute ? Single<R>::magnitude(*x) : *x; }
    template <class L>
    static typename L::Vector some(L, const R* x)
    {
        return absolute ? L::magnitude(L::load(x)) : L::load(x);
    }
};

// Keys of complex elements: both lanes of one hold the sum of its magnitudes.
template <class R, bool least>
struct ComplexKey : RealKey<R, true, least> {
    static constexpr int parts = 2;
    static R one(const R* x) { return Single<R>::magnitude(x[0]) + Single<R>::magnitude(x[1]); }
    template <class L>
    static typename L::Vector some(L, const R* x)
    {
        const auto v = L::magnitude(L::load(x));
        return v + L::exchange(v);
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

// The same for all n parts, in groups of `size` vectors. The last group reaches back into the one before
// it: what both contain is found in the earlier one.
template <class R, class Key, int size>
inline int64_t search_groups(int64_t n, const R* x)
{
    typedef Lanes<R, widest> L;
    typedef typename L::Integers Integers;
    constexpr int64_t length = size * L::count;
    const R front = Key::one(x);
    if (front != front) return 0;
    typename L::Vector best = L::all(front);
    Integers where{}, group{};
    const auto visit = [&](const R* p) __attribute__((always_inline))
    {
        typename L::Vector high[2] = {best, best};
#pragma GCC unroll 8
        for (int k = 0; k < size; ++k) {
            const typename L::Vector key = Key::some(L(), p + k * L::count);
            high[k % 2] = Key::better(key, high[k % 2]) ? key : high[k % 2];
        }
        high[0] = Key::better(high[1], high[0]) ? high[1] : high[0];
        where = Key::better(high[0], best) ? group : where;
        best = high[0];
    };
    int64_t i = 0;
    for (; n - i >= length; i += length) {
        visit(x + i);
        group += 1;
    }
    if (i < n) visit(x + n - length);

    R found = best[0];
    int64_t first = where[0];
    for (int k = 1; k < L::count; ++k) {
        if (Key::better(best[k], found) || (best[k] == found && where[k] < first)) first = where[k];
        if (Key::better(best[k], found)) found = best[k];
    }
    if (found == front) return 0;
    int64_t at = (n - first * length >= length ? first * length : n - length) / Key::parts;
    while (Key::one(x + Key::parts * at) != found) ++at;
    return at;
}

template <class R, class Key>
int64_t search(int64_t n, const R* x)
{
    typedef Lanes<R, widest> L;
    const int64_t parts = n * Key::parts;
    if (parts >= 8 * L::count) return search_groups<R, Key, 8>(parts, x);
    if (parts >= L::count) return search_groups<R, Key, 1>(parts, x);
    return search_plain<R, Key>(x, 1, n, 0);
}

template <class R>
constexpr Searches<R> searches = {search<R, RealKey<R, true, false>>,  search<R, RealKey<R, true, true>>,
                                  search<R, RealKey<R, false, false>>, search<R, RealKey<R, false, true>>,
                                  search<R, ComplexKey<R, false>>,     search<R, ComplexKey<R, true>>};

}  // namespace

namespace ORVEL_ISA {

extern const Level1Searches level1_searches;
const Level1Searches level1_searches = {searches<float>, searches<double>};

}  // namespace ORVEL_ISA

}  // namespace orvel::kernels
