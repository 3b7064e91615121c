// fft/isa/short_steps.h - a short power of two as up to three steps, for one instruction-set level
//
// A length n = A * B begins with B transforms of length A with the lanes over the B columns, turned into rows
// whose lanes are over A. A rest of length B is one transform through registers, or two steps of B = P * Q in
// the rows; see steps_of. Everything is read before anything is written, so the output may be the input. All
// roots are known to the compiler. Source: W. M. Gentleman, G. Sande, Fast Fourier transforms: for fun and
// profit, 1966.
#pragma once

#include "fft/isa/exact_roots.h"
#include "fft/isa/known_roots.h"
#include "fft/isa/pass.h"

namespace orvel::fft {

namespace {

constexpr int least(int a, int b) { return a < b ? a : b; }

// The number of lanes for so many columns. Half a short vector is worse than single numbers.
template <class R>
constexpr int lanes_for(int columns)
{
    const int width = least(columns, lanes<R>);
    return width * static_cast<int>(sizeof(R)) < 16 ? 1 : width;
}

// A power of two as the product of up to three steps.
struct Steps {
    int a, p, q;
};
constexpr Steps steps_of(int n)
{
    switch (n) {
        case 16:
            return {4, 4, 1};
        case 512:
            return {16, 4, 8};
        case 1024:
            return {16, 8, 8};
        case 2048:
            return {16, 16, 8};
        case 4096:
            return {16, 16, 16};
        default:
            return n <= 8 ? Steps{n, 1, 1} : n <= 64 ? Steps{8, n / 8, 1} : Steps{16, n / 16, 1};
    }
}

// Lanes of all steps: a load that is wider than the store before it waits until that is in the cache.
template <class R>
constexpr int lanes_of_steps(int n)
{
    const Steps s = steps_of(n);
    return s.p == 1 ? 1 : lanes_for<R>(least(s.a, s.p * s.q));
}

// Numbers of a table, in the order in which they are read.
template <class R, int count>
struct Numbers {
    alignas(64) R at[count];
};

// w(n)^(-b k) for the rows b = i + q j, in the order i < q, j < p, of each block of W lanes k < a.
template <class R, int n, int a, int p, int q, int W>
constexpr Numbers<R, 2 * a * p * q> roots_of_rows()
{
    constexpr int numbers = 2 * a * p * q;
    Numbers<R, numbers> table = {};
    R* to = table.at;
    for (int k = 0; k < a; k += W)
        for (int i = 0; i < q; ++i)
            for (int j = 0; j < p; ++j, to += 2 * W)
                for (int lane = 0; lane < W; ++lane) {
                    const int at = (i + q * j) * (k + element_of<R, W, Lanes::near>(lane)) % n;
                    to[lane] = static_cast<R>(known_roots<n>.cosine[at]);
                    to[W + lane] = static_cast<R>(known_roots<n>.sine[at]);
                }
    return table;
}
template <class R, int n, int a, int p, int q, int W>
constexpr Numbers<R, 2 * a * p * q> row_roots = roots_of_rows<R, n, a, p, q, W>();

// w(p q)^(-i k) for k < p, i < q, cosine and sine in turn.
template <class R, int p, int q>
constexpr Numbers<R, 2 * p * q> roots_of_last()
{
    constexpr int numbers = 2 * p * q;
    Numbers<R, numbers> table = {};
    for (int k = 0; k < p; ++k)
        for (int i = 0; i < q; ++i) {
            table.at[2 * (q * k + i)] = static_cast<R>(known_roots<p * q>.cosine[i * k]);
            table.at[2 * (q * k + i) + 1] = static_cast<R>(known_roots<p * q>.sine[i * k]);
        }
    return table;
}
template <class R, int p, int q>
constexpr Numbers<R, 2 * p * q> last_roots = roots_of_last<R, p, q>();

// w(2m)^-k of the elements k < m / 2 that join or split halves, W cosines and W sines in turn.
template <class R, int m>
constexpr Numbers<R, m> roots_of_halves()
{
    constexpr int W = lanes_of_steps<R>(m);
    Numbers<R, m> table = {};
    for (int k = 0; k < m / 2; ++k) {
        const int from = k / W * W + element_of<R, W, Lanes::near>(k % W), at = k / W * 2 * W + k % W;
        table.at[at] = static_cast<R>(known_roots<2 * m>.cosine[from]);
        table.at[at + W] = static_cast<R>(known_roots<2 * m>.sine[from]);
    }
    return table;
}
template <class R, int m>
constexpr Numbers<R, m> half_roots = roots_of_halves<R, m>();

// Calls work(0), work(1) ... with numbers that the compiler knows.
template <class Work, int... k>
ORVEL_INLINE void written_out(Work work, std::integer_sequence<int, k...>)
{
    (work(std::integral_constant<int, k>()), ...);
}
template <int count, class Work>
ORVEL_INLINE void written_out(Work work)
{
    written_out(work, std::make_integer_sequence<int, count>());
}

// The last factor of a length in registers.
constexpr int last_part(int n)
{
    return n <= 5 || n == 7 ? n : n % 5 == 0 ? 5 : n % 7 == 0 ? 7 : n % 4 == 0 ? 4 : 3;
}

// W transforms of length n. Element j of each is read(j).
template <class R, int W, int n, class Read>
ORVEL_INLINE void transform_lanes(Complex<R, W>* x, Read read)
{
    constexpr int s = last_part(n), r = n / s;
    Complex<R, W> z[n];
    if constexpr (r == 1) {
        written_out<n>([&](auto j) ORVEL_LAMBDA { x[j] = read(j); });
        Butterfly<R, W, n>::run(x, 1);
    } else if constexpr (r % s != 0 && s % r != 0) {
        // Element s a + r b belongs to a and b, result k to its remainders by r and s.
        written_out<s>([&](auto b) ORVEL_LAMBDA {
            written_out<r>([&](auto a) ORVEL_LAMBDA { z[a + r * b] = read((s * a + r * b) % n); });
            Butterfly<R, W, r>::run(z + r * b, 1);
        });
        written_out<r>([&](auto a) ORVEL_LAMBDA { Butterfly<R, W, s>::run(z + a, r); });
        written_out<n>([&](auto k) ORVEL_LAMBDA { x[k] = z[k % r + r * (k % s)]; });
    } else {
        written_out<s>([&](auto i) ORVEL_LAMBDA {
            written_out<r>([&](auto j) ORVEL_LAMBDA { z[i + s * j] = read(i + s * j); });
            Butterfly<R, W, r>::run(z + i, s);
            written_out<r>([&](auto k) ORVEL_LAMBDA {
                constexpr int turn = decltype(i)::value * decltype(k)::value;
                if constexpr (4 * turn == n) {
                    z[i + s * k] = {z[i + s * k].im, -z[i + s * k].re};
                } else if constexpr (turn > 0) {
                    constexpr R cosine = static_cast<R>(exact_cosine(turn, n));
                    constexpr R sine = static_cast<R>(exact_sine(turn, n));
                    z[i + s * k] = turned<R, W>(z[i + s * k], cosine, sine);
                }
            });
        });
        written_out<r>([&](auto k) ORVEL_LAMBDA {
            Butterfly<R, W, s>::run(z + s * k, 1);
            written_out<s>([&](auto i) ORVEL_LAMBDA { x[k + r * i] = z[s * k + i]; });
        });
    }
}

// Complex numbers in memory: interleaved; so with the parts exchanged; or rows, the real parts of a vector
// before its imaginary parts, with the lanes as they are. Here a look at the form in each call would cost up
// to a third of the time.
enum class Form { interleaved, exchanged, rows };

// A vector from element e on.
template <class R, int W, Form form>
ORVEL_INLINE Complex<R, W> take(const R* p, int64_t e)
{
    if constexpr (form == Form::rows) return {load_once<R, W>(p + 2 * e), load_once<R, W>(p + 2 * e + W)};
    const Complex<R, W> z = read_interleaved<R, W, Lanes::near>(p + 2 * e);
    return form == Form::exchanged ? exchanged(z) : z;
}
template <class R, int W, Form form>
ORVEL_INLINE void put(R* p, int64_t e, Complex<R, W> z)
{
    if constexpr (form == Form::rows) {
        isa::at<W>(p + 2 * e) = z.re;
        isa::at<W>(p + 2 * e + W) = z.im;
    } else {
        write_interleaved<R, W, Lanes::near>(p + 2 * e, form == Form::exchanged ? exchanged(z) : z);
    }
}

// The columns b..b+W-1 with A numbers each become rows: those of the lanes k..k+W-1 begin at 2 * B * k.
template <class R, int W, int A>
ORVEL_INLINE void put_columns(R* rows, int64_t B, int64_t b, const Complex<R, W> (&z)[A])
{
#pragma GCC unroll 2
    for (int part = 0; part < 2; ++part)
#pragma GCC unroll 16
        for (int k = 0; k < A; k += W) {
            Vector<R, W> x[W];
#pragma GCC unroll 16
            for (int t = 0; t < W; ++t) {
                const Complex<R, W>& from = z[k + element_of<R, W, Lanes::near>(t)];
                x[t] = part == 0 ? from.re : from.im;
            }
            isa::transpose<R, W>(x);
            R* const to = rows + 2 * (B * k + W * b) + W * part;
#pragma GCC unroll 16
            for (int t = 0; t < W; ++t) isa::at<W>(to + 2 * W * element_of<R, W, Lanes::near>(t)) = x[t];
        }
}

// The B transforms of length A. The compiler may know B, or is kept from thinking about it.
template <class R, int W, int A, Form from, bool known>
ORVEL_INLINE void first_step(const R* in, R* rows, int64_t B)
{
#pragma GCC unroll 1
    for (int64_t b = 0; b < B; b += W) {
        const R* const column = hidden<!known>(in + 2 * b);
        const int64_t step = hidden<!known>(B);
        Complex<R, W> z[A];
        transform_lanes<R, W, A>(z, [&](int j) { return take<R, W, from>(column, step * j); });
        put_columns<R, W, A>(rows, B, b, z);
    }
}

// A function of its own, which the longer transforms share. In these no loop is to be written out.
constexpr int shortest_sharing = 128;
template <class R, int W, int A, Form from>
ORVEL_SHARED void shared_first_step(const R* in, R* rows, int64_t B)
{
    first_step<R, W, A, from, false>(in, rows, B);
}

// The second and last one of two: all rows of a block of lanes.
template <class R, int n, Form to>
ORVEL_INLINE void second_step(const R* rows, const R* roots, R* out, int k)
{
    constexpr int W = lanes_of_steps<R>(n), A = steps_of(n).a, B = n / A;
    const auto element = [&](int b) {
        const Complex<R, W> z = take<R, W, Form::rows>(rows, W * b);
        const R* const root = roots + 2 * W * b;
        return b == 0 ? z : turned_by<R, W, Twiddles::each>(z, root, root + W);
    };
    Complex<R, W> z[B];
    transform_lanes<R, W, B>(z, element);
    for_each<B>([&](int j) { put<R, W, to>(out, k + A * j, z[j]); });
}

template <class R>
constexpr int longest_with_all_roots = 8192 / static_cast<int>(sizeof(R));

// The second one of three: every Qth row, in place. Either `roots` are those of all rows, or those of Q j,
// and all rows of an i share those `behind` the transforms: that takes longer, but the tables are much
// smaller.
template <class R, int W, int P, bool shared>
ORVEL_SHARED void middle_step(R* rows, const R* roots, const R* behind, int64_t Q)
{
#pragma GCC unroll 1
    for (int64_t i = 0; i < Q; ++i) {
        R* const column = hidden<true>(rows + 2 * W * i);
        const int64_t step = hidden<true>(W * Q);
        const R* const before = shared ? roots : roots + 2 * W * P * i;
        const auto element = [&](int j) {
            const Complex<R, W> z = take<R, W, Form::rows>(column, step * j);
            const R* const root = before + 2 * W * j;
            return shared && j == 0 ? z : turned_by<R, W, Twiddles::each>(z, root, root + W);
        };
        Complex<R, W> z[P];
        transform_lanes<R, W, P>(z, element);
        if constexpr (shared) {
            const Complex<R, W> root = take<R, W, Form::rows>(behind, W * i);
            for_each<P>([&](int k) { z[k] = turned<R, W>(z[k], root.re, root.im); });
        }
        for_each<P>([&](int k) { put<R, W, Form::rows>(column, step * k, z[k]); });
    }
}

// The last one of three: Q neighbouring rows of P * Q, whose roots are `roots`.
template <class R, int W, int A, int Q, Form to>
ORVEL_SHARED void last_step(const R* rows, const R* roots, R* out, int64_t P)
{
#pragma GCC unroll 1
    for (int64_t k = 0; k < P; ++k) {
        const auto element = [&](int i) {
            const Complex<R, W> z = take<R, W, Form::rows>(rows, W * (Q * k + i));
            const R* const root = roots + 2 * (Q * k + i);
            return i == 0 ? z : turned_by<R, W, Twiddles::none>(z, root, root + 1);
        };
        Complex<R, W> z[Q];
        transform_lanes<R, W, Q>(z, element);
        R* const column = hidden<true>(out + 2 * A * k);
        const int64_t step = hidden<true>(A * P);
        for_each<Q>([&](int j) { put<R, W, to>(column, step * j, z[j]); });
    }
}

// The transform of length n.
template <class R, int n, Form from, Form to>
ORVEL_INLINE void transform(const R* in, R* out, R* rows_elsewhere)
{
    constexpr Steps s = steps_of(n);
    if constexpr (s.p == 1) {
        Complex<R, 1> z[n];
        transform_lanes<R, 1, n>(z, [&](int j) { return take<R, 1, from>(in, j); });
        for_each<n>([&](int k) { put<R, 1, to>(out, k, z[k]); });
    } else {
        constexpr int W = lanes_of_steps<R>(n), B = n / s.a;
        constexpr bool on_stack = 2 * n * sizeof(R) <= most_on_stack;
        alignas(64) R rows_here[on_stack ? 2 * n : 1];
        R* const rows = on_stack ? rows_here : rows_elsewhere;
        if constexpr (n < shortest_sharing)
            first_step<R, W, s.a, from, true>(in, rows, B);
        else
            shared_first_step<R, W, s.a, from>(in, rows, B);
        const int end = n < shortest_sharing || s.a == W ? s.a : hidden<true>(s.a);
#pragma GCC unroll 1
        for (int k = 0; k < end; k += W) {
            R* const block = rows + 2 * B * k;
            if constexpr (s.q == 1) {
                second_step<R, n, to>(block, row_roots<R, n, s.a, B, 1, W>.at + 2 * B * k, out, k);
            } else {
                if constexpr (n <= longest_with_all_roots<R>)
                    middle_step<R, W, s.p, false>(block, row_roots<R, n, s.a, s.p, s.q, W>.at + 2 * B * k,
                                                  nullptr, s.q);
                else
                    middle_step<R, W, s.p, true>(block,
                                                 row_roots<R, s.a * s.p, s.a, s.p, 1, W>.at + 2 * s.p * k,
                                                 row_roots<R, n, s.a, 1, s.q, W>.at + 2 * s.q * k, s.q);
                last_step<R, W, s.a, s.q, to>(block, last_roots<R, s.p, s.q>.at, out + 2 * k, s.p);
            }
        }
    }
}

}  // namespace
}  // namespace orvel::fft
