// tests/support.h - what every test of the library needs: captured output, outcome of the last call
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "orvel/orvel.h"

namespace orvel_test {

// A stop that no test expects must not look like success.
inline constexpr int stopped = 97;
inline const bool stops_are_failures = (orvel_set_stop_status(stopped), true);

// Collects what is written to a unit while it lives.
class Capture {
public:
    explicit Capture(int32_t unit = 6) : unit_(unit)
    {
        orvel_bind_unit(
            unit,
            [](void* self, int32_t, const char* text, size_t n) {
                static_cast<Capture*>(self)->text_.append(text, n);
            },
            this);
    }
    ~Capture() { orvel_bind_unit(unit_, nullptr, nullptr); }
    Capture(const Capture&) = delete;
    Capture& operator=(const Capture&) = delete;

    // What was written since the last call.
    std::string take()
    {
        std::string text;
        text.swap(text_);
        return text;
    }

private:
    int32_t unit_;
    std::string text_;
};

inline void set_switches(int32_t type, int32_t print, int32_t stop) { ERSET(&type, &print, &stop); }

// Switches of types 1 to 7 in a row.
inline std::string digits(const int32_t (&table)[7])
{
    std::string text;
    for (int32_t x : table) text += std::to_string(x);
    return text;
}

// Type and code of the routine that returned last.
struct Outcome {
    int32_t type, code;
    bool operator==(const Outcome&) const = default;
};

inline Outcome outcome()
{
    const int32_t above = 1;
    return {N1RTY(&above), N1RCD(&above)};
}

inline std::ostream& operator<<(std::ostream& out, const Outcome& o)
{
    return out << "type " << o.type << " code " << o.code;
}

// A printed message with its continuation lines joined.
inline std::string one_line(std::string text)
{
    for (std::size_t at; (at = text.find("\n ***          ")) != text.npos;) text.replace(at, 15, " ");
    return text;
}

// The last call ended in one terminal message.
inline void expect_terminal(Capture& printed, const std::string& name, int32_t code, const std::string& text)
{
    EXPECT_EQ(outcome(), (Outcome{5, code})) << text;
    EXPECT_EQ(one_line(printed.take()),
              "\n *** TERMINAL ERROR " + std::to_string(code) + " from " + name + ".  " + text + "\n");
}

// The member of a routine for the precision of a typed test.
template <class Real, class S, class D>
constexpr auto member(S single, D in_double)
{
    if constexpr (sizeof(Real) == 4)
        return single;
    else
        return in_double;
}

// Every test starts on a quiet thread: level 1, initial switches, units and handlers.
class Quiet : public ::testing::Test {
protected:
    Quiet()
    {
        orvel_reset();
        set_switches(0, 2, 2);
    }
};

}  // namespace orvel_test
