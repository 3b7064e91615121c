// linsys/estimate.cpp - estimate of the norm of the inverse from a factorization
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

// Zeros behind a vector, so that the loops need not care for its end.
template <class T>
constexpr int64_t padding = 64 / static_cast<int64_t>(sizeof(T));

// A triangle that is upper, or a lower one read from its end. Rows of it, conjugated, copied a strip at a
// time, so that no single row is read across the columns of the matrix. False without memory for a strip; see
// for_pieces.
template <class T>
class Rows {
public:
    Rows(int64_t n, kernels::View<const T> u) : n_(n), u_(u)
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
            for (int64_t r = 0; r < rows; ++r) copies_[r * (n_ + padding<T>)+j] = conjugate(u_(first + r, j));
    }

    int64_t n_;
    kernels::View<const T> u_;
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
void solve_for_growth(int64_t n, kernels::View<const T> u, T* result)
{
    Rows<T> rows(n, u);
    SmallScratch<T, 64> padded;
    const bool held = rows && padded.allocate(n + padding<T>);
    T* const z = held ? static_cast<T*>(padded) : result;
    std::fill_n(z, held ? n + padding<T> : n, T(0));
    T ek = 1;
    for (int64_t k = 0; k < n; ++k) {
        const T diagonal = u(k, k);
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
                for_pieces(n - k - 1, &u(k, k) + u.columns, u.columns, z + k + 1, work);
        };
        constexpr int64_t lanes = 64 / static_cast<int64_t>(sizeof(Part<T>));  // of the widest level
        alignas(64) Part<T> before[lanes] = {}, after[lanes] = {};
        visit([&](int64_t count, const T* row, T* behind) {
            of_type<T>(vector_loops())
                .grow(count, kernels::parts(row), kernels::parts(&wm), kernels::parts(&wp),
                      kernels::parts(behind), before, after);
        });
        if (std::accumulate(before, before + lanes, sm) > std::accumulate(after, after + lanes, sp)) {
            const T change = wm - wp;
            visit([&](int64_t count, const T* row, T* behind) {
                kernels::axpy<T>(count, change, row, 1, behind, 1);
            });
            wp = wm;
        }
        z[k] = wp;
    }
    if (held) std::copy_n(z, n, result);
}

// Multiplies all of z, and `factor`, so that z(k) / diagonal is not above 1.
template <class T>
void make_room(int64_t n, int64_t k, T diagonal, T* z, Part<T>& factor)
{
    const Part<T> size = magnitude(diagonal);
    if (magnitude(z[k]) > size) {
        const Part<T> shrinking = size / magnitude(z[k]);
        scale(n, shrinking, z);
        factor *= shrinking;
    }
}

// z = the solution of A * z = z with a triangle, kept from growing: `factor` is multiplied by what z is.
template <class T>
void solve_carefully(const Triangle<T>& t, T* z, Part<T>& factor)
{
    for (int64_t step = 0; step < t.n; ++step) {
        const int64_t k = t.lower ? step : t.n - 1 - step;
        const T diagonal = t.a[k * (t.lda + 1)];
        make_room(t.n, k, diagonal, z, factor);
        z[k] = magnitude(diagonal) != 0 ? kernels::quotient(z[k], diagonal) : T(1);
        if (t.lower)
            kernels::axpy<T>(t.n - k - 1, -z[k], t.a + k + 1 + k * t.lda, 1, z + k + 1, 1);
        else
            kernels::axpy<T>(k, -z[k], t.a + k * t.lda, 1, z, 1);
    }
}

// The same with the conjugate transpose of an upper triangle.
template <class T>
void solve_turned_carefully(int64_t n, const T* r, int64_t ldr, T* z, Part<T>& factor)
{
    for (int64_t k = 0; k < n; ++k) {
        const T diagonal = r[k * (ldr + 1)];
        z[k] -= kernels::dotc<T>(k, r + k * ldr, 1, z, 1);
        make_room(n, k, diagonal, z, factor);
        z[k] = kernels::quotient(z[k], conjugate(diagonal));
    }
}

// z = column j of the identity.
template <class T>
void set_unit(int64_t n, int64_t j, T* z)
{
    std::fill_n(z, n, T(0));
    z[j] = 1;
}

template <class T>
int64_t place_of_largest(int64_t n, const T* z)
{
    return kernels::iamax<T>(n, z, 1) - 1;
}

}  // namespace

// The norm is at least that of any column of the inverse. The one that is looked at too is that where the
// right singular vector of the largest singular value, to which y is close, has its largest element.
template <class T>
Part<T> reciprocal_of_inverse_norm(const Triangle<T>& t, T* z)
{
    const kernels::View<const T> a{t.a, 1, t.lda};
    if (t.lower) {
        solve_for_growth(t.n, a.rows_reversed(t.n).columns_reversed(t.n), z);  // A^H * y = e
        std::reverse(z, z + t.n);
    } else {
        solve_for_growth(t.n, a, z);
    }
    scale_to_one(t.n, z);
    const int64_t j = place_of_largest(t.n, z);
    Part<T> ynorm = 1, of_column = 1;
    solve_carefully(t, z, ynorm);
    ynorm *= scale_to_one(t.n, z);
    // Elements of the column before j, or behind it, are zero.
    set_unit(t.n, j, z);
    if (t.lower)
        solve_carefully<T>({true, t.n - j, t.a + j * (t.lda + 1), t.lda}, z + j, of_column);
    else
        solve_carefully<T>({false, j + 1, t.a, t.lda}, z, of_column);
    of_column *= scale_to_one(t.n, z);
    return std::min(ynorm, of_column);
}

// A column here, too: that of the largest element of the eigenvector to which z is close.
template <class T>
Part<T> reciprocal_of_inverse_norm(int64_t n, const T* r, int64_t ldr, T* z)
{
    const Triangle<T> upper{false, n, r, ldr};
    Part<T> ynorm = 1, of_column = 1;
    solve_for_growth<T>(n, {r, 1, ldr}, z);  // R^H * w = e
    scale_to_one(n, z);
    solve_carefully(upper, z, ynorm);  // R * y = w
    scale_to_one(n, z);
    ynorm = 1;
    solve_turned_carefully(n, r, ldr, z, ynorm);  // R^H * v = y
    ynorm *= scale_to_one(n, z);
    solve_carefully(upper, z, ynorm);  // R * z = v
    ynorm *= scale_to_one(n, z);
    const int64_t j = place_of_largest(n, z);
    set_unit(n, j, z);
    solve_turned_carefully(n - j, r + j * (ldr + 1), ldr, z + j, of_column);
    of_column *= scale_to_one(n, z);
    solve_carefully(upper, z, of_column);
    of_column *= scale_to_one(n, z);
    return std::min(ynorm, of_column);
}

template <class T>
Part<T> reciprocal_of_inverse_norm(int64_t n, const T* fact, int64_t ldfac, const int32_t* ipvt, T* z)
{
    solve_for_growth<T>(n, {fact, 1, ldfac}, z);
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
    solve_carefully<T>({false, n, fact, ldfac}, z, ynorm);  // U * z = v
    ynorm *= scale_to_one(n, z);
    return ynorm;
}

template float reciprocal_of_inverse_norm(const Triangle<float>&, float*);
template float reciprocal_of_inverse_norm(int64_t, const float*, int64_t, float*);
template double reciprocal_of_inverse_norm(const Triangle<double>&, double*);
template double reciprocal_of_inverse_norm(int64_t, const double*, int64_t, double*);
template float reciprocal_of_inverse_norm(const Triangle<std::complex<float>>&, std::complex<float>*);
template float reciprocal_of_inverse_norm(int64_t, const std::complex<float>*, int64_t, std::complex<float>*);
template double reciprocal_of_inverse_norm(const Triangle<std::complex<double>>&, std::complex<double>*);
template double reciprocal_of_inverse_norm(int64_t, const std::complex<double>*, int64_t,
                                           std::complex<double>*);
template float reciprocal_of_inverse_norm(int64_t, const float*, int64_t, const int32_t*, float*);
template double reciprocal_of_inverse_norm(int64_t, const double*, int64_t, const int32_t*, double*);
template float reciprocal_of_inverse_norm(int64_t, const std::complex<float>*, int64_t, const int32_t*,
                                          std::complex<float>*);
template double reciprocal_of_inverse_norm(int64_t, const std::complex<double>*, int64_t, const int32_t*,
                                           std::complex<double>*);

}  // namespace orvel::linsys
