// frame/message.h - message parameters, templates and the posting of errors
#pragma once

#include <initializer_list>

#include "frame/state.h"

namespace orvel::frame {

// A message parameter in library code, written at the check that posts: i(1, n), r(1, x), l(1, name).
struct Parameter {
    char kind;
    int32_t index;
    int32_t whole;
    double real;
    std::string_view text;
};

constexpr Parameter i(int32_t index, int32_t value) { return {'I', index, value, 0.0, {}}; }
template <class Real>
constexpr Parameter r(int32_t index, Real value)
{
    return {'R', index, 0, static_cast<double>(value), {}};
}
constexpr Parameter l(int32_t index, std::string_view text) { return {'L', index, 0, 0.0, text}; }

// Reals print in the precision of the routine: the letter R of a literal stands for D in double members.
template <class T>
inline constexpr char real_kind = sizeof(T) == sizeof(float) ? 'R' : 'D';

// Sets the parameters and posts the error at the current level. `real` is the kind that r() parameters are
// stored as and %(R.) placeholders are read as.
[[gnu::cold]] void post(State& s, char real, int32_t type, int32_t code, std::string_view text,
                        std::initializer_list<Parameter> parameters = {});

// The general form, whose parameters are already stored.
void post_stored(State& s, char real, int32_t type, int32_t code, std::string_view text);

// Makes the text the current message as it stands.
void set_message(State& s, std::string_view text);

// Folds the current message into the checksum.
void fold_into_checksum(State& s);

// Parameter store: entries "*", kind, index, "*", decimal length, "%", text. What does not fit is dropped.
void store_parameter(State& s, char kind, int32_t index, std::string_view text);
void store_text(State& s, int32_t index,
                std::string_view text);  // trailing blanks cut, at least one character
void store_integer(State& s, int32_t index, int32_t value);
void store_real(State& s, int32_t index, float value);
void store_real(State& s, int32_t index, double value);

}  // namespace orvel::frame
