// bench/linsys_eigen.h - factorizations by Eigen, compiled for this machine's instructions
#pragma once

#include <complex>
#include <cstdint>

namespace bench {

template <class T>
void eigen_factor(int32_t n, const T* a, T* fact, int32_t* ipvt);

template <class T>
void eigen_cholesky(int32_t n, const T* a, T* fact);

}  // namespace bench
