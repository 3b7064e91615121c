// examples/mpi/block_cyclic.cpp - one large system under ScaLAPACK, whose blocks meet the kernels of this
// library
//
//     mpirun -n 4 block_cyclic
//
// The matrix is spread over a grid of processes in blocks of 32 by 32, cyclically in both directions. What a
// process holds is an ordinary matrix in column order with a leading dimension of its own, so the kernels
// take it as it is. The program links liborvel_blas before ScaLAPACK, whose calls of dgemm_ and of the others
// then come here.
#include <dlfcn.h>
#include <mpi.h>
#include <orvel/orvel.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <vector>

extern "C" {
void Cblacs_get(int context, int request, int* value);
void Cblacs_gridinit(int* context, const char* order, int rows, int columns);
void Cblacs_gridinfo(int context, int* rows, int* columns, int* row, int* column);
int numroc_(const int* n, const int* block, const int* process, const int* first, const int* processes);
void descinit_(int* desc, const int* m, const int* n, const int* mb, const int* nb, const int* row,
               const int* column, const int* context, const int* lld, int* info);
void pdgesv_(const int* n, const int* nrhs, double* a, const int* ia, const int* ja, const int* desca,
             int* ipiv, double* b, const int* ib, const int* jb, const int* descb, int* info);
}

namespace {

constexpr int n = 500, block = 32, zero = 0, one = 1;

double element(int i, int j) { return std::sin(1.0 + 7.0 * i + 3.0 * j * j) + (i == j ? 5.0 : 0.0); }

// A grid of processes and the place of this one.
struct Grid {
    int rows = 1, columns, row, column, context;

    explicit Grid(int processes)
    {
        for (int k = 1; k * k <= processes; ++k)
            if (processes % k == 0) rows = k;
        columns = processes / rows;
        Cblacs_get(-1, 0, &context);
        Cblacs_gridinit(&context, "Row", rows, columns);
        Cblacs_gridinfo(context, &rows, &columns, &row, &column);
    }
};

// The index in the whole matrix of an element of the process `own` among `processes`.
int global_index(int local, int own, int processes)
{
    return (local / block * processes + own) * block + local % block;
}

// Part of an n by `width` matrix: columns are `lld` apart.
struct Part {
    int rows, columns, lld, desc[9];
    std::vector<double> p;

    Part(const Grid& g, int width)
        : rows(numroc_(&n, &block, &g.row, &zero, &g.rows)),
          columns(numroc_(&width, &block, &g.column, &zero, &g.columns)), lld(std::max(1, rows)),
          p(static_cast<std::size_t>(lld) * static_cast<std::size_t>(std::max(1, columns)))
    {
        int info;
        descinit_(desc, &n, &width, &block, &block, &zero, &zero, &g.context, &lld, &info);
    }
};

// b = A e for the vector e of ones: every process hands its block to DGEMV, and the rows of the grid add.
std::vector<double> row_sums(const Grid& g, const Part& a)
{
    std::vector<double> ones(static_cast<std::size_t>(std::max(1, a.columns)), 1.0),
        own(static_cast<std::size_t>(a.lld)), all(n, 0.0), sums(n, 0.0);
    const double alpha = 1.0, beta = 0.0;
    if (a.rows > 0 && a.columns > 0)
        DGEMV("N", &a.rows, &a.columns, &alpha, a.p.data(), &a.lld, ones.data(), &one, &beta, own.data(),
              &one);
    for (int i = 0; i < a.rows; ++i)
        all[static_cast<std::size_t>(global_index(i, g.row, g.rows))] = own[static_cast<std::size_t>(i)];
    MPI_Allreduce(all.data(), sums.data(), n, MPI_DOUBLE, MPI_SUM, MPI_COMM_WORLD);
    return sums;
}

// The file that a name of a kernel leads to from ScaLAPACK and everywhere else.
const char* home_of(const char* name)
{
    Dl_info where{};
    void* const address = dlsym(RTLD_DEFAULT, name);
    if (address == nullptr || dladdr(address, &where) == 0) return "nowhere";
    const char* const slash = std::strrchr(where.dli_fname, '/');
    return slash == nullptr ? where.dli_fname : slash + 1;
}

}  // namespace

int main(int argc, char** argv)
{
    MPI_Init(&argc, &argv);
    int rank, processes;
    MPI_Comm_rank(MPI_COMM_WORLD, &rank);
    MPI_Comm_size(MPI_COMM_WORLD, &processes);
    const Grid g(processes);
    Part a(g, n), b(g, 1);
    for (int j = 0; j < a.columns; ++j)
        for (int i = 0; i < a.rows; ++i)
            a.p[static_cast<std::size_t>(j * a.lld + i)] =
                element(global_index(i, g.row, g.rows), global_index(j, g.column, g.columns));
    const std::vector<double> sums = row_sums(g, a);
    if (b.columns == 1)
        for (int i = 0; i < b.rows; ++i)
            b.p[static_cast<std::size_t>(i)] = sums[static_cast<std::size_t>(global_index(i, g.row, g.rows))];

    std::vector<int> pivots(static_cast<std::size_t>(a.rows + block));
    int info;
    pdgesv_(&n, &one, a.p.data(), &one, &one, a.desc, pivots.data(), b.p.data(), &one, &one, b.desc, &info);
    double error = 0, worst;  // the solution is the vector of ones
    if (b.columns == 1)
        for (int i = 0; i < b.rows; ++i)
            error = std::max(error, std::abs(b.p[static_cast<std::size_t>(i)] - 1.0));
    MPI_Reduce(&error, &worst, 1, MPI_DOUBLE, MPI_MAX, 0, MPI_COMM_WORLD);
    bool good = true;
    if (rank == 0) {
        const bool ours = std::strncmp(home_of("dgemm_"), "liborvel_blas", 13) == 0;
        good = info == 0 && worst < 1e-10 && ours;
        std::printf(" system of %d unknowns, blocks of %d, info %d: the solution is met %s\n", n, block, info,
                    worst < 1e-10 ? "within 1e-10" : "badly");
        std::printf(" dgemm_ is that of %s\n", ours ? "liborvel_blas" : home_of("dgemm_"));
    }
    MPI_Finalize();
    return good ? 0 : 1;
}
