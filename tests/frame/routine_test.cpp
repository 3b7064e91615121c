// tests/frame/routine_test.cpp - frame of a routine in library code, scratch storage, user code
#include "frame/routine.h"

#include <malloc.h>

#include <array>
#include <cstring>
#include <utility>

#include "frame/scratch.h"
#include "tests/frame/calls.h"
#include "tests/refusing_memory.h"

namespace {

using namespace orvel;
using namespace orvel_test;

class Frame : public Hosted {
protected:
    Frame() { requests = failing = 0; }
    Capture page;
};

std::size_t in_use() { return mallinfo2().uordblks + mallinfo2().hblkhd; }

// A routine with three arrays that calls a function of its user.
template <class T>
T front(int32_t n, T (*f)(const T*), T result)
{
    Routine<T, "FRONT"> me;
    Scratch<T> a;
    Scratch<int32_t> b;
    Scratch<double> c;
    if (!a.allocate(n) || !b.allocate(n, 3) || !c.allocate(n / 2)) {
        me.no_storage(
            2, "The required storage cannot be allocated.  The workspace is based on N, where N = %(i1).",
            {i(1, n)});
        return result;
    }
    if (n == 2) me.post(fatal, 3, "X = %(R1).", {r(1, 1.5)});
    std::memset(a, 0, static_cast<std::size_t>(n) * sizeof(T));
    return UserFunction<T>(me.state(), f)(a[n - 1]);
}

template <class T>
void inner(int32_t type, int32_t code)
{
    Routine<T, "INNER"> me;
    me.post(type, code, "Text.");
}

float plus_one(const float* x) { return *x + 1; }

TEST_F(Frame, EveryFailedRequestIsReportedAndNothingIsKept)
{
    constexpr int32_t n = 1 << 20;
    std::size_t at_print = 0;
    const std::string text =
        "\n *** TERMINAL ERROR 2 from FRONT.  The required storage cannot be allocated. \n"
        " ***          The workspace is based on N, where N = 1048576.\n";
    for (int k = 1; k <= 4; ++k) {
        SCOPED_TRACE(k);
        set_switches(0, 2, 0);
        requests = failing = 0;
        inner<float>(alert, 1);  // is not printed and waits in the buffer
        EXPECT_EQ(ERCOM1.msglen, 8);
        failing = k;
        EXPECT_EQ(front(n, plus_one, -7.0f), k <= 3 ? -7.0f : 1.0f);
        EXPECT_EQ(requests, std::min(k, 3));
        EXPECT_EQ(outcome(), (k <= 3 ? Outcome{5, 2} : Outcome{0, 0}));
        EXPECT_EQ(page.take(), k <= 3 ? text : "");
        EXPECT_EQ(ERCOM1.level, 1);
    }
    // The level is marked first, which the checksum shows.
    const int32_t one = 1;
    refuse(1);
    ERCOM3.checksum = 0.0;
    front(n, plus_one, -7.0f);
    const double sum = std::exchange(ERCOM3.checksum, 0.0);
    push("FRONT ");
    post(5, -1, " ");
    E1STI(&one, &n);
    post(5, 2, "The required storage cannot be allocated.  The workspace is based on N, where N = %(i1).");
    pop("FRONT ");
    EXPECT_EQ(ERCOM3.checksum, sum);
    // The arrays are free before the pop speaks.
    set_switches(0, 1, 0);
    failing = 0;
    const orvel_writer measure = [](void* to, int32_t, const char*, size_t) {
        *static_cast<std::size_t*>(to) = in_use();
    };
    write_with(measure, &at_print);
    const std::size_t before = in_use();
    front(
        2 << 20, +[](const float* x) { return inner<float>(note, 1), *x; }, 0.0f);
    const std::size_t inside = at_print;
    front(2, plus_one, 0.0f);
    EXPECT_LT(at_print, before + (1 << 20));
    EXPECT_TRUE(inside == 0 || inside > before + (32 << 20));  // a sanitizer's allocator does not count
}

TEST_F(Frame, ScratchSizesAreCheckedAndRoundedUp)
{
    constexpr int64_t most = INT32_MAX, eighth = INT64_MAX / 8;
    // 0 bytes when refused without a request.
    const std::tuple<int64_t, int64_t, std::size_t> sizes[] = {
        {0, 1, 64},  {-5, -7, 64},    {-5, 8, 64},        {8, INT64_MIN, 64}, {1, 8, 64},        {9, 1, 128},
        {3, 6, 192}, {most, most, 0}, {8 * eighth, 2, 0}, {eighth, 1, 0},     {eighth + 1, 1, 0}};
    for (const auto& [rows, columns, size] : sizes) {
        Scratch<double> x;
        requests = 0;
        EXPECT_EQ(x.allocate(rows, columns), size != 0) << rows << " " << columns;
        EXPECT_EQ(requests, size != 0);
        if (size == 0) continue;
        EXPECT_EQ(last_size, size);
        EXPECT_EQ(reinterpret_cast<uintptr_t>(static_cast<double*>(x)) % 64, 0u);
    }
    Scratch<char> bytes;
    EXPECT_FALSE(bytes.allocate(INT32_MAX, INT32_MAX));  // does not overflow, is refused
    EXPECT_TRUE(bytes.allocate(64) && bytes.allocate(1000));
    std::memset(bytes, 1, 1000);
}

TEST_F(Frame, NamesAndNumbersFollowThePrecision)
{
    const auto name = [] { return std::string(ERCOM2.rname[1], 8); };
    const auto check = [&]<class R>(const char* expected, const char* number) {
        R me;
        EXPECT_EQ(name(), expected);
        me.post(alert, 1, "%(R1) %(I2)%(L3)", {r(1, 0.1), i(2, -4), l(3, "ab ")});
        EXPECT_EQ(std::string(ERCOM2.message, static_cast<std::size_t>(ERCOM1.msglen)), number);
        EXPECT_TRUE(me.failed());
        EXPECT_EQ(me.error_type(), alert);
        me.clear();
        EXPECT_FALSE(me.failed());
    };
    check.operator()<Routine<float, "NAME">>("NAME    ", ".  1.000000E-01 -4ab");
    check.operator()<Routine<double, "NAME">>("DNAME   ", ".  1.000000000000000E-01 -4ab");
    check.operator()<Routine<std::complex<float>, "NAME">>("NAME    ", ".  1.000000E-01 -4ab");
    check.operator()<Routine<std::complex<double>, "R9NAME", "D9NAME">>("D9NAME  ",
                                                                        ".  1.000000000000000E-01 -4ab");
    inner<float>(alert, 4);
    ERCOM1.ertype[2] = ERCOM1.ercode[2] = 9;
    Routine<double, "INNER">::visit(frame::state());
    EXPECT_EQ((Outcome{ERCOM1.ertype[2], ERCOM1.ercode[2]}), (Outcome{-1, -1}));
    EXPECT_EQ(outcome(), (Outcome{0, 0}));
    EXPECT_EQ(name(), "DINNER  ");
}

TEST_F(Frame, FunctionsOfTheUserAreTheUser)
{
    {
        Routine<float, "OUTER"> me;
        inner<float>(warning, 1);
        EXPECT_EQ(page.take(), "");
        me.clear();
        UserFunction<float>(me.state(), [](const float* x) { return inner<float>(warning, 2), *x; })(1.0f);
        EXPECT_NE(page.take().find("ERROR 2 from INNER.  Text.\n"), std::string::npos);
        me.clear();
        inner<float>(warning, 3);
        EXPECT_EQ(page.take(), "");
    }
    EXPECT_EQ(page.take(), "\n *** WARNING  ERROR 3 from OUTER.  Text.\n");
}

// Calls a routine that posts, while an exception passes.
struct PostsOnTheWay {
    int32_t type;
    ~PostsOnTheWay() { inner<float>(type, 9); }
};

template <int32_t type>
float on_the_way_of(const float*)
{
    const PostsOnTheWay local{type};
    throw 8;
}

TEST_F(Frame, ExceptionLeavesTheLevelSilently)
{
    set_switches(0, 1, 1);
    on_stop(throwing);
    set_switches(2, 0, 0);
    const auto thrown = [&](float (*f)(const float*)) {
        try {
            const Outcome stop = stop_of([&] { front(2, f, 0.0f); });
            return 10 * stop.type + stop.code;
        } catch (int x) {
            return x;
        }
    };
    // FRONT has posted FATAL 3, which would print and stop.
    EXPECT_EQ(thrown([](const float*) -> float { throw 7; }), 7);
    EXPECT_EQ(page.take(), "");
    EXPECT_EQ((std::array{ERCOM1.level, ERCOM1.ertype[0], ERCOM4.user[1]}), (std::array{1, 0, 0}));
    EXPECT_EQ(thrown(plus_one), 43);
    EXPECT_EQ(page.take(), "\n *** FATAL    ERROR 3 from FRONT.  X = 1.500000E+00.\n");
    // A routine that a destructor calls on the way returns as ever; the exception goes on.
    set_switches(0, 0, 0);
    set_switches(4, 1, 0);
    orvel_reset();
    for (auto* f : {&on_the_way_of<note>, &on_the_way_of<warning>}) {
        EXPECT_EQ(thrown(f), 8);
        EXPECT_EQ(page.take(), "");
        EXPECT_EQ((std::array{ERCOM1.level, ERCOM1.ertype[0], ERCOM1.ertype[2]}), (std::array{1, 0, -1}));
    }
}

// Calls a routine that posts while an exception passes that goes no further.
void catch_and_post(int32_t type = note)
{
    try {
        const PostsOnTheWay local{type};
        throw 1;
    } catch (int) {
    }
}

// What was recorded while one exception passed does not hide another one that comes later: the routine is
// left silently, although it has posted.
TEST_F(Frame, ExceptionsAreCountedFromTheRoutinesOwnError)
{
    using Outer = Routine<float, "OUTER">;
    const auto in_user_function = [](Outer& me) {
        me.post(fatal, 3, "Text.");
        const UserFunction<float> f(me.state(), [](const float* x) { return catch_and_post(), *x; });
        f(1.0f);
    };
    const auto in_writer = [](Outer& me) {
        write_with([](void*, int32_t, const char*, size_t) { catch_and_post(); });
        me.post(terminal, 3, "Text.");  // prints
    };
    // The name on top is not the routine's own, and nothing was posted by it.
    const auto unbalanced = [](Outer&) { push("LEFT "); };
    const auto check = [](auto body) {
        const auto leave = [&] {
            Outer me;
            body(me);
            throw 7;
        };
        EXPECT_THROW(leave(), int);
        EXPECT_EQ(ERCOM1.level, 1);
        orvel_reset();
    };
    on_stop(throwing);
    // An error of a routine that is called on an exception's way is its own, and is judged when it returns.
    catch_and_post(warning);
    EXPECT_EQ(page.take(), "\n *** WARNING  ERROR 9 from INNER.  Text.\n");
    check(in_user_function);
    check(in_writer);
    catch_and_post();
    check(unbalanced);
}

}  // namespace
