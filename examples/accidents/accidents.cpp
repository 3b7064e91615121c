// examples/accidents/accidents.cpp - a distribution fitted to counts of accidents by maximum likelihood
//
//     accidents_cpp accidents.txt [plot.dat]
//
// If all workers ran the same risk, their accidents would follow the Poisson law. If the risk varies from one
// to the other by a gamma distribution of shape k, they follow the negative binomial law. Its mean is that of
// the sample; uvmif finds the k of the largest likelihood. The function that it minimizes is a lambda, which
// sees the sample and calls the library itself.
#include <cmath>
#include <cstdio>
#include <fstream>
#include <orvel/orvel.hpp>
#include <string>
#include <vector>

#include "../check.h"

namespace {

struct Count {
    double accidents, workers;
};

struct Sample {
    std::vector<Count> counts;
    double workers = 0, mean = 0;

    explicit Sample(const char* path)
    {
        std::ifstream file(path);
        for (std::string line; std::getline(file, line);) {
            Count c;
            if (std::sscanf(line.c_str(), "%lf %lf", &c.accidents, &c.workers) != 2) continue;
            counts.push_back(c);
            workers += c.workers;
            mean += c.accidents * c.workers;
        }
        mean /= workers;
    }
};

double log_gamma(double x) { return orvel::alngam(x).value(); }

double log_probability(double accidents, double mean, double k)
{
    return log_gamma(k + accidents) - log_gamma(k) - log_gamma(accidents + 1) + k * std::log(k / (k + mean)) +
           accidents * std::log(mean / (k + mean));
}

double poisson(double accidents, double mean)
{
    return std::exp(accidents * std::log(mean) - mean - log_gamma(accidents + 1));
}

// The derivative of the likelihood by k is zero where the sum over j of (those with more than j accidents) /
// (k + j) is workers * log(1 + mean / k) (J. B. S. Haldane, The fitting of binomial distributions, 1941).
double shape_by_bisection(const Sample& sample)
{
    const auto slope = [&sample](double k) {
        double sum = -sample.workers * std::log(1 + sample.mean / k);
        for (const Count& c : sample.counts)
            for (int j = 0; j < c.accidents; ++j) sum += c.workers / (k + j);
        return sum;
    };
    double low = 0.01, high = 100;
    while (high - low > 1e-12) (slope(0.5 * (low + high)) > 0 ? low : high) = 0.5 * (low + high);
    return low;
}

void compare_laws(const Sample& sample, double k, std::FILE* plot)
{
    std::printf(" accidents  workers  negative binomial  Poisson\n");
    for (const Count& c : sample.counts) {
        const double fitted = sample.workers * std::exp(log_probability(c.accidents, sample.mean, k));
        const double same_risk = sample.workers * poisson(c.accidents, sample.mean);
        std::printf("%8.0f%11.0f%15.1f%13.1f\n", c.accidents, c.workers, fitted, same_risk);
        if (plot != nullptr) std::fprintf(plot, "%g %g %g %g\n", c.accidents, c.workers, fitted, same_risk);
    }
}

}  // namespace

int main(int argc, char** argv)
{
    const Sample sample(argc > 1 ? argv[1] : "");
    if (sample.counts.empty()) {
        std::fprintf(stderr, "usage: accidents_cpp accidents.txt [plot.dat]\n");
        return 2;
    }
    // Of ln k, so that every step is allowed.
    const auto minus_log_likelihood = [&sample](double log_k) {
        double sum = 0;
        for (const Count& c : sample.counts)
            sum -= c.workers * log_probability(c.accidents, sample.mean, std::exp(log_k));
        return sum;
    };
    const double log_k = orvel::uvmif(minus_log_likelihood, 0, 0.5, 10, 1e-7).value(), k = std::exp(log_k);
    const double best = minus_log_likelihood(log_k), h = 1e-3;
    const double curvature =
        (minus_log_likelihood(log_k - h) - 2 * best + minus_log_likelihood(log_k + h)) / (h * h);
    std::printf(" %.0f workers, mean %.4f\n shape k = %.4f, standard error %.3f, log-likelihood %.3f\n\n",
                sample.workers, sample.mean, k, k / std::sqrt(curvature), -best);

    std::FILE* plot = argc > 2 ? std::fopen(argv[2], "w") : nullptr;
    compare_laws(sample, k, plot);
    if (plot != nullptr) std::fclose(plot);
    std::printf("\n");
    return check("shape k", k, shape_by_bisection(sample), 1e-5, 6, "zero of the derivative, by bisection");
}
