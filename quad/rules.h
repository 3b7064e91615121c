// quad/rules.h - one application of a Gauss-Kronrod rule
#pragma once

#include "frame/constants.h"
#include "frame/routine.h"

namespace orvel::quad {

// The machine values that decide: largest relative spacing, smallest positive and largest number.
template <class T>
inline constexpr T spacing = machine<T>(4);
template <class T>
inline constexpr T smallest = machine<T>(1);
template <class T>
inline constexpr T largest = machine<T>(2);

// (a + b) / 2 in the published form, and where that sum overflows by halves. The same with -a is half the
// width.
template <class T>
inline T mean_of(T a, T b)
{
    const T mean = T(0.5) * (a + b);
    return mean <= largest<T> && mean >= -largest<T> ? mean : T(0.5) * a + T(0.5) * b;
}

template <class T>
struct Estimate {
    T result, error;
    T absolute;   // integral of |f|
    T deviation;  // integral of |f - mean of f|
};

template <class T>
using Rule = Estimate<T> (*)(const UserFunction<T>& f, T a, T b, T inner);

// The rule of 2 GaussPoints + 1 points, GaussPoints = 7, 10, 15, 20, 25, 30. Where no number lies between a
// and b, f is called at `inner`, one of them.
template <class T, int GaussPoints>
Estimate<T> gauss_kronrod(const UserFunction<T>& f, T a, T b, T inner);

}  // namespace orvel::quad
