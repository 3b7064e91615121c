// frame/parameters.cpp - the store of message parameters and its setters
#include <charconv>
#include <cstring>

#include "frame/export.h"
#include "frame/message.h"

namespace orvel::frame {

namespace {

constexpr std::size_t longest_text = 255;

// Text of a number, independent of the host's locale.
class Digits {
public:
    explicit Digits(int32_t value) { end_ = std::to_chars(text_, text_ + sizeof text_, value).ptr; }

    Digits(double value, int precision)
    {
        if (value != value) {
            put("NaN");
        } else if (value - value != 0.0) {
            put(value < 0.0 ? "-Infinity" : "Infinity");
        } else {
            end_ = std::to_chars(text_, text_ + sizeof text_, value, std::chars_format::scientific, precision)
                       .ptr;
            std::replace(text_, end_, 'e', 'E');
        }
    }

    std::string_view text() const { return {text_, static_cast<std::size_t>(end_ - text_)}; }

private:
    void put(std::string_view word) { end_ = std::copy(word.begin(), word.end(), text_); }

    char text_[32];
    char* end_;
};

Digits digits(float value) { return {static_cast<double>(value), 6}; }
Digits digits(double value) { return {value, 15}; }

template <class Real>
void store_complex(State& s, char kind, int32_t index, const std::complex<Real>& value)
{
    char text[80];
    char* end = text;
    const auto put = [&](std::string_view piece) { end = std::copy(piece.begin(), piece.end(), end); };
    put("(");
    put(digits(value.real()).text());
    put(",");
    put(digits(value.imag()).text());
    put(")");
    store_parameter(s, kind, index, {text, static_cast<std::size_t>(end - text)});
}

}  // namespace

void store_parameter(State& s, char kind, int32_t index, std::string_view text)
{
    if (index < 1 || index > 9) return;
    int32_t& used = s.errors->parlen;
    const int32_t last = std::clamp(used, 1, parameter_room);
    if (text.size() > static_cast<std::size_t>(parameter_room) ||
        last + static_cast<int32_t>(text.size()) + 8 > parameter_room)
        return;
    char* p = s.text->parameters + last;
    *p++ = '*';
    *p++ = kind;
    *p++ = static_cast<char>('0' + index);
    *p++ = '*';
    p = std::to_chars(p, p + 3, text.size()).ptr;
    *p++ = '%';
    p = std::copy(text.begin(), text.end(), p);
    used = static_cast<int32_t>(p - s.text->parameters);
}

void store_text(State& s, int32_t index, std::string_view text)
{
    text = without_trailing_blanks(text.substr(0, longest_text));
    store_parameter(s, 'L', index, text.empty() ? " " : text);
}

void store_integer(State& s, int32_t index, int32_t value)
{
    store_parameter(s, 'I', index, Digits(value).text());
}
void store_real(State& s, int32_t index, float value)
{
    store_parameter(s, 'R', index, digits(value).text());
}
void store_real(State& s, int32_t index, double value)
{
    store_parameter(s, 'D', index, digits(value).text());
}

namespace {

void e1sti(const int32_t* id, const int32_t* value) { store_integer(state(), *id, *value); }
void e1str(const int32_t* id, const float* value) { store_real(state(), *id, *value); }
void e1std(const int32_t* id, const double* value) { store_real(state(), *id, *value); }
void e1stc(const int32_t* id, const orvel_complex* value) { store_complex(state(), 'C', *id, *value); }
void e1stz(const int32_t* id, const orvel_dcomplex* value) { store_complex(state(), 'Z', *id, *value); }

void e1stl(const int32_t* id, const char* string, std::size_t len)
{
    const std::string_view text = text_argument(string, len);
    if (*id < 0 && *id >= -9)
        store_parameter(state(), 'L', -*id, text.substr(0, longest_text));
    else
        store_text(state(), *id, text);
}

void e1sta(const int32_t* id, const int32_t* len, const char* string, std::size_t string_len)
{
    const auto wanted = static_cast<std::size_t>(std::max(*len, 0));
    store_parameter(state(), 'A', *id, text_argument(string, string_len).substr(0, wanted));
}

}  // namespace

}  // namespace orvel::frame

ORVEL_EXPORT(E1STI, e1sti_, 2, orvel::frame::e1sti);
ORVEL_EXPORT(E1STR, e1str_, 2, orvel::frame::e1str);
ORVEL_EXPORT(E1STD, e1std_, 2, orvel::frame::e1std);
ORVEL_EXPORT(E1STC, e1stc_, 2, orvel::frame::e1stc);
ORVEL_EXPORT(E1STZ, e1stz_, 2, orvel::frame::e1stz);
ORVEL_EXPORT(E1STL, e1stl_, 3, orvel::frame::e1stl);
ORVEL_EXPORT(E1STA, e1sta_, 4, orvel::frame::e1sta);
