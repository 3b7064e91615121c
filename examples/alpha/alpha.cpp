// examples/alpha/alpha.cpp - a Poisson law fitted to counts of alpha particles, from C++
//
//     alpha_cpp counts.txt
//
// The same table as alpha.c prints. Here an error that would stop the program becomes an exception.
#include <orvel/orvel.h>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <numeric>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

struct Stopped : std::runtime_error {
    Stopped(int32_t t, int32_t c) : std::runtime_error("stopped by an error"), type(t), code(c) {}
    int32_t type, code;
};

std::vector<double> read_counts(const std::string& path)
{
    std::vector<double> observed;
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);) {
        std::istringstream words(line);
        std::size_t particles;
        double intervals;
        if (line.starts_with('#') || !(words >> particles >> intervals)) continue;
        observed.resize(std::max(observed.size(), particles + 1));
        observed[particles] = intervals;
    }
    return observed;
}

// P(k) = exp(-m) m^k / k!, through the logarithm of the gamma function.
double poisson(double mean, std::size_t k)
{
    const float x = static_cast<float>(k) + 1.0f;
    return std::exp(static_cast<double>(k) * std::log(mean) - mean - static_cast<double>(ALNGAM(&x)));
}

void fit(const std::vector<double>& observed)
{
    const double intervals = std::accumulate(observed.begin(), observed.end(), 0.0);
    double particles = 0.0;
    for (std::size_t k = 0; k < observed.size(); ++k) particles += static_cast<double>(k) * observed[k];
    const double mean = particles / intervals;
    std::printf(" %.0f particles in %.0f intervals, %.4f in the mean\n\n", particles, intervals, mean);
    std::printf(" particles  observed  expected\n");
    double chi_square = 0.0, rest = intervals, tail = 1.0;
    int used = 0;
    for (std::size_t k = 0; k < observed.size(); ++k) {
        const double p = poisson(mean, k), expected = intervals * p;
        std::printf("%10zu%10.0f%10.1f\n", k, observed[k], expected);
        if (expected < 10.0) continue;
        chi_square += std::pow(observed[k] - expected, 2) / expected;
        rest -= observed[k];
        tail -= p;
        ++used;
    }
    chi_square += std::pow(rest - intervals * tail, 2) / (intervals * tail);
    std::printf("\n chi-square%7.2f with %d degrees of freedom\n", chi_square, used + 1 - 2);
}

void catch_errors()
{
    const int32_t all = 0, keep = -1, off = 0, above = 1;
    ERSET(&all, &off, &keep);  // print nothing; what stops is turned into an exception
    orvel_set_stop_handler([](void*, int32_t type, int32_t code) { throw Stopped(type, code); }, nullptr);
    std::printf("\n");
    for (const float x : {-2.0005f, -3.0f}) {
        try {
            const float value = GAMMA(&x);
            std::printf(" GAMMA(%8.4f): type %d, code %d, value %.3f\n", static_cast<double>(x),
                        N1RTY(&above), N1RCD(&above), static_cast<double>(value));
        } catch (const Stopped& error) {
            std::printf(" GAMMA(%8.4f): type %d, code %d, no value\n", static_cast<double>(x), error.type,
                        error.code);
        }
    }
    orvel_set_stop_handler(nullptr, nullptr);
}

}  // namespace

int main(int argc, char** argv)
{
    const std::vector<double> observed = argc > 1 ? read_counts(argv[1]) : std::vector<double>{};
    if (observed.empty()) {
        std::fprintf(stderr, "usage: alpha_cpp counts.txt\n");
        return 2;
    }
    fit(observed);
    catch_errors();
}
