// quad/qdag.cpp - QDAG: bisection with a Gauss-Kronrod rule of the caller's choice
//
// The published algorithm QAG, with its expressions in their order.
#include <cmath>

#include "frame/export.h"
#include "orvel/quad.h"
#include "quad/quad.h"

namespace orvel::quad {

namespace {

template <class T>
struct RuleRow {
    int32_t points;
    Rule<T> rule;
};

template <class T>
constexpr RuleRow<T> rules[6] = {
    {15, gauss_kronrod<T, 7>},  {21, gauss_kronrod<T, 10>}, {31, gauss_kronrod<T, 15>},
    {41, gauss_kronrod<T, 20>}, {51, gauss_kronrod<T, 25>}, {61, gauss_kronrod<T, 30>},
};

template <class T>
const RuleRow<T>& rule_row(int32_t irule)
{
    return rules<T>[std::clamp(irule, 1, 6) - 1];
}

template <class T>
Integral<T> integrate(const UserFunction<T>& f, T a, T b, const Tolerance<T>& tolerance, int32_t irule,
                      Pieces<T>& pieces)
{
    if (pieces.room() < 1) return {0, 0, no_room};
    const Rule<T> rule = rule_row<T>(irule).rule;
    const Estimate<T> whole = rule(f, a, b, a);
    pieces.start(a, b, whole);
    T total = whole.result, total_error = whole.error, bound = tolerance.bound(total);
    int32_t code = reached;
    if (total_error <= T(50) * spacing<T> * whole.absolute && total_error > bound) code = roundoff;
    if (pieces.room() == 1) code = too_many_pieces;
    if (code != reached || (total_error <= bound && total_error != whole.deviation) || total_error == T(0))
        return {total, total_error, code};

    Roundoff signs;
    do {
        if (!pieces.has_place()) return {0, 0, no_storage};
        const Halves<T> h = pieces.bisect(rule, f);
        total_error = total_error + h.error() - pieces.worst_error();
        total = total + h.result() - pieces.worst_result();
        signs.note(h, pieces, false);
        bound = tolerance.bound(total);
        if (!(total_error <= bound)) {
            if (signs.stagnating >= 6 || signs.growing >= 20) code = roundoff;
            if (pieces.count() + 1 == pieces.room()) code = too_many_pieces;
            if (h.too_narrow(T(10000))) code = bad_behaviour;
        }
        pieces.replace(h);
    } while (code == reached && !(total_error <= bound));
    return {pieces.sum(), total_error, code};
}

template <class T>
void q3ag(frame::State& s, T (*f)(const T*), T a, T b, T errabs, T errrel, int32_t irule, int32_t maxsub,
          T* result, T* esterr, int32_t* neval, int32_t* ier, T* sublo, T* subhi, T* subres, T* suberr,
          int32_t* subord, int32_t* nsub)
{
    Routine<T, "Q3AG"> me(s);
    Pieces<T> pieces(maxsub, sublo, subhi, subres, suberr, subord);
    const Integral<T> integral = integrate<T>({s, f}, a, b, {errabs, errrel}, irule, pieces);
    *result = integral.result;
    *esterr = integral.error;
    *ier = integral.code;
    *nsub = pieces.count();
    *neval = evaluations(rule_row<T>(irule).points, pieces.count());
}

// False when there is no storage for the lists of a front, and then nothing is changed.
template <class T>
[[gnu::always_inline]] inline bool integrate_into(frame::State& s, T (*f)(const T*), T a, T b, T errabs,
                                                  T errrel, int32_t irule, T* result, T* esterr,
                                                  int32_t* neval, int32_t* nsub, Pieces<T>& pieces)
{
    Routine<T, "Q2AG"> me(s);
    if (pieces.room() < 1)
        me.post(terminal, 1, "The maximum number of subintervals MAXSUB = %(I1).  It must be at least 1.",
                {i(1, pieces.room())});
    if (irule < 1 || irule > 6)
        me.post(terminal, 2, "The quadrature rule IRULE = %(I1).  It must be in the range 1 to 6.",
                {i(1, irule)});
    check_tolerance(me, 3, errabs, errrel);
    if (me.failed()) return true;

    const Integral<T> integral = integrate<T>({s, f}, a, b, {errabs, errrel}, irule, pieces);
    if (integral.code == no_storage) return false;
    *result = integral.result;
    *esterr = integral.error;
    *nsub = pieces.count();
    *neval = evaluations(rule_row<T>(irule).points, pieces.count());
    if (integral.code == too_many_pieces)
        me.post(
            fatal, 1,
            "The maximum number of subintervals allowed MAXSUB = %(I1) has been reached.  Use Q2AG and increase MAXSUB.  Dimension adjustments may be necessary.",
            {i(1, pieces.room())});
    else if (integral.code == roundoff)
        me.post(
            warning, 2,
            "Roundoff error has been detected.  The requested tolerances, ERRABS = %(R1) and ERRREL = %(R2) cannot be reached.",
            {r(1, wide(errabs)), r(2, wide(errrel))});
    else if (integral.code == bad_behaviour)
        warn_of_bad_behaviour(me, pieces);
    return true;
}

template <class T>
void q2ag(frame::State& s, T (*f)(const T*), T a, T b, T errabs, T errrel, int32_t irule, T* result,
          T* esterr, int32_t maxsub, int32_t* neval, int32_t* nsub, T* sublo, T* subhi, T* subres, T* suberr,
          int32_t* subord)
{
    Pieces<T> pieces(maxsub, sublo, subhi, subres, suberr, subord);
    integrate_into(s, f, a, b, errabs, errrel, irule, result, esterr, neval, nsub, pieces);
}

template <class T>
void qdag(T (*f)(const T*), const T* a, const T* b, const T* errabs, const T* errrel, const int32_t* irule,
          T* result, T* esterr)
{
    Routine<T, "QDAG"> me;
    Pieces<T> pieces;
    int32_t neval, nsub;
    if (!integrate_into(me.state(), f, *a, *b, *errabs, *errrel, *irule, result, esterr, &neval, &nsub,
                        pieces))
        no_lists(me, 7);
}

}  // namespace

}  // namespace orvel::quad

ORVEL_EXPORT_REALS(QDAG, qdag_, DQDAG, dqdag_, 8, orvel::quad::qdag);
ORVEL_EXPORT_REALS(Q2AG, q2ag_, DQ2AG, dq2ag_, 16, orvel::quad::q2ag);
ORVEL_EXPORT_REALS(Q3AG, q3ag_, DQ3AG, dq3ag_, 17, orvel::quad::q3ag);
