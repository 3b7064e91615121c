// frame/state.h - the calling thread's state: exported blocks, units and counters
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "orvel/frame.h"
#include "orvel/host.h"

namespace orvel::frame {

enum ErrorType : int32_t {
    note = 1,
    alert = 2,
    warning = 3,
    fatal = 4,
    terminal = 5,
    prompt_warning = 6,
    prompt_fatal = 7,
};

inline constexpr int32_t deepest_level = 50;
inline constexpr int32_t message_room = sizeof(orvel_ercom2::message);
inline constexpr int32_t parameter_room = sizeof(orvel_ercom2::parameters);
inline constexpr int32_t name_room = sizeof(orvel_ercom2::rname[0]);

struct UserContext {
    orvel_context_function function;
    void* context;
};

// One look-up finds everything: the blocks are separate thread-local objects, because they are exported by
// name, and the state points to them from the thread's first call on.
struct State {
    bool ready;
    int exceptions;  // uncaught exceptions when the last error was recorded; tells unwinding from returning
    int32_t ending_level;  // of a thread that a stop handler has ended: this level and those below are left
                           // silently
    int32_t units[3];
    uint32_t counter;
    int32_t piece_hint;  // of the search among pieces of a polynomial: here, so that one look-up finds it too
    orvel_ercom1* errors;
    orvel_ercom2* text;
    orvel_ercom3* sum;
    orvel_ercom4* callers;
    orvel_ercom8* lines;
    orvel_ercom9* sources;
    orvel_outcome* quiet;        // of quiet calls under way, else null
    const UserContext* context;  // of the user's function, where it has one
};

[[gnu::visibility("hidden")]] extern constinit thread_local State thread_state;

[[gnu::cold]] void initialise(State& s);

inline State& state()
{
    State* s = &thread_state;
    asm("" : "+r"(s));  // keep the address; the compiler would look it up again at the next use
    if (!s->ready) [[unlikely]]
        initialise(*s);
    return *s;
}

// Initial print and stop switches of types 1 to 7; action 2 of ERSET restores them.
inline constexpr int32_t initial_print[7] = {0, 0, 1, 1, 1, 1, 1};
inline constexpr int32_t initial_stop[7] = {0, 0, 0, 1, 1, 0, 1};

// The blocks are open to the program, so what indexes an array is brought into range first.
inline int32_t current_level(const State& s) { return std::clamp(s.errors->level, 1, deepest_level); }
inline int32_t message_length(const State& s) { return std::clamp(s.errors->msglen, 0, message_room); }

inline int32_t& type_at(State& s, int32_t level) { return s.errors->ertype[level - 1]; }
inline int32_t& code_at(State& s, int32_t level) { return s.errors->ercode[level - 1]; }
inline bool is_user(const State& s, int32_t level) { return (s.callers->user[level - 1] & 1) != 0; }

inline bool is_type(int32_t type) { return type >= note && type <= prompt_fatal; }
inline bool is_on(const int32_t (&table)[7], int32_t type) { return is_type(type) && table[type - 1] == 1; }

// A character argument; a null pointer or a length that was negative in the caller is an empty text.
inline std::string_view text_argument(const char* text, std::size_t length)
{
    return text == nullptr || length > PTRDIFF_MAX ? std::string_view{} : std::string_view{text, length};
}

inline std::string_view without_trailing_blanks(std::string_view text)
{
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

}  // namespace orvel::frame
