// tests/fft/fft_test.cpp - transforms against sums from the definition, work vectors, errors
#include <gtest/gtest.h>

#include "fft/factors.h"
#include "fft/roots.h"
#include "fft/short.h"
#include "tests/fft/transforms.h"
#include "tests/levels.h"
#include "tests/refusing_memory.h"
#include "tests/support.h"

namespace {

using namespace orvel_test;

const Documented& documented()
{
    static const Documented figures(ORVEL_FFT_HEADER);
    return figures;
}

template <class R>
class Fft : public Quiet {
protected:
    using C = std::complex<R>;
    using L = Library<R>;

    Fft() { set_switches(0, 1, 0); }

    static void expect_within(const Error& bound, const Error& e, int64_t n, const std::string& what)
    {
        ASSERT_TRUE(e.is_within(bound)) << what << ", N = " << n << ": " << e << ", not " << bound;
    }

    // Initialized work vectors with guards behind them, and transforms with them.
    static constexpr R guard = 7;
    struct Work {
        int32_t n;
        std::vector<R> complex, real, second;

        explicit Work(int32_t length)
            : n(length), complex(vector(4 * int64_t{n} + 15)), real(vector(2 * int64_t{n} + 15)),
              second(vector(2 * int64_t{n}))
        {
            L::FftCi(&n, complex.data());
            L::FftRi(&n, real.data());
        }
        ~Work()
        {
            for (const auto* w : {&complex, &real, &second})
                EXPECT_EQ(std::count(w->end() - 8, w->end(), guard), 8) << "beyond a work vector, N = " << n;
        }
        void store_factors(const std::vector<R>& stored)
        {
            std::copy(stored.begin(), stored.end(), complex.begin() + 4 * n);
            std::copy(stored.begin(), stored.end(), real.begin() + 2 * n);
        }
        void cf(const C* x, C* y) { L::F2tCf(&n, x, y, complex.data(), second.data()); }
        void cb(const C* x, C* y) { L::F2tCb(&n, x, y, complex.data(), second.data()); }
        void rf(const R* x, R* y) { L::F2tRf(&n, x, y, real.data()); }
        void rb(const R* x, R* y) { L::F2tRb(&n, x, y, real.data()); }

    private:
        static std::vector<R> vector(int64_t size)
        {
            std::vector<R> w(size + 8, std::numeric_limits<R>::quiet_NaN());
            std::fill(w.end() - 8, w.end(), guard);
            return w;
        }
    };

    // Both directions, in place and not, one work vector for all.
    static void check(const Sample<R>& sample)
    {
        const int32_t n = sample.n;
        const Errors& bounds = documented().bounds[Documented::class_of(n)];
        Work work(n);
        const std::vector<C>& x = sample.x;
        std::vector<C> y(n), z(x);
        work.cf(x.data(), y.data());
        if (!sample.exact.empty()) expect_within(bounds.transform, error(y, sample.exact), n, "forward");
        work.cf(z.data(), z.data());
        EXPECT_TRUE(z == y) << "forward in place, N = " << n;

        // The backward transform of conj(x) is the conjugate of the forward one of x.
        std::vector<C> mirrored(n), back(n);
        for (int32_t j = 0; j < n; ++j) mirrored[j] = std::conj(x[j]);
        work.cb(mirrored.data(), back.data());
        for (C& v : back) v = std::conj(v);
        if (!sample.exact.empty()) expect_within(bounds.transform, error(back, sample.exact), n, "backward");
        work.cb(mirrored.data(), mirrored.data());
        for (C& v : mirrored) v = std::conj(v);
        EXPECT_TRUE(mirrored == back) << "backward in place, N = " << n;
        work.cb(y.data(), y.data());
        expect_within(bounds.pair, error(y, x, n), n, "there and back");

        std::vector<R> c(n), in_place(sample.real), from(n);
        work.rf(sample.real.data(), c.data());
        if (!sample.exact.empty())
            expect_within(bounds.transform, error(unpacked(c), sample.exact_of_real), n, "real");
        work.rf(in_place.data(), in_place.data());
        EXPECT_TRUE(in_place == c) << "real in place, N = " << n;
        work.rb(c.data(), from.data());
        expect_within(bounds.pair, error(from, sample.real, n), n, "real there and back");
        work.rb(c.data(), c.data());
        EXPECT_TRUE(from == c) << "real backward in place, N = " << n;
    }

    // Every coefficient, on every level; the exact ones are made once.
    static void check_on_every_level(int32_t n)
    {
        Exact exact(n);
        const Sample<R> sample(n, static_cast<uint64_t>(n), exact);
        on_every_level([&] { check(sample); });
    }

    Capture printed;
};

using Precisions = ::testing::Types<float, double>;
TYPED_TEST_SUITE(Fft, Precisions);

TYPED_TEST(Fft, EveryLengthToThreeHundred)
{
    for (int32_t n = 1; n <= 300 && !this->HasFailure(); ++n) this->check_on_every_level(n);
    EXPECT_EQ(this->printed.take(), "");
}

// Powers, blocks of every kind, composites of large factors, convolutions inside composites; odd lengths
// whose parts have large factors, and such without parts. The longest only there and back.
TYPED_TEST(Fft, LongLengths)
{
    for (const int32_t n :
         {512,      1000,    1024,      1200,  2048,    2187,    2197,     2401,         3 * 773,
          3375,     4096,    5040,      8192,  9973,    3 << 12, 13 * 997, 1 << 14,      14641,
          2 * 8191, 1 << 15, 131 * 137, 59049, 5 << 13, 3 << 15, 1 << 17,  127 * 131 * 3})
        this->check_on_every_level(n);
    Exact exact(1 << 20);
    this->check(Sample<TypeParam>(1 << 20, 1, exact));
    for (const int32_t n : {5 << 18, 300007}) this->check(Sample<TypeParam>(n, 1));
}

TYPED_TEST(Fft, StoredFactors)
{
    using R = TypeParam;
    const struct {
        int32_t n;
        std::vector<R> factors;
    } rows[] = {{2, {2}},
                {8, {2, 4}},
                {12, {4, 3}},
                {14, {2, 7}},
                {16, {4, 4}},
                {30, {2, 3, 5}},
                {97, {97}},
                {121, {11, 11}},
                {1000, {2, 4, 5, 5, 5}},
                {5040, {4, 4, 3, 3, 5, 7}},
                {2 * 1594323, {2, 9, 3, 3, 3, 3, 3, 3, 3, 3, 3, 3, 3}}};
    for (const auto& row : rows) {
        const typename TestFixture::Work work(row.n);
        std::vector<R> expected{static_cast<R>(row.n), static_cast<R>(row.factors.size())};
        expected.insert(expected.end(), row.factors.begin(), row.factors.end());
        for (std::size_t k = 0; k < expected.size(); ++k) {
            EXPECT_EQ(work.real[2 * row.n + k], expected[k]) << row.n;
            EXPECT_EQ(work.complex[4 * row.n + k], expected[k]) << row.n;
        }
    }
    // What the short way knows of them.
    int known = 0;
    for (int32_t n = 2; n <= orvel::fft::longest_short; ++n) {
        R stored[15];
        orvel::fft::store_factors(orvel::fft::factorize(n), stored);
        const int place = orvel::fft::place_of<false>(n), of_real = orvel::fft::place_of<true>(n);
        EXPECT_EQ(orvel::fft::place_of<false>(n, stored, 0), place) << n;
        EXPECT_EQ(orvel::fft::place_of<true>(n, stored, 0), of_real) << n;
        known += (place >= 0) + (of_real >= 0);
        ++stored[2];
        EXPECT_LT(orvel::fft::place_of<false>(n, stored, 0), 0) << n;
    }
    const auto odd = std::count_if(std::begin(orvel::fft::composites), std::end(orvel::fft::composites),
                                   [](const auto& c) { return c.length() % 2 == 1; });
    EXPECT_EQ(known, 2 * orvel::fft::short_lengths + 2 * orvel::fft::composite_count - 1 + odd);
    // Lengths and factors that a single real rounds, and the longest lists of each kind.
    for (const int64_t n : {2147483647LL, 2 * 1073741789LL, 16777259LL, 1LL << 30, 1LL << 27, 1162261467LL,
                            1464843750LL, 2050781250LL}) {
        const orvel::fft::Factors f = orvel::fft::factorize(n);
        R stored[16] = {};
        orvel::fft::Factors again;
        stored[15] = this->guard;
        orvel::fft::store_factors(f, stored);
        ASSERT_TRUE(orvel::fft::read_factors(n, stored, again)) << n;
        ASSERT_EQ(again.count, f.count) << n;
        int64_t product = 1;
        for (int32_t k = 0; k < again.count; ++k) product *= again.factor[k];
        EXPECT_EQ(product, n);
        EXPECT_LE(stored[1], 13);
        EXPECT_EQ(stored[15], this->guard);
    }
}

// Roots against the C library in more precision: half an ulp of 1 and what the corrections leave.
TYPED_TEST(Fft, Roots)
{
    using R = TypeParam;
    for (const int64_t n : {7, 360, 1024, 4099, 65536, 200003}) {
        std::vector<Wide> exact(n);
        for (int64_t j = 0; j < n; ++j) exact[j] = root(j, n);
        on_every_level([&] {
            long double worst = 0;
            for (const int64_t step : {1, 3}) {
                std::vector<R> c(n + 1, 7), s(n + 1, 7);
                orvel::fft::roots<R>(n, step - 1, step, n, 1, c.data(), s.data());
                for (int64_t j = 0; j < n; ++j) {
                    const Wide& right = exact[(step - 1 + step * j) % n];
                    worst = std::max(worst, std::abs(c[j] - right.real()));
                    worst = std::max(worst, std::abs(s[j] + right.imag()));
                }
                EXPECT_EQ(c[n] + s[n], 14);
            }
            EXPECT_LE(worst, documented().root * std::numeric_limits<R>::epsilon()) << n;
        });
    }
}

// Without heap, workers sum directly where they wanted scratch, long ones give the same bits, and the fronts
// say so.
TYPED_TEST(Fft, WithoutStorage)
{
    using R = TypeParam;
    for (const int32_t n : {131 * 4, 3 * 131, 9 * 131, 135, 149, 13 * 13 * 13, 1 << 14, 5 << 14}) {
        Exact exact(n);
        const Sample<R> sample(n, 1, exact);
        typename TestFixture::Work work(n);
        std::vector<std::complex<R>> y(n);
        std::vector<R> c(n), back(n), usual(n), in_place(sample.real);
        work.rf(sample.real.data(), usual.data());
        refuse(every);
        work.cf(sample.x.data(), y.data());
        work.rf(sample.real.data(), c.data());
        work.rf(in_place.data(), in_place.data());
        work.rb(c.data(), back.data());
        refuse(0);
        // Rounding errors of sums of N terms, each relative to the sum so far, add up like a random walk.
        const double mean = 1 + 0.2 * std::sqrt(n / std::log2(n));
        const Error bound = {mean, 5 * mean};
        this->expect_within(bound, error(y, sample.exact), n, "complex");
        this->expect_within(bound, error(unpacked(c), sample.exact_of_real), n, "real");
        this->expect_within(bound, error(back, sample.real, n), n, "real there and back");
        EXPECT_TRUE(in_place == c) << n;
        EXPECT_TRUE(usual == c || n % 2 != 0 || n % 131 == 0) << n;
    }
}

// Long results on whole lines are written another way, with the same bits.
TYPED_TEST(Fft, LongResultsOnWholeLines)
{
    using R = TypeParam;
    using C = std::complex<R>;
    for (const int32_t n : {(8 << 20) / int32_t{sizeof(C)}, (10 << 20) / int32_t{sizeof(C)}}) {
        const std::vector<C> x = random_pairs<R>(n, 3);
        typename TestFixture::Work work(n);
        std::vector<C> result(n + 8), other(n + 8);
        const auto line = [](std::vector<C>& y) {
            return reinterpret_cast<C*>((reinterpret_cast<uintptr_t>(y.data()) + 63) / 64 * 64);
        };
        on_every_level([&] {
            for (const bool forward : {true, false}) {
                for (C* y : {line(result), line(other) + 1})
                    forward ? work.cf(x.data(), y) : work.cb(x.data(), y);
                EXPECT_TRUE(std::equal(line(result), line(result) + n, line(other) + 1)) << n;
            }
        });
    }
}

// Factors in an order that no initialisation makes: pairs that a long list stores as one are those two;
// others belong to no table, but lead nowhere outside the arrays.
TYPED_TEST(Fft, FactorsInAnotherOrder)
{
    using R = TypeParam;
    const struct {
        bool same;
        std::vector<R> stored;
    } rows[] = {{true, {729, 4, 9, 9, 3, 3}},
                {true, {15625, 4, 25, 5, 25, 5}},
                {true, {8192, 6, 8, 4, 4, 4, 4, 4}},
                {true, {49152, 6, 16, 16, 4, 4, 4, 3}},
                {false, {8192, 7, 4, 2, 4, 4, 4, 4, 4}},
                {false, {8192, 7, 4, 4, 4, 4, 4, 4, 2}},
                {false, {8192, 13, 2, 2, 2, 2, 2, 2, 2, 2, 2, 2, 2, 2, 2}},
                {false, {8192, 4, 16, 16, 8, 4}},
                {false, {12288, 7, 3, 4, 4, 4, 4, 4, 4}},
                {false, {20480, 7, 5, 4, 4, 4, 4, 4, 4}},
                {false, {64, 3, 16, 2, 2}},
                {false, {4096, 3, 16, 16, 16}},
                {false, {1000, 5, 5, 5, 5, 4, 2}},
                {false, {2145, 4, 13, 11, 5, 3}},
                {false, {2145, 3, 15, 11, 13}},
                {false, {2145, 2, 3, 715}},
                {false, {393, 2, 131, 3}},
                {false, {393, 1, 393}},
                {false, {225, 2, 9, 25}},
                {false, {45, 2, 3, 15}}};
    for (const auto& [same, stored] : rows) {
        const int32_t n = static_cast<int32_t>(stored[0]);
        Sample<R> sample(n, 1);
        typename TestFixture::Work work(n);
        std::vector<std::complex<R>> y(n), again(n);
        std::vector<R> c(n), c_again(n);
        work.cf(sample.x.data(), y.data());
        work.rf(sample.real.data(), c.data());
        work.store_factors(stored);
        work.cf(sample.x.data(), again.data());
        work.rf(sample.real.data(), c_again.data());
        EXPECT_TRUE(!same || (again == y && c_again == c)) << n;
        work.cb(sample.x.data(), sample.x.data());
        work.rb(sample.real.data(), sample.real.data());
        EXPECT_EQ(outcome(), (Outcome{0, 0}));
    }
}

// A worker refuses work vectors of nothing, of something else, of another length, with a factor too many or
// too large, and writes nothing.
TYPED_TEST(Fft, WorkVectorsAreChecked)
{
    using R = TypeParam;
    using C = std::complex<R>;
    using L = Library<R>;
    const R nan = std::numeric_limits<R>::quiet_NaN();
    const std::vector<std::pair<int32_t, std::vector<R>>> vectors = {{12, {}},
                                                                     {12, {nan, nan, nan}},
                                                                     {12, {12, nan}},
                                                                     {12, {12, 2, nan, nan}},
                                                                     {12, {12, 2, 4, -3}},
                                                                     {12, {12, 2, 4, R(1e30)}},
                                                                     {12, {12, 1e9}},
                                                                     {12, {12, 14, 4, 3}},
                                                                     {12, {12, 0}},
                                                                     {12, {12, 1, 6}},
                                                                     {12, {12, 1, 12}},
                                                                     {12, {24, 2, 4, 3}},
                                                                     {12, {24, 3, 2, 4, 3}},
                                                                     {12, {12, 3, 4, 3, 2}},
                                                                     {12, {12, 2, 0, 3}},
                                                                     {8, {}},  // a short power of two
                                                                     {8, {nan, 2, 2, 4}},
                                                                     {8, {8, 2, 2, 5}},
                                                                     {8, {8, 2, 4}},
                                                                     {8, {8, 3, 2, 4}},
                                                                     {8, {16, 2, 2, 4}}};
    std::vector<R> x(30), w(63);
    std::vector<C> z(30);
    const auto refuses = [&](const char* name, int32_t place_of_factors, auto call) {
        for (const auto& [n, stored] : vectors) {
            std::fill(w.begin(), w.end(), R(0));
            std::copy(stored.begin(), stored.end(),
                      w.begin() + (place_of_factors > 4 ? place_of_factors : place_of_factors * n));
            call(n);
            expect_terminal(this->printed, std::string(L::prefix) + name, 3,
                            "The work vector does not hold the factors of the length N = " +
                                std::to_string(n) + ".  It must be initialized for this length.");
            EXPECT_EQ(x, std::vector<R>(30));
            EXPECT_EQ(z, std::vector<C>(30));
        }
    };
    refuses("F2TRF", 2, [&](int32_t n) { L::F2tRf(&n, x.data(), x.data(), w.data()); });
    refuses("F2TRB", 2, [&](int32_t n) { L::F2tRb(&n, x.data(), x.data(), w.data()); });
    refuses("F2TCF", 4, [&](int32_t n) { L::F2tCf(&n, z.data(), z.data(), w.data(), x.data()); });
    refuses("F2TCB", 4, [&](int32_t n) { L::F2tCb(&n, z.data(), z.data(), w.data(), x.data()); });
    refuses("F3TRF", 40, [&](int32_t n) { L::F3tRf(&n, x.data(), &x[15], w.data(), &w[40]); });
}

// Fronts and F3TRF give the bits of the workers.
TYPED_TEST(Fft, Fronts)
{
    using R = TypeParam;
    using C = std::complex<R>;
    using L = Library<R>;
    const int32_t one = 1;
    std::vector<R> nothing(20, 5);  // is what the length 1 stores in a work vector
    L::FftCi(&one, nothing.data());
    L::FftRi(&one, nothing.data());
    EXPECT_EQ(nothing, std::vector<R>(20, 5));
    for (const int32_t n : {1, 64, 135, 149, 393, 1680, 4096}) {
        typename TestFixture::Work work(n);
        const Sample<R> sample(n, 5);
        std::vector<R> c(n), by_front(n);
        std::vector<C> y(n), front(n);
        work.cf(sample.x.data(), y.data());
        L::FftCf(&n, sample.x.data(), front.data());
        EXPECT_EQ(front, y);
        work.cb(sample.x.data(), y.data());
        L::FftCb(&n, sample.x.data(), front.data());
        EXPECT_EQ(front, y);
        work.rb(sample.real.data(), c.data());
        L::FftRb(&n, sample.real.data(), by_front.data());
        EXPECT_EQ(by_front, c);
        work.rf(sample.real.data(), c.data());
        L::FftRf(&n, sample.real.data(), by_front.data());
        EXPECT_EQ(by_front, c);
        by_front = sample.real;
        L::F3tRf(&n, by_front.data(), work.real.data(), work.real.data() + n, work.real.data() + 2 * n);
        EXPECT_EQ(by_front, c);
    }
}

}  // namespace
