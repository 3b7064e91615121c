// quad/pieces.h - the pieces of an interval of integration, and which of them is bisected next
#pragma once

#include <algorithm>
#include <cmath>

#include "frame/scratch.h"
#include "quad/rules.h"

namespace orvel::quad {

// Behind Q10G, whose arguments these are: one-based.
template <class T>
void q10g(int32_t maxsub, int32_t last, int32_t& maxerr, T& ermax, const T* suberr, int32_t* subord,
          int32_t& nrmax);

// The entries of SUBORD that are kept in order: a piece that more bisections than are left would have to
// reach need not be.
inline int64_t ordered_entries(int32_t maxsub, int32_t last)
{
    return last > maxsub / 2 + 2 ? int64_t{maxsub} + 3 - last : last;
}

// The halves of a bisected piece, with the rule applied to each.
template <class T>
struct Halves {
    T left, middle, right;
    Estimate<T> first, second;

    T result() const { return first.result + second.result; }
    T error() const { return first.error + second.error; }

    // The published test, with 1000 where it has 100.
    bool too_narrow(T margin) const
    {
        return std::max(std::abs(left), std::abs(right)) <=
               (T(1) + T(1000) * spacing<T>)*(std::abs(middle) + margin * smallest<T>);
    }
};

inline constexpr int32_t front_pieces = 500;

// The lists: the caller's, or a front's. `worst` is the piece to bisect next, at `position` of the order; all
// one-based. A front has room for a few pieces with it, because most integrals need no more, and asks for
// storage when it has used that up.
template <class T>
class Pieces {
public:
    Pieces(int32_t room, T* lo, T* hi, T* res, T* err, int32_t* order)
        : room_(room), held_(room), lo_(lo), hi_(hi), res_(res), err_(err), order_(order)
    {}
    Pieces() : room_(front_pieces), held_(few) { use(first_reals_, first_order_); }
    Pieces(const Pieces&) = delete;
    Pieces& operator=(const Pieces&) = delete;

    int32_t room() const { return room_; }
    int32_t count() const { return count_; }
    T worst_result() const { return res_[worst_ - 1]; }
    T worst_error() const { return worst_error_; }
    T worst_width() const { return std::abs(hi_[worst_ - 1] - lo_[worst_ - 1]); }

    // Ends of the piece whose error is largest.
    T lo_of_largest_error() const { return lo_[order_[0] - 1]; }
    T hi_of_largest_error() const { return hi_[order_[0] - 1]; }

    void start(T a, T b, const Estimate<T>& whole)
    {
        count_ = worst_ = position_ = 1;
        lo_[0] = a;
        hi_[0] = b;
        res_[0] = whole.result;
        err_[0] = worst_error_ = whole.error;
        order_[0] = 1;
    }

    Halves<T> bisect(Rule<T> rule, const UserFunction<T>& f) const
    {
        const T left = lo_[worst_ - 1], right = hi_[worst_ - 1], middle = mean_of(left, right);
        const Estimate<T> first = rule(f, left, middle, middle);
        return {left, middle, right, first, rule(f, middle, right, middle)};
    }

    // Room for one more; false when a front's storage cannot be had.
    [[nodiscard]] bool has_place() { return count_ < held_ || grow(); }

    // Puts the half of larger error in the place of the piece, the other one last.
    void replace(const Halves<T>& h)
    {
        const int32_t k = worst_ - 1, n = count_++;
        const bool second_is_worse = h.second.error > h.first.error;
        set(second_is_worse ? n : k, h.left, h.middle, h.first);
        set(second_is_worse ? k : n, h.middle, h.right, h.second);
        q10g(room_, count_, worst_, worst_error_, err_, order_, position_);
    }

    void select_largest_error()
    {
        position_ = 1;
        worst_ = order_[0];
        worst_error_ = err_[worst_ - 1];
    }

    void start_behind_largest_error() { position_ = 2; }

    // Goes down the order to a piece wider than `width`.
    bool select_wider(T width)
    {
        for (const int64_t end = ordered_entries(room_, count_); position_ <= end; ++position_) {
            worst_ = order_[position_ - 1];
            worst_error_ = err_[worst_ - 1];
            if (worst_width() > width) return true;
        }
        return false;
    }

    T sum() const
    {
        T total = 0;
        for (int32_t k = 0; k < count_; ++k) total += res_[k];
        return total;
    }

private:
    void set(int32_t k, T left, T right, const Estimate<T>& e)
    {
        lo_[k] = left;
        hi_[k] = right;
        res_[k] = e.result;
        err_[k] = e.error;
    }

    void use(T* reals, int32_t* order)
    {
        lo_ = reals;
        hi_ = lo_ + held_;
        res_ = hi_ + held_;
        err_ = res_ + held_;
        order_ = order;
    }

    [[gnu::noinline]] bool grow()
    {
        if (!more_reals_.allocate(front_pieces, 4) || !more_order_.allocate(front_pieces)) return false;
        held_ = front_pieces;
        use(more_reals_, more_order_);
        for (int32_t k = 0; k < 4; ++k)
            std::copy_n(first_reals_ + k * few, few, more_reals_ + k * front_pieces);
        std::copy_n(first_order_, few, order_);
        return true;
    }

    static constexpr int32_t few = 16;

    const int32_t room_;
    int32_t held_;
    T *lo_, *hi_, *res_, *err_;
    int32_t* order_;
    int32_t count_ = 0, worst_ = 1, position_ = 1;
    T worst_error_ = 0;
    T first_reals_[4 * few];
    int32_t first_order_[few];
    Scratch<T> more_reals_;
    Scratch<int32_t> more_order_;
};

// Signs that bisection does not help any more.
struct Roundoff {
    int32_t stagnating = 0, stagnating_in_extrapolation = 0, growing = 0;

    template <class T>
    void note(const Halves<T>& h, const Pieces<T>& pieces, bool extrapolating)
    {
        if (h.first.deviation == h.first.error || h.second.deviation == h.second.error) return;
        const T result = h.result(), error = h.error();
        if (std::abs(pieces.worst_result() - result) <= T(1e-5) * std::abs(result) &&
            error >= T(0.99) * pieces.worst_error())
            ++(extrapolating ? stagnating_in_extrapolation : stagnating);
        if (pieces.count() + 1 > 10 && error > pieces.worst_error()) ++growing;
    }
};

}  // namespace orvel::quad
