// kernels/isa/lanes.h - loops over vectors of the width of the instruction-set level, down to single numbers
//
// Everything is local to the file that includes it; see loops.h.
#pragma once

#include "isa/vector.h"

namespace orvel::kernels {

namespace {

// N numbers at a time, as an argument of the body of a loop.
template <class R, int N>
struct Lanes {
    typedef isa::Vector<R, N> Vector;
    typedef isa::Integers<R, N> Integers;
    static constexpr int count = N;

    static Vector load(const R* p) { return isa::at<N>(p); }
    static void store(R* p, Vector v) { isa::at<N>(p) = v; }
    static Vector widened(const float* p) { return isa::widened<N>(p); }
    static Vector all(R a) { return isa::all<R, N>(a); }
    static Vector magnitude(Vector v) { return isa::magnitude<R, N>(v); }
    static Vector exchanged(Vector v) { return isa::exchanged<R, N>(v); }
};

// The same pair of numbers in all lanes, made once for every width.
template <class R>
class Pairs {
public:
    Pairs(R a, R b) : all_(isa::alternating<R, isa::lanes<R>>(a, b)) {}
    template <int N>
    isa::Vector<R, N> of(Lanes<R, N>) const
    {
        if constexpr (N == 1)
            return all_[0];
        else
            return narrowed<isa::lanes<R>, N>(all_);
    }

private:
    template <int from, int to>
    static isa::Vector<R, to> narrowed(isa::Vector<R, from> v)
    {
        if constexpr (from == to)
            return v;
        else
            return narrowed<from / 2, to>(isa::lower<R, from>(v));
    }

    isa::Vector<R, isa::lanes<R>> all_;
};

// Vectors beyond this length come from memory, not from a cache. There narrow loads are faster: hardware
// prefetches further ahead when a line is asked for more than once.
template <class R>
constexpr int64_t far = (16 << 20) / static_cast<int64_t>(sizeof(R));
template <class R>
constexpr int narrow = 16 / static_cast<int>(sizeof(R));

// Calls work(lanes, i) from i on: four vectors of N numbers at a time, then single ones, then ever narrower
// ones. `finest` is the narrowest width, 1 or 2; n is a multiple of it.
template <class R, int N, int finest, class F>
inline __attribute__((always_inline)) void for_rest(int64_t i, int64_t n, F work)
{
    if (n - i >= N) {
        work(Lanes<R, N>(), i);
        i += N;
    }
    if constexpr (N > finest) for_rest<R, N / 2, finest>(i, n, work);
}

template <class R, int N, int finest, class F>
inline __attribute__((always_inline)) void for_width(int64_t i, int64_t n, F work)
{
    typedef Lanes<R, N> L;
    for (; n - i >= 4 * N; i += 4 * N) {
        work(L(), i);
        work(L(), i + N);
        work(L(), i + 2 * N);
        work(L(), i + 3 * N);
    }
    for (; n - i >= N; i += N) work(L(), i);
    if constexpr (N > finest) for_rest<R, N / 2, finest>(i, n, work);
}

// For loops that write. A store of 64 bytes takes two steps on some machines, which shows, and gains nothing
// over two of 32 bytes.
template <class R>
constexpr int written = (isa::width < 32 ? isa::width : 32) / static_cast<int>(sizeof(R));

template <class R, int finest, class F>
inline __attribute__((always_inline)) void for_lanes(int64_t n, F work)
{
    if (n < far<R>)
        for_width<R, written<R>, finest>(0, n, work);
    else
        for_width<R, narrow<R>, finest>(0, n, work);
}

// The `lead` numbers in front, less than N, in ever wider vectors.
template <class R, int N, int width, class F>
inline __attribute__((always_inline)) void for_lead(int64_t i, int64_t lead, F work)
{
    if constexpr (width < N) {
        if ((lead & width) != 0) {
            work(Lanes<R, width>(), i);
            i += width;
        }
        for_lead<R, N, 2 * width>(i, lead, work);
    }
}

// The same where y is written, with stores that do not cross lines. The work on one number has at most one
// product to a sum, so that vectors of all widths, among which the address of y chooses, give the same bits.
template <class R, int finest, class F>
inline __attribute__((always_inline)) void for_stores(const R* y, int64_t n, F work)
{
    constexpr int N = written<R>, worthwhile = 8 * N;
    constexpr int64_t mask = N * sizeof(R) - 1;
    const int64_t bytes = -reinterpret_cast<intptr_t>(y) & mask,
                  lead = bytes / static_cast<int64_t>(sizeof(R));
    if (n < worthwhile || n >= far<R> || bytes % (finest * static_cast<int64_t>(sizeof(R))) != 0)
        return for_lanes<R, finest>(n, work);
    for_lead<R, N, finest>(0, lead, work);
    for_width<R, N, finest>(lead, n, work);
}

}  // namespace

}  // namespace orvel::kernels
