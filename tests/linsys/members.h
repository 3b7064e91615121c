// tests/linsys/members.h - the members of the dense solvers by the type of their matrices
#pragma once

#include <vector>

#include "tests/numbers.h"
#include "tests/support.h"

namespace orvel_test {

inline const int32_t one = 1, two = 2, three = 3, four = 4;

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

template <class T>
std::complex<long double> wide(T x)
{
    return {static_cast<long double>(std::real(x)), static_cast<long double>(std::imag(x))};
}

template <class T>
class Solving : public Quiet {
protected:
    using R = Real<T>;
    static constexpr R eps = std::numeric_limits<R>::epsilon(), most = std::numeric_limits<R>::max(),
                       tiny = std::numeric_limits<R>::min();

    static std::size_t at(int32_t i, int32_t j, int32_t ld) { return static_cast<std::size_t>(i + j * ld); }
    // Random elements; the leading dimension may be padded, with poison.
    static std::vector<T> matrix(int32_t n, int32_t ld, unsigned seed)
    {
        std::mt19937 random(seed);
        std::vector<T> a(at(0, n, ld), T(std::nanf("")));
        for (int32_t j = 0; j < n; ++j)
            for (int32_t i = 0; i < n; ++i) a[at(i, j, ld)] = random_value<T>(random);
        return a;
    }
    static std::vector<T> vector(int32_t n, unsigned seed)
    {
        std::vector<T> b = matrix(n, n, seed);
        b.resize(static_cast<std::size_t>(n));
        return b;
    }
};
using Types = testing::Types<float, double, std::complex<float>, std::complex<double>>;

}  // namespace orvel_test
