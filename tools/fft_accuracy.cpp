// tools/fft_accuracy.cpp - measure the errors of Fourier transforms and compare them with orvel/fft.h
//
//     cmake --build build/release --target fft_accuracy && build/release/tests/fft_accuracy [LONGEST]
//
// Prints the worst errors of each class of lengths up to LONGEST (2^18 if none is given), in both precisions
// and on every level of the machine, in the form of the table in the header. The exit status is 1 where one
// of them is beyond the bound that stands there.
#include <cstdio>
#include <cstdlib>
#include <set>

#include "fft/transform.h"
#include "isa/levels.h"
#include "tests/fft/transforms.h"

namespace {

using namespace orvel_test;
namespace isa = orvel::isa;

struct Worst {
    double value = 0;
    int64_t n = 0;
    const char* level = "";

    void include(double x, int64_t length)
    {
        if (x <= value) return;
        *this = {x, length, isa::level_name(isa::level())};
    }
};

struct Row {
    const char* title;
    Error Errors::*of;
    double Error::*figure;
    Worst worst[Documented::classes];
};

// All short lengths; powers, products of small factors, primes, their squares and multiples.
std::set<int32_t> lengths(int64_t longest)
{
    std::set<int32_t> all;
    const auto add = [&](int64_t n) {
        if (n <= longest) all.insert(static_cast<int32_t>(n));
    };
    for (int32_t n = 2; n <= 1300; ++n) add(n);
    for (const int64_t p : {2, 3, 5, 7, 11, 13, 17, 31, 61, 97, 127, 131, 257, 1021})
        for (int64_t n = p; n <= longest; n *= p)
            for (const int64_t factor : {1, 2, 3, 5}) add(n * factor);
    for (const int64_t p :
         {8191, 10007, 19997, 40009, 65537, 99991, 131071, 174763, 262139, 349507, 524287, 1000003})
        for (const int64_t factor : {1, 3, 8}) add(p * factor);
    for (const int64_t n : {131 * 137, 127 * 131 * 3, 13 * 13 * 13 * 131, 101 * 103 * 17, 509 * 503}) add(n);
    return all;
}

template <class R>
void measure(int32_t n, Exact& exact, std::vector<Row>& rows)
{
    const int seeds = n < 50 ? 300 : n < 200 ? 50 : n < 3000 ? 4 : 1;
    for (int seed = 0; seed < seeds; ++seed) {
        const Sample<R> sample(n, 1000003 * static_cast<uint64_t>(seed) + static_cast<uint64_t>(n), exact);
        for (int k = 0; k < isa::level_count(); ++k) {
            isa::use_level(isa::level_name(k));
            const Errors e = sample.errors();
            for (Row& row : rows) row.worst[Documented::class_of(n)].include(e.*row.of.*row.figure, n);
        }
    }
}

template <class R>
void measure_roots(int64_t n, Worst& worst)
{
    std::vector<Wide> exact(n);
    for (int64_t j = 0; j < n; ++j) exact[j] = root(j, n);
    for (int k = 0; k < isa::level_count(); ++k) {
        isa::use_level(isa::level_name(k));
        for (const int64_t step : {1, 3, 7}) {
            std::vector<R> c(n), s(n);
            orvel::fft::roots<R>(n, 0, step, n, 1, c.data(), s.data());
            for (int64_t j = 0; j < n; ++j) {
                const Wide& right = exact[j * step % n];
                const auto wrong = std::max(std::abs(c[j] - right.real()), std::abs(s[j] + right.imag()));
                worst.include(static_cast<double>(wrong) / std::numeric_limits<R>::epsilon(), n);
            }
        }
    }
}

bool print(const Row& row, const Documented& documented)
{
    bool holds = true;
    std::printf("%-30s", row.title);
    for (int k = 0; k < Documented::classes; ++k) {
        const double bound = documented.bounds[k].*row.of.*row.figure;
        std::printf("%8.2f", row.worst[k].value);
        holds = holds && row.worst[k].value <= bound;
    }
    std::printf("\n%-30s", "    at N =");
    for (const Worst& w : row.worst) std::printf("%8ld", static_cast<long>(w.n));
    std::printf("%s\n", holds ? "" : "   BEYOND THE BOUND");
    return holds;
}

}  // namespace

int main(int argc, char** argv)
{
    const Documented documented(ORVEL_FFT_HEADER);
    const int64_t longest = argc > 1 ? std::atoll(argv[1]) : 1 << 18;
    bool holds = true;
    const std::vector<Row> titles = {{"transform, root mean square", &Errors::transform, &Error::mean, {}},
                                     {"transform, largest", &Errors::transform, &Error::largest, {}},
                                     {"pair, root mean square", &Errors::pair, &Error::mean, {}},
                                     {"pair, largest", &Errors::pair, &Error::largest, {}}};
    std::vector<Row> rows[2] = {titles, titles};
    Worst worst_root;
    for (const int32_t n : lengths(longest)) {
        Exact exact(n);
        measure<float>(n, exact, rows[0]);
        measure<double>(n, exact, rows[1]);
        if (n % 7 == 0 || n > 10000) {
            measure_roots<float>(n, worst_root);
            measure_roots<double>(n, worst_root);
        }
    }
    for (const auto& of_precision : rows) {
        std::printf("\n%-30s   N<100       2   to 13  to 127  beyond\n",
                    &of_precision == rows ? "single" : "double");
        for (const Row& row : of_precision) holds = print(row, documented) && holds;
    }
    std::printf("\nroots off by %.3f eps at N = %ld\n", worst_root.value, static_cast<long>(worst_root.n));
    holds = holds && worst_root.value <= documented.root;
    return holds ? 0 : 1;
}
