// docs/examples/kernels.cpp - examples of vector kernels
#include "print.h"

using manual::print;
using manual::title;
using std::vector;

namespace {

void updates()
{
    title("SAXPY, SVCAL, SSCAL");
    // example SAXPY, SVCAL, SSCAL
    const vector<double> x = {1, 2, 3};
    vector<double> y = {10, 20, 30};
    orvel::axpy(2, x, y).value();
    print("2 x + y", y);
    orvel::scal(0.5, y).value();
    print("half of it", y);
    orvel::vcal(-1, x, y).value();
    print("-x", y);
    // end

    title("SCOPY, SSWAP, SSET");
    // example SCOPY, SSWAP, SSET
    vector<double> p = {1, 2, 3, 4}, q(4);
    orvel::copy(orvel::vector_view(p).reversed(), q).value();
    print("backwards", q);
    orvel::set(7, orvel::vector_view(p).every(2)).value();
    print("every second one set", p);
    orvel::swap(p, q).value();
    print("exchanged", p, "and", q);
    // end

    title("SADD, SSUB, SHPROD");
    // example SADD, SSUB, SHPROD
    vector<double> v = {1, 2, 3}, w(3);
    orvel::add(10, v).value();
    orvel::hprod(v, v, w).value();
    print("squares of 10 + v", w);
    orvel::sub(100, w).value();
    print("100 less these", w);
    // end
}

void sums()
{
    const vector<double> x = {3, -4, 12};
    title("SDOT, SNRM2, SASUM, SSUM");
    // example SDOT, SNRM2, SASUM, SSUM
    const vector<double> y = {1, 1, 1};
    print("scalar product", orvel::dot(x, y).value(), "length", orvel::nrm2(x).value());
    print("sum", orvel::sum(x).value(), "of magnitudes", orvel::asum(x).value());
    const vector<std::complex<double>> z = {{1, 2}, {3, -1}};
    print("with conjugates", orvel::dotc(z, z).value(), "without", orvel::dotu(z, z).value());
    // end

    title("SXYZ");
    // example SXYZ
    print("sum of triple products", orvel::xyz(x, x, x).value());
    // end

    title("ISAMAX, ISAMIN");
    // example ISAMAX, ISAMIN
    print("largest and smallest magnitude at", orvel::iamax(x).value(), orvel::iamin(x).value());
    print("largest and smallest value at", orvel::imax(x).value(), orvel::imin(x).value());
    // end

    title("DSDOT, CZDOTU");
    // example DSDOT, CZDOTU
    const vector<float> large = {1e8f, 1, -1e8f}, ones = {1, 1, 1};
    print("in single and in double precision", orvel::dot(large, ones).value(),
          orvel::dsdot(large, ones).value());
    const vector<std::complex<float>> z1 = {{1e8f, 0}, {1, 1}, {-1e8f, 0}}, z2(3, 1.0f);
    print("complex", orvel::czdotu(0, z1, z2).value());
    // end
}

void double_length()
{
    title("DQINI, DQADD, DQSTO");
    // example DQINI, DQADD, DQSTO
    vector<double> acc(2);  // head and tail of a sum of twice the length
    orvel::dqini(1e20, acc).value();
    orvel::dqadd(3.5, acc).value();
    orvel::dqmul(-1e10, 1e10, acc).value();
    print("1e20 + 3.5 - 1e10 1e10", orvel::dqsto(acc).value());
    // end

    title("ZQINI, ZQADD, ZQSTO");
    // example ZQINI, ZQADD, ZQSTO
    vector<std::complex<double>> zacc(2);
    orvel::zqini({1e20, 1}, zacc).value();
    orvel::zqadd({-1e20, 1}, zacc).value();
    orvel::zqmul({0, 1}, {2, 0}, zacc).value();
    print("sum", orvel::zqsto(zacc).value());
    // end
}

void rotations()
{
    title("SROTG, SROT");
    // example SROTG, SROT
    const auto [a, b, c, s] = orvel::rotg(3.0, 4.0).value();  // turns (3, 4) to (5, 0)
    vector<double> x = {3, 1}, y = {4, 0};
    orvel::rot(x, y, c, s).value();
    print("length", a, "cosine", c, "sine", s);
    print("x", x, "y", y);
    // end

    title("SROTMG, SROTM");
    // example SROTMG, SROTM
    vector<double> param(5), u = {2}, v = {1};
    const auto scales = orvel::rotmg(1.0, 1.0, 2.0, 1.0, param).value();
    orvel::rotm(u, v, param).value();
    print("flag", param[0], "x1", scales.x1, "v is now", v[0]);
    // end
}

}  // namespace

int main()
{
    updates();
    sums();
    double_length();
    rotations();
}
