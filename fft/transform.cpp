// fft/transform.cpp - complex transforms of any length, pass by pass
//
// Passes go through the factors in the order of their list, each with the twiddle factors between the
// transforms that it joins; source: P. Swarztrauber, Vectorizing the FFTs, 1982. No reordering is needed,
// because a pass never writes where it reads. Neighbouring small factors share a pass.
//
// Between the passes numbers are in split format, so that a turn by a quarter costs nothing and a backward
// transform is the forward one with real and imaginary parts exchanged at both ends.
#include "fft/transform.h"

#include <cstring>

#include "fft/chirp.h"
#include "fft/two_passes.h"

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
    isa::of_type<R>(general_odd_passes())(pass);
}

template <class R>
void run(Pass<R>& pass)
{
    const int64_t factor = pass.group[0].first;
    if (pass.groups > 1) return isa::of_type<R>(block_passes())(pass);
    if (factor % 2 == 0) return isa::of_type<R>(even_passes())(pass);
    if (factor <= largest_small_odd) return isa::of_type<R>(small_odd_passes())(pass);
    if (factor == 11 || factor == 13) return isa::of_type<R>(general_odd_passes())(pass);
    factor <= largest_general ? run_general(pass) : large_pass(pass);
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

template <class R>
int64_t numbers_of_scratch(const Factors& f)
{
    return goes_in_two(f) ? numbers_of_two_passes<R>(f) : 2 * f.n;
}

bool first_target_is_scratch(const Factors& f) { return Plan(f).count % 2 == 0; }

template <class R>
void transform(const Factors& f, const R* tables, const Storage<R>& s)
{
    const Plan plan(f);
    Pass<R> pass;
    pass.in = s.in;
    pass.l = 1;
    if (plan.in_two) {
        if (memory(s.in) == s.scratch) out_of_the_way(f.n, 0, s.scratch, s, pass.in);
        return two_passes(f, plan, tables, s, pass);
    }
    int64_t m = f.n;
    for (int32_t k = 0; k < plan.count; ++k, pass.in = pass.out) {
        const int64_t l = take_groups<R>(f, tables, plan.begin(k), plan.end[k], false, pass);
        if (f.count == 1) pass.group[0].first_twiddles = tables;
        const int32_t left = plan.count - 1 - k;
        m = left == 0 ? 1 : quotient(m, l / pass.l);
        pass.m = m;
        pass.pitch = l;
        pass.room = 0;
        R* target = left % 2 == 0 ? memory(s.out) : s.scratch;
        if (target == memory(pass.in)) target = out_of_the_way(f.n, left, target, s, pass.in);
        pass.out = left == 0 ? s.out : split_format(target, f.n);
        run(pass);
        pass.l = l;
    }
}

template int64_t numbers_of_scratch<float>(const Factors&);
template int64_t numbers_of_scratch<double>(const Factors&);
template void transform(const Factors&, const float*, const Storage<float>&);
template void transform(const Factors&, const double*, const Storage<double>&);

}  // namespace orvel::fft
