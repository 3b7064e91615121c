// tests/frame/outcome_test.cpp - quiet calls, functions with a context, stop handlers that receive the text
#include <cmath>
#include <cstring>
#include <thread>

#include "tests/frame/calls.h"

using namespace orvel_test;

namespace {

using Outcomes = Hosted;

constexpr float pole = -3.0f;
const std::string pole_text =
    "The argument for the function can not be a negative integer. Argument X = -3.000000E+00.";

class QuietCall : public orvel_outcome {
public:
    QuietCall() { orvel_begin_quiet(this); }
    ~QuietCall() { orvel_end_quiet(this); }
};

TEST_F(Outcomes, KeepErrorsAsValuesAndTouchNoSwitch)
{
    set_switches(0, 1, 1);
    Capture page;
    {
        const QuietCall call;
        EXPECT_TRUE(std::isnan(GAMMA(&pole)));  // would stop
        EXPECT_EQ(call.severity, 5);
        EXPECT_EQ(call.code, 6);
        EXPECT_STREQ(call.routine, "GAMMA");
        EXPECT_EQ(call.text, pole_text);
        EXPECT_EQ(ERCOM1.level, 1);
        EXPECT_EQ(ERCOM1.stptab[4], 1);
    }
    {
        const QuietCall
            call;  // two errors of one call, in the order of their messages, from the worker's level
        const int32_t n = 2, maxsub = 0;
        const double limit = 0, accuracy = -1;
        double result = 7, error;
        int32_t count, lists[1];
        double parts[4];
        const auto f = [](const double* x) { return *x; };
        DQ2AGS(f, &limit, &limit, &accuracy, &accuracy, &result, &error, &maxsub, &count, &count, parts,
               parts + 1, parts + 2, parts + 3, lists);
        EXPECT_EQ(call.severity, 5);
        EXPECT_STREQ(call.routine, "DQ2AGS");
        EXPECT_EQ(std::count(call.text, call.text + std::strlen(call.text), '\n'), n);
        EXPECT_EQ(result, 7);
    }
    {
        const QuietCall call;
        routine(3, 7);
        EXPECT_EQ(call.severity, 3);
        EXPECT_EQ(call.code, 7);
        EXPECT_STREQ(call.text, "Text.");
        routine(1, 2);  // a note, which is passed up to nobody
        EXPECT_EQ(call.severity, 1);
        EXPECT_STREQ(call.text, "Text.\nText.");
        push("ROUTINE ");
        post(4, 9, "Wanted.");
        E1PRT();  // keeps it
        EXPECT_STREQ(call.text, "Text.\nText.\nWanted.");
        pop("ROUTINE ");
        EXPECT_STREQ(call.text, "Text.\nText.\nWanted.");
        EXPECT_EQ(10 * call.severity + call.code, 49);
    }
    {
        const QuietCall call;
        EXPECT_EQ(call.severity, 0);
        EXPECT_STREQ(call.text, "");
        const int32_t type = 0, bad = 9, good = -1;
        int32_t attribute = bad, other = good;
        E1POS(&type, &attribute, &other);  // has no level of its own
        EXPECT_EQ(call.severity, 5);
        EXPECT_EQ(call.code, 1);
        post(0, 0);  // a date is only looked at further where nothing is wrong yet
        const int32_t day = 1, month = 1, year = -50;
        int32_t code, leap;
        C1DAT(&day, &month, &year, &code, &leap);
        EXPECT_EQ(call.severity, 1);  // a note, without a level either
    }
    {
        const QuietCall call;
        for (int k = 0; k < 1000; ++k) GAMMA(&pole);
        EXPECT_EQ(std::strlen(call.text), sizeof call.text - 1);
    }
    EXPECT_EQ(page.take(), "");
    set_switches(0, 1, 0);
    routine(3, 7);
    EXPECT_NE(page.take(), "");  // loud again
}

TEST_F(Outcomes, LeaveErrorsInsideAUsersFunctionAlone)
{
    const QuietCall outer;
    static int inner_code;
    const auto f = [](const double* x) {
        GAMMA(&pole);
        const QuietCall inner;
        GAMMA(&pole);
        inner_code = inner.code;
        return *x;
    };
    const double a = 0, b = 1, accuracy = 1e-3;
    double result, error;
    DQDAGS(f, &a, &b, &accuracy, &a, &result, &error);
    EXPECT_EQ(outer.severity, 0);
    EXPECT_STREQ(outer.text, "");
    EXPECT_EQ(inner_code, 6);
    EXPECT_NEAR(result, 0.5, 1e-12);
}

struct Integral {
    double upper, result = -1, error = -1;
    bool single = false;
};

void integrate(void* to, orvel_function f, orvel_dfunction df)
{
    Integral& i = *static_cast<Integral*>(to);
    const double a = 0, absolute = 0, relative = 1e-5;
    if (i.single) {
        const float fa = 0, fb = static_cast<float>(i.upper), accuracy = 1e-4f;
        float result, error;
        QDAGS(f, &fa, &fb, &fa, &accuracy, &result, &error);
        i.result = static_cast<double>(result);
    } else {
        DQDAGS(df, &a, &i.upper, &absolute, &relative, &i.result, &i.error);
    }
}

int32_t power(void* exponent, double x, double* fx)
{
    *fx = std::pow(x, *static_cast<int*>(exponent));
    return 0;
}

// The integral from 0 to x of y^2, so that its integral is x^4 / 12.
int32_t inner_integral(void* exponent, double x, double* fx)
{
    Integral inner{x};
    const int32_t status = orvel_with_context(power, exponent, integrate, &inner);
    *fx = inner.result;
    return status;
}

TEST_F(Outcomes, FunctionsHaveContextsOnThreadsAndNested)
{
    const auto on_a_thread = [](int exponent) {
        Integral whole{1};
        EXPECT_EQ(orvel_with_context(power, &exponent, integrate, &whole), 0);
        EXPECT_NEAR(whole.result, 1.0 / (exponent + 1), 1e-14);
        EXPECT_EQ(orvel_with_context(inner_integral, &exponent, integrate, &whole), 0);
        EXPECT_NEAR(whole.result, 1.0 / (exponent + 1) / (exponent + 2), 1e-14);
        whole.single = true;
        EXPECT_EQ(orvel_with_context(power, &exponent, integrate, &whole), 0);
        EXPECT_NEAR(whole.result, 1.0 / (exponent + 1), 1e-6);
    };
    std::thread other(on_a_thread, 3);
    on_a_thread(2);
    other.join();
    const double a = 0, b = 3, accuracy = 1e-9;
    double result, error;
    int exponent = 2;
    const orvel_address arguments[] = {&a, &b, &accuracy, &accuracy, &result, &error};
    const auto quadrature = reinterpret_cast<orvel_routine>(DQDAGS);
    EXPECT_EQ(orvel_call_with_context(power, &exponent, quadrature, 0, 6, arguments), 0);
    EXPECT_NEAR(result, 9, 1e-13);
    for (const int count : {-1, 20})
        EXPECT_EQ(orvel_call_with_context(power, &exponent, quadrature, 0, count, arguments), -2);
}

TEST_F(Outcomes, AFunctionEndsItsRoutineAtOnceAndSilently)
{
    Capture page;
    static int calls;
    calls = 0;
    const auto ending = [](void*, double x, double* fx) -> int32_t {
        GAMMA(&pole);  // prints nothing more than the call by itself
        *fx = x;
        return ++calls == 5 ? 42 : 0;
    };
    Integral whole{1};
    set_switches(0, 0, 0);
    EXPECT_EQ(orvel_with_context(ending, nullptr, integrate, &whole), 42);
    EXPECT_EQ(calls, 5);
    EXPECT_EQ(whole.result, -1);
    EXPECT_EQ(ERCOM1.level, 1);
    const auto throwing_ = [](void*, double, double*) -> int32_t { throw std::string("mine"); };
    EXPECT_THROW(orvel_with_context(throwing_, nullptr, integrate, &whole), std::string);
    EXPECT_EQ(ERCOM1.level, 1);
    int exponent = 1;  // and the frame works on
    EXPECT_EQ(orvel_with_context(power, &exponent, integrate, &whole), 0);
    EXPECT_NEAR(whole.result, 0.5, 1e-15);
    EXPECT_EQ(page.take(), "");
}

int32_t endless(void* calls, double x, double* fx)
{
    ++*static_cast<int*>(calls);
    Integral inner{x + 1};
    *fx = 0;
    return orvel_with_context(endless, calls, integrate, &inner);
}

TEST_F(Outcomes, NestingWithoutEndIsAnError)
{
    const QuietCall call;
    int calls = 0;
    Integral whole{1};
    EXPECT_EQ(orvel_with_context(endless, &calls, integrate, &whole), -1);
    EXPECT_EQ(calls, 24);  // two levels of the stack for each
    EXPECT_EQ(call.severity, 5);
    EXPECT_STREQ(call.text, "Error condition in E1PSH.  Push would cause stack level to exceed 50.");
    EXPECT_EQ(ERCOM1.level, 1);
}

TEST_F(Outcomes, AStopHandlerReceivesRoutineAndText)
{
    struct Stop {
        int32_t type, code;
        std::string routine, text;
    };
    const auto handler = [](void*, int32_t type, int32_t code, const char* name, const char* text) {
        throw Stop{type, code, name, text};
    };
    const auto stop_of_pole = [](int32_t prints) {
        set_switches(0, prints, 1);
        const Capture page;
        try {
            GAMMA(&pole);
        } catch (const Stop& stop) {
            return stop;
        }
        return Stop{};
    };
    orvel_set_stop_text_handler(handler, nullptr);
    for (const int32_t prints : {0, 1}) {
        const Stop stop = stop_of_pole(prints);
        EXPECT_EQ(stop.type, 5);
        EXPECT_EQ(stop.code, 6);
        EXPECT_EQ(stop.routine, "GAMMA");
        EXPECT_EQ(stop.text, pole_text);
    }
    on_stop(throwing);  // replaces it
    EXPECT_EQ(stop_of([] { GAMMA(&pole); }), (Outcome{5, 6}));
    orvel_set_stop_text_handler(nullptr, nullptr);
    EXPECT_STREQ(orvel_version(), ORVEL_VERSION);
}

}  // namespace
