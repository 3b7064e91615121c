// optim/uvmif.cpp - UVMIF: a minimum of a function of one variable by steps and quadratic interpolation
//
// Steps of growing length go downhill until three points enclose a minimum; the vertex of a parabola, kept
// away from the points there are, then takes the place of one of them until the enclosure is short enough.
#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "frame/export.h"
#include "frame/routine.h"
#include "orvel/optim.h"

namespace orvel::optim {

namespace {

template <class T>
struct Point {
    T x, f;
};

template <class T>
T with_sign_of(T length, T sign)
{
    return sign < T(0) ? -std::abs(length) : std::abs(length);
}

// Whether x / y > 0, and whether x / y < 1 for y other than 0: a search waits for its divisions more than for
// anything else.
template <class T>
bool same_direction(T x, T y)
{
    return (x > T(0) && y > T(0)) || (x < T(0) && y < T(0));
}
template <class T>
bool less_of(T x, T y)
{
    return y < T(0) ? x > y : x < y;
}

// One search. b is the best point. From the enclosure on, b lies between a and c, and d, the last point given
// up, beyond a.
template <class T>
class Search {
public:
    enum Next { evaluate, converged, bound_is_too_small, is_at_bound, cannot_refine };

    Search(T guess, T step, T bound, T xacc)
        : x0_(guess), h_(step), bound_(bound), acc_(xacc > T(0) ? xacc : T(0)), x_(guess)
    {}

    T next() const { return x_; }
    T best() const { return b_.x; }

    // Takes the value at next() and chooses another point.
    Next take(T value)
    {
        ++values_;
        return values_ == 1 ? start(value) : values_ == 2 ? second(value) : later(value);
    }

private:
    enum Stage { stepping, cut_to_bound, probing, enclosed, interpolating };

    Next start(T value);
    Next second(T value);
    Next later(T value);
    Next step();
    Next better(T value);
    Next grow();
    Next probe();
    Next update_enclosure();
    Next interpolate();
    T least_step(T s1, T s2);
    T choice(T vertex, T least) const;
    Next fall_back();

    const T x0_;
    T h_;
    const T bound_, acc_;
    T x_;
    int32_t values_ = 0;
    Stage stage_ = stepping;
    Point<T> a_{}, b_{}, c_{}, d_{};
};

template <class T>
typename Search<T>::Next Search<T>::start(T value)
{
    b_ = {x_, value};
    if (!(acc_ < bound_)) return bound_is_too_small;
    if (std::abs(h_) > bound_) h_ = with_sign_of(bound_, h_);
    if (h_ == T(0)) h_ = T(0.01) * bound_;
    if (h_ == T(0)) h_ = bound_;  // a hundredth of it rounds to zero
    if (acc_ > std::abs(h_)) h_ = with_sign_of(acc_, h_);
    // Half a step has to be a step, too. An infinite or NaN guess has none.
    const auto is_step = [&] {
        const T half = x0_ + T(0.5) * std::abs(h_);
        return x0_ < half && half < x0_ + std::abs(h_);
    };
    // Whatever the rounding mode, in some of which nothing becomes infinite.
    const T most = std::min(bound_, std::numeric_limits<T>::max() / T(5));
    while (std::abs(h_) <= most && !is_step()) h_ *= T(5);
    if (!is_step() || std::abs(h_) > bound_) return bound_is_too_small;
    return step();
}

template <class T>
typename Search<T>::Next Search<T>::step()
{
    if (std::abs(T(1.5) * h_ + b_.x - x0_) >= bound_) {
        stage_ = cut_to_bound;
        x_ = x0_ + with_sign_of(bound_, h_);
    } else {
        x_ = b_.x + h_;
    }
    return evaluate;
}

template <class T>
typename Search<T>::Next Search<T>::second(T value)
{
    if (value < b_.f) return better(value);
    a_ = {x_, value};
    h_ = -h_;
    stage_ = stepping;
    return step();
}

template <class T>
typename Search<T>::Next Search<T>::later(T value)
{
    d_ = a_;
    if (value < b_.f) return better(value);
    if (stage_ == probing) return is_at_bound;
    if (stage_ == stepping || stage_ == cut_to_bound) {
        c_ = {x_, value};
        stage_ = enclosed;
        return interpolate();
    }
    a_ = {x_, value};
    return update_enclosure();
}

template <class T>
typename Search<T>::Next Search<T>::better(T value)
{
    a_ = b_;
    b_ = {x_, value};
    switch (stage_) {
        case stepping:
            return grow();
        case cut_to_bound:
            return probe();
        case probing:
            c_ = d_;
            stage_ = enclosed;
            return interpolate();
        default:
            return update_enclosure();
    }
}

template <class T>
typename Search<T>::Next Search<T>::grow()
{
    if (values_ > 2) {
        const T r1 = (b_.x - a_.x) / (b_.x - d_.x), r2 = (b_.f - a_.f) / (b_.f - d_.f);
        T factor = T(9);
        if (r1 > r2) factor = std::min(std::max(T(2), (r1 - r2 / r1) * T(1.5) / (r2 - r1)), T(9));
        h_ *= factor;
    }
    return step();
}

// Looks just inside the bound, where the best point is.
template <class T>
typename Search<T>::Next Search<T>::probe()
{
    const T length = std::max(T(0.9) * acc_, T(0.01) * std::abs(b_.x - a_.x));
    T y = b_.x + with_sign_of(length, a_.x - b_.x);
    if (std::abs(y - b_.x) > std::abs(y - a_.x)) y = (b_.x + a_.x) / T(2);
    if (!same_direction(b_.x - y, b_.x - a_.x)) return is_at_bound;
    x_ = y;
    stage_ = probing;
    return evaluate;
}

// Restores the order d, a, b, c. Where d, a and b are level and c is not, a parabola through them says
// nothing: the same points are read in the other order, with a in the middle (d, a, b, c become c, b, a, d).
// That is done once, because the new c is level.
template <class T>
typename Search<T>::Next Search<T>::update_enclosure()
{
    if (!same_direction(b_.x - a_.x, c_.x - d_.x)) std::swap(c_, d_);
    if (c_.f != b_.f && d_.f == b_.f && a_.f == b_.f) {
        std::swap(a_, b_);
        std::swap(c_, d_);
    }
    return interpolate();
}

// a / b, infinite without raising overflow or division by zero: points may be as near, and parabolas as flat,
// as they like.
template <class T>
T quotient(T a, T b)
{
    using Limits = std::numeric_limits<T>;
    if (!(std::abs(b) < T(1)) || !(std::abs(a) >= std::abs(b) * Limits::max()) || a == T(0)) return a / b;
    return std::signbit(a) == std::signbit(b) ? Limits::infinity() : -Limits::infinity();
}

// The least distance of the next point from b; s1 and s2 are the slopes from b to c and to a.
template <class T>
T Search<T>::least_step(T s1, T s2)
{
    const T width = c_.x - a_.x;
    T least = std::abs(width);
    if (stage_ == enclosed) {
        least *= T(0.01);
        stage_ = interpolating;
    } else if (s2 == T(0)) {
        least = T(0);
    } else {
        const T s3 = quotient(d_.f - a_.f, d_.x - a_.x);
        if (same_direction(s2 - s3, width))
            least = std::min(
                least, T(0.5) * std::abs((quotient(width, s2 - s1) + quotient(d_.x - b_.x, s3 - s2)) * s2));
    }
    return std::max(least, T(0.9) * acc_);
}

template <class T>
typename Search<T>::Next Search<T>::interpolate()
{
    const T s1 = quotient(b_.f - c_.f, b_.x - c_.x), s2 = quotient(a_.f - b_.f, a_.x - b_.x);
    const T least = least_step(s1, s2);
    const T vertex = s1 == s2 ? b_.x : quotient(((b_.x + a_.x) * s1 - (b_.x + c_.x) * s2) * T(0.5), s1 - s2);
    if (less_of(c_.x - b_.x, b_.x - a_.x)) std::swap(a_, c_);
    const T w = c_.x - b_.x;
    if (acc_ >= std::abs(w)) return converged;
    const T y = choice(vertex, least);
    if (y == b_.x || !same_direction(c_.x - y, w) || !same_direction(y - a_.x, w)) return fall_back();
    x_ = y;
    return evaluate;
}

// The next point; c is on the wider side of b.
template <class T>
T Search<T>::choice(T vertex, T least) const
{
    const T w = c_.x - b_.x, d = std::abs(w), off = vertex - b_.x;
    if (quotient(w, b_.x - a_.x) > T(10)) {
        const T shortest = std::max(least, std::abs(b_.x - a_.x));
        const T length = std::min(std::max(shortest, w < T(0) ? off * T(-3) : off * T(3)), T(0.1) * d);
        return b_.x + with_sign_of(length, w);
    }
    if (d > T(2.9) * acc_) {
        if (!(std::abs(off) < least)) return vertex;
        T y = b_.x + with_sign_of(least, off);
        if (std::abs(y - b_.x) > std::abs(y - a_.x)) y = b_.x + with_sign_of(least, w);
        return std::abs(y - b_.x) > std::abs(y - c_.x) ? (b_.x + c_.x) / T(2) : y;
    }
    const T y = (b_.x + c_.x) / T(2);
    return std::abs(y - b_.x) > acc_ ? T(0.67) * b_.x + T(0.33) * c_.x : y;
}

// The point next to b on the side of c, by halving.
template <class T>
typename Search<T>::Next Search<T>::fall_back()
{
    const T w = c_.x - b_.x;
    T p = c_.x;
    for (;;) {
        const T middle = (b_.x + p) / T(2);
        if (!((middle - b_.x) / w > T(0)) || !((p - middle) / w > T(0))) break;
        p = middle;
    }
    if (p == c_.x) return cannot_refine;
    x_ = p;
    return evaluate;
}

template <class T>
typename Search<T>::Next minimize(const UserFunction<T>& f, Search<T>& search, int32_t maxfn)
{
    for (int32_t calls = 1;; ++calls) {
        T at = search.next();  // F may change its argument
        const auto next = search.take(f(at));
        if (next != Search<T>::evaluate || calls >= maxfn) return next;
    }
}

template <class T>
void uvmif(T (*f)(const T*), const T* xguess, const T* step, const T* bound, const T* xacc,
           const int32_t* maxfn, T* x)
{
    Routine<T, "UVMIF"> me;
    using S = Search<T>;
    S search(*xguess, *step, *bound, *xacc);
    const typename S::Next outcome = minimize<T>({me.state(), f}, search, *maxfn);
    *x = search.best();
    if (outcome == S::bound_is_too_small)
        me.post(terminal, 1, "The input value for BOUND is too small.  No change in X can be made.");
    else if (outcome == S::cannot_refine)
        me.post(warning, 1, "Computer rounding errors prevent further refinement of X.");
    else if (outcome == S::is_at_bound)
        me.post(warning, 2,
                "The final value for X is at a bound.  The minimum is probably beyond the bound.");
    else if (outcome == S::evaluate)
        me.post(fatal, 3, "The maximum number of function evaluations, MAXFN = %(I1), has been exceeded.",
                {i(1, *maxfn)});
}

}  // namespace

}  // namespace orvel::optim

ORVEL_EXPORT_REALS(UVMIF, uvmif_, DUVMIF, duvmif_, 7, orvel::optim::uvmif);
