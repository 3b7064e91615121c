// docs/examples/random.cpp - examples of random numbers
#include "print.h"

using manual::print;
using manual::title;
using std::vector;

namespace {

void numbers()
{
    title("RNOPT, RNSET, RNUN, RNUNF");
    // example RNOPT, RNSET, RNUN, RNUNF
    orvel::rnopt(1).value();
    orvel::rnset(123457).value();
    const vector<double> r = orvel::drnun(3).value();
    print("the first three", r, "the fourth", orvel::drnunf().value());
    // end

    title("RNOPG, RNGET");
    // example RNOPG, RNGET
    orvel::rnset(1).value();
    print("generator", orvel::rnopg().value(), "seed", orvel::rnget().value());
    orvel::drnunf().value();
    print("after a number", orvel::rnget().value());
    // end

    title("RNISD");
    // example RNISD
    const int32_t later = orvel::rnisd(123457).value();  // 100,000 numbers ahead
    orvel::rnset(123457).value();
    orvel::drnun(100000).value();
    const double next = orvel::drnunf().value();
    orvel::rnset(later).value();
    print("the same number", orvel::drnunf().value() == next);
    // end
}

void states()
{
    title("RNGES, RNSES");
    // example RNGES, RNSES
    orvel::rnopt(2).value();
    orvel::rnset(77).value();
    orvel::drnun(10).value();
    const vector<double> table = orvel::drnges().value();
    const int32_t seed = orvel::rnget().value();
    const double next = orvel::drnunf().value();
    orvel::rnset(seed).value();  // seed and table together are the state
    orvel::rnses(table).value();
    print("the same number", orvel::drnunf().value() == next);
    // end

    title("RNGEF, RNSEF");
    // example RNGEF, RNSEF
    orvel::rnopt(7).value();
    orvel::drnun(10).value();
    const vector<int32_t> words = orvel::rngef().value();
    const double coming = orvel::drnunf().value();
    orvel::rnsef(words).value();
    print("the same number", orvel::drnunf().value() == coming);
    // end

    title("RNGE32, RNSE32, RNGE64, RNSE64");
    // example RNGE32, RNSE32, RNGE64, RNSE64
    for (const int32_t option : {8, 9}) {
        orvel::rnopt(option).value();
        orvel::drnun(10).value();
        const auto saved = std::make_pair(orvel::rnge32().value(), orvel::rnge64().value());
        const double number = orvel::drnunf().value();
        orvel::rnse32(saved.first).value();
        orvel::rnse64(saved.second).value();
        print("the same number", orvel::drnunf().value() == number);
    }
    // end

    title("RNIN32, RNIN64");
    // example RNIN32, RNIN64
    // Twisters of four ranks: a key each.
    orvel::rnopt(8).value();
    for (const int32_t rank : {0, 1, 2, 3}) {
        orvel::rnin32(vector<int32_t>{2026, rank}).value();
        print("rank", rank, "begins with", orvel::rnunf().value());
    }
    // end
}

void workers()
{
    title("R1T32, R1T64");
    // example R1T32, R1T64
    orvel::r1in32(5489).value();
    print("MT19937 of seed 5489", orvel::dr1t32(2).value());
    // end

    title("R1INT, R1INS, R1INF, R1IN32, R1CLK");
    // example R1INT, R1INS, R1INF, R1IN32, R1CLK
    orvel::r1int(1).value();  // option 1
    orvel::rnset(9).value();
    orvel::r1ins().value();  // the shuffle table of single members from it
    orvel::r1inf().value();  // and the shift register
    print("table filled", R2NCOM.single_ready != 0, "register filled", orvel::rngef().value()[0] != 0);
    const int32_t from_clock = orvel::r1clk().value();
    print("seed from the clock in range", from_clock >= 1 && from_clock <= 240000);
    // end
}

}  // namespace

int main()
{
    numbers();
    states();
    workers();
}
