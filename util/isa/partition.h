// util/isa/partition.h - elements that precede a pivot moved to the front of a segment, without branches
//
// A block of each end of the segment is held back, which leaves a gap at each end. Further blocks are read
// from the end with the smaller gap, so that both gaps can then take the whole block, and their elements are
// written to one gap or the other. At last the elements that are held, and those that make no block, fill
// what is left.
#pragma once

#include "util/isa/vectors.h"

namespace orvel::util {

namespace {

// Elements one by one: each is written to both gaps, and stays where the gap is then closed over it.
template <class Key, bool or_equal, class T, bool labelled>
class ByElement {
public:
    static constexpr int64_t block = 64;

    using Item = typename Items<T, labelled>::Item;
    struct Held {
        Item item[3 * block];
    };

    ByElement(Items<T, labelled> items, Held& held, int64_t first, int64_t last, T pivot)
        : low(first), high(last), items_(items), held_(held), pivot_(Key::of(pivot))
    {}

    void move_first(int64_t begin)
    {
        for (int64_t k = begin; k < begin + block; ++k) emit(items_.get(k));
    }
    // From the end, where the gap is that may be smaller than the block.
    void move_last(int64_t end)
    {
        for (int64_t k = end - 1; k >= end - block; --k) emit(items_.get(k));
    }
    void hold(int64_t begin, int64_t count)
    {
        for (int64_t k = begin; k < begin + count; ++k) held_.item[held_count_++] = items_.get(k);
    }
    void release()
    {
        for (int64_t k = 0; k < held_count_; ++k) emit(held_.item[k]);
    }

    int64_t low, high;  // the gaps: from low, and up to high

private:
    void emit(Item item)
    {
        int64_t front = or_equal ? !(pivot_ < Key::of(item.value)) : Key::of(item.value) < pivot_;
        asm("" : "+r"(front));  // a number: the compiler would jump
        items_.put(low, item);
        items_.put(high - 1, item);
        low += front;
        high += front - 1;
    }

    const Items<T, labelled> items_;
    Held& held_;
    const decltype(Key::of(T())) pivot_;
    int64_t held_count_ = 0;
};

template <class Mover>
int64_t move_all(Mover& mover, int64_t first, int64_t last)
{
    constexpr int64_t block = Mover::block;
    if (last - first >= 2 * block) {
        mover.hold(first, block);
        mover.hold(last - block, block);
        first += block;
        last -= block;
        while (last - first >= block) {
            if (first - mover.low <= mover.high - last) {
                mover.move_first(first);
                first += block;
            } else {
                mover.move_last(last);
                last -= block;
            }
        }
    }
    mover.hold(first, last - first);
    mover.release();
    return mover.low;
}

// Moves the elements of first..last - 1 that are smaller than the pivot (or equal to it) before the others,
// and returns where those begin.
template <class Key, bool or_equal, class T, bool labelled>
int64_t partition(Items<T, labelled> items, int64_t first, int64_t last, T pivot)
{
    const auto run = [&]<class Mover>(Mover*) {
        typename Mover::Held held;
        Mover mover(items, held, first, last, pivot);
        return move_all(mover, first, last);
    };
    if constexpr (has_vectors<T>)
        return run(static_cast<ByVector<Key, or_equal, T, labelled>*>(nullptr));
    else
        return run(static_cast<ByElement<Key, or_equal, T, labelled>*>(nullptr));
}

}  // namespace

}  // namespace orvel::util
