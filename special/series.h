// special/series.h - sums of Chebyshev and power series
#pragma once

#include <array>
#include <cstddef>

namespace orvel::special {

// The smallest count of terms whose tail, summed from its end, is at most eta: 1-based position at which the
// running sum of magnitudes first exceeds eta, or 1.
template <class T, class Eta>
constexpr int series_length(const T* series, int terms, Eta eta)
{
    double tail = 0.0;
    for (int k = terms; k > 1; --k) {
        const double c = static_cast<double>(series[k - 1]);
        tail += c < 0.0 ? -c : c;
        if (tail > static_cast<double>(eta)) return k;
    }
    return 1;
}

// Clenshaw's recurrence; the first coefficient has half weight.
template <class T>
constexpr double chebyshev_sum(double x, const T* series, int terms)
{
    const double twox = 2.0 * x;
    double b0 = 0.0, b1 = 0.0, b2 = 0.0;
    for (int k = terms; k > 0; --k) {
        b2 = b1;
        b1 = b0;
        b0 = twox * b1 - b2 + static_cast<double>(series[k - 1]);
    }
    return 0.5 * (b0 - b2);
}

// A series in Chebyshev polynomials of 2 v - 1 rearranged in powers of v / unit, at compile time. Done in the
// widest type, for short series whose terms fall faster than the coefficients of the polynomials grow.
template <std::size_t N>
consteval std::array<double, N> shifted_powers(const double* series, long double unit)
{
    std::array<long double, N> sum{}, older{}, newer{};
    sum[0] = 0.5L * static_cast<long double>(series[0]);
    older[0] = 1.0L;
    newer[0] = -1.0L;
    newer[1] = 2.0L;
    for (std::size_t j = 1; j < N; ++j) {
        std::array<long double, N> next{};
        for (std::size_t k = 0; k < N; ++k) {
            sum[k] += static_cast<long double>(series[j]) * newer[k];
            next[k] = (k > 0 ? 4.0L * newer[k - 1] : 0.0L) - 2.0L * newer[k] - older[k];
        }
        older = newer;
        newer = next;
    }
    std::array<double, N> result{};
    long double scale = 1.0L;
    for (std::size_t k = 0; k < N; ++k, scale *= unit) result[k] = static_cast<double>(sum[k] * scale);
    return result;
}

// Sum of a power series. Long ones by eight interleaved sums in x^8, two to a vector, which keeps the chain
// of operations short.
template <std::size_t N>
inline double power_sum(double x, const std::array<double, N>& c)
{
    if constexpr (N < 8) {
        double sum = c[N - 1];
        for (std::size_t k = N - 1; k > 0; --k) sum = sum * x + c[k - 1];
        return sum;
    } else {
        typedef double Pair __attribute__((vector_size(16)));
        const auto pair = [&c](std::size_t k) {
            return Pair{k < N ? c[k] : 0.0, k + 1 < N ? c[k + 1] : 0.0};
        };
        const double x2 = x * x;
        const double x4 = x2 * x2;
        const double x8 = x4 * x4;
        std::size_t k = (N - 1) / 8 * 8;
        Pair sum[4] = {pair(k), pair(k + 2), pair(k + 4), pair(k + 6)};
        while (k > 0) {
            k -= 8;
            for (std::size_t j = 0; j < 4; ++j) sum[j] = sum[j] * x8 + pair(k + 2 * j);
        }
        const Pair total = (sum[0] + sum[1] * x2) + (sum[2] + sum[3] * x2) * x4;
        return total[0] + total[1] * x;
    }
}

}  // namespace orvel::special
