// examples/alpha/alpha.cpp - a Poisson law fitted to counts of alpha particles, from C++
//
//     alpha_cpp counts.txt
//
// The same table as alpha.c prints. Here every call returns its value, or the error in place of it.
#include <cmath>
#include <cstdio>
#include <fstream>
#include <numeric>
#include <orvel/orvel.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "../check.h"

namespace {

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
    const auto count = static_cast<double>(k);
    return std::exp(count * std::log(mean) - mean - orvel::alngam(count + 1).value());
}

int fit(const std::vector<double>& observed)
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
    return check("particles in an interval", mean, 3.87, 0.005, 4, "the authors' mean, 1910");
}

void look_at_errors()
{
    std::printf("\n");
    for (const float x : {-2.0005f, -3.0f}) {
        const orvel::result<float> gamma = orvel::gamma(x);
        std::printf(" GAMMA(%8.4f): type %d, code %d, ", static_cast<double>(x),
                    static_cast<int>(gamma.severity()), gamma.code());
        if (gamma.ok())
            std::printf("value %.3f\n", static_cast<double>(gamma.value()));
        else
            std::printf("no value\n");
    }
}

}  // namespace

int main(int argc, char** argv)
{
    const std::vector<double> observed = argc > 1 ? read_counts(argv[1]) : std::vector<double>{};
    if (observed.empty()) {
        std::fprintf(stderr, "usage: alpha_cpp counts.txt\n");
        return 2;
    }
    const int differs = fit(observed);
    look_at_errors();
    return differs;
}
