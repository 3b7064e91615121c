/* tests/packaging/layout.c - where the members of the exported blocks lie, in C and in C++: programs that
 * were compiled years ago, and common blocks of Fortran, know nothing but these places. binary.sh reads the
 * rows of blocks, too.
 */
#include <assert.h>
#include <stddef.h>

#include "orvel/orvel.h"

#define BLOCK(name, size) static_assert(sizeof(name) == (size), #name)
#define MEMBER(block, member, offset) \
    static_assert(offsetof(struct orvel_##block, member) == (offset), #member)

BLOCK(ERCOM1, 796);
BLOCK(ERCOM2, 2924);
BLOCK(ERCOM3, 8);
BLOCK(ERCOM4, 204);
BLOCK(ERCOM8, 124);
BLOCK(ERCOM9, 310);
BLOCK(R2NCOM, 7848);
BLOCK(MT32_STATE1, 8);
BLOCK(MT32_STATE2, 2496);
BLOCK(MT64_STATE1, 8);
BLOCK(MT64_STATE2, 2496);
BLOCK(MT_MASK1, 4);
BLOCK(MT_MASK2, 4);
BLOCK(MT_MASK3, 16);

MEMBER(ercom1, level, 0);
MEMBER(ercom1, maxlev, 4);
MEMBER(ercom1, msglen, 8);
MEMBER(ercom1, ertype, 12);
MEMBER(ercom1, ercode, 216);
MEMBER(ercom1, prttab, 420);
MEMBER(ercom1, stptab, 448);
MEMBER(ercom1, parlen, 476);
MEMBER(ercom1, post6, 480);
MEMBER(ercom1, post7, 484);
MEMBER(ercom1, level_reserved, 492);
MEMBER(ercom1, atttab, 692);
MEMBER(ercom1, trctab, 720);
MEMBER(ercom1, memslt, 748);
MEMBER(ercom1, linalg, 788);
MEMBER(ercom2, message, 0);
MEMBER(ercom2, parameters, 1024);
MEMBER(ercom2, rname, 1324);
MEMBER(ercom8, current, 0);
MEMBER(ercom8, line, 4);
MEMBER(ercom8, name_length, 44);
MEMBER(r2ncom, modulus, 0);
MEMBER(r2ncom, state, 8);
MEMBER(r2ncom, reciprocal, 16);
MEMBER(r2ncom, double_table, 24);
MEMBER(r2ncom, double_ready, 1048);
MEMBER(r2ncom, option, 1052);
MEMBER(r2ncom, single_ready, 1056);
MEMBER(r2ncom, single_table, 1060);
MEMBER(r2ncom, seed, 1572);
MEMBER(r2ncom, first, 1576);
MEMBER(r2ncom, words_ready, 1580);
MEMBER(r2ncom, second, 1584);
MEMBER(r2ncom, scale, 1588);
MEMBER(r2ncom, words, 1592);
MEMBER(mt_state1, ready, 0);
MEMBER(mt_state1, position, 4);
