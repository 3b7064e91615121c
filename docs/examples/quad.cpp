// docs/examples/quad.cpp - examples of integrals, zeros and minima
#include "print.h"

using manual::print;
using manual::title;
using std::vector;

namespace {

void integrals()
{
    title("QDAGS");
    // example QDAGS
    const auto [result, esterr] = orvel::qdags([](double x) { return std::log(x); }, 0, 1, 0, 1e-10).value();
    print("integral of ln x", result, "error", std::abs(result + 1) < 1e-10 ? "below 1e-10" : "too large");
    const auto diverging = orvel::qdags([](double x) { return 1 / x; }, 0, 1);
    print("integral of 1 / x, code", diverging.code());
    // end

    title("QDAG");
    // example QDAG
    const double omega = 60;
    const auto wave = [&](double x) { return std::cos(omega * x); };
    print("61 points", orvel::qdag(wave, 0, 1, 0, 1e-8, 6).value().result, "exact", std::sin(omega) / omega);
    // end

    title("Q2AGS, Q2AG");
    // example Q2AGS, Q2AG
    const auto peak = [](double x) { return 1 / (1e-4 + (x - 0.3) * (x - 0.3)); };
    const auto pieces = orvel::q2ags(peak, 0, 1, 0, 1e-8, 100).value();
    print("pieces", pieces.nsub, "calls", pieces.neval);
    const auto worst = static_cast<std::size_t>(pieces.subord[0]) - 1;
    print("the largest error is between", pieces.sublo[worst], pieces.subhi[worst]);
    print("with 61 points: pieces", orvel::q2ag(peak, 0, 1, 0, 1e-8, 6, 100).value().nsub);
    // end

    title("Q3AGS, Q3AG");
    // example Q3AGS, Q3AG
    print("code as a value", orvel::q3ags([](double x) { return 1 / x; }, 0, 1, 0, 1e-8, 500).value().ier,
          orvel::q3ag([](double x) { return x; }, 0, 1, 0, 1e-8, 1, 500).value().ier);
    // end

    title("Q4AG, Q5AG, Q6AG, Q7AG, Q8AG, Q9AG");
    // example Q4AG, Q5AG, Q6AG, Q7AG, Q8AG, Q9AG
    const auto f = [](double x) { return std::exp(-x * x); };
    print("15 points", orvel::q4ag(f, 0, 1).value().result, "61 points", orvel::q8ag(f, 0, 1).value().result);
    // end

    title("Q10G");
    // example Q10G
    // Three pieces in decreasing order of error; piece 1 is halved, its halves become 1 and 4.
    vector<int32_t> order = {1, 2, 3, 0, 0, 0, 0, 0};
    const auto next = orvel::q10g(1, vector<double>{0.2, 0.5, 0.1, 0.15}, order, 1).value();
    print("next is piece", next.maxerr, "with error", next.ermax);
    // end

    title("Q4AWO");
    // example Q4AWO
    // The sums 1 - 1/3 + 1/5 ... of pi/4, and what they tend to.
    vector<double> table(52), last(3);
    int32_t n = 0, calls = 0;
    double sum = 0, limit = 0;
    for (int k = 0; k < 11; ++k) {
        sum += (k % 2 == 0 ? 1.0 : -1.0) / (2 * k + 1);
        table[static_cast<std::size_t>(n)] = sum;
        const auto step = orvel::q4awo(n + 1, table, last, calls).value();
        n = step.n;
        calls = step.nres;
        limit = step.result;
    }
    print("4 times the sum", 4 * sum, "4 times the limit", 4 * limit);
    // end

    title("Q4NG");
    // example Q4NG
    print("largest relative spacing is 2^", std::log2(orvel::dq4ng().value().epmach));
    // end
}

void zeros_and_minima()
{
    title("ZREAL");
    // example ZREAL
    const auto polynomial = [](double x) { return (x - 1) * (x - 2) * (x + 3); };
    const auto zeros =
        orvel::zreal(polynomial, 1e-10, 1e-10, 1e-5, 1e-2, 100, vector<double>(3, 0.5)).value();
    print("zeros, all from the guess 0.5", zeros.x);
    // end

    title("UVMIF");
    // example UVMIF
    const auto curve = [](double x) { return std::exp(x) - 5 * x; };
    const auto lowest = orvel::uvmif(curve, 0, 0.05, 100, 1e-6, 50).value();
    std::printf("minimum at %.5f, ln 5 = %.5f\n", lowest, std::log(5));
    // end
}

}  // namespace

int main()
{
    integrals();
    zeros_and_minima();
}
