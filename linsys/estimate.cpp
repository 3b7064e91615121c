// linsys/estimate.cpp - estimate of the norm of the inverse from an LU factorization
//
// Source: A. Cline, C. Moler, G. Stewart and J. Wilkinson, An estimate for the condition number of a matrix,
// 1979, in the form of J. Dongarra, C. Moler, J. Bunch and G. Stewart, LINPACK Users' Guide, 1979. All the
// scaling is there to keep the intermediate vectors from overflowing.
#include <algorithm>
#include <numeric>

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

// Zeros behind a vector, so that the loops need not care for its end.
template <class T>
constexpr int64_t padding = 64 / static_cast<int64_t>(sizeof(T));

// Rows of U, conjugated, some at a time and one row after the other, so that no row is read across the
// columns of the matrix. Without memory for them one row is had, which is copied across.
template <class T>
class Rows {
public:
    Rows(int64_t n, const T* fact, int64_t ldfac) : n_(n), fact_(fact), ldfac_(ldfac)
    {
        held_ = copies_.allocate(strip, n + padding<T>);
        if (held_) std::fill_n(static_cast<T*>(copies_), strip * (n + padding<T>), T(0));
    }

    // Elements k + 1..n - 1 of row k.
    const T* row(int64_t k)
    {
        if (k % strip == 0) fetch(k);
        return copies_ + (k % strip) * (n_ + padding<T>)+k + 1;
    }

    explicit operator bool() const { return held_; }

private:
    static constexpr int64_t strip = 64 / static_cast<int64_t>(sizeof(T));

    void fetch(int64_t first)
    {
        const int64_t rows = std::min(strip, n_ - first);
        for (int64_t j = first; j < n_; ++j)
            for (int64_t r = 0; r < rows; ++r)
                copies_[r * (n_ + padding<T>)+j] = conjugate(fact_[first + r + j * ldfac_]);
    }

    int64_t n_;
    const T* fact_;
    int64_t ldfac_;
    SmallScratch<T, 320> copies_;
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

// The elements of z behind step k by pieces of row k, when there is no memory for rows.
template <class T, class Visit>
void for_pieces(int64_t n, const T* u, int64_t step, T* z, Visit visit)
{
    constexpr int64_t piece = 64;
    kernels::OnStack<T, piece + padding<T>> row, part;
    for (int64_t j = 0; j < n; j += piece) {
        const int64_t here = std::min(piece, n - j);
        for (int64_t k = 0; k < here; ++k) row[k] = conjugate(u[(j + k) * step]), part[k] = z[j + k];
        std::fill_n(row + here, padding<T>, T(0));
        std::fill_n(part + here, padding<T>, T(0));
        visit(here, static_cast<const T*>(row), static_cast<T*>(part));
        std::copy_n(static_cast<T*>(part), here, z + j);
    }
}

// Solves U^H * w = e, with the signs of e chosen to make w grow.
template <class T>
void solve_for_growth(int64_t n, const T* fact, int64_t ldfac, T* result)
{
    Rows<T> rows(n, fact, ldfac);
    SmallScratch<T, 64> padded;
    const bool held = rows && padded.allocate(n + padding<T>);
    T* const z = held ? static_cast<T*>(padded) : result;
    std::fill_n(z, held ? n + padding<T> : n, T(0));
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
        const Part<T> sp = magnitude(wp), sm = magnitude(wm);
        if (size != 0) {
            wp = kernels::quotient(wp, conjugate(diagonal));
            wm = kernels::quotient(wm, conjugate(diagonal));
        } else {
            wp = wm = 1;
        }
        const auto visit = [&](auto work) {
            if (held)
                work(n - k - 1, rows.row(k), z + k + 1);
            else
                for_pieces(n - k - 1, fact + k + (k + 1) * ldfac, ldfac, z + k + 1, work);
        };
        constexpr int64_t lanes = 64 / static_cast<int64_t>(sizeof(Part<T>));  // of the widest level
        alignas(64) Part<T> before[lanes] = {}, after[lanes] = {};
        visit([&](int64_t count, const T* u, T* behind) {
            of_type<T>(vector_loops())
                .grow(count, kernels::parts(u), kernels::parts(&wm), kernels::parts(&wp),
                      kernels::parts(behind), before, after);
        });
        if (std::accumulate(before, before + lanes, sm) > std::accumulate(after, after + lanes, sp)) {
            const T change = wm - wp;
            visit([&](int64_t count, const T* u, T* behind) {
                kernels::axpy<T>(count, change, u, 1, behind, 1);
            });
            wp = wm;
        }
        z[k] = wp;
    }
    if (held) std::copy_n(z, n, result);
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
        z[k] = size != 0 ? kernels::quotient(z[k], diagonal) : T(1);
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
