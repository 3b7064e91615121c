// docs/examples/linsys.cpp - examples of linear systems
#include "print.h"

using manual::print;
using manual::title;
using orvel::matrix;
using std::vector;

namespace {

// By columns: rows 2 1 1, 4 -6 0, -2 7 2.
const matrix<double> a(3, 3, {2, 4, -2, 1, -6, 7, 1, 0, 2});
const vector<double> b = {5, -2, 9};

void solving()
{
    title("LSARG");
    // example LSARG
    print("x", orvel::lsarg(a, b).value());
    print("with the transposed matrix", orvel::lsarg(a, b, 2).value());
    // end

    title("LSLRG");
    // example LSLRG
    const matrix<std::complex<double>> z(2, 2, {{1, 1}, {0, 0}, {2, 0}, {0, 1}});
    const vector<std::complex<double>> right = {{3, 1}, {0, 1}};
    print("x", orvel::lslrg(z, right).value());
    const auto nearly = orvel::lslrg(matrix<double>(2, 2, {1, 1, 1, 1 + 2.3e-16}), vector<double>{1, 2});
    print("code of the warning", nearly.code());
    // end
}

void factoring()
{
    title("LFCRG, LFSRG, LFIRG, LFDRG");
    // example LFCRG, LFSRG, LFIRG, LFDRG
    const auto [fact, ipvt, rcond] = orvel::lfcrg(a).value();
    std::printf("reciprocal of the condition: %.2f\n", rcond);
    for (const vector<double>& right : {b, vector<double>{4, -2, 7}})
        print("x", orvel::lfsrg(fact, ipvt, right).value());
    print("refined", orvel::lfirg(a, fact, ipvt, b).value().x);
    const auto [det1, det2] = orvel::lfdrg(fact, ipvt).value();
    print("determinant", det1 * std::pow(10, det2));
    // end

    title("LFTRG");
    // example LFTRG
    const auto factored = orvel::lftrg(a).value();
    print("U, and multipliers below it", factored.fact);
    print("interchanges", factored.ipvt);
    // end

    title("LINRG");
    // example LINRG
    print("inverse", orvel::linrg(a).value());
    print("of a singular matrix, code", orvel::linrg(matrix<double>(2, 2, {1, 2, 2, 4})).code());
    // end

    title("LINRT");
    // example LINRT
    const matrix<double> lower(2, 2, {2, 3, 0, 4});
    print("inverse of a lower triangle", orvel::linrt(lower, 1).value());
    // end
}

void triangles()
{
    // By columns: rows 2 0 0, 3 4 0, 1 -1 5; what is above the diagonal is not read.
    const matrix<double> lower(3, 3, {2, 3, 1, 0, 4, -1, 0, 0, 5});

    title("LSLRT");
    // example LSLRT
    print("x", orvel::lslrt(lower, vector<double>{2, 7, 5}, 1).value());
    print("with the transposed matrix", orvel::lslrt(lower, vector<double>{6, 3, 5}, 3).value());
    // end

    title("LFCRT, LFDRT");
    // example LFCRT, LFDRT
    std::printf("reciprocal of the condition: %.2f\n", orvel::lfcrt(lower, 1).value());
    const auto [det1, det2] = orvel::lfdrt(lower).value();
    print("determinant", det1 * std::pow(10, det2));
    // end
}

void definite()
{
    // By columns: rows 4 2 -2, 2 5 3, -2 3 9; what is below the diagonal is not read.
    const matrix<double> covariance(3, 3, {4, 0, 0, 2, 5, 0, -2, 3, 9});
    const vector<double> right = {2, 11, 13};

    title("LSADS");
    // example LSADS
    print("x", orvel::lsads(covariance, right).value());
    const auto indefinite = orvel::lsads(matrix<double>(2, 2, {1, 2, 2, 1}), vector<double>{1, 1});
    print("code of the error", indefinite.code());
    // end

    title("LSLDS");
    // example LSLDS
    const matrix<std::complex<double>> hermitian(2, 2, {{2, 0}, {0, 0}, {0, 1}, {3, 0}});
    print("x", orvel::lslds(hermitian, vector<std::complex<double>>{{2, 1}, {3, -1}}).value());
    // end

    title("LFCDS, LFSDS, LFIDS, LFDDS");
    // example LFCDS, LFSDS, LFIDS, LFDDS
    const auto [fact, rcond] = orvel::lfcds(covariance).value();
    std::printf("reciprocal of the condition: %.2f\n", rcond);
    for (const vector<double>& b : {right, vector<double>{4, 10, 10}})
        print("x", orvel::lfsds(fact, b).value());
    print("refined", orvel::lfids(covariance, fact, right).value().x);
    const auto [det1, det2] = orvel::lfdds(fact).value();
    print("determinant", det1 * std::pow(10, det2));
    // end

    title("LFTDS");
    // example LFTDS
    print("R", orvel::lftds(covariance).value());
    // end

    title("LINDS");
    // example LINDS
    // The weights of least variance are the row sums of the inverse, divided by their sum.
    const auto inverse = orvel::linds(covariance).value();
    vector<double> weights(3);
    double sum = 0;
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t j = 0; j < 3; ++j) weights[i] += inverse(i, j), sum += inverse(i, j);
    for (double& weight : weights) weight /= sum;
    print("inverse", inverse);
    print("weights", weights);
    // end
}

void bands()
{
    title("LSARB, LSLRB");
    // example LSARB, LSLRB
    // A string of five springs: 2 on the diagonal, -1 on either side; each diagonal is a row of the band.
    const matrix<double> string(3, 5, {0, 2, -1, -1, 2, -1, -1, 2, -1, -1, 2, -1, -1, 2, 0});
    const vector<double> pull = {0, 0, 6, 0, 0};
    print("refined", orvel::lsarb(string, 1, 1, pull).value());
    print("plain", orvel::lslrb(string, 1, 1, pull).value());
    // end

    title("LFCRB, LFSRB, LFIRB, LFDRB");
    // example LFCRB, LFSRB, LFIRB, LFDRB
    const auto [fact, ipvt, rcond] = orvel::lfcrb(string, 1, 1).value();
    std::printf("reciprocal of the condition: %.2f\n", rcond);
    print("x", orvel::lfsrb(fact, 1, 1, ipvt, pull).value());
    print("refined", orvel::lfirb(string, 1, 1, fact, ipvt, pull).value().x);
    const auto [det1, det2] = orvel::lfdrb(fact, 1, 1, ipvt).value();
    print("determinant", det1 * std::pow(10, det2));
    // end

    title("LSAQS, LSLQS");
    // example LSAQS, LSLQS
    // The same string, positive definite: the diagonal and the one above it.
    const matrix<double> upper(2, 5, {0, 2, -1, 2, -1, 2, -1, 2, -1, 2});
    print("refined", orvel::lsaqs(upper, 1, pull).value());
    print("plain", orvel::lslqs(upper, 1, pull).value());
    // end

    title("LFCQS, LFTQS, LFSQS, LFIQS, LFDQS");
    // example LFCQS, LFTQS, LFSQS, LFIQS, LFDQS
    const auto [factor, condition] = orvel::lfcqs(upper, 1).value();
    std::printf("reciprocal of the condition: %.2f\n", condition);
    print("R", orvel::lftqs(upper, 1).value());
    print("x", orvel::lfsqs(factor, 1, pull).value());
    print("refined", orvel::lfiqs(upper, 1, factor, pull).value().x);
    print("determinant", orvel::lfdqs(factor, 1).value().det1);
    // end

    title("LFTRB");
    // example LFTRB
    print("the row above the main diagonal, it, and multipliers", orvel::lftrb(string, 1, 1).value().fact);
    // end
}

void helpers()
{
    title("CRGRG, NR1RR, L4TRG");
    // example CRGRG, NR1RR, L4TRG
    const matrix<double> copy = orvel::crgrg(a).value();
    print("largest column sum", orvel::nr1rr(copy).value());
    print("pivot", orvel::l4trg(vector<double>{3, -4, 5}, vector<double>{1, 1, 0.5}).value());
    // end

    title("IUMAG");
    // example IUMAG
    vector<int32_t> estimates = {1};  // option 17: no estimates of the condition from now on
    orvel::iumag("MATH", 2, 17, estimates).value();
    print("rcond", orvel::lfcrg(a).value().rcond);
    estimates = {2};
    orvel::iumag("MATH", 2, 17, estimates).value();
    // end
}

}  // namespace

int main()
{
    solving();
    factoring();
    triangles();
    definite();
    bands();
    helpers();
}
