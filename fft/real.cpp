// fft/real.cpp - FFTRI, FFTRF, FFTRB, F2TRF, F2TRB, F3TRF: transforms of real sequences
#include "fft/entry.h"
#include "fft/halves.h"
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

template <class R>
void f2trf(frame::State& state, int32_t n, const R* xseq, R* coef, R* wfr)
{
    Routine<R, "F2TRF"> me(state);
    Factors f;
    const int64_t length = n;
    if (!is_initialised(me, n, wfr + 2 * length, f)) return;
    if (n == 1)
        coef[0] = xseq[0];
    else
        real_forward<R>(f, xseq, coef, wfr, wfr + length);
}

template <class R>
void f2trb(frame::State& state, int32_t n, const R* coef, R* xseq, R* wfr)
{
    Routine<R, "F2TRB"> me(state);
    Factors f;
    const int64_t length = n;
    if (!is_initialised(me, n, wfr + 2 * length, f)) return;
    if (n == 1)
        xseq[0] = coef[0];
    else
        real_backward<R>(f, coef, xseq, wfr, wfr + length);
}

template <class R>
void f2trf_entry(const int32_t* n, const R* xseq, R* coef, R* wfr)
{
    f2trf<R>(frame::state(), *n, xseq, coef, wfr);
}

template <class R>
void f2trb_entry(const int32_t* n, const R* coef, R* xseq, R* wfr)
{
    f2trb<R>(frame::state(), *n, coef, xseq, wfr);
}

template <class R>
void f3trf(const int32_t* n, R* c, R* ch, const R* wa, const R* fac)
{
    Routine<R, "F3TRF"> me;
    Factors f;
    if (is_initialised(me, *n, fac, f) && *n > 1) real_forward<R>(f, c, c, ch, wa);
}

// The work vector of one call.
template <class R, class Frame>
bool prepare(Frame& me, int32_t n, Scratch<R>& wfr)
{
    if (!is_length(me, n)) return false;
    if (!wfr.allocate(2 * int64_t{n} + 15)) {
        no_storage(me, n);
        return false;
    }
    initialise<R>(n, wfr);
    return true;
}

template <class R>
void fftrf(const int32_t* n, const R* xseq, R* coef)
{
    Routine<R, "FFTRF"> me;
    Scratch<R> wfr;
    if (prepare(me, *n, wfr)) f2trf<R>(me.state(), *n, xseq, coef, wfr);
}

template <class R>
void fftrb(const int32_t* n, const R* coef, R* xseq)
{
    Routine<R, "FFTRB"> me;
    Scratch<R> wfr;
    if (prepare(me, *n, wfr)) f2trb<R>(me.state(), *n, coef, xseq, wfr);
}

}  // namespace

}  // namespace orvel::fft

using namespace orvel::fft;

ORVEL_EXPORT(FFTRI, fftri_, 2, fftri<float>);
ORVEL_EXPORT(DFFTRI, dfftri_, 2, fftri<double>);
ORVEL_EXPORT(FFTRF, fftrf_, 3, fftrf<float>);
ORVEL_EXPORT(DFFTRF, dfftrf_, 3, fftrf<double>);
ORVEL_EXPORT(FFTRB, fftrb_, 3, fftrb<float>);
ORVEL_EXPORT(DFFTRB, dfftrb_, 3, fftrb<double>);
ORVEL_EXPORT(F2TRF, f2trf_, 4, f2trf_entry<float>);
ORVEL_EXPORT(DF2TRF, df2trf_, 4, f2trf_entry<double>);
ORVEL_EXPORT(F2TRB, f2trb_, 4, f2trb_entry<float>);
ORVEL_EXPORT(DF2TRB, df2trb_, 4, f2trb_entry<double>);
ORVEL_EXPORT(F3TRF, f3trf_, 5, f3trf<float>);
ORVEL_EXPORT(DF3TRF, df3trf_, 5, f3trf<double>);
