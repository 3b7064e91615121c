// interp/interp.h - what the files of the splines share: sorted data, the search for a piece
#pragma once

#include <cstdint>

#include "frame/routine.h"

namespace orvel::interp {

// Data by ascending abscissa. Ordinates are `stride` apart: ascending data are read where the caller has
// them, others from the first row of the coefficients.
template <class T>
struct Points {
    int64_t n;
    const T* x;
    const T* f;
    int64_t stride;
    T ordinate(int64_t k) const { return f[k * stride]; }
};

// Brings the data into order, using brkpt, the first row of spcoef and iwk only where they are not. Posts the
// error of equal abscissas under the name of C1SOR.
template <class T>
Points<T> sorted(frame::State& s, int64_t n, const T* x, const T* f, T* brkpt, T* spcoef, int64_t ldc,
                 int32_t* iwk);

// The check of every constructor's work storage.
template <class Frame>
void no_work_storage(Frame& me, int32_t ndata)
{
    me.no_storage(
        5,
        "The required storage cannot be allocated.  The specified NDATA may be too large, where NDATA = %(I1).",
        {i(1, ndata)});
}

extern template Points<float> sorted(frame::State&, int64_t, const float*, const float*, float*, float*,
                                     int64_t, int32_t*);
extern template Points<double> sorted(frame::State&, int64_t, const double*, const double*, double*, double*,
                                      int64_t, int32_t*);

}  // namespace orvel::interp
