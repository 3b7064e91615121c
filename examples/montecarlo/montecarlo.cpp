// examples/montecarlo/montecarlo.cpp - the volume of a ball from several generators and from many streams
//
//     montecarlo_cpp [plot.dat]
//
// The part of the unit ball in five dimensions that lies in the cube [0, 1]^5 has the volume pi^2 / 60. Every
// generator estimates it from growing samples; the error falls like the square root of their size. Then
// streams that RNISD sets 100000 numbers apart are shared among threads: the total is the same whatever their
// number.
#include <omp.h>
#include <orvel/orvel.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <vector>

#include "../check.h"

namespace {

constexpr int dimension = 5;
constexpr double exact = 3.14159265358979323846 * 3.14159265358979323846 / 60;

// Points of a sample that lie in the ball.
int64_t points_in_ball(int64_t points)
{
    constexpr int64_t batch = 1000;
    std::vector<double> r(dimension * batch);
    int64_t inside = 0;
    for (int64_t done = 0; done < points; done += batch) {
        const int64_t count = std::min(batch, points - done);
        const auto numbers = static_cast<int32_t>(dimension * count);
        DRNUN(&numbers, r.data());
        for (int64_t k = 0; k < count; ++k) {
            double square = 0.0;
            for (int64_t j = 0; j < dimension; ++j) square += r[dimension * k + j] * r[dimension * k + j];
            inside += square < 1.0;
        }
    }
    return inside;
}

int compare_generators(std::FILE* plot)
{
    std::printf(" exact %.6f\n\n option    points  estimate     error  error / standard error\n", exact);
    double sum = 0.0, every_point = 0.0;
    for (const int32_t option : {1, 2, 5, 7, 8, 9}) {
        const int32_t seed = 20001;
        RNOPT(&option);
        RNSET(&seed);
        int64_t inside = 0, points = 0;
        for (int64_t next = 1000; next <= 1024000; next *= 2) {
            inside += points_in_ball(next - points);
            points = next;
            const double estimate = static_cast<double>(inside) / static_cast<double>(points);
            const double error = std::abs(estimate - exact);
            const double deviation = std::sqrt(exact * (1 - exact) / static_cast<double>(points));
            if (plot != nullptr)
                std::fprintf(plot, "%lld %g %g\n", static_cast<long long>(points), error, deviation);
            if (points == 1024000)
                std::printf("%7d%10lld%10.6f%10.6f%12.2f\n", option, static_cast<long long>(points), estimate,
                            error, error / deviation);
        }
        if (plot != nullptr) std::fprintf(plot, "\n\n");
        sum += static_cast<double>(inside);
        every_point += static_cast<double>(points);
    }
    const double three = 3 * std::sqrt(exact * (1 - exact) / every_point);
    std::printf("\n");
    return check("volume, all generators", sum / every_point, exact, three, 6,
                 "pi^2/60; three standard errors");
}

// Streams of 20000 points each. Every thread has a generator of its own, so it sets option and seed itself.
int64_t total_of_streams(const std::vector<int32_t>& seeds, int threads)
{
    int64_t total = 0;
#pragma omp parallel for num_threads(threads) reduction(+ : total) schedule(dynamic)
    for (std::size_t k = 0; k < seeds.size(); ++k) {
        const int32_t option = 5;
        RNOPT(&option);
        RNSET(&seeds[k]);
        total += points_in_ball(100000 / dimension);
    }
    return total;
}

}  // namespace

int main(int argc, char** argv)
{
    std::FILE* plot = argc > 1 ? std::fopen(argv[1], "w") : nullptr;
    const int differs = compare_generators(plot);
    if (plot != nullptr) std::fclose(plot);

    const int32_t option = 5;
    RNOPT(&option);
    std::vector<int32_t> seeds{123457};
    while (seeds.size() < 64) {
        int32_t next;
        RNISD(&seeds.back(), &next);
        seeds.push_back(next);
    }
    std::printf("\n 64 streams of 100000 numbers each:\n");
    const int64_t alone = total_of_streams(seeds, 1);
    int64_t total = alone;
    for (const int threads : {2, 3, 8}) {
        const int64_t shared = total_of_streams(seeds, threads);
        std::printf(" %d threads: %lld points in the ball\n", threads, static_cast<long long>(shared));
        if (shared != alone) total = shared;
    }
    return differs + check("points, several threads", static_cast<double>(total), static_cast<double>(alone),
                           0, 0, "one thread");
}
