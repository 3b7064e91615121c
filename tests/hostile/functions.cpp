// tests/hostile/functions.cpp - functions of the user that do all that they may, and of the host
#include <cstring>

#include "orvel/orvel.h"
#include "tests/hostile/arguments.h"
#include "tests/hostile/functions.h"

namespace hostile {

namespace {

struct Function {
    int64_t manner;  // below `tame`: smooth
    int64_t moment;  // the call at which it does what it does
    int64_t calls;
} function;

constexpr int64_t tame = 6, manners = 17, most_calls = 20000;

float inner_single(const float* x) { return *x - 0.25f; }
double inner_double(const double* x) { return *x * *x - 0.5; }

void call_others()
{
    const double a = 0, b = 1, tolerance = 1e-3;
    double result, error;
    DQDAGS(inner_double, &a, &b, &tolerance, &tolerance, &result, &error);
    const float one = 1, small = 1e-3f, guess = 0.5f;
    const int32_t count = 1, iterations = 20, n = 3;
    float x, sequence[3] = {1, 2, 4}, coefficients[3];
    int32_t information;
    ZREAL(inner_single, &small, &small, &small, &one, &count, &iterations, &guess, &x, &information);
    FFTRF(&n, sequence, coefficients);
}

void post_errors()
{
    const int32_t type = static_cast<int32_t>(function.moment % 9) - 1, code = 3, index = 1;
    const float minus_two = -2;
    E1STI(&index, &code);
    E1MES(&type, &code, "a user's function says %(I1)", 28);
    if (function.moment % 2 == 0) GAMMA(&minus_two);
}

constexpr int32_t ending = 42;

struct Job {
    const Routine& routine;
    void* const* addresses;
    void* result;
};

template <class T>
T value_at(const T* place)
{
    const T x = *place;
    if (++function.calls > most_calls) throw Left();
    const bool is_now = function.calls == function.moment;
    const int32_t all = 0, off = 0;
    switch (function.manner) {
        case 0:
            return x * x - T(0.3);
        case 1:
            return 1 / (x * x + T(1e-3)) - 1;
        case 2:
            return std::sqrt(std::fabs(x)) - T(0.5);
        case 3:
            return x - T(0.125);
        case 4:
            return T(1.5);
        case 5:
            return x < T(0.3) ? T(0) : T(1);
        case 16:
            return T(__builtin_nan(""));
        case 6:
            return is_now ? T(__builtin_inf()) : x;
        case 7:
            return function.calls % 2 != 0 ? T(3e38) : T(-3e38);
        case 8: {
            uint64_t bits = 0;
            std::memcpy(&bits, &x, sizeof x);
            return static_cast<T>(static_cast<double>(mixed(bits) >> 11) * 0x1p-53 - 0.5);
        }
        case 9:
            if (is_now) throw Left();
            return x;
        case 10:
            if (function.calls <= 3 || is_now) call_others();
            return x * x - 1;
        case 11:
            if (is_now) ERSET(&all, &off, &off);
            return std::sqrt(x);
        case 12:
            if (function.calls <= 3 || is_now) post_errors();
            return x + 1;
        case 13:
            *const_cast<T*>(place) = T(99);
            return x - 1;
        case 14:
            return 0;
        default:
            return T(1) / x;
    }
}

int32_t value_in_context(void* context, double x, double* fx)
{
    if (context != &function) return -7;
    try {
        *fx = value_at(&x);
    } catch (const Left&) {
        return ending;
    }
    return 0;
}

void make_call(void* given, orvel_function f, orvel_dfunction df)
{
    const Job& job = *static_cast<Job*>(given);
    void* addresses[most_arguments];
    for (int k = 0; k < job.routine.count; ++k) {
        const char type = job.routine.arguments[k].type;
        addresses[k] = type == 'f'   ? reinterpret_cast<void*>(f)
                       : type == 'g' ? reinterpret_cast<void*>(df)
                                     : job.addresses[k];
    }
    job.routine.call(addresses, job.result);
}

void write(void*, int32_t, const char* text, std::size_t length) { note_text(text, length); }
void write_and_leave(void*, int32_t, const char* text, std::size_t length)
{
    note_text(text, length);
    throw Left();
}
void leave(void*, int32_t, int32_t) { throw Left(); }
void leave_with_text(void*, int32_t, int32_t, const char* routine, const char* text)
{
    note_text(routine, std::strlen(routine));
    note_text(text, std::strlen(text));
    throw Left();
}

}  // namespace

void choose_function(Draw& draw, Mood mood)
{
    function = {draw.below(mood == Mood::ordinary ? tame : manners),
                draw.one_in(2) ? draw.between(1, 8) : draw.between(1, 100), 0};
}

void restart_function() { function.calls = 0; }

int call_with_context(const Routine& routine, void* const* addresses, void* result)
{
    Job job{routine, addresses, result};
    return orvel_with_context(value_in_context, &function, make_call, &job);
}

float single_function(const float* x) { return value_at(x); }
double double_function(const double* x) { return value_at(x); }

void* host_function(const Routine& routine, const Argument& argument, Draw& draw)
{
    const std::string_view name = routine.name;
    if (argument.name == std::string_view("WRITER"))
        return draw.one_in(3) ? nullptr : reinterpret_cast<void*>(draw.one_in(2) ? write : write_and_leave);
    if (draw.one_in(3)) return nullptr;
    return name == "orvel_set_stop_handler" ? reinterpret_cast<void*>(leave)
                                            : reinterpret_cast<void*>(leave_with_text);
}

void set_up_host()
{
    for (const int32_t unit : {0, 5, 6}) orvel_bind_unit(unit, write, nullptr);
    orvel_set_stop_handler(leave, nullptr);
    orvel_set_stop_status(97);
    orvel_set_thread_defaults(0, 2, 2);
}

}  // namespace hostile
