// tests/frame/calls.h - short calls of the frame; writers and stops that a test gives back
#pragma once

#include <string_view>

#include "tests/frame/process.h"
#include "tests/support.h"

namespace orvel_test {

inline void push(std::string_view name) { E1PSH(name.data(), name.size()); }
inline void pop(std::string_view name) { E1POP(name.data(), name.size()); }
inline void user(std::string_view text) { E1USR(text.data(), text.size()); }
inline void post(int32_t type, int32_t code, std::string_view text = "Text.")
{
    E1MES(&type, &code, text.data(), text.size());
}

inline void routine(int32_t type, int32_t code)
{
    push("ROUTINE ");
    post(type, code);
    pop("ROUTINE ");
}

inline void use_unit(int32_t unit)
{
    const int32_t third = -3;
    UMACH(&third, &unit);
}

inline void write_with(orvel_writer writer, void* context = nullptr, int32_t unit = 6)
{
    orvel_bind_unit(unit, writer, context);
}

inline void on_stop(orvel_stop_handler handler) { orvel_set_stop_handler(handler, nullptr); }

// Stops become exceptions.
inline void throwing(void*, int32_t type, int32_t code) { throw Outcome{type, code}; }

// Type and code of the stop; {0, 0} when the call returns.
template <class F>
Outcome stop_of(F call)
{
    try {
        call();
    } catch (const Outcome& o) {
        return o;
    }
    return {0, 0};
}

class Hosted : public Quiet {
protected:
    ~Hosted() override
    {
        on_stop(nullptr);
        write_with(nullptr);
        use_unit(6);
    }
};

}  // namespace orvel_test
