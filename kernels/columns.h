// kernels/columns.h - products of the columns of a matrix with vectors, for the kernels of level 2
#pragma once

#include <algorithm>
#include <type_traits>

#include "kernels/isa/loops.h"
#include "kernels/matrix.h"
#include "kernels/vectors.h"

namespace orvel::kernels {

// y(m) += A(m, n) * x(n), columns in ascending order; y(n) = A^T * x(m), or with the conjugated matrix. All
// vectors are contiguous.
template <class T>
inline void add_columns(int64_t m, int64_t n, const T* a, int64_t lda, bool conjugated,
                        const std::type_identity_t<T>* x, std::type_identity_t<T>* y)
{
    const auto& run = isa::of_type<T>(level2_loops());
    if constexpr (is_complex<T>)
        run.add_columns(m, n, parts(a), lda, conjugated, parts(x), parts(y));
    else
        run.add_columns(m, n, a, lda, x, y);
}
template <class T>
inline void dot_columns(int64_t m, int64_t n, const T* a, int64_t lda, bool conjugated,
                        const std::type_identity_t<T>* x, std::type_identity_t<T>* y)
{
    const auto& run = isa::of_type<T>(level2_loops());
    if constexpr (is_complex<T>)
        run.dot_columns(m, n, parts(a), lda, conjugated, parts(x), parts(y));
    else
        run.dot_columns(m, n, a, lda, x, y);
}

template <class T>
inline T dot_column(int64_t m, const T* a, bool conjugated, const T* x)
{
    T sum{};
    if (m > 0) dot_columns(m, 1, a, 1, conjugated, x, &sum);
    return sum;
}

// A piece of a vector as contiguous memory: itself, or a copy on the stack that goes back at the end when it
// is not constant.
template <class T, int64_t longest>
class Piece {
public:
    Piece(T* x, int64_t n, int64_t inc) : x_(x), n_(n), inc_(inc)
    {
        if (inc == 1) return;
        Value* const copy = copy_;
        for (int64_t k = 0; k < n; ++k) copy[k] = x[k * inc];
    }
    ~Piece()
    {
        if constexpr (!std::is_const_v<T>)
            if (inc_ != 1)
                for (int64_t k = 0; k < n_; ++k) x_[k * inc_] = static_cast<Value*>(copy_)[k];
    }
    Piece(const Piece&) = delete;
    Piece& operator=(const Piece&) = delete;

    operator T*() { return inc_ == 1 ? x_ : static_cast<Value*>(copy_); }

private:
    using Value = std::remove_const_t<T>;

    T* x_;
    int64_t n_, inc_;
    OnStack<Value, longest> copy_;
};
inline constexpr int64_t longest_piece = 1024;  // stays in the nearest cache

// y = beta * y, without reading y when beta is 0.
template <class T>
inline void scale_vector(int64_t n, T beta, T* y, int64_t inc)
{
    if (beta == T(1)) return;
    y = start(y, n, inc);
    for (int64_t k = 0; k < n; ++k) y[k * inc] = beta == T(0) ? T(0) : beta * y[k * inc];
}

}  // namespace orvel::kernels
