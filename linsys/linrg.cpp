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
#include "kernels/product.h"
#include "kernels/triangular.h"
#include "linsys/checks.h"
#include "linsys/linsys.h"

namespace orvel::linsys {

namespace {

constexpr int64_t wide = 128, narrow = 32;  // columns of the blocks

// The multipliers lie in pieces, in the order in which they are used: blocks of columns from the last to the
// first, of each the rows behind the block as a matrix; then its narrow blocks in the same way, of each the
// rows down to the end of the wide one, and the columns of the triangle on the diagonal. So every piece is a
// factor of a product where it lies, and together they are N(N-1)/2 numbers.
//
// rectangle(first, last, end, piece): rows last..end-1 of columns first..last-1; triangle(first, last,
// piece).
template <class T, class Rectangle, class Triangle>
void for_pieces(int64_t n, T* piece, Rectangle rectangle, Triangle triangle)
{
    for (int64_t last = n, first; last > 0; last = first) {
        first = (last - 1) / wide * wide;
        rectangle(first, last, n, piece);
        piece += (last - first) * (n - last);
        for (int64_t end = last, begin; end > first; end = begin) {
            begin = (end - 1) / narrow * narrow;
            rectangle(begin, end, last, piece);
            piece += (end - begin) * (last - end);
            triangle(begin, end, piece);
            piece += (end - begin) * (end - begin - 1) / 2;
        }
    }
}

// Moves the multipliers out of AINV, in the order of the last step.
template <class T>
void take_multipliers(int64_t n, T* ainv, int64_t ldainv, const int32_t* ipvt, T* packed)
{
    for (int64_t j = 0; j + 1 < n; ++j) {
        T* const column = ainv + j * ldainv;
        for (int64_t k = j + 1; k + 1 < n; ++k) std::swap(column[k], column[ipvt[k] - 1]);
    }
    for_pieces(
        n, packed,
        [=](int64_t first, int64_t last, int64_t end, T* piece) {
            for (int64_t c = first; c < last; ++c, piece += end - last)
                std::copy_n(ainv + last + c * ldainv, end - last, piece);
        },
        [=](int64_t first, int64_t last, T* piece) {
            for (int64_t c = first; c < last; piece += last - ++c)
                std::copy_n(ainv + c + 1 + c * ldainv, last - c - 1, piece);
        });
    for (int64_t j = 0; j < n; ++j) std::fill_n(ainv + j + 1 + j * ldainv, n - 1 - j, T(0));
}

// U^-1 * L^-1.
template <class T>
void multiply_by_lower(int64_t n, T* packed, T* ainv, int64_t ldainv)
{
    for_pieces(
        n, packed,
        [=](int64_t first, int64_t last, int64_t end, T* piece) {
            if (end > last)
                kernels::add_product<T>(n, last - first, end - last, T(1),
                                        {{ainv + last * ldainv, 1, ldainv}}, {{piece, 1, end - last}},
                                        {ainv + first * ldainv, 1, ldainv});
        },
        [=](int64_t first, int64_t last, T* piece) {
            kernels::OnStack<T, narrow * narrow> lower;
            for (int64_t c = first; c < last; ++c)
                for (int64_t r = c + 1; r < last; ++r) lower[r - first + (c - first) * narrow] = -*piece++;
            kernels::divide_by_triangle<T>(n, last - first, {true, true}, static_cast<const T*>(lower),
                                           narrow, ainv + first * ldainv, ldainv);
        });
}

template <class T>
void l2nrg(frame::State& state, int32_t n, const T* a, int64_t lda, T* ainv, int64_t ldainv, T* wk,
           int32_t* iwk)
{
    Routine<T, name_of<T>("L2NRG", "L2NCG")> me(state);
    check_order(me, 1, n);
    check_lda(me, 2, n, lda);
    check_ldainv(me, 3, n, ldainv);
    if (me.failed()) return;

    Part<T> rcond = 1;
    l2crg<T>(state, n, a, lda, ainv, ldainv, iwk, &rcond, wk);
    if (is_severe(me.callee_type())) return;
    take_multipliers<T>(n, ainv, ldainv, iwk, wk);
    invert_triangle<T>(false, n, ainv, ldainv);
    multiply_by_lower<T>(n, wk, ainv, ldainv);
    for (int64_t j = n - 2; j >= 0; --j)
        if (iwk[j] != j + 1) kernels::swap<T>(n, ainv + j * ldainv, 1, ainv + (iwk[j] - 1) * ldainv, 1);
    if (epsilon<T>() >= rcond) warn_of_inverse(me, rcond);
}

template <class T>
void linrg(const int32_t* n, const T* a, const int32_t* lda, T* ainv, const int32_t* ldainv)
{
    Routine<T, name_of<T>("LINRG", "LINCG")> me;
    check_order(me, 1, *n);
    if (me.failed()) return;
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

ORVEL_EXPORT_ALL(L2NRG, l2nrg_, DL2NRG, dl2nrg_, L2NCG, l2ncg_, DL2NCG, dl2ncg_, 7, l2nrg);
ORVEL_EXPORT_ALL(LINRG, linrg_, DLINRG, dlinrg_, LINCG, lincg_, DLINCG, dlincg_, 5, linrg);
