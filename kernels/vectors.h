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

// The real numbers that complex ones consist of; a real number is its own part.
template <class T>
struct Number {
    using Part = T;
    static constexpr int64_t parts = 1;
};
template <class R>
struct Number<std::complex<R>> {
    using Part = R;
    static constexpr int64_t parts = 2;
};
template <class T>
using Part = typename Number<T>::Part;
template <class T>
constexpr bool is_complex = Number<T>::parts == 2;

template <class T>
inline Part<T>* parts(T* x)
{
    return reinterpret_cast<Part<T>*>(x);
}
template <class T>
inline const Part<T>* parts(const T* x)
{
    return reinterpret_cast<const Part<T>*>(x);
}

// N numbers on the stack, not initialised: a complex array would be cleared first.
template <class T, int64_t N>
class OnStack {
public:
    operator T*() { return reinterpret_cast<T*>(parts_); }

private:
    alignas(64) Part<T> parts_[N * Number<T>::parts];
};

}  // namespace orvel::kernels
