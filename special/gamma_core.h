// special/gamma_core.h - the gamma function and its logarithm without checks and frame, carried in double
//
// T selects the precision of the result: single members use shorter series. Gamma(1 + t) on [0, 1] is formed
// as 1 + t (t - 1) q(t), and its logarithm as t (t - 1) p(t), so that both are exact at 1 and 2 and rounding
// in the series counts for an eighth at most.
#pragma once

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>

#include "frame/constants.h"
#include "frame/routine.h"
#include "isa/two_doubles.h"
#include "special/gamma_tables.h"
#include "special/series.h"

namespace orvel::special {

// Limits of the arguments. They depend on the machine constants only; tests form them again.
template <class T>
struct GammaLimits;

template <>
struct GammaLimits<float> {
    static constexpr float xmin = -33.962578f, xmax = 35.030781f;  // R9GAML
    static constexpr float xsml = 1.1873083e-38f;             // exp(max(ln AMACH(1), -ln AMACH(2)) + 0.01)
    static constexpr float log_xmax = 3.8353410e+36f;         // AMACH(2) / ln AMACH(2)
    static constexpr float correction_xmax = 7.0892160e+36f;  // exp(min(ln(AMACH(2) / 12), -ln(12 AMACH(1))))
    static constexpr float dxrel = 3.4526698e-4f;             // sqrt(AMACH(4))
};

template <>
struct GammaLimits<double> {
    static constexpr double xmin = -170.56749727266123, xmax = 171.61447887182297;
    static constexpr double xsml = 2.2474362225598133e-308;
    static constexpr double log_xmax = 2.5327372760800756e+305;
    static constexpr double correction_xmax = 3.7451940309631581e+306;
    static constexpr double dxrel = 1.4901161193847656e-8;
};

// From here on 1 / (12 x) is all of the correction: 1 / sqrt(AMACH(3)).
template <class T>
inline constexpr double stirling_tail = is_double<T> ? 94906265.62425154 : 0x1p12;

inline constexpr double pi = 3.14159265358979323846;
inline constexpr double root_two_pi = 2.5066282746310005024;
inline constexpr double half_log_two_pi = 0.91893853320467274178;
inline constexpr double half_log_half_pi = 0.22579135264472743236;

// Gamma(1 + t), 0 <= t <= 1.
template <class T>
inline double gamma_of_one_plus(double t)
{
    const double u = 2.0 * t - 1.0;
    const double q = is_double<T> ? power_sum(u, gamma_deviation) : power_sum(u, gamma_deviation_single);
    return 1.0 + t * (t - 1.0) * q;
}

// ln Gamma(1 + t), 0 <= t <= 1, as a sum of two: t (t - 1) / 2, of which nothing is lost, and a rest of at
// most a sixth of it. Around 1 and 2 logarithms take away most of it, and what is left has their errors and
// its own.
inline isa::TwoDoubles<double> long_log_gamma_of_one_plus(double t)
{
    static constexpr auto series = [] {
        auto c = log_gamma_deviation;
        c[0] -= 0.5;
        return c;
    }();
    const double left = 1.0 - t, lost = (1.0 - left) - t;
    const isa::TwoDoubles<double> product = isa::two_product<true>(t, left);
    const double rest = product.head * power_sum(2.0 * t - 1.0, series);
    return {-0.5 * product.head, 0.0 - (0.5 * (product.tail + t * lost) + rest)};
}

// ln x as a sum of two. Around 1 it is s = x - 1 and a rest, from the series of the area tangent in w = s /
// (2 + s), whose first term 2 w is s - s w.
inline isa::TwoDoubles<double> long_log(double x)
{
    static constexpr std::array<double, 9> series = {2.0 / 3,  2.0 / 5,  2.0 / 7,  2.0 / 9, 2.0 / 11,
                                                     2.0 / 13, 2.0 / 15, 2.0 / 17, 2.0 / 19};
    const double s = x - 1.0;
    if (std::abs(s) > 0.25) return {std::log(x), 0.0};
    const double w = s / (2.0 + s), w2 = w * w;
    return {s, w * w2 * power_sum(w2, series) - s * w};
}

// Sum and difference, rounded almost once.
inline double sum(const isa::TwoDoubles<double>& a, const isa::TwoDoubles<double>& b)
{
    const isa::TwoDoubles<double> heads = isa::two_sum(a.head, b.head);
    return heads.head + (heads.tail + (a.tail + b.tail));
}

inline double difference(const isa::TwoDoubles<double>& a, const isa::TwoDoubles<double>& b)
{
    return sum(a, {-b.head, -b.tail});
}

// ln Gamma(1 + t), 0 <= t <= 1.
template <class T>
inline double log_gamma_of_one_plus(double t)
{
    const double u = 2.0 * t - 1.0;
    const double p =
        is_double<T> ? power_sum(u, log_gamma_deviation) : power_sum(u, log_gamma_deviation_single);
    return t * (t - 1.0) * p;
}

// (x - 1) (x - 2) ... down to the last factor above 1, for 2 < x <= 10. Every factor is exact. The unused
// ones are 1, which costs less than a loop of unforeseeable length.
inline double falling_product(double x)
{
    const auto factor = [x](double k) { return std::max(1.0, x - k); };
    double even = x - 1.0, odd = factor(2);
    even *= factor(3);
    odd *= factor(4);
    even *= factor(5);
    odd *= factor(6);
    even *= factor(7);
    odd *= factor(8);
    return even * odd;
}

// x less a whole number, in [0, 1], for 2 < x <= 10. Adding 1.5 * 2^52 rounds to an integer, which takes half
// the time of a conversion; for an integer x the result is 0 or 1, and both serve.
inline double unit_part(double x)
{
    constexpr double rounder = 0x1.8p52;
    return x - ((x - 0.5 + rounder) - rounder);
}

// Gamma(x), 0 < x <= 10.
template <class T>
inline double gamma_of_positive(double x)
{
    if (x < 1.0) return gamma_of_one_plus<T>(x) / x;
    if (x <= 2.0) return gamma_of_one_plus<T>(x - 1.0);
    return gamma_of_one_plus<T>(unit_part(x)) * falling_product(x);
}

// Gamma(x), -10 <= x < 0 and not an integer. Single members take the long series, too: beside the zeros of
// the logarithm every digit of it counts.
inline double gamma_of_negative(double x)
{
    const int n = 1 - static_cast<int>(x);
    double product = x;
    for (int k = 1; k <= n; ++k) product *= x + k;
    return gamma_of_one_plus<double>(x + n) / product;
}

// ln Gamma(x), 0 < x <= 10. Beyond 3 the logarithm of the product is most of it.
template <class T>
inline double log_gamma_of_positive(double x)
{
    if constexpr (is_double<T>) {
        if (x < 1.0) return difference(long_log_gamma_of_one_plus(x), long_log(x));
        if (x <= 2.0) {
            const isa::TwoDoubles<double> value = long_log_gamma_of_one_plus(x - 1.0);
            return value.head + value.tail;
        }
        if (x <= 3.0) return sum(long_log_gamma_of_one_plus(x - 2.0), long_log(x - 1.0));
    }
    if (x < 1.0) return log_gamma_of_one_plus<T>(x) - std::log(x);
    if (x <= 2.0) return log_gamma_of_one_plus<T>(x - 1.0);
    return log_gamma_of_one_plus<T>(unit_part(x)) + std::log(falling_product(x));
}

// ln Gamma(x) less its Stirling part, x >= 10.
template <class T>
inline double stirling_correction(double x)
{
    if (x >= stirling_tail<T>) return 1.0 / (12.0 * x);
    constexpr std::size_t terms =
        series_length(stirling_series.data(), 15, is_double<T> ? machine<double>(3) : 1e-10);
    static constexpr auto series = shifted_powers<terms>(stirling_series.data(), 100.0L);
    const double r = 1.0 / x;
    return power_sum(r * r, series) * r;
}

// Gamma(x) beyond which no factor that an argument allows brings it back into the range of double.
inline constexpr double largest_useful = 200.0;

// factor Gamma(x), 10 < x <= largest_useful: sqrt(2 pi) x^(x - 1/2) e^(-x + correction). In double the power
// is formed in two halves, which do not overflow and have exact exponents, and the exponential of the
// correction, at most 1/120, is a short sum; the exponential of the whole exponent would lose two to three
// digits. A small factor comes in first, so that only the result can overflow.
template <class T>
inline double gamma_of_large(double x, double factor = 1.0)
{
    const double c = stirling_correction<T>(x);
    if constexpr (!is_double<T>) return factor * std::exp((x - 0.5) * std::log(x) - x + half_log_two_pi + c);
    const double half_power = std::pow(x, 0.5 * x - 0.25);
    const double growth =
        c * (1.0 + c * (1.0 / 2 + c * (1.0 / 6 + c * (1.0 / 24 + c * (1.0 / 120 + c * (1.0 / 720))))));
    const double g = factor * half_power * (root_two_pi * std::exp(-x)) * half_power;
    return g + g * growth;
}

// sin(pi y), y >= 0; exactly zero at integers. T selects the precision. Adding 2^52 rounds to the nearest
// integer, whose last bit is then the last of the sum; what remains of y is exact.
template <class T>
inline double sin_pi(double y)
{
    constexpr double rounder = 0x1p52;
    if (y >= rounder) return 0.0;
    const double sum = y + rounder;
    const double part = y - (sum - rounder);
    const double w = 8.0 * part * part - 1.0;
    const double sine = part * (is_double<T> ? power_sum(w, sine_of_pi) : power_sum(w, sine_of_pi_single));
    return (std::bit_cast<uint64_t>(sum) & 1) == 0 ? sine : -sine;
}

// ln Gamma(x), x > 10.
template <class T>
inline double log_gamma_of_large(double x)
{
    return (x - 0.5) * (std::log(x) - 1.0) + (half_log_two_pi - 0.5) + stirling_correction<T>(x);
}

}  // namespace orvel::special
