// interp/evaluate.cpp - CSVAL, CSDER, CSITG, PPVAL, PPDER, PPITG and P3DER: values, derivatives and integrals
//
// The good path of the fronts enters and leaves its frame at once, see Routine::visit. The search looks at
// the piece found last by this thread and the next one, then at sixteen on either side, then at all; the
// bisection has no branches to guess, because arguments at random would make half of the guesses wrong.
#include <algorithm>

#include "frame/export.h"
#include "interp/pieces.h"
#include "orvel/interp.h"

namespace orvel::interp {

namespace {

// The piece of x, from 0. NaN belongs to the first.
template <class T>
[[gnu::noinline]] int64_t search(frame::State& s, const T* brkpt, int64_t pieces, T x)
{
    constexpr int64_t many = 4096, reach = 16;
    const int64_t hint = std::min<int64_t>(s.piece_hint, pieces - 1);  // it may be of another spline
    if (hint == pieces - 1 && x >= brkpt[hint]) return hint;
    if (hint + 2 < pieces && (number(x >= brkpt[hint + 1]) & number(x < brkpt[hint + 2])) != 0) {
        s.piece_hint = static_cast<int32_t>(hint + 1);
        return hint + 1;
    }
    int64_t first = 0, last = pieces;
    if (pieces > many) {
        const int64_t low = std::max<int64_t>(hint - reach, 0), high = std::min(hint + reach, pieces);
        if (is_within(brkpt, pieces, low, high, x)) first = low, last = high;
    }
    const int64_t k = bisect(brkpt, first, last - first, x);
    s.piece_hint = static_cast<int32_t>(k);
    return k;
}

template <class T>
[[gnu::always_inline]] inline int64_t find_piece(frame::State& s, const T* brkpt, int64_t pieces, T x)
{
    const int64_t k = s.piece_hint;
    if (k < pieces - 1 && (number(x >= brkpt[k]) & number(x < brkpt[k + 1])) != 0) [[likely]]
        return k;
    return search(s, brkpt, pieces, x);
}

template <class T>
inline T integral(const T* c, int32_t order, T h)
{
    T v = c[order - 1];
    for (int32_t j = order - 1; j > 0; --j) v = v / static_cast<T>(j + 1) * h + c[j - 1];
    return v * h;
}

// A sum that keeps what its additions round off (D. E. Knuth, The Art of Computer Programming, volume 2,
// section 4.2.2), so that a million pieces, in runs of 16, are added as well as 16.
template <class T>
class Sum {
public:
    void add(T v)
    {
        const T sum = value_ + v, added = sum - value_;
        rest_ += (value_ - (sum - added)) + (v - added);
        value_ = sum;
    }
    T value() const
    {
        const T all = value_ + rest_;
        return all == all ? all : value_;  // the rest of a sum that overflowed is NaN
    }

private:
    T value_ = 0, rest_ = 0;
};

template <class T>
[[gnu::always_inline]] inline T derivative(frame::State& s, int32_t ideriv, T x, int32_t order,
                                           int64_t pieces, const T* brkpt, const T* c)
{
    if (ideriv >= order) return 0;
    const int64_t k = find_piece(s, brkpt, pieces, x);
    return taylor(c + k * order, order, ideriv, x - brkpt[k]);
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
    check_pieces(me, 1, nintv);
    check_derivative(me, 2, ideriv);
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

template <class T, class Front>
[[gnu::cold, gnu::noinline]] T refuse_through(frame::State& s, int32_t ideriv, int32_t korder, int32_t nintv)
{
    Front me(s);
    return refuse<T>(s, ideriv, korder, nintv);
}

// A front of PPDER, whose errors pass through its level. Arguments are read after the look-up of the state.
template <class T, class Front>
[[gnu::always_inline]] inline T front(frame::State& s, int32_t ideriv, T x, int32_t korder, int32_t nintv,
                                      const T* brkpt, const T* c)
{
    if (nintv < 1 || ideriv < 0 || korder < 1) [[unlikely]]
        return refuse_through<T, Front>(s, ideriv, korder, nintv);
    Front::visit(s);
    return derivative(s, ideriv, x, korder, int64_t{nintv}, brkpt, c);
}

template <class T>
T csval(const T* x, const int32_t* nintv, const T* brkpt, const T* spcoef)
{
    frame::State& s = frame::state();
    return front<T, Routine<T, "CSVAL">>(s, 0, *x, 4, *nintv, brkpt, spcoef);
}

template <class T>
T csder(const int32_t* ideriv, const T* x, const int32_t* nintv, const T* brkpt, const T* spcoef)
{
    frame::State& s = frame::state();
    return front<T, Routine<T, "CSDER">>(s, *ideriv, *x, 4, *nintv, brkpt, spcoef);
}

template <class T>
T ppval(const T* x, const int32_t* korder, const int32_t* nintv, const T* brkpt, const T* pcoef)
{
    frame::State& s = frame::state();
    return front<T, Routine<T, "PPVAL">>(s, 0, *x, *korder, *nintv, brkpt, pcoef);
}

template <class T>
T ppitg_in_frame(frame::State& s, T a, T b, int32_t korder, int32_t nintv, const T* brkpt, const T* c)
{
    Routine<T, "PPITG"> me(s);
    check_pieces(me, 1, nintv);
    check_order(me, 2, korder);
    if (me.failed() || a == b) return 0;
    const T low = a < b ? a : b, high = a < b ? b : a;
    const int64_t first = find_piece(s, brkpt, int64_t{nintv}, low);
    const int64_t last = find_piece(s, brkpt, int64_t{nintv}, high);
    Sum<T> sum;
    sum.add(-integral(c + first * korder, korder, low - brkpt[first]));
    for (int64_t k = first; k < last;) {
        T run = 0;
        for (const int64_t end = std::min(last, k + 16); k < end; ++k)
            run += integral(c + k * korder, korder, brkpt[k + 1] - brkpt[k]);
        sum.add(run);
    }
    sum.add(integral(c + last * korder, korder, high - brkpt[last]));
    return b > a ? sum.value() : -sum.value();
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

ORVEL_EXPORT_REALS(CSVAL, csval_, DCSVAL, dcsval_, 4, orvel::interp::csval);
ORVEL_EXPORT_REALS(CSDER, csder_, DCSDER, dcsder_, 5, orvel::interp::csder);
ORVEL_EXPORT_REALS(CSITG, csitg_, DCSITG, dcsitg_, 5, orvel::interp::csitg);
ORVEL_EXPORT_REALS(PPVAL, ppval_, DPPVAL, dppval_, 5, orvel::interp::ppval);
ORVEL_EXPORT_REALS(PPDER, ppder_, DPPDER, dppder_, 6, orvel::interp::ppder);
ORVEL_EXPORT_REALS(PPITG, ppitg_, DPPITG, dppitg_, 6, orvel::interp::ppitg);
ORVEL_EXPORT_REALS(P3DER, p3der_, DP3DER, dp3der_, 5, orvel::interp::p3der);
