// interp/interp.h - what the files of the splines share: sorted data, the search for a piece
#pragma once

#include <cstdint>

#include "frame/routine.h"
#include "interp/isa/scale.h"

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

// Two neighbouring spacings by a power of two that makes an equation of slopes no larger than the slopes.
template <class T>
struct Spacings {
    T left, right;
    Spacings(T left_h, T right_h) : Spacings(left_h, right_h, unit(left_h + right_h) * part<T>) {}

private:
    Spacings(T left_h, T right_h, T scale) : left(left_h * scale), right(right_h * scale) {}
};

// Second and third derivative at the left end of a piece of width h, from its divided difference and the
// slopes at its ends.
template <class T>
inline void set_curvature(T h, T difference, T left_slope, T right_slope, T* column)
{
    const T u = unit(h), per_h = 1 / (h * u), whole = u / part<T>;
    const T delta = difference * part<T>, left = left_slope * part<T>, right = right_slope * part<T>;
    const T d = left + right - 2 * delta;
    column[2] = 2 * (delta - left - d) * per_h * whole;
    column[3] = d * per_h * (6 * per_h) * u * whole;
}

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
