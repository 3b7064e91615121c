// tests/every_level.cpp - main of test programs that run all their tests on every instruction-set level of
// the machine
#include <gtest/gtest.h>

#include "isa/levels.h"

namespace {

// One repetition of the tests for each level.
class Forcer : public testing::EmptyTestEventListener {
    void OnTestIterationStart(const testing::UnitTest&, int iteration) override
    {
        const char* const level = orvel::isa::level_name(iteration % orvel::isa::level_count());
        std::printf("level %s\n", level);
        ASSERT_TRUE(orvel::isa::use_level(level));
    }
};

}  // namespace

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    testing::GTEST_FLAG(repeat) = orvel::isa::level_count();
    testing::UnitTest::GetInstance()->listeners().Append(new Forcer);
    return RUN_ALL_TESTS();
}
