// examples/forecast/forecast.cpp - yearly sunspot numbers predicted from the years before, by their
// covariances
//
//     forecast_cpp sunspots.txt [plot.dat]
//
// The weights of p years solve C w = c, where C(i, j) is the covariance of years i - j apart and c that with
// the year to come. They are fitted to 1749 to 1924 and tried on the years after.
#include <cmath>
#include <cstdio>
#include <fstream>
#include <orvel/orvel.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "../check.h"

namespace {

constexpr int first_year = 1700, fitted_from = 1749, fitted_to = 1924;

std::vector<double> numbers_of(const char* file)
{
    std::ifstream in(file);
    std::vector<double> numbers;
    for (std::string line; std::getline(in, line);) {
        if (line.empty() || line[0] == '#') continue;
        std::istringstream words(line);
        double value;
        words >> value;  // the year
        while (words >> value) numbers.push_back(value);
    }
    return numbers;
}

struct Series {
    std::vector<double> all;
    double mean = 0;

    explicit Series(const char* file) : all(numbers_of(file))
    {
        for (int y = fitted_from; y <= fitted_to && !all.empty(); ++y) mean += number(y);
        mean /= fitted_to - fitted_from + 1;
    }
    double number(int year) const { return all.at(static_cast<std::size_t>(year - first_year)); }
    int last() const { return first_year + static_cast<int>(all.size()) - 1; }
    double covariance(int lag) const
    {
        double sum = 0;
        for (int y = fitted_from; y + lag <= fitted_to; ++y)
            sum += (number(y) - mean) * (number(y + lag) - mean);
        return sum / (fitted_to - fitted_from + 1);
    }
};

orvel::matrix<double> covariances(const Series& s, int p)
{
    const auto order = static_cast<std::size_t>(p);
    orvel::matrix<double> c(order, order);
    for (int j = 0; j < p; ++j)
        for (int i = 0; i < p; ++i)
            c(static_cast<std::size_t>(i), static_cast<std::size_t>(j)) = s.covariance(std::abs(i - j));
    return c;
}

std::vector<double> weights(const Series& s, int p)
{
    std::vector<double> c;
    for (int k = 1; k <= p; ++k) c.push_back(s.covariance(k));
    return orvel::lsads(covariances(s, p), c).value();
}

double forecast(const Series& s, const std::vector<double>& w, int year)
{
    double value = s.mean;
    for (std::size_t k = 0; k < w.size(); ++k)
        value += w[k] * (s.number(year - 1 - static_cast<int>(k)) - s.mean);
    return value;
}

template <class Guess>
double root_mean_square(const Series& s, Guess guess)
{
    double sum = 0;
    for (int y = fitted_to + 1; y <= s.last(); ++y) sum += std::pow(guess(y) - s.number(y), 2);
    return std::sqrt(sum / (s.last() - fitted_to));
}

// The largest element of R^-H C R^-1 - I, R being the factor of C and its inverse a triangle.
double whitened(const orvel::matrix<double>& c)
{
    const std::size_t p = c.rows();
    const auto inverse = orvel::linrt(orvel::lftds(c).value(), 2).value();
    orvel::matrix<double> half = c;
    orvel::trmm('R', 'U', 'N', 'N', 1, inverse, half).value();
    orvel::trmm('L', 'U', 'T', 'N', 1, inverse, half).value();
    double worst = 0;
    for (std::size_t j = 0; j < p; ++j)
        for (std::size_t i = 0; i < p; ++i) worst = std::max(worst, std::abs(half(i, j) - (i == j)));
    return worst;
}

}  // namespace

int main(int argc, char** argv)
{
    const Series s(argc > 1 ? argv[1] : "");
    if (s.all.empty()) {
        std::fprintf(stderr, "usage: forecast_cpp sunspots.txt [plot.dat]\n");
        return 2;
    }
    const auto two = weights(s, 2), nine = weights(s, 9);
    std::printf(" %d to %d: mean %.2f, covariances %.1f %.1f %.1f\n\n", fitted_from, fitted_to, s.mean,
                s.covariance(0), s.covariance(1), s.covariance(2));
    std::printf(" forecast from    error, root mean square %d to %d\n", fitted_to + 1, s.last());
    std::printf(" the mean         %6.2f\n", root_mean_square(s, [&](int) { return s.mean; }));
    std::printf(" the year before  %6.2f\n", root_mean_square(s, [&](int y) { return s.number(y - 1); }));
    for (const auto* w : {&two, &nine})
        std::printf(" %zu years          %6.2f\n", w->size(),
                    root_mean_square(s, [&](int y) { return forecast(s, *w, y); }));
    std::printf("\n weights of nine years:");
    for (const double w : nine) std::printf(" %.3f", w);
    std::printf("\n");

    if (std::FILE* plot = argc > 2 ? std::fopen(argv[2], "w") : nullptr) {
        for (int y = fitted_to + 1; y <= s.last(); ++y)
            std::fprintf(plot, "%d %g %g %g\n", y, s.number(y), forecast(s, two, y), forecast(s, nine, y));
        std::fclose(plot);
    }
    std::printf("\n");
    return check("weight of the year before", two[0], 1.34254, 0.02, 5, "Yule, 1927") +
           check("weight of two years before", two[1], -0.65504, 0.02, 5, "Yule, 1927") +
           check("nine years made independent, largest error times 1e12", 1e12 * whitened(covariances(s, 9)),
                 0, 1, 4, "the identity matrix");
}
