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

// The factors that a pass starts at; a length of 16 takes two short passes with vectors.
struct Plan {
    int32_t count = 0;
    int32_t at[32];
};

Plan plan_of(const Factors& f)
{
    Plan plan;
    for (int32_t k = 0; k < f.count;) {
        plan.at[plan.count++] = k;
        k += f.n != 16 && k + 1 < f.count && share_a_pass(f.factor[k], f.factor[k + 1]) ? 2 : 1;
    }
    plan.at[plan.count] = f.count;
    return plan;
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
const R* memory(const Parts<R>& p)
{
    return p.re < p.im ? p.re : p.im;
}

}  // namespace

template <class R>
void roots(int64_t n, int64_t start, int64_t step, int64_t count, int64_t stride, R* cosine, R* sine)
{
    run_roots(n, start, step, count, stride, cosine, sine);
}

bool first_target_is_scratch(const Factors& f) { return plan_of(f).count % 2 == 0; }

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
    const Plan plan = plan_of(f);
    R* const result = const_cast<R*>(memory(s.out));
    Parts<R> from = s.in;
    int64_t l = 1;
    for (int32_t k = 0; k < plan.count; ++k) {
        Pass<R> pass = {};
        pass.first = f.factor[plan.at[k]];
        pass.second = plan.at[k + 1] - plan.at[k] == 2 ? f.factor[plan.at[k] + 1] : 1;
        pass.l = l;
        pass.first_roots = blocks + 2 * (l - f.factor[0]);
        l *= pass.first;
        pass.second_roots = blocks + 2 * (l - f.factor[0]);
        l *= pass.second;
        pass.m = f.n / l;

        const int32_t left = plan.count - 1 - k;
        R* target = left % 2 == 0 ? result : s.scratch;
        if (target == memory(from)) {
            R* const other = s.spare != nullptr ? s.spare : s.scratch;
            if (left > 0 && s.spare != nullptr) {
                target = other;
            } else {
                R* const moved = target == s.scratch ? result : other;
                std::memcpy(moved, target, static_cast<std::size_t>(2 * f.n) * sizeof(R));
                from.re = moved + (from.re - target);
                from.im = moved + (from.im - target);
            }
        }
        pass.in = from;
        pass.out = left == 0 ? s.out : apart(target, f.n);
        run(pass);
        from = pass.out;
    }
}

template void roots(int64_t, int64_t, int64_t, int64_t, int64_t, float*, float*);
template void roots(int64_t, int64_t, int64_t, int64_t, int64_t, double*, double*);
template void store_blocks(const Factors&, float*);
template void store_blocks(const Factors&, double*);
template void transform(const Factors&, const float*, const Storage<float>&);
template void transform(const Factors&, const double*, const Storage<double>&);

}  // namespace orvel::fft
