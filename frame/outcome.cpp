// frame/outcome.cpp - quiet calls, whose errors are kept as values; the last message of a thread
#include "frame/outcome.h"

#include <cstring>

#include "frame/export.h"
#include "frame/print.h"

namespace orvel::frame {

namespace {

// Beside the state, which every call reads: a message is long.
constinit thread_local LastMessage last{};

// The current message without the blanks and the point that its printed form begins with, and with true line
// ends. Returns its length, less than the room.
std::size_t plain_message(const State& s, char* to, std::size_t room)
{
    std::string_view message{s.text->message, static_cast<std::size_t>(message_length(s))};
    if (message.starts_with(".  ")) message.remove_prefix(3);
    message = without_trailing_blanks(message);
    std::size_t length = 0;
    for (std::size_t at = 0; at < message.size() && length + 1 < room; ++at) {
        const bool ends_line = message.substr(at).starts_with("%/");
        to[length++] = ends_line ? '\n' : message[at];
        at += ends_line;
    }
    to[length] = '\0';
    return length;
}

void plain_name(const State& s, char* to)
{
    const PrintedName name = printed_name(s, current_level(s));
    to[name.word().copy(to, name_room)] = '\0';
}

// Between the calls and the level that posts there is no user's function.
bool concerns(const State& s, const orvel_outcome& outcome)
{
    for (int32_t level = current_level(s) - 1; level > outcome.level; --level)
        if (is_user(s, level)) return false;
    return true;
}

}  // namespace

const LastMessage& last_message() { return last; }

void keep_last_message(const State& s)
{
    if (message_length(s) < 1) return;
    plain_message(s, last.text, sizeof last.text);
    plain_name(s, last.routine);
}

void forget_last_message() { last.routine[0] = last.text[0] = '\0'; }

void keep_message(State& s, orvel_outcome& outcome)
{
    if (message_length(s) < 1) return;
    keep_last_message(s);
    if (concerns(s, outcome)) {
        auto length = static_cast<std::size_t>(outcome.length);
        if (length > 0 && length + 1 < sizeof outcome.text) outcome.text[length++] = '\n';
        length += plain_message(s, outcome.text + length, sizeof outcome.text - length);
        outcome.length = static_cast<int32_t>(length);
        static_assert(sizeof outcome.routine > name_room);
        plain_name(s, outcome.routine);
        const int32_t level = current_level(s);
        if (level == outcome.level) record(outcome, type_at(s, level), code_at(s, level));  // no pop will
    }
    s.errors->msglen = 0;
}

extern "C" {

ORVEL_VISIBLE void orvel_begin_quiet(orvel_outcome* outcome)
{
    State& s = state();
    outcome->severity = outcome->code = outcome->length = 0;
    outcome->routine[0] = outcome->text[0] = '\0';
    outcome->level = current_level(s);
    outcome->outer = s.quiet;
    outcome->place = &s.quiet;  // saves the look-up at the end
    s.quiet = outcome;
}

ORVEL_VISIBLE void orvel_end_quiet(orvel_outcome* outcome)
{
    *static_cast<orvel_outcome**>(outcome->place) = outcome->outer;
}
}

}  // namespace orvel::frame
