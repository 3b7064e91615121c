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

// Shorter sequences stay in the nearest caches by themselves (measured).
constexpr int64_t smallest_blocked = 8192;

bool share_a_pass(int64_t a, int64_t b) { return b == 4 ? a == 4 || a == 2 : a == 3 && (b == 3 || b == 5); }

// Factors that go through registers together, from factor k on. A length of 16 takes two short passes with
// vectors.
int32_t factors_together(const Factors& f, int32_t k)
{
    return f.n != 16 && k + 1 < f.count && share_a_pass(f.factor[k], f.factor[k + 1]) ? 2 : 1;
}

// The factors of one pass, from factor k on: `inner` of them go together, and so do the others of a block.
struct Extent {
    int32_t inner, outer;
    int64_t product;  // of all of them
};

int64_t product_of(const Factors& f, int32_t k, int32_t count)
{
    return count == 2 ? f.factor[k] * f.factor[k + 1] : f.factor[k];
}

// Three passes of equal blocks are better than two of long ones and a short one where the second cache is
// left (measured).
int64_t longest_block(int64_t n) { return n >= (1 << 18) && n <= (1 << 20) ? 64 : block_length; }

Extent extent_of_pass(const Factors& f, int32_t k, int64_t l)
{
    const int32_t inner = factors_together(f, k), next = k + inner;
    const int64_t product = product_of(f, k, inner);
    if (f.n < smallest_blocked || next == f.count || product % 4 != 0 || f.factor[next] != 4)
        return {inner, 0, product};
    const int32_t outer = factors_together(f, next);
    const int64_t both = product * product_of(f, next, outer);
    const bool has_room = l == 1 ? f.n / both >= widest : l >= widest;
    return both <= longest_block(f.n) && has_room ? Extent{inner, outer, both} : Extent{inner, 0, product};
}

struct Plan {
    int32_t count = 0;
    Extent pass[32];

    explicit Plan(const Factors& f)
    {
        int64_t l = 1;
        for (int32_t k = 0; k < f.count; ++count) {
            const Extent e = pass[count] = extent_of_pass(f, k, l);
            k += e.inner + e.outer;
            l *= e.product;
        }
    }
};

// The short division is the faster one. Only convolutions are longer than its numbers.
int64_t quotient(int64_t a, int64_t b)
{
    return a >> 32 == 0 ? static_cast<uint32_t>(a) / static_cast<uint32_t>(b) : a / b;
}

template <class R>
[[gnu::noinline]] void run_general(Pass<R>& pass)
{
    R circle[2 * largest_general];
    roots<R>(pass.first, 0, 1, pass.first, 2, circle, circle + 1);
    pass.circle = circle;
    run_pass(pass_loop(pass.first), pass);
}

template <class R>
void run(Pass<R>& pass)
{
    const int64_t factor = pass.first;
    if (pass.third > 1) return run_pass(block_loop(), pass);
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

template <class R>
void roots(int64_t n, int64_t start, int64_t step, int64_t count, int64_t stride, R* cosine, R* sine)
{
    run_roots(n, start, step, count, stride, cosine, sine);
}

bool first_target_is_scratch(const Factors& f) { return Plan(f).count % 2 == 0; }

template <class R>
void store_blocks(const Factors& f, R* blocks)
{
    if (f.count == 1 && f.n > largest_general) return store_chirp<R>(f.n, blocks);
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
    const Plan plan(f);
    int32_t left = plan.count;
    int64_t m = f.n;
    for (int32_t k = 0; k < f.count; pass.in = pass.out) {
        const Extent e = plan.pass[plan.count - left];
        int64_t l = pass.l;
        const auto take = [&](bool is_there, int64_t& factor, const R*& at) {
            factor = is_there ? f.factor[k++] : 1;
            at = blocks + 2 * (l - f.factor[0]);
            l *= factor;
        };
        take(true, pass.first, pass.first_roots);
        if (f.count == 1) pass.first_roots = blocks;
        take(e.inner == 2, pass.second, pass.second_roots);
        take(e.outer > 0, pass.third, pass.third_roots);
        take(e.outer == 2, pass.fourth, pass.fourth_roots);
        m = k == f.count ? 1 : quotient(m, e.product);
        pass.m = m;
        --left;
        R* target = left % 2 == 0 ? result : s.scratch;
        if (target == memory(pass.in)) target = out_of_the_way(f.n, left, target, s, pass.in);
        pass.out = left == 0 ? s.out : apart(target, f.n);
        run(pass);
        pass.l = l;
    }
}

template void roots(int64_t, int64_t, int64_t, int64_t, int64_t, float*, float*);
template void roots(int64_t, int64_t, int64_t, int64_t, int64_t, double*, double*);
template void store_blocks(const Factors&, float*);
template void store_blocks(const Factors&, double*);
template void transform(const Factors&, const float*, const Storage<float>&);
template void transform(const Factors&, const double*, const Storage<double>&);

}  // namespace orvel::fft
