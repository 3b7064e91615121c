// tests/kernels/level2_test.cpp - matrix-vector kernels against wide arithmetic, and their complaints
#include "tests/kernels/matrices.h"
#include "tests/refusing_memory.h"

namespace {

using namespace orvel_test;

ORVEL_TEST_KERNEL(gemv, SGEMV, DGEMV, CGEMV, ZGEMV);
ORVEL_TEST_KERNEL(gbmv, SGBMV, DGBMV, CGBMV, ZGBMV);
ORVEL_TEST_KERNEL(symv, SSYMV, DSYMV, CHEMV, ZHEMV);
ORVEL_TEST_KERNEL(sbmv, SSBMV, DSBMV, CHBMV, ZHBMV);
ORVEL_TEST_KERNEL(trmv, STRMV, DTRMV, CTRMV, ZTRMV);
ORVEL_TEST_KERNEL(trsv, STRSV, DTRSV, CTRSV, ZTRSV);
ORVEL_TEST_KERNEL(tbmv, STBMV, DTBMV, CTBMV, ZTBMV);
ORVEL_TEST_KERNEL(tbsv, STBSV, DTBSV, CTBSV, ZTBSV);
ORVEL_TEST_KERNEL(trsm_of, STRSM, DTRSM, CTRSM, ZTRSM);
ORVEL_TEST_KERNEL(geru, SGER, DGER, CGERU, ZGERU);
ORVEL_TEST_KERNEL(gerc, SGER, DGER, CGERC, ZGERC);
ORVEL_TEST_KERNEL(syr, SSYR, DSYR, CHER, ZHER);
ORVEL_TEST_KERNEL(syr2, SSYR2, DSYR2, CHER2, ZHER2);

// A vector with an increment; what lies between its elements is poison and must stay so.
template <class T>
struct Strided {
    int32_t n, inc;
    std::vector<T> memory;

    Strided(int32_t count, int32_t increment, std::mt19937& random, bool poisoned = false)
        : n(count), inc(increment), memory(static_cast<size_t>(std::abs(increment)) * count + 1, poison<T>())
    {
        for (int32_t k = 0; k < n; ++k) (*this)[k] = poisoned ? poison<T>() : random_value<T>(random);
    }
    T& operator[](int32_t k) { return memory[static_cast<size_t>(inc > 0 ? k : n - 1 - k) * std::abs(inc)]; }
    const T& operator[](int32_t k) const { return const_cast<Strided&>(*this)[k]; }
    T* data() { return memory.data(); }
};

// An element of the product of a matrix, given by its elements, and a vector.
template <class T, class Element>
Wide<T> times(Element element, const Strided<T>& x, int32_t i)
{
    Wide<T> sum{};
    for (int32_t j = 0; j < x.n; ++j) sum += element(i, j) * wide(x[j]);
    return sum;
}

template <class T, class Element>
void compare(const Strided<T>& result, double terms, Element element, const std::string& what)
{
    std::vector<bool> used(result.memory.size());
    for (int32_t k = 0; k < result.n; ++k) {
        used[static_cast<size_t>(&result[k] - result.memory.data())] = true;
        ASSERT_NO_FATAL_FAILURE(
            expect_close(result[k], element(k), 3 * terms + 3, terms, what + " at " + std::to_string(k)));
    }
    for (size_t k = 0; k < used.size(); ++k) ASSERT_TRUE(used[k] || is_poison(result.memory[k])) << what;
}

template <class T>
class Level2 : public Quiet {
protected:
    std::mt19937 random{11};
    const T alpha = make<T>(Real<T>(-0.7), Real<T>(0.4));
};
TYPED_TEST_SUITE(Level2, Precisions);

struct Steps {
    int32_t x, y;
};
const Steps steps[] = {{1, 1}, {2, -1}, {-3, 2}, {1, -2}};
const int32_t orders[] = {0, 1, 2, 7, 33, 65, 130, 300}, columns[] = {0, 1, 9, 66, 290};
const bool both[] = {false, true};

// Keeps the elements of a band and poisons the rest of the full matrix; the band goes to its own storage.
template <class T>
Matrix<T> band_of(const Matrix<T>& full, int32_t below, int32_t above)
{
    Matrix<T> band(below + above + 1, full.columns);
    for (int32_t j = 0; j < full.columns; ++j)
        for (int32_t i = std::max(0, j - above); i < std::min(full.rows, j + below + 1); ++i)
            band(above + i - j, j) = full(i, j);
    return band;
}

TYPED_TEST(Level2, GeneralAndBand)
{
    using T = TypeParam;
    on_every_level([&](const std::string& level) {
        every_one_of(orders, columns, std::string("NtC"), both, std::array{T(0), T(1), T(Real<T>(0.3))})(
            [&](int32_t m, int32_t n, char trans, bool banded, T beta) {
                if (m * n > 9000 && beta != T(1)) return;
                const Steps s = steps[(m + n + (trans == 'N')) % 4];
                const char up = static_cast<char>(std::toupper(trans));
                Matrix<T> a(m, n, this->random);
                const int32_t kl = 2, ku = 5;
                Matrix<T> band = band_of(a, kl, ku);
                const int32_t length_x = up == 'N' ? n : m, length_y = up == 'N' ? m : n;
                Strided<T> x(length_x, s.x, this->random), y(length_y, s.y, this->random, beta == T(0));
                const Strided<T> before = y;
                if (banded)
                    gbmv<T>(&trans, &m, &n, &kl, &ku, &this->alpha, band.data(), &band.ld, x.data(), &s.x,
                            &beta, y.data(), &s.y);
                else
                    gemv<T>(&trans, &m, &n, &this->alpha, a.data(), &a.ld, x.data(), &s.x, &beta, y.data(),
                            &s.y);
                if (m == 0 || n == 0) return;
                const auto element = [&](int32_t k, int32_t l) {
                    const int32_t below = up == 'N' ? k - l : l - k;
                    return !banded || (below <= kl && -below <= ku) ? op(a, up, k, l) : Wide<T>(0);
                };
                const auto exact = [&](int32_t k) {
                    const Wide<T> sum = wide(this->alpha) * times(element, x, k);
                    return beta == T(0) ? sum : sum + wide(beta) * wide(before[k]);
                };
                ASSERT_NO_FATAL_FAILURE(compare(y, length_x, exact, level + trans + std::to_string(m)));
            });
    });
}

TYPED_TEST(Level2, SymmetricAndItsBand)
{
    using T = TypeParam;
    on_every_level([&](const std::string& level) {
        every_one_of(orders, std::string("UL"), both,
                     steps)([&](int32_t n, char uplo, bool banded, const Steps& s) {
            Matrix<T> a(n, n, this->random);
            const int32_t k = 3;
            Matrix<T> band = band_of(a, uplo == 'L' ? k : 0, uplo == 'U' ? k : 0);
            a.poison_outside(uplo);
            Strided<T> x(n, s.x, this->random), y(n, s.y, this->random);
            const Strided<T> before = y;
            const T beta(Real<T>(0.3));
            if (banded)
                sbmv<T>(&uplo, &n, &k, &this->alpha, band.data(), &band.ld, x.data(), &s.x, &beta, y.data(),
                        &s.y);
            else
                symv<T>(&uplo, &n, &this->alpha, a.data(), &a.ld, x.data(), &s.x, &beta, y.data(), &s.y);
            const auto element = [&](int32_t i, int32_t j) {
                return banded && std::abs(i - j) > k ? Wide<T>(0) : symmetric(a, uplo, true, i, j);
            };
            const auto exact = [&](int32_t i) {
                return wide(beta) * wide(before[i]) + wide(this->alpha) * times(element, x, i);
            };
            ASSERT_NO_FATAL_FAILURE(compare(y, n, exact, level + uplo + std::to_string(n)));
        });
    });
}

// The product against the reference; the solution by putting it back into the product.
TYPED_TEST(Level2, TrianglesAndTheirBands)
{
    using T = TypeParam;
    on_every_level([&](const std::string& level) {
        every_one_of(orders, std::string("UL"), std::string("NTC"), std::string("UN"),
                     both)([&](int32_t n, char uplo, char trans, char diag, bool banded) {
            const int32_t inc = steps[(n + (uplo == 'U')) % 4].x;
            const int32_t k = 4;
            Matrix<T> a = triangle<T>(n, uplo, diag, this->random);
            Matrix<T> band = band_of(a, uplo == 'L' ? k : 0, uplo == 'U' ? k : 0);
            const auto element = [&](int32_t i, int32_t j) {
                return banded && std::abs(i - j) > k ? Wide<T>(0) : triangular(a, uplo, trans, diag, i, j);
            };
            Strided<T> x(n, inc, this->random), product = x, solution = x;
            if (banded) {
                tbmv<T>(&uplo, &trans, &diag, &n, &k, band.data(), &band.ld, product.data(), &inc);
                tbsv<T>(&uplo, &trans, &diag, &n, &k, band.data(), &band.ld, solution.data(), &inc);
            } else {
                trmv<T>(&uplo, &trans, &diag, &n, a.data(), &a.ld, product.data(), &inc);
                trsv<T>(&uplo, &trans, &diag, &n, a.data(), &a.ld, solution.data(), &inc);
            }
            const std::string what = level + uplo + trans + diag + std::to_string(n);
            ASSERT_NO_FATAL_FAILURE(compare(
                product, 8, [&](int32_t i) { return times(element, x, i); }, "product " + what));
            ASSERT_NO_FATAL_FAILURE(compare(
                x, 16, [&](int32_t i) { return times(element, solution, i); }, "solution " + what));
        });
    });
}

// Strided vectors are copied to the stack in pieces.
TYPED_TEST(Level2, StridedVectorsOfSeveralPieces)
{
    using T = TypeParam;
    const T beta(Real<T>(0.3));
    const int32_t n = 1100;
    every_one_of(std::string("UL"), std::string("NTC"),
                 std::string("UN"))([&](char uplo, char trans, char diag) {
        const int32_t inc = uplo == 'U' ? 2 : -3;
        const std::string what = std::string() + uplo + trans + diag;
        Matrix<T> a = triangle<T>(n, uplo, diag, this->random), whole(n, n, this->random);
        whole.poison_outside(uplo);
        Strided<T> x(n, inc, this->random), product = x, solution = x, y = x;
        trmv<T>(&uplo, &trans, &diag, &n, a.data(), &a.ld, product.data(), &inc);
        trsv<T>(&uplo, &trans, &diag, &n, a.data(), &a.ld, solution.data(), &inc);
        symv<T>(&uplo, &n, &this->alpha, whole.data(), &whole.ld, x.data(), &inc, &beta, y.data(), &inc);
        const auto element = [&](int32_t i, int32_t j) { return triangular(a, uplo, trans, diag, i, j); };
        const auto mirrored = [&](int32_t i, int32_t j) { return symmetric(whole, uplo, true, i, j); };
        ASSERT_NO_FATAL_FAILURE(compare(
            product, n, [&](int32_t i) { return times(element, x, i); }, "product " + what));
        ASSERT_NO_FATAL_FAILURE(compare(
            x, n, [&](int32_t i) { return times(element, solution, i); }, "solution " + what));
        ASSERT_NO_FATAL_FAILURE(compare(
            y, n,
            [&](int32_t i) { return wide(beta) * wide(x[i]) + wide(this->alpha) * times(mirrored, x, i); },
            "symmetric " + what));
    });
}

TYPED_TEST(Level2, RankOneAndTwo)
{
    using T = TypeParam;
    on_every_level([&](const std::string& level) {
        every_one_of(orders, steps, std::string("ucUL2"))([&](int32_t n, const Steps& s, char kind) {
            const int32_t m = kind == 'u' || kind == 'c' ? n / 2 + 1 : n;
            const char uplo = kind == '2' ? 'L' : kind;
            Matrix<T> a(m, n, this->random);
            const bool triangle = kind == 'U' || kind == 'L';
            if (triangle || kind == '2') a.poison_outside(uplo);
            const Matrix<T> before = a;
            Strided<T> x(m, s.x, this->random), y(n, s.y, this->random);
            const Real<T> real_alpha = std::real(this->alpha);
            if (kind == 'u')
                geru<T>(&m, &n, &this->alpha, x.data(), &s.x, y.data(), &s.y, a.data(), &a.ld);
            else if (kind == 'c')
                gerc<T>(&m, &n, &this->alpha, x.data(), &s.x, y.data(), &s.y, a.data(), &a.ld);
            else if (kind == '2')
                syr2<T>(&uplo, &n, &this->alpha, x.data(), &s.x, y.data(), &s.y, a.data(), &a.ld);
            else
                syr<T>(&uplo, &n, &real_alpha, x.data(), &s.x, a.data(), &a.ld);
            for (int32_t j = 0; j < n; ++j)
                for (int32_t i = 0; i < a.ld; ++i) {
                    const T& value = a.elements[static_cast<size_t>(j) * a.ld + i];
                    if (i >= m || (kind == 'U' && i > j) || ((kind == 'L' || kind == '2') && i < j)) {
                        ASSERT_TRUE(is_poison(value)) << level << kind;
                        return;
                    }
                    const Wide<T> al = wide(this->alpha);
                    const Wide<T> right = kind == 'u' ? wide(y[j]) : conjugated(wide(triangle ? x[j] : y[j]));
                    Wide<T> exact = wide(before(i, j)) + (triangle ? std::real(al) : al) * wide(x[i]) * right;
                    if (kind == '2') exact += conjugated(al) * wide(y[i]) * conjugated(wide(x[j]));
                    if (i == j && (triangle || kind == '2')) exact = std::real(exact);
                    ASSERT_NO_FATAL_FAILURE(expect_close(value, exact, 6, 4, level + kind));
                }
        });
    });
}

// What is solved or multiplied may stand beside the matrix or the other vector: the same bits as far apart.
TYPED_TEST(Level2, BesideEachOtherVectorsGetTheSameBits)
{
    using T = TypeParam;
    const T beta(Real<T>(0.3));
    const int32_t one = 1;
    on_every_level([&] {
        for (int32_t n = 1; n <= 20; ++n)
            for (int32_t gap = 0; gap <= 16; ++gap) {
                const auto count = static_cast<std::size_t>(n), square = count * count;
                std::vector<T> room(2 * square + 100);
                for (T& e : room) e = random_value<T>(this->random);
                for (std::size_t k = 0; k < count; ++k) room[k * (count + 1)] += T(Real<T>(n));
                const auto beside = square + static_cast<std::size_t>(gap);
                // A, x behind it and y behind x; then each alone.
                T* const at = room.data() + beside;
                const std::vector<T> a(room.data(), room.data() + square);
                std::vector<T> x(at, at + n), y(at + n, at + 2 * n), near = room;
                T* const near_x = near.data() + beside;
                const auto run = [&](const T* m, T* u, T* v) {
                    for (const char letter : {'U', 'L'}) {
                        const char trans = letter == 'U' ? 'N' : 'C';
                        symv<T>(&letter, &n, &this->alpha, m, &n, u, &one, &beta, v, &one);
                        gemv<T>(&trans, &n, &n, &this->alpha, m, &n, u, &one, &beta, v, &one);
                        trsv<T>(&letter, &trans, "N", &n, m, &n, u, &one);
                    }
                };
                run(near.data(), near_x, near_x + n);
                run(a.data(), x.data(), y.data());
                ASSERT_TRUE(std::equal(x.begin(), x.end(), near_x)) << n << " gap " << gap;
                ASSERT_TRUE(std::equal(y.begin(), y.end(), near_x + n)) << n << " gap " << gap;
            }
    });
}

// Quotients whose denominator, or whose numerator, is beyond the largest number on the way.
TYPED_TEST(Level2, DivisionsNearTheLargestNumberAreRight)
{
    using T = TypeParam;
    using R = Real<T>;
    const R most = std::numeric_limits<R>::max(), big = most * R(0.7), small = most * R(0.249);
    const T large = make<T>(big, big), four = make<T>(4, 4), flat = make<T>(most, small),
            steep = make<T>(small, most);
    const int32_t n = 2, one = 1;
    const T rows[][3] = {{large, large, T(1)},
                         {flat, flat, T(1)},
                         {steep, steep, T(1)},
                         {large, four, T(big / 4)}};  // numerator, denominator, quotient
    on_every_level([&] {
        for (const auto& row : rows) {
            const T diagonal[] = {row[1], T(0), T(0), row[1]}, unit(1);
            T by_vector[] = {row[0], row[0]}, by_band[] = {row[0], row[0]}, by_matrix[] = {row[0], row[0]};
            const T band[] = {row[1], row[1]};
            const int32_t none = 0;
            trsv<T>("U", "N", "N", &n, diagonal, &n, by_vector, &one);
            tbsv<T>("U", "N", "N", &n, &none, band, &one, by_band, &one);
            trsm_of<T>("L", "U", "N", "N", &n, &one, &unit, diagonal, &n, by_matrix, &n);
            for (const T* x : {by_vector, by_band, by_matrix})
                for (int k = 0; k < 2; ++k)
                    EXPECT_LE(std::abs(x[k] / row[2] - T(1)), 4 * std::numeric_limits<R>::epsilon());
        }
    });
}

}  // namespace
