// tests/random/state_test.cpp - options, seeds, tables saved and restored, messages, states set by hand
#include <algorithm>
#include <array>
#include <cmath>
#include <functional>

#include "tests/random/model.h"

using namespace orvel_test;

namespace {

int32_t option()
{
    int32_t o;
    return RNOPG(&o), o;
}
int32_t seed()
{
    int32_t s;
    return RNGET(&s), s;
}

using States = Quiet;

void expect_clock_seed(int32_t s)
{
    int32_t hour, minute, second;
    TIMDY(&hour, &minute, &second);
    s = s == 123457 ? 0 : s - 1;
    const int32_t drawn = s / 10000 * 3600 + s / 100 % 100 * 60 + s % 100;
    EXPECT_LE((hour * 3600 + minute * 60 + second - drawn + 86400) % 86400, 5) << s;
}

TEST_F(States, SeedsGoodAndBad)
{
    on_new_thread([] {
        EXPECT_EQ(option(), 1);
        set_seed(1);
        EXPECT_EQ(RNUNF(), static_cast<float>(16807 * (0x1p-31 - 0x1p-55)));
        EXPECT_EQ(R2NCOM.state, 16807.0);
        for (const int32_t bad : {-1, -5, INT32_MIN, INT32_MAX}) {
            set_seed(bad);
            EXPECT_EQ(seed(), 16807) << bad;
        }
        set_seed(2147483646);
        EXPECT_EQ(R2NCOM.state, 2147483646.0);
        set_seed(0);  // stays: the thread has a seed
        expect_clock_seed(R2NCOM.seed);
        const int32_t clock = R2NCOM.seed;
        DRNUNF();
        EXPECT_EQ(seed(), static_cast<int64_t>(clock) * 16807 % 2147483647);
    });
    // Without a seed the clock gives one at the first look, draw or bad seed, once; a seed of 0 leaves the
    // thread without.
    const std::pair<std::function<void()>, bool> firsts[] = {
        {seed, true}, {DRNUNF, true}, {[] { set_seed(-5); }, true}, {[] { set_seed(0); }, false}};
    for (const auto& [first, seeded] : firsts)
        on_new_thread([&first = first, seeded = seeded] {
            set_option(8);
            first();
            expect_clock_seed(R2NCOM.seed);
            R2NCOM.seed = 240000;  // no time of day
            if (seeded) {
                EXPECT_EQ(seed(), 240000);
            } else {
                expect_clock_seed(seed());
            }
        });
}

TEST_F(States, WorkerMarksSelectsAndSeeds)
{
    on_new_thread([] {
        const int32_t mark = -1, choose = 4, seed_it = 0, nothing = -2;
        R1INT(&nothing);
        R1INT(&choose);
        EXPECT_EQ(option(), 4);
        EXPECT_EQ(R2NCOM.seed, 0);
        R1INT(&mark);
        R1INT(&seed_it);
        EXPECT_EQ(R2NCOM.seed, 0);  // marked before: the clock is not asked
        EXPECT_EQ(option(), 4);
    });
    on_new_thread([] {
        int32_t seed_it = 0, clock = 0;
        R1INT(&seed_it);
        expect_clock_seed(R2NCOM.seed);
        R1CLK(&clock);
        expect_clock_seed(clock);
    });
}

// A table is built once; neither a seed nor another option rebuilds it.
TEST_F(States, TablesStayUntilTheyAreSetBack)
{
    on_new_thread([] {
        std::vector<double> table(129, 7.0), later = table, zeros(128);  // 7 is in no table
        set_seed(7);
        set_option(2);
        draw<double>(300);
        DRNGES(table.data());
        set_seed(7);
        set_option(6);
        DRNUNF();
        DRNGES(later.data());
        int changed = 0;
        for (std::size_t k = 0; k < 128; ++k) changed += table[k] != later[k];
        EXPECT_EQ(changed, 1);
        DRNSES(table.data());
        EXPECT_EQ(outcome(), (Outcome{0, 0}));
        const int32_t s = seed();
        const std::vector<double> once = draw<double>(500);
        DRNSES(table.data());
        set_seed(s);
        EXPECT_EQ(draw<double>(500), once);
        DRNSES(zeros.data());
        set_seed(7);
        set_option(2);
        draw<double>(300);
        DRNGES(later.data());
        EXPECT_EQ(later, table);
        // The single table is another one.
        EXPECT_EQ(R2NCOM.single_ready, 0);
        RNUNF();
        EXPECT_EQ(R2NCOM.single_ready, -1);
    });
}

TEST_F(States, SavedOnesContinueTheStream)
{
    on_new_thread([] {
        std::vector<int32_t> words(1565), state32(625);
        std::vector<int64_t> state64(313);
        set_seed(5);
        const auto starts = [](int32_t o, const auto& save, const auto& restore, auto* state) {
            set_option(o);
            save(state);
            const std::vector<double> once = draw<double>(2000);
            EXPECT_NE(draw<double>(2000), once);
            restore(state);
            EXPECT_EQ(draw<double>(2000), once) << o;
        };
        const auto restores = [&](int32_t o, auto... state) {
            set_option(o);
            draw<double>(777);
            starts(o, state...);
        };
        restores(7, RNGEF, RNSEF, words.data());
        restores(8, RNGE32, RNSE32, state32.data());
        restores(9, RNGE64, RNSE64, state64.data());
        on_new_thread([&] {  // a twister that has not been used starts from the seed, then and when restored
            set_seed(5);
            starts(8, RNGE32, RNSE32, state32.data());
            starts(9, RNGE64, RNSE64, state64.data());
        });
        words[0] = words[1563] = 0;  // asks for a new register, and nothing else
        set_option(7);
        std::vector<double> fresh[2];
        for (std::vector<double>& r : fresh) {
            RNSEF(words.data());
            EXPECT_EQ(outcome(), (Outcome{0, 0}));
            set_seed(5);
            r = draw<double>(10);
        }
        EXPECT_EQ(fresh[0], fresh[1]);
        state32[0] = 627;
        RNSE32(state32.data());
        state64[0] = int64_t{1} << 40;
        RNSE64(state64.data());
        EXPECT_LE(MT32_STATE1.position, 625);
        EXPECT_LE(MT64_STATE1.position, 313);
    });
}

TEST_F(States, EveryFailure)
{
    Capture printed;
    const auto expect = [&](const std::string& name, int32_t code, const std::string& text) {
        expect_terminal(printed, name, code, text);
    };
    set_switches(0, 1, 0);
    set_seed(3);
    set_option(2);
    const int32_t one = 1;
    const std::string all = "All elements of TABLE must be positive and strictly less than 1.0.";
    std::vector<float> table(128, 0.5f);
    std::vector<double> wide_table(128, 0.25);
    table[127] = 1.0f;
    RNSES(table.data());
    expect("RNSES", 1, "TABLE(128) = 1.000000E+00.  " + all);
    EXPECT_EQ(R2NCOM.single_table[126] + R2NCOM.single_table[127], 0.5f);
    wide_table[1] = -0.5;
    DRNSES(wide_table.data());
    expect("DRNSES", 1, "TABLE(2) = -5.000000000000000E-01.  " + all);
    EXPECT_EQ(R2NCOM.double_table[0] + R2NCOM.double_table[2], 0.25);
    table[0] = std::nanf("");
    RNSES(table.data());
    EXPECT_EQ(outcome(), (Outcome{5, 1}));
    printed.take();

    std::vector<int32_t> words(1565, 1);
    words[1563] = 0;
    RNSEF(words.data());
    expect("RNSEF", 2, "IARRAY(1564) = 0.  All elements of IARRAY must be positive.");
    words[1563] = 1;
    words[1564] = -4;
    RNSEF(words.data());
    expect("RNSEF", 3, "IARRAY(1565) = -4.  All elements of IARRAY must be positive.");
    EXPECT_EQ(R2NCOM.words_ready + R2NCOM.single_ready + R2NCOM.double_ready, 0);

    for (const int32_t o : {2, 4, 6, 7}) {
        int32_t far = 77;
        set_option(o);
        RNISD(&one, &far);
        EXPECT_EQ(far, 77);
        const std::string select = "RNOPT allows you to select the type of generator.";
        expect("RNISD", o < 7 ? 1 : 2,
               (o < 7 ? "The specified uniform multiplicative congruential pseudorandom number generator is "
                        "shuffled.  RNISD does not work when shuffling is used.  "
                      : "The specified uniform pseudorandom number generator uses generalized feedback shift "
                        "register (GFSR) method.  RNISD does not work when this method is used.  ") +
                   select);
    }
    const int64_t key = 5;
    RNIN32(&one, &one);
    RNIN64(&key, &one);
    EXPECT_EQ(MT32_STATE1.ready + MT64_STATE1.ready, 0);
    EXPECT_EQ(printed.take(), "");
}

// What the sanitizers watch: nothing that a program can store leads out of a table, and numbers stay numbers.
TEST_F(States, NonsenseStaysInBounds)
{
    const auto is_sane = [](const std::vector<double>& r) {
        return std::ranges::all_of(r, [](double x) { return x >= 0 && x < 1 + 1e-9; });
    };
    on_new_thread([&] {
        const int32_t extremes[] = {INT32_MIN, -1, 0, 1, 2, 627, 1563, 1564, INT32_MAX};
        set_seed(11);
        draw<double>(1);
        for (int32_t o = -1; o <= 10; ++o)
            for (const int32_t x : extremes) {
                R2NCOM.option = o;
                R2NCOM.first = x;
                R2NCOM.second = extremes[static_cast<std::size_t>(o + 2) % 9];
                MT32_STATE1 = MT64_STATE1 = {1, x};
                R2NCOM.state = x;
                R2NCOM.words[5] = x;
                for (const int32_t n : {1, 700, 3}) EXPECT_TRUE(is_sane(draw<double>(n))) << o << " " << x;
            }
        for (const double s : {0.0, -3.0, 2147483647.0, 1.5, 1e300, std::nan(""), HUGE_VAL}) {
            set_option(1);
            R2NCOM.state = s;
            EXPECT_EQ(DRNUNF(), 16807 * (1 / 2147483647.0)) << s;
        }
        // Only the double state tells where the stream goes on.
        R2NCOM.state = 2;
        R2NCOM.seed = 9;
        EXPECT_EQ((DRNUNF(), seed()), 33614);
        // Positions that say "never filled" start from the twister's own seed.
        set_option(9);
        MT64_STATE1 = {1, 314};
        const double own = DRNUNF();
        MT64_STATE1 = {1, 5000};
        EXPECT_EQ(DRNUNF(), own);
        MT64_STATE1 = {1, -3};
        const double first = DRNUNF();
        MT64_STATE1 = {1, 1};
        EXPECT_EQ(DRNUNF(), first);
        // A register of zeros never comes from a seed.
        set_option(7);
        for (const int32_t empty : {0, INT32_MIN, INT32_MIN / 2}) {
            R2NCOM.seed = empty;
            R2NCOM.words_ready = 0;
            EXPECT_GT(std::ranges::max(draw<double>(100)), 0.5) << empty;
        }
        R2NCOM.first = 1564;
        R2NCOM.second = 3;
        draw<double>(1);
        EXPECT_EQ(R2NCOM.first, 1);
    });
}

}  // namespace
