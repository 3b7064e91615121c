/* include/orvel/kernels.h - vector and matrix kernels
 *
 * A vector is given as (N, X, INCX): N elements INCX apart. In routines with two or three vectors a negative
 * increment runs backwards through the vector: its first element is X(1 + (1 - N)*INCX). A matrix is stored by
 * columns with a leading dimension. The first letter tells the precision: S single, D double, C single
 * complex, Z double complex.
 *
 * The upper-case names are in liborvel. The lower-case Fortran names of the standard kernels (dgemm_ and so on)
 * are in liborvel_blas, so that loading liborvel never takes over another library's kernels.
 *
 * Sums are formed from several partial sums; the result depends on the arguments and on the instruction set of
 * the machine, never on alignment, threads or time. No kernel keeps state.
 *
 * Source of the standard kernels: C. Lawson, R. Hanson, D. Kincaid, F. Krogh, Basic linear algebra subprograms
 * for Fortran usage, 1979; J. Dongarra, J. Du Croz, S. Hammarling, R. Hanson, An extended set, 1988; J. Dongarra,
 * J. Du Croz, I. Duff, S. Hammarling, A set of level 3 basic linear algebra subprograms, 1990.
 */
#ifndef ORVEL_KERNELS_H
#define ORVEL_KERNELS_H

#include "orvel/types.h"

ORVEL_BEGIN

/* ---- level 1: vectors --------------------------------------------------------------------------- */

/* ---- vector utilities and accumulators of the library ------------------------------------------- */

/* ---- levels 2 and 3: matrices ------------------------------------------------------------------- */

ORVEL_END

#endif
