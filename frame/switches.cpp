// frame/switches.cpp - print and stop switches of the error types
#include "frame/switches.h"

#include "frame/export.h"
#include "frame/routine.h"
#include "frame/stop.h"

namespace orvel::frame {

namespace {

void apply(int32_t action, int32_t initial, int32_t& target)
{
    if (action >= 0) target = action == 2 ? initial : action;
}

void set_switches(int32_t type, int32_t print_action, int32_t stop_action, int32_t (&print)[7],
                  int32_t (&stop)[7])
{
    for (int32_t t = note; t <= prompt_fatal; ++t) {
        if (type != 0 && type != t) continue;
        apply(print_action, initial_print[t - 1], print[t - 1]);
        apply(stop_action, initial_stop[t - 1], stop[t - 1]);
    }
}

}  // namespace

void set_classic_switches(int32_t type, int32_t print_action, int32_t stop_action, int32_t (&print)[7],
                          int32_t (&stop)[7])
{
    set_switches(type, print_action, stop_action, print, stop);
    if (type == warning) set_switches(prompt_warning, print_action, stop_action, print, stop);
    if (type == fatal) set_switches(prompt_fatal, print_action, stop_action, print, stop);
}

void erset(const int32_t* iersvr, const int32_t* ipact, const int32_t* isact)
{
    Routine<float, "ERSET"> me;
    if (*iersvr < 0 || *iersvr > 5)
        me.post(terminal, 1,
                "Invalid error severity level indicator.  IERSVR must be 0 to 5.  IERSVR = %(I1)",
                {i(1, *iersvr)});
    if (!is_action(*ipact))
        me.post(terminal, 2,
                "Invalid value specified for printing action.  IPACT must be -1 to 2.  IPACT = %(I1)",
                {i(1, *ipact)});
    if (!is_action(*isact))
        me.post(terminal, 3,
                "Invalid value specified for stopping action.  ISACT must be -1 to 2.  ISACT = %(I1)",
                {i(1, *isact)});
    if (me.failed()) return;
    orvel_ercom1& e = *me.state().errors;
    set_classic_switches(*iersvr, *ipact, *isact, e.prttab, e.stptab);
}

namespace {

void e1pos(const int32_t* iertyp, int32_t* ipatt, int32_t* isatt)
{
    State& s = state();
    const int32_t type = *iertyp;
    if (type < 0) {
        if (type < -prompt_fatal) return;
        *ipatt = s.errors->prttab[-type - 1];
        *isatt = s.errors->stptab[-type - 1];
        return;
    }
    const bool print_is_good = is_action(*ipatt);
    const bool stop_is_good = is_action(*isatt);
    if (!print_is_good)
        post(
            s, 'R', terminal, 1,
            "Invalid value specified for print table attribute.  IPATT must be -1, 0, 1, or 2.  IPATT = %(I1)",
            {i(1, *ipatt)});
    if (!stop_is_good)
        post(
            s, 'R', terminal, 1,
            "Invalid value specified for stop table attribute.  ISATT must be -1, 0, 1, or 2.  ISATT = %(I1)",
            {i(1, *isatt)});
    if (print_is_good && stop_is_good)
        set_switches(type, *ipatt, *isatt, s.errors->prttab, s.errors->stptab);
    else
        stop_without_pop(s, terminal, 1);
}

}  // namespace

}  // namespace orvel::frame

ORVEL_EXPORT(ERSET, erset_, 3, orvel::frame::erset);
ORVEL_EXPORT(E1POS, e1pos_, 3, orvel::frame::e1pos);
