// tests/hostile/call.cpp - a call, made twice with other garbage around it and at other addresses
#include "tests/hostile/call.h"

#include <fenv.h>
#include <setjmp.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "orvel/orvel.h"
#include "tests/hostile/arguments.h"
#include "tests/hostile/functions.h"
#include "tests/hostile/run.h"

namespace hostile {

namespace {

std::string text;  // printed by the run under way
constexpr int traps = FE_DIVBYZERO | FE_INVALID | FE_OVERFLOW;
sigjmp_buf before_call;
volatile bool can_leave = false;
Arguments* volatile current = nullptr;

[[gnu::noinline]] void paint_stack(unsigned char garbage)
{
    unsigned char room[48 << 10];
    std::memset(room, garbage, sizeof room);
    asm volatile("" : : "r"(room) : "memory");
}

struct ControlWords {
    unsigned mxcsr = 0;
    unsigned short x87 = 0;
    ControlWords()
    {
#ifdef __x86_64__
        asm volatile("stmxcsr %0\n\tfnstcw %1" : "=m"(mxcsr), "=m"(x87));
        mxcsr &= ~0x3fu;  // flags
#endif
    }
    bool operator==(const ControlWords&) const = default;
};

// The call itself. Traps and the rounding mode are those of the surroundings only inside.
[[gnu::noinline]] bool run_in(const Routine& routine, void* const* addresses, const Surroundings& around,
                              Outcome& o)
{
    orvel_outcome quiet;
    if (around.is_quiet) orvel_begin_quiet(&quiet);
    paint_stack(requests.garbage);
    fesetround(around.rounding);
    feclearexcept(FE_ALL_EXCEPT);
    if (around.has_traps) feenableexcept(traps);
    const ControlWords before;
    bool is_kept = true;
    requests.is_watching = true;
    can_leave = true;
    if (sigsetjmp(before_call, 0) == 0) {
        try {
            int ended = 0;
            if (around.has_context)
                ended = call_with_context(routine, addresses, o.result);
            else
                routine.call(addresses, o.result);
            is_kept = ControlWords() == before;
            o.ending = ended == 0 ? Outcome::returned : Outcome::left;
        } catch (const Left&) {
            is_kept = ControlWords() == before;
            o.ending = Outcome::left;
        }
    } else {
        o.ending = Outcome::unreal;
    }
    requests.is_watching = false;
    can_leave = false;
    fedisableexcept(traps);
    o.flags = fetestexcept(traps);
    fesetround(FE_TONEAREST);
    if (o.ending == Outcome::unreal) {
        forget_requests();
        orvel_reset();
    }
    if (around.is_quiet) {
        orvel_end_quiet(&quiet);
        note_text(quiet.text,
                  static_cast<std::size_t>(std::clamp<int32_t>(quiet.length, 0, sizeof quiet.text)));
    }
    return is_kept;
}

// Whether a result has overflowed, or has no value: then flags may be raised. Zeros that crowd are divided
// out of values that may become as large as they like.
bool has_odd_result(const Routine& routine, const Arguments& arguments, int run, const Outcome& o)
{
    float single[2];
    double other[2];
    std::memcpy(single, o.result, sizeof single);
    std::memcpy(other, o.result, sizeof other);
    const char type = routine.result;
    bool found = std::string_view(routine.name).ends_with("ZREAL") || o.ending != Outcome::returned;
    if (type == 's' || type == 'c') found |= !std::isfinite(single[0]) || !std::isfinite(single[1]);
    if (type == 'd' || type == 'z') found |= !std::isfinite(other[0]) || !std::isfinite(other[1]);
    for (int k = 0; k < routine.count; ++k) {
        const Argument& a = arguments.argument(k);
        if (std::string_view("sdcz").find(a.type) == std::string_view::npos || a.role == Role::in) continue;
        found = found || has_odd_number(arguments.storage(k), run, a.type, requests.garbage);
    }
    return found;
}

std::string difference(const Routine& routine, const Arguments& arguments, const Surroundings& around,
                       const Outcome (&o)[2])
{
    if (o[0].ending != o[1].ending) return "the two runs end differently";
    if (std::memcmp(o[0].result, o[1].result, sizeof o[0].result) != 0) return "the value differs";
    if (o[0].text != o[1].text) return "the printed text differs";
    for (int k = 0; k < routine.count; ++k) {
        int64_t where = 0;
        if (arguments.is_data(k) && arguments.owns(k) &&
            !agree(arguments.storage(k), arguments.argument(k).type, around.garbage, where))
            return std::string(arguments.argument(k).name) + " differs at element " + std::to_string(where);
    }
    return blocks_are_as_kept() ? "" : "the blocks of state differ";
}

}  // namespace

std::string fault_of_run(const Routine& routine, Arguments& arguments, int run, const Surroundings& around,
                         Outcome& o)
{
    for (int k = 0; k < routine.count; ++k)
        if (arguments.is_data(k) && arguments.owns(k))
            prepare(arguments.storage(k), run, around.garbage[run]);
    use_level(around.level[run], false);
    restore_blocks();
    restore_settings(around);
    restore_state(around);
    if (!arguments.is_ascending()) forget_piece();
    restart_function();
    text.clear();
    o = {};
    requests = {false, around.garbage[run], 0, around.refused, around.lasting, 0, 0, false};
    const int32_t level = ERCOM1.level, above = 1;
    current = &arguments;
    const bool has_words = run_in(routine, arguments.addresses(run), around, o);
    current = nullptr;
    o.text = text;
    o.stack_level = ERCOM1.level;
    o.severity = N1RTY(&above);
    o.code = N1RCD(&above);
    o.requests = requests.count;
    if (std::string_view(routine.header) == "host.h") {
        set_up_host();
        use_level(around.level[run], true);
    }
    if (std::string_view(routine.name) == "orvel_bind_unit")
        orvel_bind_unit(static_cast<int32_t>(arguments.value(0)), nullptr, nullptr), set_up_host();
    if (!has_words) return "the control words have changed";
    if (requests.outstanding != 0) {
        const int count = requests.outstanding;
        forget_requests();
        return std::to_string(count) + " requests for storage are not freed";
    }
    if (requests.is_overrun) return "scratch was written in front of its beginning";
    constexpr std::string_view movers[] = {"E1PSH", "E1POP", "orvel_reset"};
    if (around.is_flagged && o.flags != 0 && !has_odd_result(routine, arguments, run, o))
        return "a finite result of ordinary data raises flags " + std::to_string(o.flags);
    if (std::string_view(routine.header) != "frame.h" && routine.texts == 0 && !around.is_corrupted &&
        text.find("%(") != std::string::npos)
        return "a parameter of a text is missing";
    const bool moves =
        o.ending == Outcome::unreal || std::count(std::begin(movers), std::end(movers), routine.name) != 0;
    if (!around.is_corrupted && !moves && o.stack_level != level)
        return "the stack is at level " + std::to_string(o.stack_level);
    for (int k = 0; k < routine.count; ++k)
        if (arguments.is_data(k) && arguments.owns(k))
            if (const char* fault = fault_after(arguments.storage(k), run, around.garbage[run]))
                return std::string(arguments.argument(k).name) + " " + fault;
    return {};
}

void note_text(const char* more, std::size_t length) { text.append(more, length); }

Fault make_call(const Routine& routine, uint64_t seed, bool is_verbose)
{
    Draw draw(mixed(seed));
    constexpr Mood moods[] = {Mood::ordinary, Mood::ordinary, Mood::ordinary,  Mood::ordinary,
                              Mood::odd_data, Mood::odd_data, Mood::odd_sizes, Mood::odd_sizes,
                              Mood::anything, Mood::anything};
    const Mood mood = draw.one_of(moods);
    Surroundings around = surroundings(routine, seed, draw, mood);
    around.has_traps = is_verbose && around.is_flagged;  // so that a debugger shows where
    choose_function(draw, mood);
    restore_blocks();
    Arguments arguments(routine, draw, mood);
    if (is_verbose) print_call(routine, arguments, around);
    if (arguments.is_impossible() && !routine.is_front) return {};
    Outcome o[2];
    for (int run = 0; run < 2; ++run) {
        const std::string fault = fault_of_run(routine, arguments, run, around, o[run]);
        if (is_verbose)
            std::printf("run %d: ended %d, %d requests, type %d\n%s\n", run, o[run].ending, o[run].requests,
                        o[run].severity, o[run].text.c_str());
        if (!fault.empty()) return {fault};
        if (run == 0) keep_blocks();
    }
    if (levels == Levels::many) return {};
    return {difference(routine, arguments, around, o)};
}

void leave_if_unreal(const void* address)
{
    if (!can_leave || current == nullptr) return;
    if (current->is_impossible()) siglongjmp(before_call, 1);  // what was reserved is not all of it
    for (int k = 0; k < most_arguments; ++k) {
        const Storage& s = current->storage(k);
        const auto* const at = static_cast<const unsigned char*>(address);
        if (s.is_unreal && at >= s.data[0] && at < s.data[0] + s.span()) siglongjmp(before_call, 1);
    }
}

void describe_crash(char* text, std::size_t room, int signal, const void* address)
{
    const auto* const at = static_cast<const unsigned char*>(address);
    int64_t nearest = INT64_MAX;
    std::snprintf(text, room, "%s at %p", strsignal(signal), address);
    for (int k = 0; k < most_arguments && current != nullptr && signal == SIGSEGV; ++k) {
        const Storage& s = current->storage(k);
        for (const unsigned char* data : s.data) {
            if (data == nullptr || s.element == 0) continue;
            const int64_t distance = (at - data) / static_cast<int64_t>(s.element);
            if (std::abs(distance) >= nearest || std::abs(distance) > 1 << 20) continue;
            nearest = std::abs(distance);
            std::snprintf(text, room, "%s at element %ld of the %zu of argument %d", strsignal(signal),
                          distance, s.span() / s.element, k + 1);
        }
    }
}

}  // namespace hostile

// A clock that stands while a call is under way, so that both runs are made at the same time.
extern "C" int __real_clock_gettime(clockid_t clock, timespec* t);
extern "C" int __wrap_clock_gettime(clockid_t clock, timespec* t)
{
    if (!hostile::requests.is_watching) return __real_clock_gettime(clock, t);
    *t = {1700000000 + (clock == CLOCK_REALTIME ? 12345 : 0), 123456789};
    return 0;
}
