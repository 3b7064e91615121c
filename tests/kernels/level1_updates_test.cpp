// tests/kernels/level1_updates_test.cpp - kernels that write vectors, against plain loops
#include <cmath>
#include <functional>
#include <tuple>

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

// A kernel with its scalars, which stand behind the count or at the end.
template <class Kernel, class Scalar>
auto with(Kernel kernel, const Scalar& a)
{
    return [kernel, &a](auto n, auto... vectors) { kernel(n, &a, vectors...); };
}
template <class Kernel, class... Scalars>
auto followed(Kernel kernel, const Scalars*... scalars)
{
    return [=](auto... vectors) { kernel(vectors..., scalars...); };
}

TYPED_TEST(Updates, OfTwoVectorsAreThoseOfThePlainLoop)
{
    using T = TypeParam;
    using K = Kernels<T>;
    const T a = whole<T>() + T(9);
    const Real<T> b = -3, c = 3, s = -2;
    this->two("copy", K::copy, [](T& x, T& y) { y = x; });
    this->two("swap", K::swap, [](T& x, T& y) { std::swap(x, y); });
    this->two("axpy", with(K::axpy, a), [&](T& x, T& y) { y += a * x; });
    this->two("vcal", with(K::vcal, a), [&](T& x, T& y) { y = a * x; });
    this->two("real vcal", with(K::real_vcal, b), [&](T& x, T& y) { y = b * x; });
    const auto rotated = [&](T& x, T& y) { std::tie(x, y) = std::pair<T, T>(c * x + s * y, c * y - s * x); };
    this->two("rot", followed(K::rot, &c, &s), rotated);
    // The rows: flag, the matrix by columns as it is given, and as it counts.
    const Real<T> rows[][9] = {{-1, 2, -3, 5, 7, 2, -3, 5, 7},
                               {0, 2, -3, 5, 7, 1, -3, 5, 1},
                               {1, 2, -3, 5, 7, 2, -1, 1, 7},
                               {-2, 2, -3, 5, 7, 1, 0, 0, 1}};
    for (const auto& row : rows) {
        const auto mixed = [&](T& x, T& y) {
            std::tie(x, y) = std::pair<T, T>(row[5] * x + row[7] * y, row[6] * x + row[8] * y);
        };
        this->two("rotm", followed(K::rotm, &row[0]), mixed);
    }
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
    this->one("set", with(K::set, a), [&](T& x) { x = a; });
    this->one("scal", with(K::scal, a), [&](T& x) { x *= a; });
    this->one("real scal", with(K::real_scal, b), [&](T& x) { x *= b; });
    this->one("add", with(K::add, a), [&](T& x) { x += a; });
    this->one("sub", with(K::sub, a), [&](T& x) { x = a - x; });
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
                call(&n, x.first() + 50, &one, x.first() + 50 + d, &one);
                for (int k = 50; k < 50 + n; ++k) plain(model[k], model[k + d]);
                EXPECT_TRUE(x == model) << d;
            }
        });
    };
    step(K::copy, [](T& x, T& y) { y = x; });
    step(K::swap, [](T& x, T& y) { std::swap(x, y); });
    step(with(K::axpy, minus), [](T& x, T& y) { y -= x; });
    step(with(K::vcal, minus), [](T& x, T& y) { y = -x; });
    const auto turned = [](T& x, T& y) { std::tie(y, x) = std::pair<T, T>(T() * y - x, T() * x + y); };
    step(followed(K::rot, &c, &s), turned);
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
    const T a = make<T>(static_cast<Real<T>>(1.1), is_complex<T> ? static_cast<Real<T>>(0.7) : Real<T>());
    const Real<T> c = static_cast<Real<T>>(0.6), s = static_cast<Real<T>>(0.8);
    const Real<T> rotation[] = {-1, c, -s, s, c};
    using Call = std::function<void(I, T*, I, T*, I)>;
    std::vector<Call> calls = {with(K::axpy, a), with(K::vcal, a), followed(K::rot, &c, &s),
                               followed(K::rotm, &rotation[0])};
    if constexpr (!is_complex<T>) {
        calls.push_back([](I n, T* x, I ix, T* y, I iy) { RealKernels<T>::hprod(n, x, ix, y, iy, y, iy); });
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
                    calls[k](&n, &near[50], &one, &near[50 + d], &one);
                    calls[k](&n, x.data(), &one, y.data(), &one);
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
        DSCAL(&n, &a, y.data(), &one);
        for (int32_t k = 0; k < n; ++k) ASSERT_EQ(y[k], 3 * (k % 5)) << k;
        // So do matrices.
        const int32_t columns = 13, rows = n / columns;
        const double none = 0, unit = 1;
        std::vector<double> by_columns(columns), by_rows(columns), right(rows, 7);
        for (int32_t j = 0; j < columns; ++j) by_columns[j] = j - 5;
        DGEMV("N", &rows, &columns, &unit, x.data(), &rows, by_columns.data(), &one, &none, right.data(),
              &one);
        DGEMV("T", &rows, &columns, &unit, x.data(), &rows, y.data(), &one, &none, by_rows.data(), &one);
        for (int32_t i = 0; i < rows; ++i) {
            double expected = 0;
            for (int32_t j = 0; j < columns; ++j) {
                expected += x[i + j * rows] * (j - 5);
                by_rows[j] -= x[i + j * rows] * y[i];
            }
            ASSERT_EQ(right[i], expected) << i;
        }
        EXPECT_EQ(by_rows, std::vector<double>(columns));
    });
}

}  // namespace
