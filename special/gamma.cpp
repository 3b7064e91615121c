// special/gamma.cpp - GAMMA: the gamma function
#include "special/gamma.h"

#include "frame/export.h"
#include "orvel/special.h"

namespace orvel::special {

namespace {

template <class T>
using Frame = Routine<T, "GAMMA">;

// Zero, negative and extreme arguments.
template <class T>
[[gnu::noinline]] double gamma_elsewhere(frame::State& s, T x)
{
    Frame<T> me(s);
    using Limits = GammaLimits<T>;
    constexpr double missing = static_cast<double>(machine<T>(6));
    const double wide = static_cast<double>(x);
    const auto close_to_pole = [&] {
        if (std::abs(distance_from_pole(x)) < Limits::dxrel)
            me.post(
                warning, 2,
                "The result is accurate to less than one half precision because X = %(R1) is too close to a negative integer.",
                {r(1, wide)});
    };
    const auto pole = [&](int32_t code) {
        me.post(terminal, code,
                "The argument for the function can not be a negative integer. Argument X = %(R1).",
                {r(1, wide)});
        return missing;
    };
    if (x != x) return missing;
    if (std::abs(x) <= T(10)) {
        if (x == T(0)) {
            me.post(terminal, 5, "The argument for the function can not be zero.");
            return missing;
        }
        if (x < T(0) && x == std::trunc(x)) return pole(6);
        if (x < T(-0.5)) close_to_pole();
        if (std::abs(x) < Limits::xsml) {
            me.post(terminal, 4, "The function overflows because X = %(R1) is too close to zero.",
                    {r(1, wide)});
            return missing;
        }
        return gamma_of_negative(wide);
    }
    if (x > Limits::xmax) {
        me.post(terminal, 4, "The function overflows because X = %(R1) is greater than %(R2).",
                {r(1, wide), r(2, static_cast<double>(Limits::xmax))});
        return missing;
    }
    if (x < Limits::xmin) {
        me.post(alert, 1,
                "The function underflows because X = %(R1) is less than %(R2). The result is set to zero.",
                {r(1, wide), r(2, static_cast<double>(Limits::xmin))});
        return 0.0;
    }
    const double sine = sin_pi<T>(-wide);
    if (sine == 0.0) return pole(7);
    close_to_pole();
    return -pi / (-wide * sine * gamma_of_large<T>(-wide));
}

}  // namespace

template <class T>
[[gnu::always_inline]] inline double gamma_in_frame(frame::State& s, T x)
{
    using Limits = GammaLimits<T>;
    if (x >= Limits::xsml && x <= Limits::xmax) {
        Frame<T>::visit(s);
        const double wide = static_cast<double>(x);
        return x <= T(10) ? gamma_of_positive<T>(wide) : gamma_of_large<T>(wide);
    }
    return gamma_elsewhere(s, x);
}

template <class T>
double gamma(frame::State& s, T x)
{
    return gamma_in_frame(s, x);
}

template double gamma<float>(frame::State&, float);
template double gamma<double>(frame::State&, double);

namespace {

template <class T>
T gamma_function(const T* x)
{
    return static_cast<T>(gamma_in_frame(frame::state(), *x));
}

}  // namespace

}  // namespace orvel::special

ORVEL_EXPORT_REALS(GAMMA, gamma_, DGAMMA, dgamma_, 1, orvel::special::gamma_function);
