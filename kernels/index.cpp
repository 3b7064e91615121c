// kernels/index.cpp - index of the element of largest or smallest magnitude or value
#include <cmath>

#include "frame/export.h"
#include "kernels/entry.h"
#include "kernels/level1.h"
#include "orvel/kernels.h"

namespace orvel::kernels {

namespace {

enum class Search { largest_magnitude, smallest_magnitude, largest, smallest };

template <Search search, class T>
Part<T> key(const T& x)
{
    if constexpr (is_complex<T>)
        return std::abs(x.real()) + std::abs(x.imag());
    else if constexpr (search == Search::largest || search == Search::smallest)
        return x;
    else
        return std::abs(x);
}

template <Search search, class R>
bool better(R a, R b)
{
    return search == Search::smallest || search == Search::smallest_magnitude ? a < b : a > b;
}

template <Search search, class T>
int64_t contiguous(int64_t n, const T* x)
{
    const auto& loops = of_type<Part<T>>(search_loops());
    switch (search) {
        case Search::largest_magnitude:
            return (is_complex<T> ? loops.complex_largest : loops.largest_magnitude)(n, parts(x));
        case Search::smallest_magnitude:
            return (is_complex<T> ? loops.complex_smallest : loops.smallest_magnitude)(n, parts(x));
        case Search::largest:
            return loops.largest(n, parts(x));
        default:
            return loops.smallest(n, parts(x));
    }
}

// One-based. With increment 0 all elements are the first one.
template <Search search, class T>
int64_t index(int64_t n, const T* x, int64_t incx)
{
    if (n < 1) return 0;
    if (n == 1) return 1;
    if (incx < 0) return 0;
    if (incx == 0) return 1;
    if (incx == 1) return contiguous<search>(n, x) + 1;
    int64_t best = 0;
    Part<T> best_key = key<search>(x[0]);
    for (int64_t k = 1; k < n; ++k) {
        const Part<T> this_key = key<search>(x[k * incx]);
        if (better<search>(this_key, best_key)) {
            best = k;
            best_key = this_key;
        }
    }
    return best + 1;
}

// For N = 1 nothing but N is read.
template <Search search, class T>
int32_t index_entry(const int32_t* n, const T* x, const int32_t* incx)
{
    if (*n < 2) return *n == 1 ? 1 : 0;
    return static_cast<int32_t>(index<search>(*n, x, *incx));
}

}  // namespace

template <class T>
int64_t iamax(int64_t n, const T* x, int64_t incx)
{
    return index<Search::largest_magnitude>(n, x, incx);
}

template int64_t iamax(int64_t, const float*, int64_t);
template int64_t iamax(int64_t, const double*, int64_t);
template int64_t iamax(int64_t, const orvel_complex*, int64_t);
template int64_t iamax(int64_t, const orvel_dcomplex*, int64_t);

}  // namespace orvel::kernels

using orvel::kernels::index_entry;
using orvel::kernels::Search;

ORVEL_EXPORT_UPPER(ISAMAX, 3, index_entry<Search::largest_magnitude>);
ORVEL_EXPORT_UPPER(IDAMAX, 3, index_entry<Search::largest_magnitude>);
ORVEL_EXPORT_UPPER(ICAMAX, 3, index_entry<Search::largest_magnitude>);
ORVEL_EXPORT_UPPER(IZAMAX, 3, index_entry<Search::largest_magnitude>);
ORVEL_EXPORT(ISAMIN, isamin_, 3, index_entry<Search::smallest_magnitude>);
ORVEL_EXPORT(IDAMIN, idamin_, 3, index_entry<Search::smallest_magnitude>);
ORVEL_EXPORT(ICAMIN, icamin_, 3, index_entry<Search::smallest_magnitude>);
ORVEL_EXPORT(IZAMIN, izamin_, 3, index_entry<Search::smallest_magnitude>);
ORVEL_EXPORT(ISMAX, ismax_, 3, index_entry<Search::largest>);
ORVEL_EXPORT(IDMAX, idmax_, 3, index_entry<Search::largest>);
ORVEL_EXPORT(ISMIN, ismin_, 3, index_entry<Search::smallest>);
ORVEL_EXPORT(IDMIN, idmin_, 3, index_entry<Search::smallest>);
