// fft/complex.cpp - FFTCI, FFTCF, FFTCB, F2TCF, F2TCB: transforms of complex sequences
#include <complex>
#include <type_traits>

#include "fft/checks.h"
#include "fft/roots.h"
#include "fft/short.h"
#include "fft/transform.h"
#include "frame/export.h"
#include "orvel/fft.h"

namespace orvel::fft {

namespace {

template <class R>
void initialise(int64_t n, R* wfc)
{
    if (n == 1) return;
    const Factors f = factorize(n);
    store_tables<R>(f, wfc + 2 * n);
    store_factors<R>(f, wfc + 4 * n);
}

template <class R>
void fftci(const int32_t* n, R* wfc)
{
    Routine<R, "FFTCI"> me;
    if (is_length(me, *n)) initialise<R>(*n, wfc);
}

// The passes do not write the input: it is const for the caller.
template <class R, bool forward, class Frame>
[[gnu::noinline]] void transform_any(frame::State& state, int32_t n, const std::complex<R>* in,
                                     std::complex<R>* out, R* wfc, R* cwork)
{
    Frame me(state);
    Factors f;
    const int64_t length = n;
    if (!is_initialised(me, n, wfc + 4 * length, f)) return;
    if (n == 1) {
        *out = *in;
        return;
    }
    R* const x = const_cast<R*>(reinterpret_cast<const R*>(in));
    transform<R>(f, wfc + 2 * length,
                 {interleaved(x, forward), interleaved(reinterpret_cast<R*>(out), forward), wfc, cwork});
}

template <class R, bool forward>
void f2tc(frame::State& state, int32_t n, const std::complex<R>* in, std::complex<R>* out, R* wfc, R* cwork)
{
    using Frame = std::conditional_t<forward, Routine<R, "F2TCF">, Routine<R, "F2TCB">>;
    const int place = place_of<false>(n, wfc, 4);
    if (place < 0) return transform_any<R, forward, Frame>(state, n, in, out, wfc, cwork);
    Frame::visit(state);
    transform_short<forward ? forward_complex : backward_complex, R>(place, reinterpret_cast<const R*>(in),
                                                                     reinterpret_cast<R*>(out), wfc);
}

template <class R, bool forward>
void f2tc_entry(const int32_t* n, const std::complex<R>* in, std::complex<R>* out, R* wfc, R* cwork)
{
    f2tc<R, forward>(frame::state(), *n, in, out, wfc, cwork);
}

template <class R, bool forward, class Frame>
[[gnu::noinline]] void with_storage(frame::State& state, int32_t n, const std::complex<R>* in,
                                    std::complex<R>* out)
{
    Frame me(state);
    if (!is_length(me, n)) return;
    Scratch<R> wfc, cwork;
    const int64_t length = n;
    if (!wfc.allocate(4 * length + 15) || !cwork.allocate(2 * length)) return no_storage(me, n);
    initialise<R>(length, wfc);
    f2tc<R, forward>(me.state(), n, in, out, wfc, cwork);
}

template <class R, bool forward>
void front(const int32_t* n, const std::complex<R>* in, std::complex<R>* out)
{
    using Frame = std::conditional_t<forward, Routine<R, "FFTCF">, Routine<R, "FFTCB">>;
    frame::State& state = frame::state();
    const int place = place_of<false>(*n);
    Scratch<R> rows;
    if (place < 0 || (needs_rows<R>(*n) && !rows.allocate(2 * int64_t{*n})))
        return with_storage<R, forward, Frame>(state, *n, in, out);
    Frame::visit(state);
    transform_short<forward ? forward_complex : backward_complex, R>(place, reinterpret_cast<const R*>(in),
                                                                     reinterpret_cast<R*>(out), rows);
}

}  // namespace

}  // namespace orvel::fft

using namespace orvel::fft;

ORVEL_EXPORT(FFTCI, fftci_, 2, fftci<float>);
ORVEL_EXPORT(DFFTCI, dfftci_, 2, fftci<double>);
ORVEL_EXPORT(FFTCF, fftcf_, 3, (front<float, true>));
ORVEL_EXPORT(DFFTCF, dfftcf_, 3, (front<double, true>));
ORVEL_EXPORT(FFTCB, fftcb_, 3, (front<float, false>));
ORVEL_EXPORT(DFFTCB, dfftcb_, 3, (front<double, false>));
ORVEL_EXPORT(F2TCF, f2tcf_, 5, (f2tc_entry<float, true>));
ORVEL_EXPORT(DF2TCF, df2tcf_, 5, (f2tc_entry<double, true>));
ORVEL_EXPORT(F2TCB, f2tcb_, 5, (f2tc_entry<float, false>));
ORVEL_EXPORT(DF2TCB, df2tcb_, 5, (f2tc_entry<double, false>));
