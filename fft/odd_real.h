// fft/odd_real.h - real transforms of odd length
#pragma once

#include "fft/factors.h"

namespace orvel::fft {

// As those of any length; see real_by_complex.h.
template <class R>
void store_odd_roots(const Factors& f, R* roots);
template <class R, bool forward>
void odd_transform(const Factors& f, const R* in, R* out, R* scratch, const R* roots);

}  // namespace orvel::fft
