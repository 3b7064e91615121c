// util/sort.h - sorting for other folders, without a name on the routine stack
#pragma once

#include <cstdint>

#include "util/isa/sorts.h"

namespace orvel::util {

// Sorts n >= 0 elements in place by value, ascending, and moves the labels, if there are any, as the
// elements. What is not a number comes last.
template <class T>
Difficulties sort_labelled(int64_t n, T* x, int32_t* labels);

}  // namespace orvel::util
