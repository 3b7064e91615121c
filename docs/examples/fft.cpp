// docs/examples/fft.cpp - examples of Fourier transforms
#include "print.h"

using manual::print;
using manual::title;
using std::vector;
using Z = std::complex<double>;

int main()
{
    title("FFTRF, FFTRB");
    // example FFTRF, FFTRB
    const vector<double> pulse = {1, 2, 0, 0, 0, 0};
    const vector<double> coef = orvel::fftrf(pulse).value();  // c0, then real and imaginary parts, then c3
    print("coefficients", coef);
    vector<double> back = orvel::fftrb(coef).value();
    orvel::scal(1.0 / 6, back).value();
    print("and back", back);
    // end

    title("FFTCF, FFTCB");
    // example FFTCF, FFTCB
    const vector<Z> turning = {1, {0, 1}, -1, {0, -1}};  // exp(2 pi i j / 4): one line in the spectrum
    print("coefficients", orvel::fftcf(turning).value());
    print("the line back", orvel::fftcb(vector<Z>{0, 1, 0, 0}).value());
    // end

    title("FFTRI, F2TRF, F2TRB");
    // example FFTRI, F2TRF, F2TRB
    vector<double> work = orvel::dfftri(4).value();  // once for all sequences of this length
    for (const vector<double>& sequence : {vector<double>{1, 1, 1, 1}, vector<double>{1, -1, 1, -1}}) {
        const vector<double> c = orvel::f2trf(sequence, work).value();
        print("coefficients", c, "and back", orvel::f2trb(c, work).value());
    }
    // end

    title("FFTCI, F2TCF, F2TCB");
    // example FFTCI, F2TCF, F2TCB
    // A circular convolution of length 3: transform both, multiply, transform back, divide.
    vector<double> cwork = orvel::dfftci(3).value();
    vector<Z> a = orvel::f2tcf(vector<Z>{1, 2, 3}, cwork).value();
    const vector<Z> b = orvel::f2tcf(vector<Z>{0, 1, 0}, cwork).value();
    for (std::size_t k = 0; k < 3; ++k) a[k] *= b[k] / 3.0;
    print("shifted by one", orvel::f2tcb(a, cwork).value());
    // end

    title("F3TRF");
    // example F3TRF
    // In place, with the sections of the work vector as arrays: roots from N+1, factors from 2N+1.
    const vector<double> sections = orvel::dfftri(6).value();
    const double* roots = sections.data() + 6;
    vector<double> c = {1, 2, 0, 0, 0, 0};
    orvel::f3trf(c, orvel::vector_view(roots, 6), orvel::vector_view(roots + 6, 15)).value();
    print("coefficients", c);
    // end
}
