// frame/routine.h - the frame of a routine in library code: name on the stack, errors, user code
#pragma once

#include <complex>
#include <cstdint>
#include <exception>
#include <initializer_list>
#include <type_traits>

#include "frame/message.h"
#include "frame/stack.h"

namespace orvel {

using frame::alert;
using frame::fatal;
using frame::i;
using frame::l;
using frame::note;
using frame::r;
using frame::terminal;
using frame::warning;

template <class T>
inline constexpr bool is_double = std::is_same_v<T, double> || std::is_same_v<T, std::complex<double>>;

// A name as a template argument.
template <std::size_t N>
struct Name {
    char text[N] = {};

    consteval Name() = default;
    consteval Name(const char (&name)[N])
    {
        for (std::size_t k = 0; k < N; ++k) text[k] = name[k];
    }
    constexpr std::string_view view() const { return {text, N - 1}; }
};

template <std::size_t N>
consteval Name<N + 1> with_d(Name<N> name)
{
    Name<N + 1> result;
    result.text[0] = 'D';
    for (std::size_t k = 0; k < N; ++k) result.text[k + 1] = name.text[k];
    return result;
}

// The first object of every routine, and so the last to go: scratch is free before the pop prints or stops.
// The name of the double member is the single one's with a D, unless it is given. When an exception passes,
// the level is left silently.
template <class T, Name Single, Name Double = with_d(Single)>
class Routine {
public:
    Routine() : Routine(frame::state()) {}

    // For a routine called by another of the library, which has looked up the state already.
    explicit Routine(frame::State& s) : s_(s), level_(frame::push(s, name_)) {}

    // Enters and leaves at once: for arguments whose results need no check, error or call of other code.
    static void visit(frame::State& s) { frame::push_and_pop(s, name_); }

    ~Routine() noexcept(false)
    {
        if (!frame::pop_quickly(s_, name_, level_)) [[unlikely]]
            leave();
    }

    Routine(const Routine&) = delete;
    Routine& operator=(const Routine&) = delete;

    frame::State& state() { return s_; }

    void post(int32_t type, int32_t code, std::string_view text,
              std::initializer_list<frame::Parameter> parameters = {})
    {
        frame::post(s_, frame::real_kind<std::conditional_t<is_double<T>, double, float>>, type, code, text,
                    parameters);
    }

    // Posts that scratch storage could not be had. The level is marked first, as every front does; a message
    // of an earlier routine that still waits in the buffer is not printed with it.
    void no_storage(int32_t code, std::string_view text,
                    std::initializer_list<frame::Parameter> parameters = {})
    {
        s_.errors->msglen = 0;
        post(terminal, -1, " ");
        post(terminal, code, text, parameters);
    }

    // Clears the error of this level, for a routine that knows better than its callee.
    void clear() { post(0, 0, " "); }

    bool failed() const { return s_.errors->ertype[level_ - 1] > 0; }
    int32_t error_type() const { return s_.errors->ertype[level_ - 1]; }

    // What the routine that was called last has left: type and code of its error, or 0.
    int32_t callee_type() const { return s_.errors->ertype[level_]; }
    int32_t callee_code() const { return s_.errors->ercode[level_]; }

private:
    [[gnu::cold, gnu::noinline]] void leave()
    {
        const bool ending = level_ <= s_.ending_level;
        if (ending) s_.ending_level = level_ - 1;
        if (ending || std::uncaught_exceptions() > s_.exceptions) {
            s_.errors->level = level_;
            frame::discard_record_above(s_, level_);
            s_.errors->level = level_ - 1;
        } else {
            frame::judge_and_pop(s_, name_);
        }
    }

    static constexpr frame::PaddedName name_{is_double<T> ? Double.view() : Single.view()};

    frame::State& s_;
    const int32_t level_;
};

// A user's function of one real argument, for many calls from one routine: library routines that it calls
// report as if the user had called them. What calls and exceptions leave behind is put right once, when the
// object goes: errors of routines that the user's function calls are not errors of the routine, though their
// pops have recorded them at its level. So the object goes before the routine posts its own.
template <class T>
class UserFunction {
public:
    UserFunction(frame::State& s, T (*f)(const T*))
        : f_(f), s_(s), level_(frame::current_level(s)), user_(&s.callers->user[level_ - 1]),
          type_(frame::type_at(s, level_)), code_(frame::code_at(s, level_)), exceptions_(s.exceptions)
    {}
    ~UserFunction()
    {
        *user_ = 0;
        frame::type_at(s_, level_) = type_;
        frame::code_at(s_, level_) = code_;
        s_.exceptions = exceptions_;
    }
    UserFunction(const UserFunction&) = delete;
    UserFunction& operator=(const UserFunction&) = delete;

    // To be copied into a local variable before a loop, so that it stays in registers.
    struct Call {
        T (*f)(const T*);
        int32_t* user;

        T operator()(const T& x) const
        {
            *user = -1;
            const T value = f(&x);
            *user = 0;
            return value;
        }
    };

    Call call() const { return {f_, user_}; }
    T operator()(const T& x) const { return call()(x); }

private:
    T (*const f_)(const T*);
    frame::State& s_;
    const int32_t level_;
    int32_t* const user_;
    const int32_t type_, code_;
    const int exceptions_;
};

}  // namespace orvel
