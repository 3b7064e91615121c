// kernels/accumulators.cpp - DQINI, DQADD, DQMUL, DQSTO and their complex forms: sums of double length
//
// The definition is a sum in quadruple precision, 113 bits, split into a head and a tail. It is computed as
// an exact sum of doubles, whose remainder is rounded to the last place that a quadruple number has. What
// that cannot do, near the ends of the range and in exact ties, is left to quadruple arithmetic itself.
#include <bit>
#include <cmath>

#include "frame/export.h"
#include "isa/two_doubles.h"
#include "kernels/vectors.h"
#include "orvel/kernels.h"

namespace orvel::kernels {

namespace {

#if __LDBL_MANT_DIG__ == 113
typedef long double Quadruple;
#else
__extension__ typedef __float128 Quadruple;
#endif

using Pair = isa::TwoDoubles<double>;
using isa::two_sum;

[[gnu::noinline, gnu::cold]] void add_quadruple(double a, double b, double* head, double* tail)
{
    const bool nothing = (a == 0 || b == 0) && a * b == 0;
    const bool empty = *head == 0 && *tail == 0 && !std::signbit(*head) && !std::signbit(*tail);
    if (nothing && empty) return;
    const Quadruple sum = static_cast<Quadruple>(*head) + static_cast<Quadruple>(*tail) +
                          static_cast<Quadruple>(a) * static_cast<Quadruple>(b);
    *head = static_cast<double>(sum);
    *tail = static_cast<double>(sum - static_cast<Quadruple>(*head));
}

// Whether a product lies in the range in which neither it nor a part of it leaves that of double.
inline bool moderate(double a, double b)
{
    const double product = std::abs(a * b);
    return std::abs(a) < 0x1p900 && std::abs(b) < 0x1p900 && product < 0x1p900 &&
           (product > 0x1p-800 || a == 0 || b == 0);
}

// The power of two at or below |a|.
inline double leading_bit(double a)
{
    return std::bit_cast<double>(std::bit_cast<uint64_t>(a) & 0x7FF0000000000000);
}

// A number below 2^-53 of `leading`, rounded to the last place of a quadruple number that begins there. From
// 2^-60 on it has no bits beyond that place.
inline double round_rest(double a, double leading)
{
    const double limit = leading * 0x1p-60;
    if (std::abs(a) >= limit) return a;
    const double raise = std::copysign(limit, a);
    return (a + raise) - raise;
}

// Adds the exact product p of a and b.
inline void add_product(Pair p, double a, double b, double* head, double* tail)
{
    const double h = *head, t = *tail;
    // h + t + p in nonoverlapping doubles, from large to small.
    const Pair upper = two_sum(h, p.head);
    const Pair lower = two_sum(t, p.tail);
    const Pair middle = two_sum(upper.tail, lower.head);
    const Pair small = two_sum(middle.tail, lower.tail);
    const Pair first = two_sum(upper.head, middle.head);
    const Pair second = two_sum(first.tail, small.head);
    const double sum = first.head, rest = second.head;
    const Pair end = two_sum(second.tail, small.tail);
    const double last = end.head;

    // Bits beyond the last place are in `rest`, where `last` tells only which way a tie falls, or in `last`
    // alone. There a tie goes to even when `rest` is; other ties go the long way.
    const double leading = leading_bit(sum);
    const double half = leading * 0x1p-113;
    const double rounded = round_rest(rest, leading);
    const double last_rounded = rounded == rest ? round_rest(last, leading) : 0.0;
    const bool even = end.tail == 0 && std::abs(rest) >= leading * 0x1p-59;
    const bool tie = rounded == rest ? !even && std::abs(last - last_rounded) == half
                                     : last != 0 && std::abs(rest - rounded) == half;
    // Below a power of two the places are half as wide.
    const bool exact = rounded == rest && last_rounded == last;
    const double bound = std::abs(sum) != leading ? leading * 0x1p-53 : exact ? leading * 0x1p-55 : 0.0;
    const bool pair = h + t == h && round_rest(t, leading_bit(h)) == t;
    if (pair && !tie && std::abs(rest) < bound && leading > 0x1p-800 && leading < 0x1p900) [[likely]] {
        *head = sum;
        *tail = rounded + last_rounded;
    } else {
        add_quadruple(a, b, head, tail);
    }
}

void multiply_add(double a, double b, double* head, double* tail)
{
    if (moderate(a, b)) [[likely]]
        add_product(isa::two_product<true>(a, b), a, b, head, tail);
    else
        add_quadruple(a, b, head, tail);
}

void add(double a, double* head, double* tail) { add_product({a, 0.0}, a, 1.0, head, tail); }

void ini(const double* a, double* acc)
{
    acc[0] = *a;
    acc[1] = 0.0;
}

void add(const double* a, double* acc) { add(*a, &acc[0], &acc[1]); }

void mul(const double* a, const double* b, double* acc) { multiply_add(*a, *b, &acc[0], &acc[1]); }

void sto(const double* acc, double* a) { *a = acc[0] + acc[1]; }

void complex_ini(const orvel_dcomplex* a, orvel_dcomplex* acc)
{
    acc[0] = *a;
    acc[1] = 0.0;
}

// parts(acc): real and imaginary head, real and imaginary tail.
void complex_add(const orvel_dcomplex* a, orvel_dcomplex* acc)
{
    double* p = parts(acc);
    add(a->real(), &p[0], &p[2]);
    add(a->imag(), &p[1], &p[3]);
}

void complex_mul(const orvel_dcomplex* a, const orvel_dcomplex* b, orvel_dcomplex* acc)
{
    double* p = parts(acc);
    const orvel_dcomplex x = *a, y = *b;
    multiply_add(x.real(), y.real(), &p[0], &p[2]);
    multiply_add(x.real(), y.imag(), &p[1], &p[3]);
    multiply_add(-x.imag(), y.imag(), &p[0], &p[2]);
    multiply_add(x.imag(), y.real(), &p[1], &p[3]);
}

void complex_sto(const orvel_dcomplex* acc, orvel_dcomplex* a) { *a = acc[0] + acc[1]; }

}  // namespace

}  // namespace orvel::kernels

ORVEL_EXPORT(DQINI, dqini_, 2, orvel::kernels::ini);
ORVEL_EXPORT(DQADD, dqadd_, 2, orvel::kernels::add);
ORVEL_EXPORT(DQMUL, dqmul_, 3, orvel::kernels::mul);
ORVEL_EXPORT(DQSTO, dqsto_, 2, orvel::kernels::sto);
ORVEL_EXPORT(ZQINI, zqini_, 2, orvel::kernels::complex_ini);
ORVEL_EXPORT(ZQADD, zqadd_, 2, orvel::kernels::complex_add);
ORVEL_EXPORT(ZQMUL, zqmul_, 3, orvel::kernels::complex_mul);
ORVEL_EXPORT(ZQSTO, zqsto_, 2, orvel::kernels::complex_sto);
