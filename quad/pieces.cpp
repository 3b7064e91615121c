// quad/pieces.cpp - Q10G: order of the pieces by error; Q4NG: machine values
#include "quad/pieces.h"

#include <algorithm>

#include "frame/export.h"
#include "orvel/quad.h"

namespace orvel::quad {

// The published ordering. Two pieces are out of order after a bisection: maxerr, whose error has mostly
// become smaller, moves down from position nrmax; the new one is inserted from the end.
template <class T>
void q10g(int32_t maxsub, int32_t last, int32_t& maxerr, T& ermax, const T* suberr, int32_t* subord,
          int32_t& nrmax)
{
    const auto error = [&](int32_t piece) { return suberr[piece - 1]; };
    const auto order = [&](int64_t place) -> int32_t& { return subord[place - 1]; };
    if (last <= 2) {
        order(1) = 1;
        order(2) = 2;
    } else {
        // Only a difficult integrand makes the error larger by a bisection; then maxerr first moves up.
        const T larger = error(maxerr);
        for (; nrmax > 1 && larger > error(order(nrmax - 1)); --nrmax) order(nrmax) = order(nrmax - 1);

        const int64_t end = ordered_entries(maxsub, last), before = end - 1;
        const T smaller = error(last);
        int64_t place = int64_t{nrmax} + 1;
        for (; place <= before && larger < error(order(place)); ++place) order(place - 1) = order(place);
        if (place > before) {
            order(before) = maxerr;
            order(end) = last;
        } else {
            order(place - 1) = maxerr;
            int64_t gap = end;
            for (; gap > place && smaller >= error(order(gap - 1)); --gap) order(gap) = order(gap - 1);
            order(gap) = last;
        }
    }
    maxerr = order(nrmax);
    ermax = error(maxerr);
}

template void q10g(int32_t, int32_t, int32_t&, float&, const float*, int32_t*, int32_t&);
template void q10g(int32_t, int32_t, int32_t&, double&, const double*, int32_t*, int32_t&);

namespace {

template <class T>
void order_pieces(const int32_t* maxsub, const int32_t* last, int32_t* maxerr, T* ermax, const T* suberr,
                  int32_t* subord, int32_t* nrmax)
{
    const int32_t n = *last;
    const auto is_piece = [&](int32_t k) { return k >= 1 && k <= n; };
    if (n < 2 || n > *maxsub || !is_piece(*maxerr)) return;
    const int64_t entries = n == 2 ? 1 : ordered_entries(*maxsub, n - 1);
    if (*nrmax < 1 || *nrmax > entries || !std::all_of(subord, subord + entries * (n > 2), is_piece)) return;
    q10g(*maxsub, n, *maxerr, *ermax, suberr, subord, *nrmax);
}

template <class T>
void machine_values(T* epmach, T* uflow, T* oflow)
{
    *epmach = spacing<T>;
    *uflow = smallest<T>;
    *oflow = largest<T>;
}

}  // namespace

}  // namespace orvel::quad

ORVEL_EXPORT_REALS(Q10G, q10g_, DQ10G, dq10g_, 7, orvel::quad::order_pieces);
ORVEL_EXPORT_REALS(Q4NG, q4ng_, DQ4NG, dq4ng_, 3, orvel::quad::machine_values);
