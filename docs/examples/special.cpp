// docs/examples/special.cpp - examples of gamma functions and series
#include "print.h"

using manual::print;
using manual::title;
using std::vector;

int main()
{
    title("GAMMA");
    // example GAMMA
    print("5! and the square root of pi", orvel::gamma(6).value(), orvel::gamma(0.5).value());
    const auto pole = orvel::gamma(-2.0);
    print(std::string(pole.text()).c_str(), pole.code());
    // end

    title("ALNGAM, ALGAMS");
    // example ALNGAM, ALGAMS
    print("ln of 1000!", orvel::alngam(1001).value());
    const auto [algm, s] = orvel::algams(-1.5).value();
    print("gamma(-1.5)", s * std::exp(algm));
    // end

    title("GAMR");
    // example GAMR
    print("at a pole and beside it", orvel::gamr(-3.0).value(), orvel::gamr(-3.001).value());
    // end

    title("R9LGMC, R9GAML");
    // example R9LGMC, R9GAML
    print("correction of Stirling's formula at 10", orvel::r9lgmc(10.0).value());
    print("gamma is in range between", orvel::d9gaml().value().xmin, orvel::d9gaml().value().xmax);
    // end

    title("INITS, CSEVL");
    // example INITS, CSEVL
    // exp(x) between -1 and 1: coefficients I_k(1), twice.
    const vector<double> series = {2.53213175550401667, 1.13031820798497005, 0.27149533953407656,
                                   0.04433684984866380, 0.00547424044209373, 0.00054292631191395,
                                   0.00004497732295429, 0.00000319843646236};
    const auto terms = static_cast<std::size_t>(orvel::initds(series, 1e-4f).value());
    print("terms for 1e-4", static_cast<int>(terms));
    print("exp(0.5)", orvel::csevl(0.5, orvel::vector_view(series.data(), terms)).value(), "all terms",
          orvel::csevl(0.5, series).value());
    // end
}
