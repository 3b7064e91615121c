// fft/transform.cpp - complex transforms of any length, pass by pass
//
// Passes go through the factors in the order of their list, each with the roots between the transforms that
// it joins; source: P. Swarztrauber, Vectorizing the FFTs, 1982. No reordering is needed, because a pass
// never writes where it reads. Neighbouring small factors share a pass.
#include <cstring>

#include "fft/plan.h"

namespace orvel::fft {

namespace {

// The short division is the faster one. Only convolutions are longer than its numbers.
int64_t quotient(int64_t a, int64_t b)
{
    return a >> 32 == 0 ? static_cast<uint32_t>(a) / static_cast<uint32_t>(b) : a / b;
}

template <class R>
[[gnu::noinline]] void run_general(Pass<R>& pass)
{
    R circle[2 * largest_general];
    const int64_t factor = pass.group[0].first;
    roots<R>(factor, 0, 1, factor, 2, circle, circle + 1);
    pass.circle = circle;
    run_pass(pass_loop(factor), pass);
}

template <class R>
void run(Pass<R>& pass)
{
    const int64_t factor = pass.group[0].first;
    if (pass.groups > 1) return run_pass(block_loop(), pass);
    if (factor > largest_general) return large_pass(pass);
    if (factor % 2 != 0 && !is_small_odd(factor)) return run_general(pass);
    run_pass(pass_loop(factor), pass);
}

template <class R>
R* memory(const Parts<R>& p)
{
    return p.re < p.im ? p.re : p.im;
}

// The first pass would write over its input: it gets another target, or its input is moved.
template <class R>
[[gnu::noinline]] R* out_of_the_way(int64_t n, int32_t passes_left, R* target, const Storage<R>& s,
                                    Parts<R>& in)
{
    if (passes_left > 0 && s.spare != nullptr) return s.spare;
    R* const moved = target == s.scratch ? memory(s.out) : s.spare != nullptr ? s.spare : s.scratch;
    std::memcpy(moved, target, static_cast<std::size_t>(2 * n) * sizeof(R));
    in.re = moved + (in.re - target);
    in.im = moved + (in.im - target);
    return target;
}

}  // namespace

bool first_target_is_scratch(const Factors& f) { return Plan(f).count % 2 == 0; }

template <class R>
void transform(const Factors& f, const R* blocks, const Storage<R>& s)
{
    if (goes_in_two(f)) return transform_in_two<R>(f, blocks, s);
    R* const result = memory(s.out);
    Pass<R> pass;
    pass.in = s.in;
    pass.l = 1;
    const Plan plan(f);
    int32_t left = plan.count;
    int64_t m = f.n;
    for (int32_t k = 0; k < f.count; pass.in = pass.out) {
        const int32_t end = plan.end[plan.count - left];
        const int64_t l = take_groups<R>(f, blocks, k, end, false, pass);
        if (f.count == 1) pass.group[0].first_roots = blocks;
        k = end;
        m = k == f.count ? 1 : quotient(m, l / pass.l);
        pass.m = m;
        pass.pitch = l;
        pass.room = 0;
        --left;
        R* target = left % 2 == 0 ? result : s.scratch;
        if (target == memory(pass.in)) target = out_of_the_way(f.n, left, target, s, pass.in);
        pass.out = left == 0 ? s.out : apart(target, f.n);
        run(pass);
        pass.l = l;
    }
}

template void transform(const Factors&, const float*, const Storage<float>&);
template void transform(const Factors&, const double*, const Storage<double>&);

}  // namespace orvel::fft
