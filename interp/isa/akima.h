// interp/isa/akima.h - tables of the loops of Akima's spline, one set for each instruction-set level
//
// Every level gives the same bits. Objects compiled from here include no header with inline functions.
#pragma once

#include <stdint.h>

#include "isa/levels.h"

namespace orvel::interp {

template <class T>
struct AkimaLoops {
    // Divided differences of `count` pieces between count + 1 points, as a part of themselves; the scales of
    // the spacings, and the inverse of each spacing by its scale.
    void (*differences)(int64_t count, const T* x, const T* f, T* m, T* scale, T* per_h);
    // Slopes at `count` points, as the same part; m begins two pieces to the left of the first one.
    void (*slopes)(int64_t count, const T* m, T* t);
    // Columns of `count` pieces from ordinates, what `differences` gave, and count + 1 slopes.
    void (*columns)(int64_t count, const T* f, const T* m, const T* scale, const T* per_h, const T* t,
                    T* spcoef);
};

ORVEL_LEVEL_TABLE(isa::ForReals<AkimaLoops>, akima_loops);

}  // namespace orvel::interp
