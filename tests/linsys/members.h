// tests/linsys/members.h - the members of the dense solvers by the type of their matrices
#pragma once

#include <complex>

#include "orvel/orvel.h"

namespace orvel_test {

template <class T>
struct RealOf {
    using type = T;
};
template <class R>
struct RealOf<std::complex<R>> {
    using type = R;
};
template <class T>
using Real = typename RealOf<T>::type;

template <class T>
T make(float re, float im)
{
    if constexpr (std::is_same_v<T, Real<T>>)
        return static_cast<T>(re) + static_cast<T>(im) / 1024;
    else
        return {static_cast<Real<T>>(re), static_cast<Real<T>>(im)};
}

template <class T>
std::complex<long double> wide(T x)
{
    return {static_cast<long double>(std::real(x)), static_cast<long double>(std::imag(x))};
}

inline const int32_t four = 4;

template <class T>
struct Member;

#define ORVEL_TEST_MEMBERS(T, p, G, CR, NR, RT)                     \
    template <>                                                     \
    struct Member<T> {                                              \
        static constexpr auto lsarg = p##LSA##G, lslrg = p##LSL##G; \
        static constexpr auto lfcrg = p##LFC##G;                    \
        static constexpr auto lftrg = p##LFT##G;                    \
        static constexpr auto l2trg = p##L2T##G;                    \
        static constexpr auto l4trg = p##L4T##G;                    \
        static constexpr auto lfsrg = p##LFS##G;                    \
        static constexpr auto lfdrg = p##LFD##G;                    \
        static constexpr auto lfirg = p##LFI##G;                    \
        static constexpr auto linrg = p##LIN##G;                    \
        static constexpr auto linrt = p##RT;                        \
        static constexpr auto nr1rr = p##NR;                        \
    };
ORVEL_TEST_MEMBERS(float, , RG, CRGRG, NR1RR, LINRT)
ORVEL_TEST_MEMBERS(double, D, RG, CRGRG, NR1RR, LINRT)
ORVEL_TEST_MEMBERS(std::complex<float>, , CG, CCGCG, NR1CR, LINCT)
ORVEL_TEST_MEMBERS(std::complex<double>, D, CG, CCGCG, NR1CR, LINCT)

}  // namespace orvel_test
