// examples/network/network.cpp - a network of friends as a matrix: triangles, central members, two groups
//
//     network_cpp club.mtx [plot.dat]
//
// The adjacency matrix A comes from a Matrix Market file. The triangles of friends are counted by a matrix
// product, the members ranked by the dominant eigenvector of A (P. Bonacich, Power and centrality, 1987), and
// the club is cut in two by that of the modularity matrix A - d d^T / sum(d), d the numbers of friends
// (M. E. J. Newman, Modularity and community structure in networks, 2006).
#include <orvel/orvel.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "../check.h"

namespace {

const int32_t one_step = 1;
const double zero = 0.0, one = 1.0;

struct Matrix {
    int32_t n;
    std::vector<double> a;  // n by n, by columns, both triangles

    double& operator()(int32_t i, int32_t j)
    {
        return a[static_cast<std::size_t>(i) + static_cast<std::size_t>(j) * static_cast<std::size_t>(n)];
    }
};

// A symmetric pattern in coordinates.
Matrix read(const char* file)
{
    std::ifstream in(file);
    std::string line;
    while (std::getline(in, line) && !line.empty() && line[0] == '%') continue;
    int32_t n = 0, columns = 0, entries = 0;
    std::istringstream(line) >> n >> columns >> entries;
    if (n < 1 || n != columns || n > 10000) std::exit((std::fprintf(stderr, "cannot use %s\n", file), 1));
    const std::size_t order = static_cast<std::size_t>(n);
    Matrix m{n, std::vector<double>(order * order)};
    for (int32_t i = 0, j = 0; in >> i >> j;)
        if (i >= 1 && i <= n && j >= 1 && j <= n) m(i - 1, j - 1) = m(j - 1, i - 1) = 1;
    return m;
}

// Sum of A(i,j) * (A * A)(i,j): every triangle is a closed walk of three steps, in six ways.
double triangles(const Matrix& m)
{
    std::vector<double> square(m.a.size());
    DSYMM("L", "L", &m.n, &m.n, &one, m.a.data(), &m.n, m.a.data(), &m.n, &zero, square.data(), &m.n);
    const auto count = static_cast<int32_t>(m.a.size());
    return DDOT(&count, m.a.data(), &one_step, square.data(), &one_step) / 6;
}

// The same, one by one.
double triangles_by_counting(Matrix& m)
{
    int count = 0;
    for (int32_t i = 0; i < m.n; ++i)
        for (int32_t j = 0; j < i; ++j)
            for (int32_t k = 0; k < j; ++k) count += m(i, j) != 0 && m(j, k) != 0 && m(k, i) != 0;
    return count;
}

// The network as an image, members in the order of the eigenvector x: first the place and the number of each
// member, then two places for each friendship and 0, 1 or 2: between the groups, in the one, in the other.
void write(std::FILE* plot, Matrix& a, const std::vector<double>& x)
{
    const std::size_t n = x.size();
    std::vector<std::size_t> place(n);
    for (std::size_t i = 0; i < n; ++i) {
        for (std::size_t k = 0; k < n; ++k) place[i] += x[k] < x[i] || (x[k] == x[i] && k < i);
        std::fprintf(plot, "%zu %zu\n", place[i] + 1, i + 1);
    }
    std::fprintf(plot, "\n\n");
    for (std::size_t j = 0; j < n; ++j)
        for (std::size_t i = 0; i < n; ++i)
            if (a(static_cast<int32_t>(i), static_cast<int32_t>(j)) != 0)
                std::fprintf(plot, "%zu %zu %d\n", place[i] + 1, place[j] + 1,
                             x[i] * x[j] < 0 ? 0 : (x[i] * x[0] > 0 ? 1 : 2));
}

// When the club had split, these were with the instructor.
int strangers(const std::vector<double>& x)
{
    const std::vector<std::size_t> with_instructor{1, 2, 3, 4, 5, 6, 7, 8, 9, 11, 12, 13, 14, 17, 18, 20, 22};
    int count = 0;
    for (std::size_t i = 0; i < x.size(); ++i) {
        const bool joined = std::binary_search(with_instructor.begin(), with_instructor.end(), i + 1);
        count += joined != (x[i] * x[0] > 0);
    }
    return count;
}

// Largest eigenvalue by the power method on M + shift * I; x becomes its eigenvector of length 1.
double largest_eigenvalue(const Matrix& m, double shift, std::vector<double>& x)
{
    std::vector<double> y(x.size());
    x.assign(x.size(), 1.0);
    x[0] = 2.0;
    double value = 0.0;
    for (int step = 0; step < 3000; ++step) {
        const double length = 1 / DNRM2(&m.n, x.data(), &one_step);
        DSCAL(&m.n, &length, x.data(), &one_step);
        DCOPY(&m.n, x.data(), &one_step, y.data(), &one_step);
        DSYMV("L", &m.n, &one, m.a.data(), &m.n, x.data(), &one_step, &shift, y.data(), &one_step);
        value = DDOT(&m.n, x.data(), &one_step, y.data(), &one_step) - shift;
        if (step < 2999) x.swap(y);
    }
    return value;
}

}  // namespace

int main(int count, char** arguments)
{
    if (count < 2) return std::fprintf(stderr, "usage: network_cpp club.mtx [plot.dat]\n"), 2;
    Matrix a = read(arguments[1]);
    const auto n = static_cast<std::size_t>(a.n);
    std::vector<double> friends(n), x(n), ones(n, 1.0);
    DGEMV("N", &a.n, &a.n, &one, a.a.data(), &a.n, ones.data(), &one_step, &zero, friends.data(), &one_step);
    const double ends = DSUM(&a.n, friends.data(), &one_step);
    std::printf(" %d members, %.0f friendships, %.0f triangles of friends\n", a.n, ends / 2, triangles(a));

    std::printf(" dominant eigenvalue of the network: %.4f\n", largest_eigenvalue(a, 2.0, x));
    std::printf(" the most central members:");
    for (int k = 0; k < 5; ++k) {
        const int32_t best = IDAMAX(&a.n, x.data(), &one_step);
        std::printf("  %d (%.3f)", best, x[static_cast<std::size_t>(best - 1)]);
        x[static_cast<std::size_t>(best - 1)] = 0;
    }

    Matrix b = a;
    const double part = -1 / ends;
    DSYR("L", &b.n, &part, friends.data(), &one_step, b.a.data(), &b.n);
    const double value = largest_eigenvalue(b, 10.0, x);
    std::printf("\n dominant eigenvalue of the modularity matrix: %.4f\n", value);
    for (const bool first : {true, false}) {
        std::printf(" group around member %d:", first ? 1 : a.n);
        for (std::size_t i = 0; i < n; ++i)
            if ((x[i] * x[0] > 0) == first) std::printf(" %zu", i + 1);
        std::printf("\n");
    }
    double across = 0;
    for (int32_t j = 0; j < a.n; ++j)
        for (int32_t i = 0; i < j; ++i)
            if (x[static_cast<std::size_t>(i)] * x[static_cast<std::size_t>(j)] < 0) across += a(i, j);
    std::printf(" friendships between the groups: %.0f of %.0f\n", across, ends / 2);
    if (std::FILE* plot = count > 2 ? std::fopen(arguments[2], "w") : nullptr) {
        write(plot, a, x);
        std::fclose(plot);
    }
    std::printf("\n");
    return check("triangles", triangles(a), triangles_by_counting(a), 0, 0, "counted one by one") +
           check("members in the other group than the club they joined", strangers(x), 1, 0, 0,
                 "member 9, W. W. Zachary, 1977");
}
