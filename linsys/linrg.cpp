// linsys/linrg.cpp - LINRG, L2NRG: inverse of a general matrix
//
// The inverse of U is multiplied from the right by the inverse of L, a block of columns at a time from the
// last to the first. The multipliers are brought into the order of the last step first, so that the
// interchanges of columns can all be made at the end; with multipliers in the order of their own steps,
// column j would have to be interchanged before column j - 1 is formed.
#include <algorithm>

#include "frame/export.h"
#include "frame/scratch.h"
#include "kernels/level1.h"
#include "kernels/level2.h"
#include "kernels/product.h"
#include "kernels/triangular.h"
#include "linsys/checks.h"
#include "linsys/linsys.h"

namespace orvel::linsys {

namespace {

// Column j of the multipliers, packed: n - 1 - j elements.
constexpr int64_t packed_start(int64_t n, int64_t j) { return j * (n - 1) - j * (j - 1) / 2; }

// Moves the multipliers out of AINV, in the order of the last step.
template <class T>
void take_multipliers(int64_t n, const T* ainv, int64_t ldainv, const int32_t* ipvt, T* packed)
{
    for (int64_t j = 0; j + 1 < n; ++j) {
        T* const column = packed + packed_start(n, j);
        std::copy_n(ainv + j + 1 + j * ldainv, n - 1 - j, column);
        for (int64_t k = j + 1; k + 1 < n; ++k) std::swap(column[k - j - 1], column[ipvt[k] - 1 - j - 1]);
    }
}

// Columns first..last-1 get the products with all columns behind them.
template <class T>
void multiply_block(int64_t n, int64_t first, int64_t last, const T* packed, T* block, T* ainv,
                    int64_t ldainv)
{
    const int64_t columns = last - first, behind = n - last;
    // The block of multipliers as a full matrix of rows first..n-1.
    const int64_t rows = n - first;
    for (int64_t c = 0; c < columns; ++c)
        std::copy_n(packed + packed_start(n, first + c), rows - c - 1, block + c + 1 + c * rows);
    T* const target = ainv + first * ldainv;
    if (behind > 0)
        kernels::add_product<T>(n, columns, behind, T(1), {{ainv + last * ldainv, 1, ldainv}},
                                {{block + columns, 1, rows}}, {target, 1, ldainv});
    for (int64_t c = 0; c < columns; ++c)
        for (int64_t r = c + 1; r < columns; ++r) block[r + c * rows] = -block[r + c * rows];
    kernels::solve_with_unit_lower<T>(n, columns, block, rows, target, ldainv);
}

// U^-1 * L^-1, blocks of columns; without memory for a block one column at a time.
template <class T>
void multiply_by_lower(int64_t n, const T* packed, T* ainv, int64_t ldainv)
{
    constexpr int64_t width = 64;
    SmallScratch<T, 256> block;
    if (block.allocate(n, std::min(width, n))) {
        const int64_t blocks = (n + width - 1) / width;
        for (int64_t b = blocks - 1; b >= 0; --b)
            multiply_block<T>(n, b * width, std::min(n, (b + 1) * width), packed, block, ainv, ldainv);
        return;
    }
    for (int64_t j = n - 2; j >= 0; --j)
        kernels::add_columns(n, n - 1 - j, ainv + (j + 1) * ldainv, ldainv, false,
                             packed + packed_start(n, j), ainv + j * ldainv);
}

template <class T>
void l2nrg(frame::State& state, int32_t n, const T* a, int64_t lda, T* ainv, int64_t ldainv, T* wk,
           int32_t* iwk)
{
    Routine<T, general<T>("L2NRG", "L2NCG")> me(state);
    check_order(me, n);
    check_lda(me, n, lda);
    check_ldainv(me, n, ldainv);
    if (me.failed()) return;

    Part<T> rcond = 1;
    l2crg<T>(state, n, a, lda, ainv, ldainv, iwk, &rcond, wk);
    if (is_severe(me.callee_type())) return;
    take_multipliers<T>(n, ainv, ldainv, iwk, wk);
    invert_triangle<T>(false, n, ainv, ldainv);
    for (int64_t j = 0; j < n; ++j) std::fill_n(ainv + j + 1 + j * ldainv, n - 1 - j, T(0));
    multiply_by_lower<T>(n, wk, ainv, ldainv);
    for (int64_t j = n - 2; j >= 0; --j)
        if (iwk[j] != j + 1) kernels::swap<T>(n, ainv + j * ldainv, 1, ainv + (iwk[j] - 1) * ldainv, 1);
    if (epsilon<T>() >= rcond)
        me.post(
            warning, 1,
            "The matrix is too ill-conditioned. An estimate of the reciprocal of its L1 condition number is RCOND = %(R1).  The inverse might not be accurate.",
            {r(1, rcond)});
}

template <class T>
void l2nrg_entry(const int32_t* n, const T* a, const int32_t* lda, T* ainv, const int32_t* ldainv, T* wk,
                 int32_t* iwk)
{
    l2nrg<T>(frame::state(), *n, a, *lda, ainv, *ldainv, wk, iwk);
}

template <class T>
void linrg(const int32_t* n, const T* a, const int32_t* lda, T* ainv, const int32_t* ldainv)
{
    Routine<T, general<T>("LINRG", "LINCG")> me;
    if (*n < 1)
        return me.post(terminal, 1, "The order of the matrix must be positive while N = %(i1) is given.",
                       {i(1, *n)});
    const int64_t order = *n;
    SmallScratch<int32_t> iwk;
    SmallScratch<T, 256> wk;
    if (iwk.allocate(order) && wk.allocate(order + order * (order - 1) / 2))
        l2nrg<T>(me.state(), *n, a, *lda, ainv, *ldainv, wk, iwk);
    else
        me.no_storage(2, "The required storage cannot be allocated.");
}

}  // namespace

}  // namespace orvel::linsys

using namespace orvel::linsys;

ORVEL_EXPORT(L2NRG, l2nrg_, 7, l2nrg_entry<float>);
ORVEL_EXPORT(DL2NRG, dl2nrg_, 7, l2nrg_entry<double>);
ORVEL_EXPORT(L2NCG, l2ncg_, 7, l2nrg_entry<orvel_complex>);
ORVEL_EXPORT(DL2NCG, dl2ncg_, 7, l2nrg_entry<orvel_dcomplex>);
ORVEL_EXPORT(LINRG, linrg_, 5, linrg<float>);
ORVEL_EXPORT(DLINRG, dlinrg_, 5, linrg<double>);
ORVEL_EXPORT(LINCG, lincg_, 5, linrg<orvel_complex>);
ORVEL_EXPORT(DLINCG, dlincg_, 5, linrg<orvel_dcomplex>);
