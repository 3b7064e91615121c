// linsys/checks.h - argument checks that several of the dense solvers share, each with its text
//
// Every check posts and goes on; the routine asks afterwards whether one has failed.
#pragma once

#include "frame/routine.h"

namespace orvel::linsys {

template <class Frame>
void check_number_of_equations(Frame& me, int32_t code, int32_t n)
{
    if (n < 1)
        me.post(terminal, code, "The number of equations must be positive while N = %(I1) is given.",
                {i(1, n)});
}

template <class Frame>
void check_order(Frame& me, int32_t code, int32_t n)
{
    if (n < 1)
        me.post(terminal, code, "The order of the matrix must be positive while N = %(I1) is given.",
                {i(1, n)});
}

template <class Frame>
void check_lda(Frame& me, int32_t code, int32_t n, int64_t lda)
{
    if (n > lda)
        me.post(
            terminal, code,
            "The order of the matrix must be less than or equal to its leading dimension while N = %(I1) and LDA = %(I2) are given.",
            {i(1, n), i(2, static_cast<int32_t>(lda))});
}

template <class Frame>
void check_ldfac(Frame& me, int32_t code, int32_t n, int64_t ldfac)
{
    if (n > ldfac)
        me.post(
            terminal, code,
            "The order of the matrix must be less than or equal to its leading dimension while N = %(I1) and LDFAC = %(I2) are given.",
            {i(1, n), i(2, static_cast<int32_t>(ldfac))});
}

template <class Frame>
void check_ldainv(Frame& me, int32_t code, int32_t n, int64_t ldainv)
{
    if (n > ldainv)
        me.post(
            terminal, code,
            "The order of the matrix must be less than or equal to its leading dimension while N = %(I1) and LDAINV = %(I2) are given.",
            {i(1, n), i(2, static_cast<int32_t>(ldainv))});
}

template <class Frame>
void check_ipath(Frame& me, int32_t code, int32_t ipath)
{
    if (ipath != 1 && ipath != 2)
        me.post(terminal, code, "IPATH must be either 1 or 2 while a value of %(I1) is given.",
                {i(1, ipath)});
}

template <class Frame>
void check_option_17(Frame& me, int32_t code, int32_t flag)
{
    if (flag != 1 && flag != 2)
        me.post(
            terminal, code,
            "The flag value for computing the matrix condition number must be 1 or 2 while %(I1) is given.",
            {i(1, flag)});
}

// Scratch storage of a front, whose size depends on N.
template <class Frame>
void no_workspace(Frame& me, int32_t code, int32_t n)
{
    me.no_storage(code,
                  "The required storage cannot be allocated.  The workspace is based on N, where N = %(I1).",
                  {i(1, n)});
}

// The first entry of IPVT that is no row, which would lead outside the arrays.
template <class Frame>
void check_pivots(Frame& me, int32_t code, int32_t n, const int32_t* ipvt)
{
    for (int32_t k = 0; k < n; ++k)
        if (ipvt[k] < 1 || ipvt[k] > n)
            return me.post(
                terminal, code,
                "The elements of IPVT must be rows of the matrix, from 1 to N = %(I1), while IPVT(%(I2)) = %(I3) is given.",
                {i(1, n), i(2, k + 1), i(3, ipvt[k])});
}

// The first entry of IPVT that is none of the rows that step k can take, k to k + KL.
template <class Frame>
void check_pivots_of_band(Frame& me, int32_t code, int32_t n, int64_t kl, const int32_t* ipvt)
{
    for (int64_t k = 1; k <= n; ++k)
        if (ipvt[k - 1] < k || ipvt[k - 1] > n || ipvt[k - 1] > k + kl)
            return me.post(
                terminal, code,
                "The elements of IPVT must be rows that their step can take, while IPVT(%(I1)) = %(I2) is given.",
                {i(1, static_cast<int32_t>(k)), i(2, ipvt[k - 1])});
}

// ---- what is wrong with the matrix ------------------------------------------------------------------------

template <class Frame, class R>
void warn_of_singularity(Frame& me, R rcond)
{
    me.post(
        warning, 1,
        "The matrix is algorithmically singular.  An estimate of the reciprocal of its L1 condition number is RCOND = %(R1).",
        {r(1, rcond)});
}

template <class Frame, class R>
void warn_of_solution(Frame& me, R rcond)
{
    me.post(
        warning, 1,
        "The matrix is too ill-conditioned. An estimate of the reciprocal of its L1 condition number is RCOND = %(R1).  The solution might not be accurate.",
        {r(1, rcond)});
}

template <class Frame, class R>
void warn_of_inverse(Frame& me, R rcond)
{
    me.post(
        warning, 1,
        "The matrix is too ill-conditioned. An estimate of the reciprocal of its L1 condition number is RCOND = %(R1).  The inverse might not be accurate.",
        {r(1, rcond)});
}

template <class Frame>
void say_u_is_singular(Frame& me, int32_t type, int32_t code)
{
    me.post(
        type, code,
        "The input matrix is singular.  Some of the diagonal elements of the upper triangular matrix U of the LU factorization are close to zero.");
}

template <class Frame>
void say_r_is_singular(Frame& me, int32_t code)
{
    me.post(
        terminal, code,
        "The input matrix is singular.  Some of the diagonal elements of the upper triangular matrix R of the R**H*R factorization are close to zero.");
}

}  // namespace orvel::linsys
