// special/gamma.h - gamma routines inside their frames, for other routines of the family
#pragma once

#include <cmath>

#include "frame/constants.h"
#include "frame/routine.h"
#include "special/gamma_core.h"

namespace orvel::special {

// Gamma(x) before rounding to T; the quiet NaN after a TERMINAL error.
template <class T>
double gamma(frame::State& s, T x);

// ln |Gamma(x)| before rounding to T, and the sign of Gamma(x).
template <class T>
struct LogGamma {
    double value;
    T sign;
};
template <class T>
LogGamma<T> log_gamma_and_sign(frame::State& s, T x);

extern template double gamma<float>(frame::State&, float);
extern template double gamma<double>(frame::State&, double);
extern template LogGamma<float> log_gamma_and_sign(frame::State&, float);
extern template LogGamma<double> log_gamma_and_sign(frame::State&, double);

// How far x < -0.5, not an integer, is from the nearest integer, in units of x; evaluated in T, because it
// decides.
template <class T>
inline T distance_from_pole(T x)
{
    return (x - static_cast<T>(static_cast<int64_t>(x - T(0.5)))) / x;
}

// Newton's iteration for the ends of the range of Gamma, at most 10 steps each; tests of its failure allow
// fewer.
template <class T>
void gamma_range(T* xmin, T* xmax, int lower_steps = 10, int upper_steps = 10)
{
    Routine<T, "R9GAML", "D9GAML"> me;
    *xmin = *xmax = machine<T>(6);
    const auto solve = [](int steps, double start, auto step) {
        double x = start;
        for (int k = 0; k < steps; ++k) {
            const double change = step(x);
            x -= change;
            if (std::abs(change) < 0.005) return x;
        }
        return 0.0;
    };
    const double alnsml = std::log(static_cast<double>(machine<T>(1)));
    const double lower = solve(lower_steps, -alnsml, [=](double x) {
        return x * ((x + 0.5) * std::log(x) - x - 0.2258 + alnsml) / (x * std::log(x) + 0.5);
    });
    if (lower == 0.0) return me.post(terminal, 5, "Unable to determine the value of XMIN.");

    const double alnbig = std::log(static_cast<double>(machine<T>(2)));
    const double upper = solve(upper_steps, alnbig, [=](double x) {
        return x * ((x - 0.5) * std::log(x) - x + 0.9189 - alnbig) / (x * std::log(x) - 0.5);
    });
    if (upper == 0.0) return me.post(terminal, 6, "Unable to determine the value of XMAX.");
    *xmax = static_cast<T>(upper - 0.01);
    *xmin = static_cast<T>(std::max(-lower + 0.01, -(upper - 0.01) + 1.0));
}

}  // namespace orvel::special
