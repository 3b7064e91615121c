// tests/user_function.h - a user's function that keeps the points it was called at, in both precisions
#pragma once

#include <algorithm>
#include <cmath>
#include <vector>

#include "tests/support.h"

namespace orvel_test {

template <class T>
using Function = T (*)(T);

template <class T>
inline std::vector<T> points;
template <class T>
inline Function<T> function;

// Spoils its argument, as a Fortran function may.
template <class T>
T recorded(const T* x)
{
    points<T>.push_back(*x);
    const T value = function<T>(*x);
    *const_cast<T*>(x) = T(99);
    return value;
}

// Values given in advance, one a call whatever the argument is; the last one stays.
template <class T>
inline std::vector<T> script;
template <class T>
T scripted(T)
{
    return script<T>[std::min(points<T>.size(), script<T>.size()) - 1];
}

// Whether a begins with the points that were found by hand, to within the rounding of a few operations.
template <class T>
void expect_points(const std::vector<T>& a, const std::vector<double>& by_hand)
{
    ASSERT_GE(a.size(), by_hand.size());
    const double eps = sizeof(T) == 8 ? 1e-13 : 3e-4;  // extrapolated from narrow parabolas
    for (std::size_t k = 0; k < by_hand.size(); ++k)
        EXPECT_NEAR(static_cast<double>(a[k]), by_hand[k], eps * (1 + std::abs(by_hand[k]))) << "point " << k;
}

template <class T>
class Searching : public Quiet {
protected:
    Searching() { set_switches(0, 1, 0); }
    Capture page;
};
using Precisions = ::testing::Types<float, double>;

}  // namespace orvel_test
