// tests/linsys/errors_test.cpp - texts and codes of the dense solvers, options, the steps of refinement
#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "tests/linsys/members.h"

namespace {

using namespace orvel_test;

class LinearTexts : public Quiet {
protected:
    LinearTexts() { set_switches(0, 1, 0); }
    Capture printed;
    std::string message() { return one_line(printed.take()); }
    void expect(int32_t type, int32_t code, const std::string& text)
    {
        EXPECT_EQ(outcome(), (Outcome{type, code})) << text;
        const std::string given = message();
        EXPECT_NE(given.find(text), given.npos) << text << given;
    }
};

const int32_t zero = 0, minus = -1;
float r[16];
int32_t p[4];

struct Row {
    void (*call)();
    int32_t code;
    std::vector<std::string> texts;  // in the order in which they are printed
};

}  // namespace

// Workers make all their checks even when one has failed.
TEST_F(LinearTexts, AreThoseOfEachCheck)
{
    const std::string order = "The order of the matrix must be ";
    const auto dimension = [&](const std::string& values) {
        return order + "less than or equal to its leading dimension while N = " + values + " are given.";
    };
    const std::string equations = "The number of equations must be positive while N = 0 is given.",
                      positive = order + "positive while N = 0 is given.", lda = dimension("2 and LDA = 1"),
                      lda0 = dimension("0 and LDA = -1"), ldfac = dimension("2 and LDFAC = 1"),
                      ldainv = dimension("2 and LDAINV = 1"),
                      ipath = "IPATH must be either 1 or 2 while a value of 3 is given.";
    const Row rows[] = {
        {[] { LSARG(&two, r, &one, r, &three, r); }, 3, {lda, ipath}},
        {[] { L2ARG(&zero, r, &minus, r, &three, r, r, p, r); }, 3, {equations, lda0, ipath}},
        {[] { L2LRG(&zero, r, &minus, r, &three, r, r, p, r); }, 3, {equations, lda0, ipath}},
        {[] { L2CRG(&two, r, &one, r, &one, p, r, r); }, 3, {lda, ldfac}},
        {[] { LFSRG(&two, r, &one, p, r, &three, r); }, 2, {ldfac}},
        {[] { LFIRG(&two, r, &one, r, &one, p, r, &three, r, r); }, 4, {lda, ldfac, ipath}},
        {[] { LFDRG(&zero, r, &minus, p, r, r); }, 1, {positive}},
        {[] { L2NRG(&two, r, &one, r, &one, r, p); }, 3, {lda, ldainv}},
        {[] { LINRT(&two, r, &one, &three, r, &one); }, 4, {lda, ldainv, ipath}},
    };
    for (const Row& row : rows) {
        row.call();
        EXPECT_EQ(outcome(), (Outcome{5, row.code})) << row.texts[0];
        const std::string text = message();
        std::size_t place = 0, posted = 0;
        for (std::size_t at = 0; (at = text.find("TERMINAL ERROR", at)) != text.npos; ++at) ++posted;
        EXPECT_EQ(posted, row.texts.size()) << text;
        for (const std::string& expected : row.texts) {
            place = text.find(expected, place);
            ASSERT_NE(place, text.npos) << expected << " in " << text;
        }
    }
}

TEST_F(LinearTexts, WarningsNameTheCondition)
{
    const float eps = AMACH(&four);
    float weak[] = {1, 0, 0, eps / 2}, b[] = {1, 1}, x[2], inverse[4], fact[4];
    int32_t ipvt[2];
    const std::string number =
                          "An estimate of the reciprocal of its L1 condition number is RCOND = 5.960464E-08.",
                      ill = "WARNING  ERROR 1 from ", solution = "  The solution might not be accurate.";
    LSARG(&two, weak, &two, b, &one, x);
    expect(3, 1, ill + "LSARG.  The matrix is too ill-conditioned. " + number + solution);
    LSLRG(&two, weak, &two, b, &one, x);
    expect(3, 1, ill + "LSLRG.  The matrix is too ill-conditioned. " + number + solution);
    LINRG(&two, weak, &two, inverse, &two);
    expect(3, 1, "RCOND = 5.960464E-08.  The inverse might not be accurate.");
    LFCRG(&two, weak, &two, fact, &two, ipvt, x);
    expect(3, 1, ill + "LFCRG.  The matrix is algorithmically singular.  " + number);
    float singular[] = {1, 1, 1, 1};
    LFTRG(&two, singular, &two, fact, &two, ipvt);
    expect(
        4, 2,
        "The input matrix is singular.  Some of the diagonal elements of the upper triangular matrix U of the LU factorization are close to zero.");
}

TEST_F(LinearTexts, OptionsAreKeptForEachThreadAndChecked)
{
    const int32_t read = 1, set = 2, padding = 16, condition = 17;
    const auto option = [](int32_t number, std::vector<int32_t> values, int32_t action) {
        const auto count = static_cast<int32_t>(values.size());
        IUMAG("MATH", &action, &number, &count, values.data(), 4);
        return values;
    };
    EXPECT_EQ(option(padding, {9, 9}, read), (std::vector<int32_t>{0, 1}));
    EXPECT_EQ(option(condition, {9}, read), (std::vector<int32_t>{2}));

    const float a[] = {4, 1, 1, 1e-9f};
    float b[] = {1, 1}, x[] = {7, 7}, fact[4], rcond = 0;
    int32_t ipvt[2];
    option(condition, {1}, set);
    const float weak[] = {1, 0, 0, 1e-9f};
    LFCRG(&two, weak, &two, fact, &two, ipvt, &rcond);
    EXPECT_EQ(outcome(), (Outcome{0, 0}));
    EXPECT_EQ(rcond, 1.0f);
    // A TERMINAL outcome of the factor step stops its callers.
    option(condition, {3}, set);
    printed.take();
    LSARG(&two, a, &two, b, &one, x);
    expect(5, 4, "The flag value for computing the matrix condition number must be 1 or 2 while 3 is given.");
    EXPECT_EQ(x[0], 7.0f);
    option(condition, {2}, set);

    option(padding, {-1, 0}, set);
    LSLRG(&two, a, &two, b, &one, x);
    expect(
        5, 4,
        "The option values 3,4 must be respectively not less than zero, and non-negative while -1 and 0 are given.");
    float plain[2], padded[2];
    option(padding, {0, 1}, set);
    LSLRG(&two, a, &two, b, &one, plain);
    option(padding, {5, 2}, set);
    LSLRG(&two, a, &two, b, &one, padded);
    option(padding, {0, 1}, set);
    EXPECT_EQ(plain[0], padded[0]);

    const struct {
        const char* chapter;
        int32_t action, number, count;
    } bad[] = {{"STAT ", set, padding, 2},
               {"MATH ", 3, padding, 2},
               {"MATH ", set, 18, 2},
               {"MATH ", set, padding, 1}};
    for (const auto& row : bad) {
        int32_t values[] = {5, 5};
        IUMAG(row.chapter, &row.action, &row.number, &row.count, values, 5);
        EXPECT_EQ(outcome(), (Outcome{5, static_cast<int32_t>(&row - bad) + 1}));
    }
    EXPECT_EQ(option(padding, {9, 9}, read), (std::vector<int32_t>{0, 1}));
}

// With a factorization of a multiple of A corrections shrink slowly, or not at all, or at once.
TEST_F(LinearTexts, RefinementEndsAsItsFactorLetsIt)
{
    const int32_t n = 3;
    const float a[] = {8, 1, 1, 1, 8, 1, 1, 1, 8}, b[] = {1, 1, 1};
    const struct {
        float multiple;
        Outcome end;
    } rows[] = {
        {1, {0, 0}}, {1.5f, {0, 0}}, {5, {3, 2}}, {-1, {3, 2}}};  // factors of the error: 0, 1/3, 0.8, 2
    for (const auto& row : rows) {
        float fact[9], x[3] = {}, res[3] = {};
        int32_t ipvt[3];
        for (int k = 0; k < 9; ++k) fact[k] = row.multiple * a[k];
        LFTRG(&n, fact, &n, fact, &n, ipvt);
        LFIRG(&n, a, &n, fact, &n, ipvt, b, &one, x, res);
        EXPECT_EQ(outcome(), row.end) << row.multiple;
        // 0.8^50 of the first error is left after fifty steps.
        const float allowed = row.multiple == 5 ? 2e-6f : 0;
        for (const float e : x) EXPECT_TRUE(row.multiple == -1 || std::abs(e - 0.1f) <= allowed) << e;
    }
    // Nothing to refine.
    const float c[] = {2, 1, 1, 3}, zeros[] = {0, 0};
    float fact[4], x[2], res[] = {5, 5};
    int32_t ipvt[2];
    LFTRG(&two, c, &two, fact, &two, ipvt);
    LFIRG(&two, c, &two, fact, &two, ipvt, zeros, &one, x, res);
    EXPECT_EQ(outcome(), (Outcome{0, 0}));
    EXPECT_EQ(x[0], 0.0f);
    EXPECT_EQ(res[0], 5.0f);
}
