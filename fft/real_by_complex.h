// fft/real_by_complex.h - real transforms by complex ones
#pragma once

#include "fft/factors.h"

namespace orvel::fft {

// Roots of the real transform of length f.n in N reals. An even length N = 2M has the tables of the complex
// transform of length M; behind them is room, of which two reals are used: sine and versed sine of the angle
// pi / M. For odd lengths see odd_real.cpp.
template <class R>
void store_real_roots(const Factors& f, R* roots);

// `scratch` has N numbers; `in` may be `out`.
template <class R>
void real_forward(const Factors& f, const R* in, R* out, R* scratch, const R* roots);
template <class R>
void real_backward(const Factors& f, const R* in, R* out, R* scratch, const R* roots);

}  // namespace orvel::fft
