// tests/user_function.h - a user's function that keeps the points it was called at, in both precisions
#pragma once

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

template <class T>
bool same(const std::vector<T>& a, const std::vector<T>& b)
{
    const auto equal = [](T x, T y) { return x == y || (std::isnan(x) && std::isnan(y)); };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), equal);
}

template <class T>
class Searching : public Quiet {
protected:
    Searching() { set_switches(0, 1, 0); }
    Capture page;
};
using Precisions = ::testing::Types<float, double>;

}  // namespace orvel_test
