// kernels/level2.h - what the kernels of level 2 share
#pragma once

#include <algorithm>
#include <type_traits>

#include "frame/scratch.h"
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

// A vector as contiguous memory: itself, or a copy that goes back at the end when it is not constant. Without
// memory for the copy the object is false.
template <class T>
class Contiguous {
public:
    Contiguous(T* x, int64_t n, int64_t inc) : strided_(start(x, n, inc)), n_(n), inc_(inc)
    {
        if (inc == 1) {
            p_ = x;
            return;
        }
        p_ = n <= small ? on_stack_ : on_heap_.allocate(n) ? static_cast<Value*>(on_heap_) : nullptr;
        if (p_ != nullptr)
            for (int64_t k = 0; k < n; ++k) const_cast<Value*>(p_)[k] = strided_[k * inc];
    }
    ~Contiguous()
    {
        if constexpr (!std::is_const_v<T>)
            if (inc_ != 1 && p_ != nullptr)
                for (int64_t k = 0; k < n_; ++k) strided_[k * inc_] = p_[k];
    }
    Contiguous(const Contiguous&) = delete;
    Contiguous& operator=(const Contiguous&) = delete;

    explicit operator bool() const { return p_ != nullptr; }
    operator T*() const { return p_; }

private:
    using Value = std::remove_const_t<T>;
    static constexpr int64_t small = 256;

    T* strided_;
    int64_t n_, inc_;
    T* p_;
    OnStack<Value, small> on_stack_;
    Scratch<Value> on_heap_;
};

// y = beta * y, without reading y when beta is 0.
template <class T>
inline void scale_vector(int64_t n, T beta, T* y, int64_t inc)
{
    if (beta == T(1)) return;
    y = start(y, n, inc);
    for (int64_t k = 0; k < n; ++k) y[k * inc] = beta == T(0) ? T(0) : beta * y[k * inc];
}

}  // namespace orvel::kernels
