// fft/two_passes.h - long powers of two, also with one factor 3 or 5, in two passes over blocks
//
// What makes them fast, in the order of its weight, each measured alone on a machine with 8 ways of 4 KB in
// the nearest cache:
//
// - no rows a power of two apart. Rows of data, of twiddle factors or of results at such a distance displace
//   each other from the cache before they are used up, which doubles the time of a pass. So the rows between
//   the passes are further apart than they are long, and the last group is a single factor;
// - twiddle factors lie in the order in which the columns take them (see Group), 16 at a time: one stream,
//   from which hardware fetches ahead, instead of thirty;
// - what is between the passes is aligned, whatever the caller's arrays are: vectors across two lines cost as
//   much again;
// - from 4 MB on columns are prefetched for one round ahead, to the second cache: each of their elements is
//   in another page;
// - from 8 MB on results are written by non-temporal stores: the caches would read each line before;
// - loads are forced into registers (`load_once`), and short inner loops must not know their pointers
//   (`hidden`): compilers would read operands twice and keep one spilled pointer for each row.
//
// Real transforms have no room for longer rows: theirs displace each other, and only the order of the twiddle
// factors helps.
#pragma once

#include "fft/transform.h"

namespace orvel::fft {

// In one array, where there is no spare.
template <class R>
int64_t numbers_of_two_passes(const Factors& f);

// `pass` has its input.
template <class R>
void two_passes(const Factors& f, const Plan& plan, const R* tables, const Storage<R>& s, Pass<R>& pass);

}  // namespace orvel::fft
