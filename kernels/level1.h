// kernels/level1.h - the vector kernels that library code calls: counts and increments by value, in 64 bits
//
// T is float, double or the complex type of either. What n < 1 and increments of every sign do is in
// orvel/kernels.h.
#pragma once

#include "kernels/vectors.h"

namespace orvel::kernels {

template <class T>
void axpy(int64_t n, T a, const T* x, int64_t incx, T* y, int64_t incy);
template <class T>
void scal(int64_t n, T a, T* x, int64_t incx);
template <class T>
void copy(int64_t n, const T* x, int64_t incx, T* y, int64_t incy);
template <class T>
void swap(int64_t n, T* x, int64_t incx, T* y, int64_t incy);
template <class T>
void set(int64_t n, T a, T* x, int64_t incx);

// dotc takes the conjugate of x; dot does not.
template <class T>
T dot(int64_t n, const T* x, int64_t incx, const T* y, int64_t incy);
template <class T>
T dotc(int64_t n, const T* x, int64_t incx, const T* y, int64_t incy);

template <class T>
Part<T> asum(int64_t n, const T* x, int64_t incx);
template <class T>
Part<T> nrm2(int64_t n, const T* x, int64_t incx);

// One-based, as the exported functions: 0 for n < 1.
template <class T>
int64_t iamax(int64_t n, const T* x, int64_t incx);

}  // namespace orvel::kernels
