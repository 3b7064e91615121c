// docs/examples/interp.cpp - examples of splines
#include "print.h"

using manual::print;
using manual::title;
using std::vector;

namespace {

const double pi = 3.14159265358979324;
const vector<double> x = {0, 1, 2, 3, 4, 5};

void constructors()
{
    title("CSINT");
    // example CSINT
    const auto cubes = orvel::csint(x, vector<double>{0, 1, 8, 27, 64, 125}).value();
    print("2.5^3", orvel::csval(2.5, cubes.brkpt, cubes.spcoef).value());
    print("the piece from 2 to 3", cubes.spcoef(0, 2), cubes.spcoef(1, 2), cubes.spcoef(2, 2),
          cubes.spcoef(3, 2));
    // end

    const vector<double> wave = {0, 0.841471, 0.909297, 0.141120, -0.756802, -0.958924};
    title("CSDEC");
    // example CSDEC
    // A sine with its slopes at the ends, 1 and cos 5.
    const auto clamped = orvel::csdec(x, wave, 1, 1, 1, std::cos(5)).value();
    const auto natural = orvel::csdec(x, wave, 2, 0, 2, 0).value();
    print("sine at 0.5", orvel::csval(0.5, clamped.brkpt, clamped.spcoef).value(), "natural",
          orvel::csval(0.5, natural.brkpt, natural.spcoef).value());
    // end

    title("CSAKM");
    // example CSAKM
    const vector<double> jump = {0, 0, 0, 1, 1, 1};  // no overshoot beside the jump
    const auto akima = orvel::csakm(x, jump).value();
    const auto smooth = orvel::csint(x, jump).value();
    print("at 1.5", orvel::csval(1.5, akima.brkpt, akima.spcoef).value(), "not-a-knot",
          orvel::csval(1.5, smooth.brkpt, smooth.spcoef).value());
    // end

    title("CSPER");
    // example CSPER
    vector<double> angles, sines;
    for (int k = 0; k <= 12; ++k) {
        angles.push_back(k * pi / 6);
        sines.push_back(std::sin(k % 12 * pi / 6));
    }
    const auto period = orvel::csper(angles, sines).value();
    print("slope at 0 and at 2 pi", orvel::csder(1, 0, period.brkpt, period.spcoef).value(),
          orvel::csder(1, 2 * pi, period.brkpt, period.spcoef).value());
    // end

    title("C1SOR");
    // example C1SOR
    const auto sorted = orvel::c1sor(vector<double>{3, 1, 2}, vector<double>{30, 10, 20}).value();
    print("abscissas", sorted.brkpt, "ordinates", sorted.spcoef);
    print("two of them equal, code", orvel::csint(vector<double>{1, 2, 1}, vector<double>{1, 2, 3}).code());
    // end
}

void evaluators()
{
    const auto squares = orvel::csint(x, vector<double>{0, 1, 4, 9, 16, 25}).value();
    title("CSVAL, CSDER, CSITG");
    // example CSVAL, CSDER, CSITG
    print("value", orvel::csval(1.5, squares.brkpt, squares.spcoef).value());
    print("derivatives", orvel::csder(1, 1.5, squares.brkpt, squares.spcoef).value(),
          orvel::csder(2, 1.5, squares.brkpt, squares.spcoef).value());
    print("integral from 0 to 3", orvel::csitg(0, 3, squares.brkpt, squares.spcoef).value());
    // end

    title("CSVALS, CSDERS");
    // example CSVALS, CSDERS
    const vector<double> at = {0.5, 2.5, 4.5};
    print("values", orvel::csvals(at, squares.brkpt, squares.spcoef).value());
    print("slopes", orvel::csders(1, at, squares.brkpt, squares.spcoef).value());
    // end

    title("PPVAL, PPDER, PPITG, P3DER");
    // example PPVAL, PPDER, PPITG, P3DER
    // Two straight lines: 2 + 3 (x - 0), then 5 - (x - 1); orders are numbers of coefficients.
    const vector<double> breaks = {0, 1, 2};
    const orvel::matrix<double> lines(2, 2, {2, 3, 5, -1});
    print("value", orvel::ppval(1.5, breaks, lines).value(), "slope",
          orvel::ppder(1, 0.5, breaks, lines).value());
    print("integral", orvel::ppitg(0, 2, breaks, lines).value());
    print("1.5 is in piece", orvel::p3der(2, breaks, 1.5).value());
    // end
}

}  // namespace

int main()
{
    constructors();
    evaluators();
}
