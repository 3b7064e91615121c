// kernels/vectors.h - vectors given by count and increment
#pragma once

#include <cmath>
#include <complex>
#include <cstdint>
#include <limits>

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

template <class T>
inline T conjugate(T x)
{
    if constexpr (is_complex<T>)
        return std::conj(x);
    else
        return x;
}

// a / b for every finite a and b whose quotient is representable. Complex division by the larger part of b
// (R. L. Smith, Algorithm 116: Complex division, which compilers use) forms sums of both parts, which
// overflow near the largest number; such operands are divided by 4 first.
template <class T>
inline T quotient(T a, T b)
{
    if constexpr (is_complex<T>) {
        using R = Part<T>;
        constexpr R large = std::numeric_limits<R>::max() / 4;
        const auto is_large = [](T z) { return std::abs(z.real()) > large || std::abs(z.imag()) > large; };
        const bool scale_a = is_large(a), scale_b = is_large(b);
        if (scale_a || scale_b) {
            const T result = (scale_a ? a * R(0.25) : a) / (scale_b ? b * R(0.25) : b);
            return scale_a == scale_b ? result : result * (scale_a ? R(4) : R(0.25));
        }
    }
    return a / b;
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
