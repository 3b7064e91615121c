// util/isa/sorts.h - tables of the sorts, one set for each instruction-set level
//
// The files beside this one are compiled once per level. They include each other, <stdint.h> and, where a
// level needs them, the intrinsics of the compiler, which are never emitted as functions. Everything is in
// unnamed namespaces and leaves no symbol that the linker could merge with code of another level.
#pragma once

#include <stdint.h>

#include "isa/levels.h"

namespace orvel::util {

// What a sort met: divisions that left a part nearly as large as the whole, and elements of segments that
// were left to heapsort.
struct Difficulties {
    int64_t bad_divisions, heapsorted;
};

// Sorts of n >= 0 elements in place, into ascending order of values or of magnitudes. Labels are moved with
// their elements; null where there are none.
template <class T>
struct Sorts {
    Difficulties (*by_value)(int64_t n, T* x, int32_t* labels);
    Difficulties (*by_magnitude)(int64_t n, T* x, int32_t* labels);
};

struct SortTable {
    Sorts<float> s;
    Sorts<double> d;
    Sorts<int32_t> i;
};

ORVEL_LEVEL_TABLE(SortTable, sort_table);

}  // namespace orvel::util
