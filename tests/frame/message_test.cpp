// tests/frame/message_test.cpp - parameters, templates, checksum, printed lines, message file
#include <cmath>
#include <limits>
#include <regex>

#include "tests/frame/calls.h"

using namespace orvel_test;
using std::string;

namespace {

const string next = "\n ***          ";
const string trace_head =
    "     Here is a traceback of subprogram calls in reverse order:\n"
    "     Routine name                    Error type  Error code\n"
    "     ------------                    ----------  ----------\n";

void set_i(int32_t id, int32_t value) { E1STI(&id, &value); }
void set_l(int32_t id, std::string_view text) { E1STL(&id, text.data(), text.size()); }
void set_a(int32_t id, int32_t length, std::string_view text)
{
    E1STA(&id, &length, text.data(), text.size());
}

string message() { return {ERCOM2.message, static_cast<std::size_t>(ERCOM1.msglen)}; }

// The message that a template makes, without its ".  ".
string made(std::string_view text)
{
    post(2, 1, text);
    return message().substr(0, 3) == ".  " ? message().substr(3) : "?" + message();
}

// Each of the values and a blank.
template <class T>
string shown(void (*set)(const int32_t*, const T*), char kind, std::initializer_list<T> values)
{
    string all;
    const int32_t id = 1;
    for (const T& value : values) set(&id, &value), all += made(string("%(") + kind + "1) ");
    return all;
}

// Adds entries to the store as a routine outside of the library does.
void fill_store(const string& entries)
{
    entries.copy(ERCOM2.parameters + ERCOM1.parlen, entries.size());
    ERCOM1.parlen += static_cast<int32_t>(entries.size());
}

class Message : public Hosted {
protected:
    // What a routine at level 2 prints when it is told to; the first line has room for 50 characters of it.
    string printed(int32_t type, int32_t code, std::string_view text = "Text")
    {
        set_switches(0, 0, 0);
        push("R ");
        post(type, code, text);
        E1PRT();
        post(0, 0, "");
        pop("R ");
        return page.take();
    }

    // The same of FATAL 2 after its header's first words.
    string fatal(std::string_view text = "Text")
    {
        const string all = printed(4, 2, text), head = "\n *** FATAL    ERROR";
        return all.rfind(head, 0) == 0 ? all.substr(head.size()) : "?" + all;
    }

    Capture page;
};

TEST_F(Message, PlaceholdersAreReplacedByTheirParameters)
{
    for (int32_t value : {-3, 4}) set_i(1, value);  // the first one holds
    set_i(9, 7);
    set_l(2, "%(I1)");
    set_l(3, "*I5*1%9");
    fill_store("*k1*3%key*S2*1%%*I0*1%5");
    EXPECT_EQ(made("N = %(I1).%(i1)%(I1) %(I2) %(R1)%(I0)%(B1)%(I:) %(I1]%(I11) %%(%(I9)%"
                   "%(l2)|%(K1)|%(s2) %(L3)%(I5) %(I1"),
              "N = -3.-3-3 %(I2) %(R1)%(I0)%(B1)%(I:) %(I1]%(I11) %%(7%%(I1)|key|% *I5*1%9%(I5) %(I1");
    EXPECT_EQ(ERCOM1.parlen, 1);
    set_i(1, 1);
    post(0, 0, "%(I1)");
    EXPECT_EQ(made("%(I1)"), "%(I1)");

    ERCOM1.atttab[3] = 3;
    for (const auto& [type, start] : {std::pair{4, " in reference to keyword ABCD.  "}, {2, ".  "}}) {
        fill_store("*N1*4%ABCD");
        push("R ");
        post(type, 1, "Text");
        EXPECT_EQ(message(), start + string("Text"));
        orvel_reset();
    }
    fill_store("*N1*4%ABCD");
    ERCOM1.trctab[3] = 0;
    EXPECT_EQ(fatal(), " 2 from R.   in reference to keyword ABCD.  Text\n");
    ERCOM1.atttab[3] = ERCOM1.trctab[3] = 1;
}

TEST_F(Message, SettersWriteTheirText)
{
    using F = std::numeric_limits<float>;
    using D = std::numeric_limits<double>;
    EXPECT_EQ(shown(E1STI, 'I', {0, -3, INT32_MAX, INT32_MIN}), "0 -3 2147483647 -2147483648 ");
    EXPECT_EQ(shown(E1STR, 'R',
                    {12.3456f, -F::max(), F::denorm_min(), 0.0f, -0.0f, F::infinity(), -F::infinity(),
                     std::copysign(F::quiet_NaN(), -1.0f)}),
              "1.234560E+01 -3.402823E+38 1.401298E-45 0.000000E+00 -0.000000E+00 Infinity -Infinity NaN ");
    EXPECT_EQ(shown(E1STD, 'D', {2.0 / 3, -D::max(), D::min(), 0.0}),
              "6.666666666666666E-01 -1.797693134862316E+308 2.225073858507201E-308 0.000000000000000E+00 ");
    EXPECT_EQ(shown(E1STC, 'C', {orvel_complex(-1.5f, 0.0f)}), "(-1.500000E+00,0.000000E+00) ");
    EXPECT_EQ(shown(E1STZ, 'Z', {orvel_dcomplex(D::quiet_NaN(), -1e100)}), "(NaN,-1.000000000000000E+100) ");

    const auto text = [](int32_t id, const string& given) { return set_l(id, given), made("<%(L1)>"); };
    EXPECT_EQ(text(1, "ab  ") + text(1, "   ") + text(1, ""), "<ab>< >< >");
    EXPECT_EQ(text(-1, "ab  ") + text(-1, "   ") + text(-1, ""), "<ab  ><   ><>");
    EXPECT_EQ(text(1, string(256, 'q')), "<" + string(255, 'q') + ">");
    EXPECT_EQ(text(-1, string(256, ' ')), "<" + string(255, ' ') + ">");
    for (const auto& [length, text] :
         {std::pair{2, "ab"}, {4, "ab c"}, {99, "ab c"}, {0, ""}, {-1, ""}, {INT32_MIN, ""}}) {
        set_a(1, length, "ab c");
        EXPECT_EQ(made("%(A1)"), text);
    }
    const int32_t one = 1, two = 2;
    E1STL(&one, nullptr, 3);
    E1STA(&one, &two, nullptr, 2);
    EXPECT_EQ(made("<%(L1)%(A1)>"), "< >");
    for (int32_t id : {0, 10, -10, INT32_MIN, INT32_MAX}) (set_i(id, 1), set_l(id, "a"), set_a(id, 1, "a"));
    set_i(-1, 1), set_a(-1, 1, "a");
    EXPECT_EQ(ERCOM1.parlen, 1);
}

TEST_F(Message, StoreAndBufferHaveTheirRoom)
{
    for (const auto& [length, used] : {std::pair{291, 300}, {292, 1}}) {
        set_a(1, length, string(400, 'a'));
        EXPECT_EQ(ERCOM1.parlen, used);
        EXPECT_EQ(made("%(A1)"), used == 1 ? "%(A1)" : string(291, 'a'));
    }
    set_a(1, 280, string(280, 'a'));  // 289 characters
    set_i(1, 1234);
    set_i(2, 123);
    EXPECT_EQ(made("%(I1)%(I2)"), "%(I1)123");

    // What the program has stored there by hand leads nowhere else.
    std::fill_n(ERCOM2.parameters, 300, ' ');
    for (int32_t used : {INT32_MIN, -1, 0, 1, 301, INT32_MAX}) {
        ERCOM1.parlen = used;
        set_i(1, 5);
        EXPECT_EQ(made("%(I1)"), used <= 1 ? "5" : "%(I1)");
        std::fill_n(ERCOM2.parameters, 300, ' ');
    }
    for (const char* entry : {"*I1*12", "-I1*1%5", "*I1-1%5"}) {  // cut short, none, none
        fill_store(entry);
        ERCOM2.parameters[ERCOM1.parlen] = '%';
        EXPECT_EQ(made("%(I1)"), "%(I1)");
    }
    for (int32_t length : {INT32_MIN, -1, 1025, INT32_MAX}) {
        made(string(1021, 'x'));
        ERCOM1.msglen = length;
        E1UCS();
        E1PRT();
        EXPECT_EQ(page.take().size() > 1024, length > 0);
    }

    EXPECT_EQ(made(string(1021, 'x')), string(1021, 'x'));
    EXPECT_EQ(made(string(1022, 'x')), string(1021, 'x'));
    set_l(1, "abcdef");
    EXPECT_EQ(made(string(1019, 'x') + "%(L1)tail"), string(1019, 'x') + "ab");
    string text;
    for (int k = 0; k < 200; ++k) text += "%(L1)";
    for (int filler : {19, 20}) {  // of the template, 1024 characters are read
        set_l(1, "z");
        EXPECT_EQ(made(text + string(filler, 'x') + "%(L1)!!"),
                  string(200, 'z') + string(filler, 'x') + (filler == 19 ? "z" : "%(L1"));
    }
}

TEST_F(Message, PostingKeepsWhatItIsToldToKeep)
{
    const std::tuple<int32_t, int32_t, const char*, Outcome, const char*> rows[] = {
        {4, 7, "First", {4, 7}, ".  First"},
        {-1, 9, "Second", {4, 9}, ".  Second"},
        {3, -1, "", {3, 9}, ".  Second"},
        {2, 5, " ", {2, 5}, ".  Second"},
        {-1, -6, "  ", {2, 5}, ".    "},
        {2, 0, "Gone", {2, 0}, ""},
        {3, 8, "", {3, 8}, ""},
        {2, 4, "Third", {2, 4}, ".  Third"},
        {0, 3, "Gone", {0, 3}, ""},
        {8, 6, "Eighth", {8, 6}, ".  Eighth"},
        {0, 0, "", {0, 0}, ""}};
    push("R ");
    post(3, 1, "Text");
    set_i(1, 5);
    E1PRT();
    EXPECT_EQ((Outcome{ERCOM1.msglen, ERCOM1.parlen}), (Outcome{0, 1}));
    for (const auto& [type, code, text, kept, left] : rows) {
        post(type, code, text);
        EXPECT_EQ((Outcome{ERCOM1.ertype[1], ERCOM1.ercode[1]}), kept);
        EXPECT_EQ(message(), left);
    }
    pop("R ");
    set_i(1, 77);  // which a routine of the library does not take for its own
    const int32_t none = 0, month = 1, year = 2000;
    set_switches(0, 1, 0);
    NDAYS(&none, &month, &year);
    EXPECT_NE(page.take().find("IDAY = 0."), string::npos);
}

// Where the error was found, by form, line and name of the source.
void set_source(int32_t form, int32_t line, std::string_view name, int32_t current = 3)
{
    ERCOM1.atttab[3] = form;
    ERCOM8.current = current;
    ERCOM8.line[2] = line;
    ERCOM8.name_length[2] = static_cast<int32_t>(name.size());
    name.copy(ERCOM9.name[2], 31);
}

TEST_F(Message, HeaderHasAWordAndAForm)
{
    const char* words[] = {"NOTE    ", "ALERT   ", "WARNING ", "FATAL   ",
                           "TERMINAL", "WARNING ", "FATAL   ", "UNKNOWN "};
    for (int32_t type = 1; type <= 8; ++type)
        EXPECT_EQ(printed(type, 40 + type), string("\n *** ") + words[type - 1] + " ERROR " +
                                                std::to_string(40 + type) + " from R.  Text\n");
    EXPECT_EQ(printed(-7, 1), "\n *** UNKNOWN  ERROR 1 from R.  Text\n");

    push("ab ");
    post(6, 1, "Text");
    E1PRT();
    EXPECT_EQ(page.take(), "\n *** WARNING  ERROR 1 from ab.  Text\n");
    post(0, 0, "");
    pop("ab ");

    const string trace = trace_head +
                         "     R                                    4           2\n"
                         "     USER                                 0           0\n";
    const std::tuple<int32_t, int32_t, std::string_view, string> rows[] = {
        {2, 0, "?", ""},
        {3, 12, "solve.f", " from solve.f at line 12"},
        {3, 0, "solve.f", " from solve.f"},
        {3, -1, "solve.f", " from solve.f"},
        {3, 5, "?", " from ? at line 5"},
        {1, 12, "solve.f", " 2 from R"},
        {3, 0, "?", " 2 from R"}};
    for (const auto& [form, line, name, where] : rows) {
        set_source(form, line, name);
        ERCOM1.trctab[3] = 1;
        EXPECT_EQ(fatal(), where + ".  Text\n" + (where.find(" 2") == where.npos ? trace : ""));
        ERCOM1.trctab[3] = 0;
        EXPECT_EQ(fatal(), where + ".  Text\n");
    }
    // The longest source leaves no room for the message on its line.
    const string name(31, 's'), longest = " from " + name + " at line 2147483647. ";
    set_source(3, INT32_MAX, name);
    fill_store("*N1*1%K");
    EXPECT_EQ(fatal(), longest + " " + next + " in reference to keyword K.  Text\n");
    EXPECT_EQ(fatal(), longest + next + "Text\n");
    set_source(1, 0, "?", 1);
    ERCOM1.trctab[3] = 1;
}

// What the program has stored in the blocks by hand leads nowhere else.
TEST_F(Message, SourceEntriesAreBroughtIntoRange)
{
    const string name(31, 's');
    ERCOM1.trctab[3] = 0;
    set_source(3, 1, name);
    ERCOM8.name_length[2] = 1000;
    EXPECT_EQ(fatal(), " from " + name + " at line 1.  Text\n");
    ERCOM8.name_length[2] = INT32_MIN;
    EXPECT_EQ(fatal(), " from  at line 1.  Text\n");
    ERCOM8.line[0] = 4, ERCOM8.line[9] = 5, ERCOM8.name_length[9] = 0;
    for (int32_t current : {INT32_MIN, 0, 11, INT32_MAX}) {
        ERCOM8.current = current;
        EXPECT_EQ(fatal(), current < 1 ? " from ? at line 4.  Text\n" : " from  at line 5.  Text\n");
    }
    ERCOM8.line[0] = 0;
    set_source(1, 0, "?", 1);
    ERCOM1.trctab[3] = 1;
}

TEST_F(Message, LinesBreakAtBlanksPairsAndEnds)
{
    const auto x = [](int n) { return string(static_cast<std::size_t>(n), 'x'); };
    const string rows[][2] = {
        {x(47), ".  " + x(47)},
        {x(48), ". " + next + x(48)},  // the blanks of ".  " are the last ones in the room
        {x(40) + " yyyyyy", ".  " + x(40) + " yyyyyy"},
        {x(40) + " yyyyyyy", ".  " + x(40) + next + "yyyyyyy"},
        {x(46) + " yy", ".  " + x(46) + next + "yy"},
        {x(47) + " yy", ". " + next + x(47) + " yy"},
        {"a%/" + x(64), ".  a" + next + x(64)},
        {"a%/" + x(150), ".  a" + next + x(64) + next + x(64) + next + x(22)},
        {"a%/b " + x(63) + " c", ".  a" + next + "b" + next + x(63) + next + "c"},
        {"a%/b " + x(61) + " c", ".  a" + next + "b " + x(61) + next + "c"},
        {"a%/%/b c%/d%/", ".  a" + next + next + "b c" + next + "d"},
        {"a%/ " + x(70), ".  a" + next + " " + x(63) + next + x(7)},
        {x(30) + " " + x(20) + "%/b", ".  " + x(30) + next + x(20) + next + "b"},
        {x(20) + "%/" + x(30) + " b", ".  " + x(20) + next + x(30) + " b"},
        {x(47) + "%/yy", ". " + next + x(47) + next + "yy"},  // the pair is not in the room
        {x(10) + "%" + x(30) + "/", ".  " + x(10) + "%" + x(30) + "/"}};
    for (const auto& row : rows) EXPECT_EQ(fatal(row[0]), " 2 from R" + row[1] + "\n");
}

TEST_F(Message, TracebackTellsWhoCalledWhom)
{
    push("dOUTER ");
    user("ON");
    push("MIDDLE ");
    push("iNNER_ROUTINE_WITH_A_LONG_NAME_CUT");
    ERCOM1.ertype[1] = 3;
    ERCOM1.ercode[1] = -14;
    set_switches(5, 2, 0);
    ERCOM1.ercode[0] = 999999;
    post(5, 1000000, "Bad.");
    EXPECT_EQ(page.take(),
              "\n *** TERMINAL ERROR 1000000 from INNER_ROUTINE_WITH_A_LONG_NAME_C.  Bad.\n" + trace_head +
                  "     INNER_ROUTINE_WITH_A_LONG_NAME_C     5      ******    (Called internally)\n"
                  "     MIDDLE                               0           0\n"
                  "     DOUTER                               3         -14\n"
                  "     USER                                 0      999999\n");
    post(8, 1, "Odd.");
    E1PRT();
    EXPECT_EQ(page.take().rfind(
                  "\n *** UNKNOWN  ERROR 1 from INNER_ROUTINE_WITH_A_LONG_NAME_C.  Odd.\n" + trace_head, 0),
              0u);
}

TEST_F(Message, ChecksumSkipsNumbers)
{
    const std::regex number("([ ,(=])[-+]?([0-9]+\\.?[0-9]*|\\.[0-9]+)([EeDd][-+]?[0-9]+)?");
    double expected = ERCOM3.checksum;
    const auto model = [&](const string& text, int32_t type, int32_t code) {
        int64_t sum = static_cast<int64_t>(expected), k = 0;
        for (char c : std::regex_replace(text, number, "$1"))
            sum = (sum + ++k * std::toupper(c)) % 1000000000;
        sum = (sum + ++k * type) % 1000000000;
        expected = static_cast<double>((sum + ++k * code) % 1000000000);
    };
    const char* texts[] = {"Plain words",
                           "N = 12, M=-3.,(4,+.5) x1 A(7)",
                           "1.5E+03 = 1.5E+ 2D-7 3.E 4..5 --6 + - .",
                           "no value% = %(I1) here=%(R1)",
                           "mixed CASE case",
                           "9 9,9(9=9 99 "};
    for (int round = 0; round < 3; ++round)
        for (const char* text : texts) {
            set_i(1, round * 1000 - 999);
            const int32_t one = 1;
            const float real = std::ldexp(1.5f, 40 * round);
            E1STR(&one, &real);
            post(2, 1000000000 + round, text);
            model(message(), 2, 1000000000 + round);
            EXPECT_EQ(ERCOM3.checksum, expected) << text;
        }
    post(2, 0, "Not counted");
    post(0, 5, "Not counted");
    E1UCS();
    model("", 0, 5);
    EXPECT_EQ(ERCOM3.checksum, expected);
}

TEST_F(Message, FileGivesTheTexts)
{
    const Folder folder;
    const string text = "I %(I1) %(I2), R %(R1) %(D1).";
    std::ofstream("messages.daf") << string(1024, ' ') + text + string(2048 - text.size(), ' ') + "cut short";
    set_switches(0, -1, 0);
    const auto report = [&](const char* where, int32_t record, int32_t n) {
        where != nullptr ? setenv("TAL_F90_MSG", where, 1) : unsetenv("TAL_F90_MSG");
        const orvel_s_epack s[10] = {{record, 0}, {3, 0}, {17, 0}, {-1, 0}, {-1, 0},
                                     {2, 0},      {1, 0}, {5, 0},  {-6, 0}, {0, 2.5f}};
        orvel_d_epack d[10];
        for (int k = 0; k < 10; ++k) d[k] = {s[k].whole, s[k].real};
        S_ERROR_POST(s, &n);
        const string single = page.take();
        EXPECT_EQ(outcome().type, single.find("TERMINAL") == string::npos ? 3 : 5);
        D_ERROR_POST(d, &n);
        return single + page.take();
    };
    const auto twice = [](const string& head, const string& text, const string& in_double = "") {
        const string line = "\n *** " + head + " from ";
        return line + "S_ERROR_POST.  " + text + "\n" + line + "D_ERROR_POST.  " +
               (in_double.empty() ? text : in_double) + "\n";
    };
    const string unopened = "Unable to open the Orvel MP Library" + next + "Error message file!";
    const string unread = "Unable to read a record from the" + next + "Orvel MP Library Error message file!";
    const string small =
        "The size of derived type epack is" + next + "abruptly truncated.  It should be at least ";
    const string padded = string(folder.name) + "  ", absent = string(folder.name) + "/absent",
                 longer(129, 'a');
    EXPECT_EQ(report(padded.c_str(), 2, 10),
              twice("WARNING  ERROR 17", "I 5 -6, R 2.500000E+00 %(D1).",
                    "I 5 -6, R 2.500000000000000E+00" + next + "2.500000000000000E+00."));
    for (int32_t record : {0, 1, 3, 4, -1, INT32_MIN, INT32_MAX})
        EXPECT_EQ(report(folder.name, record, 10), twice("TERMINAL ERROR 3", unread)) << record;
    for (const char* where : {absent.c_str(), longer.c_str(), static_cast<const char*>(nullptr)})
        EXPECT_EQ(report(where, 2, 10), twice("TERMINAL ERROR 2", unopened));
    for (const auto& [n, least] : {std::pair{9, "10."}, {6, "9."}, {-1, "7."}})
        EXPECT_EQ(report(folder.name, 2, n), twice("TERMINAL ERROR 1", small + least));
}

TEST_F(Message, PacketSetsSwitchesThatStay)
{
    const Folder folder;
    std::ofstream("messages.daf") << "%(I1)" + string(1019, ' ');
    setenv("TAL_F90_MSG", folder.name, 1);
    on_stop(throwing);
    const char* const none = "0000000";
    // Type, print and stop; word of the message, if one is printed; type that stops; switches afterwards.
    const std::tuple<int32_t, int32_t, int32_t, string, int32_t, string, string, Outcome> rows[] = {
        {1, 1, -1, "NOTE    ", 0, "1000000", none, {1, 17}},
        {2, -1, -1, "", 0, none, none, {2, 17}},
        {2, 1, 0, "ALERT   ", 0, "0100000", none, {2, 17}},
        {3, 1, 1, "WARNING ", 3, "0010010", "0010010", {3, 17}},
        {6, 1, 1, "WARNING ", 6, "0010010", "0010010", {6, 17}},
        {4, -1, 1, "", 4, none, "0001001", {4, 17}},
        {7, 2, -1, "FATAL   ", 0, "0001001", none, {7, 17}},
        {5, 1, 1, "TERMINAL", 5, "0000100", "0000100", {5, 17}},
        {3, 3, 0, "", 0, none, none, {5, 2}},
        {3, 0, -2, "", 0, none, none, {5, 3}},
        {8, 0, -1, "", 0, none, none, {5, 1}},
        {8, -1, -1, "", 0, none, none, {8, 17}}};
    for (const auto& [type, print, stop, word, stopped, prints, stops, left] : rows) {
        SCOPED_TRACE(type);
        set_switches(0, 0, 0);
        const orvel_d_epack packet[] = {{1, 0}, {type, 0}, {17, 0}, {print, 0}, {stop, 0}, {0, 0}, {0, 0}};
        const int32_t n = 7;
        set_i(1, 5);  // of nobody's message
        EXPECT_EQ(stop_of([&packet, &n] { D_ERROR_POST(packet, &n); }).type, stopped);
        EXPECT_EQ(page.take(),
                  word.empty() ? "" : "\n *** " + word + " ERROR 17 from D_ERROR_POST.  %(I1)\n");
        EXPECT_EQ(digits(ERCOM1.prttab) + digits(ERCOM1.stptab), prints + stops);
        EXPECT_EQ(outcome(), left);
    }
}

}  // namespace
