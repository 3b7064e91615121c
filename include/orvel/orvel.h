/* include/orvel/orvel.h - every public declaration of the library */
#ifndef ORVEL_ORVEL_H
#define ORVEL_ORVEL_H

#include "orvel/fft.h"
#include "orvel/frame.h"
#include "orvel/host.h"
#include "orvel/interp.h"
#include "orvel/kernels.h"
#include "orvel/linsys.h"
#include "orvel/matrices.h"
#include "orvel/optim.h"
#include "orvel/quad.h"
#include "orvel/random.h"
#include "orvel/special.h"
#include "orvel/util.h"
#include "orvel/zeros.h"

#endif
