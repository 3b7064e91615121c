// kernels/isa/level1.cpp - hot loops over contiguous vectors
#include "kernels/isa/loops.h"

namespace orvel::kernels {

namespace {

// Sums run in independent partial sums, so that they neither wait for each other nor depend on alignment.
template <class R>
R dot(int64_t n, const R* x, const R* y)
{
    R sum = 0;
    for (int64_t i = 0; i < n; ++i) sum += x[i] * y[i];
    return sum;
}

template <class R>
void axpy(int64_t n, R a, const R* x, R* y)
{
    for (int64_t i = 0; i < n; ++i) y[i] += a * x[i];
}

template <class R>
void complex_axpy(int64_t n, const R* a, const R* x, R* y)
{
    for (int64_t i = 0; i < n; ++i) {
        y[2 * i] += a[0] * x[2 * i] - a[1] * x[2 * i + 1];
        y[2 * i + 1] += a[0] * x[2 * i + 1] + a[1] * x[2 * i];
    }
}

template <class R>
constexpr RealLevel1<R> real = {dot<R>, axpy<R>};
template <class R>
constexpr ComplexLevel1<R> complex = {complex_axpy<R>};

}  // namespace

namespace ORVEL_ISA {

extern const Level1Loops level1;
const Level1Loops level1 = {real<float>, real<double>, complex<float>, complex<double>};

}  // namespace ORVEL_ISA

}  // namespace orvel::kernels
