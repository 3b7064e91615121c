// docs/examples/print.h - print(words, values ...): numbers, vectors and matrices, a line for each row
#pragma once

#include <cmath>
#include <complex>
#include <cstdio>
#include <string>
#include <vector>

#include "orvel/orvel.hpp"

namespace manual {

inline void one(double x) { std::printf(" %.6g", std::abs(x) < 1e-14 ? 0.0 : x); }  // rounding prints as 0
inline void one(float x) { one(std::abs(x) < 1e-6f ? 0.0 : static_cast<double>(x)); }
inline void one(int x) { std::printf(" %d", x); }
inline void one(const char* text) { std::printf(" %s", text); }
template <class T>
void one(const std::complex<T>& z)
{
    std::printf(" (%.6g,%.6g)", std::abs(z.real()) < T(1e-6) ? 0.0 : static_cast<double>(z.real()),
                std::abs(z.imag()) < T(1e-6) ? 0.0 : static_cast<double>(z.imag()));
}
template <class T>
void one(const std::vector<T>& values)
{
    for (const T& value : values) one(value);
}
template <class T>
void one(const orvel::matrix<T>& a)
{
    for (std::size_t i = 0; i < a.rows(); ++i) {
        std::printf("\n   ");
        for (std::size_t j = 0; j < a.columns(); ++j) one(a(i, j));
    }
}

template <class... T>
void print(const char* words, const T&... values)
{
    std::printf("%s:", words);
    (one(values), ...);
    std::printf("\n");
}

// What the output of the examples of these routines begins with.
inline void title(const char* names) { std::printf("-- %s\n", names); }

}  // namespace manual
