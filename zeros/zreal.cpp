// zeros/zreal.cpp - ZREAL: several zeros of a function by Muller's method with deflation
#include <algorithm>
#include <cmath>

#include "frame/export.h"
#include "frame/routine.h"
#include "kernels/level1.h"
#include "orvel/zeros.h"

namespace orvel::zeros {

namespace {

template <class T>
struct Criteria {
    T errabs, errrel, eps, eta;
    int32_t itmax;
};

// The search for one zero. Values are deflated: f1, f2, f3 from the oldest to the newest.
template <class T>
class Search {
public:
    Search(const UserFunction<T>& f, const Criteria<T>& want, const T* found, int32_t count)
        : f_(f), want_(want), found_(found), count_(count), most_moves_(most_moves(want, count))
    {}

    // Replaces the guess by the zero and returns the iterations; 0 when it was not found, and x is the last
    // point.
    int32_t run(T& x);

private:
    struct Value {
        T own, deflated;
    };
    static int64_t most_moves(const Criteria<T>& want, int32_t count);
    Value evaluate(T& x) const;
    T step_ratio(T f3) const;

    const UserFunction<T>& f_;
    const Criteria<T>& want_;
    const T* const found_;
    const int32_t count_;
    const int64_t most_moves_;
    T f1_ = 0, f2_ = 0, f3_ = 0;
    T step_ = 0, ratio_ = 0;
};

// The moves by ETA that lead past every neighbourhood of EPS, with two to spare for each; none where they
// would be endless.
template <class T>
int64_t Search<T>::most_moves(const Criteria<T>& want, int32_t count)
{
    const double each = 2.0 * static_cast<double>(want.eps) / std::abs(static_cast<double>(want.eta)) + 2.0;
    return each >= 0.0 && each <= 1e6 ? static_cast<int64_t>(static_cast<double>(count) * each) : 0;
}

// Divides the zeros found before out of the value. A point close to one of them is moved and looked at again
// until it is close to none; where moves do not get it away, it is taken as it is.
template <class T>
typename Search<T>::Value Search<T>::evaluate(T& x) const
{
    for (int64_t moves = most_moves_;; --moves) {
        T at = x;  // F may change its argument
        const T own = f_(at);
        bool close = false;
        for (int32_t j = 0; j < count_; ++j) close |= std::abs(x - found_[j]) < want_.eps;
        if (close && moves > 0 && x + want_.eta != x) {
            x += want_.eta;
            continue;
        }
        T deflated = own;  // divided only here, as a point that is moved may be a zero
        for (int32_t j = 0; j < count_; ++j) deflated /= x - found_[j];
        return {own, deflated};
    }
}

// Ratio of the next step to the last one, from the parabola through the last three points; of its zeros the
// one that is closer.
template <class T>
T Search<T>::step_ratio(T f3) const
{
    const T lambda = ratio_, delta = T(1) + lambda;
    const T q = lambda * lambda * f1_ - delta * delta * f2_ + (lambda + delta) * f3;
    const T discriminant = q * q - T(4) * f3 * lambda * delta * (lambda * f1_ - delta * f2_ + f3);
    const T root = std::sqrt(std::max(discriminant, T(0)));
    const T plus = q + root, minus = q - root;
    const T denominator = std::abs(plus) > std::abs(minus) ? plus : minus;
    return T(-2) * f3 * delta / (denominator == T(0) ? T(1) : denominator);
}

template <class T>
int32_t Search<T>::run(T& x)
{
    const T guess = x;
    const bool at_zero = guess == T(0);
    x = at_zero ? T(-1) : T(0.9) * guess;
    for (int32_t k = 1; k < want_.itmax; ++k) {
        const Value value = evaluate(x);
        if (std::abs(value.own) < want_.errabs && std::abs(value.deflated) < want_.errabs) return k;
        if (k == 1) {
            f1_ = value.deflated;
            x = at_zero ? T(1) : T(1.1) * guess;
            continue;
        }
        if (k == 2) {
            f2_ = value.deflated;
            x = guess;
            continue;
        }
        if (k == 3) {
            step_ = at_zero ? T(-1) : T(-0.1) * guess;
            ratio_ = T(-0.5);
        } else if (std::abs(value.deflated) < T(10) * std::abs(f3_)) {
            f1_ = f2_;
            f2_ = f3_;
        } else {
            step_ *= T(0.5);
            ratio_ *= T(0.5);
            x -= step_;
            continue;
        }
        f3_ = value.deflated;
        ratio_ = step_ratio(f3_);
        step_ *= ratio_;
        x += step_;
        if (std::abs(step_) < want_.errrel * std::abs(x)) return k;
    }
    return 0;
}

// Replaces the guesses by zeros. Returns how many were not found.
template <class T>
int32_t find_all(const UserFunction<T>& f, const Criteria<T>& want, int32_t count, T* x, int32_t* info)
{
    const int32_t not_found = want.itmax < INT32_MAX ? want.itmax + 1 : INT32_MAX;
    int32_t failures = 0;
    for (int32_t k = 0; k < count; ++k) {
        const int32_t iterations = Search<T>(f, want, x, k).run(x[k]);
        info[k] = iterations > 0 ? iterations : not_found;
        failures += iterations > 0 ? 0 : 1;
    }
    return failures;
}

template <class T>
void zreal(T (*f)(const T*), const T* errabs, const T* errrel, const T* eps, const T* eta,
           const int32_t* nroot, const int32_t* itmax, const T* xguess, T* x, int32_t* info)
{
    Routine<T, "ZREAL"> me;
    kernels::copy<T>(*nroot, xguess, 1, x, 1);
    const Criteria<T> want{*errabs, *errrel, *eps, *eta, std::max(*itmax, 1)};
    // Posted for each of them, when F is no longer called; the last one is printed.
    const int32_t failures = find_all<T>({me.state(), f}, want, *nroot, x, info);
    for (int32_t k = 0; k < failures; ++k)
        me.post(
            warning, 1,
            "Failure to converge within  ITMAX = %(I1) iterations for at least  one of the NROOT = %(I2) roots. ",
            {i(1, *itmax), i(2, *nroot)});
}

}  // namespace

}  // namespace orvel::zeros

ORVEL_EXPORT_REALS(ZREAL, zreal_, DZREAL, dzreal_, 10, orvel::zeros::zreal);
