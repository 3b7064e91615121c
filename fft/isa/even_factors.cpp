// fft/isa/even_factors.cpp - passes of the factors 2 and 4, for the level ORVEL_ISA
#include "fft/isa/pass.h"

namespace orvel::fft {

namespace {

template <class R>
void even_pass(const Pass<R>& p)
{
    if (p.group[0].first == 4)
        p.group[0].second == 4   ? run_pass<R, 4, 4>(p)
        : p.group[0].second == 5 ? run_pass<R, 4, 5>(p)
                                 : run_pass<R, 4, 1>(p);
    else
        p.group[0].second == 4 ? run_pass<R, 2, 4>(p) : run_pass<R, 2, 1>(p);
}

}  // namespace

const isa::ForReals<PassLoop> ORVEL_ISA::even_passes = {even_pass<float>, even_pass<double>};

}  // namespace orvel::fft
