// tests/random/stream_test.cpp - every stream bit by bit, at every level, in any cut and precision
#include <sstream>

#include "random/isa/loops.h"
#include "tests/levels.h"
#include "tests/random/model.h"

using namespace orvel_test;

namespace {

void expect_state(const Model& model)
{
    int32_t seed = 0;
    RNGET(&seed);
    ASSERT_EQ(seed, model.seed);
    ASSERT_EQ(R2NCOM.state, model.state);
    if (!model.words.empty()) {
        ASSERT_EQ(R2NCOM.first, model.p);
        ASSERT_EQ(R2NCOM.second, model.q);
        for (int k = 1; k <= 1563; ++k) ASSERT_EQ(R2NCOM.words[k - 1], model.words[k]);
    }
    const auto expect_twister = [](const auto& twister, const auto& place, const auto* words, int length) {
        std::stringstream text;  // the words, then the number of words used
        text << twister;
        for (int k = 0; k < length; ++k) {
            uint64_t word;
            text >> word;
            ASSERT_EQ(words[k], word) << k;
        }
        int32_t used;
        text >> used;
        ASSERT_EQ(place.position, used + 1);
    };
    if (model.ready32) expect_twister(model.twister32, MT32_STATE1, MT32_STATE2.word, 624);
    if (model.ready64) expect_twister(model.twister64, MT64_STATE1, MT64_STATE2.word, 312);
}

template <class T>
void expect_draws(Model& model, int32_t n)
{
    const std::vector<T> r = draw<T>(n);
    for (int32_t k = 0; k < n; ++k)
        ASSERT_EQ(r[static_cast<std::size_t>(k)], model.next<T>())
            << "option " << model.option << " at " << k;
}

void expect_cut(Model& model, std::mt19937& random)
{
    constexpr int32_t lengths[] = {1,  2,  7,  8,   11,  12,  13,  31,  32,  33,
                                   95, 96, 97, 311, 312, 313, 623, 624, 625, 1563};
    const auto n = random() % 40 == 0 ? static_cast<int32_t>(3000 + random() % 2000) : lengths[random() % 20];
    switch (random() % 4) {
        case 0:
            ASSERT_EQ(RNUNF(), model.next<float>());
            break;
        case 1:
            ASSERT_EQ(DRNUNF(), model.next<double>());
            break;
        case 2:
            expect_draws<float>(model, n);
            break;
        default:
            expect_draws<double>(model, n);
    }
}

TEST(Streams, EqualTheirDefinitionAtEveryLevelInEveryCut)
{
    on_every_level([&](const std::string& level) {
        for (int32_t option = 1; option <= 10; ++option)  // 10 stands for all of them in turns
            for (const int32_t seed : {1, 2147483646, 123457}) {
                SCOPED_TRACE(testing::Message()
                             << "level " << level << " option " << option << " seed " << seed);
                on_new_thread([&] {
                    std::mt19937 random(static_cast<uint32_t>(seed));
                    Model model(seed);
                    set_seed(seed);
                    for (int k = 0; k < 60 && !testing::Test::HasFatalFailure(); ++k) {
                        if (option < 10 || k % 4 == 0)
                            set_option(model.option =
                                           option < 10 ? option : static_cast<int32_t>(random() % 9 + 1));
                        expect_cut(model, random);
                        expect_state(model);
                    }
                    // One by one, past the end of every block.
                    for (int k = 0; k < 1700; ++k) ASSERT_EQ(DRNUNF(), model.next<double>()) << k;
                    expect_state(model);
                });
            }
    });
}

// The published first outputs for keys; those for seeds are the C++ library's.
TEST(Streams, TwistersGiveThePublishedNumbers)
{
    on_new_thread([] {
        const auto word32 = [](double r) { return std::llround(r * 4294967295.0 - 0.5); };
        const auto word64 = [](double r) { return static_cast<uint64_t>(std::ldexp(r, 53)); };
        const int32_t four = 4, one = 1, length = 1000;
        double r[1];
        const int32_t key32[] = {0x123, 0x234, 0x345, 0x456};
        const int64_t key64[] = {0x12345, 0x23456, 0x34567, 0x45678};
        EXPECT_EQ(MT_MASK1 | MT_MASK2 | MT_MASK3[0] | MT_MASK3[1], 0u);
        RNIN32(key32, &four);
        RNIN64(key64, &four);
        EXPECT_EQ(MT_MASK1, 0x80000000u);
        EXPECT_EQ(MT_MASK2, 0x7FFFFFFFu);
        EXPECT_EQ(MT_MASK3[0], 0xFFFFFFFF80000000u);
        EXPECT_EQ(MT_MASK3[1], 0x7FFFFFFFu);
        for (const int64_t word : {1067595299, 955945823, 477289528})
            EXPECT_EQ((DR1T32(&one, r), word32(r[0])), word);
        for (const uint64_t word : {7266447313870364031u, 4946485549665804864u, 16945909448695747420u})
            EXPECT_EQ((DR1T64(&one, r), word64(r[0])), word >> 11);
        // A key longer than the block; last words from a Python program, which for 32 bits was held against
        // the generator of Python itself.
        std::vector<int32_t> long32;
        for (int k = 0; k < length; ++k) long32.push_back(-3 * k);
        const std::vector<int64_t> long64(long32.begin(), long32.end());
        RNIN32(long32.data(), &length);
        RNIN64(long64.data(), &length);
        EXPECT_EQ(MT32_STATE2.word[623], 2495696851u);
        EXPECT_EQ(MT64_STATE2.word[311], 5049439835604527392u);
        // A twister that is not ready starts from its own seed when a worker is called directly.
        MT32_STATE1.ready = MT64_STATE1.ready = 0;
        EXPECT_EQ((DR1T32(&one, r), word32(r[0])), static_cast<int64_t>(std::mt19937(21641)()));
        EXPECT_EQ((DR1T64(&one, r), word64(r[0])), std::mt19937_64(19650218)() >> 11);
    });
}

TEST(Streams, SeedsOfDistantStreams)
{
    on_new_thread([] {
        for (const int32_t option : {1, 3, 5})
            for (const int32_t seed : {1, 2147483646, 987654321}) {
                int32_t far = 0, reached = 0;
                set_option(option);
                set_seed(seed);
                RNISD(&seed, &far);
                draw<double>(100000);
                RNGET(&reached);
                EXPECT_EQ(far, reached) << option << " " << seed;
                if (option == 1 && seed == 1) {
                    EXPECT_EQ(far, 46831694);
                }
            }
        for (const int32_t seed : {0, -1, INT32_MIN, INT32_MAX}) {
            int32_t far = seed;
            RNISD(&far, &far);
            EXPECT_GE(far, 0);
            set_option(8);
            RNISD(&seed, &far);
            EXPECT_EQ(far, seed);
            set_option(5);
        }
    });
}

}  // namespace
