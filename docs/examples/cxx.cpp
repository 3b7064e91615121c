// docs/examples/cxx.cpp - the examples of the page on C++
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <functional>
#include <vector>

#include "orvel/orvel.hpp"

int main()
{
    std::puts("-- cxx first");
    // example cxx first
    const orvel::matrix<double> a(2, 2, {4, 1, 2, 3});  // by columns: 4 2 / 1 3
    const std::vector<double> b = {8, 7};
    const std::vector<double> x = orvel::lsarg(a, b).value();
    std::printf("x = %g %g\n", x[0], x[1]);

    const double k = 2.5;
    const auto [result, esterr] = orvel::qdags([&](double t) { return k * t; }, 0, 3).value();
    std::printf("integral = %.6f, off by at most %.0e\n", result, esterr);
    std::printf("gamma(4.5) = %.6f\n", orvel::gamma(4.5).value());
    // end

    std::puts("-- cxx precision");
    // example cxx precision
    std::printf("%.9f %.9f\n", double(orvel::gamma(0.3f).value()), orvel::gamma(0.3).value());
    const std::vector<std::complex<float>> z = {{1, 0}, {0, 1}, {-1, 0}, {0, -1}};
    for (const std::complex<float> c : orvel::fftcf(z).value())
        std::printf("(%g,%g) ", double(c.real()), double(c.imag()));
    std::puts("");
    const std::vector<double> numbers = orvel::drnun(3).value();  // nothing tells the precision: its own name
    std::printf("%zu numbers\n", numbers.size());
    // end

    std::puts("-- cxx arrays");
    // example cxx arrays
    std::vector<double> room(100, 1.0);
    const orvel::matrix_view big(room, 10, 10);
    const auto block = big.block(2, 3, 2, 2);  // two rows and two columns of it, which keep their distance
    for (std::size_t j = 0; j < 2; ++j)
        for (std::size_t i = 0; i < 2; ++i) block(i, j) = a(i, j);
    std::printf("x = %g\n", orvel::lsarg(block, b).value()[0]);
    orvel::scal(10, big.row(2)).value();  // in place, with an increment of 10
    std::printf("%g %g %g\n", room[2], room[12], room[32]);
    // end

    std::puts("-- cxx errors");
    // example cxx errors
    const auto pole = orvel::gamma(-3.0);
    if (!pole.ok()) {
        std::printf("%s, error %d\n", std::string(pole.routine()).c_str(), pole.code());
        std::printf("%s\n", std::string(pole.text()).c_str());
    }
    try {
        orvel::lsarg(orvel::matrix<double>(2, 2, {1, 2, 2, 4}), b).value();
    } catch (const orvel::error& error) {
        std::printf("%s, severity %d\n", error.routine().c_str(), static_cast<int>(error.severity()));
    }
    const auto doubtful = orvel::gamma(-200.5);  // underflows: a warning beside a value
    std::printf("%g, ok %d, code %d\n", doubtful.value(), doubtful.ok(), doubtful.code());
    std::printf("%s\n", std::string(orvel::lsarg(a, numbers).text()).c_str());
    // end

    std::puts("-- cxx functions");
    // example cxx functions
    // The volume under sin(x y) on the unit square: an integral of integrals.
    const auto inner = [](double y) {
        return orvel::qdags([y](double t) { return std::sin(t * y); }, 0, 1).value().result;
    };
    std::printf("%.10f\n", orvel::qdags(inner, 0, 1, 0, 1e-10).value().result);
    int calls = 0;
    try {
        static_cast<void>(orvel::qdags([&](double t) { return ++calls < 10 ? t : throw calls; }, 0, 1));
    } catch (int after) {
        std::printf("left after %d calls\n", after);
    }
    // end
}
