// tests/levels.h - the same checks on every instruction-set level of the machine
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <type_traits>

#include "isa/levels.h"

namespace orvel_test {

// Runs body(level) or body() with each level of the machine.
template <class Body>
void on_every_level(Body body)
{
    using namespace orvel::isa;
    for (int k = 0; k < level_count(); ++k) {
        ASSERT_TRUE(use_level(level_name(k)));
        SCOPED_TRACE(level_name(k));
        if constexpr (std::is_invocable_v<Body, std::string>)
            body(std::string(level_name(k)));
        else
            body();
    }
    use_level(nullptr);
}

template <class Body>
void combine(Body body)
{
    if (!::testing::Test::HasFatalFailure()) body();
}
template <class Body, class List, class... Lists>
void combine(Body body, const List& list, const Lists&... lists)
{
    for (const auto& x : list) combine([&](const auto&... others) { body(x, others...); }, lists...);
}

// every_one_of(lists...)(body) calls body with each combination of their elements, until a check is fatal.
template <class... Lists>
auto every_one_of(const Lists&... lists)
{
    return [&](auto body) { combine(body, lists...); };
}

}  // namespace orvel_test
