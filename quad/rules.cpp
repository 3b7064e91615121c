// quad/rules.cpp - Q4AG to Q9AG: the Gauss-Kronrod rules
//
// The sums run in the order of the published rules, so that subdivision follows the published path to the
// bit: midpoint, pairs of the Gauss rule, other pairs. F is called in this order too.
#include "quad/rules.h"

#include <algorithm>
#include <cmath>

#include "frame/export.h"
#include "orvel/quad.h"
#include "quad/kronrod_tables.h"

namespace orvel::quad {

namespace {

// A table in the precision of the rule.
template <class T, int N>
struct Column {
    T value[N];

    consteval Column(const double (&table)[N])
    {
        for (int k = 0; k < N; ++k) value[k] = static_cast<T>(table[k]);
    }
    constexpr T operator[](int k) const { return value[k]; }
};
template <class T, int GaussPoints>
inline constexpr Column<T, GaussPoints + 1> nodes(KronrodTable<GaussPoints>::nodes);
template <class T, int GaussPoints>
inline constexpr Column<T, GaussPoints + 1> weights(KronrodTable<GaussPoints>::weights);
template <class T, int GaussPoints>
inline constexpr Column<T, (GaussPoints + 1) / 2> gauss_weights(KronrodTable<GaussPoints>::gauss_weights);

// On a piece of a few numbers the rounding of the midpoint and of a node can bring the node to an end or past
// it. F may be singular there, or not exist; its value at the midpoint is as good. The outermost nodes come
// first.
template <class T>
[[gnu::cold, gnu::noinline]] void keep_inside(T* x, int count, T low, T high, T centre)
{
    for (int j = 0; j < count && (x[j] <= low || x[j] >= high); ++j) x[j] = centre;
}

// The published error estimate: pessimistic where the rules are far from each other, 3/2 powers where not,
// and never below the roundoff of the sum.
template <class T>
T scaled_error(T difference, T absolute, T deviation)
{
    T error = std::abs(difference);
    if (deviation != T(0) && error != T(0)) {
        const T scale = T(200) * error / deviation;
        error = scale < T(1) ? deviation * std::pow(scale, T(1.5)) : deviation;
    }
    if (absolute > smallest<T> / (T(50) * spacing<T>))
        error = std::max(error, spacing<T> * T(50) * absolute);  // a NaN stays
    return error;
}

}  // namespace

template <class T, int GaussPoints>
Estimate<T> gauss_kronrod(const UserFunction<T>& function, T a, T b, T inner)
{
    constexpr int pairs = GaussPoints;
    constexpr bool gauss_has_midpoint = pairs % 2 != 0;
    constexpr auto& w = weights<T, GaussPoints>;
    constexpr auto& gauss_w = gauss_weights<T, GaussPoints>;
    const T mean_of_ends = mean_of(a, b), half = mean_of(-a, b), length = std::abs(half);
    const T centre = mean_of_ends == a || mean_of_ends == b ? inner : mean_of_ends;
    T left[pairs], right[pairs];  // nodes, then values there
    for (int j = 0; j < pairs; ++j) {
        const T away = half * nodes<T, GaussPoints>[j];
        left[j] = centre - away;
        right[j] = centre + away;
    }
    const T low = std::min(a, b), high = std::max(a, b);
    if (std::min(left[0], right[0]) <= low || std::max(left[0], right[0]) >= high) [[unlikely]] {
        keep_inside(left, pairs, low, high, centre);
        keep_inside(right, pairs, low, high, centre);
    }

    const auto f = function.call();
    const T middle = f(centre);
    T gauss = gauss_has_midpoint ? middle * gauss_w[pairs / 2] : T(0);
    T kronrod = middle * w[pairs];
    T absolute = std::abs(kronrod);
    const auto add_pair = [&](int j) {
        const T first = f(left[j]), second = f(right[j]), sum = first + second;
        left[j] = first;
        right[j] = second;
        kronrod += w[j] * sum;
        absolute += w[j] * (std::abs(first) + std::abs(second));
        return sum;
    };
    for (int j = 1; j < pairs; j += 2) gauss += gauss_w[j / 2] * add_pair(j);
    for (int j = 0; j < pairs; j += 2) add_pair(j);
    const T mean = kronrod * T(0.5);
    T deviation = w[pairs] * std::abs(middle - mean);
#pragma GCC unroll 2
    for (int j = 0; j < pairs; ++j)
        deviation += w[j] * (std::abs(left[j] - mean) + std::abs(right[j] - mean));
    if (half == T(0)) return {};  // whatever F is at that point

    absolute *= length;
    deviation *= length;
    return {kronrod * half, scaled_error((kronrod - gauss) * half, absolute, deviation), absolute, deviation};
}

namespace {

template <class T, int GaussPoints, Name Single>
void apply_rule(T (*f)(const T*), const T* a, const T* b, T* result, T* esterr, T* absint, T* devint)
{
    Routine<T, Single> me;
    const Estimate<T> e = gauss_kronrod<T, GaussPoints>({me.state(), f}, *a, *b, *a);
    *result = e.result;
    *esterr = e.error;
    *absint = e.absolute;
    *devint = e.deviation;
}

}  // namespace

template Estimate<float> gauss_kronrod<float, 7>(const UserFunction<float>&, float, float, float);
template Estimate<double> gauss_kronrod<double, 7>(const UserFunction<double>&, double, double, double);
template Estimate<float> gauss_kronrod<float, 10>(const UserFunction<float>&, float, float, float);
template Estimate<double> gauss_kronrod<double, 10>(const UserFunction<double>&, double, double, double);
template Estimate<float> gauss_kronrod<float, 15>(const UserFunction<float>&, float, float, float);
template Estimate<double> gauss_kronrod<double, 15>(const UserFunction<double>&, double, double, double);
template Estimate<float> gauss_kronrod<float, 20>(const UserFunction<float>&, float, float, float);
template Estimate<double> gauss_kronrod<double, 20>(const UserFunction<double>&, double, double, double);
template Estimate<float> gauss_kronrod<float, 25>(const UserFunction<float>&, float, float, float);
template Estimate<double> gauss_kronrod<double, 25>(const UserFunction<double>&, double, double, double);
template Estimate<float> gauss_kronrod<float, 30>(const UserFunction<float>&, float, float, float);
template Estimate<double> gauss_kronrod<double, 30>(const UserFunction<double>&, double, double, double);

}  // namespace orvel::quad

ORVEL_EXPORT_REALS(Q4AG, q4ag_, DQ4AG, dq4ag_, 7, orvel::quad::apply_rule, 7, "Q4AG");
ORVEL_EXPORT_REALS(Q5AG, q5ag_, DQ5AG, dq5ag_, 7, orvel::quad::apply_rule, 15, "Q5AG");
ORVEL_EXPORT_REALS(Q6AG, q6ag_, DQ6AG, dq6ag_, 7, orvel::quad::apply_rule, 20, "Q6AG");
ORVEL_EXPORT_REALS(Q7AG, q7ag_, DQ7AG, dq7ag_, 7, orvel::quad::apply_rule, 25, "Q7AG");
ORVEL_EXPORT_REALS(Q8AG, q8ag_, DQ8AG, dq8ag_, 7, orvel::quad::apply_rule, 30, "Q8AG");
ORVEL_EXPORT_REALS(Q9AG, q9ag_, DQ9AG, dq9ag_, 7, orvel::quad::apply_rule, 10, "Q9AG");
