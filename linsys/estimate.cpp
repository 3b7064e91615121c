// linsys/estimate.cpp - estimate of the norm of the inverse from an LU factorization
//
// Source: A. Cline, C. Moler, G. Stewart and J. Wilkinson, An estimate for the condition number of a matrix,
// 1979, in the form of J. Dongarra, C. Moler, J. Bunch and G. Stewart, LINPACK Users' Guide, 1979. All the
// scaling is there to keep the intermediate vectors from overflowing.
#include <algorithm>

#include "frame/scratch.h"
#include "kernels/level1.h"
#include "linsys/linsys.h"

namespace orvel::linsys {

namespace {

// |a| with the direction of b; a where b is zero.
template <class T>
T with_sign(T a, T b)
{
    if constexpr (is_complex<T>) {
        const Part<T> size = magnitude(b);
        return size == 0 ? a : magnitude(a) * (b / size);
    } else {
        return std::copysign(a, b);
    }
}

// Rows of U, eight at a time and one row after the other, so that no row is read across the columns of the
// matrix. Without memory for them rows are read where they are.
template <class T>
class Rows {
public:
    Rows(int64_t n, const T* fact, int64_t ldfac) : n_(n), fact_(fact), ldfac_(ldfac)
    {
        held_ = copies_.allocate(strip, n);
    }

    // Elements k + 1..n - 1 of row k, and how far apart they are.
    const T* row(int64_t k, int64_t& step)
    {
        if (!held_) {
            step = ldfac_;
            return fact_ + k + (k + 1) * ldfac_;
        }
        step = 1;
        if (k % strip == 0) fetch(k);
        return copies_ + (k % strip) * n_ + k + 1;
    }

private:
    static constexpr int64_t strip = 64 / static_cast<int64_t>(sizeof(T));

    void fetch(int64_t first)
    {
        const int64_t rows = std::min(strip, n_ - first);
        for (int64_t j = first; j < n_; ++j)
            for (int64_t r = 0; r < rows; ++r) copies_[r * n_ + j] = fact_[first + r + j * ldfac_];
    }

    int64_t n_;
    const T* fact_;
    int64_t ldfac_;
    Scratch<T> copies_;
    bool held_;
};

template <class T>
void scale(int64_t n, Part<T> factor, T* z)
{
    for (int64_t i = 0; i < n; ++i) z[i] *= factor;
}

template <class T>
Part<T> scale_to_one(int64_t n, T* z)
{
    const Part<T> factor = 1 / kernels::asum<T>(n, z, 1);
    scale(n, factor, z);
    return factor;
}

// What the elements of z behind step k add to the two candidates of the growth.
template <class T>
void compare_growth(int64_t n, const T* u, int64_t step, T wp, T wm, T* z, Part<T>& sp, Part<T>& sm)
{
    constexpr int partial = 8;
    Part<T> plus[partial] = {}, minus[partial] = {};
    const auto visit = [&](int64_t j, int lane) {
        const T e = conjugate(u[j * step]);
        minus[lane] += magnitude(z[j] + wm * e);
        z[j] += wp * e;
        plus[lane] += magnitude(z[j]);
    };
    int64_t j = 0;
    for (; j + partial <= n; j += partial)
        for (int lane = 0; lane < partial; ++lane) visit(j + lane, lane);
    for (; j < n; ++j) visit(j, 0);
    for (int lane = 0; lane < partial; ++lane) sp += plus[lane], sm += minus[lane];
}

// Solves U^H * w = e, with the signs of e chosen to make w grow.
template <class T>
void solve_for_growth(int64_t n, const T* fact, int64_t ldfac, T* z)
{
    Rows<T> rows(n, fact, ldfac);
    std::fill_n(z, n, T(0));
    T ek = 1;
    for (int64_t k = 0; k < n; ++k) {
        const T diagonal = fact[k * (ldfac + 1)];
        const Part<T> size = magnitude(diagonal);
        if (z[k] != T(0)) ek = with_sign(ek, -z[k]);
        if (magnitude(ek - z[k]) > size) {
            const Part<T> factor = size / magnitude(ek - z[k]);
            scale(n, factor, z);
            ek *= factor;
        }
        T wp = ek - z[k], wm = -ek - z[k];
        Part<T> sp = magnitude(wp), sm = magnitude(wm);
        if (size != 0) {
            wp /= conjugate(diagonal);
            wm /= conjugate(diagonal);
        } else {
            wp = wm = 1;
        }
        int64_t step = 1;
        const T* const u = rows.row(k, step);
        T* const behind = z + k + 1;
        compare_growth<T>(n - k - 1, u, step, wp, wm, behind, sp, sm);
        if (sm > sp) {
            const T change = wm - wp;
            for (int64_t j = 0; j < n - k - 1; ++j) behind[j] += change * conjugate(u[j * step]);
            wp = wm;
        }
        z[k] = wp;
    }
}

}  // namespace

template <class T>
Part<T> reciprocal_of_inverse_norm(int64_t n, const T* fact, int64_t ldfac, const int32_t* ipvt, T* z)
{
    solve_for_growth(n, fact, ldfac, z);
    scale_to_one(n, z);
    for (int64_t k = n - 1; k >= 0; --k) {  // L^H * y = w
        if (k < n - 1) z[k] += kernels::dotc<T>(n - k - 1, fact + k + 1 + k * ldfac, 1, z + k + 1, 1);
        if (magnitude(z[k]) > 1) scale(n, 1 / magnitude(z[k]), z);
        std::swap(z[ipvt[k] - 1], z[k]);
    }
    scale_to_one(n, z);

    Part<T> ynorm = 1;
    for (int64_t k = 0; k < n; ++k) {  // L * v = y
        std::swap(z[ipvt[k] - 1], z[k]);
        if (k < n - 1) kernels::axpy<T>(n - k - 1, z[k], fact + k + 1 + k * ldfac, 1, z + k + 1, 1);
        if (magnitude(z[k]) > 1) {
            const Part<T> factor = 1 / magnitude(z[k]);
            scale(n, factor, z);
            ynorm *= factor;
        }
    }
    ynorm *= scale_to_one(n, z);
    for (int64_t k = n - 1; k >= 0; --k) {  // U * z = v
        const T diagonal = fact[k * (ldfac + 1)];
        const Part<T> size = magnitude(diagonal);
        if (magnitude(z[k]) > size) {
            const Part<T> factor = size / magnitude(z[k]);
            scale(n, factor, z);
            ynorm *= factor;
        }
        z[k] = size != 0 ? z[k] / diagonal : T(1);
        kernels::axpy<T>(k, -z[k], fact + k * ldfac, 1, z, 1);
    }
    ynorm *= scale_to_one(n, z);
    return ynorm;
}

template float reciprocal_of_inverse_norm(int64_t, const float*, int64_t, const int32_t*, float*);
template double reciprocal_of_inverse_norm(int64_t, const double*, int64_t, const int32_t*, double*);
template float reciprocal_of_inverse_norm(int64_t, const std::complex<float>*, int64_t, const int32_t*,
                                          std::complex<float>*);
template double reciprocal_of_inverse_norm(int64_t, const std::complex<double>*, int64_t, const int32_t*,
                                           std::complex<double>*);

}  // namespace orvel::linsys
