// util/isa/sort.cpp - the sorts of the level ORVEL_ISA
#include "util/isa/quicksort.h"
#include "util/isa/sorts.h"

namespace orvel::util {

namespace {

template <class Key, class T>
Difficulties sort(int64_t n, T* x, int32_t* labels)
{
    if (labels == nullptr) return Quicksort<Key, T, false>(n, x, nullptr).sort();
    return Quicksort<Key, T, true>(n, x, labels).sort();
}

template <class T>
constexpr Sorts<T> sorts = {sort<ByValue, T>, sort<ByMagnitude, T>};

}  // namespace

const SortTable ORVEL_ISA::sort_table = {sorts<float>, sorts<double>, sorts<int32_t>};

}  // namespace orvel::util
