// fft/isa/powers.cpp - passes of the factors 2 and 4, for the level ORVEL_ISA
#include "fft/isa/pass.h"

namespace orvel::fft {

namespace {

template <class R>
void powers(const Pass<R>& p)
{
    if (p.group[0].first == 4)
        p.group[0].second == 4 ? pass<R, 4, 4>(p) : pass<R, 4, 1>(p);
    else
        p.group[0].second == 4 ? pass<R, 2, 4>(p) : pass<R, 2, 1>(p);
}

}  // namespace

namespace ORVEL_ISA {
extern const PassLoop power_pass;
const PassLoop power_pass = {powers<float>, powers<double>};
}  // namespace ORVEL_ISA

}  // namespace orvel::fft
