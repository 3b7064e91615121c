// interp/isa/akima.cpp - the loops of Akima's spline, for the level ORVEL_ISA
#include "interp/isa/akima.h"

#include "interp/isa/scale.h"

namespace orvel::interp {

namespace {

template <class T>
inline T magnitude(T v)
{
    return v < 0 ? -v : v;
}

template <class T>
void differences(int64_t count, const T* x, const T* f, T* __restrict m, T* __restrict scale,
                 T* __restrict per_h)
{
    for (int64_t k = 0; k < count; ++k) {
        const T h = x[k + 1] - x[k];
        m[k] = (f[k + 1] - f[k]) / h * part<T>;
        scale[k] = unit(h);
        per_h[k] = 1 / (h * scale[k]);
    }
}

// The weights are equal where both vanish.
template <class T>
void slopes(int64_t count, const T* m, T* __restrict t)
{
    for (int64_t k = 0; k < count; ++k) {
        const T right = magnitude(m[k + 3] - m[k + 2]), left = magnitude(m[k + 1] - m[k]);
        const T flat = right + left == 0 ? T(1) : T(0), u = unit(right + left);
        const T a = right * u + flat, b = left * u + flat;
        t[k] = (a * m[k + 1] + b * m[k + 2]) / (a + b);
    }
}

template <class T>
void columns(int64_t count, const T* f, const T* m, const T* scale, const T* per_h, const T* t,
             T* __restrict spcoef)
{
    for (int64_t k = 0; k < count; ++k) {
        const T q = (t[k] + t[k + 1] - 2 * m[k]) * per_h[k], whole = scale[k] / part<T>;
        spcoef[4 * k] = f[k];
        spcoef[4 * k + 1] = t[k] / part<T>;
        spcoef[4 * k + 2] = 2 * ((m[k] - t[k]) * per_h[k] - q) * whole;
        spcoef[4 * k + 3] = 6 * q * per_h[k] * scale[k] * whole;
    }
}

template <class T>
constexpr AkimaLoops<T> loops = {differences<T>, slopes<T>, columns<T>};

}  // namespace

const isa::ForReals<AkimaLoops> ORVEL_ISA::akima_loops = {loops<float>, loops<double>};

}  // namespace orvel::interp
