// tests/quad/path_test.cpp - paths of subdivision against GSL, the epsilon algorithm
#include <gsl/gsl_errno.h>
#include <gsl/gsl_integration.h>

#include <cmath>
#include <limits>
#include <random>

#include "tests/quad/quadrature.h"

namespace {

using namespace orvel_test;

constexpr double pi = 3.14159265358979323846;
constexpr double eps = std::numeric_limits<double>::epsilon();

class Path : public Quiet {
protected:
    Path()
    {
        set_switches(0, 0, 0);
        gsl_set_error_handler_off();
    }
};

// Test problems of QUADPACK and of D. K. Kahaner, Comparison of numerical quadrature formulas, 1971, with
// some that cannot be integrated.
struct Problem {
    double (*f)(double);
    double a, b, errabs, errrel;
};
const Problem problems[] = {
    {[](double x) { return std::pow(x, 2.6) * std::log(1 / x); }, 0, 1, 0, 1e-10},
    {[](double x) { return std::pow(x, 2.6) * std::log(1 / x); }, 1, 0, 0, 1e-10},
    {[](double x) { return std::pow(x, -0.9) * std::log(1 / x); }, 0, 1, 0, 1e-3},
    {[](double x) { return std::log(x) / std::sqrt(x); }, 0, 1, 0, 1e-10},
    {[](double x) { return std::cos(8 * std::sin(x)); }, 0, pi, 1e-14, 0},  // roundoff
    {[](double x) { return std::cos(1024 * std::sin(x)); }, 0, pi, 0, 1e-10},
    {[](double x) { return 0x1p-18 / (std::pow(x - pi / 4, 2) + 0x1p-36); }, 0, 1, 0, 1e-10},
    {[](double x) { return x / (1 + 100 * x * x); }, 0, 99.9, 1e-7, 0},
    {[](double x) { return std::sqrt(std::abs(x - 1.0 / 3)); }, 0, 1, 0, 1e-10},
    {[](double x) { return x < 0.3 ? 0.0 : 1.0; }, 0, 1, 0, 1e-12},
    {[](double x) { return x * std::sin(30 * x) / std::sqrt(1 - x * x / (4 * pi * pi)); }, 0, 2 * pi, 0,
     1e-10},
    {[](double x) { return 1 / (std::sqrt(x) * (1 + x)); }, 0, 1, 0, 1e-12},
    {[](double x) { return std::exp(x) + 1e-7 * std::fmod(x * 1e7, 1.0); }, 0, 1, 0, 1e-11},  // roundoff
    {[](double x) { return std::sin(x); }, -1, 1, 0, 1e-10},                                  // roundoff
    {[](double x) { return 1 / (x * x); }, 0, 1, 0, 1e-6},                                    // divergent
    {[](double x) { return std::pow(x, -0.99); }, 0, 1, 0, 1e-10},
    {[](double x) { return std::sin(1 / x) / x; }, 0, 1, 0, 1e-4},
    {[](double x) { return 1 / (x - 0.34); }, 0, 1, 0, 1e-6},         // divergent, or bad
    {[](double x) { return 1 / std::abs(x - 0.3); }, 0, 1, 0, 1e-6},  // bad behaviour
    // roundoff in the table
    {[](double x) { return std::pow(x, -0.75) + 3e-7 * std::cos(1e5 * x); }, 0, 1, 0, 1e-8},
    {[](double x) { return 1 / std::sqrt(std::abs(x - pi / 4)); }, 0, 1, 0, 1e-8},  // bad behaviour
    {[](double x) { return std::copysign(std::pow(std::abs(x), 0.1), x); }, -1, 1, 0,
     1e-10}  // of integral zero
};

const Problem* current;
double by_reference(const double* x) { return current->f(*x); }

// GSL's extrapolating integrator ends at one piece less than its limit, and keeps the length of its order by
// that of the workspace, which is adjusted here as soon as it runs.
struct Peer {
    gsl_integration_workspace* w;
    std::size_t limit;
    double result, error;
    int status;

    Peer(int32_t irule, const Problem& p, std::size_t maxsub, std::size_t ordered)
        : w(gsl_integration_workspace_alloc(1001)), limit(ordered)
    {
        const auto call = [](double x, void* self) {
            static_cast<Peer*>(self)->w->limit = static_cast<Peer*>(self)->limit;
            return current->f(x);
        };
        gsl_function f{call, this};
        const auto& [g, a, b, abs, rel] = p;
        status = irule == 0 ? gsl_integration_qags(&f, a, b, abs, rel, maxsub + 1, w, &result, &error)
                            : gsl_integration_qag(&f, a, b, abs, rel, maxsub, irule, w, &result, &error);
    }
    ~Peer() { gsl_integration_workspace_free(w); }
    int32_t code(int32_t ours) const
    {
        return status == GSL_SUCCESS    ? 0
               : status == GSL_EMAXITER ? 1
               : status == GSL_EROUND   ? (ours == 4 ? 4 : 2)
               : status == GSL_EDIVERGE ? 5
                                        : -1;
    }
};

// Returns the code.
int32_t compare(const Problem& p, int32_t irule, int32_t maxsub)
{
    const int32_t points[] = {21, 15, 21, 31, 41, 51, 61};
    current = &p;
    const Quadrature<double> q(irule, by_reference, p.a, p.b, p.errabs, p.errrel, maxsub);
    const int32_t code = N1RCD(std::array{1}.data()), n = q.pieces;
    // GSL calls a piece too narrow at a tenth of the width, so it is stopped where that matters.
    const Peer peer(irule, p, code == 3 ? n : maxsub, maxsub);
    if (code == 3) {
        if (irule > 4) return code;  // of the ends of such pieces ours keeps off, GSL does not
        const auto narrow = [&](int32_t k) {
            const double end = std::max(std::abs(q.lo[k]), std::abs(q.hi[k]));
            return std::abs(q.hi[k] - q.lo[k]) <= 1000.01 * eps * end;
        };
        int count = 0;
        for (int32_t k = 0; k < n; ++k) count += narrow(k);
        EXPECT_EQ(count, 2);  // the halves of the last bisection
    } else {
        EXPECT_EQ(code, peer.code(code));
    }
    EXPECT_EQ(n, static_cast<int32_t>(peer.w->size));
    if (n != static_cast<int32_t>(peer.w->size)) return -1;
    EXPECT_EQ(q.neval, points[irule] * (2 * n - 1));
    EXPECT_EQ(q.result, peer.result);
    // GSL does not pass the error of wide pieces on that roundoff in the table adds, as the published code
    // does. Its other integrator rounds the running sum of errors in another order.
    double largest = q.error;
    for (int32_t m = 1; irule > 0 && m <= std::min(n, 16); ++m)
        largest =
            std::max(largest, Quadrature<double>(irule, by_reference, p.a, p.b, p.errabs, p.errrel, m).error);
    EXPECT_TRUE(irule == 0 ? q.error == peer.error || (code > 0 && q.error > peer.error * (1 - 1e-9))
                           : std::abs(q.error - peer.error) <= n * eps * largest)
        << q.error << " " << peer.error;
    for (int32_t k = 0; k < n; ++k) {
        EXPECT_EQ(q.lo[k], peer.w->alist[k]) << k;
        EXPECT_EQ(q.hi[k], peer.w->blist[k]) << k;
        EXPECT_EQ(q.res[k], peer.w->rlist[k]) << k;
        EXPECT_EQ(q.err[k], peer.w->elist[k]) << k;
    }
    for (int32_t k = 0; k < (n > maxsub / 2 + 2 ? maxsub + 3 - n : n); ++k)
        EXPECT_EQ(q.order[k], static_cast<int32_t>(peer.w->order[k]) + 1) << k;
    return code;
}

double center, exponent, noise;

TEST_F(Path, IsThePublishedOne)
{
    int seen[6] = {};
    for (const Problem& p : problems)
        for (int32_t irule = 0; irule <= 6; ++irule)
            for (const int32_t maxsub : {3, 13, 500}) {
                SCOPED_TRACE(testing::Message()
                             << &p - problems << " rule " << irule << " MAXSUB " << maxsub);
                ++seen[compare(p, irule, maxsub)];
            }
    // A family with singularities and noise, on which the counters and thresholds decide.
    for (center = 0; center < 1; center += 0.49)
        for (exponent = -1.3; exponent < 1; exponent += 0.15)
            for (noise = 0; noise < 1e-3; noise = noise * 30 + 1e-10)
                for (const double errrel : {1e-4, 1e-8, 1e-10, 1e-12, 3e-14}) {
                    const auto f = [](double x) {
                        const double sign = exponent > 0.3 || x > center ? 1 : -1;
                        return sign * std::pow(std::abs(x - center), exponent) + noise * std::cos(1e5 * x);
                    };
                    SCOPED_TRACE(testing::Message()
                                 << center << " " << exponent << " " << noise << " " << errrel);
                    ++seen[compare({f, 0, 1, 0, errrel}, 0, 500)];
                }
    for (const int code : {0, 1, 2, 3, 4, 5}) EXPECT_GE(seen[code], 10) << code;
}

// The epsilon algorithm: exact for sums of three powers, and at work beyond a full table.
TEST_F(Path, EpsilonAlgorithm)
{
    double table[52], last[3], result, error;
    int32_t n = 0, calls = 0;
    for (int k = 0; k < 8; ++k) {
        table[n++] = 3 + std::pow(0.5, k) - std::pow(-0.4, k) + std::pow(0.3, k);
        DQ4AWO(&n, table, &result, &error, last, &calls);
        EXPECT_EQ(error == std::numeric_limits<double>::max(), k < 3);
    }
    EXPECT_NEAR(result, 3, 1e-10);
    n = calls = 0;
    double sum = 0;
    int32_t most = 0;
    for (int k = 1; k <= 120; ++k) {
        sum += 1 / (k * std::sqrt(k)) + 1e-9 * std::sin(k * k);
        table[n++] = sum;
        most = std::max(most, n);
        DQ4AWO(&n, table, &result, &error, last, &calls);
        ASSERT_LE(n, 49);
        ASSERT_GE(n, 1);
    }
    EXPECT_EQ(calls, 120);
    for (const int32_t bad : {0, 51, -3}) {
        n = bad;
        result = 5;
        DQ4AWO(&n, table, &result, &error, last, &calls);
        EXPECT_EQ(result, 5);
    }
}

// The worst piece is halved again and again: SUBORD is in decreasing order, of all pieces as long as MAXSUB
// lets it be kept.
TEST_F(Path, OrderOfThePieces)
{
    std::mt19937 random(1);
    std::uniform_real_distribution<double> share(0, 0.9);
    for (const int32_t room : {3, 12, 40}) {
        std::vector<double> errors(40);
        std::vector<int32_t> order(41, -7);
        int32_t worst = 1, position = 1;
        double error = errors[0] = 1;
        for (int32_t n = 2; n <= room; ++n) {
            const bool is_whole = n <= room / 2 + 2;
            const int32_t kept = is_whole ? n : room + 3 - n;
            double& whole = errors[static_cast<std::size_t>(worst - 1)];
            errors[static_cast<std::size_t>(n - 1)] = whole * share(random) / 2;
            whole *= 0.5 + share(random) / (n % 3 == 0 ? 0.9 : 2);  // may even grow
            DQ10G(&room, &n, &worst, &error, errors.data(), order.data(), &position);
            std::vector<double> sorted(errors.begin(), errors.begin() + n), ordered;
            std::sort(sorted.rbegin(), sorted.rend());
            for (int32_t k = 0; k < kept; ++k)
                ordered.push_back(errors[static_cast<std::size_t>(order[static_cast<std::size_t>(k)] - 1)]);
            EXPECT_TRUE(is_whole ? ordered == sorted : std::is_sorted(ordered.rbegin(), ordered.rend()))
                << room << " " << n;
            EXPECT_EQ(order[static_cast<std::size_t>(n)], -7);
            EXPECT_EQ(worst, order[0]);
            EXPECT_EQ(error, ordered[0]);
        }
    }
    const struct {
        int32_t room, pieces, worst, position, order[2];
        bool is_good;
    } rows[] = {{3, 3, 1, 1, {1, 2}, true},  {3, 3, 3, 1, {3, 1}, true},  {3, 3, 0, 1, {1, 2}, false},
                {3, 3, 4, 1, {1, 2}, false}, {2, 3, 1, 1, {1, 2}, false}, {3, 1, 1, 1, {1, 2}, false},
                {3, 3, 1, 0, {1, 2}, false}, {3, 3, 2, 2, {1, 2}, true},  {3, 3, 1, 3, {1, 2}, false},
                {3, 3, 1, 1, {0, 2}, false}, {3, 3, 1, 1, {1, 4}, false}, {2, 2, 2, 1, {9, 9}, true},
                {2, 2, 1, 2, {1, 2}, false}};
    for (const auto& row : rows) {
        const double errors[] = {3, 2, 1};
        double error = 5;
        int32_t order[] = {row.order[0], row.order[1], 9}, worst = row.worst, position = row.position;
        DQ10G(&row.room, &row.pieces, &worst, &error, errors, order, &position);
        const bool is_untouched = worst == row.worst && position == row.position && error == 5 &&
                                  order[0] == row.order[0] && order[1] == row.order[1] && order[2] == 9;
        EXPECT_EQ(is_untouched, !row.is_good) << &row - rows;
        if (!row.is_good) continue;
        EXPECT_EQ(error, errors[worst - 1]) << &row - rows;
    }
}

}  // namespace
