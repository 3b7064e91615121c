// fft/isa/exact_roots.h - any roots of unity, by the compiler
#pragma once

namespace orvel::fft {
namespace {

// The cosine (0) or the sine (1) of 2 pi k / n for 0 <= k <= n / 8, by their series.
constexpr long double series_of_root(int part, int k, int n)
{
    const long double x = 6.283185307179586476925286766559L * k / n;
    long double term = part == 0 ? 1 : x, sum = 0;
    for (int j = part; j < 28; j += 2) {
        sum += term;
        term *= -x * x / ((j + 1) * (j + 2));
    }
    return sum;
}

// Those of any k, 0 <= k < n, with the error of a long double.
constexpr long double exact_root(int part, int k, int n)
{
    if (8 * k <= n) return series_of_root(part, k, n);
    if (4 * k <= n) return series_of_root(1 - part, n - 4 * k, 4 * n);
    if (2 * k <= n) return exact_root(part, n - 2 * k, 2 * n) * (part == 0 ? -1 : 1);
    return exact_root(part, n - k, n) * (part == 0 ? 1 : -1);
}
constexpr long double exact_cosine(int k, int n) { return exact_root(0, k, n); }
constexpr long double exact_sine(int k, int n) { return exact_root(1, k, n); }

}  // namespace
}  // namespace orvel::fft
