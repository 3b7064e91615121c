// tests/fft/transforms.h - the transforms by precision, exact ones, and errors in the measure of orvel/fft.h
#pragma once

#include <algorithm>
#include <cmath>
#include <complex>
#include <cstdint>
#include <fstream>
#include <limits>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "orvel/orvel.h"

namespace orvel_test {

template <class R>
struct Library;
#define ORVEL_TEST_LIBRARY(R, p)                                  \
    template <>                                                   \
    struct Library<R> {                                           \
        static constexpr const char* prefix = #p;                 \
        static constexpr auto FftRi = p##FFTRI, FftCi = p##FFTCI; \
        static constexpr auto FftRf = p##FFTRF, FftRb = p##FFTRB; \
        static constexpr auto FftCf = p##FFTCF, FftCb = p##FFTCB; \
        static constexpr auto F2tRf = p##F2TRF, F2tRb = p##F2TRB; \
        static constexpr auto F2tCf = p##F2TCF, F2tCb = p##F2TCB; \
        static constexpr auto F3tRf = p##F3TRF;                   \
    }
ORVEL_TEST_LIBRARY(float, );
ORVEL_TEST_LIBRARY(double, D);

template <class R>
std::vector<std::complex<R>> random_pairs(int64_t n, uint64_t seed)
{
    std::mt19937_64 generator(seed);
    std::uniform_real_distribution<R> uniform(-1, 1);
    std::vector<std::complex<R>> x(n);
    for (auto& v : x) {
        const R re = uniform(generator);
        v = {re, uniform(generator)};
    }
    return x;
}

template <class R>
std::vector<R> real_parts(const std::vector<std::complex<R>>& x)
{
    std::vector<R> real(x.size());
    std::transform(x.begin(), x.end(), real.begin(), [](const auto& v) { return v.real(); });
    return real;
}

// The complex coefficients that a real transform stores.
template <class R>
std::vector<std::complex<R>> unpacked(const std::vector<R>& c)
{
    const std::size_t n = c.size();
    std::vector<std::complex<R>> y(n, c[0]);
    for (std::size_t k = 1; k <= n / 2; ++k) {
        y[k] = 2 * k == n ? std::complex<R>(c[n - 1]) : std::complex<R>(c[2 * k - 1], c[2 * k]);
        y[n - k] = std::conj(y[k]);
    }
    return y;
}

// ---- exact transforms -----------------------------------------------------------------------------------

using Wide = std::complex<long double>;

inline Wide product(const Wide& a, const Wide& b)  // no detour for infinities
{
    return {a.real() * b.real() - a.imag() * b.imag(), a.real() * b.imag() + a.imag() * b.real()};
}

// exp(-2 pi i j / n)
inline Wide root(int64_t j, int64_t n)
{
    const long double angle =
        6.283185307179586476925286766559L * static_cast<long double>(j % n) / static_cast<long double>(n);
    return {std::cos(angle), -std::sin(angle)};
}

// Forward transforms of one length in more precision: powers of two by halves, the others by a convolution.
class Exact {
public:
    explicit Exact(int64_t n) : n_(n), roots_(n)
    {
        for (int64_t j = 0; j < n; ++j) roots_[j] = root(j, n);
    }

    template <class C>
    std::vector<Wide> operator()(const std::vector<C>& x) const
    {
        std::vector<Wide> in(x.size()), out(x.size());
        std::transform(x.begin(), x.end(), in.begin(),
                       [](const C& v) { return Wide(std::real(v), std::imag(v)); });
        if ((n_ & (n_ - 1)) != 0) return convolve(in);
        run(in.data(), 1, out.data(), n_);
        return out;
    }

private:
    void run(const Wide* in, int64_t stride, Wide* out, int64_t n) const
    {
        if (n == 1) {
            *out = *in;
            return;
        }
        const int64_t m = n / 2;
        for (int64_t i = 0; i < 2; ++i) run(in + i * stride, stride * 2, out + i * m, m);
        for (int64_t k = 0; k < m; ++k) {
            const Wide a = out[k], b = product(out[m + k], roots_[k * stride]);
            out[k] = a + b;
            out[m + k] = a - b;
        }
    }

    // 2 j k = j^2 + k^2 - (j - k)^2, with angles of pi / n.
    std::vector<Wide> convolve(const std::vector<Wide>& in) const
    {
        int64_t length = 1;
        while (length < 2 * n_) length *= 2;
        const Exact transform(length);
        std::vector<Wide> chirp(n_), a(length), b(length);
        for (int64_t j = 0; j < n_; ++j) {
            chirp[j] = root(j * j % (2 * n_), 2 * n_);
            a[j] = product(in[j], chirp[j]);
            b[j] = b[(length - j) % length] = std::conj(chirp[j]);
        }
        a = transform(a);
        b = transform(b);
        for (int64_t j = 0; j < length; ++j) a[j] = std::conj(product(a[j], b[j]));
        a = transform(a);
        for (int64_t k = 0; k < n_; ++k)
            chirp[k] = product(chirp[k], std::conj(a[k])) / static_cast<long double>(length);
        return chirp;
    }

    int64_t n_;
    std::vector<Wide> roots_;
};

// ---- errors ---------------------------------------------------------------------------------------------

// In the root mean square and of the worst element, relative to the root mean square of the exact results and
// in units of eps sqrt(log2 N).
struct Error {
    double mean = 0, largest = 0;

    void include(const Error& e)
    {
        mean = std::max(mean, e.mean);
        largest = std::max(largest, e.largest);
    }
    bool is_within(const Error& bound) const { return mean <= bound.mean && largest <= bound.largest; }
};

inline std::ostream& operator<<(std::ostream& out, const Error& e)
{
    return out << e.mean << ' ' << e.largest;
}

// `of` is what approximates `factor` times the exact elements.
template <class C, class D>
Error error(const std::vector<C>& of, const std::vector<D>& exact, double factor = 1)
{
    using R = decltype(std::real(of[0]));
    long double sum = 0, worst = 0, scale = 0;
    const std::size_t n = of.size();
    for (std::size_t k = 0; k < n; ++k) {
        const Wide right = Wide(std::real(exact[k]), std::imag(exact[k])) * static_cast<long double>(factor);
        const long double square = std::norm(Wide(std::real(of[k]), std::imag(of[k])) - right);
        worst = std::max(worst, square);
        sum += square;
        scale += std::norm(right);
    }
    constexpr double no_bound = std::numeric_limits<double>::infinity();
    if (std::isnan(sum)) return {no_bound, no_bound};
    const double unit =
        std::numeric_limits<R>::epsilon() * std::sqrt(std::log2(std::max(2.0, static_cast<double>(n))));
    return {static_cast<double>(std::sqrt(sum / scale)) / unit,
            static_cast<double>(std::sqrt(worst * static_cast<long double>(n) / scale)) / unit};
}

struct Errors {
    Error transform, pair;

    void include(const Errors& e)
    {
        transform.include(e.transform);
        pair.include(e.pair);
    }
};

// The bounds that orvel/fft.h gives, read from it.
class Documented {
public:
    static constexpr int classes = 5;

    explicit Documented(const char* header)
    {
        std::ifstream file(header);
        for (std::string line; std::getline(file, line);) {
            take(line, "transform, root mean square", &Error::mean, &Errors::transform);
            take(line, "transform, largest", &Error::largest, &Errors::transform);
            take(line, "pair, root mean square", &Error::mean, &Errors::pair);
            take(line, "pair, largest", &Error::largest, &Errors::pair);
            if (const auto at = line.find("off by at most "); at != line.npos)
                std::istringstream(line.substr(at + 15)) >> root;
        }
    }

    // The column of a length.
    static int class_of(int64_t n)
    {
        if (n < 100) return 0;
        int64_t largest = 1;
        for (int64_t p = 2; p * p <= n; ++p)
            for (; n % p == 0; n /= p) largest = p;
        largest = std::max(largest, n);
        return largest == 2 ? 1 : largest <= 13 ? 2 : largest <= 127 ? 3 : 4;
    }

    Errors bounds[classes];
    double root = 0;  // of roots of unity, in eps

private:
    void take(const std::string& line, const std::string& title, double Error::*figure, Error Errors::*of)
    {
        const auto at = line.find(" *     " + title);
        if (at != 0) return;
        std::istringstream figures(line.substr(7 + title.size()));
        for (Errors& b : bounds) figures >> b.*of.*figure;
    }
};

// Random sequences of a length with their exact coefficients, the real one being the real part of the other.
template <class R>
struct Sample {
    using C = std::complex<R>;
    using L = Library<R>;

    int32_t n;
    std::vector<C> x;
    std::vector<R> real;
    std::vector<Wide> exact, exact_of_real;  // empty: only pairs of transforms are measured

    Sample(int32_t length, uint64_t seed) : n(length), x(random_pairs<R>(length, seed)), real(real_parts(x))
    {}
    Sample(int32_t length, uint64_t seed, Exact& transform) : Sample(length, seed)
    {
        exact = transform(x);
        exact_of_real.resize(exact.size());
        for (int64_t k = 0; k < n; ++k) exact_of_real[k] = (exact[k] + std::conj(exact[(n - k) % n])) / 2.0L;
    }

    // At the level in use.
    Errors errors() const
    {
        std::vector<R> w(4 * int64_t{n} + 15), cwork(2 * int64_t{n}), c(n), back(n);
        std::vector<C> y(n), z(n);
        Errors e;
        L::FftCi(&n, w.data());
        L::F2tCf(&n, x.data(), y.data(), w.data(), cwork.data());
        L::F2tCb(&n, y.data(), z.data(), w.data(), cwork.data());
        e.pair.include(error(z, x, n));
        L::FftRi(&n, w.data());
        L::F2tRf(&n, real.data(), c.data(), w.data());
        L::F2tRb(&n, c.data(), back.data(), w.data());
        e.pair.include(error(back, real, n));
        if (exact.empty()) return e;
        e.transform.include(error(y, exact));
        e.transform.include(error(unpacked(c), exact_of_real));
        return e;
    }
};

}  // namespace orvel_test
