// frame/stack.cpp - routine stack: push, pop and its decisions, records of outcome
#include "frame/stack.h"

#include <bit>

#include "frame/export.h"
#include "frame/message.h"
#include "frame/outcome.h"
#include "frame/print.h"
#include "frame/stop.h"

namespace orvel::frame {

namespace {

// Leaves a level at the end of its pop, also when a writer throws on the way.
class LevelExit {
public:
    LevelExit(State& s, int32_t level) : s_(s), level_(level) {}
    ~LevelExit()
    {
        discard_record_above(s_, level_);
        s_.errors->level = level_ - 1;
    }
    LevelExit(const LevelExit&) = delete;
    LevelExit& operator=(const LevelExit&) = delete;

private:
    State& s_;
    int32_t level_;
};

int32_t spend_prompt_records(State& s)
{
    orvel_ercom1& e = *s.errors;
    int32_t stops = 0;
    if (e.post6 > 0) {
        e.post6 = 0;
        stops = e.stptab[prompt_warning - 1];
    }
    if (e.post7 > 0) {
        e.post7 = 0;
        stops = e.stptab[prompt_fatal - 1];
    }
    return stops;
}

// Prints what the switches ask for and tells whether the program has to stop.
bool print_and_judge(State& s, int32_t type, int32_t caller)
{
    const orvel_ercom1& e = *s.errors;
    if (type <= fatal) {
        if (!is_user(s, caller)) return false;
        deliver(s, type);
        return is_user(s, caller) && is_on(e.stptab, type);
    }
    deliver(s, type);
    if (type == terminal) return is_on(e.stptab, type);
    return is_on(e.atttab, type) && is_user(s, caller) && spend_prompt_records(s) != 0;
}

}  // namespace

void stack_overflow(State& s)
{
    post(s, real_kind<float>, terminal, 1,
         "Error condition in E1PSH.  Push would cause stack level to exceed %(I1). ",
         {i(1, s.errors->maxlev)});
    stop(terminal, 1);
}

void judge_and_pop(State& s, const PaddedName& name)
{
    const int32_t level = current_level(s);
    const std::string_view given{name.text, name_room};
    if (level <= 1) {
        push(s, PaddedName{"E1POP"});
        post(s, real_kind<float>, terminal, 1,
             "Error condition in E1POP.  Cannot pop from %(L1) because stack is empty.", {l(1, given)});
        stop(terminal, 1);
    }
    const char* top = s.text->rname[level - 1];
    if (!same_name(name.text, top)) {
        post(s, real_kind<float>, terminal, 2,
             "Error condition in E1POP.  %(L1) does not match the name %(L2) in the stack.",
             {l(1, given), l(2, {top, name_room})});
        stop(terminal, 2);
    }

    const int32_t type = type_at(s, level);
    const int32_t code = code_at(s, level);
    const int32_t caller = level - 1;
    bool stops = false;
    {
        LevelExit leave(s, level);
        if (type >= alert && type <= prompt_fatal) {
            type_at(s, caller) = type;
            code_at(s, caller) = code;
        }
        if (is_type(type)) stops = print_and_judge(s, type, caller);
        if (s.quiet != nullptr) {
            stops = false;
            if (caller == s.quiet->level && is_type(type)) record(*s.quiet, type, code);
        }
    }
    if (caller == 1) s.exceptions = 0;
    if (stops) stop(type, code);
}

namespace {

// Up to eight characters as one number, blank-padded.
inline uint64_t short_word(std::string_view text)
{
    static_assert(std::endian::native == std::endian::little);
    constexpr uint64_t blanks = 0x2020202020202020;
    const std::size_t n = text.size();
    uint64_t word = 0;
    if (n >= 4) {
        uint32_t head, tail;
        std::memcpy(&head, text.data(), 4);
        std::memcpy(&tail, text.data() + n - 4, 4);
        word = head | uint64_t{tail} << (8 * (n - 4));
    } else {
        for (std::size_t k = 0; k < n; ++k) word |= uint64_t{static_cast<unsigned char>(text[k])} << (8 * k);
    }
    return n < 8 ? word | blanks << (8 * n) : word;
}

// A name whose length is known only now. Short ones, which all classic names are, are put together in
// registers and stored as whole vectors: the stack reads them as such, and smaller pieces in flight would
// hold it up.
[[gnu::always_inline]] inline PaddedName padded(const char* name, std::size_t len)
{
    const std::string_view text = text_argument(name, len);
    if (text.size() > 8) return PaddedName{text};
    PaddedName result{std::string_view{}};
    const Half first = {short_word(text), short_word({})};
    std::memcpy(result.text, &first, sizeof first);
    return result;
}

}  // namespace

void e1psh(const char* name, std::size_t len) { push(state(), padded(name, len)); }

void e1pop(const char* name, std::size_t len) { pop(state(), padded(name, len)); }

void e1usr(const char* switch_, std::size_t len)
{
    State& s = state();
    const std::string_view text = without_trailing_blanks(text_argument(switch_, len));
    int32_t& user = s.callers->user[current_level(s) - 1];
    if (text == "ON" || text == "on") {
        user = -1;
    } else if (text == "OFF" || text == "off") {
        user = 0;
    } else {
        post(
            s, real_kind<float>, terminal, 1,
            "Invalid value for SWITCH in call to E1USR.  SWITCH must be set to 'ON' or 'OFF'.  SWITCH = '%(L1)' ",
            {l(1, text)});
        stop_without_pop(s, terminal, 1);
    }
}

namespace {

// Every text begins like a message in the buffer.
[[noreturn]] void bad_option(State& s, std::string_view text)
{
    const int32_t level = current_level(s);
    type_at(s, level) = terminal;
    code_at(s, level) = 1;
    set_message(s, text);
    print_message(s);
    stop(terminal, 1);
}

}  // namespace

int32_t n1rty(const int32_t* iopt)
{
    State& s = state();
    if (*iopt != 0 && *iopt != 1) bad_option(s, ".  The argument passed to N1RTY must be 0 or 1.");
    return type_at(s, current_level(s) + *iopt);
}

int32_t n1rcd(const int32_t* iopt)
{
    State& s = state();
    if (*iopt != 0 && *iopt != 1) bad_option(s, ".  The argument passed to N1RCD must be 0 or 1.");
    return code_at(s, current_level(s) + *iopt);
}

int32_t iercd()
{
    State& s = state();
    const int32_t above = current_level(s) + 1;
    const int32_t type = type_at(s, above);
    return type >= note && type <= fatal ? code_at(s, above) : 0;
}

int32_t n1rnof(const int32_t* iopt)
{
    State& s = state();
    if (*iopt != 1 && *iopt != 2) bad_option(s, ".  The argument passed to N1RNOF must be 1 or 2. ");
    if (*iopt == 1) return static_cast<int32_t>(++s.counter);
    const auto count = static_cast<int32_t>(s.counter);
    s.counter = 0;
    return count;
}

int32_t n1rgb() { return spend_prompt_records(state()); }

int32_t n1thrd() { return 1; }

int32_t e1mem(const char* action, const int32_t* i, int32_t* ivalue, char* name, std::size_t action_len,
              std::size_t name_len)
{
    orvel_ercom1& e = *state().errors;
    const std::string_view verb = without_trailing_blanks(text_argument(action, action_len));
    const bool in_range = *i >= 1 && *i <= 10;
    const std::size_t room = text_argument(name, name_len).size();
    const std::size_t shared = std::min(room, sizeof e.linalg);
    if (verb == "SET" || verb == "set") {
        if (in_range) e.memslt[*i - 1] = *ivalue;
        std::memset(e.linalg, ' ', sizeof e.linalg);
        std::copy_n(name, shared, e.linalg);
        return 0;
    }
    if (in_range) *ivalue = e.memslt[*i - 1];
    std::copy_n(e.linalg, shared, name);
    std::fill_n(name + shared, room - shared, ' ');
    const std::string_view kept{e.linalg, sizeof e.linalg};
    return (verb == "GET" || verb == "get") && (kept == "LAPACK" || kept == "lapack") ? -1 : 0;
}

}  // namespace orvel::frame

ORVEL_EXPORT(E1PSH, e1psh_, 2, orvel::frame::e1psh);
ORVEL_EXPORT(E1POP, e1pop_, 2, orvel::frame::e1pop);
ORVEL_EXPORT(E1USR, e1usr_, 2, orvel::frame::e1usr);
ORVEL_EXPORT(N1RTY, n1rty_, 1, orvel::frame::n1rty);
ORVEL_EXPORT(N1RCD, n1rcd_, 1, orvel::frame::n1rcd);
ORVEL_EXPORT(IERCD, iercd_, 0, orvel::frame::iercd);
ORVEL_EXPORT(N1RNOF, n1rnof_, 1, orvel::frame::n1rnof);
ORVEL_EXPORT(N1RGB, n1rgb_, 0, orvel::frame::n1rgb);
ORVEL_EXPORT(N1THRD, n1thrd_, 0, orvel::frame::n1thrd);
ORVEL_EXPORT(E1MEM, e1mem_, 6, orvel::frame::e1mem);
