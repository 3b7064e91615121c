// fft/isa/small_odd.cpp - passes of the factors 3, 5 and 7, for the level ORVEL_ISA
#include "fft/isa/pass.h"

namespace orvel::fft {

namespace {

template <class R>
void small_odd_pass(const Pass<R>& p)
{
    if (p.group[0].first == 5 && p.group[0].second == 5) return run_pass<R, 5, 5>(p);
    if (p.group[0].first == 5) return run_pass<R, 5, 1>(p);
    if (p.group[0].first == 7) return run_pass<R, 7, 1>(p);
    p.group[0].second == 3   ? run_pass<R, 3, 3>(p)
    : p.group[0].second == 5 ? run_pass<R, 3, 5>(p)
                             : run_pass<R, 3, 1>(p);
}

}  // namespace

const isa::ForReals<PassLoop> ORVEL_ISA::small_odd_passes = {small_odd_pass<float>, small_odd_pass<double>};

}  // namespace orvel::fft
