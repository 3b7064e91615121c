// tests/kernels/level1_updates_test.cpp - kernels that write vectors, against plain loops
#include <cmath>
#include <functional>

#include "tests/kernels/level1_support.h"

namespace {

using namespace orvel_test;

template <class T>
class Updates : public ::testing::Test {
protected:
    using K = Kernels<T>;
    using R = Real<T>;

    // Compares a kernel on x and y with a model of one step; both see the same vectors, poison and all.
    template <class Call, class Step>
    void two(const char* name, Call call, Step step)
    {
        SCOPED_TRACE(name);
        on_all_shapes([&](int32_t n, int32_t incx, int32_t incy) {
            for (const int64_t shift : {0, 1, 3}) {
                Strided<T> x(n, incx, shift), y(n, incy, 2 * shift), x1 = x, y1 = y;
                call(&n, x.first(), &incx, y.first(), &incy);
                for (int64_t k = 0; k < n; ++k) step(x1[k], y1[k]);
                EXPECT_TRUE(x == x1 && y == y1) << "shift " << shift;
            }
        });
    }

    // The same with one vector, which is empty for a negative increment.
    template <class Call, class Step>
    void one(const char* name, Call call, Step step)
    {
        SCOPED_TRACE(name);
        on_all_shapes([&](int32_t n, int32_t incx, int32_t shift) {
            Strided<T> x(n, incx, std::abs(shift % 4)), x1 = x;
            call(&n, x.first(), &incx);
            for (int64_t k = 0; k < (incx < 0 ? 0 : n); ++k) step(x1[k]);
            EXPECT_TRUE(x == x1);
        });
    }
};

TYPED_TEST_SUITE(Updates, All);

using I = const int32_t*;

TYPED_TEST(Updates, OfTwoVectorsAreThoseOfThePlainLoop)
{
    using T = TypeParam;
    using K = Kernels<T>;
    const T a = whole<T>() + T(9);
    const Real<T> b = -3, c = 3, s = -2;
    this->two("copy", K::copy, [](T& x, T& y) { y = x; });
    this->two("swap", K::swap, [](T& x, T& y) { std::swap(x, y); });
    this->two(
        "axpy", [&](I n, T* x, I ix, T* y, I iy) { K::axpy(n, &a, x, ix, y, iy); },
        [&](T& x, T& y) { y += a * x; });
    this->two(
        "vcal", [&](I n, T* x, I ix, T* y, I iy) { K::vcal(n, &a, x, ix, y, iy); },
        [&](T& x, T& y) { y = a * x; });
    this->two(
        "real vcal", [&](I n, T* x, I ix, T* y, I iy) { K::real_vcal(n, &b, x, ix, y, iy); },
        [&](T& x, T& y) { y = b * x; });
    this->two(
        "rot", [&](I n, T* x, I ix, T* y, I iy) { K::rot(n, x, ix, y, iy, &c, &s); },
        [&](T& x, T& y) {
            const T kept = c * x + s * y;
            y = c * y - s * x;
            x = kept;
        });
    // The rows: flag, the matrix by columns as it is given, and as it counts.
    const Real<T> rows[][9] = {{-1, 2, -3, 5, 7, 2, -3, 5, 7},
                               {0, 2, -3, 5, 7, 1, -3, 5, 1},
                               {1, 2, -3, 5, 7, 2, -1, 1, 7},
                               {-2, 2, -3, 5, 7, 1, 0, 0, 1}};
    for (const auto& row : rows)
        this->two(
            "rotm", [&](I n, T* x, I ix, T* y, I iy) { K::rotm(n, x, ix, y, iy, row); },
            [&](T& x, T& y) {
                const T kept = row[5] * x + row[7] * y;
                y = row[6] * x + row[8] * y;
                x = kept;
            });
    if constexpr (!is_complex<T>) {
        // The third vector has the increment of the second.
        this->two(
            "hprod", [](I n, T* x, I ix, T* y, I iy) { RealKernels<T>::hprod(n, x, ix, y, iy, y, iy); },
            [](T& x, T& y) { y *= x; });
    }
}

TYPED_TEST(Updates, OfOneVectorAreThoseOfThePlainLoop)
{
    using T = TypeParam;
    using K = Kernels<T>;
    const T a = whole<T>() + T(9);
    const Real<T> b = -3;
    this->one(
        "set", [&](I n, T* x, I ix) { K::set(n, &a, x, ix); }, [&](T& x) { x = a; });
    this->one(
        "scal", [&](I n, T* x, I ix) { K::scal(n, &a, x, ix); }, [&](T& x) { x *= a; });
    this->one(
        "real scal", [&](I n, T* x, I ix) { K::real_scal(n, &b, x, ix); }, [&](T& x) { x *= b; });
    this->one(
        "add", [&](I n, T* x, I ix) { K::add(n, &a, x, ix); }, [&](T& x) { x += a; });
    this->one(
        "sub", [&](I n, T* x, I ix) { K::sub(n, &a, x, ix); }, [&](T& x) { x = a - x; });
}

// The written vector begins d elements behind the read one, or before it.
TYPED_TEST(Updates, OfOverlappingVectorsGoElementByElement)
{
    using T = TypeParam;
    using K = Kernels<T>;
    const int32_t n = 100, one = 1;
    const T minus = -1;
    const Real<T> c = 0, s = 1;
    const auto step = [&](auto call, auto plain) {
        on_every_level([&] {
            for (const int d : {-17, -3, -1, 0, 1, 2, 3, 5, 7, 8, 15, 16, 17, 40}) {
                Strided<T> x(200, 1), model = x;
                call(x.first() + 50, x.first() + 50 + d);
                for (int k = 50; k < 50 + n; ++k) plain(model[k], model[k + d]);
                EXPECT_TRUE(x == model) << d;
            }
        });
    };
    step([&](T* x, T* y) { K::copy(&n, x, &one, y, &one); }, [](T& x, T& y) { y = x; });
    step([&](T* x, T* y) { K::swap(&n, x, &one, y, &one); }, [](T& x, T& y) { std::swap(x, y); });
    step([&](T* x, T* y) { K::axpy(&n, &minus, x, &one, y, &one); }, [](T& x, T& y) { y -= x; });
    step([&](T* x, T* y) { K::vcal(&n, &minus, x, &one, y, &one); }, [](T& x, T& y) { y = -x; });
    step([&](T* x, T* y) { K::rot(&n, x, &one, y, &one, &c, &s); },
         [](T& x, T& y) {
             const T kept = y;
             y = T() * y - x;
             x = T() * x + kept;
         });
}

TYPED_TEST(Updates, ByZeroReadNothingInAxpyAndKeepNaNInScal)
{
    using T = TypeParam;
    const int32_t n = 3, one = 1;
    const T zero = 0, nan = std::numeric_limits<Real<T>>::quiet_NaN();
    T x[] = {nan, 1, nan}, y[] = {1, 2, 3};
    Kernels<T>::axpy(&n, &zero, x, &one, y, &one);
    for (int k = 0; k < n; ++k) EXPECT_EQ(y[k], T(static_cast<Real<T>>(k + 1)));
    Kernels<T>::scal(&n, &zero, x, &one);
    EXPECT_NE(x[0], x[0]);
    EXPECT_EQ(x[1], zero);
}

// Vectors that stand beside each other, in both orders and at every distance, give the bits that they give
// far apart.
TYPED_TEST(Updates, BesideEachOtherGiveTheSameBits)
{
    using T = TypeParam;
    using K = Kernels<T>;
    const int32_t one = 1;
    const T a = T(static_cast<Real<T>>(1.1));
    const Real<T> c = static_cast<Real<T>>(0.6), s = static_cast<Real<T>>(0.8);
    const Real<T> rotation[] = {-1, c, -s, s, c};
    using Call = std::function<void(const int32_t*, T*, T*)>;
    std::vector<Call> calls = {[&](I n, T* x, T* y) { K::axpy(n, &a, x, &one, y, &one); },
                               [&](I n, T* x, T* y) { K::vcal(n, &a, x, &one, y, &one); },
                               [&](I n, T* x, T* y) { K::rot(n, x, &one, y, &one, &c, &s); },
                               [&](I n, T* x, T* y) { K::rotm(n, x, &one, y, &one, rotation); }};
    if constexpr (!is_complex<T>) {
        calls.push_back([&](I n, T* x, T* y) { RealKernels<T>::hprod(n, x, &one, y, &one, y, &one); });
    }
    on_every_level([&] {
        for (int32_t n = 1; n <= 20; ++n)
            for (std::size_t k = 0; k < calls.size(); ++k) {
                std::vector<T> room(200);
                for (T& e : room) e = random_value<T>(generator());
                for (int32_t d = -20; d <= 20; ++d) {
                    if (std::abs(d) < n) continue;
                    std::vector<T> near = room, x(&room[50], &room[50 + n]),
                                   y(&room[50 + d], &room[50 + d + n]);
                    calls[k](&n, &near[50], &near[50 + d]);
                    calls[k](&n, x.data(), y.data());
                    EXPECT_TRUE(std::equal(x.begin(), x.end(), &near[50]) &&
                                std::equal(y.begin(), y.end(), &near[50 + d]))
                        << "kernel " << k << " n " << n << " distance " << d;
                }
            }
    });
}

// Vectors that no cache holds take other loops.
TEST(LongVectors, GiveWhatShortOnesGive)
{
    const int32_t n = (16 << 20) / 8 + 1003, half = n / 2, one = 1, at = n - 5;
    const double a = 3;
    const orvel_dcomplex turn(0, 2);
    on_every_level([&] {
        std::vector<double> x(n), y(n), z(n);
        double dot = 0, sum = 0;
        for (int32_t k = 0; k < n; ++k) {
            x[k] = k % 7 - 3;
            y[k] = k % 5;
            dot += x[k] * y[k];
            sum += std::abs(x[k]);
        }
        EXPECT_EQ(DDOT(&n, x.data(), &one, y.data(), &one), dot);
        EXPECT_EQ(DASUM(&n, x.data(), &one), sum);
        DCOPY(&n, y.data(), &one, z.data(), &one);
        DAXPY(&n, &a, x.data(), &one, z.data(), &one);
        auto* const u = reinterpret_cast<orvel_dcomplex*>(x.data());
        ZAXPY(&half, &turn, u, &one, reinterpret_cast<orvel_dcomplex*>(z.data()), &one);
        for (int32_t k = 0; k < n; ++k) {
            const double turned = k >= 2 * half ? 0 : k % 2 == 0 ? -2 * x[k + 1] : 2 * x[k - 1];
            ASSERT_EQ(z[k], y[k] + 3 * x[k] + turned) << k;
        }
        x[at] = -9;
        x[at + 2] = 9;
        EXPECT_EQ(IDAMAX(&n, x.data(), &one), at + 1);
    });
}

#define ORVEL_NAME_OF(isa) #isa,

// One rounding for a product and a sum where the level has the instruction, two where it has not.
TEST(Levels, TheForcedOneRuns)
{
    const int32_t n = 40, one = 1;
    const double a = 1 + 0x1p-30;
    on_every_level([&] {
        std::vector<double> x(n, a), y(n, -1);
        DAXPY(&n, &a, x.data(), &one, y.data(), &one);
        const std::string level = orvel::kernels::loops().level;
        const double expected = level == "x86_64" ? 0x1p-29 : 0x1p-29 + 0x1p-60;
        for (const double value : y) EXPECT_EQ(value, expected) << level;
    });
    // All families take their tables at the level, in one place.
    static const char* const names[] = {ORVEL_FOR_EACH_LEVEL(ORVEL_NAME_OF)};
    on_every_level([](const std::string& level) { EXPECT_EQ(level, orvel::frame::at_level(names)); });
    EXPECT_FALSE(orvel::frame::force_level("none"));
    EXPECT_STREQ(orvel::kernels::loops().level, orvel::frame::level_name(orvel::frame::level_count() - 1));
}

}  // namespace
