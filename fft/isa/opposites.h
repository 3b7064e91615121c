// fft/isa/opposites.h - the transform of a real sequence from that of its halves, and the way back
//
// With E and O the transforms of the elements of even and odd index, Z = E + i O, and X(k) = E(k) +
// w^k O(k), X(m - k) = conj(E(k) - w^k O(k)), w = exp(-pi i / m).
#pragma once

#include "fft/isa/complex.h"

namespace orvel::fft {
namespace {

// Z to X; `half_root` is half of exp(pi i k / m).
template <class R, int W>
ORVEL_INLINE Opposites<R, W> joined(Complex<R, W> a, Complex<R, W> b, Complex<R, W> half_root)
{
    const R half = R(0.5);
    const Complex<R, W> e = {a.re + b.re, a.im - b.im}, o = {a.im + b.im, b.re - a.re};
    const Complex<R, W> t = turned<R, W>(o, half_root.re, half_root.im);
    return {{e.re * half + t.re, e.im * half + t.im}, {e.re * half - t.re, t.im - e.im * half}};
}

// X to twice Z; `root` is exp(pi i k / m).
template <class R, int W>
ORVEL_INLINE Opposites<R, W> split(Complex<R, W> a, Complex<R, W> b, Complex<R, W> root)
{
    const Complex<R, W> e = {a.re + b.re, a.im - b.im}, d = {a.re - b.re, a.im + b.im};
    const Complex<R, W> o = {d.re * root.re - d.im * root.im, d.re * root.im + d.im * root.re};
    return {{e.re - o.im, e.im + o.re}, {e.re + o.im, o.re - e.im}};
}

}  // namespace
}  // namespace orvel::fft
