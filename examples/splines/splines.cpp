// examples/splines/splines.cpp - the way of Pallas across the sky by four splines, and a thermocouple
// calibrated
//
//     splines_cpp pallas.txt thermocouple_k.txt [plot.dat]
//
// Pallas moves in a closed curve, so the periodic spline is the right one; the others show what they make of
// the ends. The thermocouple is interpolated from every other line of its table; the lines between tell how
// far off each spline is. The plot file has columns x, the trigonometric series that Gauss found for Pallas,
// and the difference of each spline from it.
#include <orvel/orvel.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "../check.h"

namespace {

struct Table {
    std::vector<double> x, f;

    explicit Table(const char* path)
    {
        std::ifstream file(path);
        double a, b;
        for (std::string line; std::getline(file, line);)
            if (std::istringstream(line) >> a >> b) {
                x.push_back(a);
                f.push_back(b);
            }
    }
    auto size() const { return static_cast<int32_t>(x.size()); }
};

struct Spline {
    const char* name;
    std::vector<double> brkpt, spcoef;
    int32_t nintv;

    Spline(const char* title, const Table& t)
        : name(title), brkpt(t.x.size()), spcoef(4 * t.x.size()), nintv(t.size() - 1)
    {}
    double value(double x) const { return DCSVAL(&x, &nintv, brkpt.data(), spcoef.data()); }
    double derivative(int32_t order, double x) const
    {
        return DCSDER(&order, &x, &nintv, brkpt.data(), spcoef.data());
    }
    double integral(double a, double b) const { return DCSITG(&a, &b, &nintv, brkpt.data(), spcoef.data()); }
};

// Not-a-knot, second derivative 0 at the ends ("natural"), Akima, and periodic where the data are.
std::vector<Spline> all_splines(const Table& t)
{
    const int32_t n = t.size(), second = 2;
    const double zero = 0;
    std::vector<Spline> s{{"not-a-knot", t}, {"natural", t}, {"Akima", t}};
    DCSINT(&n, t.x.data(), t.f.data(), s[0].brkpt.data(), s[0].spcoef.data());
    DCSDEC(&n, t.x.data(), t.f.data(), &second, &zero, &second, &zero, s[1].brkpt.data(), s[1].spcoef.data());
    DCSAKM(&n, t.x.data(), t.f.data(), s[2].brkpt.data(), s[2].spcoef.data());
    if (t.f.front() == t.f.back()) {
        s.emplace_back("periodic", t);
        DCSPER(&n, t.x.data(), t.f.data(), s[3].brkpt.data(), s[3].spcoef.data());
    }
    return s;
}

// The trigonometric polynomial through n equidistant places of a closed curve: each place has a part in it,
// sin(n u) cot(u) / n at the half distance u, which is 1 at the place itself and 0 at all others.
double trigonometric(const Table& t, double x)
{
    const std::size_t n = t.x.size() - 1;
    double sum = 0;
    for (std::size_t k = 0; k < n; ++k) {
        const double u = std::acos(-1.0) * (x - t.x[k]) / (t.x[n] - t.x[0]), sine = std::sin(u);
        if (std::abs(sine) < 1e-12) return t.f[k];
        sum += t.f[k] * std::sin(static_cast<double>(n) * u) * std::cos(u) / (static_cast<double>(n) * sine);
    }
    return sum;
}

int follow_pallas(const Table& t, std::FILE* plot)
{
    std::printf("              at 45    slopes at both ends       mean\n");
    const std::vector<Spline> splines = all_splines(t);
    const double begin = t.x.front(), end = t.x.back();
    double mean = 0;
    for (const Spline& s : splines) {
        mean = s.integral(begin, end) / (end - begin);
        std::printf(" %-10s %8.2f %11.4f %10.4f %12.3f\n", s.name, s.value(45), s.derivative(1, begin),
                    s.derivative(1, end), mean);
    }
    std::printf(" %-10s %8.2f\n\n", "Gauss", trigonometric(t, 45));
    for (int k = 0; plot != nullptr && k <= 360; ++k) {
        const double x = begin + (end - begin) * k / 360, gauss = trigonometric(t, x);
        std::fprintf(plot, "%g %g", x, gauss);
        for (const Spline& s : splines) std::fprintf(plot, " %g", s.value(x) - gauss);
        std::fprintf(plot, "\n");
    }
    return check("mean declination by the periodic spline", mean, 780.6, 0.05, 3,
                 "the constant term of Gauss's series");
}

// The largest error in microvolts, between the second and the last but one line and over all.
void calibrate(const Table& t)
{
    Table every_other = t;
    every_other.x.clear(), every_other.f.clear();
    for (std::size_t k = 0; k < t.x.size(); k += 2) {
        every_other.x.push_back(t.x[k]);
        every_other.f.push_back(t.f[k]);
    }
    std::printf("\n thermocouple: %d lines interpolated, the largest error at the %d between them\n",
                every_other.size(), t.size() - every_other.size());
    for (const Spline& s : all_splines(every_other)) {
        double worst = 0, inner = 0;
        for (std::size_t k = 1; k < t.x.size(); k += 2) {
            const double error = 1000 * std::abs(s.value(t.x[k]) - t.f[k]);
            worst = std::max(worst, error);
            if (k > 1 && k + 2 < t.x.size()) inner = std::max(inner, error);
        }
        std::printf(
            " %-10s %6.1f microvolts, %5.1f without the outermost; at 500 degrees %.2f microvolts a degree\n",
            s.name, worst, inner, 1000 * s.derivative(1, 500));
    }
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc < 3) {
        std::fprintf(stderr, "usage: splines_cpp pallas.txt thermocouple_k.txt [plot.dat]\n");
        return 2;
    }
    std::FILE* plot = argc > 3 ? std::fopen(argv[3], "w") : nullptr;
    const Table pallas(argv[1]), thermocouple(argv[2]);
    if (pallas.size() < 4 || thermocouple.size() < 8) return 2;
    const int differs = follow_pallas(pallas, plot);
    if (plot != nullptr) std::fclose(plot);
    calibrate(thermocouple);
    return differs;
}
