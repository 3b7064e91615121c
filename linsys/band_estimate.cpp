// linsys/band_estimate.cpp - estimate of the condition number of a band matrix from its factorization
//
// Source: A. Cline, C. Moler, G. Stewart and J. Wilkinson, An estimate for the condition number of a matrix,
// 1979. The matrix is taken times a power of two that brings its norm to 1, and vectors are brought back when
// they have grown beyond half of the range of exponents: seldom, so that long bands take a time in
// proportion.
#include <algorithm>
#include <cmath>
#include <limits>

#include "linsys/band.h"

namespace orvel::linsys {

namespace {

template <class T>
class BandEstimate {
    using R = Part<T>;

public:
    BandEstimate(const Band<const T>& f, const int32_t* ipvt, R scale, T* z)
        : f_(f), ipvt_(ipvt), scale_(scale), z_(z)
    {}

    // Of 1 / norm of the inverse of `scale` * A.
    R reciprocal_of_inverse_norm()
    {
        grow();
        to_one();
        if (ipvt_ != nullptr)
            lower_turned();
        else
            upper();
        to_one();
        // The norm is at least that of a column of the inverse: of the one that y points to.
        const int64_t j = kernels::iamax<T>(f_.n, z_, 1) - 1;
        const R of_vector = solve();
        std::fill_n(z_, f_.n, T(0));
        z_[j] = 1;
        return std::min(of_vector, solve());
    }

private:
    static constexpr R most = sizeof(R) == 4 ? R(0x1p50) : R(0x1p400);

    int64_t multipliers(int64_t k) const { return f_.rows_end(k) - k - 1; }

    void multiply(R factor)
    {
        for (int64_t i = 0; i < f_.n; ++i) z_[i] *= factor;
        norm_ *= factor;
    }
    void to_one() { multiply(1 / kernels::asum<T>(f_.n, z_, 1)); }

    // So that z(k) / size is not above the most.
    void keep_below(R size, int64_t k)
    {
        if (magnitude(z_[k]) / most > size) multiply(size / (magnitude(z_[k]) / most) / most);
    }

    // z = the solution of A * z = z; returns the reciprocal of its norm.
    R solve()
    {
        norm_ = 1;
        if (ipvt_ != nullptr)
            lower();
        else
            upper_turned();
        to_one();
        upper();
        to_one();
        return norm_;
    }

    void lower_turned()
    {
        for (int64_t k = f_.n - 1; k >= 0; --k) {
            z_[k] -= kernels::dotc<T>(multipliers(k), &f_(k, k) + 1, 1, z_ + k + 1, 1);
            keep_below(1, k);
            std::swap(z_[ipvt_[k] - 1], z_[k]);
        }
    }
    void lower()
    {
        for (int64_t k = 0; k < f_.n; ++k) {
            std::swap(z_[ipvt_[k] - 1], z_[k]);
            kernels::axpy<T>(multipliers(k), -z_[k], &f_(k, k) + 1, 1, z_ + k + 1, 1);
            keep_below(1, k);
        }
    }
    void upper()
    {
        for (int64_t k = f_.n - 1; k >= 0; --k) {
            divide(k, scale_ * f_(k, k));
            const int64_t first = f_.first_row(k);
            kernels::axpy<T>(k - first, -scale_ * z_[k], &f_(first, k), 1, z_ + first, 1);
        }
    }
    void upper_turned()
    {
        for (int64_t k = 0; k < f_.n; ++k) {
            const int64_t first = f_.first_row(k);
            z_[k] -= scale_ * kernels::dotc<T>(k - first, &f_(first, k), 1, z_ + first, 1);
            divide(k, conjugate(scale_ * f_(k, k)));
        }
    }
    void divide(int64_t k, T diagonal)
    {
        keep_below(magnitude(diagonal), k);
        z_[k] = diagonal != T(0) ? kernels::quotient(z_[k], diagonal) : T(1);
    }

    // z = the solution of U^H * w = e, with the signs of e chosen to make w grow.
    void grow()
    {
        std::fill_n(z_, f_.n, T(0));
        T ek = 1;
        for (int64_t k = 0; k < f_.n; ++k) {
            const T diagonal = conjugate(scale_ * f_(k, k));
            const R size = magnitude(diagonal);
            if (z_[k] != T(0)) ek = with_sign(ek, -z_[k]);
            if (const R grown = magnitude(ek - z_[k]) / most; grown > size) {
                const R factor = size / grown / most;
                multiply(factor);
                ek *= factor;
            }
            const T plus = ek - z_[k], minus = -ek - z_[k];
            const T wp = size != 0 ? kernels::quotient(plus, diagonal) : T(1);
            const T wm = size != 0 ? kernels::quotient(minus, diagonal) : T(1);
            R sp = magnitude(plus), sm = magnitude(minus);
            const int64_t end = f_.columns_end(k);
            for (int64_t j = k + 1; j < end; ++j) {
                const T u = conjugate(scale_ * f_(k, j));
                sp += magnitude(z_[j] + wp * u);
                sm += magnitude(z_[j] + wm * u);
            }
            const T w = sp < sm ? wm : wp;
            for (int64_t j = k + 1; j < end; ++j) z_[j] += w * conjugate(scale_ * f_(k, j));
            z_[k] = w;
        }
    }

    const Band<const T> f_;
    const int32_t* const ipvt_;
    const R scale_;
    T* const z_;
    R norm_ = 1;
};

}  // namespace

template <class T>
Part<T> condition_of_band(const ScaledNorm<Part<T>>& norm, const Band<const T>& fact, const int32_t* ipvt,
                          T* z)
{
    using R = Part<T>;
    if (norm.value == 0) return 1;
    if (std::isnan(norm.value) || std::isinf(norm.value)) return norm.value - norm.value;
    constexpr int most = std::numeric_limits<R>::max_exponent - 2;
    // Even, as the factor of a positive definite matrix has the root of its scale.
    const int exponent = std::clamp(std::ilogb(norm.value) - std::ilogb(norm.scale), -most, most) / 2 * 2;
    const R scale = std::ldexp(R(1), -exponent);
    const R of_factor = ipvt != nullptr ? scale : std::ldexp(R(1), -exponent / 2);
    const R of_inverse = BandEstimate<T>(fact, ipvt, of_factor, z).reciprocal_of_inverse_norm();
    return of_inverse / (norm.value * (scale / norm.scale));
}

template float condition_of_band(const ScaledNorm<float>&, const Band<const float>&, const int32_t*, float*);
template double condition_of_band(const ScaledNorm<double>&, const Band<const double>&, const int32_t*,
                                  double*);
template float condition_of_band(const ScaledNorm<float>&, const Band<const orvel_complex>&, const int32_t*,
                                 orvel_complex*);
template double condition_of_band(const ScaledNorm<double>&, const Band<const orvel_dcomplex>&,
                                  const int32_t*, orvel_dcomplex*);

}  // namespace orvel::linsys
