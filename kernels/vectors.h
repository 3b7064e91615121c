// kernels/vectors.h - vectors given by count and increment
#pragma once

#include <complex>
#include <cstdint>

namespace orvel::kernels {

// First element of a vector of a routine with two or three vectors: a negative increment starts at the far
// end, so that element k is at start + k * inc for every increment. All in 64 bits.
template <class T>
inline T* start(T* x, int64_t n, int64_t inc)
{
    return inc < 0 ? x + (1 - n) * inc : x;
}

// The real numbers that complex ones consist of.
template <class R>
inline R* parts(std::complex<R>* z)
{
    return reinterpret_cast<R*>(z);
}
template <class R>
inline const R* parts(const std::complex<R>* z)
{
    return reinterpret_cast<const R*>(z);
}

}  // namespace orvel::kernels
