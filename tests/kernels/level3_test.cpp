// tests/kernels/level3_test.cpp - matrix-matrix kernels against wide arithmetic, bit by bit, their complaints
#include "tests/kernels/matrices.h"

namespace {

using namespace orvel_test;

ORVEL_TEST_KERNEL(gemm, SGEMM, DGEMM, CGEMM, ZGEMM);
ORVEL_TEST_KERNEL(symm, SSYMM, DSYMM, CSYMM, ZSYMM);
ORVEL_TEST_KERNEL(hemm, SSYMM, DSYMM, CHEMM, ZHEMM);
ORVEL_TEST_KERNEL(syrk, SSYRK, DSYRK, CSYRK, ZSYRK);
ORVEL_TEST_KERNEL(herk, SSYRK, DSYRK, CHERK, ZHERK);
ORVEL_TEST_KERNEL(syr2k, SSYR2K, DSYR2K, CSYR2K, ZSYR2K);
ORVEL_TEST_KERNEL(her2k, SSYR2K, DSYR2K, CHER2K, ZHER2K);
ORVEL_TEST_KERNEL(trmm, STRMM, DTRMM, CTRMM, ZTRMM);
ORVEL_TEST_KERNEL(trsm, STRSM, DTRSM, CTRSM, ZTRSM);

template <class T>
class Level3 : public Quiet {
protected:
    std::mt19937 random{5};
};
TYPED_TEST_SUITE(Level3, Precisions);

struct Size {
    int32_t m, n, k = 0;
};
// Odd ones, those on both sides of the stack, direct and packed paths, and several blocks of the inner index.
const Size sizes[] = {{0, 3, 2},   {3, 0, 2},    {4, 3, 0},    {1, 1, 1},     {2, 3, 5},     {8, 8, 8},
                      {17, 9, 33}, {47, 50, 49}, {65, 34, 70}, {161, 37, 20}, {30, 21, 300}, {197, 170, 261}};

template <class T>
T scalar(double re, double im = 0)
{
    return make<T>(static_cast<Real<T>>(re), static_cast<Real<T>>(im));
}

const bool both[] = {false, true};

template <class T>  // alpha, beta
const std::pair<T, T> scalars[] = {
    {1, 0}, {scalar<T>(-0.7, 0.4), scalar<T>(0.3, -0.2)}, {scalar<T>(1.3), -1}, {0, scalar<T>(0.5)}};

// beta * C + the sum of a product, element by element; beta = 0 leaves C out.
template <class T, class Element>
void compare(const Matrix<T>& result, const Matrix<T>& before, T beta, int32_t terms, char uplo,
             Element element, const std::string& what)
{
    for (int32_t j = 0; j < result.columns; ++j)
        for (int32_t i = 0; i < result.ld; ++i) {
            const size_t at = static_cast<size_t>(j) * result.ld + i;
            if (i >= result.rows || (uplo == 'U' && i > j) || (uplo == 'L' && i < j)) {
                ASSERT_TRUE(is_poison(result.elements[at])) << what << " touched " << i << " " << j;
                continue;
            }
            Wide<T> old{};
            if (beta != T(0)) old = wide(beta) * wide(before(i, j));
            ASSERT_NO_FATAL_FAILURE(
                expect_close(result(i, j), old + element(i, j), 2.0 * terms + 2, terms,
                             what + " at " + std::to_string(i) + " " + std::to_string(j)));
        }
}

template <class T>
Matrix<T> target(int32_t m, int32_t n, T beta, std::mt19937& random)
{
    return beta == T(0) ? Matrix<T>(m, n) : Matrix<T>(m, n, random);
}

TYPED_TEST(Level3, GeneralProduct)
{
    using T = TypeParam;
    on_every_level([&](const std::string& level) {
        every_one_of(sizes, std::string("NtC"), std::string("nTC"),
                     scalars<T>)([&](const Size& s, char ta, char tb, const auto& factors) {
            const auto& [alpha, beta] = factors;
            const char ua = static_cast<char>(std::toupper(ta)), ub = static_cast<char>(std::toupper(tb));
            Matrix<T> a(ua == 'N' ? s.m : s.k, ua == 'N' ? s.k : s.m, this->random);
            Matrix<T> b(ub == 'N' ? s.k : s.n, ub == 'N' ? s.n : s.k, this->random);
            Matrix<T> c = target(s.m, s.n, beta, this->random);
            const Matrix<T> before = c;
            if (alpha == T(0) && s.m * s.n * s.k > 0) a(0, 0) = b(0, 0) = poison<T>();
            gemm<T>(&ta, &tb, &s.m, &s.n, &s.k, &alpha, a.data(), &a.ld, b.data(), &b.ld, &beta, c.data(),
                    &c.ld);
            if (s.m * s.n > 5000 && (ta != 't' || tb != 'n' || beta == T(0))) return;  // slow reference
            const auto element = [&, al = alpha](int32_t i, int32_t j) {
                Wide<T> sum{};
                if (al == T(0)) return sum;
                for (int32_t l = 0; l < s.k; ++l) sum += op(a, ua, i, l) * op(b, ub, l, j);
                return wide(al) * sum;
            };
            ASSERT_NO_FATAL_FAILURE(compare(c, before, beta, s.k, 'A', element, level + ta + tb));
        });
    });
}

// Every path adds an element's products in ascending order, fused where the level has fused operations.
TYPED_TEST(Level3, ProductsAreAddedInOrder)
{
    using T = TypeParam;
    using R = Real<T>;
    on_every_level([&](const std::string& level) {
        const bool fused = level != "x86-64";  // every other one has fused operations
        const auto add = [fused](R x, R y, R sum) { return fused ? std::fma(x, y, sum) : sum + x * y; };
        for (const Size& s : {Size{3, 3, 3}, Size{40, 20, 47}, Size{150, 30, 150}, Size{170, 40, 300}}) {
            for (const char ta : {'N', 'T'}) {
                Matrix<T> a(ta == 'N' ? s.m : s.k, ta == 'N' ? s.k : s.m, this->random),
                    b(s.k, s.n, this->random);
                Matrix<T> c(s.m, s.n, this->random);
                Matrix<T> model = c;
                const T one(1);
                gemm<T>(&ta, "N", &s.m, &s.n, &s.k, &one, a.data(), &a.ld, b.data(), &b.ld, &one, c.data(),
                        &c.ld);
                for (int32_t j = 0; j < s.n; ++j)
                    for (int32_t i = 0; i < s.m; ++i) {
                        R re = std::real(model(i, j)), im = std::imag(model(i, j));
                        for (int32_t l = 0; l < s.k; ++l) {
                            const T x = ta == 'N' ? a(i, l) : a(l, i), y = b(l, j);
                            re = add(std::real(x), std::real(y), re);
                            if constexpr (is_complex<T>) {
                                im = add(std::imag(x), std::real(y), im);
                                re = add(-std::imag(x), std::imag(y), re);
                                im = add(std::real(x), std::imag(y), im);
                            }
                        }
                        ASSERT_EQ(std::real(c(i, j)), re) << level << " " << s.m << " " << i << " " << j;
                        ASSERT_EQ(std::imag(c(i, j)), im) << level << " " << s.m << " " << i << " " << j;
                    }
            }
        }
    });
}

TYPED_TEST(Level3, SymmetricProduct)
{
    using T = TypeParam;
    on_every_level([&](const std::string& level) {
        const Size sizes_of_two[] = {{1, 1}, {7, 5}, {33, 50}, {70, 41}, {41, 270}};
        every_one_of(sizes_of_two, std::string("LR"), std::string("UL"),
                     both)([&](const Size& s, char side, char uplo, bool hermitian) {
            const auto& [alpha, beta] = scalars<T>[s.m % 2];
            const int32_t order = side == 'L' ? s.m : s.n;
            Matrix<T> a(order, order, this->random), b(s.m, s.n, this->random);
            a.poison_outside(uplo);
            Matrix<T> c = target(s.m, s.n, beta, this->random);
            const Matrix<T> before = c;
            (hermitian ? hemm<T> : symm<T>)(&side, &uplo, &s.m, &s.n, &alpha, a.data(), &a.ld, b.data(),
                                            &b.ld, &beta, c.data(), &c.ld);
            const auto element = [&, al = alpha](int32_t i, int32_t j) {
                Wide<T> sum{};
                for (int32_t l = 0; l < order; ++l)
                    sum += side == 'L' ? symmetric(a, uplo, hermitian, i, l) * wide(b(l, j))
                                       : wide(b(i, l)) * symmetric(a, uplo, hermitian, l, j);
                return wide(al) * sum;
            };
            ASSERT_NO_FATAL_FAILURE(compare(c, before, beta, order, 'A', element, level + side + uplo));
        });
    });
}

// One triangle of a product with a transpose; Second adds the mirrored product with another matrix.
template <class T, bool Hermitian, bool Second>
void check_rank_k(std::mt19937& random, const std::string& level)
{
    using S = std::conditional_t<Hermitian && !Second, Real<T>, T>;
    using B = std::conditional_t<Hermitian, Real<T>, T>;
    for (const Size& s : {Size{0, 1, 1}, Size{0, 9, 4}, Size{0, 50, 30}, Size{0, 131, 60}, Size{0, 60, 0}})
        for (const char uplo : {'U', 'L'})
            for (const char trans : {'N', Hermitian ? 'C' : 'T'}) {
                const S alpha = scalar<S>(-0.7, 0.4);
                const B beta = s.n == 50 ? B(0) : scalar<B>(0.3, -0.2);
                const int32_t rows = trans == 'N' ? s.n : s.k, columns = trans == 'N' ? s.k : s.n;
                Matrix<T> a(rows, columns, random), b(rows, columns, random),
                    c = target(s.n, s.n, T(beta), random);
                c.poison_outside(uplo);
                const Matrix<T> before = c;
                if constexpr (Second && Hermitian)
                    her2k<T>(&uplo, &trans, &s.n, &s.k, &alpha, a.data(), &a.ld, b.data(), &b.ld, &beta,
                             c.data(), &c.ld);
                else if constexpr (Second)
                    syr2k<T>(&uplo, &trans, &s.n, &s.k, &alpha, a.data(), &a.ld, b.data(), &b.ld, &beta,
                             c.data(), &c.ld);
                else if constexpr (Hermitian)
                    herk<T>(&uplo, &trans, &s.n, &s.k, &alpha, a.data(), &a.ld, &beta, c.data(), &c.ld);
                else
                    syrk<T>(&uplo, &trans, &s.n, &s.k, &alpha, a.data(), &a.ld, &beta, c.data(), &c.ld);
                const auto turn = [](Wide<T> x) { return Hermitian ? conjugated(x) : x; };
                const auto element = [&](int32_t i, int32_t j) {
                    Wide<T> sum{};
                    for (int32_t l = 0; l < s.k; ++l)
                        if (Second)
                            sum += Wide<T>(alpha) * op(a, trans, i, l) * turn(op(b, trans, j, l)) +
                                   turn(Wide<T>(alpha)) * op(b, trans, i, l) * turn(op(a, trans, j, l));
                        else
                            sum += Wide<T>(alpha) * op(a, trans, i, l) * turn(op(a, trans, j, l));
                    if (Hermitian && i == j) {  // the imaginary part of the old diagonal does not count
                        sum = Wide<T>(std::real(sum));
                        if constexpr (is_complex<T>)
                            if (beta != B(0))
                                sum -= Wide<T>(
                                    0, std::imag(before(i, i)) * static_cast<long double>(std::real(beta)));
                        EXPECT_EQ(std::imag(c(i, i)), 0);
                    }
                    return sum;
                };
                ASSERT_NO_FATAL_FAILURE(
                    compare(c, before, T(beta), 2 * s.k, uplo, element, level + uplo + trans));
            }
}

TYPED_TEST(Level3, RankK)
{
    using T = TypeParam;
    on_every_level([&](const std::string& level) {
        check_rank_k<T, false, false>(this->random, level);
        check_rank_k<T, false, true>(this->random, level);
        if constexpr (is_complex<T>) {
            check_rank_k<T, true, false>(this->random, level);
            check_rank_k<T, true, true>(this->random, level);
        }
    });
}

// The imaginary parts of the diagonal do not count, even where they are no numbers, and a real beta does not
// turn an infinite part into one.
TEST(Level3Hermitian, DiagonalsAreRealWhateverStandsBesideThem)
{
    const float nan = std::nanf(""), inf = HUGE_VALF, beta = 2;
    const int32_t n = 2, k = 1;
    const float alpha = 1;
    const std::complex<float> a[] = {1, {0, 1}}, one(1);
    for (const bool second : {false, true})
        for (const char uplo : {'U', 'L'}) {
            std::complex<float> c[] = {{1, nan}, {inf, 0}, {inf, 0}, {3, nan}};
            if (second)
                CHER2K(&uplo, "N", &n, &k, &one, a, &n, a, &n, &beta, c, &n);
            else
                CHERK(&uplo, "N", &n, &k, &alpha, a, &n, &beta, c, &n);
            const float added = second ? 2 : 1;
            EXPECT_EQ(c[0], std::complex<float>(2 + added)) << uplo;
            EXPECT_EQ(c[3], std::complex<float>(6 + added)) << uplo;
            const std::complex<float> beside = c[uplo == 'U' ? 2 : 1];
            EXPECT_EQ(beside.real(), inf) << uplo;
            EXPECT_FALSE(std::isnan(beside.imag())) << uplo;
        }
}

// The product with a triangle against the reference; the solution by putting it back into the product.
TYPED_TEST(Level3, Triangles)
{
    using T = TypeParam;
    on_every_level([&](const std::string& level) {
        const Size sizes_of_two[] = {{1, 1}, {6, 9}, {33, 20}, {30, 75}, {101, 70}};
        every_one_of(sizes_of_two, std::string("LR"), std::string("UL"), std::string("NTC"),
                     std::string("UN"))([&](const Size& s, char side, char uplo, char trans, char diag) {
            const int32_t order = side == 'L' ? s.m : s.n;
            Matrix<T> a = triangle<T>(order, uplo, diag, this->random), b(s.m, s.n, this->random);
            const T alpha = scalar<T>(-0.7, 0.4);
            const auto times = [&](const Matrix<T>& x, int32_t i, int32_t j) {
                Wide<T> sum{};
                for (int32_t l = 0; l < order; ++l)
                    sum += side == 'L' ? triangular(a, uplo, trans, diag, i, l) * wide(x(l, j))
                                       : wide(x(i, l)) * triangular(a, uplo, trans, diag, l, j);
                return sum;
            };
            const std::string what = level + side + uplo + trans + diag + std::to_string(s.m);
            Matrix<T> product = b, solution = b;
            trmm<T>(&side, &uplo, &trans, &diag, &s.m, &s.n, &alpha, a.data(), &a.ld, product.data(),
                    &product.ld);
            trsm<T>(&side, &uplo, &trans, &diag, &s.m, &s.n, &alpha, a.data(), &a.ld, solution.data(),
                    &solution.ld);
            ASSERT_NO_FATAL_FAILURE(compare(
                product, b, T(0), 8, 'A', [&](int32_t i, int32_t j) { return wide(alpha) * times(b, i, j); },
                "trmm " + what));
            Matrix<T> back = b;
            for (int32_t j = 0; j < s.n; ++j)
                for (int32_t i = 0; i < s.m; ++i) back(i, j) = T(times(solution, i, j));
            ASSERT_NO_FATAL_FAILURE(compare(
                back, b, T(0), 16, 'A', [&](int32_t i, int32_t j) { return wide(alpha) * wide(b(i, j)); },
                "trsm " + what));
        });
    });
}

// A column that is not finite ends so, and leaves the columns beside it alone.
TYPED_TEST(Level3, InfinityStaysInItsColumn)
{
    using T = TypeParam;
    on_every_level([&](const std::string& level) {
        every_one_of(std::string("UL"), std::string("NTC"))([&](char uplo, char trans) {
            const int32_t n = 20, columns = 3;
            const Matrix<T> a = triangle<T>(n, uplo, 'N', this->random), b(n, columns, this->random);
            const T one(1);
            const auto solve = [&](Matrix<T> x) {
                trsm<T>("L", &uplo, &trans, "N", &n, &columns, &one, a.elements.data(), &a.ld, x.data(),
                        &x.ld);
                return x;
            };
            Matrix<T> spoiled = b;
            spoiled(n / 2, 1) = std::numeric_limits<Real<T>>::infinity();
            const Matrix<T> x = solve(b), y = solve(spoiled);
            EXPECT_FALSE(std::isfinite(std::real(y(n / 2, 1)))) << level << uplo << trans;
            for (int32_t i = 0; i < n; ++i)
                EXPECT_TRUE(y(i, 0) == x(i, 0) && y(i, 2) == x(i, 2)) << level << uplo << trans;
        });
    });
}

}  // namespace
