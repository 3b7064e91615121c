// kernels/isa/updates.cpp - loops that write contiguous vectors: copies, scalings, sums of vectors, rotations
#include "kernels/isa/lanes.h"
#include "kernels/isa/loops.h"

namespace orvel::kernels {

namespace {

using isa::held;

template <class R>
void copy(int64_t n, const R* x, R* y)
{
    // What the caches hold the C library moves best.
    constexpr int64_t much = 512;
    const int64_t bytes = n * static_cast<int64_t>(sizeof(R));
    const int64_t distance = reinterpret_cast<intptr_t>(y) - reinterpret_cast<intptr_t>(x);
    if (n >= much && n < far<R> && (distance >= bytes || distance <= -bytes)) {
        __builtin_memcpy(y, x, static_cast<uint64_t>(bytes));
        return;
    }
    for_stores<R, 1>(y, n, [=](auto l, int64_t i) { l.store(y + i, l.load(x + i)); });
}

template <class R>
void swap(int64_t n, R* x, R* y)
{
    for_lanes<R, 1>(n, [=](auto l, int64_t i) {
        const auto kept = l.load(x + i);
        l.store(x + i, l.load(y + i));
        l.store(y + i, kept);
    });
}

template <class R>
void axpy(int64_t n, R a, const R* x, R* y)
{
    for_stores<R, 1>(y, n, [=](auto l, int64_t i) { l.store(y + i, a * l.load(x + i) + l.load(y + i)); });
}

// In place this is a single stream, for which narrow loads gain nothing.
template <class R>
void scale(int64_t n, R a, const R* x, R* y)
{
    const auto work = [=](auto l, int64_t i) { l.store(y + i, a * l.load(x + i)); };
    if (n < far<R>)
        for_stores<R, 1>(y, n, work);
    else
        for_width<R, written<R>, 1>(0, n, work);
}

template <class R>
void multiply(int64_t n, const R* x, const R* y, R* z)
{
    for_stores<R, 1>(z, n, [=](auto l, int64_t i) { l.store(z + i, l.load(x + i) * l.load(y + i)); });
}

template <class R>
void transform(int64_t n, const R h[4], R* x, R* y)
{
    const R xx = h[0], xy = h[1], yx = h[2], yy = h[3];
    for_lanes<R, 1>(n, [=](auto l, int64_t i) {
        const auto u = l.load(x + i), v = l.load(y + i);
        l.store(y + i, yy * v + yx * u);
        l.store(x + i, xx * u + xy * v);
    });
}

template <class R>
void complex_axpy(int64_t n, R a, R b, const R* x, R* y)
{
    const Pairs<R> turn(-b, b);
    for_lanes<R, 2>(n, [=](auto l, int64_t i) {
        const auto v = held(l.load(x + i));
        l.store(y + i, turn.of(l) * l.exchanged(v) + (a * v + l.load(y + i)));
    });
}

template <class R>
void complex_scale(int64_t n, R a, R b, const R* x, R* y)
{
    const Pairs<R> turn(-b, b);
    for_lanes<R, 2>(n, [=](auto l, int64_t i) {
        const auto v = held(l.load(x + i));
        l.store(y + i, a * v + turn.of(l) * l.exchanged(v));
    });
}

template <class R>
void set(int64_t n, R a, R b, R* x)
{
    const Pairs<R> value(a, b);
    for_lanes<R, 1>(n, [=](auto l, int64_t i) { l.store(x + i, value.of(l)); });
}

template <class R>
void add(int64_t n, R a, R b, R* x)
{
    const Pairs<R> value(a, b);
    for_lanes<R, 1>(n, [=](auto l, int64_t i) { l.store(x + i, l.load(x + i) + value.of(l)); });
}

template <class R>
void subtract_from(int64_t n, R a, R b, R* x)
{
    const Pairs<R> value(a, b);
    for_lanes<R, 1>(n, [=](auto l, int64_t i) { l.store(x + i, value.of(l) - l.load(x + i)); });
}

template <class R>
constexpr Updates<R> updates = {copy<R>,     swap<R>,      axpy<R>,         scale<R>,
                                multiply<R>, transform<R>, complex_axpy<R>, complex_scale<R>,
                                set<R>,      add<R>,       subtract_from<R>};

}  // namespace

const isa::ForReals<Updates> ORVEL_ISA::update_loops = {updates<float>, updates<double>};

}  // namespace orvel::kernels
