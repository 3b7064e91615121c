// fft/real.cpp - FFTRI, FFTRF, FFTRB, F2TRF, F2TRB, F3TRF: transforms of real sequences
#include <type_traits>

#include "fft/checks.h"
#include "fft/real_by_complex.h"
#include "fft/short.h"
#include "frame/export.h"
#include "orvel/fft.h"

namespace orvel::fft {

namespace {

template <class R>
void initialise(int64_t n, R* wfr)
{
    if (n == 1) return;
    const Factors f = factorize(n);
    store_real_roots<R>(f, wfr + n);
    store_factors<R>(f, wfr + 2 * n);
}

template <class R>
void fftri(const int32_t* n, R* wfr)
{
    Routine<R, "FFTRI"> me;
    if (is_length(me, *n)) initialise<R>(*n, wfr);
}

template <class R, bool forward, class Frame>
[[gnu::noinline]] void transform_any(frame::State& state, int32_t n, const R* in, R* out, R* wfr)
{
    Frame me(state);
    Factors f;
    const int64_t length = n;
    if (!is_initialised(me, n, wfr + 2 * length, f)) return;
    if (n == 1)
        out[0] = in[0];
    else if (forward)
        real_forward<R>(f, in, out, wfr, wfr + length);
    else
        real_backward<R>(f, in, out, wfr, wfr + length);
}

template <class R, bool forward>
void f2tr(frame::State& state, int32_t n, const R* in, R* out, R* wfr)
{
    using Frame = std::conditional_t<forward, Routine<R, "F2TRF">, Routine<R, "F2TRB">>;
    const int place = place_of<true>(n, wfr, 2);
    if (place < 0) return transform_any<R, forward, Frame>(state, n, in, out, wfr);
    Frame::visit(state);
    transform_short<forward ? forward_real : backward_real, R>(place, in, out, nullptr);
}

template <class R>
void f2trf_entry(const int32_t* n, const R* xseq, R* coef, R* wfr)
{
    f2tr<R, true>(frame::state(), *n, xseq, coef, wfr);
}

template <class R>
void f2trb_entry(const int32_t* n, const R* coef, R* xseq, R* wfr)
{
    f2tr<R, false>(frame::state(), *n, coef, xseq, wfr);
}

template <class R>
void f3trf(const int32_t* n, R* c, R* ch, const R* wa, const R* fac)
{
    Routine<R, "F3TRF"> me;
    if (const int place = place_of<true>(*n, fac, 0); place >= 0)
        return transform_short<forward_real, R>(place, c, c, nullptr);
    Factors f;
    if (is_initialised(me, *n, fac, f) && *n > 1) real_forward<R>(f, c, c, ch, wa);
}

template <class R, bool forward, class Frame>
[[gnu::noinline]] void with_storage(frame::State& state, int32_t n, const R* in, R* out)
{
    Frame me(state);
    if (!is_length(me, n)) return;
    Scratch<R> wfr;
    if (!wfr.allocate(2 * int64_t{n} + 15)) return no_storage(me, n);
    initialise<R>(n, wfr);
    f2tr<R, forward>(me.state(), n, in, out, wfr);
}

template <class R, bool forward>
void front(const int32_t* n, const R* in, R* out)
{
    using Frame = std::conditional_t<forward, Routine<R, "FFTRF">, Routine<R, "FFTRB">>;
    frame::State& state = frame::state();
    const int place = place_of<true>(*n);
    if (place < 0) return with_storage<R, forward, Frame>(state, *n, in, out);
    Frame::visit(state);
    transform_short<forward ? forward_real : backward_real, R>(place, in, out, nullptr);
}

}  // namespace

}  // namespace orvel::fft

using namespace orvel::fft;

ORVEL_EXPORT(FFTRI, fftri_, 2, fftri<float>);
ORVEL_EXPORT(DFFTRI, dfftri_, 2, fftri<double>);
ORVEL_EXPORT(FFTRF, fftrf_, 3, (front<float, true>));
ORVEL_EXPORT(DFFTRF, dfftrf_, 3, (front<double, true>));
ORVEL_EXPORT(FFTRB, fftrb_, 3, (front<float, false>));
ORVEL_EXPORT(DFFTRB, dfftrb_, 3, (front<double, false>));
ORVEL_EXPORT(F2TRF, f2trf_, 4, f2trf_entry<float>);
ORVEL_EXPORT(DF2TRF, df2trf_, 4, f2trf_entry<double>);
ORVEL_EXPORT(F2TRB, f2trb_, 4, f2trb_entry<float>);
ORVEL_EXPORT(DF2TRB, df2trb_, 4, f2trb_entry<double>);
ORVEL_EXPORT(F3TRF, f3trf_, 5, f3trf<float>);
ORVEL_EXPORT(DF3TRF, df3trf_, 5, f3trf<double>);
