// fft/transform.cpp - complex transforms of any length, pass by pass
//
// Passes go through the factors in the order of their list, each with the roots between the transforms that
// it joins; source: P. Swarztrauber, Vectorizing the FFTs, 1982. No reordering is needed, because a pass
// never writes where it reads. Neighbouring small factors share a pass.
#include "fft/transform.h"

#include <cstring>

namespace orvel::fft {

namespace {

void run_roots(int64_t n, int64_t start, int64_t step, int64_t count, int64_t stride, float* c, float* s)
{
    root_loop().s(n, start, step, count, stride, c, s);
}
void run_roots(int64_t n, int64_t start, int64_t step, int64_t count, int64_t stride, double* c, double* s)
{
    root_loop().d(n, start, step, count, stride, c, s);
}

bool share_a_pass(int64_t a, int64_t b) { return b == 4 ? a == 4 || a == 2 : a == 3 && (b == 3 || b == 5); }

// Factors of the pass that begins with factor k. A length of 16 takes two short passes with vectors.
int32_t factors_of_pass(const Factors& f, int32_t k)
{
    return f.n != 16 && k + 1 < f.count && share_a_pass(f.factor[k], f.factor[k + 1]) ? 2 : 1;
}

int32_t count_passes(const Factors& f)
{
    int32_t count = 0;
    for (int32_t k = 0; k < f.count; k += factors_of_pass(f, k)) ++count;
    return count;
}

template <class R>
void run(Pass<R>& pass)
{
    R circle[2 * largest_general];
    const int64_t factor = pass.first;
    if (factor > largest_general) return large_pass(pass);
    if (factor % 2 != 0 && !is_small_odd(factor)) {
        roots<R>(factor, 0, 1, factor, 2, circle, circle + 1);
        pass.circle = circle;
    }
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

template <class R>
void roots(int64_t n, int64_t start, int64_t step, int64_t count, int64_t stride, R* cosine, R* sine)
{
    run_roots(n, start, step, count, stride, cosine, sine);
}

bool first_target_is_scratch(const Factors& f) { return count_passes(f) % 2 == 0; }

template <class R>
void store_blocks(const Factors& f, R* blocks)
{
    int64_t l = 1;
    for (int32_t k = 0; k < f.count; ++k) {
        const int64_t r = f.factor[k];
        for (int64_t i = 1; k > 0 && i < r; ++i) {
            roots<R>(l * r, 0, i, l, 1, blocks, blocks + l);
            blocks += 2 * l;
        }
        l *= r;
    }
}

template <class R>
void transform(const Factors& f, const R* blocks, const Storage<R>& s)
{
    R* const result = memory(s.out);
    Pass<R> pass;
    pass.in = s.in;
    pass.l = 1;
    int32_t left = count_passes(f);
    for (int32_t k = 0; k < f.count; pass.in = pass.out) {
        const int32_t factors = factors_of_pass(f, k);
        pass.first = f.factor[k];
        pass.second = factors == 2 ? f.factor[k + 1] : 1;
        pass.first_roots = blocks + 2 * (pass.l - f.factor[0]);
        pass.second_roots = blocks + 2 * (pass.l * pass.first - f.factor[0]);
        pass.m = k + factors == f.count ? 1 : f.n / (pass.l * pass.first * pass.second);
        k += factors;
        --left;
        R* target = left % 2 == 0 ? result : s.scratch;
        if (target == memory(pass.in)) target = out_of_the_way(f.n, left, target, s, pass.in);
        pass.out = left == 0 ? s.out : apart(target, f.n);
        run(pass);
        pass.l *= pass.first * pass.second;
    }
}

template void roots(int64_t, int64_t, int64_t, int64_t, int64_t, float*, float*);
template void roots(int64_t, int64_t, int64_t, int64_t, int64_t, double*, double*);
template void store_blocks(const Factors&, float*);
template void store_blocks(const Factors&, double*);
template void transform(const Factors&, const float*, const Storage<float>&);
template void transform(const Factors&, const double*, const Storage<double>&);

}  // namespace orvel::fft
