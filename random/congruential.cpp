// random/congruential.cpp - options 1 to 6: multiplicative congruential generators and their shuffling;
// RNGES, RNSES, RNISD
#include <algorithm>

#include "frame/export.h"
#include "frame/routine.h"
#include "random/random.h"

namespace orvel::random {

namespace {

// Below this, a fill goes number by number.
constexpr int64_t few = 12;

// The table takes quotients, not products with the scale.
template <class T>
[[gnu::noinline]] void fill_table(orvel_r2ncom& c)
{
    const uint32_t a = multipliers[which_multiplier(c.option)];
    uint32_t s = state_of(c);
    T* const table = shuffle_table<T>(c);
    for (int k = 0; k < table_length; ++k) {
        s = advanced(s, a);
        table[k] = static_cast<T>(static_cast<double>(s) / static_cast<double>(modulus));
    }
    keep_state(c, s);
    shuffle_ready<T>(c) = -1;
}

}  // namespace

template <class T>
void fill_congruential(orvel_r2ncom& c, int64_t n, T* r)
{
    if (n < few)
        for (int64_t k = 0; k < n; ++k) r[k] = next_congruential<T>(c);
    else
        keep_state(
            c, isa::of_type<T>(number_loops()).congruential(which_multiplier(c.option), state_of(c), n, r));
}

template <class T>
void fill_shuffled(orvel_r2ncom& c, int64_t n, T* r)
{
    if (!is_true(shuffle_ready<T>(c))) [[unlikely]]
        fill_table<T>(c);
    if (n < few) {
        for (int64_t k = 0; k < n; ++k) r[k] = next_shuffled<T>(c);
        return;
    }
    T* const table = shuffle_table<T>(c);
    const auto run = state_loops().congruential;
    const int which = which_multiplier(c.option);
    uint32_t s = state_of(c), states[512];
    for (int64_t at = 0; at < n;) {
        const int64_t count = std::min<int64_t>(n - at, std::size(states));
        s = run(which, s, count, states);
        for (int64_t k = 0; k < count; ++k) r[at + k] = exchange(table, states[k]);
        at += count;
    }
    keep_state(c, s);
}

template void fill_congruential<float>(orvel_r2ncom&, int64_t, float*);
template void fill_congruential<double>(orvel_r2ncom&, int64_t, double*);
template void fill_shuffled<float>(orvel_r2ncom&, int64_t, float*);
template void fill_shuffled<double>(orvel_r2ncom&, int64_t, double*);

namespace {

template <class T>
void r1ins()
{
    fill_table<T>(*stream().common);
}

template <class T>
void rnges(T* table)
{
    Routine<T, "RNGES">::visit(frame::state());
    std::copy_n(shuffle_table<T>(*stream().common), table_length, table);
}

template <class T>
void rnses(const T* table)
{
    Routine<T, "RNSES"> me;
    orvel_r2ncom& c = *stream().common;
    if (table[0] <= T(0)) {
        shuffle_ready<T>(c) = 0;
        return;
    }
    for (int k = 0; k < table_length; ++k) {
        if (!(table[k] > T(0) && table[k] < T(1))) {
            me.post(
                terminal, 1,
                "TABLE(%(I1)) = %(R1).  All elements of TABLE must be positive and strictly less than 1.0.",
                {i(1, k + 1), r(1, static_cast<double>(table[k]))});
            return;
        }
        shuffle_table<T>(c)[k] = table[k];
    }
    shuffle_ready<T>(c) = -1;
}

// a^100000 for each multiplier.
constexpr int64_t leaps[3] = {46831694, 1659360, 1280967134};

constexpr uint32_t power(uint32_t a, int n)
{
    uint32_t result = 1;
    for (; n > 0; n /= 2, a = advanced(a, a))
        if (n % 2 == 1) result = advanced(result, a);
    return result;
}

static_assert(leaps[0] == power(multipliers[0], 100000) && leaps[1] == power(multipliers[1], 100000) &&
              leaps[2] == power(multipliers[2], 100000));

void rnisd(const int32_t* iseed1, int32_t* iseed2)
{
    Routine<float, "RNISD"> me;
    const int32_t option = stream().common->option;
    if (is_shuffled(option))
        me.post(
            terminal, 1,
            "The specified uniform multiplicative congruential pseudorandom number generator is shuffled.  RNISD does not work when shuffling is used.  RNOPT allows you to select the type of generator.");
    if (option == shift_register)
        me.post(
            terminal, 2,
            "The specified uniform pseudorandom number generator uses generalized feedback shift register (GFSR) method.  RNISD does not work when this method is used.  RNOPT allows you to select the type of generator.");
    if (me.failed()) return;
    if (option == twister32 || option == twister64) {
        *iseed2 = *iseed1;
        return;
    }
    constexpr int64_t m = modulus;
    const int64_t s = (*iseed1 % m + m) % m;
    *iseed2 = static_cast<int32_t>(s * leaps[which_multiplier(option)] % m);
}

}  // namespace

}  // namespace orvel::random

ORVEL_EXPORT_REALS(R1INS, r1ins_, DR1INS, dr1ins_, 0, orvel::random::r1ins);
ORVEL_EXPORT_REALS(RNGES, rnges_, DRNGES, drnges_, 1, orvel::random::rnges);
ORVEL_EXPORT_REALS(RNSES, rnses_, DRNSES, drnses_, 1, orvel::random::rnses);
ORVEL_EXPORT(RNISD, rnisd_, 2, orvel::random::rnisd);
