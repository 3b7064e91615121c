// fft/plan.cpp - which factors go through a pass together
#include "fft/plan.h"

namespace orvel::fft {

namespace {

bool share_a_pass(int64_t a, int64_t b)
{
    return b == 4 ? a == 4 || a == 2 : b == 5 ? a >= 3 && a <= 5 : a == 3 && b == 3;
}

// Factors that go through registers together, from factor k on. A length of 16 takes two short passes with
// vectors, and so do others that have few columns of 20 or 25 numbers.
int32_t factors_together(const Factors& f, int32_t k)
{
    if (k + 1 >= f.count || !share_a_pass(f.factor[k], f.factor[k + 1])) return 1;
    const bool is_large = f.factor[k] >= 4 && f.factor[k + 1] == 5;
    return f.n == 16 || (is_large && f.n < 320) ? 1 : 2;
}

// The number of factors that a pass over blocks can take from the first one on: 4, and one 2 before.
int32_t powers(const Factors& f)
{
    int32_t count = 0;
    while (count < f.count && (f.factor[count] == 4 || (f.factor[count] == 2 && count == 0))) ++count;
    return count;
}

int64_t product(const Factors& f, int32_t count)
{
    int64_t l = 1;
    for (int32_t k = 0; k < count; ++k) l *= f.factor[k];
    return l;
}

// Shorter sequences stay in the nearest caches by themselves (measured).
constexpr int64_t smallest_in_two = 8192;

// The factors of the first pass of two. The second one leaves at least 64 to it, so that there is room for
// the block in what is between them.
int32_t factors_of_first(const Factors& f)
{
    return f.count - std::min((f.count - (f.factor[0] == 2 ? 1 : 0)) / 2, f.most_in_last);
}

// Those of a first pass over blocks before plain ones; 0 if there is none.
int32_t factors_of_blocks(const Factors& f)
{
    const int32_t count = std::min(powers(f), 4);
    return f.n >= smallest_in_two && count >= 3 && f.n / product(f, count) >= widest ? count : 0;
}

}  // namespace

bool goes_in_two(const Factors& f)
{
    if (f.n < smallest_in_two) return false;
    const int64_t last = f.factor[f.count - 1];
    return powers(f) >= f.count - (last == 3 || last == 5 ? 1 : 0);
}

int64_t length_of_rows(const Factors& f) { return product(f, factors_of_first(f)); }

int32_t factors_of_group(const Factors& f, int32_t k, int32_t end, bool in_two)
{
    return k + 1 < end && factors_together(f, k) == 2 && !(in_two && k + 2 == f.count) ? 2 : 1;
}

Plan::Plan(const Factors& f) : in_two(goes_in_two(f)), first_over_blocks(false)
{
    int32_t k = 0;
    if (in_two) {
        end[count++] = factors_of_first(f);
        end[count++] = k = f.count;
    } else if (const int32_t blocks = factors_of_blocks(f); blocks > 0) {
        first_over_blocks = true;
        end[count++] = k = blocks;
    }
    for (; k < f.count; ++count) k = end[count] = k + factors_together(f, k);
}

}  // namespace orvel::fft
