// fft/isa/small_odd.cpp - passes of the factors 3, 5, 7, 11 and 13, for the level ORVEL_ISA
#include "fft/isa/pass.h"

namespace orvel::fft {

namespace {

template <class R>
void small_odd(const Pass<R>& p)
{
    switch (p.group[0].first) {
        case 3:
            return p.group[0].second == 3   ? pass<R, 3, 3>(p)
                   : p.group[0].second == 5 ? pass<R, 3, 5>(p)
                                            : pass<R, 3, 1>(p);
        case 5:
            return pass<R, 5, 1>(p);
        case 7:
            return pass<R, 7, 1>(p);
        case 11:
            return pass<R, 11, 1>(p);
        default:
            return pass<R, 13, 1>(p);
    }
}

}  // namespace

namespace ORVEL_ISA {
extern const PassLoop small_odd_pass;
const PassLoop small_odd_pass = {small_odd<float>, small_odd<double>};
}  // namespace ORVEL_ISA

}  // namespace orvel::fft
