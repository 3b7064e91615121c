// frame/print.cpp - header line, wrapped message and traceback
#include "frame/print.h"

#include "frame/export.h"
#include "frame/outcome.h"
#include "frame/units.h"

namespace orvel::frame {

namespace {

constexpr std::size_t header_room = 59;
constexpr std::size_t line_room = 64;

std::string_view severity_word(int32_t type)
{
    constexpr std::string_view words = "NOTE    ALERT   WARNING FATAL   TERMINALWARNING FATAL   UNKNOWN ";
    return words.substr(static_cast<std::size_t>(is_type(type) ? type - 1 : 7) * 8, 8);
}

// A recorded type outside 1..7 has no entry in the tables; it prints like one with the initial entries.
int32_t attribute(const int32_t (&table)[7], int32_t type) { return is_type(type) ? table[type - 1] : 1; }

struct Source {
    std::string_view name;
    int32_t line;
};

Source current_source(const State& s)
{
    const int k = std::clamp(s.lines->current, 1, 10) - 1;
    const int32_t length = std::clamp(s.lines->name_length[k], 0, 31);
    return {{s.sources->name[k], static_cast<std::size_t>(length)}, s.lines->line[k]};
}

// Form of the header; a source that is not known gives way to the name of the routine.
int32_t header_form(const State& s, int32_t type)
{
    const int32_t form = attribute(s.errors->atttab, type);
    const Source source = current_source(s);
    return form == 3 && source.name == "?" && source.line == 0 ? 1 : form;
}

// What follows the word "ERROR"; at most 59 characters.
void put_prefix(Text& prefix, const State& s, int32_t level, int32_t form)
{
    if (form == 3) {
        const Source source = current_source(s);
        prefix << " from " << source.name;
        if (source.line >= 1) prefix << " at line " << source.line;
    } else if (form != 2) {
        prefix << " " << s.errors->ercode[level - 1] << " from " << printed_name(s, level).word();
    }
}

struct LineBreak {
    std::size_t end;   // characters of the text on this line
    std::size_t next;  // where the next line starts
};

LineBreak break_line(std::string_view rest, std::size_t room)
{
    const std::size_t forced = rest.find("%/");
    if (forced < room) return {forced, forced + 2};
    if (rest.size() <= room) return {rest.size(), rest.size()};
    const std::size_t blank = rest.substr(0, room).rfind(' ');
    // A blank in the first place is no break: the line would be empty.
    if (blank != rest.npos && blank > 0) return {blank, blank + 1};
    return {room, room};
}

void put_message(Text& page, std::string_view message, std::size_t first_room)
{
    std::size_t room = first_room;
    for (;;) {
        const LineBreak cut = break_line(message, room);
        page << message.substr(0, cut.end) << "\n";
        message.remove_prefix(cut.next);
        if (message.empty()) return;
        page << " ***          ";
        room = line_room;
    }
}

void put_traceback(Text& page, State& s, int32_t level)
{
    page << "     Here is a traceback of subprogram calls in reverse order:\n"
         << "     Routine name                    Error type  Error code\n"
         << "     ------------                    ----------  ----------\n";
    for (int32_t k = level; k >= 1; --k) {
        page << "     " << std::string_view(printed_name(s, k).text, name_room);
        page.in_six(type_at(s, k)) << "      ";
        page.in_six(code_at(s, k));
        if (k > 1 && !is_user(s, k - 1)) page << "    (Called internally)";
        page << "\n";
    }
}

// A writer may call the library. What it leaves behind is not the business of the routine whose message it
// writes: the records from that routine's level up and the empty buffer are restored.
class Undisturbed {
public:
    explicit Undisturbed(State& s) : s_(s), errors_(*s.errors), exceptions_(s.exceptions) {}
    ~Undisturbed()
    {
        orvel_ercom1& e = *s_.errors;
        for (int32_t k = std::clamp(errors_.level, 1, deepest_level) - 1; k <= deepest_level; ++k) {
            e.ertype[k] = errors_.ertype[k];
            e.ercode[k] = errors_.ercode[k];
        }
        e.post6 = errors_.post6;
        e.post7 = errors_.post7;
        e.msglen = 0;
        e.parlen = 1;
        s_.exceptions = exceptions_;
    }
    Undisturbed(const Undisturbed&) = delete;
    Undisturbed& operator=(const Undisturbed&) = delete;

private:
    State& s_;
    const orvel_ercom1 errors_;
    const int exceptions_;
};

}  // namespace

PrintedName printed_name(const State& s, int32_t level)
{
    const auto lower = [](char c) { return c >= 'a' && c <= 'z'; };
    const auto upper = [](char c) { return c >= 'A' && c <= 'Z'; };
    PrintedName name;
    std::copy_n(s.text->rname[level - 1], name_room, name.text);
    if (lower(name.text[0]) && upper(name.text[1]))
        name.text[0] = static_cast<char>(name.text[0] - 'a' + 'A');
    return name;
}

void print_message(State& s)
{
    if (message_length(s) < 1) return;
    Page page(s.units[2]);
    orvel_ercom1& e = *s.errors;
    const int32_t level = current_level(s);
    const int32_t type = type_at(s, level);
    const int32_t form = header_form(s, type);
    const std::string_view message{s.text->message, static_cast<std::size_t>(message_length(s))};

    char prefix_room[header_room];
    Text prefix(prefix_room, sizeof prefix_room);
    put_prefix(prefix, s, level, form);
    if (!message.starts_with(".  ")) prefix << ".  ";
    page.text << "\n *** " << severity_word(type) << " ERROR" << prefix.view();
    put_message(page.text, message, header_room - prefix.view().size());
    if (attribute(e.trctab, type) == 1 && (level > 2 || form > 1)) put_traceback(page.text, s, level);
    keep_last_message(s);
    e.msglen = 0;
    const Undisturbed records(s);
    page.send();
}

void deliver(State& s, int32_t type)
{
    if (s.quiet != nullptr)
        keep_message(s, *s.quiet);
    else if (is_on(s.errors->prttab, type))
        print_message(s);
    else
        keep_last_message(s);
}

void e1prt()
{
    State& s = state();
    if (s.quiet != nullptr)
        keep_message(s, *s.quiet);
    else
        print_message(s);
}

}  // namespace orvel::frame

ORVEL_EXPORT(E1PRT, e1prt_, 0, orvel::frame::e1prt);
