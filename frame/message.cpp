// frame/message.cpp - messages are built from templates, folded into the checksum, and posted
#include "frame/message.h"

#include <cmath>
#include <cstring>
#include <exception>
#include <optional>

#include "frame/export.h"
#include "frame/outcome.h"
#include "frame/print.h"

namespace orvel::frame {

namespace {

constexpr char upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }
constexpr bool is_digit(char c) { return c >= '0' && c <= '9'; }

using Found = std::optional<std::string_view>;

// Walks the store entry by entry, so that a value that looks like an entry is not taken for one.
Found find_parameter(const State& s, char kind, char index)
{
    const auto used = static_cast<std::size_t>(std::clamp(s.errors->parlen, 1, parameter_room));
    const std::string_view store{s.text->parameters, used};
    std::size_t at = 1;
    while (at + 5 < store.size() && store[at] == '*' && store[at + 3] == '*') {
        std::size_t length = 0;
        std::size_t p = at + 4;
        while (p < store.size() && p < at + 7 && is_digit(store[p]))
            length = 10 * length + static_cast<std::size_t>(store[p++] - '0');
        if (p >= store.size() || store[p] != '%' || length > store.size() - p - 1) break;
        if (upper(store[at + 1]) == kind && store[at + 2] == index) return store.substr(p + 1, length);
        at = p + 1 + length;
    }
    return std::nullopt;
}

// Appends to the message buffer and tells whether there is room for more.
class MessageBuffer {
public:
    explicit MessageBuffer(State& s) : s_(s) { s_.errors->msglen = 0; }

    bool append(std::string_view text)
    {
        int32_t& length = s_.errors->msglen;
        const auto room = static_cast<std::size_t>(message_room - length);
        const std::size_t n = std::min(text.size(), room);
        std::memcpy(s_.text->message + length, text.data(), n);
        length += static_cast<int32_t>(n);
        return n == text.size();
    }

private:
    State& s_;
};

// A placeholder is exactly five characters, "%(" letter digit ")".
Found placeholder_value(const State& s, std::string_view at, char real)
{
    if (at.size() < 5 || at[0] != '%' || at[1] != '(' || at[4] != ')') return std::nullopt;
    const char kind = upper(at[2]) == 'R' ? real : upper(at[2]);
    const char index = at[3];
    if (std::string_view("ACDIKLRSZ").find(kind) == std::string_view::npos || index < '1' || index > '9')
        return std::nullopt;
    return find_parameter(s, kind, index);
}

void build_message(State& s, char real, int32_t type, std::string_view text)
{
    text = text.substr(0, message_room);
    MessageBuffer message(s);
    const Found keyword = find_parameter(s, 'N', '1');
    if (keyword && is_type(type) && s.errors->atttab[type - 1] == 3)
        if (!message.append(" in reference to keyword ") || !message.append(*keyword)) return;
    if (!message.append(".  ")) return;

    std::size_t at = 0;
    while (at < text.size()) {
        const std::size_t next = std::min(text.find('%', at), text.size());
        if (!message.append(text.substr(at, next - at))) return;
        at = next;
        if (at == text.size()) return;
        const Found value = placeholder_value(s, text.substr(at), real);
        if (!message.append(value.value_or(text.substr(at, 1)))) return;
        at += value ? 5 : 1;
    }
}

// Length of the number at the start of the text: sign, digits with at most one point, exponent.
std::size_t number_length(std::string_view text)
{
    std::size_t p = 0;
    const auto skip_digits = [&] {
        const std::size_t start = p;
        while (p < text.size() && is_digit(text[p])) ++p;
        return p > start;
    };
    const auto skip_sign = [&] {
        if (p < text.size() && (text[p] == '+' || text[p] == '-')) ++p;
    };
    skip_sign();
    bool digits = skip_digits();
    if (p < text.size() && text[p] == '.') {
        ++p;
        digits = skip_digits() || digits;
    }
    if (!digits) return 0;
    const std::size_t mantissa = p;
    if (p < text.size() && (upper(text[p]) == 'E' || upper(text[p]) == 'D')) {
        ++p;
        skip_sign();
        if (skip_digits()) return p;
    }
    return mantissa;
}

}  // namespace

void fold_into_checksum(State& s)
{
    double& sum = s.sum->checksum;
    int32_t k = 0;
    const auto add = [&](double value) { sum = std::fmod(sum + ++k * value, 1e9); };
    const std::string_view message{s.text->message, static_cast<std::size_t>(message_length(s))};
    std::size_t at = 0;
    while (at < message.size()) {
        const char c = message[at++];
        add(static_cast<unsigned char>(upper(c)));
        if (c == ' ' || c == ',' || c == '(' || c == '=') at += number_length(message.substr(at));
    }
    const int32_t level = current_level(s);
    add(type_at(s, level));
    add(code_at(s, level));
}

void set_message(State& s, std::string_view text) { MessageBuffer(s).append(text); }

void post_stored(State& s, char real, int32_t type, int32_t code, std::string_view text)
{
    const int32_t level = current_level(s);
    if (type != -1) type_at(s, level) = type;
    if (code >= 0) code_at(s, level) = code;
    s.exceptions = std::uncaught_exceptions();
    orvel_ercom1& e = *s.errors;
    forget_last_message();
    if (type == 0 || code == 0) {
        e.msglen = 0;
    } else {
        const int32_t recorded = type_at(s, level);
        if (!text.empty() && text != " ") build_message(s, real, recorded, text);
        if (recorded == prompt_warning) e.post6 = 1;
        if (recorded == prompt_fatal) e.post7 = 1;
        fold_into_checksum(s);
        if (recorded >= terminal)
            deliver(s, recorded);
        else if (s.quiet != nullptr && level == s.quiet->level)
            keep_message(s, *s.quiet);  // no pop will
    }
    e.parlen = 1;
}

void post(State& s, char real, int32_t type, int32_t code, std::string_view text,
          std::initializer_list<Parameter> parameters)
{
    s.errors->parlen = 1;
    for (const Parameter& p : parameters) {
        if (p.kind == 'I')
            store_integer(s, p.index, p.whole);
        else if (p.kind == 'L')
            store_text(s, p.index, p.text);
        else if (real == 'R')
            store_real(s, p.index, static_cast<float>(p.real));
        else
            store_real(s, p.index, p.real);
    }
    post_stored(s, real, type, code, text);
}

namespace {

void e1mes(const int32_t* type, const int32_t* code, const char* text, std::size_t len)
{
    post_stored(state(), 'R', *type, *code, text_argument(text, len));
}

void e1ucs() { fold_into_checksum(state()); }

}  // namespace

}  // namespace orvel::frame

ORVEL_EXPORT(E1MES, e1mes_, 4, orvel::frame::e1mes);
ORVEL_EXPORT(E1UCS, e1ucs_, 0, orvel::frame::e1ucs);
