// util/isa/quicksort.h - the sort behind every member: segments, pivots, short segments, the bound of the
// time
//
// Quicksort of R. C. Singleton (An efficient algorithm for sorting with minimal storage, Algorithm 347,
// Communications of the ACM 12, 1969): the pivot is the median of the ends of a segment and of an element
// between them, whose place cycles from call to call; the larger part waits on a stack while the smaller one
// is sorted; short segments are left to insertion. Long segments are divided by Partition of the level,
// around the same pivot.
//
// A part of more than seven eighths costs the segment one of log2 N chances, and from then on the
// pivots of its parts are chosen among elements from anywhere in them: what natural patterns (two runs, a
// pipe of organs, a wave) leave at the usual places divides badly again and again. After the last chance a
// segment is sorted by heapsort, so that no input takes more than O(N log N) steps. NaN are moved behind
// the others first; all other keys are ordered, which the unguarded scans rely on.
#pragma once

#include "util/isa/partition.h"
#include "util/isa/sorts.h"

namespace orvel::util {

namespace {

constexpr int64_t shortest_divided = 12;

template <class Key, class T, bool labelled>
class Quicksort {
public:
    Quicksort(int64_t n, T* x, int32_t* labels) : n_(n), items_{x, labels} {}

    Difficulties sort()
    {
        if (is_run()) return {};
        n_ = numbers_first();
        for (int64_t size = n_; size > 1; size /= 2) ++chances_;
        segments();
        return met_;
    }

private:
    using Item = typename Items<T, labelled>::Item;

    // first..last, both included.
    struct Segment {
        int64_t first, last;
        int chances;
        int64_t size() const { return last - first + 1; }
    };

    static bool less(const T& a, const T& b) { return Key::of(a) < Key::of(b); }
    const T& at(int64_t k) const { return items_.x[k]; }

    // Whether no element stands in the wrong order to the one before it; looked at in blocks, without a
    // branch for each element.
    template <bool ascending>
    bool is_monotone() const
    {
        constexpr int64_t block = 32;
        const auto is_wrong = [&](int64_t k) {
            return ascending ? !(Key::of(at(k - 1)) <= Key::of(at(k)))
                             : !(Key::of(at(k)) <= Key::of(at(k - 1)));
        };
        int64_t k = 1;
        for (; k + block <= n_; k += block) {
            int32_t wrong = 0;
            for (int64_t j = 0; j < block; ++j) wrong |= is_wrong(k + j);
            if (wrong != 0) return false;
        }
        for (; k < n_; ++k)
            if (is_wrong(k)) return false;
        return true;
    }

    // Whether the vector was ascending, or descending and has been turned round.
    bool is_run()
    {
        if (is_monotone<true>()) return true;
        if (!is_monotone<false>()) return false;
        for (int64_t a = 0, b = n_ - 1; a < b; ++a, --b) items_.exchange(a, b);
        return true;
    }

    // Moves NaN behind the numbers, and returns how many numbers there are.
    int64_t numbers_first()
    {
        int64_t missing = 0;
        for (int64_t k = 0; k < n_; ++k) missing += at(k) != at(k) ? 1 : 0;
        if (missing == 0) return n_;
        int64_t count = 0;
        for (int64_t k = 0; k < n_; ++k)
            if (at(k) == at(k)) items_.exchange(k, count++);
        return count;
    }

    void segments()
    {
        // A segment that is pushed is followed by one of at most half the size, so 31 entries serve N < 2^31.
        Segment stack[32];
        int waiting = 0;
        Segment now{0, n_ - 1, chances_};
        while (true) {
            const int64_t size = now.size();
            if (size >= shortest_divided || (now.first == 0 && size > 1)) {
                if (size == n_ || size < shortest_divided) advance_fraction();
                const Segment larger = divide(now);
                if (larger.size() > 1) stack[waiting++] = larger;
                continue;
            }
            if (size > 1) finish(now.first, size);
            if (waiting == 0) return;
            now = stack[--waiting];
        }
    }

    void advance_fraction()
    {
        if (fraction_ > 0.5898437)
            fraction_ -= 0.21875;
        else
            fraction_ += 0.0390625;
    }

    // Divides a segment, which becomes the smaller part; returns the larger one. Both are empty after
    // heapsort.
    Segment divide(Segment& now)
    {
        const Segment whole = now;
        if (whole.chances == 0) {
            met_.heapsorted += whole.size();
            heapsort(whole.first, whole.size());
            now.last = now.first - 1;
            return now;
        }
        const int64_t middle =
            whole.first + static_cast<int64_t>(static_cast<double>(whole.last - whole.first) * fraction_);
        if (whole.chances < chances_ && whole.size() >= shortest_divided) break_pattern(whole, middle);
        order_three(whole.first, middle, whole.last);
        Segment low = whole, high = whole;
        if (whole.size() < shortest_divided)
            scan(at(middle), low.last, high.first);
        else
            divide_long(middle, low.last, high.first);
        const bool low_is_larger = low.size() > high.size();
        now = low_is_larger ? high : low;
        Segment larger = low_is_larger ? low : high;
        if (larger.size() > whole.size() - whole.size() / 8) {
            larger.chances = now.chances = whole.chances - 1;
            ++met_.bad_divisions;
        }
        return larger;
    }

    // After a bad division what stands at the ends of a part and between them is what a pattern of the vector
    // has left there, and would divide badly again. Elements from anywhere take their places, or medians of
    // them.
    void break_pattern(Segment s, int64_t middle)
    {
        const auto any = [&] {
            anywhere_ = anywhere_ * 1664525u + 1013904223u;
            return s.first + static_cast<int64_t>(
                                 static_cast<uint64_t>(anywhere_) * static_cast<uint64_t>(s.size()) >> 32);
        };
        if (s.size() < 64) {
            items_.exchange(s.first, any());
            items_.exchange(s.last, any());
            return;
        }
        order_three(any(), s.first, any());
        order_three(any(), middle, any());
        order_three(any(), s.last, any());
    }

    void order_three(int64_t i, int64_t m, int64_t j)
    {
        const auto order = [&](int64_t a, int64_t b) {
            const Item p = items_.get(a), q = items_.get(b);
            const bool swap = less(q.value, p.value);
            items_.put(a, swap ? q : p);
            items_.put(b, swap ? p : q);
        };
        order(i, m);
        order(m, j);
        order(i, m);
    }

    // The published scan: from both ends, equal elements stop it and are not exchanged. On entry l and k are
    // the ends of the segment, on return the parts end at l and begin at k.
    void scan(T pivot, int64_t& l, int64_t& k)
    {
        while (true) {
            do --l;
            while (less(pivot, at(l)));
            do ++k;
            while (less(at(k), pivot));
            if (k > l) return;
            if (at(k) != at(l)) items_.exchange(k, l);
        }
    }

    // The pivot goes between the parts. Where nothing is smaller, the elements equal to it stay out of both.
    void divide_long(int64_t middle, int64_t& low_last, int64_t& high_first)
    {
        const int64_t first = high_first, last = low_last;
        const T pivot = at(middle);
        items_.exchange(first, middle);
        const int64_t begin = partition<Key, false>(items_, first + 1, last, pivot);
        items_.exchange(first, begin - 1);
        low_last = begin - 2;
        high_first = begin;
        if (low_last < first) high_first = partition<Key, true>(items_, begin, last + 1, pivot);
    }

    // A short segment, not the first: the element before it is no larger than any of its elements.
    void finish(int64_t first, int64_t size)
    {
        if constexpr (has_vectors<T>) return sort_short<Key>(items_, first, size);
        for (int64_t k = first + 1; k < first + size; ++k) {
            const Item item = items_.get(k);
            int64_t hole = k;
            for (; less(item.value, at(hole - 1)); --hole) items_.put(hole, items_.get(hole - 1));
            items_.put(hole, item);
        }
    }

    void heapsort(int64_t first, int64_t size)
    {
        for (int64_t root = size / 2 - 1; root >= 0; --root) sift_down(first, root, size);
        for (int64_t end = size - 1; end > 0; --end) {
            items_.exchange(first, first + end);
            sift_down(first, 0, end);
        }
    }

    void sift_down(int64_t first, int64_t root, int64_t size)
    {
        const Item item = items_.get(first + root);
        for (int64_t child; (child = 2 * root + 1) < size; root = child) {
            if (child + 1 < size && less(at(first + child), at(first + child + 1))) ++child;
            if (!less(item.value, at(first + child))) break;
            items_.put(first + root, items_.get(first + child));
        }
        items_.put(first + root, item);
    }

    int64_t n_;
    const Items<T, labelled> items_;
    double fraction_ = 0.375;
    int chances_ = 0;
    Difficulties met_{};
    uint32_t anywhere_ = 0;
};

}  // namespace

}  // namespace orvel::util
