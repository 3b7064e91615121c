// fft/isa/composite.cpp - transforms of short lengths with factors beside 2, for the level ORVEL_ISA
//
// A real sequence of even length is joined from halves; one of odd length is a complex one, whose way back
// goes forward, too, from the conjugate of the coefficients. Lengths that one step takes stay in registers.
#include "fft/isa/composite_steps.h"
#include "fft/isa/opposites.h"

namespace orvel::fft {

namespace {

constexpr Form plain = Form::interleaved;

template <class R, int place, Form form>
void complex_composite(const R* from, R* to, const CompositePlace<R>& at)
{
    composite<R, place, form>(from, to, at.rows);
}

template <class R>
struct ComplexLoops {
    CompositeLoop<R> forward[composite_count], backward[composite_count];
};
template <class R, int... place>
constexpr ComplexLoops<R> complex_loops_of(std::integer_sequence<int, place...>)
{
    return {{complex_composite<R, place, plain>...}, {complex_composite<R, place, Form::exchanged>...}};
}
using Places = std::make_integer_sequence<int, composite_count>;
template <class R>
constexpr ComplexLoops<R> complex_loops = complex_loops_of<R>(Places());

// ---- real sequences in registers --------------------------------------------------------------------------

template <class R, int m>
constexpr Complex<R, 1> root_of_half(int k, long double scale)
{
    return {static_cast<R>(scale * exact_cosine(k, 2 * m)), static_cast<R>(scale * exact_sine(k, 2 * m))};
}

template <class R, int m>
void forward_of_few_halves(const R* from, R* to, const CompositePlace<R>&)
{
    Complex<R, 1> z[m];
    transform_lanes<R, 1, m>(z, [&](int j) ORVEL_LAMBDA { return take<R, 1, plain>(from, j); });
    to[0] = z[0].re + z[0].im;
    to[2 * m - 1] = z[0].re - z[0].im;
    written_out<(m - 1) / 2>([&](auto i) ORVEL_LAMBDA {
        constexpr int k = decltype(i)::value + 1;
        constexpr Complex<R, 1> root = root_of_half<R, m>(k, 0.5L);
        const Opposites<R, 1> x = joined<R, 1>(z[k], z[m - k], root);
        write_interleaved<R, 1, Lanes::in_turn>(to + 2 * k - 1, x.low);
        write_interleaved<R, 1, Lanes::in_turn>(to + 2 * (m - k) - 1, x.high);
    });
    if constexpr (m % 2 == 0)
        write_interleaved<R, 1, Lanes::in_turn>(to + m - 1, {z[m / 2].re, -z[m / 2].im});
}

template <class R, int m>
void backward_of_few_halves(const R* from, R* to, const CompositePlace<R>&)
{
    Complex<R, 1> z[m];
    z[0] = {from[0] - from[2 * m - 1], from[0] + from[2 * m - 1]};
    written_out<(m - 1) / 2>([&](auto i) ORVEL_LAMBDA {
        constexpr int k = decltype(i)::value + 1;
        constexpr Complex<R, 1> root = root_of_half<R, m>(k, 1.0L);
        const Opposites<R, 1> x =
            split<R, 1>({from[2 * k - 1], from[2 * k]}, {from[2 * (m - k) - 1], from[2 * (m - k)]}, root);
        z[k] = exchanged(x.low);
        z[m - k] = exchanged(x.high);
    });
    if constexpr (m % 2 == 0) z[m / 2] = {-2 * from[m], 2 * from[m - 1]};
    Complex<R, 1> x[m];
    transform_lanes<R, 1, m>(x, [&](int j) ORVEL_LAMBDA { return z[j]; });
    written_out<m>([&](auto k) ORVEL_LAMBDA { put<R, 1, Form::exchanged>(to, k, x[k]); });
}

template <class R, int n>
void forward_of_few(const R* from, R* to, const CompositePlace<R>&)
{
    Complex<R, 1> z[n];
    transform_lanes<R, 1, n>(z, [&](int j) ORVEL_LAMBDA { return Complex<R, 1>{from[j], 0}; });
    to[0] = z[0].re;
    written_out<n / 2>(
        [&](auto k) ORVEL_LAMBDA { write_interleaved<R, 1, Lanes::in_turn>(to + 2 * k + 1, z[k + 1]); });
}

template <class R, int n>
void backward_of_few(const R* from, R* to, const CompositePlace<R>&)
{
    Complex<R, 1> z[n];
    transform_lanes<R, 1, n>(z, [&](int k) ORVEL_LAMBDA {
        return k == 0      ? Complex<R, 1>{from[0], 0}
               : 2 * k < n ? Complex<R, 1>{from[2 * k - 1], -from[2 * k]}
                           : Complex<R, 1>{from[2 * (n - k) - 1], from[2 * (n - k)]};
    });
    written_out<n>([&](auto j) ORVEL_LAMBDA { to[j] = z[j].re; });
}

// ---- real sequences of more steps -------------------------------------------------------------------------

// The pairs k and m - k of halves z(m), for `count` k from 1 on, become coefficients, or those become halves.
// The last vector overlaps the one before; a range that is shorter than a vector takes the next one.
template <class R, int W>
ORVEL_INLINE void join_pairs(const R* z, R* c, int64_t m, int64_t count, const R* cosine, const R* sine)
{
    constexpr Lanes in_turn = Lanes::in_turn;
    const R half = R(0.5);
    for (int64_t i = 0; i < count; i += W) {
        if (i > count - W) i = count - W;
        const int64_t k = 1 + i, opposite = m - k - W + 1;
        const Complex<R, W> root = {isa::at<W>(cosine + k) * half, isa::at<W>(sine + k) * half};
        const Opposites<R, W> x = joined(read_interleaved<R, W, in_turn>(z + 2 * k),
                                         reversed(read_interleaved<R, W, in_turn>(z + 2 * opposite)), root);
        write_interleaved<R, W, in_turn>(c + 2 * k - 1, x.low);
        write_interleaved<R, W, in_turn>(c + 2 * opposite - 1, reversed(x.high));
    }
}
template <class R, int W>
ORVEL_INLINE void split_pairs(const R* c, R* z, int64_t m, int64_t count, const R* cosine, const R* sine)
{
    constexpr Lanes in_turn = Lanes::in_turn;
    for (int64_t i = 0; i < count; i += W) {
        if (i > count - W) i = count - W;
        const int64_t k = 1 + i, opposite = m - k - W + 1;
        const Complex<R, W> root = {isa::at<W>(cosine + k), isa::at<W>(sine + k)};
        const Opposites<R, W> x =
            split(read_interleaved<R, W, in_turn>(c + 2 * k - 1),
                  reversed(read_interleaved<R, W, in_turn>(c + 2 * opposite - 1)), root);
        write_interleaved<R, W, in_turn>(z + 2 * k, x.low);
        write_interleaved<R, W, in_turn>(z + 2 * opposite, reversed(x.high));
    }
}

template <class R, bool joins>
ORVEL_INLINE void convert_pairs(const R* from, R* to, int64_t m, const R* halves)
{
    const int64_t count = (m - 1) / 2;
    const R *const cosine = halves, *const sine = halves + (m + 1) / 2;
    const auto convert = [&]<int W>(std::integral_constant<int, W>) ORVEL_LAMBDA {
        joins ? join_pairs<R, W>(from, to, m, count, cosine, sine)
              : split_pairs<R, W>(from, to, m, count, cosine, sine);
    };
    constexpr int wide = 32 / static_cast<int>(sizeof(R)), narrow = wide / 2;
    if constexpr (lanes<R> >= wide)
        if (count >= wide) return convert(std::integral_constant<int, wide>());
    if (count >= narrow) return convert(std::integral_constant<int, narrow>());
    convert(std::integral_constant<int, 1>());
}

template <class R>
void forward_of_halves(const R* from, R* to, const CompositePlace<R>& at)
{
    const int m = at.n;
    R z[2 * longest_composite];
    complex_loops<R>.forward[at.place](from, z, at);
    to[0] = z[0] + z[1];
    to[2 * m - 1] = z[0] - z[1];
    convert_pairs<R, true>(z, to, m, at.halves);
    if (m % 2 == 0) {
        to[m - 1] = z[m];
        to[m] = -z[m + 1];
    }
}

template <class R>
void backward_of_halves(const R* from, R* to, const CompositePlace<R>& at)
{
    const int m = at.n;
    R z[2 * longest_composite];
    z[0] = from[0] + from[2 * m - 1];
    z[1] = from[0] - from[2 * m - 1];
    convert_pairs<R, false>(from, z, m, at.halves);
    if (m % 2 == 0) {
        z[m] = 2 * from[m - 1];
        z[m + 1] = -2 * from[m];
    }
    complex_loops<R>.backward[at.place](z, to, at);
}

template <class R>
void forward_of_odd(const R* from, R* to, const CompositePlace<R>& at)
{
    const int n = at.n;
    R z[2 * longest_composite];
    for (int j = 0; j < n; ++j) z[2 * j] = from[j], z[2 * j + 1] = 0;
    complex_loops<R>.forward[at.place](z, z, at);
    to[0] = z[0];
    for (int k = 1; k < n; ++k) to[k] = z[k + 1];
}

template <class R>
void backward_of_odd(const R* from, R* to, const CompositePlace<R>& at)
{
    const int n = at.n;
    R z[2 * longest_composite];
    z[0] = from[0], z[1] = 0;
    for (int k = 1; k <= n / 2; ++k) {
        const R re = from[2 * k - 1], im = from[2 * k];
        z[2 * k] = re, z[2 * k + 1] = -im;
        z[2 * (n - k)] = re, z[2 * (n - k) + 1] = im;
    }
    complex_loops<R>.forward[at.place](z, z, at);
    for (int j = 0; j < n; ++j) to[j] = z[2 * j];
}

// The functions for the length of a place, if odd, and for its double.
template <class R, int place, bool forward, bool doubled>
constexpr CompositeLoop<R> real_loop()
{
    constexpr int n = composites[place].length();
    if constexpr (n == 2 || (!doubled && n % 2 == 0))
        return nullptr;
    else if constexpr (composites[place].second > 1)
        return doubled ? (forward ? forward_of_halves<R> : backward_of_halves<R>)
                       : (forward ? forward_of_odd<R> : backward_of_odd<R>);
    else if constexpr (doubled)
        return forward ? forward_of_few_halves<R, n> : backward_of_few_halves<R, n>;
    else
        return forward ? forward_of_few<R, n> : backward_of_few<R, n>;
}

template <class R, int... place>
constexpr CompositeLoops<R> loops_of(std::integer_sequence<int, place...>)
{
    return {{{complex_loops<R>.forward[place]...},
             {complex_loops<R>.backward[place]...},
             {real_loop<R, place, true, false>()..., real_loop<R, place, true, true>()...},
             {real_loop<R, place, false, false>()..., real_loop<R, place, false, true>()...}}};
}

}  // namespace

constinit const isa::ForReals<CompositeLoops> ORVEL_ISA::composite_loops = {loops_of<float>(Places()),
                                                                            loops_of<double>(Places())};

}  // namespace orvel::fft
