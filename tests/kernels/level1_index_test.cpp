// tests/kernels/level1_index_test.cpp - index of largest and smallest elements
#include "tests/kernels/level1_support.h"

namespace {

using namespace orvel_test;

template <class T>
class Index : public ::testing::Test {
protected:
    using R = Real<T>;
    using Kernel = int32_t (*)(const int32_t*, const T*, const int32_t*);

    static R magnitude(T x) { return std::abs(std::real(x)) + std::abs(std::imag(x)); }

    // body(kernel, key), where the kernel finds the first element with the largest key.
    template <class F>
    static void each(F body)
    {
        body(Kernels<T>::amax, [](T x) { return magnitude(x); });
        body(Kernels<T>::amin, [](T x) { return -magnitude(x); });
        if constexpr (!is_complex<T>) {
            body(RealKernels<T>::max, [](T x) { return x; });
            body(RealKernels<T>::min, [](T x) { return -x; });
        }
    }

    template <class Key>
    static int32_t model(int32_t n, const T* x, int32_t inc, Key key)
    {
        int64_t best = 0;
        for (int64_t k = 1; k < n; ++k)
            if (key(x[k * inc]) > key(x[best * inc])) best = k;
        return static_cast<int32_t>(best + 1);
    }
};

TYPED_TEST_SUITE(Index, All);

// Few different values, so that nearly every vector has ties; some elements are no numbers, at times the
// first.
TYPED_TEST(Index, IsThatOfTheFirstBest)
{
    using T = TypeParam;
    const T nan = std::numeric_limits<Real<T>>::quiet_NaN();
    on_every_level([&] {
        for (const int32_t n : {2, 3, 7, 8, 9, 15, 16, 31, 64, 65, 127, 128, 129, 257, 1000})
            for (const int32_t inc : {1, 2, 3})
                for (int trial = 0; trial < std::max(40, std::min(8 * n, 2056)); ++trial) {
                    Strided<T> x(n, inc, trial % 5);
                    if (trial % 4 == 1)
                        for (int k = 0; k < n / 3 + 1; ++k) x[generator()() % n] = nan;
                    if (trial % 8 == 2) x[0] = nan;
                    // One best element, at every place in turn.
                    if (trial % 4 == 3) x[trial / 8 % n] = T(trial % 8 == 3 ? 99 : -99);
                    if (trial % 4 == 0) x[trial / 4 % n] = 0;
                    this->each([&](auto kernel, auto key) {
                        EXPECT_EQ(kernel(&n, x.first(), &inc), this->model(n, x.first(), inc, key))
                            << "n " << n << " inc " << inc << " trial " << trial;
                    });
                }
    });
}

TYPED_TEST(Index, OfBadAndTrivialShapes)
{
    using T = TypeParam;
    const T x[] = {1, 5, 7};
    this->each([&](auto kernel, auto) {
        for (const int32_t n : {0, -1, least}) EXPECT_EQ(kernel(&n, nullptr, nullptr), 0);
        const int32_t one = 1, three = 3, zero = 0, back = -1;
        EXPECT_EQ(kernel(&one, nullptr, nullptr), 1);
        EXPECT_EQ(kernel(&three, x, &zero), 1);
        EXPECT_EQ(kernel(&three, x + 2, &back), 0);
    });
}

}  // namespace
