// examples/accidents/accidents.cpp - a distribution fitted to counts of accidents by maximum likelihood
//
//     accidents_cpp accidents.txt [plot.dat]
//
// If all workers ran the same risk, their accidents would follow the Poisson law. If the risk varies from one
// to the other by a gamma distribution of shape k, they follow the negative binomial law. Its mean is that of
// the sample; DUVMIF finds the k of the largest likelihood. The function that it minimizes calls the library
// itself.
#include <orvel/orvel.h>

#include <cmath>
#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

namespace {

struct Count {
    double accidents, workers;
};
std::vector<Count> sample;
double workers = 0, mean = 0;

double log_gamma(double x) { return DLNGAM(&x); }

double log_probability(double accidents, double k)
{
    return log_gamma(k + accidents) - log_gamma(k) - log_gamma(accidents + 1) + k * std::log(k / (k + mean)) +
           accidents * std::log(mean / (k + mean));
}

double poisson(double accidents)
{
    return std::exp(accidents * std::log(mean) - mean - log_gamma(accidents + 1));
}

// Of ln k, so that every step is allowed.
double minus_log_likelihood(const double* log_k)
{
    double sum = 0;
    for (const Count& c : sample) sum -= c.workers * log_probability(c.accidents, std::exp(*log_k));
    return sum;
}

}  // namespace

int main(int argc, char** argv)
{
    std::ifstream file(argc > 1 ? argv[1] : "");
    for (std::string line; std::getline(file, line);) {
        Count c;
        if (std::sscanf(line.c_str(), "%lf %lf", &c.accidents, &c.workers) != 2) continue;
        sample.push_back(c);
        workers += c.workers;
        mean += c.accidents * c.workers;
    }
    if (sample.empty()) {
        std::fprintf(stderr, "usage: accidents_cpp accidents.txt [plot.dat]\n");
        return 2;
    }
    mean /= workers;

    const double guess = 0, step = 0.5, bound = 10, accuracy = 1e-7;
    const int32_t most = 100;
    double log_k;
    DUVMIF(minus_log_likelihood, &guess, &step, &bound, &accuracy, &most, &log_k);
    const double best = minus_log_likelihood(&log_k), k = std::exp(log_k), h = 1e-3;
    const double lower = log_k - h, upper = log_k + h;
    const double curvature =
        (minus_log_likelihood(&lower) - 2 * best + minus_log_likelihood(&upper)) / (h * h);
    std::printf(" %.0f workers, mean %.4f\n shape k = %.4f, standard error %.3f, log-likelihood %.3f\n\n",
                workers, mean, k, k / std::sqrt(curvature), -best);

    std::FILE* plot = argc > 2 ? std::fopen(argv[2], "w") : nullptr;
    std::printf(" accidents  workers  negative binomial  Poisson\n");
    for (const Count& c : sample) {
        const double fitted = workers * std::exp(log_probability(c.accidents, k));
        const double same_risk = workers * poisson(c.accidents);
        std::printf("%8.0f%11.0f%15.1f%13.1f\n", c.accidents, c.workers, fitted, same_risk);
        if (plot != nullptr) std::fprintf(plot, "%g %g %g %g\n", c.accidents, c.workers, fitted, same_risk);
    }
    if (plot != nullptr) std::fclose(plot);
}
