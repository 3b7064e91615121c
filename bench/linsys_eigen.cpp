// bench/linsys_eigen.cpp - factorizations by Eigen, compiled for this machine's instructions
#include "bench/linsys_eigen.h"

#include <Eigen/Dense>

namespace bench {

template <class T>
void eigen_factor(int32_t n, const T* a, T* fact, int32_t* ipvt)
{
    using Matrix = Eigen::Matrix<T, Eigen::Dynamic, Eigen::Dynamic>;
    Eigen::Map<Matrix> factors(fact, n, n);
    factors = Eigen::Map<const Matrix>(a, n, n);
    Eigen::PartialPivLU<Eigen::Ref<Matrix>> lu(factors);
    ipvt[0] = static_cast<int32_t>(lu.permutationP().indices()[0]);
}

template <class T>
void eigen_cholesky(int32_t n, const T* a, T* fact)
{
    using Matrix = Eigen::Matrix<T, Eigen::Dynamic, Eigen::Dynamic>;
    Eigen::Map<Matrix> factors(fact, n, n);
    factors = Eigen::Map<const Matrix>(a, n, n);
    Eigen::LLT<Eigen::Ref<Matrix>, Eigen::Lower> llt(factors);
    fact[0] = llt.info() == Eigen::Success ? fact[0] : T(0);
}

template void eigen_factor(int32_t, const float*, float*, int32_t*);
template void eigen_factor(int32_t, const double*, double*, int32_t*);
template void eigen_factor(int32_t, const std::complex<float>*, std::complex<float>*, int32_t*);
template void eigen_factor(int32_t, const std::complex<double>*, std::complex<double>*, int32_t*);
template void eigen_cholesky(int32_t, const float*, float*);
template void eigen_cholesky(int32_t, const double*, double*);
template void eigen_cholesky(int32_t, const std::complex<float>*, std::complex<float>*);
template void eigen_cholesky(int32_t, const std::complex<double>*, std::complex<double>*);

}  // namespace bench
