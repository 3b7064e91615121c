// fft/in_two.cpp - transforms in two passes over blocks
#include <algorithm>

#include "fft/plan.h"
#include "frame/scratch.h"

namespace orvel::fft {

namespace {

// Rows that are a power of 2 apart displace each other from the nearest cache.
constexpr int64_t beyond_row = 16;

template <class R>
R* aligned(R* p)
{
    constexpr uintptr_t bytes = widest_bytes;
    return reinterpret_cast<R*>((reinterpret_cast<uintptr_t>(p) + bytes - 1) / bytes * bytes);
}
template <class R>
constexpr int64_t align_by = widest_bytes / static_cast<int64_t>(sizeof(R));

int64_t numbers_in_rows(const Factors& f)
{
    const int64_t l = length_of_rows(f);
    return f.n / l * (l + beyond_row);
}

// A real transform has no room for a block in its arrays. One vector of columns always finds it on the stack;
// the heap has it where more side by side are faster.
template <class R>
[[gnu::noinline]] void run_with_own_block(Pass<R>& pass, int64_t length)
{
    constexpr int64_t room = longest_real_block * align_by<R>;
    alignas(widest_bytes) R block[2 * room];
    const int64_t wanted = length * most_vectors * align_by<R>;
    Scratch<R> wide;
    const bool is_wide = wanted > room && wide.allocate(2 * wanted);
    pass.block = is_wide ? static_cast<R*>(wide) : block;
    pass.room = is_wide ? wanted : room;
    run_pass(block_loop(), pass);
}

// The block of one of the passes, at its widest.
template <class R>
int64_t most_in_block(const Factors& f)
{
    const int64_t l = length_of_rows(f);
    return std::max((l + root_row) * align_by<R>, f.n / l * most_vectors * align_by<R>);
}

}  // namespace

template <class R>
void transform_in_two(const Factors& f, const R* blocks, const Storage<R>& s)
{
    const int32_t end = factors_of_blocks(f);
    Pass<R> pass;
    pass.l = 1;
    const int64_t l = take_groups<R>(f, blocks, 0, end, true, pass);
    pass.m = f.n / l;
    pass.pitch = l + s.between.beyond;
    pass.in = s.in;
    pass.out = s.between.rows;
    pass.block = s.between.block;
    pass.room = s.between.room;
    run_pass(block_loop(), pass);
    pass.l = l;
    take_groups<R>(f, blocks, end, f.count, true, pass);
    pass.m = 1;
    pass.in = pass.out;
    pass.out = s.out;
    if (pass.block == nullptr) return run_with_own_block<R>(pass, f.n / l);
    run_pass(block_loop(), pass);
}

template <class R>
Between<R> between(const Factors& f, R* a, R* b)
{
    const int64_t numbers = numbers_in_rows(f);
    R *const re = aligned(a), *const block = aligned(re + numbers);
    return {{re, aligned(b), 1}, beyond_row, block, (a + 2 * f.n - block) / 2};
}

template <class R>
int64_t numbers_between(const Factors& f)
{
    return 2 * (numbers_in_rows(f) + most_in_block<R>(f)) + 3 * align_by<R>;
}

template <class R>
Between<R> between(const Factors& f, R* memory)
{
    const int64_t numbers = numbers_in_rows(f);
    R *const re = aligned(memory), *const im = aligned(re + numbers), *const block = aligned(im + numbers);
    return {{re, im, 1}, beyond_row, block, most_in_block<R>(f)};
}

template <class R>
Between<R> narrow_between(const Factors& f, R* memory)
{
    return {apart(memory, f.n), 0, nullptr, 0};
}

template void transform_in_two(const Factors&, const float*, const Storage<float>&);
template Between<float> between(const Factors&, float*, float*);
template Between<float> between(const Factors&, float*);
template Between<float> narrow_between(const Factors&, float*);
template int64_t numbers_between<float>(const Factors&);
template void transform_in_two(const Factors&, const double*, const Storage<double>&);
template Between<double> between(const Factors&, double*, double*);
template Between<double> between(const Factors&, double*);
template Between<double> narrow_between(const Factors&, double*);
template int64_t numbers_between<double>(const Factors&);

}  // namespace orvel::fft
