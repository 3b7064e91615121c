// tests/frame/stack_test.cpp - routine stack, records of outcome, switches, layout of the blocks
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <thread>
#include <utility>
#include <vector>

#include "tests/frame/calls.h"

using namespace orvel_test;

namespace {

const std::string head = "\n *** TERMINAL ERROR ", next = "\n ***          ";

void position(int32_t type, int32_t print, int32_t stop) { E1POS(&type, &print, &stop); }
std::string switches() { return digits(ERCOM1.prttab) + digits(ERCOM1.stptab); }

// Stops arrive as exceptions, output in `page`.
class Stack : public Hosted {
protected:
    Stack() { on_stop(throwing); }

    // What INNER's error of this type does. Printed: m at the post, i at INNER's pop, o at OUTER's. Stopped:
    // I at INNER's pop, O at OUTER's. Last the type that the user's level receives.
    std::string life(int32_t type, bool nested)
    {
        std::string events;
        const auto step = [&](char printed, char stopped, auto call) {
            const Outcome stop = stop_of(call);
            if (!page.take().empty()) events += printed;
            if (stop.type != 0) events += stop == Outcome{type, 9} ? stopped : '?';
        };
        ERCOM1.ertype[0] = ERCOM1.ercode[0] = 0;
        if (nested) push("OUTER ");
        push("INNER ");
        step('m', '?', [&] { post(type, 9); });
        step('i', 'I', [] { pop("INNER "); });
        if (nested) step('o', 'O', [] { pop("OUTER "); });
        EXPECT_EQ(ERCOM1.level, 1);
        EXPECT_TRUE(!nested || ERCOM1.ertype[2] == -1);  // the record went with OUTER's pop
        EXPECT_EQ(ERCOM1.ercode[0], ERCOM1.ertype[0] != 0 ? 9 : 0);
        const Outcome left = nested && ERCOM1.ertype[0] == 0 ? Outcome{0, 0} : Outcome{type, 9};
        EXPECT_EQ(outcome(), left);
        EXPECT_EQ(IERCD(), left.type >= 1 && left.type <= 4 ? 9 : 0);
        return events + std::to_string(ERCOM1.ertype[0]);
    }

    Capture page;
};

TEST_F(Stack, TypeDecidesWhoPrintsWhoStopsAndWhatIsPassedUp)
{
    // Types and events: directly and nested with the initial switches, the same with all switches on.
    const std::tuple<int32_t, std::string, std::string, std::string, std::string> rows[] = {
        {-2, "0", "0", "0", "0"},       {1, "0", "0", "iI0", "0"},       {2, "2", "2", "iI2", "oO2"},
        {3, "i3", "o3", "iI3", "oO3"},  {4, "iI4", "oO4", "iI4", "oO4"}, {5, "mI5", "mIO5", "mI5", "mIO5"},
        {6, "m6", "m6", "mI6", "mO6"},  {7, "mI7", "mO7", "mI7", "mO7"}, {8, "0", "0", "0", "0"},
        {INT32_MAX, "0", "0", "0", "0"}};
    for (const auto& [type, direct, nested, direct_on, nested_on] : rows) {
        SCOPED_TRACE(type);
        set_switches(0, 2, 2);
        EXPECT_EQ(life(type, false) + " " + life(type, true), direct + " " + nested);
        set_switches(0, 1, 1);
        EXPECT_EQ(life(type, false) + " " + life(type, true), direct_on + " " + nested_on);
        set_switches(0, 0, 0);
        EXPECT_EQ(life(type, true), nested.substr(nested.size() - 1));
        set_switches(0, 0, 1);  // stops without a word
        EXPECT_EQ(life(type, false), direct_on.substr(direct_on.find('I') != direct_on.npos));
    }
}

TEST_F(Stack, LevelsCountAsUserAsTheySay)
{
    for (const auto& [word, who] :
         {std::pair{"ON", "INNER"}, {"OFF", "OUTER"}, {"on  ", "INNER"}, {"off ", "OUTER"}}) {
        push("OUTER ");
        user(word);
        push("INNER ");
        post(3, 1);
        for (const char* name : {"INNER", "OUTER"}) {
            pop(name);
            EXPECT_EQ(page.take().find(std::string("ERROR 1 from ") + name) != std::string::npos,
                      name == std::string(who))
                << word;
        }
    }
    user("OFF");
    EXPECT_EQ(life(3, false), "3");
    user("ON");
    // A writer may change what the caller is, before the stop is judged.
    const orvel_writer no_user = [](void*, int32_t, const char*, size_t) { ERCOM4.user[0] = 0; };
    write_with(no_user, nullptr, 9);
    use_unit(9);
    EXPECT_EQ(life(4, false), "4");
    write_with(nullptr, nullptr, 9);
    use_unit(6);
    user("ON");
    EXPECT_EQ(life(3, false), "i3");
    EXPECT_EQ(stop_of([] { user("On"); }), (Outcome{5, 1}));  // no pop would follow
    set_switches(5, -1, 0);
    EXPECT_EQ(stop_of([] { user("On"); }), (Outcome{0, 0}));
    set_switches(5, -1, 1);
    page.take();
    push("ASKS ");
    EXPECT_EQ(stop_of([] { user("On"); }), (Outcome{0, 0}));
    EXPECT_EQ(stop_of([] { pop("ASKS "); }), (Outcome{5, 1}));
    EXPECT_EQ(page.take(),
              "\n *** TERMINAL ERROR 1 from ASKS.  Invalid value for SWITCH in call to E1USR. \n"
              " ***          SWITCH must be set to 'ON' or 'OFF'.  SWITCH = 'On' \n");
}

TEST_F(Stack, PromptFatalDecidesOverPromptWarning)
{
    // Which were posted, what their switches say, what comes of it.
    const std::tuple<bool, bool, int32_t, int32_t, int32_t> rows[] = {
        {true, false, 1, 0, 1}, {true, false, 0, 1, 0}, {false, true, 0, 1, 1}, {false, true, 1, 0, 0},
        {true, true, 1, 0, 0},  {true, true, 0, 1, 1},  {false, false, 1, 1, 0}};
    push("POSTS ");
    for (const auto& [six, seven, stop6, stop7, result] : rows) {
        position(6, -1, stop6);
        position(7, -1, stop7);
        if (seven) post(7, 1);  // in this order, so that the last one posted does not decide
        if (six) post(6, 1);
        EXPECT_EQ(N1RGB(), result);
        EXPECT_EQ(ERCOM1.post6 + ERCOM1.post7, 0);
        EXPECT_EQ(N1RGB(), 0);
    }
    post(0, 0);
    pop("POSTS ");
    set_switches(0, 1, 1);
    for (int32_t form : {2, 3}) {
        ERCOM1.atttab[5] = ERCOM1.atttab[6] = form;
        EXPECT_EQ(life(6, false) + life(7, false), "m6m7");
        EXPECT_EQ(ERCOM1.post6 + ERCOM1.post7, 2);
        EXPECT_EQ(N1RGB(), 1);
    }
    ERCOM1.atttab[5] = ERCOM1.atttab[6] = 1;
}

TEST_F(Stack, SwitchesChangeForTheTypesNamed)
{
    constexpr int32_t leave = -2;
    // Print and stop switches of types 1 to 7 after E1POS, and after ERSET where it takes the type.
    const std::tuple<int32_t, int32_t, int32_t, int32_t, std::string, std::string> rows[] = {
        {leave, 0, 1, 0, "11111110000000", "11111110000000"},
        {leave, 1, 1, -1, "10111110001101", "10111110001101"},
        {leave, 2, -1, 1, "00111110101101", "00111110101101"},
        {leave, 3, 0, 1, "00011110011101", "00011010011111"},
        {leave, 4, 0, 0, "00101110000101", "00101100000100"},
        {leave, 5, -1, 0, "00111110001001", "00111110001001"},
        {1, 1, 2, 2, "01111110111111", "01111110111111"},
        {1, 3, 2, 2, "11111111101111", "11111111101101"},
        {0, 3, 2, 2, "00100000000000", "00100100000000"},
        {0, 4, 2, 2, "00010000001000", "00010010001001"},
        {0, 0, 2, 2, "00111110001101", "00111110001101"},
        {0, 6, 2, 1, "00000100000010", ""},
        {1, 7, 0, 2, "11111101111111", ""},
        {1, 8, 0, 0, "11111111111111", ""}};
    for (const auto& [all, type, print, stop, by_e1pos, by_erset] : rows)
        for (const auto& [call, expected] : {std::pair{&position, by_e1pos}, {&set_switches, by_erset}}) {
            if (expected.empty()) continue;
            set_switches(0, all == leave ? 2 : all, all == leave ? 2 : all);
            call(type, print, stop);
            EXPECT_EQ(switches(), expected) << all << " " << type;
        }
    set_switches(0, 2, 2);
    for (int32_t type = -8; type <= -1; ++type) {
        int32_t print = 77, stop = 78;
        E1POS(&type, &print, &stop);
        EXPECT_EQ(print, type == -8 ? 77 : "0011111"[-type - 1] - '0');
        EXPECT_EQ(stop, type == -8 ? 78 : "0001101"[-type - 1] - '0');
    }
}

TEST_F(Stack, BadSwitchArgumentsAreTerminalAndChangeNothing)
{
    const int32_t rows[][5] = {{0, 6, 1, 1, 1},  {0, -1, 0, 0, 1}, {0, 5, 3, 0, 2},          {0, 0, -2, 0, 2},
                               {0, 1, 0, 3, 3},  {0, 0, 0, -2, 3}, {0, INT32_MIN, 4, -2, 3}, {1, 0, 3, 0, 1},
                               {1, 9, 0, -2, 1}, {1, 4, -2, 3, 1}};
    for (const auto& [by_e1pos, type, print, stop, code] : rows) {
        page.take();
        const auto call = by_e1pos ? position : set_switches;
        EXPECT_EQ(stop_of([&, t = type, p = print, s = stop] { call(t, p, s); }), (Outcome{5, code}));
        EXPECT_EQ(switches(), "00111110001101");
        if (type != INT32_MIN) continue;
        EXPECT_EQ(page.take(), head + "1 from ERSET.  Invalid error severity level indicator. " + next +
                                   "IERSVR must be 0 to 5.  IERSVR = -2147483648\n" + head +
                                   "2 from ERSET.  Invalid value specified for printing" + next +
                                   "action.  IPACT must be -1 to 2.  IPACT = 4\n" + head +
                                   "3 from ERSET.  Invalid value specified for stopping" + next +
                                   "action.  ISACT must be -1 to 2.  ISACT = -2\n");
    }
    EXPECT_EQ(page.take(), head + "1 from USER.  Invalid value specified for print table" + next +
                               "attribute.  IPATT must be -1, 0, 1, or 2.  IPATT = -2\n" + head +
                               "1 from USER.  Invalid value specified for stop table" + next +
                               "attribute.  ISATT must be -1, 0, 1, or 2.  ISATT = 3\n");
}

TEST_F(Stack, NamesArePaddedAndComparedOverThirtyTwoCharacters)
{
    const std::string name = "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789abcd";
    for (std::size_t n = 0; n <= name.size(); ++n) {
        push(name.substr(0, n));
        std::string padded = name.substr(0, n) + std::string(32, ' ');
        padded.resize(32);
        EXPECT_EQ(std::string(ERCOM2.rname[1], 32), padded);
        EXPECT_EQ(stop_of([&] { pop(padded + "  "); }), (Outcome{0, 0}));
    }
    for (std::size_t k = 0; k < 34; ++k) {
        std::string other = name.substr(0, 34);
        other[k] = '?';
        push(name.substr(0, 34));
        EXPECT_EQ(stop_of([&] { pop(other); }), (k < 32 ? Outcome{5, 2} : Outcome{0, 0})) << k;
        orvel_reset();
    }
}

TEST_F(Stack, MisuseStopsWhateverTheTableSays)
{
    const int32_t here = 0;
    set_switches(0, 2, 0);
    EXPECT_EQ(stop_of([] { pop("NOBODY "); }), (Outcome{5, 1}));
    EXPECT_EQ(one_line(page.take()), head +
                                         "1 from E1POP.  Error condition in E1POP.  Cannot pop from NOBODY "
                                         "because stack is empty.\n");
    orvel_reset();
    push("FIRST ");
    EXPECT_EQ(stop_of([] { pop("SECOND "); }), (Outcome{5, 2}));
    EXPECT_EQ(one_line(page.take()), head +
                                         "2 from FIRST.  Error condition in E1POP.  SECOND does not match "
                                         "the name FIRST in the stack.\n");
    orvel_reset();
    const std::tuple<int32_t (*)(const int32_t*), std::array<int32_t, 2>, std::string> rows[] = {
        {N1RTY, {2, -1}, "N1RTY must be 0 or 1.\n"},
        {N1RCD, {2, -1}, "N1RCD must be 0 or 1.\n"},
        {N1RNOF, {3, 0}, "N1RNOF must be 1 or" + next + "2. \n"}};
    for (const auto& [call, options, text] : rows)
        for (int32_t option : options) {
            EXPECT_EQ(stop_of([&, f = call] { f(&option); }), (Outcome{5, 1}));
            EXPECT_EQ(page.take(), head + "1 from USER.  The argument passed to " + text);
            EXPECT_EQ(10 * N1RTY(&here) + N1RCD(&here), 51);
            orvel_reset();
        }

    for (int k = 2; k <= 50; ++k) push("R" + std::to_string(k));
    EXPECT_EQ(stop_of([] { push("ONEMORE "); }), (Outcome{5, 1}));
    EXPECT_EQ(ERCOM1.level, 50);
    EXPECT_EQ(page.take().rfind(head + "1 from R50.  Error condition in E1PSH.  Push would cause" + next +
                                    "stack level to exceed 50. \n     Here is",
                                0),
              0u);
    post(0, 0);
    ERCOM1.ertype[50] = 9;  // above the deepest level, where nothing is discarded
    for (int k = 50; k >= 2; --k) pop("R" + std::to_string(k));
    EXPECT_EQ(std::exchange(ERCOM1.ertype[50], -1), 9);
    EXPECT_EQ(ERCOM1.level, 1);
}

TEST_F(Stack, CounterAndMemory)
{
    int32_t value = 0, spend = 2;
    N1RNOF(&spend);
    for (const auto& [option, count] : {std::pair{1, 1}, {1, 2}, {2, 2}, {2, 0}})
        EXPECT_EQ(N1RNOF(&option), count);
    EXPECT_EQ(N1THRD(), 1);
    const auto mem = [&](const char* action, int32_t slot, char* name) {
        return E1MEM(action, &slot, &value, name, std::strlen(action), 6);
    };
    for (const auto& [name, truth] : {std::pair{"LAPACK", -1}, {"lapack", -1}, {"Lapack", 0}, {"LINPAK", 0}})
        for (const auto& [set, get] : {std::pair{"SET", "GET"}, {"set", "get"}}) {
            char given[7], got[7] = {};
            std::strcpy(given, name);
            for (int32_t slot : {1, 10}) mem(set, slot, (value = 100 * slot, given));
            value = -5;
            for (int32_t slot : {0, 11}) mem(set, slot, given);
            for (int32_t slot : {1, 10}) {
                EXPECT_EQ(mem(get, slot, got), truth);
                EXPECT_EQ(value, 100 * slot);
                EXPECT_STREQ(got, name);
                EXPECT_EQ(mem("look", slot, got), 0);
            }
        }
    EXPECT_EQ(ERCOM1.memslt[1], 0);
    EXPECT_EQ(ERCOM1.trctab[6], 1);  // stands before the slots
    char given[] = "ABC", got[] = "??????";
    const int32_t slot = 1;
    E1MEM("SET", &slot, &value, given, 3, 3);
    E1MEM("GET", &slot, &value, got, 3, 6);
    EXPECT_STREQ(got, "ABC   ");
}

TEST_F(Stack, BlocksHaveTheirOrderAndInitialValues)
{
    std::vector<int32_t> expected = {1, 50, 0};
    const auto put = [&](std::size_t n, int32_t x) { expected.insert(expected.end(), n, x); };
    for (int k = 0; k < 2; ++k) put(1, 0), put(50, -1);
    for (int32_t x : {0, 0, 1, 1, 1, 1, 1, /* stop */ 0, 0, 0, 1, 1, 0, 1}) put(1, x);
    put(1, 1), put(53, 0), put(14, 1), put(10, 0);
    ASSERT_EQ(offsetof(orvel_ercom1, linalg), 4 * expected.size());
    ASSERT_EQ(sizeof(orvel_ercom2), 1024u + 300 + 50 * 32);
    ASSERT_EQ(sizeof(orvel_ercom8) + sizeof(orvel_ercom9), 31u * 4 + 10 * 31);
    std::thread([&] {
        // Whatever was stored there before the first call.
        ERCOM1.level = 7, ERCOM2.rname[0][0] = 'x', ERCOM3.checksum = 8.0;
        ERCOM4.user[1] = ERCOM8.current = -1, ERCOM9.name[0][0] = 'x';
        E1INIT();
        EXPECT_EQ(std::vector<int32_t>(&ERCOM1.level, &ERCOM1.level + expected.size()), expected);
        EXPECT_EQ(std::string(ERCOM1.linalg, 6), "LINPAK");
        EXPECT_EQ(std::string(ERCOM2.rname[0], 32), "USER" + std::string(28, ' '));
        EXPECT_EQ(ERCOM3.checksum, 0.0);
        EXPECT_EQ(ERCOM8.current, 1);
        for (int32_t k = 0; k < 51; ++k) EXPECT_EQ(ERCOM4.user[k], k == 0 ? -1 : 0);
        for (int32_t k = 0; k < 10; ++k) EXPECT_EQ(2 * ERCOM8.line[k] + ERCOM8.name_length[k], k == 0);
        EXPECT_EQ(std::string(ERCOM9.name[0], 31), "?" + std::string(30, ' '));
        // The members are where the list has them, and a second E1INIT leaves them alone.
        ERCOM1.parlen = 2, ERCOM1.post6 = 3, ERCOM1.post7 = 4, ERCOM1.trctab[0] = 5, ERCOM1.ercode[0] = 6;
        E1INIT();
        const int32_t* p = &ERCOM1.level;
        EXPECT_EQ((std::vector{p[119], p[120], p[121], p[180], p[54]}), (std::vector{2, 3, 4, 5, 6}));
    }).join();
}

// What a jump may leave behind is cleared, what the program has set is kept.
TEST_F(Stack, ResetClearsErrorsAndKeepsSwitches)
{
    ERCOM1.level = 3, ERCOM1.msglen = 5, ERCOM1.parlen = 30, ERCOM1.post6 = ERCOM1.post7 = 1;
    std::fill_n(ERCOM1.ertype, 51, 3);
    std::fill_n(ERCOM1.ercode, 51, 4);
    std::fill_n(ERCOM4.user, 51, -1);
    ERCOM4.user[0] = 0;
    ERCOM3.checksum = 5.0;
    use_unit(77);
    set_switches(3, 0, 1);
    orvel_reset();
    EXPECT_EQ((std::array{ERCOM1.level, ERCOM1.msglen, ERCOM1.parlen, ERCOM1.post6, ERCOM1.post7}),
              (std::array{1, 0, 1, 0, 0}));
    for (int k = 0; k < 51; ++k)
        EXPECT_EQ((std::array{ERCOM1.ertype[k], ERCOM1.ercode[k], ERCOM4.user[k]}),
                  (k == 0 ? std::array{0, 0, -1} : std::array{-1, -1, 0}));
    EXPECT_EQ(switches(), "00011010011111");
    EXPECT_EQ(ERCOM3.checksum, 5.0);
    int32_t third = 3, unit = 0;
    UMACH(&third, &unit);
    EXPECT_EQ(unit, 77);
}

using StackDeathTest = Quiet;

TEST_F(StackDeathTest, StopEndsTheProcessAfterTheCallersOutput)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto hold = [](const char* text) {  // standard output, buffered, where the test can see it
        dup2(STDERR_FILENO, STDOUT_FILENO);
        std::setvbuf(stdout, nullptr, _IOFBF, 4096);
        std::fputs(text, stdout);
    };
    EXPECT_EXIT((hold("before"), set_switches(6, 1, 1)), ::testing::ExitedWithCode(stopped),
                "\nbefore\n \\*\\*\\* TERMINAL ERROR 1 from ERSET");
    EXPECT_EXIT((orvel_set_stop_status(3), set_switches(0, 0, -1), hold("alone"), set_switches(6, 1, 1)),
                ::testing::ExitedWithCode(3), "\nalone$");
}

}  // namespace
