// tests/kernels/level1_support.h - kernels by precision, vectors with poison between their elements
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include "orvel/orvel.h"
#include "tests/levels.h"
#include "tests/numbers.h"

namespace orvel_test {

constexpr int32_t least = std::numeric_limits<int32_t>::min();

// The kernels of one precision: p names it, r in front of it the real results (SC, DZ), s a real scalar (CS,
// ZD).
template <class T>
struct Kernels;
#define ORVEL_TEST_KERNELS(T, p, r, s)             \
    template <>                                    \
    struct Kernels<T> {                            \
        static constexpr auto axpy = p##AXPY;      \
        static constexpr auto copy = p##COPY;      \
        static constexpr auto scal = p##SCAL;      \
        static constexpr auto real_scal = s##SCAL; \
        static constexpr auto swap = p##SWAP;      \
        static constexpr auto nrm2 = r##NRM2;      \
        static constexpr auto asum = r##ASUM;      \
        static constexpr auto amax = I##p##AMAX;   \
        static constexpr auto amin = I##p##AMIN;   \
        static constexpr auto rot = s##ROT;        \
        static constexpr auto rotm = s##ROTM;      \
        static constexpr auto set = p##SET;        \
        static constexpr auto vcal = p##VCAL;      \
        static constexpr auto real_vcal = s##VCAL; \
        static constexpr auto add = p##ADD;        \
        static constexpr auto sub = p##SUB;        \
    }
ORVEL_TEST_KERNELS(float, S, S, S);
ORVEL_TEST_KERNELS(double, D, D, D);
ORVEL_TEST_KERNELS(orvel_complex, C, SC, CS);
ORVEL_TEST_KERNELS(orvel_dcomplex, Z, DZ, ZD);

template <class T>
struct RealKernels;
#define ORVEL_TEST_REAL_KERNELS(T, p)           \
    template <>                                 \
    struct RealKernels<T> {                     \
        static constexpr auto dot = p##DOT;     \
        static constexpr auto sum = p##SUM;     \
        static constexpr auto xyz = p##XYZ;     \
        static constexpr auto hprod = p##HPROD; \
        static constexpr auto max = I##p##MAX;  \
        static constexpr auto min = I##p##MIN;  \
        static constexpr auto rotg = p##ROTG;   \
        static constexpr auto rotmg = p##ROTMG; \
    }
ORVEL_TEST_REAL_KERNELS(float, S);
ORVEL_TEST_REAL_KERNELS(double, D);

using All = ::testing::Types<float, double, orvel_complex, orvel_dcomplex>;

inline std::mt19937_64& generator()
{
    static std::mt19937_64 random(11);
    return random;
}

// Small whole numbers: all results of the kernels are exact, in whatever order they are formed.
template <class T>
T whole()
{
    const auto one = [] { return static_cast<Real<T>>(static_cast<int>(generator()() % 17) - 8); };
    return make<T>(one(), is_complex<T> ? one() : 0);
}

// n elements inc apart, `shift` elements behind an aligned address, with poison around and between them.
// Element k is the k-th in the order of the routines with two vectors.
template <class T>
class Strided {
public:
    Strided(int64_t n, int64_t inc, int64_t shift = 0) : inc_(inc), base_(shift + 8)
    {
        const int64_t span = n < 1 ? 0 : (n - 1) * std::abs(inc) + 1;
        storage_.assign(static_cast<std::size_t>(base_ + span + 8), T(static_cast<Real<T>>(-777)));
        start_ = base_ + (inc < 0 && n > 0 ? (n - 1) * -inc : 0);
        for (int64_t k = 0; k < n; ++k) (*this)[k] = whole<T>();
    }
    T& operator[](int64_t k) { return storage_[static_cast<std::size_t>(start_ + k * inc_)]; }
    T* first() { return storage_.data() + base_; }
    bool operator==(const Strided& other) const { return storage_ == other.storage_; }

private:
    int64_t inc_, base_, start_;
    std::vector<T> storage_;
};

// All levels, sizes and pairs of increments. Products pile up on one element where the increment is 0, so
// that only short vectors stay exact there.
template <class F>
void on_all_shapes(F body)
{
    on_every_level([&] {
        for (const int32_t n : {-1, 0, 1, 2, 3, 7, 8, 9, 31, 64, 65, 257, 1000})
            for (const int32_t incx : {1, 2, -1, -3, 0, least})
                for (const int32_t incy : {1, 2, -1, -3, 0, least}) {
                    if ((incx == least || incy == least) && n != 1) continue;
                    if (incx * incy == 0 && n > 9) continue;
                    SCOPED_TRACE(::testing::Message() << "n " << n << " incx " << incx << " incy " << incy);
                    body(n, incx, incy);
                    if (::testing::Test::HasFailure()) return;
                }
    });
}

}  // namespace orvel_test
