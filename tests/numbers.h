// tests/numbers.h - real and complex types of the library's numbers
#pragma once

#include <cmath>
#include <complex>
#include <random>
#include <type_traits>

namespace orvel_test {

template <class T>
using Real = decltype(std::abs(T()));
template <class T>
inline constexpr bool is_complex = !std::is_same_v<T, Real<T>>;
template <class T>
using Wide = std::conditional_t<is_complex<T>, std::complex<long double>, long double>;

// A real type keeps the first part.
template <class T>
T make(Real<T> re, Real<T> im = 0)
{
    if constexpr (is_complex<T>)
        return {re, im};
    else
        return im = 0, re;
}

template <class T>
T conjugated(T x)
{
    return make<T>(std::real(x), -std::imag(x));
}

template <class T, class Generator>
T random_value(Generator& random)
{
    std::uniform_real_distribution<Real<T>> uniform(-1, 1);
    const Real<T> re = uniform(random);
    return make<T>(re, is_complex<T> ? uniform(random) : 0);
}

}  // namespace orvel_test
