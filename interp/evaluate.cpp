// interp/evaluate.cpp - CSVAL, CSDER, CSITG, PPVAL, PPDER, PPITG and P3DER: values, derivatives and integrals
//
// The good path of the fronts enters and leaves its frame at once, see Routine::visit. The search looks at
// the piece found last by this thread and the next one, then at sixteen on either side, then at all; the
// bisection has no branches to guess, because arguments at random would make half of the guesses wrong.
#include <algorithm>

#include "frame/export.h"
#include "frame/routine.h"
#include "orvel/interp.h"

namespace orvel::interp {

namespace {

// The last of the pieces first to first + count - 1 that begins at x or before; the first one for others.
template <class T>
inline int64_t bisect(const T* brkpt, int64_t first, int64_t count, T x)
{
    while (count > 1) {
        const int64_t half = count / 2;
        int64_t beyond = brkpt[first + half] <= x;
        asm("" : "+r"(beyond));  // a number: the compiler would jump
        first += -beyond & half;
        count -= half;
    }
    return first;
}

template <class T>
[[gnu::noinline]] int64_t search(const T* brkpt, int64_t pieces, T x, int64_t hint)
{
    constexpr int64_t reach = 16;
    const int64_t low = std::max<int64_t>(hint - reach, 0), high = std::min(hint + reach, pieces);
    const bool is_near = (brkpt[low] <= x) & ((high == pieces) | (x < brkpt[std::min(high, pieces - 1)]));
    return is_near ? bisect(brkpt, low, high - low, x) : bisect(brkpt, 0, pieces, x);
}

// Whether piece k serves x; without branches, for the same reason.
template <class T>
inline bool serves(const T* brkpt, int64_t pieces, int64_t k, T x)
{
    return ((k == 0) | (x >= brkpt[k])) & ((k + 1 == pieces) | (x < brkpt[std::min(k + 1, pieces - 1)]));
}

// The piece of x, from 0. Only the first `pieces` break points are read. What is not a number is in the
// first.
template <class T>
[[gnu::always_inline]] inline int64_t find_piece(frame::State& s, const T* brkpt, int64_t pieces, T x)
{
    const int64_t hint = std::min<int64_t>(s.piece_hint, pieces - 1);  // it may be of another spline
    if (serves(brkpt, pieces, hint, x)) return hint;
    const int64_t next = std::min(hint + 1, pieces - 1);
    const int64_t k = serves(brkpt, pieces, next, x) ? next : search(brkpt, pieces, x, hint);
    s.piece_hint = static_cast<int32_t>(k);
    return k;
}

// Taylor's sum of a derivative about the left end of a piece, order > ideriv >= 0.
template <class T>
inline T taylor(const T* c, int32_t order, int32_t ideriv, T h)
{
    T v = c[order - 1];
    for (int32_t j = order - 1; j > ideriv; --j) v = v / static_cast<T>(j - ideriv) * h + c[j - 1];
    return v;
}

template <class T>
inline T integral(const T* c, int32_t order, T h)
{
    T v = c[order - 1];
    for (int32_t j = order - 1; j > 0; --j) v = v / static_cast<T>(j + 1) * h + c[j - 1];
    return v * h;
}

template <class T>
T derivative(frame::State& s, int32_t ideriv, T x, int32_t order, int64_t pieces, const T* brkpt, const T* c)
{
    if (ideriv >= order) return 0;
    const int64_t k = find_piece(s, brkpt, pieces, x);
    return taylor(c + k * order, order, ideriv, x - brkpt[k]);
}

template <class Frame>
void check_pieces(Frame& me, int32_t nintv)
{
    if (nintv < 1)
        me.post(terminal, 1, "The number of intervals must be at least 1 while NINTV = %(I1) is given. ",
                {i(1, nintv)});
}

template <class Frame>
void check_order(Frame& me, int32_t code, int32_t korder)
{
    if (korder < 1)
        me.post(terminal, code,
                "The order of the interpolating polynomial must be positive while KORDER = %(I1) is given.",
                {i(1, korder)});
}

template <class T>
[[gnu::cold, gnu::noinline]] T refuse(frame::State& s, int32_t ideriv, int32_t korder, int32_t nintv)
{
    Routine<T, "PPDER"> me(s);
    check_pieces(me, nintv);
    if (ideriv < 0)
        me.post(terminal, 2, "The order of the derivative must be positive while IDERIV = %(I1) is given.",
                {i(1, ideriv)});
    check_order(me, 3, korder);
    return 0;
}

template <class T>
T ppder(const int32_t* ideriv, const T* x, const int32_t* korder, const int32_t* nintv, const T* brkpt,
        const T* pcoef)
{
    frame::State& s = frame::state();
    if (*nintv < 1 || *ideriv < 0 || *korder < 1) [[unlikely]]
        return refuse<T>(s, *ideriv, *korder, *nintv);
    Routine<T, "PPDER">::visit(s);
    return derivative(s, *ideriv, *x, *korder, int64_t{*nintv}, brkpt, pcoef);
}

// A front of PPDER, whose errors pass through its level.
template <class T, class Front>
[[gnu::always_inline]] inline T front(int32_t ideriv, T x, int32_t korder, int32_t nintv, const T* brkpt,
                                      const T* c)
{
    frame::State& s = frame::state();
    if (nintv < 1 || ideriv < 0 || korder < 1) [[unlikely]] {
        Front me(s);
        return refuse<T>(s, ideriv, korder, nintv);
    }
    Front::visit(s);
    return derivative(s, ideriv, x, korder, int64_t{nintv}, brkpt, c);
}

template <class T>
T csval(const T* x, const int32_t* nintv, const T* brkpt, const T* spcoef)
{
    return front<T, Routine<T, "CSVAL">>(0, *x, 4, *nintv, brkpt, spcoef);
}

template <class T>
T csder(const int32_t* ideriv, const T* x, const int32_t* nintv, const T* brkpt, const T* spcoef)
{
    return front<T, Routine<T, "CSDER">>(*ideriv, *x, 4, *nintv, brkpt, spcoef);
}

template <class T>
T ppval(const T* x, const int32_t* korder, const int32_t* nintv, const T* brkpt, const T* pcoef)
{
    return front<T, Routine<T, "PPVAL">>(0, *x, *korder, *nintv, brkpt, pcoef);
}

template <class T>
T ppitg_in_frame(frame::State& s, T a, T b, int32_t korder, int32_t nintv, const T* brkpt, const T* c)
{
    Routine<T, "PPITG"> me(s);
    check_pieces(me, nintv);
    check_order(me, 2, korder);
    if (me.failed() || a == b) return 0;
    const T low = a < b ? a : b, high = a < b ? b : a;
    const int64_t first = find_piece(s, brkpt, int64_t{nintv}, low);
    const int64_t last = find_piece(s, brkpt, int64_t{nintv}, high);
    T sum = -integral(c + first * korder, korder, low - brkpt[first]);
    for (int64_t k = first; k < last; ++k) sum += integral(c + k * korder, korder, brkpt[k + 1] - brkpt[k]);
    sum += integral(c + last * korder, korder, high - brkpt[last]);
    return b > a ? sum : -sum;
}

template <class T>
T ppitg(const T* a, const T* b, const int32_t* korder, const int32_t* nintv, const T* brkpt, const T* pcoef)
{
    return ppitg_in_frame(frame::state(), *a, *b, *korder, *nintv, brkpt, pcoef);
}

template <class T>
T csitg(const T* a, const T* b, const int32_t* nintv, const T* brkpt, const T* spcoef)
{
    Routine<T, "CSITG"> me;
    return ppitg_in_frame(me.state(), *a, *b, 4, *nintv, brkpt, spcoef);
}

template <class T>
void p3der(const int32_t*, const int32_t* nintv, const T* brkpt, const T* x, int32_t* left)
{
    *left = *nintv < 1 ? 1 : static_cast<int32_t>(find_piece(frame::state(), brkpt, int64_t{*nintv}, *x) + 1);
}

}  // namespace

}  // namespace orvel::interp

ORVEL_EXPORT(CSVAL, csval_, 4, orvel::interp::csval<float>);
ORVEL_EXPORT(DCSVAL, dcsval_, 4, orvel::interp::csval<double>);
ORVEL_EXPORT(CSDER, csder_, 5, orvel::interp::csder<float>);
ORVEL_EXPORT(DCSDER, dcsder_, 5, orvel::interp::csder<double>);
ORVEL_EXPORT(CSITG, csitg_, 5, orvel::interp::csitg<float>);
ORVEL_EXPORT(DCSITG, dcsitg_, 5, orvel::interp::csitg<double>);
ORVEL_EXPORT(PPVAL, ppval_, 5, orvel::interp::ppval<float>);
ORVEL_EXPORT(DPPVAL, dppval_, 5, orvel::interp::ppval<double>);
ORVEL_EXPORT(PPDER, ppder_, 6, orvel::interp::ppder<float>);
ORVEL_EXPORT(DPPDER, dppder_, 6, orvel::interp::ppder<double>);
ORVEL_EXPORT(PPITG, ppitg_, 6, orvel::interp::ppitg<float>);
ORVEL_EXPORT(DPPITG, dppitg_, 6, orvel::interp::ppitg<double>);
ORVEL_EXPORT(P3DER, p3der_, 5, orvel::interp::p3der<float>);
ORVEL_EXPORT(DP3DER, dp3der_, 5, orvel::interp::p3der<double>);
