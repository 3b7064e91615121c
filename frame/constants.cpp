// frame/constants.cpp - machine constants and unit numbers by index
#include "frame/constants.h"

#include <cstdlib>

#include "frame/export.h"
#include "frame/routine.h"
#include "frame/stop.h"
#include "frame/units.h"

namespace orvel::frame {

namespace {

constexpr int32_t integer_constants[13] = {0, 32, 4, 2, 31, 2147483647, 2, 24, -125, 128, 53, -1021, 1024};

template <class T>
[[gnu::cold, gnu::noinline]] T bad_index(int32_t n)
{
    Routine<T, "AMACH", "DMACH"> me;
    me.post(terminal, 5, "The argument must be between 1 and 8 inclusive. N = %(I1)", {i(1, n)});
    return machine<T>(6);
}

template <class T>
T constant(const int32_t* n)
{
    const int32_t k = *n;
    if (k < 1 || k > 8) [[unlikely]]
        return bad_index<T>(k);
    return machine<T>(k);
}

// IMACH and UMACH speak without the frame, whose tables and units they serve, and always stop.
[[noreturn, gnu::cold]] void complain_and_stop(int32_t unit, std::string_view text, int64_t value)
{
    {
        Page page(unit);
        page.text << "\n" << text;
        page.text.in_six(value) << ".\n\n";
        page.send();
    }
    stop(terminal, 5);
}

int32_t imach(const int32_t* n)
{
    if (*n < 1 || *n > 12)
        complain_and_stop(state().units[1],
                          " *** TERMINAL ERROR 5 from IMACH.  The argument\n"
                          " ***          must be between 1 and 12 inclusive.\n"
                          " ***          N = ",
                          *n);
    return integer_constants[*n];
}

void umach(const int32_t* n, int32_t* nunit)
{
    State& s = state();
    if (*n >= 1 && *n <= 3)
        *nunit = s.units[*n - 1];
    else if (*n <= -1 && *n >= -3)
        s.units[-*n - 1] = *nunit;
    else
        complain_and_stop(s.units[2],
                          " *** TERMINAL ERROR 5 from UMACH.  The absolute\n"
                          " ***          value of the index variable must be\n"
                          " ***          1, 2, or 3.  IABS(N) = ",
                          std::abs(int64_t{*n}));
}

orvel_floating_point deferred_constant(const int32_t* n) { return {*n}; }

template <class T>
void assign(T* x, const orvel_floating_point* value)
{
    *x = constant<T>(&value->n);
}

}  // namespace

}  // namespace orvel::frame

ORVEL_EXPORT_REALS(AMACH, amach_, DMACH, dmach_, 1, orvel::frame::constant);
ORVEL_EXPORT_REALS(SRMACH, srmach_, DRMACH, drmach_, 1, orvel::frame::constant);
ORVEL_EXPORT(IMACH, imach_, 1, orvel::frame::imach);
ORVEL_EXPORT(UMACH, umach_, 2, orvel::frame::umach);
ORVEL_EXPORT(AMACH_INT_mp_AMACH, amach_int_mp_amach_, 1, orvel::frame::deferred_constant);
ORVEL_EXPORT_REALS(AMACH_INT_mp_REAL_EQ_FLOATING_POINT, amach_int_mp_real_eq_floating_point_,
                   AMACH_INT_mp_DOUBLE_EQ_FLOATING_POINT, amach_int_mp_double_eq_floating_point_, 2,
                   orvel::frame::assign);
ORVEL_EXPORT_REALS(AMACH_INT_mp_S_AMACH, amach_int_mp_s_amach_, AMACH_INT_mp_D_AMACH, amach_int_mp_d_amach_,
                   1, orvel::frame::constant);
