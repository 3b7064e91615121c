// fft/two_passes.cpp - long powers of two, also with one factor 3 or 5, in two passes over blocks
#include "fft/two_passes.h"

#include "frame/scratch.h"
#include "isa/caches.h"

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

// The block of one of the passes, at its widest.
template <class R>
int64_t most_in_block(const Factors& f)
{
    const int64_t l = length_of_rows(f);
    return std::max((l + twiddle_row) * align_by<R>, f.n / l * most_vectors * align_by<R>);
}

// What is between the passes: rows of results of the first one, `beyond` numbers further from each other than
// they are long, and a block of `room` numbers in each part.
template <class R>
struct Between {
    Parts<R> rows;
    int64_t beyond;
    R* block;
    int64_t room;
};

template <class R>
Between<R> between(const Factors& f, const Storage<R>& s)
{
    if (s.spare == nullptr && s.room == 0) return {split_format(s.scratch, f.n), 0, nullptr, 0};
    R *const re = aligned(s.scratch), *const behind = aligned(re + numbers_in_rows(f));
    if (s.spare != nullptr)
        return {{re, aligned(s.spare), 1}, beyond_row, behind, (s.scratch + 2 * f.n - behind) / 2};
    return {{re, behind, 1}, beyond_row, aligned(behind + numbers_in_rows(f)), most_in_block<R>(f)};
}

// One vector of columns always finds its block on the stack; the heap has it where more side by side are
// faster.
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
    isa::of_type<R>(block_passes())(pass);
}

}  // namespace

template <class R>
int64_t numbers_of_two_passes(const Factors& f)
{
    return 2 * (numbers_in_rows(f) + most_in_block<R>(f)) + 3 * align_by<R>;
}

template <class R>
void two_passes(const Factors& f, const Plan& plan, const R* tables, const Storage<R>& s, Pass<R>& pass)
{
    const Between<R> b = between(f, s);
    // The last cache is shared with other cores.
    pass.distant = 4 * isa::caches().second;
    pass.huge = isa::caches().last / 4;
    const int64_t l = take_groups<R>(f, tables, 0, plan.end[0], true, pass);
    pass.m = f.n / l;
    pass.pitch = l + b.beyond;
    pass.out = b.rows;
    pass.block = b.block;
    pass.room = b.room;
    isa::of_type<R>(block_passes())(pass);
    pass.l = l;
    take_groups<R>(f, tables, plan.end[0], f.count, true, pass);
    pass.m = 1;
    pass.in = pass.out;
    pass.out = s.out;
    if (pass.block == nullptr) return run_with_own_block<R>(pass, f.n / l);
    isa::of_type<R>(block_passes())(pass);
}

template int64_t numbers_of_two_passes<float>(const Factors&);
template int64_t numbers_of_two_passes<double>(const Factors&);
template void two_passes(const Factors&, const Plan&, const float*, const Storage<float>&, Pass<float>&);
template void two_passes(const Factors&, const Plan&, const double*, const Storage<double>&, Pass<double>&);

}  // namespace orvel::fft
