// docs/examples/matrices.cpp - examples of matrix kernels
#include "print.h"

using manual::print;
using manual::title;
using orvel::matrix;
using std::vector;
using Z = std::complex<double>;

namespace {

const matrix<double> a(2, 3, {1, 2, 3, 4, 5, 6});  // rows 1 3 5 and 2 4 6
const matrix<double> upper(2, 2, {2, 0, 1, 4});    // rows 2 1 and 0 4
const matrix<Z> h(2, 2, {2, {0, 0}, {1, 1}, 3});   // the upper triangle of a Hermitian matrix

void general()
{
    title("SGEMV");
    // example SGEMV
    const vector<double> x = {1, 1, 1};
    vector<double> y = {100, 100}, z(3);
    orvel::gemv('N', 1, a, x, 1, y).value();
    print("A x + y", y);
    orvel::gemv('T', 1, a, vector<double>{1, 10}, 0, z).value();
    print("A^T (1, 10)", z);
    // end

    title("SGBMV");
    // example SGBMV
    // A band with one diagonal above and none below: rows 1 5 0, 0 2 6, 0 0 3.
    const matrix<double> band(2, 3, {0, 1, 5, 2, 6, 3});
    vector<double> product(3);
    orvel::gbmv('N', 3, 0, 1, 1, band, vector<double>{1, 1, 1}, 0, product).value();
    print("band times ones", product);
    // end

    title("SGER, CGERU, CGERC");
    // example SGER, CGERU, CGERC
    matrix<double> outer(2, 2);
    orvel::ger(1, vector<double>{1, 2}, vector<double>{3, 4}, outer).value();
    print("x y^T", outer);
    matrix<Z> u(1, 1), c(1, 1);
    orvel::geru(1, vector<Z>{{0, 1}}, vector<Z>{{0, 1}}, u).value();
    orvel::gerc(1, vector<Z>{{0, 1}}, vector<Z>{{0, 1}}, c).value();
    print("i i and i conj(i)", u(0, 0), c(0, 0));
    // end

    title("SGEMM");
    // example SGEMM
    matrix<double> square(2, 2);
    orvel::gemm('N', 'T', 1, a, a, 0, square).value();
    print("A A^T", square);
    // end
}

void symmetric()
{
    title("SSYMV, CHEMV");
    // example SSYMV, CHEMV
    vector<double> y(2);
    orvel::symv('U', 1, upper, vector<double>{1, 1}, 0, y).value();
    print("symmetric, the upper triangle read", y);
    vector<Z> z(2);
    orvel::hemv('U', 1, h, vector<Z>{1, 1}, 0, z).value();
    print("Hermitian", z);
    // end

    title("SSBMV, CHBMV");
    // example SSBMV, CHBMV
    const matrix<double> band(2, 3, {0, 2, 1, 2, 1, 2});  // diagonal 2, one diagonal of 1 above it
    vector<double> w(3);
    orvel::sbmv('U', 1, 1, band, vector<double>{1, 1, 1}, 0, w).value();
    print("band", w);
    vector<Z> v(2);
    orvel::hbmv('U', 1, 1, matrix<Z>(2, 2, {0, 2, {0, 1}, 2}), vector<Z>{1, 1}, 0, v).value();
    print("Hermitian band", v);
    // end

    title("SSYR, SSYR2, CHER, CHER2");
    // example SSYR, SSYR2, CHER, CHER2
    matrix<double> s(2, 2);
    orvel::syr('U', 1, vector<double>{1, 2}, s).value();
    orvel::syr2('U', 1, vector<double>{1, 0}, vector<double>{0, 1}, s).value();
    print("the upper triangle", s);
    matrix<Z> t(2, 2);
    orvel::her('U', 1, vector<Z>{{1, 1}, 1}, t).value();
    orvel::her2('U', 1, vector<Z>{1, 0}, vector<Z>{0, {0, 1}}, t).value();
    print("Hermitian", t);
    // end

    title("SSYMM, CHEMM");
    // example SSYMM, CHEMM
    matrix<double> m(2, 3);
    orvel::symm('L', 'U', 1, upper, a, 0, m).value();
    print("symmetric times A", m);
    matrix<Z> n(2, 1);
    orvel::hemm('L', 'U', 1, h, matrix<Z>(2, 1, {1, 1}), 0, n).value();
    print("Hermitian times a column", n);
    // end

    title("SSYRK, SSYR2K");
    // example SSYRK, SSYR2K
    matrix<double> k(2, 2);
    orvel::syrk('U', 'N', 1, a, 0, k).value();
    print("A A^T, the upper triangle", k);
    orvel::syr2k('U', 'N', 1, a, a, -1, k).value();
    print("A A^T + A A^T less that", k);
    // end

    title("CSYRK, CSYR2K, CHERK, CHER2K");
    // example CSYRK, CSYR2K, CHERK, CHER2K
    const matrix<Z> column(1, 1, {{1, 2}});
    matrix<Z> c(1, 1);
    orvel::syrk('U', 'N', 1, column, 0, c).value();
    print("z z", c(0, 0));
    orvel::syr2k('U', 'N', 1, column, column, 0, c).value();
    print("2 z z", c(0, 0));
    orvel::herk('U', 'N', 1, column, 0, c).value();
    print("z conj(z)", c(0, 0));
    orvel::her2k('U', 'N', {0, 1}, column, matrix<Z>(1, 1, {1}), 0, c).value();
    print("i z + conj(i z)", c(0, 0));
    // end
}

void triangular()
{
    title("STRMV, STRSV");
    // example STRMV, STRSV
    vector<double> x = {1, 2};
    orvel::trmv('U', 'N', 'N', upper, x).value();
    print("U x", x);
    orvel::trsv('U', 'N', 'N', upper, x).value();
    print("and back", x);
    // end

    title("STBMV, STBSV");
    // example STBMV, STBSV
    const matrix<double> band(2, 3, {0, 1, 1, 1, 1, 1});  // ones on the diagonal and above it
    vector<double> y = {1, 1, 1};
    orvel::tbmv('U', 'N', 'N', 1, band, y).value();
    print("band times ones", y);
    orvel::tbsv('U', 'N', 'N', 1, band, y).value();
    print("and back", y);
    // end

    title("STRMM, STRSM");
    // example STRMM, STRSM
    matrix<double> b = a;
    orvel::trmm('L', 'U', 'N', 'N', 1, upper, b).value();
    print("U A", b);
    orvel::trsm('L', 'U', 'N', 'N', 1, upper, b).value();
    print("and back", b);
    // end

    title("L1AME");
    // example L1AME
    print("the same letter", orvel::l1ame('n', 'N').value(), "another", orvel::l1ame('n', 'T').value());
    // end
}

}  // namespace

int main()
{
    general();
    symmetric();
    triangular();
}
