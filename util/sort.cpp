// util/sort.cpp - SVRGN, SVRGP, SVIGN, SVIGP and SVRBN, SVRBP, SVIBN, SVIBP: sorting
#include "util/sort.h"

#include <cstring>

#include "frame/export.h"
#include "frame/routine.h"
#include "orvel/util.h"

namespace orvel::util {

namespace {

template <class T>
void copy(int32_t n, const T* from, T* to)
{
    if (from != to) std::memmove(to, from, static_cast<std::size_t>(n) * sizeof(T));
}

template <class T>
void by_value(int32_t n, const T* from, T* to, int32_t* labels)
{
    copy(n, from, to);
    isa::of_type<T>(sort_table()).by_value(n, to, labels);
}

template <class T>
void by_magnitude(int32_t n, const T* from, T* to, int32_t* labels)
{
    copy(n, from, to);
    isa::of_type<T>(sort_table()).by_magnitude(n, to, labels);
}

// The text of each check is that of its routine; they differ in a comma and in the place of the number.

template <class T>
void svrgn(const int32_t* n, const T* ra, T* rb)
{
    Routine<T, "SVRGN"> me;
    if (*n < 1)
        return me.post(terminal, 1,
                       "N = %(I1).  The length of RA and RB, N, must be greater than or equal to one.",
                       {i(1, *n)});
    by_value(*n, ra, rb, nullptr);
}

template <class T>
void svrgp(const int32_t* n, const T* ra, T* rb, int32_t* iperm)
{
    Routine<T, "SVRGP"> me;
    if (*n < 1)
        return me.post(
            terminal, 1,
            "The length of vectors RA, RB and IPERM must be greater than or equal to one.  On input the length, N, is given as %(I1).",
            {i(1, *n)});
    by_value(*n, ra, rb, iperm);
}

void svign(const int32_t* n, const int32_t* ia, int32_t* ib)
{
    Routine<float, "SVIGN"> me;
    if (*n < 1)
        return me.post(
            terminal, 1,
            "The length of vector IA must be greater than or equal to one.  On input the length, N, is given as %(I1).",
            {i(1, *n)});
    by_value(*n, ia, ib, nullptr);
}

void svigp(const int32_t* n, const int32_t* ia, int32_t* ib, int32_t* iperm)
{
    Routine<float, "SVIGP"> me;
    if (*n < 1)
        return me.post(
            terminal, 1,
            "The length of vectors IA, IB, and IPERM must be greater than or equal to one.  On input the length, N, is given as %(I1).",
            {i(1, *n)});
    by_value(*n, ia, ib, iperm);
}

template <class T>
void svrbn(const int32_t* n, const T* ra, T* rb)
{
    Routine<T, "SVRBN"> me;
    if (*n < 1)
        return me.post(terminal, 1,
                       "N = %(I1).  The length of RA and RB, N, must be greater than or equal to one.",
                       {i(1, *n)});
    by_magnitude(*n, ra, rb, nullptr);
}

template <class T>
void svrbp(const int32_t* n, const T* ra, T* rb, int32_t* iperm)
{
    Routine<T, "SVRBP"> me;
    if (*n < 1)
        return me.post(
            terminal, 1,
            "The length of vectors RA, RB, and IPERM must be greater than or equal to one.  On input the length, N, is given as %(I1).",
            {i(1, *n)});
    by_magnitude(*n, ra, rb, iperm);
}

void svibn(const int32_t* n, const int32_t* ia, int32_t* ib)
{
    Routine<float, "SVIBN"> me;
    if (*n < 1)
        return me.post(
            terminal, 1,
            "The length of vector IA must be greater than or equal to one.  On input the length, N, is given as %(I1).",
            {i(1, *n)});
    by_magnitude(*n, ia, ib, nullptr);
}

void svibp(const int32_t* n, const int32_t* ia, int32_t* ib, int32_t* iperm)
{
    Routine<float, "SVIBP"> me;
    if (*n < 1)
        return me.post(
            terminal, 1,
            "The length of vectors IA, IB, and IPERM must be greater than or equal to one.  On input the length, N, is given as %(I1).",
            {i(1, *n)});
    by_magnitude(*n, ia, ib, iperm);
}

}  // namespace

template <class T>
Difficulties sort_labelled(int64_t n, T* x, int32_t* labels)
{
    return isa::of_type<T>(sort_table()).by_value(n, x, labels);
}

template Difficulties sort_labelled(int64_t, float*, int32_t*);
template Difficulties sort_labelled(int64_t, double*, int32_t*);
template Difficulties sort_labelled(int64_t, int32_t*, int32_t*);

}  // namespace orvel::util

ORVEL_EXPORT(SVRGN, svrgn_, 3, orvel::util::svrgn<float>);
ORVEL_EXPORT(DSVRGN, dsvrgn_, 3, orvel::util::svrgn<double>);
ORVEL_EXPORT(SVRGP, svrgp_, 4, orvel::util::svrgp<float>);
ORVEL_EXPORT(DSVRGP, dsvrgp_, 4, orvel::util::svrgp<double>);
ORVEL_EXPORT(SVIGN, svign_, 3, orvel::util::svign);
ORVEL_EXPORT(SVIGP, svigp_, 4, orvel::util::svigp);
ORVEL_EXPORT(SVRBN, svrbn_, 3, orvel::util::svrbn<float>);
ORVEL_EXPORT(DSVRBN, dsvrbn_, 3, orvel::util::svrbn<double>);
ORVEL_EXPORT(SVRBP, svrbp_, 4, orvel::util::svrbp<float>);
ORVEL_EXPORT(DSVRBP, dsvrbp_, 4, orvel::util::svrbp<double>);
ORVEL_EXPORT(SVIBN, svibn_, 3, orvel::util::svibn);
ORVEL_EXPORT(SVIBP, svibp_, 4, orvel::util::svibp);
