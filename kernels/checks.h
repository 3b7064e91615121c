// kernels/checks.h - checks of the arguments of the matrix kernels, each with its text
//
// A check that fails posts a TERMINAL error under the name of the kernel and is true, so that a kernel asks
// for one after the other until one fails. On the good path it has no frame.
#pragma once

#include <initializer_list>
#include <string_view>

#include "frame/message.h"
#include "kernels/matrix.h"

namespace orvel::kernels {

using frame::i;
using frame::l;

struct Checks {
    char precision;
    std::string_view kernel;

    [[gnu::cold]] bool post(int32_t code, std::string_view text,
                            std::initializer_list<frame::Parameter> parameters) const;

    bool m(int32_t code, int32_t m) const
    {
        return m < 0 &&
               post(code, "M must be greater than or equal to zero while %(I1) is given.", {i(1, m)});
    }
    bool n(int32_t code, int32_t n) const
    {
        return n < 0 &&
               post(code, "N must be greater than or equal to zero while %(I1) is given.", {i(1, n)});
    }
    bool k(int32_t code, int32_t k) const
    {
        return k < 0 &&
               post(code, "K must be greater than or equal to zero while %(I1) is given.", {i(1, k)});
    }
    bool kl(int32_t code, int32_t kl) const
    {
        return kl < 0 &&
               post(code, "KL must be greater than or equal to zero while %(I1) is given.", {i(1, kl)});
    }
    bool ku(int32_t code, int32_t ku) const
    {
        return ku < 0 &&
               post(code, "KU must be greater than or equal to zero while %(I1) is given.", {i(1, ku)});
    }

    bool lda_of_m(int32_t code, int32_t lda, int32_t m) const
    {
        return (lda < m || lda <= 0) &&
               post(
                   code,
                   "LDA must be greater than or equal to M and greater than zero while LDA = %(I1) and M = %(I2) are given.",
                   {i(1, lda), i(2, m)});
    }
    bool lda_of_n(int32_t code, int32_t lda, int32_t n) const
    {
        return (lda < n || lda <= 0) &&
               post(
                   code,
                   "LDA must be greater than or equal to N and greater than zero while LDA = %(I1) and N = %(I2) are given.",
                   {i(1, lda), i(2, n)});
    }
    bool ldb_of_m(int32_t code, int32_t ldb, int32_t m) const
    {
        return (ldb < m || ldb <= 0) &&
               post(
                   code,
                   "LDB must be greater than or equal to M and greater than zero while LDB = %(I1) and M = %(I2) are given.",
                   {i(1, ldb), i(2, m)});
    }
    bool ldc_of_m(int32_t code, int32_t ldc, int32_t m) const
    {
        return (ldc < m || ldc <= 0) &&
               post(
                   code,
                   "LDC must be greater than or equal to M and greater than zero while LDC = %(I1) and M = %(I2) are given.",
                   {i(1, ldc), i(2, m)});
    }
    bool ldc_of_n(int32_t code, int32_t ldc, int32_t n) const
    {
        return (ldc < n || ldc <= 0) &&
               post(
                   code,
                   "LDC must be greater than or equal to N and greater than zero while LDC = %(I1) and N = %(I2) are given.",
                   {i(1, ldc), i(2, n)});
    }
    bool lda_of_band(int32_t code, int32_t lda, int32_t k) const
    {
        return lda <= k &&
               post(code,
                    "LDA must be greater than or equal to K + 1 while LDA = %(I1) and K = %(I2) are given.",
                    {i(1, lda), i(2, k)});
    }
    bool lda_of_left(int32_t code, const char* side, int32_t lda, int32_t m) const
    {
        return is_letter(side, 'L') && (lda < m || lda <= 0) &&
               post(
                   code,
                   "LDA must be greater than or equal to M and greater than zero when SIDE = L, but LDA = %(I1) and M = %(I2) are given.",
                   {i(1, lda), i(2, m)});
    }
    bool lda_of_right(int32_t code, const char* side, int32_t lda, int32_t n) const
    {
        return is_letter(side, 'R') && (lda < n || lda <= 0) &&
               post(
                   code,
                   "LDA must be greater than or equal to N and greater than zero when SIDE = R, but LDA = %(I1) and N = %(I2) are given.",
                   {i(1, lda), i(2, n)});
    }

    bool side(int32_t code, const char* side) const
    {
        return !is_one_of(side, "LR") &&
               post(code, "SIDE must be set equal to L or R while %(L1) is given.", {l(1, {side, 1})});
    }
    bool uplo(int32_t code, const char* uplo) const
    {
        return !is_one_of(uplo, "UL") &&
               post(code, "UPLO must be set equal to U or L while %(L1) is given.", {l(1, {uplo, 1})});
    }
    bool trans(int32_t code, const char* trans) const
    {
        return !is_one_of(trans, "NTC") &&
               post(code, "TRANS must be set equal to N or T or C while %(L1) is given.", {l(1, {trans, 1})});
    }
    bool transa(int32_t code, const char* transa) const
    {
        return !is_one_of(transa, "NTC") &&
               post(code, "TRANSA must be set equal to N or T or C while %(L1) is given.",
                    {l(1, {transa, 1})});
    }
    bool transb(int32_t code, const char* transb) const
    {
        return !is_one_of(transb, "NTC") &&
               post(code, "TRANSB must be set equal to N or T or C while %(L1) is given.",
                    {l(1, {transb, 1})});
    }
    bool diag(int32_t code, const char* diag) const
    {
        return !is_one_of(diag, "UN") &&
               post(code, "DIAG must be set equal to U or N while %(L1) is given.", {l(1, {diag, 1})});
    }

    bool incx(int32_t code, int32_t incx) const
    {
        return incx == 0 && post(code, "INCX must not be equal to zero while %(I1) is given.", {i(1, incx)});
    }
    bool incy(int32_t code, int32_t incy) const
    {
        return incy == 0 && post(code, "INCY must not be equal to zero while %(I1) is given.", {i(1, incy)});
    }
};

// The checks of a kernel whose name, after the letter of the precision, is given.
template <class T>
constexpr Checks checks_of(std::string_view kernel)
{
    return {is_complex<T> ? (sizeof(T) == 8 ? 'C' : 'Z') : (sizeof(T) == 4 ? 'S' : 'D'), kernel};
}

}  // namespace orvel::kernels
