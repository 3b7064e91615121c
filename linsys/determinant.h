// linsys/determinant.h - a product of many factors as a mantissa and an exponent of ten
#pragma once

#include <limits>

#include "linsys/linsys.h"

namespace orvel::linsys {

// The mantissa is brought to 1 <= |mantissa| < 10 after each factor; infinities and NaN stay. The magnitude
// of a complex mantissa is |Re| + |Im|. A factor that ten times would overflow is divided first.
template <class T>
struct Determinant {
    T mantissa = 1;
    Part<T> exponent = 0;

    // False when the product has become zero, which keeps the exponent reached.
    bool multiply(T factor)
    {
        if (is_large(factor)) factor /= Part<T>(100), exponent += 2;
        mantissa *= factor;
        if (mantissa == T(0)) return false;
        while (magnitude(mantissa) < 1) mantissa *= Part<T>(10), exponent -= 1;
        while (magnitude(mantissa) >= 10 && is_finite()) mantissa /= Part<T>(10), exponent += 1;
        return true;
    }

private:
    static bool is_large(T x)
    {
        constexpr Part<T> large = std::numeric_limits<Part<T>>::max() / 100;
        return std::abs(std::real(x)) > large || std::abs(std::imag(x)) > large;
    }
    bool is_finite() const
    {
        return std::isfinite(std::real(mantissa)) && std::isfinite(std::imag(mantissa));
    }
};

// The square of the determinant of a triangle with a real diagonal, whose columns are `step` apart.
template <class T>
Determinant<Part<T>> square_of_determinant(int64_t n, const T* r, int64_t step)
{
    Determinant<Part<T>> product;
    for (int64_t k = 0; k < n; ++k) {
        const Part<T> factor = std::real(r[k * (step + 1)]);
        if (!product.multiply(factor) || !product.multiply(factor)) break;
    }
    return product;
}

}  // namespace orvel::linsys
