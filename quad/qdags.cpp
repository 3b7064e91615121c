// quad/qdags.cpp - QDAGS: bisection with a 21-point rule and extrapolation by the epsilon algorithm
//
// The published algorithm QAGS, with its expressions in their order. Pieces are bisected by their errors; as
// soon as the wide ones of a level do well enough, the sum is appended to a sequence whose limit is
// extrapolated, and pieces of half that width are the next level.
#include <cmath>

#include "frame/export.h"
#include "orvel/quad.h"
#include "quad/epsilon.h"
#include "quad/quad.h"

namespace orvel::quad {

namespace {

template <class T>
class Qags {
public:
    Qags(const UserFunction<T>& f, const Tolerance<T>& tolerance, Pieces<T>& pieces)
        : f_(f), tolerance_(tolerance), pieces_(pieces)
    {}

    Integral<T> integrate(T a, T b);

private:
    enum Step { go_on, leave, done };  // done: the plain sum is good enough

    Step bisect();
    Step look_at_extrapolation(const Halves<T>& h, T old_error);
    Step extrapolate();
    Integral<T> extrapolated();
    Integral<T> plain_sum() const { return {pieces_.sum(), total_error_, code_}; }

    const UserFunction<T>& f_;
    const Tolerance<T> tolerance_;
    Pieces<T>& pieces_;
    Estimate<T> whole_{};
    T total_ = 0, total_error_ = 0, bound_ = 0;
    Roundoff signs_;
    int32_t code_ = reached;
    bool roundoff_in_table_ = false;

    T small_ = 0;       // wider pieces have to do well before the next extrapolation
    T wide_error_ = 0;  // error of those
    bool extrapolating_ = false, no_more_ = false;
    T table_[most_elements + 2];
    int32_t elements_ = 0, calls_ = 0, without_improvement_ = 0;
    T last_limits_[3] = {};
    T limit_ = 0, limit_error_ = largest<T>, limit_bound_ = 0, correction_ = 0;
};

template <class T>
Integral<T> Qags<T>::integrate(T a, T b)
{
    whole_ = gauss_kronrod<T, 10>(f_, a, b, a);
    pieces_.start(a, b, whole_);
    total_ = whole_.result;
    total_error_ = whole_.error;
    bound_ = tolerance_.bound(total_);
    if (total_error_ <= T(100) * spacing<T> * whole_.absolute && total_error_ > bound_) code_ = roundoff;
    if (pieces_.room() == 1) code_ = too_many_pieces;
    if (code_ != reached || (total_error_ <= bound_ && total_error_ != whole_.deviation) ||
        total_error_ == T(0))
        return {total_, total_error_, code_};
    table_[elements_++] = total_;
    Step step = go_on;
    while (step == go_on && pieces_.count() < pieces_.room()) step = bisect();
    return step == done || limit_error_ == largest<T> ? plain_sum() : extrapolated();
}

template <class T>
typename Qags<T>::Step Qags<T>::bisect()
{
    if (!pieces_.has_place()) {
        code_ = no_storage;
        return done;
    }
    const T old_error = pieces_.worst_error();
    const Halves<T> h = pieces_.bisect(gauss_kronrod<T, 10>, f_);
    total_error_ = total_error_ + h.error() - old_error;
    total_ = total_ + h.result() - pieces_.worst_result();
    signs_.note(h, pieces_, extrapolating_);
    bound_ = tolerance_.bound(total_);
    if (signs_.stagnating + signs_.stagnating_in_extrapolation >= 10 || signs_.growing >= 20)
        code_ = roundoff;
    if (signs_.stagnating_in_extrapolation >= 5) roundoff_in_table_ = true;
    if (pieces_.count() + 1 == pieces_.room()) code_ = too_many_pieces;
    if (h.too_narrow(T(1000))) code_ = bad_behaviour;
    pieces_.replace(h);

    if (total_error_ <= bound_) return done;
    if (code_ != reached) return leave;
    if (pieces_.count() == 2) {
        small_ = std::abs(h.right - h.left) * T(0.375);
        wide_error_ = total_error_;
        limit_bound_ = bound_;
        table_[elements_++] = total_;
        return go_on;
    }
    return no_more_ ? go_on : look_at_extrapolation(h, old_error);
}

// Extrapolates unless a wide piece should be bisected first.
template <class T>
typename Qags<T>::Step Qags<T>::look_at_extrapolation(const Halves<T>& h, T old_error)
{
    wide_error_ -= old_error;
    if (std::abs(h.middle - h.left) > small_) wide_error_ += h.error();
    if (!extrapolating_) {
        if (pieces_.worst_width() > small_) return go_on;
        extrapolating_ = true;
        pieces_.start_behind_largest_error();
    }
    if (!roundoff_in_table_ && wide_error_ > limit_bound_ && pieces_.select_wider(small_)) return go_on;
    return extrapolate();
}

template <class T>
typename Qags<T>::Step Qags<T>::extrapolate()
{
    table_[elements_++] = total_;
    T limit, error;
    q4awo(elements_, table_, limit, error, last_limits_, calls_);
    ++without_improvement_;
    if (without_improvement_ > 5 && limit_error_ < T(1e-3) * total_error_) code_ = bad_extrapolation;
    if (error < limit_error_) {
        without_improvement_ = 0;
        limit_ = limit;
        limit_error_ = error;
        correction_ = wide_error_;
        limit_bound_ = tolerance_.bound(limit);
        if (limit_error_ <= limit_bound_) return leave;
    }
    if (elements_ == 1) no_more_ = true;
    if (code_ == bad_extrapolation) return leave;
    pieces_.select_largest_error();
    extrapolating_ = false;
    small_ *= T(0.5);
    wide_error_ = total_error_;
    return go_on;
}

// The limit, unless the plain sum is better; tests whether there is one.
template <class T>
Integral<T> Qags<T>::extrapolated()
{
    if (code_ != reached || roundoff_in_table_) {
        if (roundoff_in_table_) limit_error_ += correction_;
        if (code_ == reached) code_ = roundoff;
        if (limit_ != T(0) && total_ != T(0)) {
            if (limit_error_ / std::abs(limit_) > total_error_ / std::abs(total_)) return plain_sum();
        } else if (limit_error_ > total_error_) {
            return plain_sum();
        } else if (total_ == T(0)) {
            return {limit_, limit_error_, code_};
        }
    }
    const bool one_sign = std::abs(whole_.result) >= (T(1) - T(50) * spacing<T>)*whole_.absolute;
    const bool cancels = std::max(std::abs(limit_), std::abs(total_)) <= whole_.absolute * T(0.01);
    if (one_sign || !cancels) {
        const T ratio = limit_ / total_;
        if (T(0.01) > ratio || ratio > T(100) || total_error_ > std::abs(total_)) code_ = divergent;
    }
    return {limit_, limit_error_, code_};
}

template <class T>
Integral<T> integrate(const UserFunction<T>& f, T a, T b, const Tolerance<T>& tolerance, Pieces<T>& pieces)
{
    if (pieces.room() < 1) return {0, 0, no_room};
    return Qags<T>(f, tolerance, pieces).integrate(a, b);
}

template <class T>
void q3ags(frame::State& s, T (*f)(const T*), T a, T b, T errabs, T errrel, int32_t maxsub, T* result,
           T* esterr, int32_t* neval, int32_t* ier, T* sublo, T* subhi, T* subres, T* suberr, int32_t* subord,
           int32_t* nsub)
{
    Routine<T, "Q3AGS"> me(s);
    Pieces<T> pieces(maxsub, sublo, subhi, subres, suberr, subord);
    const Integral<T> integral = integrate<T>({s, f}, a, b, {errabs, errrel}, pieces);
    *result = integral.result;
    *esterr = integral.error;
    *ier = integral.code;
    *nsub = pieces.count();
    *neval = evaluations(21, pieces.count());
}

// False when there is no storage for the lists of a front, and then nothing is changed.
template <class T>
[[gnu::always_inline]] inline bool integrate_into(frame::State& s, T (*f)(const T*), T a, T b, T errabs,
                                                  T errrel, T* result, T* esterr, int32_t* neval,
                                                  int32_t* nsub, Pieces<T>& pieces)
{
    Routine<T, "Q2AGS"> me(s);
    if (pieces.room() < 1)
        me.post(terminal, 1, "The maximum number of subintervals MAXSUB = %(I1).  It must be at least 1.",
                {i(1, pieces.room())});
    check_tolerance(me, 2, errabs, errrel);
    if (me.failed()) return true;

    const Integral<T> integral = integrate<T>({s, f}, a, b, {errabs, errrel}, pieces);
    if (integral.code == no_storage) return false;
    *result = integral.result;
    *esterr = integral.error;
    *nsub = pieces.count();
    *neval = evaluations(21, pieces.count());
    const frame::Parameter absolute = r(1, wide(errabs)), relative = r(2, wide(errrel));
    if (integral.code == reached) return true;
    if (integral.code == too_many_pieces)
        me.post(
            fatal, 1,
            "The maximum number of subintervals allowed MAXSUB = %(I1) has been reached.  Use Q2AGS and increase MAXSUB.  Dimension adjustments may be necessary.",
            {i(1, pieces.room())});
    else if (integral.code == roundoff)
        me.post(
            warning, 2,
            "Roundoff error has been detected.  The requested tolerances, ERRABS = %(R1) and ERRREL = %(R2), cannot be reached.",
            {absolute, relative});
    else if (integral.code == bad_behaviour)
        warn_of_bad_behaviour(me, pieces);
    else if (integral.code == bad_extrapolation)
        me.post(
            warning, 4,
            "Roundoff error has been detected in the extrapolation table.  The requested tolerances, ERRABS = %(R1) and ERRREL = %(R2) cannot be reached.",
            {absolute, relative});
    else
        me.post(fatal, 5, "Integral is probably divergent or slowly convergent.");
    return true;
}

template <class T>
void q2ags(frame::State& s, T (*f)(const T*), T a, T b, T errabs, T errrel, T* result, T* esterr,
           int32_t maxsub, int32_t* neval, int32_t* nsub, T* sublo, T* subhi, T* subres, T* suberr,
           int32_t* subord)
{
    Pieces<T> pieces(maxsub, sublo, subhi, subres, suberr, subord);
    integrate_into(s, f, a, b, errabs, errrel, result, esterr, neval, nsub, pieces);
}

template <class T>
void qdags(T (*f)(const T*), const T* a, const T* b, const T* errabs, const T* errrel, T* result, T* esterr)
{
    Routine<T, "QDAGS"> me;
    Pieces<T> pieces;
    int32_t neval, nsub;
    if (!integrate_into(me.state(), f, *a, *b, *errabs, *errrel, result, esterr, &neval, &nsub, pieces))
        no_lists(me, 6);
}

}  // namespace

}  // namespace orvel::quad

ORVEL_EXPORT_REALS(QDAGS, qdags_, DQDAGS, dqdags_, 7, orvel::quad::qdags);
ORVEL_EXPORT_REALS(Q2AGS, q2ags_, DQ2AGS, dq2ags_, 15, orvel::quad::q2ags);
ORVEL_EXPORT_REALS(Q3AGS, q3ags_, DQ3AGS, dq3ags_, 16, orvel::quad::q3ags);
