// frame/state.cpp - the exported blocks of state, their initial values, reset
#include "frame/state.h"

#include <algorithm>
#include <cstring>

#include "frame/export.h"
#include "frame/host.h"
#include "frame/print_lock.h"

namespace {

constexpr auto initial_ercom1 = [] {
    orvel_ercom1 b{};
    b.level = 1;
    b.maxlev = orvel::frame::deepest_level;
    for (int k = 0; k < 51; ++k) b.ertype[k] = b.ercode[k] = k == 0 ? 0 : -1;
    for (int k = 0; k < 7; ++k) {
        b.prttab[k] = orvel::frame::initial_print[k];
        b.stptab[k] = orvel::frame::initial_stop[k];
        b.atttab[k] = b.trctab[k] = 1;
    }
    b.parlen = 1;
    for (int k = 0; k < 6; ++k) b.linalg[k] = "LINPAK"[k];
    return b;
}();

constexpr auto initial_ercom2 = [] {
    orvel_ercom2 b{};
    for (char& c : b.message) c = ' ';
    for (char& c : b.parameters) c = ' ';
    for (auto& name : b.rname)
        for (char& c : name) c = ' ';
    for (int k = 0; k < 4; ++k) b.rname[0][k] = "USER"[k];
    return b;
}();

constexpr auto initial_ercom4 = [] {
    orvel_ercom4 b{};
    b.user[0] = -1;
    return b;
}();

constexpr auto initial_ercom8 = [] {
    orvel_ercom8 b{};
    b.current = 1;
    b.name_length[0] = 1;
    return b;
}();

constexpr auto initial_ercom9 = [] {
    orvel_ercom9 b{};
    for (auto& name : b.name)
        for (char& c : name) c = ' ';
    b.name[0][0] = '?';
    return b;
}();

}  // namespace

extern "C" {
constinit __thread orvel_ercom1 ERCOM1 ORVEL_VISIBLE = initial_ercom1;
constinit __thread orvel_ercom2 ERCOM2 ORVEL_VISIBLE = initial_ercom2;
constinit __thread orvel_ercom3 ERCOM3 ORVEL_VISIBLE = {0.0};
constinit __thread orvel_ercom4 ERCOM4 ORVEL_VISIBLE = initial_ercom4;
constinit __thread orvel_ercom8 ERCOM8 ORVEL_VISIBLE = initial_ercom8;
constinit __thread orvel_ercom9 ERCOM9 ORVEL_VISIBLE = initial_ercom9;
extern __thread orvel_ercom1 ercom1_ ORVEL_ALIAS(ERCOM1);
extern __thread orvel_ercom2 ercom2_ ORVEL_ALIAS(ERCOM2);
extern __thread orvel_ercom3 ercom3_ ORVEL_ALIAS(ERCOM3);
extern __thread orvel_ercom4 ercom4_ ORVEL_ALIAS(ERCOM4);
extern __thread orvel_ercom8 ercom8_ ORVEL_ALIAS(ERCOM8);
extern __thread orvel_ercom9 ercom9_ ORVEL_ALIAS(ERCOM9);
}

namespace orvel::frame {

constinit thread_local State thread_state{};

void initialise(State& s)
{
    const Switches defaults = thread_defaults();
    ERCOM1 = initial_ercom1;
    std::memcpy(ERCOM1.prttab, defaults.print, sizeof defaults.print);
    std::memcpy(ERCOM1.stptab, defaults.stop, sizeof defaults.stop);
    ERCOM2 = initial_ercom2;
    ERCOM3 = {0.0};
    ERCOM4 = initial_ercom4;
    ERCOM8 = initial_ercom8;
    ERCOM9 = initial_ercom9;
    s = {true, 0, 0, {5, 6, 6}, 0, 0, &ERCOM1, &ERCOM2, &ERCOM3, &ERCOM4, &ERCOM8, &ERCOM9, nullptr, nullptr};
}

void e1init() { state(); }

extern "C" ORVEL_VISIBLE void orvel_reset(void)
{
    release_print_lock();
    State& s = state();
    orvel_ercom1& e = *s.errors;
    e.level = initial_ercom1.level;
    e.msglen = initial_ercom1.msglen;
    e.parlen = initial_ercom1.parlen;
    e.post6 = initial_ercom1.post6;
    e.post7 = initial_ercom1.post7;
    std::ranges::copy(initial_ercom1.ertype, e.ertype);
    std::ranges::copy(initial_ercom1.ercode, e.ercode);
    std::ranges::copy(initial_ercom4.user, s.callers->user);
    s.quiet = nullptr;
    s.context = nullptr;
}

}  // namespace orvel::frame

ORVEL_EXPORT(E1INIT, e1init_, 0, orvel::frame::e1init);
