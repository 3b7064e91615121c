// frame/context.cpp - functions of the user's that have a context, behind functions that have none
#include "frame/context.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

#include "frame/export.h"
#include "frame/outcome.h"

namespace orvel::frame {

namespace {

// Thrown from behind a user's function to the call that made it known; nobody else sees it.
struct End {
    int32_t status;
};
constexpr int32_t misuse = -1, bad_count = -2;

double evaluate(double x)
{
    const UserContext* const user = state().context;
    double fx = std::numeric_limits<double>::quiet_NaN();
    if (user == nullptr) return fx;  // on another thread
    const int32_t status = user->function(user->context, x, &fx);
    if (status != 0) throw End{status};
    return fx;
}

float evaluate_single(const float* x) { return static_cast<float>(evaluate(static_cast<double>(*x))); }
double evaluate_double(const double* x) { return evaluate(*x); }

// Quiet calls that END leaves open end with it.
class KnownFunction {
public:
    KnownFunction(State& s, const UserContext* context) : s_(s), outer_(s.context), quiet_(s.quiet)
    {
        s_.context = context;
    }
    ~KnownFunction()
    {
        s_.context = outer_;
        s_.quiet = quiet_;
    }
    KnownFunction(const KnownFunction&) = delete;
    KnownFunction& operator=(const KnownFunction&) = delete;

private:
    State& s_;
    const UserContext* const outer_;
    orvel_outcome* const quiet_;
};

template <class Call>
int32_t with_context(const UserContext& user, Call call)
{
    try {
        const KnownFunction known(state(), &user);
        call();
        return 0;
    } catch (const End& end) {
        return end.status;
    }
}

constexpr std::size_t most_arguments = 19;

template <std::size_t... k>
void call_with(orvel_routine routine, orvel_address function, const orvel_address* arguments,
               std::index_sequence<k...>)
{
    using Address = orvel_address;
    reinterpret_cast<void (*)(Address, decltype(k, Address())...)>(routine)(function, arguments[k]...);
}

using Caller = void (*)(orvel_routine, orvel_address, const orvel_address*);

template <std::size_t... count>
constexpr auto callers_of(std::index_sequence<count...>)
{
    return std::array<Caller, sizeof...(count)>{
        [](orvel_routine routine, orvel_address function, const orvel_address* arguments) {
            call_with(routine, function, arguments, std::make_index_sequence<count>());
        }...};
}

}  // namespace

void end_user_context(int32_t type, int32_t code)
{
    const State& s = state();
    if (s.quiet == nullptr || s.context == nullptr) return;
    record(*s.quiet, type, code);
    const LastMessage& message = last_message();
    std::copy_n(message.routine, sizeof message.routine, s.quiet->routine);
    std::copy_n(message.text, sizeof message.text, s.quiet->text);
    throw End{misuse};
}

extern "C" {

ORVEL_VISIBLE int32_t orvel_with_context(orvel_context_function function, void* context,
                                         orvel_context_call call, void* argument)
{
    return with_context({function, context}, [=] { call(argument, evaluate_single, evaluate_double); });
}

ORVEL_VISIBLE int32_t orvel_call_with_context(orvel_context_function function, void* context,
                                              orvel_routine routine, int32_t single, int32_t count,
                                              const orvel_address* arguments)
{
    static constexpr auto callers = callers_of(std::make_index_sequence<most_arguments + 1>());
    if (count < 0 || count > static_cast<int32_t>(most_arguments)) return bad_count;
    const auto known = single != 0 ? reinterpret_cast<orvel_address>(evaluate_single)
                                   : reinterpret_cast<orvel_address>(evaluate_double);
    return with_context({function, context},
                        [=] { callers[static_cast<std::size_t>(count)](routine, known, arguments); });
}
}

}  // namespace orvel::frame
