// interp/akima.cpp - CSAKM, C2AKM: Akima's cubic spline
//
// H. Akima, A new method of interpolation and smooth curve fitting based on local procedures, Journal of the
// ACM 17, 1970. Pieces are made in blocks whose differences and slopes are held on the stack, each by a loop
// without branches.
#include <algorithm>
#include <cmath>

#include "frame/export.h"
#include "frame/scratch.h"
#include "interp/interp.h"
#include "orvel/interp.h"

namespace orvel::interp {

namespace {

// Pieces first to first + count - 1. Arrays begin two pieces before the block; slopes at its first point.
template <class T>
class Block {
public:
    static constexpr int64_t longest = 128;

    Block(const Points<T>& points, int64_t first, int64_t count) : first_(first), count_(count)
    {
        const int64_t pieces = points.n - 1, begin = std::max<int64_t>(first - 2, 0);
        const int64_t end = std::min(first + count + 2, pieces), shift = 2 - first;
        for (int64_t k = begin; k <= end; ++k) {
            x_[k + shift] = points.x[k];
            f_[k + shift] = points.ordinate(k);
        }
        for (int64_t k = begin + shift; k < end + shift; ++k) {
            const T h = x_[k + 1] - x_[k];
            m_[k] = (f_[k + 1] - f_[k]) / h;
            per_h_[k] = 1 / h;
        }
        if (first == 0) {
            m_[1] = 2 * m_[2] - m_[3];
            m_[0] = 2 * m_[1] - m_[2];
        }
        if (first + count + 1 >= pieces) {
            T* const last = m_ + pieces + 1 - first;
            last[1] = 2 * last[0] - last[-1];
            last[2] = 2 * last[1] - last[0];
        }
        // Equal weights where both vanish.
        for (int64_t k = 0; k <= count; ++k) {
            const T right = std::abs(m_[k + 3] - m_[k + 2]), left = std::abs(m_[k + 1] - m_[k]);
            const T flat = right + left == 0 ? T(1) : T(0);
            const T a = right + flat, b = left + flat;
            t_[k] = (a * m_[k + 1] + b * m_[k + 2]) / (a + b);
        }
    }

    void store(T* brkpt, T* spcoef) const
    {
        for (int64_t k = 0; k < count_; ++k) {
            T* const column = spcoef + 4 * (first_ + k);
            const T per_h = per_h_[k + 2], delta = m_[k + 2];
            const T q = (t_[k] + t_[k + 1] - 2 * delta) * per_h;
            column[0] = f_[k + 2];
            column[1] = t_[k];
            column[2] = 2 * ((delta - t_[k]) * per_h - q);
            column[3] = 6 * q * per_h;
        }
        std::copy_n(x_ + 2, count_ + 1, brkpt + first_);
        T* const last = spcoef + 4 * (first_ + count_);
        last[0] = f_[count_ + 2];
        last[1] = t_[count_];
    }

private:
    int64_t first_, count_;
    T x_[longest + 5], f_[longest + 5], per_h_[longest + 5], m_[longest + 5], t_[longest + 1];
};

template <class Frame>
void check_count(Frame& me, int32_t ndata)
{
    if (ndata < 4)
        me.post(terminal, 1, "The number of data points must be 4 or more while NDATA = %(I1) is given.",
                {i(1, ndata)});
}

template <class T>
void c2akm(frame::State& s, int32_t ndata, const T* xdata, const T* fdata, T* brkpt, T* spcoef, int32_t* iwk)
{
    Routine<T, "C2AKM"> me(s);
    check_count(me, ndata);
    if (me.failed()) return;
    const Points<T> points = sorted(s, ndata, xdata, fdata, brkpt, spcoef, 4, iwk);
    if (me.failed()) return;
    const int64_t pieces = points.n - 1;
    for (int64_t first = 0; first < pieces; first += Block<T>::longest)
        Block<T>(points, first, std::min(pieces - first, Block<T>::longest)).store(brkpt, spcoef);
    spcoef[4 * pieces + 2] = spcoef[4 * pieces + 3] = 0;
}

template <class T>
void csakm(const int32_t* ndata, const T* xdata, const T* fdata, T* brkpt, T* spcoef)
{
    Routine<T, "CSAKM"> me;
    check_count(me, *ndata);
    if (me.failed()) return;
    Scratch<int32_t> iwk;
    if (!iwk.allocate(*ndata)) return no_work_storage(me, *ndata);
    c2akm<T>(me.state(), *ndata, xdata, fdata, brkpt, spcoef, iwk);
}

template <class T>
void c2akm_alone(const int32_t* ndata, const T* xdata, const T* fdata, T* brkpt, T* spcoef, int32_t* iwk)
{
    c2akm(frame::state(), *ndata, xdata, fdata, brkpt, spcoef, iwk);
}

}  // namespace

}  // namespace orvel::interp

ORVEL_EXPORT(CSAKM, csakm_, 5, orvel::interp::csakm<float>);
ORVEL_EXPORT(DCSAKM, dcsakm_, 5, orvel::interp::csakm<double>);
ORVEL_EXPORT(C2AKM, c2akm_, 6, orvel::interp::c2akm_alone<float>);
ORVEL_EXPORT(DC2AKM, dc2akm_, 6, orvel::interp::c2akm_alone<double>);
